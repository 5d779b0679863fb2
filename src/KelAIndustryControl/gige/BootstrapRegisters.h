// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// @file
/// Addresses of the bootstrap registers that are used here, and what their bits mean.

namespace kela::gige
{

constexpr std::uint32_t kRegisterVersion = 0x0000;
constexpr std::uint32_t kRegisterDeviceMode = 0x0004;
constexpr std::uint32_t kRegisterHardwareAddressHigh = 0x0008;
constexpr std::uint32_t kRegisterIpConfigOptions = 0x0010;
constexpr std::uint32_t kRegisterIpConfigCurrent = 0x0014;
constexpr std::uint32_t kRegisterCurrentIp = 0x0024;
constexpr std::uint32_t kRegisterCurrentMask = 0x0034;
constexpr std::uint32_t kRegisterCurrentGateway = 0x0044;
constexpr std::uint32_t kRegisterInterfaceCount = 0x0600;
constexpr std::uint32_t kRegisterPersistentIp = 0x064C;
constexpr std::uint32_t kRegisterPersistentMask = 0x065C;
constexpr std::uint32_t kRegisterPersistentGateway = 0x066C;
constexpr std::uint32_t kRegisterLinkSpeed = 0x0670;
constexpr std::uint32_t kRegisterMessageChannelCount = 0x0900;
constexpr std::uint32_t kRegisterStreamChannelCount = 0x0904;
constexpr std::uint32_t kRegisterActionSignalCount = 0x0908;
constexpr std::uint32_t kRegisterActiveLinkCount = 0x0910;
constexpr std::uint32_t kRegisterStreamCapability = 0x092C;
constexpr std::uint32_t kRegisterMessageCapability = 0x0930;
constexpr std::uint32_t kRegisterGvcpCapability = 0x0934;
constexpr std::uint32_t kRegisterHeartbeatTimeout = 0x0938;
constexpr std::uint32_t kRegisterTimestampFrequencyHigh = 0x093C;
constexpr std::uint32_t kRegisterTimestampHigh = 0x0948;
constexpr std::uint32_t kRegisterDiscoveryAckDelay = 0x0950;
constexpr std::uint32_t kRegisterGvcpConfiguration = 0x0954;
constexpr std::uint32_t kRegisterPendingTimeout = 0x0958;
constexpr std::uint32_t kRegisterGvspConfiguration = 0x0960;
constexpr std::uint32_t kRegisterLinkCapability = 0x0964;
constexpr std::uint32_t kRegisterLinkConfiguration = 0x0968;
constexpr std::uint32_t kRegisterControlPrivilege = 0x0A00;
constexpr std::uint32_t kRegisterPrimaryApplicationPort = 0x0A04;
constexpr std::uint32_t kRegisterPrimaryApplicationIp = 0x0A14;
constexpr std::uint32_t kRegisterMessagePort = 0x0B00;
constexpr std::uint32_t kRegisterMessageDestination = 0x0B10;
constexpr std::uint32_t kRegisterMessageTimeout = 0x0B14;
constexpr std::uint32_t kRegisterMessageRetryCount = 0x0B18;
constexpr std::uint32_t kRegisterMessageSourcePort = 0x0B1C;
constexpr std::uint32_t kRegisterStreamPort = 0x0D00;
constexpr std::uint32_t kRegisterStreamPacketSize = 0x0D04;
constexpr std::uint32_t kRegisterStreamPacketDelay = 0x0D08;
constexpr std::uint32_t kRegisterStreamDestination = 0x0D18;
constexpr std::uint32_t kRegisterStreamSourcePort = 0x0D1C;
constexpr std::uint32_t kRegisterStreamChannelCapability = 0x0D20;
constexpr std::uint32_t kRegisterStreamChannelConfiguration = 0x0D24;

constexpr std::uint32_t kPrivilegeExclusive = 1U << 0;
constexpr std::uint32_t kPrivilegeControl = 1U << 1;
constexpr std::uint32_t kPrivilegeMask = kPrivilegeExclusive | kPrivilegeControl;

constexpr unsigned int kCapabilityBitLinkSpeed = 28;
constexpr unsigned int kCapabilityBitPrimaryApplication = 27;
constexpr unsigned int kCapabilityBitDiscoveryAckDelay = 24;

constexpr std::uint32_t kStreamPortMask = 0xFFFF;

constexpr unsigned int kDeviceClassShift = 28;
constexpr std::uint32_t kDeviceClassMask = 7;
constexpr std::uint32_t kDeviceClassTransmitter = 0;

} // namespace kela::gige
