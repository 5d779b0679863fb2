// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QMap>
#include <QObject>

class KelDeviceTree;
class QTreeWidgetItem;

namespace browser
{

class ConnectionManager;
class EnumerationMonitor;
class InterfaceManager;
class PassScheduler;
class TreeHost;

/// Joins the tree's rows with the devices and interfaces that this program holds: a row's button takes
/// or gives back, and the row shows what came of it. Thread: GUI.
class ConnectionController : public QObject
{
    Q_OBJECT

public:
    /// What a controller works with; all must outlive it.
    struct Parts {
        TreeHost *host;
        ConnectionManager *connections;
        InterfaceManager *interfaces;
        EnumerationMonitor *monitor;
        PassScheduler *scheduler;
    };

    explicit ConnectionController(const Parts &parts, QObject *parent = nullptr);

    /// Takes a device, or gives it back where this program holds it.
    void toggleDevice(long id);
    /// Opens a GenTL interface, or closes it with its cameras where it is open.
    void toggleInterface(long id);
    /// Asks for a pass of the transports that are searched at all.
    void refresh(uint transports);
    /// Gives everything back; allReleased() follows, at once when nothing is held.
    void releaseAll();
    /// Stops or resumes the tree; what went away meanwhile leaves when it is resumed.
    void setFrozen(bool isFrozen);
    bool isFrozen() const { return m_isFrozen; }
    /// Closes the interfaces of a producer that are open or being opened.
    void closeInterfacesOf(const QString &producer);
    /// Gives every row and button the name that screen readers speak, in the language and encoding in use.
    void nameRows();

Q_SIGNALS:
    /// The user pressed the button of a camera that is not reachable.
    void unreachableChosen(long id);
    void allReleased();

private:
    void listenTo(KelDeviceTree *tree);
    void listenToConnections();
    void listenToInterfaces();
    void noteRow(QTreeWidgetItem *row);
    void closeInterface(long id);
    void showInterfaceState(long id, KELA_DEV_STATE state);
    void forgetDevicesOf(long interfaceId);
    /// A tree that starts anew never hears of devices that are away: their rows would not come.
    void letGoOfAbsentDevices();
    /// What a new tree does not show, because of a filter for example, nobody could let go.
    void letGoOfUnseenDevices(uint transport);
    void showReleased(long id);
    void removeGoneRows();

    Parts m_parts;
    QMap<int, int> m_passes; ///< ended in this tree, by transport
    bool m_isFrozen = false;
    bool m_isReleasingAll = false;
};

} // namespace browser
