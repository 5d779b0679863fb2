// SPDX-License-Identifier: Apache-2.0
#include "HostFacts.h"

#include "Ipv4.h"

#include <QFile>
#include <QNetworkInterface>
#include <QtEndian>

#include <algorithm>

namespace browser
{

namespace
{

constexpr qint64 kLargestSettingFile = 64;
constexpr qint64 kLargestRouteTable = qint64(1024) * 1024;
constexpr uint kRouteIsUp = 1;

int readSetting(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    bool isNumber = false;
    const int value = file.read(kLargestSettingFile).trimmed().toInt(&isNumber);
    return isNumber ? value : -1;
}

/// The kernel writes addresses of the table as they lie in memory.
uint32_t routeNumber(const QByteArray &field)
{
    const uint32_t value = field.toUInt(nullptr, 16);
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    return qbswap(value);
#else
    return value;
#endif
}

HostCard hostCard(const QNetworkInterface &card)
{
    HostCard result;
    result.name = card.name();
    result.hardwareAddress = card.hardwareAddress().toUpper();
    result.isUp = card.flags().testFlag(QNetworkInterface::IsUp);
    result.mtu = card.maximumTransmissionUnit();
    result.reversePathFilter = readReversePathFilter(QStringLiteral("/proc/sys/net/ipv4/conf"), card.name());
    const QList<QNetworkAddressEntry> entries = card.addressEntries();
    for (const QNetworkAddressEntry &entry : entries) {
        bool isIpv4 = false;
        const uint32_t address = entry.ip().toIPv4Address(&isIpv4);
        if (isIpv4)
            result.addresses.append({address, entry.netmask().toIPv4Address()});
    }
    return result;
}

} // namespace

const HostCard *HostFacts::cardOf(const QString &hardwareAddress, uint32_t address) const
{
    const auto byAddress = [address](const HostCard &card) {
        return std::any_of(card.addresses.cbegin(), card.addresses.cend(),
                           [address](const HostAddress &own) { return own.address == address; });
    };
    auto found = cards.cend();
    if (address != 0)
        found = std::find_if(cards.cbegin(), cards.cend(), byAddress);
    if (found == cards.cend() && !hardwareAddress.isEmpty()) {
        found = std::find_if(cards.cbegin(), cards.cend(), [&hardwareAddress](const HostCard &card) {
            return card.hardwareAddress.compare(hardwareAddress, Qt::CaseInsensitive) == 0;
        });
    }
    return found == cards.cend() ? nullptr : &*found;
}

bool HostFacts::isOwnAddress(uint32_t address) const
{
    return address != 0 && cardOf(QString(), address) != nullptr;
}

const HostRoute *HostFacts::routeTo(uint32_t address) const
{
    const HostRoute *best = nullptr;
    for (const HostRoute &route : routes) {
        if ((address & route.mask) == route.destination && (!best || route.mask > best->mask))
            best = &route;
    }
    return best;
}

bool HostFacts::dropsPacketsFrom(uint32_t sender, const HostCard &card) const
{
    const HostRoute *route = routeTo(sender);
    switch (card.reversePathFilter) {
    case ReversePathFilter::Strict:
        return !route || route->card != card.name;
    case ReversePathFilter::Loose:
        return !route;
    case ReversePathFilter::Off:
    case ReversePathFilter::Unknown:
        break;
    }
    return false;
}

HostFacts readHostFacts()
{
    HostFacts facts;
    const QList<QNetworkInterface> cards = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &card : cards)
        facts.cards.append(hostCard(card));
    QFile table(QStringLiteral("/proc/net/route"));
    if (table.open(QIODevice::ReadOnly))
        facts.routes = parseRouteTable(table.read(kLargestRouteTable));
    return facts;
}

ReversePathFilter readReversePathFilter(const QString &settingsFolder, const QString &card)
{
    if (card.isEmpty() || card.contains(QLatin1Char('/')) || card.startsWith(QLatin1Char('.')))
        return ReversePathFilter::Unknown;
    const auto path = [&settingsFolder](const QString &name) {
        return settingsFolder + QLatin1Char('/') + name + QStringLiteral("/rp_filter");
    };
    const int value = std::max(readSetting(path(QStringLiteral("all"))), readSetting(path(card)));
    if (value < 0 || value > 2)
        return ReversePathFilter::Unknown;
    return static_cast<ReversePathFilter>(value);
}

QVector<HostRoute> parseRouteTable(const QByteArray &text)
{
    // Columns: Iface Destination Gateway Flags RefCnt Use Metric Mask MTU Window IRTT
    QVector<HostRoute> routes;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 1; i < lines.size(); ++i) {
        const QList<QByteArray> fields = lines.at(i).simplified().split(' ');
        if (fields.size() < 8 || (fields.at(3).toUInt(nullptr, 16) & kRouteIsUp) == 0)
            continue;
        routes.append({QString::fromLocal8Bit(fields.at(0)), routeNumber(fields.at(1)),
                       routeNumber(fields.at(7)), routeNumber(fields.at(2))});
    }
    return routes;
}

} // namespace browser
