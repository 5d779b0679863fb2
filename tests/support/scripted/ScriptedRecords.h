// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

/// Writes a text into a fixed field, which it may fill to its last byte, without a NUL.
template <typename Char, std::size_t Size>
void setField(Char (&field)[Size], const std::string &text)
{
    static_assert(sizeof(Char) == 1);
    std::memset(field, 0, Size);
    std::memcpy(field, text.data(), std::min(Size, text.size()));
}

/// An address from its four numbers.
constexpr uint32_t ipv4(uint32_t a, uint32_t b, uint32_t c, uint32_t d)
{
    return (a << 24U) | (b << 16U) | (c << 8U) | d;
}

/// A GigE Vision camera 192.168.10.<lastOctet>/24, seen by a card 192.168.10.1.
KELA_DEVICE_INFO_EX gigeCamera(const std::string &serial, uint32_t lastOctet = 20);

/// A usable USB3 Vision camera on port 1 of bus 2.
KELA_DEVICE_INFO_EX usbCamera(const std::string &serial);

/// A Camera Link camera on a serial port.
KELA_DEVICE_INFO_EX cameraLinkCamera(const std::string &serial, const std::string &port);

/// A device of a GenTL interface.
KELA_DEVICE_INFO_EX genTLDevice(const std::string &serial, const std::string &interfaceId,
                                uint32_t interfaceNumber = 0);

/// A GenTL interface.
KELA_GENTL_IF_INFO genTLInterface(const std::string &identifier, uint32_t number = 0);
