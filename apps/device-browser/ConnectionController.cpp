// SPDX-License-Identifier: Apache-2.0
#include "ConnectionController.h"

#include "ConnectionManager.h"
#include "DeviceState.h"
#include "EnumerationMonitor.h"
#include "InterfaceManager.h"
#include "PassScheduler.h"
#include "RowNames.h"
#include "TreeHost.h"
#include "TreeRows.h"

namespace browser
{

namespace
{

/// A single pass may have missed a device.
constexpr int kPassesThatFindEverything = 2;

} // namespace

ConnectionController::ConnectionController(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(parts.host, &TreeHost::replaced, this, &ConnectionController::listenTo);
    connect(parts.host, &TreeHost::aboutToReplace, this, [this] {
        const QList<long> open = m_parts.interfaces->openIds();
        for (const long id : open)
            closeInterface(id);
        letGoOfAbsentDevices();
    });
    listenToConnections();
    listenToInterfaces();
}

void ConnectionController::toggleDevice(long id)
{
    const SessionState state = m_parts.connections->session(id).state;
    if (state != SessionState::None) {
        m_parts.connections->close(id);
        return;
    }
    const auto device = rows::deviceOf(*m_parts.host->tree(), id);
    if (!device)
        return;
    switch (conditionOf(device->deviceState)) {
    case Condition::Unusable:
        Q_EMIT unreachableChosen(id);
        break;
    case Condition::InUse:
        break;
    default:
        m_parts.connections->open(*device);
    }
}

void ConnectionController::toggleInterface(long id)
{
    if (m_parts.interfaces->isOpen(id)) {
        closeInterface(id);
        return;
    }
    QTreeWidgetItem *row = m_parts.host->tree()->findItem(KelDeviceTree::ItemGenTLInterface, id);
    if (const auto record = rows::recordOf<KELA_GENTL_IF_INFO>(row))
        m_parts.interfaces->open(*record);
}

void ConnectionController::refresh(uint transports)
{
    m_parts.scheduler->requestNow(transports);
}

void ConnectionController::releaseAll()
{
    m_isReleasingAll = true;
    const QVector<long> held = m_parts.connections->ids();
    for (const long id : held)
        m_parts.connections->close(id);
    if (held.isEmpty())
        Q_EMIT allReleased();
}

void ConnectionController::setFrozen(bool isFrozen)
{
    m_isFrozen = isFrozen;
    m_parts.host->tree()->setEnableEnumDevices(!isFrozen);
    // A pass that the tree refuses would never end.
    m_parts.scheduler->setHeld(isFrozen);
    // What the tree ignored while it stood still it is not told again.
    if (!isFrozen)
        removeGoneRows();
}

void ConnectionController::nameRows()
{
    QSet<long> lost;
    const QVector<long> held = m_parts.connections->ids();
    for (const long id : held) {
        if (m_parts.connections->session(id).state == SessionState::Lost)
            lost.insert(id);
    }
    if (KelDeviceTree *tree = m_parts.host->tree())
        rows::nameAllForScreenReaders(*tree, lost);
}

void ConnectionController::listenTo(KelDeviceTree *tree)
{
    m_passes.clear();
    if (m_isFrozen)
        tree->setEnableEnumDevices(false);
    connect(tree, &KelDeviceTree::sigRightBtnClicked, this, [this](long id, bool isInterface) {
        if (isInterface) {
            toggleInterface(id);
        } else {
            toggleDevice(id);
        }
    });
    connect(tree, &KelDeviceTree::sigNewDeviceItem, this, &ConnectionController::noteRow);
    connect(tree, &KelDeviceTree::sigUpdateDeviceItem, this, &ConnectionController::noteRow);
    connect(tree, &KelDeviceTree::sigDeleteGenTLInterfaceItem, this,
            [this](QTreeWidgetItem *row) { m_parts.interfaces->close(rows::idOf(row)); });
    connect(tree, &KelDeviceTree::sigBeforeDeleteCti, this, &ConnectionController::closeInterfacesOf);
    connect(tree, &KelDeviceTree::sigFinishEnumOnce, this, [this](int transport) {
        if (++m_passes[transport] == kPassesThatFindEverything)
            letGoOfUnseenDevices(static_cast<uint>(transport));
    });
    const auto nameRow = [tree](QTreeWidgetItem *row) { rows::nameForScreenReaders(*tree, row); };
    connect(tree, &KelDeviceTree::sigNewGenTLInterfaceItem, this, nameRow);
    connect(tree, &KelDeviceTree::sigUpdateGenTLInterfaceItem, this, nameRow);
    nameRows();
}

void ConnectionController::listenToConnections()
{
    // A GigE camera is asked itself, and its connection outlives a lost discovery.
    connect(m_parts.monitor, &EnumerationMonitor::deviceGone, this, [this](long id, int transport) {
        if (transport != KELA_INTERFACE_TYPE_GIGE)
            m_parts.connections->noteGone(id);
    });
    ConnectionManager *connections = m_parts.connections;
    connect(connections, &ConnectionManager::opened, this, [this](long id) {
        if (const KELA_STRUCT_DEVICE_INFO *device = m_parts.connections->device(id))
            rows::showOwnState(*m_parts.host->tree(), id, connectedState(*device));
    });
    connect(connections, &ConnectionManager::lost, this, [this](long id) {
        rows::showLost(*m_parts.host->tree(), id);
        // Without a row nobody could let it go.
        if (!m_parts.host->tree()->findCameraItem(id))
            m_parts.connections->close(id);
    });
    connect(connections, &ConnectionManager::closed, this, &ConnectionController::showReleased);
    connect(connections, &ConnectionManager::changed, this, [this] {
        if (m_isReleasingAll && m_parts.connections->ids().isEmpty())
            Q_EMIT allReleased();
    });
}

void ConnectionController::listenToInterfaces()
{
    connect(m_parts.interfaces, &InterfaceManager::opened, this, [this](long id, void *handle) {
        KelDeviceTree *tree = m_parts.host->tree();
        tree->setGenTLInterfaceHandle(static_cast<int>(id), handle);
        showInterfaceState(id, KELA_DEV_STATE_GENTL_INTERFACE_OPEN);
        m_parts.scheduler->requestNow(KELA_INTERFACE_TYPE_GENTL);
    });
    connect(m_parts.interfaces, &InterfaceManager::closed, this,
            [this](long id) { m_parts.host->tree()->setGenTLInterfaceHandle(static_cast<int>(id), nullptr); });
}

void ConnectionController::noteRow(QTreeWidgetItem *row)
{
    const auto device = rows::deviceOf(row);
    if (!device)
        return;
    const long id = device->deviceId;
    const SessionState state = m_parts.connections->session(id).state;
    // A new tree, or a row that comes back, knows nothing of what is held already.
    if ((state == SessionState::Open || state == SessionState::Lost) && !isOwnState(device->deviceState)) {
        KelDeviceTree &tree = *m_parts.host->tree();
        rows::showOwnState(tree, id, connectedState(*device));
        if (state == SessionState::Lost)
            rows::showLost(tree, id);
        return;
    }
    rows::nameForScreenReaders(*m_parts.host->tree(), row, state == SessionState::Lost);
}

void ConnectionController::closeInterface(long id)
{
    forgetDevicesOf(id);
    m_parts.interfaces->close(id);
    showInterfaceState(id, KELA_DEV_STATE_GENTL_INTERFACE_FREE);
}

void ConnectionController::showInterfaceState(long id, KELA_DEV_STATE state)
{
    KelDeviceTree *tree = m_parts.host->tree();
    QTreeWidgetItem *row = tree->findItem(KelDeviceTree::ItemGenTLInterface, id);
    tree->setCameraItemIcon(row, state);
    rows::nameForScreenReaders(*tree, row);
}

void ConnectionController::closeInterfacesOf(const QString &producer)
{
    const QList<long> ids = m_parts.interfaces->ids();
    for (const long id : ids) {
        if (m_parts.host->tree()->producerOfInterface(id) == producer)
            closeInterface(id);
    }
}

void ConnectionController::forgetDevicesOf(long interfaceId)
{
    KelDeviceTree *tree = m_parts.host->tree();
    const QVector<KELA_STRUCT_DEVICE_INFO> devices =
        rows::devicesBelow(tree->findItem(KelDeviceTree::ItemGenTLInterface, interfaceId));
    for (const KELA_STRUCT_DEVICE_INFO &device : devices) {
        m_parts.connections->close(device.deviceId);
        tree->deleteCameraItem(tree->findCameraItem(device.deviceId));
        // The devices of a closed interface are not looked for any more, so nobody would report them
        // gone, nor new when the interface is opened again.
        tree->SetOffCameraID(device.deviceId);
    }
}

void ConnectionController::letGoOfAbsentDevices()
{
    const QVector<long> held = m_parts.connections->ids();
    for (const long id : held) {
        const bool isLost = m_parts.connections->session(id).state == SessionState::Lost;
        if (isLost || m_parts.monitor->isGone(id))
            m_parts.connections->close(id);
    }
}

void ConnectionController::letGoOfUnseenDevices(uint transport)
{
    const QVector<long> held = m_parts.connections->ids();
    for (const long id : held) {
        const KELA_STRUCT_DEVICE_INFO *device = m_parts.connections->device(id);
        if (device->deviceInfo.transport == transport && !m_parts.host->tree()->findCameraItem(id))
            m_parts.connections->close(id);
    }
}

void ConnectionController::showReleased(long id)
{
    KelDeviceTree &tree = *m_parts.host->tree();
    if (const auto device = rows::deviceOf(tree, id))
        rows::showOwnState(tree, id, freeState(device->deviceInfo));
    removeGoneRows();
    m_parts.scheduler->requestNow(m_parts.scheduler->transports());
}

void ConnectionController::removeGoneRows()
{
    KelDeviceTree *tree = m_parts.host->tree();
    const QList<long> goneDevices = m_parts.monitor->goneDevices();
    for (const long id : goneDevices) {
        const auto device = rows::deviceOf(*tree, id);
        if (device && !isOwnState(device->deviceState))
            tree->deleteCameraItem(tree->findCameraItem(id));
    }
    const QVector<KELA_NETWORK> goneCards = m_parts.monitor->goneCards();
    for (const KELA_NETWORK &card : goneCards) {
        if (rows::cardRow(*tree, card))
            tree->onDeleteNetWork(QVariant::fromValue(card));
    }
    const QVector<KELA_GENTL_IF_INFO> goneInterfaces = m_parts.monitor->goneInterfaces();
    for (const KELA_GENTL_IF_INFO &genTLInterface : goneInterfaces)
        tree->onDeleteGenTLInterface(QVariant::fromValue(genTLInterface));
}

} // namespace browser
