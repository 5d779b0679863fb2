// SPDX-License-Identifier: Apache-2.0
#include "EventReporter.h"

#include "ConnectionManager.h"
#include "DeviceState.h"
#include "DeviceText.h"
#include "EnumerationMonitor.h"
#include "EventLog.h"
#include "InterfaceManager.h"
#include "TreeHost.h"
#include "TreeRows.h"

namespace browser
{

namespace
{

QString errorText(uint errorCode)
{
    const int code = static_cast<int>(errorCode);
    return QStringLiteral("%1 %2").arg(KelInterface::GenerateErrorDesc(code),
                                       KelInterface::IntCode2DisplayCode(code));
}

} // namespace

EventReporter::EventReporter(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(parts.host, &TreeHost::replaced, this, &EventReporter::listenTo);
    connect(parts.monitor, &EnumerationMonitor::passEnded, this, &EventReporter::notePassEnd);
    listenToConnections();
}

void EventReporter::listenTo(KelDeviceTree *tree)
{
    m_states.clear();
    using Kind = EventLog::Kind;
    const auto appeared = [this](QTreeWidgetItem *row) { m_parts.log->add(Kind::Appeared, rows::textOf(row)); };
    const auto gone = [this](QTreeWidgetItem *row) { m_parts.log->add(Kind::Gone, rows::textOf(row)); };
    connect(tree, &KelDeviceTree::sigNewNetWorkItem, this, appeared);
    connect(tree, &KelDeviceTree::sigDeleteNetWorkItem, this, gone);
    connect(tree, &KelDeviceTree::sigNewUSBControllerItem, this, appeared);
    connect(tree, &KelDeviceTree::sigDeleteUSBCtrollerItem, this, gone);
    connect(tree, &KelDeviceTree::sigNewGenTLInterfaceItem, this, appeared);
    connect(tree, &KelDeviceTree::sigDeleteGenTLInterfaceItem, this, gone);
    connect(tree, &KelDeviceTree::sigNewDeviceItem, this, &EventReporter::noteNewDevice);
    connect(tree, &KelDeviceTree::sigUpdateDeviceItem, this, &EventReporter::noteChangedDevice);
    connect(tree, &KelDeviceTree::sigDeleteDeviceItem, this, &EventReporter::noteGoneDevice);
    connect(tree, &KelDeviceTree::sigBeforeDeleteCti, this, [this](const QString &producer) {
        m_parts.log->add(Kind::Note, tr("The producer %1 is let go.").arg(producer));
    });
}

void EventReporter::listenToConnections()
{
    using Kind = EventLog::Kind;
    const ConnectionManager *connections = m_parts.connections;
    connect(connections, &ConnectionManager::opened, this,
            [this](long id) { m_parts.log->add(Kind::Note, tr("Connected: %1").arg(nameOf(id))); });
    connect(connections, &ConnectionManager::closed, this,
            [this](long id) { m_parts.log->add(Kind::Note, tr("Disconnected: %1").arg(nameOf(id))); });
    connect(connections, &ConnectionManager::lost, this, [this](long id, uint errorCode) {
        m_parts.log->add(Kind::Problem, tr("Connection lost: %1: %2").arg(nameOf(id), errorText(errorCode)));
    });
    connect(connections, &ConnectionManager::openFailed, this, [this](long id, uint errorCode) {
        m_parts.log->add(Kind::Problem, tr("Could not connect %1: %2").arg(nameOf(id), errorText(errorCode)));
    });
    connect(m_parts.interfaces, &InterfaceManager::openFailed, this, [this](long, uint errorCode) {
        m_parts.log->add(Kind::Problem, tr("The interface could not be opened: %1").arg(errorText(errorCode)));
    });
}

void EventReporter::noteNewDevice(QTreeWidgetItem *row)
{
    const auto device = rows::deviceOf(row);
    if (!device)
        return;
    m_states.insert(device->deviceId, device->deviceState);
    m_names.insert(device->deviceId, displayName(device->deviceInfo));
    m_parts.log->add(
        EventLog::Kind::Appeared,
        QStringLiteral("%1: %2").arg(rows::textOf(row), conditionText(conditionOf(device->deviceState))));
}

void EventReporter::noteChangedDevice(QTreeWidgetItem *row)
{
    const auto device = rows::deviceOf(row);
    if (!device)
        return;
    const auto known = m_states.find(device->deviceId);
    const bool isChanged = known == m_states.end() || *known != device->deviceState;
    m_states.insert(device->deviceId, device->deviceState);
    // This program's own connections are told where they are made.
    if (isChanged && !isOwnState(device->deviceState)) {
        m_parts.log->add(
            EventLog::Kind::Note,
            QStringLiteral("%1: %2").arg(rows::textOf(row), conditionText(conditionOf(device->deviceState))));
    }
}

void EventReporter::noteGoneDevice(QTreeWidgetItem *row)
{
    m_states.remove(rows::idOf(row));
    m_parts.log->add(EventLog::Kind::Gone, rows::textOf(row));
}

void EventReporter::notePassEnd(int transport, int, int errorCode)
{
    if (m_lastResults.value(transport, 0) == errorCode)
        return;
    m_lastResults.insert(transport, errorCode);
    const QString name = transportName(static_cast<uint>(transport));
    if (errorCode != 0) {
        m_parts.log->add(EventLog::Kind::Problem,
                         tr("The search on %1 failed: %2").arg(name, errorText(static_cast<uint>(errorCode))));
    } else {
        m_parts.log->add(EventLog::Kind::Note, tr("The search on %1 works again.").arg(name));
    }
}

QString EventReporter::nameOf(long id) const
{
    return m_names.value(id, QString::number(id));
}

QString transportName(uint transport)
{
    switch (transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return QStringLiteral("GigE");
    case KELA_INTERFACE_TYPE_USB:
        return QStringLiteral("USB");
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return QStringLiteral("Camera Link");
    case KELA_INTERFACE_TYPE_GENTL:
        return QStringLiteral("GenTL");
    default:
        return QString::number(transport);
    }
}

} // namespace browser
