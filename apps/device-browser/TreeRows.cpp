// SPDX-License-Identifier: Apache-2.0
#include "TreeRows.h"

#include "RowNames.h"

#include <CustomCtr/CustomPushButton.h>

#include <QTreeWidgetItemIterator>

namespace browser::rows
{

namespace
{

const char *lostIcon(uint32_t transport)
{
    switch (transport) {
    case KELA_INTERFACE_TYPE_USB:
        return ":/Kel/tree/USBNoReachable.png";
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return ":/Kel/tree/CameraLinkNoReach.png";
    default:
        return ":/Kel/tree/CameraNoReachable.png";
    }
}

} // namespace

int typeOf(const QTreeWidgetItem *row)
{
    if (!row)
        return -1;
    bool isNumber = false;
    const int type = row->data(0, KelDeviceTree::ItemTypeRole).toInt(&isNumber);
    return isNumber ? type : -1;
}

long idOf(const QTreeWidgetItem *row)
{
    return row ? row->data(0, KelDeviceTree::ItemIdRole).toInt() : -1;
}

QString textOf(const QTreeWidgetItem *row)
{
    return row ? row->text(0) : QString();
}

bool isDevice(const QTreeWidgetItem *row)
{
    const int type = typeOf(row);
    return type >= KelDeviceTree::ItemGigECamera && type <= KelDeviceTree::ItemGenTLDevice;
}

std::optional<KELA_STRUCT_DEVICE_INFO> deviceOf(const QTreeWidgetItem *row)
{
    if (!isDevice(row))
        return std::nullopt;
    return recordOf<KELA_STRUCT_DEVICE_INFO>(row);
}

std::optional<KELA_STRUCT_DEVICE_INFO> deviceOf(KelDeviceTree &tree, long id)
{
    return deviceOf(tree.findCameraItem(id));
}

QVector<KELA_STRUCT_DEVICE_INFO> devicesBelow(const QTreeWidgetItem *row)
{
    QVector<KELA_STRUCT_DEVICE_INFO> devices;
    if (!row)
        return devices;
    if (const auto device = deviceOf(row))
        devices.append(*device);
    for (int i = 0; i < row->childCount(); ++i)
        devices += devicesBelow(row->child(i));
    return devices;
}

QVector<KELA_STRUCT_DEVICE_INFO> allDevices(const KelDeviceTree &tree)
{
    return devicesBelow(tree.invisibleRootItem());
}

QTreeWidgetItem *cardRow(KelDeviceTree &tree, const KELA_NETWORK &card)
{
    const QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGigERoot, -1);
    for (int i = 0; group && i < group->childCount(); ++i) {
        QTreeWidgetItem *row = group->child(i);
        const auto held = recordOf<KELA_NETWORK>(row);
        if (typeOf(row) == KelDeviceTree::ItemNetWork && held &&
            fixedText(held->hardwareAddress) == fixedText(card.hardwareAddress))
            return row;
    }
    return nullptr;
}

QTreeWidgetItem *rowOfSerial(KelDeviceTree &tree, const QString &serial)
{
    for (QTreeWidgetItemIterator row(&tree); *row; ++row) {
        if (isDevice(*row) && tree.getCameraSerial(*row) == serial)
            return *row;
    }
    return nullptr;
}

CustomPushButton *buttonOf(const KelDeviceTree &tree, const QTreeWidgetItem *row)
{
    if (!row)
        return nullptr;
    // The row holds a bare number; it is a button only while it is among the tree's children.
    const quintptr held = row->data(0, KelDeviceTree::ItemRightBtnRole).value<quintptr>();
    const QList<CustomPushButton *> living = tree.findChildren<CustomPushButton *>();
    for (CustomPushButton *button : living) {
        if (held != 0 && reinterpret_cast<quintptr>(button) == held)
            return button;
    }
    return nullptr;
}

void showOwnState(KelDeviceTree &tree, long id, KELA_DEV_STATE state)
{
    QTreeWidgetItem *row = tree.findCameraItem(id);
    std::optional<KELA_STRUCT_DEVICE_INFO> device = deviceOf(row);
    if (!device)
        return;
    device->deviceState = static_cast<int32_t>(state);
    row->setData(0, KelDeviceTree::ItemInfoRole, QVariant::fromValue(*device));
    tree.setCameraItemIcon(row, state);
    nameForScreenReaders(tree, row);
}

void showLost(KelDeviceTree &tree, long id)
{
    QTreeWidgetItem *row = tree.findCameraItem(id);
    const auto device = deviceOf(row);
    if (!device)
        return;
    row->setIcon(0, QIcon(QLatin1String(lostIcon(device->deviceInfo.transport))));
    nameForScreenReaders(tree, row, true);
}

void addCameraLinkGroup(KelDeviceTree &tree)
{
    if (tree.findItem(KelDeviceTree::ItemCamLinkRoot, -1))
        return;
    const QTreeWidgetItem *genTL = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    const int place =
        genTL ? tree.indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(genTL)) : tree.topLevelItemCount();
    auto *group = new QTreeWidgetItem;
    group->setText(0, QStringLiteral("Camera Link"));
    group->setData(0, KelDeviceTree::ItemTypeRole, static_cast<int>(KelDeviceTree::ItemCamLinkRoot));
    group->setData(0, KelDeviceTree::ItemIdRole, -1);
    group->setData(0, KelDeviceTree::StayTopItemRole, 0);
    QFont font = tree.font();
    font.setWeight(QFont::Bold);
    group->setFont(0, font);
    tree.insertTopLevelItem(place, group);
    group->setExpanded(true);
}

} // namespace browser::rows
