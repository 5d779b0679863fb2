// SPDX-License-Identifier: Apache-2.0
// Camera items: what an event makes of them, and what a device state makes of icon, button and roles.
// Called by the slots of the tree and by the host, on the GUI thread.
//
// An update of an unknown camera creates it and a creation of a known one updates it, so that lost or
// doubled events heal. A camera that this client has connected keeps its state and its row: the enumeration
// cannot see this client's own connections. Nothing is written that stands there already: a pass in which
// nothing changed must not make the view measure or paint.
#include "KelDeviceTree_p.h"

#include "KelDeviceLabels.h"
#include "KelDeviceTreeGuard.h"
#include "KelDeviceTreeLog.h"
#include "KelDeviceTreeRecords.h"
#include "KelSettledCameras.h"

#include <CustomCtr/CustomPushButton.h>

#include <QTreeWidgetItem>

#include <optional>

namespace
{

int groupTypeOf(const KELA_DEVICE_INFO_EX &info)
{
    switch (info.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return info.placement == KELA_PLACEMENT_VIRTUAL ? KelDeviceTree::ItemGigEVirtualGroup
               : info.placement == KELA_PLACEMENT_OTHER ? KelDeviceTree::ItemOtherGroup
                                                        : KelDeviceTree::ItemGigERoot;
    case KELA_INTERFACE_TYPE_USB:
        return info.placement == KELA_PLACEMENT_VIRTUAL ? KelDeviceTree::ItemUSBVirtualGroup
                                                        : KelDeviceTree::ItemUSBRoot;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return KelDeviceTree::ItemCamLinkRoot;
    case KELA_INTERFACE_TYPE_GENTL:
        return KelDeviceTree::ItemGenTLRoot;
    default:
        return KelDeviceTree::ItemGigERoot;
    }
}

struct StateLook {
    std::optional<bool> connected;                 ///< ItemConnectedRole; none leaves it
    std::optional<KelDeviceTree::BtnState> button; ///< none leaves it
};

// A GigE camera that is not reachable keeps a usable button: its address can still be set. An unreachable
// USB or Camera Link camera has none.
StateLook lookOf(KELA_DEV_STATE state)
{
    switch (state) {
    case KELA_DEV_STATE_GIGE_FREE:
    case KELA_DEV_STATE_GIGE_UNREACHABLE:
    case KELA_DEV_STATE_GIGE_MULTICAST:
        return {false, KelDeviceTree::BtnConnect};
    case KELA_DEV_STATE_GIGE_IN_USE:
        return {false, KelDeviceTree::BtnDisable};
    case KELA_DEV_STATE_GIGE_CONNECTED:
    case KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED:
        return {true, KelDeviceTree::BtnDisconnect};
    case KELA_DEV_STATE_USB3_FREE:
    case KELA_DEV_STATE_USB2_FREE:
    case KELA_DEV_STATE_CAMERALINK_FREE:
    case KELA_DEV_STATE_GENTL_FREE:
    case KELA_DEV_STATE_GENTL_INTERFACE_FREE:
        return {std::nullopt, KelDeviceTree::BtnConnect};
    case KELA_DEV_STATE_USB3_IN_USE:
    case KELA_DEV_STATE_USB3_UNUSABLE:
    case KELA_DEV_STATE_USB2_IN_USE:
    case KELA_DEV_STATE_USB2_UNUSABLE:
    case KELA_DEV_STATE_CAMERALINK_UNREACHABLE:
    case KELA_DEV_STATE_GENTL_IN_USE:
    case KELA_DEV_STATE_GENTL_INTERFACE_IN_USE:
        return {std::nullopt, KelDeviceTree::BtnDisable};
    case KELA_DEV_STATE_USB3_CONNECTED:
    case KELA_DEV_STATE_USB2_CONNECTED:
    case KELA_DEV_STATE_CAMERALINK_CONNECTED:
    case KELA_DEV_STATE_GENTL_CONNECTED:
    case KELA_DEV_STATE_GENTL_INTERFACE_OPEN:
        return {std::nullopt, KelDeviceTree::BtnDisconnect};
    default:
        return {};
    }
}

// To a view every icon that is written is a new one.
bool setIcon(const KelDeviceTreeGuard &guard, const QIcon &icon)
{
    return guard.item()->icon(0).cacheKey() == icon.cacheKey() || guard.write(Qt::DecorationRole, icon);
}

QString namingLine(const QString &name, int cameraId)
{
    return QStringLiteral("CameraName:%1   To   CameraID:%2").arg(name, QString::number(cameraId));
}

QString deletionLine(const KELA_STRUCT_DEVICE_INFO &info)
{
    switch (info.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return namingLine(KelDeviceLabels::gigeUserName(info.deviceInfo), info.deviceId);
    case KELA_INTERFACE_TYPE_USB:
        return namingLine(KelDeviceLabels::usbUserName(info.deviceInfo), info.deviceId);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return QStringLiteral("Delete CameraLink,   CameraID:%1").arg(info.deviceId);
    default:
        return QStringLiteral("Delete Interface,   CameraID:%1").arg(info.deviceId);
    }
}

// False when a receiver of the change has taken the row or the tree away; so everywhere here.
bool showLabel(const KelDeviceTreeGuard &guard, const QString &label)
{
    return guard.write(Qt::DisplayRole, label) && guard.write(Qt::ToolTipRole, label);
}

} // namespace

void KelDeviceTreePrivate::onNewDevice(const QVariant &dataVar)
{
    const auto info = dataVar.value<KELA_STRUCT_DEVICE_INFO>();
    if (!isItemTypeVisible(groupTypeOf(info.deviceInfo))) {
        return;
    }
    if (findCameraItem(info.deviceId)) {
        q->onUpdateDeviceInfo(dataVar);
        return;
    }
    if (!isValidDevice(info.deviceInfo)) {
        return;
    }
    const KelDeviceTreeGuard guard(q);
    QTreeWidgetItem *parent = findParentItem(info);
    if (!guard.isTreeAlive()) {
        return;
    }
    QTreeWidgetItem *item = nullptr;
    switch (info.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        item = onNewGigeCamera(info, parent);
        break;
    case KELA_INTERFACE_TYPE_USB:
        item = onNewUSBCamera(info, parent);
        break;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        item = onNewCamLinkCamera(info, parent);
        break;
    case KELA_INTERFACE_TYPE_GENTL:
        item = onNewGenTLDevice(info, parent);
        break;
    default:
        break;
    }
    if (item) {
        Q_EMIT q->sigNewDeviceItem(item);
    }
}

void KelDeviceTreePrivate::onUpdateDeviceInfo(const QVariant &dataVar)
{
    const RecordView<KELA_STRUCT_DEVICE_INFO> view(dataVar);
    const KELA_STRUCT_DEVICE_INFO &info = *view;
    if (QTreeWidgetItem *settled = m_settled->find(info)) {
        Q_EMIT q->sigUpdateDeviceItem(settled);
        return;
    }
    QTreeWidgetItem *item = findCameraItem(info.deviceId);
    if (!item) {
        q->onNewDevice(dataVar);
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    switch (info.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        onUpdateGigeCamera(info);
        break;
    case KELA_INTERFACE_TYPE_USB:
        onUpdateUSBCamera(info);
        break;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        onUpdateCamLinkCamera(info);
        break;
    case KELA_INTERFACE_TYPE_GENTL:
        onUpdateGenTLDevice(info);
        break;
    default:
        break;
    }
    if (guard.item()) {
        Q_EMIT q->sigUpdateDeviceItem(guard.item());
    }
}

void KelDeviceTreePrivate::onDeleteDevice(const QVariant &dataVar)
{
    const auto info = dataVar.value<KELA_STRUCT_DEVICE_INFO>();
    constexpr char kSlot[] = "void KelDeviceTree::onDeleteDevice(QVariant)";
    logTreeInfo(__LINE__, kSlot, QStringLiteral("Enter onDeleteDevice,   CameraID:%1").arg(info.deviceId));
    QTreeWidgetItem *item = findCameraItem(info.deviceId);
    if (!item) {
        return;
    }
    const auto shown = item->data(0, KelDeviceTree::ItemInfoRole).value<KELA_STRUCT_DEVICE_INFO>();
    if (isCameraConnet(shown.deviceState)) {
        return;
    }
    deleteCameraItem(item);
    logTreeInfo(__LINE__, kSlot, deletionLine(info));
}

QTreeWidgetItem *KelDeviceTreePrivate::newCamera(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent,
                                                 int itemType, const QString &label, const char *creator)
{
    const KelDeviceTreeGuard guard(q, newTreeItem(parent, itemType, getStayTopIndex(info, parent)));
    const bool isGigE = itemType == KelDeviceTree::ItemGigECamera;
    const bool isShown =
        guard.write(Qt::DisplayRole, label) && guard.write(KelDeviceTree::ItemIdRole, info.deviceId) &&
        guard.write(KelDeviceTree::ItemInfoRole, QVariant::fromValue(info)) &&
        writeRightBtn(guard, getItemRightBtn(info.deviceId, false)) &&
        (!isGigE || guard.write(KelDeviceTree::ItemConnectedRole, false)) &&
        guard.write(Qt::ToolTipRole, label) && showState(guard, static_cast<KELA_DEV_STATE>(info.deviceState));
    logTreeInfo(__LINE__, creator, namingLine(label, info.deviceId));
    return isShown ? guard.item() : nullptr;
}

// The name is cut when the row is made and whole from the first update on: hosts count on both.
QTreeWidgetItem *KelDeviceTreePrivate::onNewGigeCamera(const KELA_STRUCT_DEVICE_INFO &info,
                                                       QTreeWidgetItem *parent)
{
    if (!parent) {
        return nullptr;
    }
    return newCamera(info, parent, KelDeviceTree::ItemGigECamera,
                     KelDeviceLabels::gigeCamera(info.deviceInfo, KelDeviceLabels::kGigeNameLengthAtCreation),
                     Q_FUNC_INFO);
}

QTreeWidgetItem *KelDeviceTreePrivate::onNewUSBCamera(const KELA_STRUCT_DEVICE_INFO &info,
                                                      QTreeWidgetItem *parent)
{
    if (!parent) {
        return nullptr;
    }
    return newCamera(info, parent, KelDeviceTree::ItemUSBCamera, KelDeviceLabels::usbCamera(info.deviceInfo),
                     Q_FUNC_INFO);
}

QTreeWidgetItem *KelDeviceTreePrivate::onNewCamLinkCamera(const KELA_STRUCT_DEVICE_INFO &info,
                                                          QTreeWidgetItem *parent)
{
    if (!parent) {
        return nullptr;
    }
    return newCamera(info, parent, KelDeviceTree::ItemCamLinkCamera,
                     KelDeviceLabels::cameraLinkCamera(info.deviceInfo), Q_FUNC_INFO);
}

QTreeWidgetItem *KelDeviceTreePrivate::onNewGenTLDevice(const KELA_STRUCT_DEVICE_INFO &info,
                                                        QTreeWidgetItem *parent)
{
    if (!parent) {
        return nullptr;
    }
    return newCamera(info, parent, KelDeviceTree::ItemGenTLDevice,
                     KelDeviceLabels::genTLDevice(info.deviceInfo), Q_FUNC_INFO);
}

void KelDeviceTreePrivate::onUpdateGigeCamera(const KELA_STRUCT_DEVICE_INFO &info)
{
    if (QTreeWidgetItem *item = findCameraItem(info.deviceId)) {
        constexpr int kWholeName = sizeof info.deviceInfo.special.gige.userDefinedName;
        const KelDeviceTreeGuard guard(q, item);
        if (showLabel(guard, KelDeviceLabels::gigeCamera(info.deviceInfo, kWholeName))) {
            updateCamera(guard, info);
        }
    }
}

void KelDeviceTreePrivate::onUpdateUSBCamera(const KELA_STRUCT_DEVICE_INFO &info)
{
    if (QTreeWidgetItem *item = findCameraItem(info.deviceId)) {
        const QString label = KelDeviceLabels::usbCamera(info.deviceInfo);
        const KelDeviceTreeGuard guard(q, item);
        if (showLabel(guard, label)) {
            updateCamera(guard, info);
        }
        logTreeInfo(__LINE__, Q_FUNC_INFO, namingLine(label, info.deviceId));
    }
}

// Keeps its label.
void KelDeviceTreePrivate::onUpdateCamLinkCamera(const KELA_STRUCT_DEVICE_INFO &info)
{
    if (QTreeWidgetItem *item = findCameraItem(info.deviceId)) {
        updateCamera(KelDeviceTreeGuard(q, item), info);
    }
}

void KelDeviceTreePrivate::onUpdateGenTLDevice(const KELA_STRUCT_DEVICE_INFO &info)
{
    if (QTreeWidgetItem *item = findCameraItem(info.deviceId)) {
        const KelDeviceTreeGuard guard(q, item);
        if (showLabel(guard, KelDeviceLabels::genTLDevice(info.deviceInfo))) {
            updateCamera(guard, info);
        }
    }
}

void KelDeviceTreePrivate::updateCamera(const KelDeviceTreeGuard &guard, const KELA_STRUCT_DEVICE_INFO &info)
{
    const QVariant stored = guard.item()->data(0, KelDeviceTree::ItemInfoRole);
    const auto *shown = recordIn<KELA_STRUCT_DEVICE_INFO>(stored);
    if (shown && isCameraConnet(shown->deviceState)) {
        KELA_STRUCT_DEVICE_INFO kept = info;
        kept.deviceState = shown->deviceState;
        setItemRecord<KELA_STRUCT_DEVICE_INFO>(guard, QVariant::fromValue(kept));
        return;
    }
    if (!showState(guard, static_cast<KELA_DEV_STATE>(info.deviceState)) ||
        !(holdsRecord(stored, info) || guard.write(KelDeviceTree::ItemInfoRole, QVariant::fromValue(info)))) {
        return;
    }
    // The update of a USB camera writes a line every time.
    if (info.deviceInfo.transport != KELA_INTERFACE_TYPE_USB) {
        m_settled->settle(info, guard.item(), m_rightBtns.value(info.deviceId));
    }
}

void KelDeviceTreePrivate::deleteCameraItem(QTreeWidgetItem *item)
{
    if (!item || item->treeWidget() != q) {
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    int id = item->data(0, KelDeviceTree::ItemIdRole).toInt();
    makeGroupCurrentInsteadOf(item);
    if (guard.item()) {
        Q_EMIT q->sigDeleteDeviceItem(guard.item());
    }
    if (guard.isTreeAlive()) {
        // A receiver may have given the row another identifier, or taken the row away.
        if (guard.item()) {
            id = guard.item()->data(0, KelDeviceTree::ItemIdRole).toInt();
        }
        removeItemRightBtn(id);
        delete guard.item();
        deleteThreadInfo(id);
    }
}

void KelDeviceTreePrivate::setItemIcon(QTreeWidgetItem *item, KELA_DEV_STATE state)
{
    if (item) {
        showState(KelDeviceTreeGuard(q, item), state);
    }
}

bool KelDeviceTreePrivate::showState(const KelDeviceTreeGuard &guard, KELA_DEV_STATE state)
{
    const StateLook look = lookOf(state);
    if (look.connected && !guard.write(KelDeviceTree::ItemConnectedRole, *look.connected)) {
        return false;
    }
    const QTreeWidgetItem *item = guard.item();
    if (look.button) {
        const int id = item->data(0, KelDeviceTree::ItemIdRole).toInt();
        m_settled->forget(id);
        updateItemRightBtn(id, *look.button);
    }
    // A grabbing GenTL device shows it whatever its item is.
    const int type = item->data(0, KelDeviceTree::ItemTypeRole).toInt();
    const bool hasIcon = state == KELA_DEV_STATE_GENTL_GRABBING ||
                         (type >= KelDeviceTree::ItemGigECamera && type <= KelDeviceTree::ItemGenTLInterface);
    return !hasIcon || setIcon(guard, iconMap().value(state));
}

QString KelDeviceTreePrivate::getSerialByInfo(const KELA_STRUCT_DEVICE_INFO &info)
{
    return KelDeviceLabels::serial(info);
}

QString KelDeviceTreePrivate::getCameraSerial(QTreeWidgetItem *item)
{
    if (!q->isCameraItem(item)) {
        return QString();
    }
    return getSerialByInfo(item->data(0, KelDeviceTree::ItemInfoRole).value<KELA_STRUCT_DEVICE_INFO>());
}
