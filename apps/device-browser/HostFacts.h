// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <cstdint>

namespace browser
{

/// What the kernel does with a packet whose sender it would not answer through the same card.
enum class ReversePathFilter {
    Unknown = -1,
    Off = 0,
    Strict = 1, ///< dropped unless the best route to the sender leaves by that card
    Loose = 2,  ///< dropped unless some route leads to the sender
};

/// One IPv4 address of a card.
struct HostAddress {
    uint32_t address = 0;
    uint32_t mask = 0;
};

/// A network card of this computer.
struct HostCard {
    QString name;
    QString hardwareAddress; ///< as the system writes it, upper case
    QVector<HostAddress> addresses;
    ReversePathFilter reversePathFilter = ReversePathFilter::Unknown;
    int mtu = 0; ///< bytes, 0 = not known
    bool isUp = false;
};

/// A route of the main table.
struct HostRoute {
    QString card;
    uint32_t destination = 0;
    uint32_t mask = 0;
    uint32_t gateway = 0; ///< 0 = directly attached
};

/// What of this computer decides whether a camera can be used. A value, so that explanations can be
/// tested on any computer that one can think of.
struct HostFacts {
    QVector<HostCard> cards;
    QVector<HostRoute> routes;

    /// The card with a hardware address, else with an IPv4 address; null when there is none.
    const HostCard *cardOf(const QString &hardwareAddress, uint32_t address) const;
    /// True when the address is one of this computer's own.
    bool isOwnAddress(uint32_t address) const;
    /// The route with the longest mask to an address; null when none leads there.
    const HostRoute *routeTo(uint32_t address) const;
    /// True when the kernel throws away what comes from @p sender through @p card.
    bool dropsPacketsFrom(uint32_t sender, const HostCard &card) const;
};

/// Reads the present state of this computer. Quick: it asks the kernel only.
HostFacts readHostFacts();

/// Reads the setting that counts for a card: the larger of the one for all cards and its own.
/// @param settingsFolder  normally "/proc/sys/net/ipv4/conf"
ReversePathFilter readReversePathFilter(const QString &settingsFolder, const QString &card);

/// Reads the text of /proc/net/route.
QVector<HostRoute> parseRouteTable(const QByteArray &text);

} // namespace browser
