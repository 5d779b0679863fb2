// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QVector>

#include <optional>

class CustomPushButton;
class QTreeWidgetItem;

/// Questions about the rows of a device tree. A row may be gone after any return to the event loop, so
/// rows are asked for by their identifiers and never kept. Thread: GUI.
namespace browser::rows
{

/// A row's KelDeviceTree::ItemType; -1 for null.
int typeOf(const QTreeWidgetItem *row);
/// A row's identifier; -1 for groups and null.
long idOf(const QTreeWidgetItem *row);
/// A row's text.
QString textOf(const QTreeWidgetItem *row);
/// True for the rows of devices.
bool isDevice(const QTreeWidgetItem *row);

/// The record of a row; nothing when the row holds another kind.
template <typename Record>
std::optional<Record> recordOf(const QTreeWidgetItem *row)
{
    const QVariant held = row ? row->data(0, KelDeviceTree::ItemInfoRole) : QVariant();
    if (!held.canConvert<Record>())
        return std::nullopt;
    return held.value<Record>();
}

/// The record of a device's row; nothing for any other row.
std::optional<KELA_STRUCT_DEVICE_INFO> deviceOf(const QTreeWidgetItem *row);
/// The record of a device by its identifier.
std::optional<KELA_STRUCT_DEVICE_INFO> deviceOf(KelDeviceTree &tree, long id);
/// The records of every device below a row, or of the whole tree.
QVector<KELA_STRUCT_DEVICE_INFO> devicesBelow(const QTreeWidgetItem *row);
QVector<KELA_STRUCT_DEVICE_INFO> allDevices(const KelDeviceTree &tree);

/// The row of a network card by its hardware address; null when there is none.
QTreeWidgetItem *cardRow(KelDeviceTree &tree, const KELA_NETWORK &card);
/// The row of the camera with a serial number; null when there is none.
QTreeWidgetItem *rowOfSerial(KelDeviceTree &tree, const QString &serial);
/// A row's button, only while it lives.
CustomPushButton *buttonOf(const KelDeviceTree &tree, const QTreeWidgetItem *row);

/// Tells the tree how this program stands to a device: writes the state into the row's record, which
/// keeps the row while the device is held, then shows it.
void showOwnState(KelDeviceTree &tree, long id, KELA_DEV_STATE state);
/// Shows a held device as lost, with the button that lets it go.
void showLost(KelDeviceTree &tree, long id);
/// Adds the group that Camera Link cameras stand in; the tree makes none itself.
void addCameraLinkGroup(KelDeviceTree &tree);

} // namespace browser::rows
