// SPDX-License-Identifier: Apache-2.0
#include "EnumerationMonitor.h"

#include <DeviceEnumMng/KelDeviceTree.h>

namespace browser
{

EnumerationMonitor::EnumerationMonitor(QObject *parent)
    : QObject(parent)
{
}

void EnumerationMonitor::listenTo(KelDeviceTree *tree)
{
    m_goneDevices.clear();
    m_goneCards.clear();
    m_goneInterfaces.clear();
    m_begun.clear();
    m_lastPassMs.clear();
    connect(tree, &KelDeviceTree::sigEventSink, this, &EnumerationMonitor::noteEvent);
}

QVector<KELA_NETWORK> EnumerationMonitor::goneCards() const
{
    QVector<KELA_NETWORK> cards;
    for (const KELA_NETWORK &card : m_goneCards)
        cards.append(card);
    return cards;
}

QVector<KELA_GENTL_IF_INFO> EnumerationMonitor::goneInterfaces() const
{
    QVector<KELA_GENTL_IF_INFO> interfaces;
    for (const KELA_GENTL_IF_INFO &genTLInterface : m_goneInterfaces)
        interfaces.append(genTLInterface);
    return interfaces;
}

void EnumerationMonitor::noteEvent(const QVariant &container, const QVariant &device, int kind, int errorCode,
                                   int transport)
{
    const uint type = static_cast<uint>(transport);
    switch (kind) {
    case KELA_INTERFACE_STATE_INTERFACE_NEW:
    case KELA_INTERFACE_STATE_INTERFACE_UPDATED:
        noteContainer(container, false);
        break;
    case KELA_INTERFACE_STATE_INTERFACE_REMOVED:
        noteContainer(container, true);
        break;
    case KELA_INTERFACE_STATE_DEVICE_NEW:
    case KELA_INTERFACE_STATE_DEVICE_UPDATED:
        m_goneDevices.remove(device.value<KELA_STRUCT_DEVICE_INFO>().deviceId);
        break;
    case KELA_INTERFACE_STATE_DEVICE_REMOVED:
        noteGone(device.value<KELA_STRUCT_DEVICE_INFO>());
        break;
    case KELA_INTERFACE_STATE_PASS_BEGIN:
        m_begun[type].start();
        Q_EMIT passBegan(transport);
        break;
    case KELA_INTERFACE_STATE_PASS_END:
        m_lastPassMs[type] = m_begun.contains(type) ? static_cast<int>(m_begun[type].elapsed()) : -1;
        Q_EMIT passEnded(transport, m_lastPassMs[type], errorCode);
        break;
    default:
        break;
    }
}

void EnumerationMonitor::noteGone(const KELA_STRUCT_DEVICE_INFO &device)
{
    m_goneDevices.insert(device.deviceId);
    Q_EMIT deviceGone(device.deviceId, static_cast<int>(device.deviceInfo.transport));
}

void EnumerationMonitor::noteContainer(const QVariant &container, bool isGone)
{
    const KELA_INTERFACE_INFO info = container.value<KELA_INTERFACE_INFO>();
    if (info.interfaceType == KELA_INTERFACE_TYPE_GIGE) {
        noteCard(info.special.network, isGone);
    } else if (info.interfaceType == KELA_INTERFACE_TYPE_GENTL && isGone) {
        m_goneInterfaces.insert(info.special.genTLInterface.id, info.special.genTLInterface);
    } else if (info.interfaceType == KELA_INTERFACE_TYPE_GENTL) {
        m_goneInterfaces.remove(info.special.genTLInterface.id);
    }
}

void EnumerationMonitor::noteCard(const KELA_NETWORK &card, bool isGone)
{
    const std::string_view key = fixedText(card.hardwareAddress);
    const QByteArray name(key.data(), static_cast<int>(key.size()));
    if (isGone) {
        m_goneCards.insert(name, card);
    } else {
        m_goneCards.remove(name);
    }
}

} // namespace browser
