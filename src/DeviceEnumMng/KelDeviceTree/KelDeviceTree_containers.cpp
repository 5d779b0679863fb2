// SPDX-License-Identifier: Apache-2.0
// Containers of cameras: network cards, USB controllers, GenTL interfaces and the groups of virtual and of
// other devices. Called by the slots of the tree, on the GUI thread.
//
// Network cards are told apart by their hardware address; USB controllers and GenTL interfaces are not told
// apart at all. A look-up of a GenTL interface that matches none gives the last child of the group. Slots
// behind a signal may remove anything: items are met again through a guard.
#include "KelDeviceTree_p.h"

#include "KelDeviceLabels.h"
#include "KelDeviceTreeGuard.h"
#include "KelDeviceTreeIndex.h"
#include "KelDeviceTreeLog.h"
#include "KelDeviceTreeRecords.h"

#include <QTreeWidgetItem>

namespace
{

bool showRecord(const KelDeviceTreeGuard &guard, const QString &text, const QString &toolTip)
{
    return guard.write(Qt::DisplayRole, text) && guard.write(Qt::ToolTipRole, toolTip);
}

} // namespace

QTreeWidgetItem *KelDeviceTreePrivate::newContainer(int groupType, int itemType)
{
    QTreeWidgetItem *group = findItem(groupType, -1);
    if (!group) {
        return nullptr;
    }
    const KelDeviceTreeGuard guard(q, newTreeItem(group, itemType, -1));
    guard.item()->setExpanded(true);
    return guard.item();
}

QTreeWidgetItem *KelDeviceTreePrivate::findNetWorkItem(const QString &key)
{
    QTreeWidgetItem *group = findItem(KelDeviceTree::ItemGigERoot, -1);
    return group ? m_index->findContainer(group, KelDeviceTree::ItemNetWork, key) : nullptr;
}

QTreeWidgetItem *KelDeviceTreePrivate::findUSBControlItem(const QString &key)
{
    QTreeWidgetItem *group = findItem(KelDeviceTree::ItemUSBRoot, -1);
    return group ? m_index->findContainer(group, KelDeviceTree::ItemUSBController, key) : nullptr;
}

QTreeWidgetItem *KelDeviceTreePrivate::findGenTLInterfaceItem(int id)
{
    QTreeWidgetItem *group = findItem(KelDeviceTree::ItemGenTLRoot, -1);
    if (!group || group->childCount() == 0) {
        return nullptr;
    }
    QTreeWidgetItem *found = m_index->findInterface(group, id);
    return found ? found : group->child(group->childCount() - 1);
}

QTreeWidgetItem *KelDeviceTreePrivate::findGenTLInterfaceItem(const QString &key, unsigned int index)
{
    QTreeWidgetItem *group = findItem(KelDeviceTree::ItemGenTLRoot, -1);
    if (!group || group->childCount() == 0) {
        return nullptr;
    }
    QTreeWidgetItem *found = m_index->findInterface(group, key, index);
    return found ? found : group->child(group->childCount() - 1);
}

QTreeWidgetItem *KelDeviceTreePrivate::GetVirtualGroupItem(int type, bool create)
{
    QTreeWidgetItem *known = findItem(type, -1);
    if (known || !create) {
        return known;
    }
    QTreeWidgetItem *item = nullptr;
    QString text;
    switch (type) {
    case KelDeviceTree::ItemGigEVirtualGroup:
        item = newContainer(KelDeviceTree::ItemGigERoot, type);
        text = KelDeviceTree::tr("Virtual Device");
        break;
    case KelDeviceTree::ItemUSBVirtualGroup:
        item = newContainer(KelDeviceTree::ItemUSBRoot, type);
        text = KelDeviceTree::tr("Virtual Device");
        break;
    case KelDeviceTree::ItemOtherGroup:
        item = newContainer(KelDeviceTree::ItemGigERoot, type);
        text = KelDeviceTree::tr("Other Device");
        break;
    default:
        break;
    }
    if (!item) {
        return nullptr;
    }
    const KelDeviceTreeGuard guard(q, item);
    const bool isShown = guard.write(KelDeviceTree::ItemIdRole, -1) && guard.write(Qt::DisplayRole, text);
    return isShown ? guard.item() : nullptr;
}

QTreeWidgetItem *KelDeviceTreePrivate::findParentItem(const KELA_STRUCT_DEVICE_INFO &info)
{
    switch (info.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return findGigeParent(info);
    case KELA_INTERFACE_TYPE_1394:
        return findItem(KelDeviceTree::Item1394Root, -1);
    case KELA_INTERFACE_TYPE_USB:
        return findUSBParent(info);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return findItem(KelDeviceTree::ItemCamLinkRoot, -1);
    case KELA_INTERFACE_TYPE_GENTL: {
        QTreeWidgetItem *parent = findGenTLInterfaceItem(KelDeviceLabels::interfaceKey(info.genTLInterface),
                                                         info.genTLInterface.number);
        return parent ? parent : findItem(KelDeviceTree::ItemGenTLRoot, -1);
    }
    default:
        return nullptr;
    }
}

QTreeWidgetItem *KelDeviceTreePrivate::findGigeParent(const KELA_STRUCT_DEVICE_INFO &info)
{
    const KelDeviceTreeGuard guard(q);
    QTreeWidgetItem *parent = nullptr;
    switch (info.deviceInfo.placement) {
    case KELA_PLACEMENT_REAL:
        parent = findNetWorkItem(KelDeviceLabels::networkKey(info));
        break;
    case KELA_PLACEMENT_VIRTUAL:
        parent = GetVirtualGroupItem(KelDeviceTree::ItemGigEVirtualGroup, true);
        break;
    case KELA_PLACEMENT_OTHER:
        parent = GetVirtualGroupItem(KelDeviceTree::ItemOtherGroup, true);
        break;
    default:
        break;
    }
    return parent || !guard.isTreeAlive() ? parent : findItem(KelDeviceTree::ItemGigERoot, -1);
}

QTreeWidgetItem *KelDeviceTreePrivate::findUSBParent(const KELA_STRUCT_DEVICE_INFO &info)
{
    const KelDeviceTreeGuard guard(q);
    QTreeWidgetItem *parent = nullptr;
    if (info.deviceInfo.placement == KELA_PLACEMENT_REAL) {
        parent = findUSBControlItem(KelDeviceLabels::controllerKey(info.usbController));
    } else if (info.deviceInfo.placement == KELA_PLACEMENT_VIRTUAL) {
        parent = GetVirtualGroupItem(KelDeviceTree::ItemUSBVirtualGroup, true);
    }
    return parent || !guard.isTreeAlive() ? parent : findItem(KelDeviceTree::ItemUSBRoot, -1);
}

void KelDeviceTreePrivate::onNewNetWork(const QVariant &dataVar)
{
    const auto card = dataVar.value<KELA_NETWORK>();
    if (findNetWorkItem(KelDeviceLabels::networkKey(card))) {
        q->onUpdateNetWorkInfo(dataVar);
        return;
    }
    QTreeWidgetItem *item = newContainer(KelDeviceTree::ItemGigERoot, KelDeviceTree::ItemNetWork);
    if (!item) {
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    if (setNetWork(guard, card, dataVar)) {
        Q_EMIT q->sigNewNetWorkItem(guard.item());
    }
}

void KelDeviceTreePrivate::onUpdateNetWorkInfo(const QVariant &dataVar)
{
    const auto card = dataVar.value<KELA_NETWORK>();
    QTreeWidgetItem *item = findNetWorkItem(KelDeviceLabels::networkKey(card));
    if (!item) {
        q->onNewNetWork(dataVar);
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    if (setNetWork(guard, card, dataVar)) {
        Q_EMIT q->sigUpdateNetWorkItem(guard.item());
    }
}

bool KelDeviceTreePrivate::setNetWork(const KelDeviceTreeGuard &guard, const KELA_NETWORK &card,
                                      const QVariant &record)
{
    const QString name = KelDeviceLabels::network(card);
    return showRecord(guard, name, name) && guard.write(KelDeviceTree::ItemIdRole, static_cast<int>(card.id)) &&
           setItemRecord<KELA_NETWORK>(guard, record);
}

void KelDeviceTreePrivate::onDeleteNetWork(const QVariant &dataVar)
{
    const auto card = dataVar.value<KELA_NETWORK>();
    QTreeWidgetItem *item = findItem(KelDeviceTree::ItemNetWork, static_cast<int>(card.id));
    if (!item || isNetWorkCameraConnected(item)) {
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    makeGroupCurrentInsteadOf(item);
    deleteCameras(guard);
    if (!guard.item()) {
        return;
    }
    Q_EMIT q->sigDeleteNetWorkItem(guard.item());
    delete guard.item();
    logTreeInfo(__LINE__, "void KelDeviceTree::onDeleteNetWork(QVariant)", KelDeviceLabels::network(card));
}

// Static: the tree may be gone after any of the cameras.
void KelDeviceTreePrivate::deleteCameras(const KelDeviceTreeGuard &guard)
{
    // Asked anew after each: a slot may have added one.
    for (QTreeWidgetItem *container = guard.item(); container && container->childCount() > 0;
         container = guard.item()) {
        of(guard.tree())->deleteCameraItem(container->child(container->childCount() - 1));
    }
}

void KelDeviceTreePrivate::onNewUSBController(const QVariant &dataVar)
{
    const auto controller = dataVar.value<KELA_USBCONTROLLER_INFO>();
    QTreeWidgetItem *item = newContainer(KelDeviceTree::ItemUSBRoot, KelDeviceTree::ItemUSBController);
    if (!item) {
        return;
    }
    const QString name = KelDeviceLabels::controller(controller);
    const KelDeviceTreeGuard guard(q, item);
    if (showRecord(guard, name, name) && guard.write(KelDeviceTree::ItemIdRole, controller.id) &&
        setItemRecord<KELA_USBCONTROLLER_INFO>(guard, dataVar)) {
        Q_EMIT q->sigNewUSBControllerItem(guard.item());
    }
}

// Unlike a network card, a controller goes with its cameras even when one of them is connected.
void KelDeviceTreePrivate::onDeleteUSBController(const QVariant &dataVar)
{
    const auto controller = dataVar.value<KELA_USBCONTROLLER_INFO>();
    QTreeWidgetItem *item = findItem(KelDeviceTree::ItemUSBController, controller.id);
    if (!item) {
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    makeGroupCurrentInsteadOf(item);
    deleteCameras(guard);
    if (!guard.item()) {
        return;
    }
    Q_EMIT q->sigDeleteUSBCtrollerItem(guard.item());
    deleteContainer(guard);
    logTreeInfo(__LINE__, "void KelDeviceTree::onDeleteUSBController(QVariant)",
                KelDeviceLabels::controller(controller));
}

// Static: the tree may be gone.
void KelDeviceTreePrivate::deleteContainer(const KelDeviceTreeGuard &guard)
{
    if (QTreeWidgetItem *item = guard.item()) {
        guard.tree()->setItemWidget(item, 0, nullptr);
        delete item;
    }
}

void KelDeviceTreePrivate::onNewGenTLInterface(const QVariant &dataVar)
{
    const auto interface = dataVar.value<KELA_GENTL_IF_INFO>();
    QTreeWidgetItem *item = newContainer(KelDeviceTree::ItemGenTLRoot, KelDeviceTree::ItemGenTLInterface);
    if (!item) {
        return;
    }
    const int id = static_cast<int>(interface.id);
    const KelDeviceTreeGuard guard(q, item);
    if (showRecord(guard, KelDeviceLabels::interfaceLabel(interface),
                   KelDeviceLabels::interfaceName(interface)) &&
        guard.write(KelDeviceTree::ItemIdRole, id) && setItemRecord<KELA_GENTL_IF_INFO>(guard, dataVar) &&
        writeRightBtn(guard, getItemRightBtn(id, true)) &&
        showState(guard, KELA_DEV_STATE_GENTL_INTERFACE_FREE)) {
        Q_EMIT q->sigNewGenTLInterfaceItem(guard.item());
    }
}

void KelDeviceTreePrivate::onUpdateGenTLInterface(const QVariant &dataVar)
{
    const auto interface = dataVar.value<KELA_GENTL_IF_INFO>();
    QTreeWidgetItem *item = findGenTLInterfaceItem(static_cast<int>(interface.id));
    if (!item) {
        q->onNewGenTLInterface(dataVar);
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    if (showRecord(guard, KelDeviceLabels::interfaceLabel(interface),
                   KelDeviceLabels::interfaceName(interface)) &&
        setItemRecord<KELA_GENTL_IF_INFO>(guard, dataVar)) {
        Q_EMIT q->sigUpdateGenTLInterfaceItem(guard.item());
    }
}

// The devices go with their interface, without a signal of their own; their buttons stay.
void KelDeviceTreePrivate::onDeleteGenTLInterface(const QVariant &dataVar)
{
    const auto interface = dataVar.value<KELA_GENTL_IF_INFO>();
    QTreeWidgetItem *item = findItem(KelDeviceTree::ItemGenTLInterface, static_cast<int>(interface.id));
    if (!item) {
        return;
    }
    const KelDeviceTreeGuard guard(q, item);
    makeGroupCurrentInsteadOf(item);
    if (!guard.item()) {
        return;
    }
    Q_EMIT q->sigDeleteGenTLInterfaceItem(guard.item());
    deleteContainer(guard);
    logTreeInfo(__LINE__, "void KelDeviceTree::onDeleteGenTLInterface(QVariant)",
                KelDeviceLabels::interfaceName(interface));
}
