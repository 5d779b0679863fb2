// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QTranslator>

#include <memory>
#include <vector>

namespace browser
{

/// A language of the program.
struct Language {
    QString locale; ///< "en", "zh_CN", "de"
    QString name;   ///< in the language itself
};

/// The languages that there are, English first.
QList<Language> languages();
bool isKnownLanguage(const QString &locale);
/// The user's language where it is known, else English.
QString systemLanguage();

/// Installs the translators of a language: the browser's, the device library's and Qt's own.
/// Every widget then gets a language-change event. Thread: GUI.
class LanguageSwitch
{
public:
    /// Shows the program in a language from now on; an unknown one is English.
    void use(const QString &locale);
    QString current() const { return m_locale; }

private:
    void install(const QString &file, const QString &folder);

    QString m_locale = QStringLiteral("en");
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace browser
