// SPDX-License-Identifier: Apache-2.0
#include "Languages.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

namespace browser
{

QList<Language> languages()
{
    return {{QStringLiteral("en"), QStringLiteral("English")},
            {QStringLiteral("zh_CN"), QStringLiteral("简体中文")},
            {QStringLiteral("de"), QStringLiteral("Deutsch")}};
}

bool isKnownLanguage(const QString &locale)
{
    const QList<Language> known = languages();
    return std::any_of(known.cbegin(), known.cend(),
                       [&locale](const Language &language) { return language.locale == locale; });
}

QString systemLanguage()
{
    const QString system = QLocale::system().name();
    const QList<Language> known = languages();
    for (const Language &language : known) {
        if (system.startsWith(language.locale))
            return language.locale;
    }
    return known.first().locale;
}

void LanguageSwitch::use(const QString &locale)
{
    // Each translator removes itself from the application when it is destroyed.
    m_translators.clear();
    m_locale = isKnownLanguage(locale) ? locale : QStringLiteral("en");
    const QString resources = QStringLiteral(":/translations");
    install(QStringLiteral("qtbase_") + m_locale, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("DeviceEnumMng_") + m_locale, resources);
    install(QStringLiteral("CommonTools_") + m_locale, resources);
    install(QStringLiteral("CustomCtr_") + m_locale, resources);
    install(QStringLiteral("device-browser_") + m_locale, resources);
}

void LanguageSwitch::install(const QString &file, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(file, folder))
        return;
    QCoreApplication::installTranslator(translator.get());
    m_translators.push_back(std::move(translator));
}

} // namespace browser
