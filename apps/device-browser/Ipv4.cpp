// SPDX-License-Identifier: Apache-2.0
#include "Ipv4.h"

#include <QStringList>

#include <algorithm>

namespace browser::ipv4
{

QString text(uint32_t address)
{
    if (address == 0)
        return {};
    return QStringLiteral("%1.%2.%3.%4")
        .arg(address >> 24)
        .arg((address >> 16) & 0xFFU)
        .arg((address >> 8) & 0xFFU)
        .arg(address & 0xFFU);
}

std::optional<uint32_t> parse(const QString &text)
{
    const QStringList octets = text.trimmed().split(QLatin1Char('.'));
    if (octets.size() != 4)
        return std::nullopt;
    uint32_t address = 0;
    for (const QString &octet : octets) {
        bool isNumber = false;
        const uint value = octet.toUInt(&isNumber);
        // A number may stand among blanks and signs for Qt; an address has digits only.
        const bool isDigits = std::all_of(octet.cbegin(), octet.cend(), [](QChar c) { return c.isDigit(); });
        if (!isNumber || !isDigits || value > 255 || octet.size() > 3)
            return std::nullopt;
        address = (address << 8) | value;
    }
    return address;
}

bool isSameSubnet(uint32_t a, uint32_t b, uint32_t mask)
{
    return mask != 0 && ((a ^ b) & mask) == 0;
}

int prefixLength(uint32_t mask)
{
    int length = 0;
    while (length < 32 && (mask & (0x80000000U >> length)) != 0)
        ++length;
    const bool hasGaps = length < 32 && (mask << length) != 0;
    return hasGaps ? -1 : length;
}

QString textWithMask(uint32_t address, uint32_t mask)
{
    if (address == 0)
        return {};
    const int length = prefixLength(mask);
    if (mask == 0)
        return text(address);
    if (length < 0)
        return text(address) + QLatin1Char('/') + text(mask);
    return QStringLiteral("%1/%2").arg(text(address)).arg(length);
}

bool isLinkLocal(uint32_t address)
{
    return (address & 0xFFFF0000U) == 0xA9FE0000U;
}

QString macText(uint32_t high, uint32_t low)
{
    QStringList octets;
    for (int shift = 8; shift >= 0; shift -= 8)
        octets << QStringLiteral("%1").arg((high >> shift) & 0xFFU, 2, 16, QLatin1Char('0'));
    for (int shift = 24; shift >= 0; shift -= 8)
        octets << QStringLiteral("%1").arg((low >> shift) & 0xFFU, 2, 16, QLatin1Char('0'));
    return octets.join(QLatin1Char(':')).toUpper();
}

} // namespace browser::ipv4
