// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class KelDeviceTree;
class QAction;
class QMenu;
class QPoint;
class QTreeWidgetItem;
class QWidget;

namespace browser
{

class ConnectionController;
class ConnectionManager;
class DeviceDialogs;
class InterfaceManager;
class Preferences;
class RemoteCameras;
class TreeHost;

/// What can be done with the selected row: everything that the hover buttons do and more, as actions
/// with shortcuts, in the row's context menu and in the menu bar. Thread: GUI.
class RowActions : public QObject
{
    Q_OBJECT

public:
    /// What the actions work with; all must outlive them.
    struct Parts {
        TreeHost *host;
        ConnectionController *controller;
        ConnectionManager *connections;
        InterfaceManager *interfaces;
        Preferences *preferences;
        DeviceDialogs *dialogs;
        RemoteCameras *remoteCameras;
    };

    /// @param window  gets the shortcuts
    RowActions(const Parts &parts, QWidget *window);

    /// Fits the actions to the selected row.
    void update();
    void retranslate();
    /// Adds the actions to a menu.
    void fill(QMenu *menu) const;
    /// The actions that the details panel offers as buttons.
    QList<QAction *> panelActions() const { return {m_connect, m_openLive, m_assignAddress, m_takeOut}; }

Q_SIGNALS:
    void liveViewWanted(long id);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void listenTo(KelDeviceTree *tree);
    void showMenu(const QPoint &place);
    void showMenuOfCurrentRow();
    /// @param place  on the screen
    void popUpMenu(const QPoint &place);
    void updateForDevice(const QTreeWidgetItem *row);
    void updateForInterface(const QTreeWidgetItem *row);
    void updateForGroup(const QTreeWidgetItem *row);
    void addTo(QWidget *window, QAction *action, const QKeySequence &shortcut);
    QTreeWidgetItem *row() const;
    void toggleConnection();
    void toggleKeptOnTop();
    void refreshGroup();
    void showProducers();
    void removeProducer();

    Parts m_parts;
    QAction *m_connect;
    QAction *m_openLive;
    QAction *m_keepOnTop;
    QAction *m_assignAddress;
    QAction *m_takeOut;
    QAction *m_refreshGroup;
    QAction *m_producers;
    QAction *m_removeProducer;
};

} // namespace browser
