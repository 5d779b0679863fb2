// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/BigEndian.h>

#include <cstddef>
#include <cstdint>

/// @file
/// Layouts and numbers of the GigE Vision control protocol (GVCP) as they stand in a datagram. Numbers on
/// the wire have their high byte first; bit 0 is the least significant one.

namespace kela::gige
{

constexpr std::uint16_t kGvcpPort = 3956;
constexpr std::uint8_t kCommandKey = 0x42;

constexpr std::uint8_t kFlagAcknowledge = 0x01;
constexpr std::uint8_t kFlagBroadcastAnswer = 0x10;

constexpr std::uint16_t kDiscoveryCommand = 0x0002;
constexpr std::uint16_t kForceIpCommand = 0x0004;
constexpr std::uint16_t kReadRegisterCommand = 0x0080;
constexpr std::uint16_t kWriteRegisterCommand = 0x0082;
constexpr std::uint16_t kReadMemoryCommand = 0x0084;
constexpr std::uint16_t kPendingAcknowledge = 0x0089;

/// Code of the acknowledge that belongs to a command.
constexpr std::uint16_t acknowledgeOf(std::uint16_t command)
{
    return static_cast<std::uint16_t>(command + 1);
}

constexpr std::uint16_t kStatusSuccess = 0x0000;
constexpr std::uint16_t kStatusNotImplemented = 0x8001;
constexpr std::uint16_t kStatusInvalidParameter = 0x8002;
constexpr std::uint16_t kStatusInvalidAddress = 0x8003;
constexpr std::uint16_t kStatusWriteProtected = 0x8004;
constexpr std::uint16_t kStatusAccessDenied = 0x8006;
constexpr std::uint16_t kStatusBusy = 0x8007;
constexpr std::uint16_t kStatusErrorBit = 0x8000;

struct CommandHeader {
    std::uint8_t key;
    std::uint8_t flags;
    Be16 command;
    Be16 length; ///< of what follows the header
    Be16 requestId;
};
static_assert(sizeof(CommandHeader) == 8);
static_assert(offsetof(CommandHeader, command) == 2);
static_assert(offsetof(CommandHeader, length) == 4);
static_assert(offsetof(CommandHeader, requestId) == 6);

struct AckHeader {
    Be16 status;
    Be16 acknowledge;
    Be16 length; ///< of what follows the header
    Be16 requestId;
};
static_assert(sizeof(AckHeader) == 8);
static_assert(offsetof(AckHeader, acknowledge) == 2);
static_assert(offsetof(AckHeader, length) == 4);
static_assert(offsetof(AckHeader, requestId) == 6);

/// Payload of the discovery acknowledge: an image of the first bootstrap registers.
struct DiscoveryPayload {
    Be32 version;
    Be32 deviceMode;
    Be16 reserved08;
    std::uint8_t hardwareAddress[6];
    Be32 ipConfigOptions;
    Be32 ipConfigCurrent;
    std::uint8_t reserved18[12];
    Be32 currentIp;
    std::uint8_t reserved28[12];
    Be32 subnetMask;
    std::uint8_t reserved38[12];
    Be32 gateway;
    char manufacturerName[32]; ///< texts carry a NUL only if they are shorter than their field
    char modelName[32];
    char deviceVersion[32];
    char manufacturerInfo[48];
    char serialNumber[16];
    char userDefinedName[16];
};
static_assert(sizeof(DiscoveryPayload) == 248);
static_assert(offsetof(DiscoveryPayload, deviceMode) == 0x04);
static_assert(offsetof(DiscoveryPayload, hardwareAddress) == 0x0A);
static_assert(offsetof(DiscoveryPayload, ipConfigOptions) == 0x10);
static_assert(offsetof(DiscoveryPayload, ipConfigCurrent) == 0x14);
static_assert(offsetof(DiscoveryPayload, currentIp) == 0x24);
static_assert(offsetof(DiscoveryPayload, subnetMask) == 0x34);
static_assert(offsetof(DiscoveryPayload, gateway) == 0x44);
static_assert(offsetof(DiscoveryPayload, manufacturerName) == 0x48);
static_assert(offsetof(DiscoveryPayload, modelName) == 0x68);
static_assert(offsetof(DiscoveryPayload, deviceVersion) == 0x88);
static_assert(offsetof(DiscoveryPayload, manufacturerInfo) == 0xA8);
static_assert(offsetof(DiscoveryPayload, serialNumber) == 0xD8);
static_assert(offsetof(DiscoveryPayload, userDefinedName) == 0xE8);

struct ForceIpPayload {
    Be16 reserved00;
    std::uint8_t hardwareAddress[6];
    std::uint8_t reserved08[12];
    Be32 address;
    std::uint8_t reserved18[12];
    Be32 mask;
    std::uint8_t reserved28[12];
    Be32 gateway;
};
static_assert(sizeof(ForceIpPayload) == 56);
static_assert(offsetof(ForceIpPayload, hardwareAddress) == 2);
static_assert(offsetof(ForceIpPayload, address) == 20);
static_assert(offsetof(ForceIpPayload, mask) == 36);
static_assert(offsetof(ForceIpPayload, gateway) == 52);

struct ReadRegisterPayload {
    Be32 address;
};
static_assert(sizeof(ReadRegisterPayload) == 4);

struct ReadRegisterAckPayload {
    Be32 value;
};
static_assert(sizeof(ReadRegisterAckPayload) == 4);

struct WriteRegisterPayload {
    Be32 address;
    Be32 value;
};
static_assert(sizeof(WriteRegisterPayload) == 8);
static_assert(offsetof(WriteRegisterPayload, value) == 4);

struct ReadMemoryPayload {
    Be32 address;
    Be16 reserved4;
    Be16 byteCount; ///< multiple of 4, 512 at most
};
static_assert(sizeof(ReadMemoryPayload) == 8);
static_assert(offsetof(ReadMemoryPayload, byteCount) == 6);

/// In front of the data of a READMEM acknowledge.
struct ReadMemoryAckHead {
    Be32 address;
};
static_assert(sizeof(ReadMemoryAckHead) == 4);

struct PendingAckPayload {
    Be16 reserved0;
    Be16 milliseconds; ///< until the true answer, counted from the arrival of this one
};
static_assert(sizeof(PendingAckPayload) == 4);
static_assert(offsetof(PendingAckPayload, milliseconds) == 2);

constexpr std::size_t kLargestMemoryRead = 512;
constexpr std::size_t kLargestDatagram = 1500;

} // namespace kela::gige
