// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

/// @file
/// Packets of the generic control protocol on a serial line. Pure functions over bytes.

namespace kela::cameralink
{

constexpr std::size_t kPacketHeadSize = 16;
constexpr std::size_t kLargestPacket = 1024;
constexpr std::size_t kReadCommandSize = 28;

using ReadCommand = std::array<std::uint8_t, kReadCommandSize>;

/// A command that reads @p count bytes of a camera's memory.
ReadCommand readCommand(std::uint64_t address, std::uint16_t count, std::uint16_t requestId);

/// What the head of a packet says. Its checksum was right.
struct PacketHead {
    std::uint16_t status = 0;
    std::uint16_t command = 0;
    std::uint16_t dataLength = 0;
    std::uint16_t requestId = 0;
};

constexpr std::uint16_t kAcknowledgeRead = 0x0801;
constexpr std::uint16_t kAcknowledgePending = 0x0805;

/// Nothing unless @p bytes begin with a head whose preamble, channel, length and checksum are right.
std::optional<PacketHead> parsePacketHead(ByteView bytes);

/// True when the data behind the head is whole and its checksum right.
/// @param packet  a head that parsePacketHead() took, and its data
bool isPacketDataValid(ByteView packet);

/// Milliseconds that a pending acknowledge asks for.
std::optional<std::uint16_t> pendingTime(ByteView data);

} // namespace kela::cameralink
