// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QObject>

#include <functional>

class QAction;
class QMenu;

namespace browser
{

class Preferences;

/// The menus in which the user chooses what to search, what to see and how. Thread: GUI.
class PreferenceMenus : public QObject
{
    Q_OBJECT

public:
    /// The preferences must outlive this.
    explicit PreferenceMenus(Preferences *preferences, QObject *parent = nullptr);

    void fillSearch(QMenu *menu);
    void fillView(QMenu *menu);
    void retranslate();

private:
    /// An entry whose text and check mark are set again after every change.
    struct Entry {
        QAction *action;
        std::function<QString()> text;
        std::function<bool()> isChecked;
    };
    struct SubMenu {
        QMenu *menu;
        std::function<QString()> text;
    };
    struct Choice;

    QMenu *addMenu(QMenu *parent, const std::function<QString()> &text);
    void add(QMenu *menu, const Choice &choice);
    void addTransports(QMenu *menu);
    void addKinds(QMenu *menu);
    void addLanguages(QMenu *menu);
    void addThemes(QMenu *menu);
    void addEncodings(QMenu *menu);
    void addAcknowledgeModes(QMenu *menu);
    void refresh();

    Preferences *m_preferences;
    QList<Entry> m_entries;
    QList<SubMenu> m_menus;
};

} // namespace browser
