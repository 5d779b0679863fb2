// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// @file
/// The control protocol of GigE Vision as a camera speaks it. Written apart from the device access
/// on purpose: a mistake in one of the two shows when they meet.

namespace kelsim
{

constexpr uint16_t kGvcpPort = 3956;
constexpr uint8_t kCommandKey = 0x42;
constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kDiscoveryImageSize = 0xF8;
constexpr uint16_t kLargestMemoryRead = 536;

constexpr uint8_t kFlagAcknowledge = 0x01;
constexpr uint8_t kFlagBroadcastAnswer = 0x10;

enum class Command : uint16_t {
    Discovery = 0x0002,
    ForceIp = 0x0004,
    PacketResend = 0x0040,
    ReadRegister = 0x0080,
    WriteRegister = 0x0082,
    ReadMemory = 0x0084,
    WriteMemory = 0x0086,
};

constexpr uint16_t kPendingAcknowledge = 0x0089;

enum class Status : uint16_t {
    Success = 0x0000,
    NotImplemented = 0x8001,
    InvalidParameter = 0x8002,
    InvalidAddress = 0x8003,
    WriteProtected = 0x8004,
    BadAlignment = 0x8005,
    AccessDenied = 0x8006,
    Busy = 0x8007,
    InvalidHeader = 0x800E,
};

/// Addresses of the bootstrap registers that a simulated camera has.
namespace reg
{
constexpr uint32_t kVersion = 0x0000;
constexpr uint32_t kDeviceMode = 0x0004;
constexpr uint32_t kMacHigh = 0x0008;
constexpr uint32_t kMacLow = 0x000C;
constexpr uint32_t kIpConfigSupported = 0x0010;
constexpr uint32_t kIpConfigCurrent = 0x0014;
constexpr uint32_t kCurrentIp = 0x0024;
constexpr uint32_t kCurrentMask = 0x0034;
constexpr uint32_t kCurrentGateway = 0x0044;
constexpr uint32_t kManufacturer = 0x0048;
constexpr uint32_t kModel = 0x0068;
constexpr uint32_t kDeviceVersion = 0x0088;
constexpr uint32_t kManufacturerInfo = 0x00A8;
constexpr uint32_t kSerialNumber = 0x00D8;
constexpr uint32_t kUserName = 0x00E8;
constexpr uint32_t kFirstUrl = 0x0200;
constexpr uint32_t kInterfaceCount = 0x0600;
constexpr uint32_t kPersistentIp = 0x064C;
constexpr uint32_t kPersistentMask = 0x065C;
constexpr uint32_t kPersistentGateway = 0x066C;
constexpr uint32_t kLinkSpeed = 0x0670;
constexpr uint32_t kStreamChannelCount = 0x0904;
constexpr uint32_t kActionDeviceKey = 0x090C;
constexpr uint32_t kCapability = 0x0934;
constexpr uint32_t kHeartbeatTimeout = 0x0938;
constexpr uint32_t kTickFrequencyHigh = 0x093C;
constexpr uint32_t kTickFrequencyLow = 0x0940;
constexpr uint32_t kTimestampControl = 0x0944;
constexpr uint32_t kDiscoveryAckDelay = 0x0950;
constexpr uint32_t kConfiguration = 0x0954;
constexpr uint32_t kPendingTimeout = 0x0958;
constexpr uint32_t kSwitchoverKey = 0x095C;
constexpr uint32_t kControlPrivilege = 0x0A00;
constexpr uint32_t kPrimaryPort = 0x0A04;
constexpr uint32_t kPrimaryIp = 0x0A14;
constexpr uint32_t kMessagePort = 0x0B00;
constexpr uint32_t kMessageDestination = 0x0B10;
constexpr uint32_t kMessageTimeout = 0x0B14;
constexpr uint32_t kMessageRetries = 0x0B18;
constexpr uint32_t kStreamPort = 0x0D00;
constexpr uint32_t kStreamPacketSize = 0x0D04;
constexpr uint32_t kStreamPacketDelay = 0x0D08;
constexpr uint32_t kStreamDestination = 0x0D18;
constexpr uint32_t kStreamConfiguration = 0x0D24;
} // namespace reg

/// Bits of the control privilege register.
constexpr uint32_t kPrivilegeExclusive = 0x1;
constexpr uint32_t kPrivilegeControl = 0x2;
constexpr uint32_t kPrivilegeSwitchover = 0x4;

/// Bits of the configuration register.
constexpr uint32_t kConfigurationHeartbeatOff = 0x1;
constexpr uint32_t kConfigurationPending = 0x2;

/// Big-endian numbers. The caller knows that the bytes are there.
uint16_t getU16(const uint8_t *bytes);
uint32_t getU32(const uint8_t *bytes);
void putU16(uint8_t *bytes, uint16_t value);
void putU32(uint8_t *bytes, uint32_t value);
void appendU32(std::vector<uint8_t> &bytes, uint32_t value);

/// A command as it came from the wire, its payload still in the datagram.
struct CommandView {
    uint8_t flags = 0;
    uint16_t code = 0;
    uint16_t id = 0;
    const uint8_t *payload = nullptr;
    std::size_t length = 0;
};

/// Nothing for what is no command at all: too short, wrong key, id 0, or a length beyond the datagram.
std::optional<CommandView> parseCommand(const uint8_t *data, std::size_t size);

/// The acknowledge of a command, header and payload.
std::vector<uint8_t> acknowledge(Status status, uint16_t commandCode, uint16_t id,
                                 const std::vector<uint8_t> &payload);

/// "Still working, ask me again in @p milliseconds."
std::vector<uint8_t> pendingAcknowledge(uint16_t id, uint16_t milliseconds);

} // namespace kelsim
