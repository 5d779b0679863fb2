// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kela
{

/// A 16-bit number with its high byte first, as it stands on the wire. No alignment of its own.
class Be16
{
public:
    constexpr Be16()
        : m_bytes{}
    {
    }
    constexpr explicit Be16(std::uint16_t value)
        : m_bytes{static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)}
    {
    }
    constexpr std::uint16_t value() const { return static_cast<std::uint16_t>(m_bytes[0] << 8 | m_bytes[1]); }

private:
    std::uint8_t m_bytes[2];
};

/// A 32-bit number with its high byte first. No alignment of its own.
class Be32
{
public:
    constexpr Be32()
        : m_bytes{}
    {
    }
    constexpr explicit Be32(std::uint32_t value)
        : m_bytes{static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
                  static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)}
    {
    }
    constexpr std::uint32_t value() const
    {
        return static_cast<std::uint32_t>(m_bytes[0]) << 24 | static_cast<std::uint32_t>(m_bytes[1]) << 16 |
               static_cast<std::uint32_t>(m_bytes[2]) << 8 | static_cast<std::uint32_t>(m_bytes[3]);
    }

private:
    std::uint8_t m_bytes[4];
};

static_assert(sizeof(Be16) == 2 && alignof(Be16) == 1);
static_assert(sizeof(Be32) == 4 && alignof(Be32) == 1);

} // namespace kela
