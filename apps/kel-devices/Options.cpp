// SPDX-License-Identifier: Apache-2.0
#include "Options.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace
{

constexpr int kLongestMilliseconds = 24 * 3600 * 1000;

const QVector<QCommandLineOption> &commandOptions()
{
    static const QVector<QCommandLineOption> options = {
        {QStringLiteral("transport"), QStringLiteral("gige, usb, cameralink, gentl, separated by commas."),
         QStringLiteral("list")},
        {QStringLiteral("cti"), QStringLiteral("A GenTL producer; may be given several times."),
         QStringLiteral("file")},
        {QStringLiteral("json"), QStringLiteral("JSON instead of a table.")},
        {QStringLiteral("timeout"), QStringLiteral("Milliseconds to listen."), QStringLiteral("ms")},
        {QStringLiteral("interval"), QStringLiteral("Milliseconds from pass to pass."), QStringLiteral("ms")},
        {QStringLiteral("all"), QStringLiteral("watch: every event, not only changes.")},
        {QStringLiteral("verbose"), QStringLiteral("The engine's log lines on stderr.")},
        {QStringLiteral("help"), QStringLiteral("This help.")},
        {QStringLiteral("version"), QStringLiteral("The program's version.")},
    };
    return options;
}

std::optional<KELA_INTERFACE_TYPE> transportOfWord(const QString &word)
{
    if (word == QLatin1String("gige")) {
        return KELA_INTERFACE_TYPE_GIGE;
    }
    if (word == QLatin1String("usb")) {
        return KELA_INTERFACE_TYPE_USB;
    }
    if (word == QLatin1String("cameralink")) {
        return KELA_INTERFACE_TYPE_CAMERALINK;
    }
    // By interface record: the devices then show without anybody opening the interface.
    if (word == QLatin1String("gentl")) {
        return KELA_INTERFACE_TYPE_GENTL_INTERFACE;
    }
    return std::nullopt;
}

QString readTransports(const QStringList &values, Options &options)
{
    const QString words =
        values.isEmpty() ? QStringLiteral("gige,usb,cameralink,gentl") : values.join(QLatin1Char(','));
    for (const QString &word : words.split(QLatin1Char(','))) {
        const auto transport = transportOfWord(word);
        if (!transport) {
            return QStringLiteral("unknown transport '%1'; there are gige, usb, cameralink and gentl")
                .arg(word);
        }
        if (!options.transports.contains(*transport)) {
            options.transports.append(*transport);
        }
    }
    return {};
}

QString readProducers(const QStringList &values, Options &options)
{
    if (!values.isEmpty() && !options.transports.contains(KELA_INTERFACE_TYPE_GENTL_INTERFACE)) {
        return QStringLiteral("--cti needs gentl among the transports");
    }
    for (const QString &value : values) {
        const QFileInfo file(value);
        if (!file.isFile()) {
            return QStringLiteral("there is no producer file '%1'").arg(value);
        }
        options.producers.append(file.absoluteFilePath());
    }
    return {};
}

QString readMilliseconds(const QCommandLineParser &parser, const QString &name, int smallest,
                         std::optional<std::chrono::milliseconds> &milliseconds)
{
    if (!parser.isSet(name)) {
        return {};
    }
    bool isNumber = false;
    const int value = parser.value(name).toInt(&isNumber);
    if (!isNumber || value < smallest || value > kLongestMilliseconds) {
        return QStringLiteral("--%1 takes %2 to %3 milliseconds, not '%4'")
            .arg(name, QString::number(smallest), QString::number(kLongestMilliseconds), parser.value(name));
    }
    milliseconds = std::chrono::milliseconds(value);
    return {};
}

QString readCommand(const QStringList &words, Options &options)
{
    if (words.isEmpty()) {
        return QStringLiteral("say what to do: list or watch");
    }
    if (words.size() > 1) {
        return QStringLiteral("unexpected argument '%1'").arg(words[1]);
    }
    if (words[0] != QLatin1String("list") && words[0] != QLatin1String("watch")) {
        return QStringLiteral("unknown command '%1'; there are list and watch").arg(words[0]);
    }
    options.command = words[0] == QLatin1String("list") ? Options::Command::List : Options::Command::Watch;
    return {};
}

QString readAll(const QCommandLineParser &parser, Options &options)
{
    QString error = readCommand(parser.positionalArguments(), options);
    error = error.isEmpty() ? readTransports(parser.values(QStringLiteral("transport")), options) : error;
    error = error.isEmpty() ? readProducers(parser.values(QStringLiteral("cti")), options) : error;
    error = error.isEmpty() ? readMilliseconds(parser, QStringLiteral("timeout"), 0, options.timeout) : error;
    error = error.isEmpty() ? readMilliseconds(parser, QStringLiteral("interval"), 1, options.interval) : error;
    options.isJson = parser.isSet(QStringLiteral("json"));
    options.isEveryEvent = parser.isSet(QStringLiteral("all"));
    options.isVerbose = parser.isSet(QStringLiteral("verbose"));
    return error;
}

} // namespace

std::optional<Options> readOptions(const QStringList &arguments, QString &error)
{
    QCommandLineParser parser;
    for (const QCommandLineOption &option : commandOptions()) {
        parser.addOption(option);
    }
    error.clear();
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return std::nullopt;
    }

    Options options;
    if (parser.isSet(QStringLiteral("help"))) {
        options.command = Options::Command::Help;
    } else if (parser.isSet(QStringLiteral("version"))) {
        options.command = Options::Command::Version;
    } else {
        error = readAll(parser, options);
    }
    return error.isEmpty() ? std::make_optional(options) : std::nullopt;
}

QString helpText()
{
    QString text = QStringLiteral(
        "kel-devices list|watch [option...]\n\n"
        "list   prints the devices that are there and ends.\n"
        "watch  prints a line for what is new, changed or gone, until interrupted; as JSON unless\n"
        "       a terminal shows it.\n\n");
    for (const QCommandLineOption &option : commandOptions()) {
        const QString name = QStringLiteral("--%1 %2").arg(option.names().constFirst(), option.valueName());
        text += QStringLiteral("  %1%2\n").arg(name, -20).arg(option.description());
    }
    return text + QStringLiteral("\nExit status: 0, 1 when a transport failed, 2 for wrong arguments.\n");
}
