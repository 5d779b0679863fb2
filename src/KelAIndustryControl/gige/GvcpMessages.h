// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>
#include <KelAIndustryControl/gige/GvcpWire.h>

#include <optional>
#include <string_view>
#include <vector>

/// @file
/// Makes the commands and reads the acknowledges of GVCP. Nothing here trusts a length or a count of a
/// datagram, keeps state or does input or output.

namespace kela::gige
{

using Datagram = std::vector<std::uint8_t>;

Datagram discoveryCommand(std::uint16_t requestId, bool allowBroadcastAnswer);
Datagram readRegisterCommand(std::uint16_t requestId, std::uint32_t address);
Datagram writeRegisterCommand(std::uint16_t requestId, std::uint32_t address, std::uint32_t value);
Datagram readMemoryCommand(std::uint16_t requestId, std::uint32_t address, std::uint16_t byteCount);

struct ForcedAddress {
    std::uint64_t hardwareAddress; ///< 48 bits
    std::uint32_t address;
    std::uint32_t mask;
    std::uint32_t gateway;
};
Datagram forceIpCommand(std::uint16_t requestId, const ForcedAddress &forced, bool allowBroadcastAnswer);

std::uint16_t commandOf(const Datagram &command);
std::uint16_t requestIdOf(const Datagram &command);
void setRequestId(Datagram &command, std::uint16_t requestId);

/// An acknowledge whose header fits its datagram.
struct Acknowledge {
    std::uint16_t status = 0;
    std::uint16_t code = 0;
    std::uint16_t requestId = 0;
    ByteView payload; ///< as long as the header says; points into the datagram

    bool isError() const { return (status & kStatusErrorBit) != 0; }
};

/// Nothing when the datagram is shorter than its header, or than its header says.
std::optional<Acknowledge> parseAcknowledge(ByteView datagram);

/// What a camera tells of itself.
struct DiscoveryAnswer {
    std::uint32_t version = 0;
    std::uint32_t deviceMode = 0;
    std::uint64_t hardwareAddress = 0; ///< 48 bits
    std::uint32_t ipConfigOptions = 0;
    std::uint32_t ipConfigCurrent = 0;
    std::uint32_t currentIp = 0;
    std::uint32_t subnetMask = 0;
    std::uint32_t gateway = 0;
    DiscoveryPayload texts = {}; ///< for its text fields, which need no NUL

    bool isPlainTransmitter() const;
};

/// Nothing when the payload is too short. A longer one is accepted, its end is not looked at.
std::optional<DiscoveryAnswer> parseDiscovery(ByteView payload);

/// Value of a READREG acknowledge for one register.
std::optional<std::uint32_t> parseReadRegister(ByteView payload);

/// The @p byteCount bytes of a READMEM acknowledge; nothing unless it is of @p address and long enough.
std::optional<ByteView> parseReadMemory(ByteView payload, std::uint32_t address, std::size_t byteCount);

/// Milliseconds that a PENDING acknowledge asks for.
std::optional<std::uint16_t> parsePending(ByteView payload);

} // namespace kela::gige
