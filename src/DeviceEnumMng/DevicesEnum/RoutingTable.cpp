// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/RoutingTable.h>

#include <DeviceEnumMng/DevicesEnum/ShellCommand.h>

#include <QStringList>

#include <algorithm>

namespace
{

constexpr int kCardValue = 1000;

// An ordinary user's PATH often lacks the folders where route lies; a system without it stays quiet.
const char *const kRouteCommand = "PATH=\"$PATH:/usr/sbin:/sbin\"; route -n 2>/dev/null | grep %1";

bool isPlainCharacter(QChar character)
{
    const ushort code = character.unicode();
    const bool isLetter = (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
    const bool isDigit = code >= '0' && code <= '9';
    return isLetter || isDigit || QStringLiteral("_-.:@+=,%").contains(character);
}

bool isHostAddress(const QString &word)
{
    const QStringList pieces = word.split(QLatin1Char('.'));
    if (pieces.size() != 4) {
        return false;
    }
    const int last = pieces.at(3).toInt();
    return last >= 1 && last <= 254;
}

} // namespace

bool isPlainInterfaceName(const QString &name)
{
    return !name.isEmpty() && !name.startsWith(QLatin1Char('-')) &&
           std::all_of(name.cbegin(), name.cend(), isPlainCharacter);
}

QString gatewayIn(const QString &routes, const QString &prefix)
{
    const QStringList lines = routes.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &part : words) {
            QString word = part.trimmed();
            // Plain text on purpose: 192.168.10.5 counts as a gateway of 192.168.1.x.
            if (word.startsWith(prefix) && isHostAddress(word)) {
                return word;
            }
        }
    }
    return QString();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a name by value is what its users call
bool GetNetWorkInfoByMac_linux(QString strCardName, const QString &strCardAddress, QString &strRouteText,
                               QString &strGateway, int &nCardValue)
{
    static_cast<void>(strRouteText);
    nCardValue = kCardValue;
    if (!isPlainInterfaceName(strCardName)) {
        return true;
    }
    const QString prefix = strCardAddress.left(std::max(strCardAddress.lastIndexOf(QLatin1Char('.')), 0));
    const QString routes = execCommand(QString::fromLatin1(kRouteCommand).arg(strCardName));
    const QString gateway = gatewayIn(routes, prefix);
    if (!gateway.isEmpty()) {
        strGateway = gateway;
    }
    return true;
}

unsigned int strIP2IntIP(const QString &strIp)
{
    const QStringList parts = strIp.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.size() != 4) {
        return 0xFFFFFFFFU;
    }
    unsigned int address = 0;
    for (const QString &part : parts) {
        address = (address << 8U) + static_cast<unsigned int>(part.toInt());
    }
    return address;
}
