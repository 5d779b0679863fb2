// SPDX-License-Identifier: Apache-2.0
// The host's network cards, listed before every pass of a network transport and attached to the devices
// that were seen through them.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>
#include <DeviceEnumMng/DevicesEnum/IdLists.h>
#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>
#include <DeviceEnumMng/DevicesEnum/RoutingTable.h>
#include <DeviceEnumMng/DevicesEnum/UnsharedCopy.h>

#include <QHostAddress>
#include <QNetworkAddressEntry>
#include <QNetworkInterface>

namespace
{

template <std::size_t Size>
void setText(char (&field)[Size], const QString &text)
{
    QString2Char(text, field, static_cast<int>(Size));
}

bool isCardAddress(const QHostAddress &address)
{
    return !address.isLoopback() && address.protocol() == QAbstractSocket::IPv4Protocol;
}

// A card is known by its last IPv4 address. Looking for that one first lets the routing table be read once
// per card, however many addresses it has.
bool findCardAddress(const QNetworkInterface &card, QNetworkAddressEntry &found)
{
    bool isFound = false;
    const QList<QNetworkAddressEntry> entries = card.addressEntries();
    for (const QNetworkAddressEntry &entry : entries) {
        if (isCardAddress(entry.ip())) {
            found = entry;
            isFound = true;
        }
    }
    return isFound;
}

KELA_NETWORK cardRecord(const QNetworkInterface &card, const QNetworkAddressEntry &entry)
{
    const bool isUsed =
        card.flags().testFlag(QNetworkInterface::IsUp) || card.flags().testFlag(QNetworkInterface::IsRunning);
    const QHostAddress address = isUsed ? entry.ip() : QHostAddress();
    QString routeText;
    QString gateway;
    int cardValue = -1;
    GetNetWorkInfoByMac_linux(card.name(), address.toString(), routeText, gateway, cardValue);

    KELA_NETWORK record = {};
    setText(record.name, QStringLiteral("%1[%2]").arg(card.humanReadableName(), address.toString()));
    setText(record.hardwareAddress, card.hardwareAddress());
    setText(record.routeText, routeText);
    record.cardValue = cardValue;
    record.addressCount = 1;
    record.addresses[0] = {address.toIPv4Address(), entry.netmask().toIPv4Address(), strIP2IntIP(gateway)};
    return record;
}

} // namespace

void CDevicesEnum::EnumNetWorks()
{
    QVector<KELA_NETWORK> cards;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &interface : interfaces) {
        QNetworkAddressEntry entry;
        if (findCardAddress(interface, entry)) {
            KELA_NETWORK card = cardRecord(interface, entry);
            card.id = static_cast<uint32_t>(m_netWorkIds.getNetWorkID(card));
            cards.append(card);
        }
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_netWorks = unsharedCopy(cards);
    }
    reportNetWorks(cards);
}

void CDevicesEnum::reportNetWorks(const QVector<KELA_NETWORK> &cards)
{
    const QVector<long> presentIds = m_netWorkIds.NetWorkIdList();
    QVector<long> seenIds;
    for (const KELA_NETWORK &card : cards) {
        const long id = card.id;
        m_netWorkIds.updateNetWorkInfo(id, card);
        seenIds.append(id);
        if (CrossPlatContainInVec(presentIds, id)) {
            reportNetWork(card, KELA_INTERFACE_STATE_INTERFACE_UPDATED);
        } else {
            reportNetWork(card, KELA_INTERFACE_STATE_INTERFACE_NEW);
            m_netWorkIds.addNetWorkID(id);
        }
    }
    for (const long id : presentIds) {
        if (!CrossPlatContainInVec(seenIds, id)) {
            reportNetWork(m_netWorkIds.getNetWorkInfo(id), KELA_INTERFACE_STATE_INTERFACE_REMOVED);
            m_netWorkIds.deleteNetWorkID(id);
        }
    }
}

void CDevicesEnum::reportNetWork(const KELA_NETWORK &card, KELA_INTERFACE_STATE kind) const
{
    KELA_INTERFACE_INFO event = {};
    event.interfaceType = m_interfaceType;
    event.special.network = card;
    sendEvent(&event, nullptr, kind);
}

KELA_DEVICE_NETWORK CDevicesEnum::GetDeviceNetWorkInfo(const KELA_DEVICE_INFO_EX &stDeviceInfo) const
{
    KELA_DEVICE_NETWORK block = {};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        block = cardOf(stDeviceInfo, m_netWorks);
    }
    if (block.found != 0) {
        outputDebugLine([&stDeviceInfo, &block] {
            return QStringLiteral("DeviceSerial: %1; Netchard: %2")
                .arg(textOf(stDeviceInfo.serialNumber), textOf(block.name));
        });
    }
    return block;
}
