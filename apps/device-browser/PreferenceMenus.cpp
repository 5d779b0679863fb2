// SPDX-License-Identifier: Apache-2.0
#include "PreferenceMenus.h"

#include "EventReporter.h"
#include "Preferences.h"
#include "RowKinds.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomDefine.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QAction>
#include <QMenu>

namespace browser
{

/// One thing to choose: what it is called, whether it is chosen, and what choosing it does.
struct PreferenceMenus::Choice {
    std::function<QString()> text;
    std::function<bool()> isChosen;
    std::function<void(bool)> choose;
};

PreferenceMenus::PreferenceMenus(Preferences *preferences, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
{
    connect(preferences, &Preferences::changed, this, &PreferenceMenus::refresh);
}

void PreferenceMenus::fillSearch(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    add(menu, {[] { return tr("Refresh &automatically"); },
               [preferences] { return preferences->store().isAutomaticRefresh(); },
               [preferences](bool on) { preferences->setAutomaticRefresh(on); }});
    addTransports(addMenu(menu, [] { return tr("&Transports"); }));
    addAcknowledgeModes(addMenu(menu, [] { return tr("How cameras a&nswer (from the next start on)"); }));
    add(menu, {[] { return tr("Allow &virtual ports of producers"); },
               [preferences] { return preferences->store().isVirtualPortAllowed(); },
               [preferences](bool on) { preferences->setVirtualPortAllowed(on); }});
}

void PreferenceMenus::fillView(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    addKinds(addMenu(menu, [] { return tr("&Show"); }));
    add(menu, {[] { return tr("&Buttons in rows"); },
               [preferences] { return preferences->store().areRowButtonsShown(); },
               [preferences](bool on) { preferences->setRowButtonsShown(on); }});
    menu->addSeparator();
    addThemes(addMenu(menu, [] { return tr("&Theme"); }));
    addLanguages(addMenu(menu, [] { return tr("&Language"); }));
    addEncodings(addMenu(menu, [] { return tr("&Encoding of device names"); }));
}

void PreferenceMenus::retranslate()
{
    for (const SubMenu &sub : m_menus)
        sub.menu->setTitle(sub.text());
    refresh();
}

QMenu *PreferenceMenus::addMenu(QMenu *parent, const std::function<QString()> &text)
{
    QMenu *menu = parent->addMenu(text());
    m_menus.append({menu, text});
    return menu;
}

void PreferenceMenus::add(QMenu *menu, const Choice &choice)
{
    QAction *action = menu->addAction(choice.text());
    action->setCheckable(true);
    action->setChecked(choice.isChosen());
    m_entries.append({action, choice.text, choice.isChosen});
    connect(action, &QAction::triggered, this, [this, choose = choice.choose](bool on) {
        choose(on);
        refresh();
    });
}

void PreferenceMenus::addTransports(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    for (const uint transport : {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                 KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL}) {
        add(menu, {[transport] { return transportName(transport); },
                   [preferences, transport] { return (preferences->store().transports() & transport) != 0; },
                   [preferences, transport](bool on) {
                       const uint others = preferences->store().transports() & ~transport;
                       preferences->setTransports(on ? others | transport : others);
                   }});
    }
}

void PreferenceMenus::addKinds(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    const QList<RowKind> kinds = rowKinds();
    for (int i = 0; i < kinds.size(); ++i) {
        const QString key = kinds.at(i).key;
        add(menu, {[i] { return rowKinds().at(i).label; },
                   [preferences, key] { return !preferences->store().hiddenKinds().contains(key); },
                   [preferences, key](bool on) { preferences->setKindVisible(key, on); }});
    }
}

void PreferenceMenus::addLanguages(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    const QList<Language> known = languages();
    for (const Language &language : known) {
        add(menu, {[language] { return language.name; },
                   [preferences, language] { return preferences->store().language() == language.locale; },
                   [preferences, language](bool) { preferences->setLanguage(language.locale); }});
    }
}

void PreferenceMenus::addThemes(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    for (const int theme : {Custom::ThemeDark, Custom::ThemeLight}) {
        add(menu, {[theme] { return theme == Custom::ThemeDark ? tr("&Dark") : tr("&Light"); },
                   [preferences, theme] { return preferences->store().theme() == theme; },
                   [preferences, theme](bool) { preferences->setTheme(theme); }});
    }
}

void PreferenceMenus::addEncodings(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    struct Named {
        int encoding;
        const char *name;
    };
    for (const Named &named :
         {Named{KelInterface::EncodingUtf8, "UTF-8"}, Named{KelInterface::EncodingLocale, nullptr},
          Named{KelInterface::EncodingGb18030, "GB18030"}, Named{KelInterface::EncodingBig5, "Big5"},
          Named{KelInterface::EncodingShiftJis, "Shift-JIS"}, Named{KelInterface::EncodingEucKr, "EUC-KR"},
          Named{KelInterface::EncodingLatin1, "ISO 8859-1"}}) {
        const int encoding = named.encoding;
        const char *name = named.name;
        add(menu, {[name] { return name ? QString::fromLatin1(name) : tr("As the system's language"); },
                   [preferences, encoding] { return preferences->store().encoding() == encoding; },
                   [preferences, encoding](bool) { preferences->setEncoding(encoding); }});
    }
}

void PreferenceMenus::addAcknowledgeModes(QMenu *menu)
{
    Preferences *preferences = m_preferences;
    for (const int mode : {1, 0}) {
        add(menu, {[mode] {
                       return mode == 1 ? tr("By &broadcast: cameras of other subnets are found too")
                                        : tr("To this computer &only: less traffic for others");
                   },
                   [preferences, mode] { return preferences->store().acknowledgeMode() == mode; },
                   [preferences, mode](bool) { preferences->setAcknowledgeMode(mode); }});
    }
}

void PreferenceMenus::refresh()
{
    for (const Entry &entry : m_entries) {
        entry.action->setText(entry.text());
        entry.action->setChecked(entry.isChecked());
    }
}

} // namespace browser
