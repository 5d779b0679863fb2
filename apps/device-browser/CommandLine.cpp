// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include "Languages.h"

#include <CustomCtr/CustomDefine.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QMap>

#include <functional>

namespace browser
{

namespace
{

constexpr int kLongestWaitMs = 3600 * 1000;

using Setter = std::function<bool(CommandLine &, const QString &)>;

bool setScreenshot(CommandLine &line, const QString &value)
{
    line.screenshot = value;
    return !value.isEmpty();
}

bool setAfter(CommandLine &line, const QString &value)
{
    bool isNumber = false;
    const int wait = value.toInt(&isNumber);
    line.screenshotAfter = std::chrono::milliseconds(wait);
    return isNumber && wait >= 0 && wait <= kLongestWaitMs;
}

bool setTransports(CommandLine &line, const QString &value)
{
    line.transports = parseTransports(value);
    return line.transports.has_value();
}

bool setTheme(CommandLine &line, const QString &value)
{
    if (value == QLatin1String("dark")) {
        line.theme = Custom::ThemeDark;
    } else if (value == QLatin1String("light")) {
        line.theme = Custom::ThemeLight;
    }
    return line.theme.has_value();
}

bool setLanguage(CommandLine &line, const QString &value)
{
    line.language = value;
    return isKnownLanguage(value);
}

bool setSelect(CommandLine &line, const QString &value)
{
    line.select = value;
    return !value.isEmpty();
}

const QMap<QString, Setter> &setters()
{
    static const QMap<QString, Setter> map{
        {QStringLiteral("--screenshot"), setScreenshot}, {QStringLiteral("--after"), setAfter},
        {QStringLiteral("--transports"), setTransports}, {QStringLiteral("--theme"), setTheme},
        {QStringLiteral("--language"), setLanguage},     {QStringLiteral("--select"), setSelect},
    };
    return map;
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine line;
    for (int i = 0; i < arguments.size(); ++i) {
        QString name = arguments.at(i);
        if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
            line.isHelpWanted = true;
            continue;
        }
        const int equals = name.indexOf(QLatin1Char('='));
        const bool hasValue = equals > 0;
        QString value = hasValue ? name.mid(equals + 1) : QString();
        name = hasValue ? name.left(equals) : name;
        const auto setter = setters().constFind(name);
        if (setter == setters().constEnd()) {
            line.error = QStringLiteral("unknown argument \"%1\"").arg(arguments.at(i));
            return line;
        }
        if (!hasValue && ++i < arguments.size())
            value = arguments.at(i);
        if (!(*setter)(line, value)) {
            line.error = QStringLiteral("\"%2\" is no value for %1").arg(name, value);
            return line;
        }
    }
    return line;
}

QString usage()
{
    return QStringLiteral("Usage: device-browser [OPTION]…\n"
                          "Shows the machine-vision cameras that this computer can reach.\n"
                          "\n"
                          "  --transports LIST    search these only: gige,usb,cameralink,gentl\n"
                          "  --theme NAME         dark or light\n"
                          "  --language NAME      en, zh_CN or de\n"
                          "  --select SERIAL      select the camera with this serial number\n"
                          "  --screenshot FILE    write a picture of the window to FILE and quit\n"
                          "  --after MS           … after this time (3000)\n"
                          "  --help               show this text\n");
}

std::optional<uint> parseTransports(const QString &text)
{
    static const QMap<QString, uint> names{{QStringLiteral("gige"), KELA_INTERFACE_TYPE_GIGE},
                                           {QStringLiteral("usb"), KELA_INTERFACE_TYPE_USB},
                                           {QStringLiteral("cameralink"), KELA_INTERFACE_TYPE_CAMERALINK},
                                           {QStringLiteral("gentl"), KELA_INTERFACE_TYPE_GENTL}};
    uint transports = 0;
    const QStringList words = text.split(QLatin1Char(','));
    for (const QString &word : words) {
        const auto found = names.constFind(word.trimmed().toLower());
        if (found == names.constEnd())
            return std::nullopt;
        transports |= *found;
    }
    return transports;
}

} // namespace browser
