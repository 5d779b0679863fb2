// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// IPv4 addresses as the device records hold them: numbers with the first octet in the highest byte.
namespace browser::ipv4
{

/// "192.168.1.20", "" for 0.
QString text(uint32_t address);
/// Reads a dotted address of exactly four numbers.
std::optional<uint32_t> parse(const QString &text);
/// True when both addresses lie in one subnet of the mask. A mask of 0 joins nothing.
bool isSameSubnet(uint32_t a, uint32_t b, uint32_t mask);
/// Number of leading ones, or -1 when the mask has gaps.
int prefixLength(uint32_t mask);
/// "192.168.1.20/24", with the mask dotted when it has gaps.
QString textWithMask(uint32_t address, uint32_t mask);
/// True for 169.254.0.0/16, the range of addresses that a device gives itself.
bool isLinkLocal(uint32_t address);
/// "00:11:22:33:44:55" from the two parts of a device record.
QString macText(uint32_t high, uint32_t low);

} // namespace browser::ipv4
