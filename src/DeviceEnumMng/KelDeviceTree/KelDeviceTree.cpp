// SPDX-License-Identifier: Apache-2.0
// The public face: every operation checks the private part and forwards. What it does stands in the files
// of the concerns; the event hooks of drag and language stand there too.
#include <DeviceEnumMng/KelDeviceTree.h>

#include "KelDeviceTree_p.h"

#include <CommonTools/KelInterface.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/KelGenTLMenu.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QSettings>

namespace
{

// Process-wide inside the device access; the tree keeps nothing of it.
void applyAckMode()
{
    KelAIndustryControl deviceAccess;
    const QSettings settings(KelInterface::programDataPath() + QStringLiteral("/LocalConfig.ini"),
                             QSettings::IniFormat);
    // A section that is written as [General] by hand holds keys without a group for QSettings.
    const QVariant withoutGroup = settings.value(QStringLiteral("EunmAckMode"), 1);
    deviceAccess.SetEnumAckMode(settings.value(QStringLiteral("General/EunmAckMode"), withoutGroup).toInt());
}

} // namespace

KelDeviceTree::KelDeviceTree(QWidget *parent)
    : CustomTreeWidget(parent)
{
    d = std::make_unique<KelDeviceTreePrivate>(this);
    CustomTreeWidget::cSetStyleSelector(QStringLiteral("DeviceTree"));
    applyAckMode();
}

KelDeviceTree::~KelDeviceTree()
{
    d.reset();
}

void KelDeviceTree::updateDeviceTypes(unsigned int types, bool bReport, bool bRequeue, bool bShowLoading)
{
    if (d && d->m_enumEnabled) {
        d->refreshThread(types, bReport, bRequeue, bShowLoading);
    }
}

void KelDeviceTree::setEnableEnumDevices(bool bEnable)
{
    if (d) {
        d->m_enumEnabled = bEnable;
    }
}

bool KelDeviceTree::hasEnumOnce(unsigned int types)
{
    return d && d->hasEnumOnce(types);
}

void KelDeviceTree::setGenTLInterfaceHandle(int nInterfaceId, void *hInterface)
{
    if (d) {
        d->getThread(KELA_INTERFACE_TYPE_GENTL)->SetGenTLInterfaceHandle(nInterfaceId, hInterface);
    }
}

int KelDeviceTree::addRemoteDevice(KELA_STRUCT_DEVICE_INFO &info)
{
    return d ? d->addRemoteDevice(info) : -1;
}

int KelDeviceTree::removeRemoteDevice(KELA_STRUCT_DEVICE_INFO &info)
{
    return d ? d->removeRemoteDevice(info) : -1;
}

void KelDeviceTree::SetOffCameraID(long lCameraID)
{
    if (d) {
        d->getThread(KELA_INTERFACE_TYPE_GENTL)->SetOffCameraID(lCameraID);
    }
}

QTreeWidgetItem *KelDeviceTree::findItem(KelDeviceTree::ItemType type, long id)
{
    return d ? d->findItem(type, id) : nullptr;
}

QTreeWidgetItem *KelDeviceTree::findCameraItem(long cameraId)
{
    return d ? d->findCameraItem(cameraId) : nullptr;
}

QTreeWidgetItem *KelDeviceTree::findActualParentItem(KELA_STRUCT_DEVICE_INFO &info)
{
    return d ? d->findParentItem(info) : nullptr;
}

bool KelDeviceTree::isCameraItem(QTreeWidgetItem *item) const
{
    if (!item) {
        return false;
    }
    const int type = item->data(0, ItemTypeRole).toInt();
    return type >= ItemGigECamera && type <= ItemGenTLDevice;
}

int KelDeviceTree::deviceType2ItemType(int deviceType)
{
    switch (deviceType) {
    case KELA_INTERFACE_TYPE_GIGE:
        return ItemGigECamera;
    case KELA_INTERFACE_TYPE_USB:
        return ItemUSBCamera;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return ItemCamLinkCamera;
    case KELA_INTERFACE_TYPE_GENTL:
        return ItemGenTLDevice;
    default:
        return ItemGigERoot;
    }
}

void KelDeviceTree::deleteCameraItem(QTreeWidgetItem *item)
{
    if (d) {
        d->deleteCameraItem(item);
    }
}

void KelDeviceTree::setCameraItemIcon(QTreeWidgetItem *item, KELA_DEV_STATE state)
{
    if (d) {
        d->setItemIcon(item, state);
    }
}

QString KelDeviceTree::getCameraSerial(QTreeWidgetItem *item)
{
    return d ? d->getCameraSerial(item) : QString();
}

bool KelDeviceTree::isNetWorkCameraConnected(QTreeWidgetItem *netItem)
{
    return d && d->isNetWorkCameraConnected(netItem);
}

void KelDeviceTree::refreshEncodeType(int nEncodeType)
{
    if (d) {
        d->refreshEncodeType(nEncodeType);
    }
}

void KelDeviceTree::setCurRightBtn(CustomPushButton *btn, bool showMenuButton)
{
    if (d) {
        d->setCurRightBtn(btn, showMenuButton);
    }
}

void KelDeviceTree::setRightBtnVisible(bool visible)
{
    if (d) {
        d->setRightBtnVisible(visible);
    }
}

void KelDeviceTree::setStayTopList(const QStringList &serials)
{
    if (d) {
        d->updateStatTopList(serials);
    }
}

void KelDeviceTree::setVisibleItemTypes(const QList<int> &types)
{
    if (d) {
        d->setVisibleItemTypes(types);
    }
}

void KelDeviceTree::DeleteCtiFile(QTreeWidgetItem *item)
{
    if (d) {
        d->DeleteCtiFile(item);
    }
}

bool KelDeviceTree::Is3rdCtiInterface(QTreeWidgetItem *item)
{
    return d && d->Is3rdCtiInterface(item);
}

bool KelDeviceTree::IsOpenByVirtualPort(long interfaceId)
{
    return d && d->IsOpenByVirtualPort(interfaceId);
}

void KelDeviceTree::GetInterfaceItemList(const QString &ctiPath, QList<QTreeWidgetItem *> &items)
{
    if (d) {
        d->GetInterfaceItemList(ctiPath, items);
    }
}

QString KelDeviceTree::producerOfInterface(long interfaceId) const
{
    return d ? d->producerOfInterface(interfaceId) : QString();
}

void KelDeviceTree::SetEnableVirtualPort(bool enable)
{
    if (d && d->m_genTLMenu) {
        d->m_genTLMenu->SetEnableVirtualPort(enable);
    }
}

void KelDeviceTree::cSetStyleSelector(const QString &strName)
{
    if (d) {
        const auto state = strName == QLatin1String("DeviceTree") ? BtnConnect : BtnDisconnect;
        for (const long id : {kGigEBtnId, kUSBBtnId, kCameraLinkBtnId, kGenTLBtnId}) {
            d->updateItemRightBtn(id, state);
        }
    }
    CustomTreeWidget::cSetStyleSelector(strName);
}

QMimeData *KelDeviceTree::mimeData(const QList<QTreeWidgetItem *> items) const
{
    return d ? d->mimeData(items) : nullptr;
}

void KelDeviceTree::onRightBtnClicked()
{
    if (d) {
        d->onRightBtnClicked(sender());
    }
}

// Hosts may have taken the slots' addresses: they take their records by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
void KelDeviceTree::onNewNetWork(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onNewNetWork(dataVar);
    }
}

void KelDeviceTree::onNewGenTLInterface(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onNewGenTLInterface(dataVar);
    }
}

void KelDeviceTree::onUpdateGenTLInterface(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onUpdateGenTLInterface(dataVar);
    }
}

void KelDeviceTree::onDeleteGenTLInterface(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onDeleteGenTLInterface(dataVar);
    }
}

void KelDeviceTree::onDeleteNetWork(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onDeleteNetWork(dataVar);
    }
}

void KelDeviceTree::onUpdateNetWorkInfo(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onUpdateNetWorkInfo(dataVar);
    }
}

void KelDeviceTree::onNewDevice(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onNewDevice(dataVar);
    }
}

void KelDeviceTree::onDeleteDevice(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onDeleteDevice(dataVar);
    }
}

void KelDeviceTree::onUpdateDeviceInfo(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onUpdateDeviceInfo(dataVar);
    }
}

void KelDeviceTree::onNewUSBController(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onNewUSBController(dataVar);
    }
}

void KelDeviceTree::onDeleteUSBController(QVariant dataVar)
{
    if (d && d->m_enumEnabled) {
        d->onDeleteUSBController(dataVar);
    }
}
// NOLINTEND(performance-unnecessary-value-param)

void KelDeviceTree::onEndThread(int nDeviceType, int nErrorCode)
{
    if (d) {
        d->onEndThread(nDeviceType, nErrorCode);
    }
}

void KelDeviceTree::OnCtiFileChanged()
{
    if (d) {
        d->OnCtiFileChanged();
    }
}

void KelDeviceTree::onEventSink(const QVariant &stNetCardInfo, const QVariant &stDeviceInfo,
                                int nKelAIntefaceState, int nErrorCode, int nDeviceType)
{
    if (d) {
        d->onEventSink(stNetCardInfo, stDeviceInfo, nKelAIntefaceState, nErrorCode, nDeviceType);
    }
}
