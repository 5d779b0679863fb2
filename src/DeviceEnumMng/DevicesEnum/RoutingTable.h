// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Gateway of a network card by the system's routing table.
/// @param strCardName     interface name; one that could be more than a word to the shell gets no gateway
/// @param strCardAddress  the card's address as text; a gateway begins with it up to the last "."
/// @param strRouteText    never written
/// @param strGateway      receives the gateway; untouched when there is none
/// @param nCardValue      receives 1000
/// @return true
bool GetNetWorkInfoByMac_linux(QString strCardName, const QString &strCardAddress, QString &strRouteText,
                               QString &strGateway, int &nCardValue);

/// Address of a text "a.b.c.d", first octet in the highest byte; 0xFFFFFFFF unless it has four parts.
unsigned int strIP2IntIP(const QString &strIp);

/// True when an interface name is one plain word to the shell and no option to the program it is handed to.
bool isPlainInterfaceName(const QString &name);

/// The first word of a routing table's lines that reads as an address of one host, 1 to 254 in its last
/// number, and begins with @p prefix; empty when there is none.
QString gatewayIn(const QString &routes, const QString &prefix);
