// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/IntegerNodes.h>

#include <KelAIndustryControl/gige/BootstrapRegisters.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace kela::gige
{
namespace
{

// Stream features are those of channel 0, message features those of the one message channel.
constexpr IntegerNode kNodes[] = {
    {"GevVersionMajor", kRegisterVersion, 16, 16},
    {"GevVersionMinor", kRegisterVersion, 0, 16},
    {"GevDeviceModeIsBigEndian", kRegisterDeviceMode, 31, 1},
    {"GevDeviceClass", kRegisterDeviceMode, 28, 3},
    {"GevDeviceModeCharacterSet", kRegisterDeviceMode, 0, 8},
    {"GevMACAddress", kRegisterHardwareAddressHigh, 0, 48},
    {"GevSupportedIPConfigurationPersistentIP", kRegisterIpConfigOptions, 0, 1},
    {"GevSupportedIPConfigurationDHCP", kRegisterIpConfigOptions, 1, 1},
    {"GevSupportedIPConfigurationLLA", kRegisterIpConfigOptions, 2, 1},
    {"GevCurrentIPConfigurationPersistentIP", kRegisterIpConfigCurrent, 0, 1},
    {"GevCurrentIPConfigurationDHCP", kRegisterIpConfigCurrent, 1, 1},
    {"GevCurrentIPConfigurationLLA", kRegisterIpConfigCurrent, 2, 1},
    {"GevCurrentIPConfiguration", kRegisterIpConfigCurrent, 0, 3},
    {"GevCurrentIPAddress", kRegisterCurrentIp},
    {"GevCurrentSubnetMask", kRegisterCurrentMask},
    {"GevCurrentDefaultGateway", kRegisterCurrentGateway},
    {"GevNumberOfInterfaces", kRegisterInterfaceCount},
    {"GevPersistentIPAddress", kRegisterPersistentIp},
    {"GevPersistentSubnetMask", kRegisterPersistentMask},
    {"GevPersistentDefaultGateway", kRegisterPersistentGateway},
    {"GevLinkSpeed", kRegisterLinkSpeed, 0, 32, 0, 1, kCapabilityBitLinkSpeed},
    {"GevMessageChannelCount", kRegisterMessageChannelCount},
    {"GevStreamChannelCount", kRegisterStreamChannelCount},
    {"GevActionDeviceSignalCount", kRegisterActionSignalCount},
    {"GevActiveLinksCount", kRegisterActiveLinkCount},
    {"GevStreamCapability", kRegisterStreamCapability},
    {"GevMessageCapability", kRegisterMessageCapability},
    {"GevGVCPCapability", kRegisterGvcpCapability},
    {"GevHeartbeatTimeout", kRegisterHeartbeatTimeout},
    {"GevTimestampTickFrequency", kRegisterTimestampFrequencyHigh, 0, 64},
    {"GevTimestampValue", kRegisterTimestampHigh, 0, 64},
    {"GevDiscoveryAckDelay", kRegisterDiscoveryAckDelay, 0, 16, 0, 1, kCapabilityBitDiscoveryAckDelay},
    {"GevGVCPHeartbeatDisable", kRegisterGvcpConfiguration, 0, 1},
    {"GevGVCPPendingAck", kRegisterGvcpConfiguration, 1, 1},
    {"GevGVCPExtendedStatusCodes", kRegisterGvcpConfiguration, 2, 1},
    {"GevGVCPConfiguration", kRegisterGvcpConfiguration},
    {"GevGVCPPendingTimeout", kRegisterPendingTimeout},
    {"GevGVSPConfiguration", kRegisterGvspConfiguration},
    {"GevPhysicalLinkConfigurationCapability", kRegisterLinkCapability},
    {"GevPhysicalLinkConfiguration", kRegisterLinkConfiguration},
    {"GevCCP", kRegisterControlPrivilege},
    {"GevPrimaryApplicationSocket", kRegisterPrimaryApplicationPort, 0, 16, 0, 1,
     kCapabilityBitPrimaryApplication},
    {"GevPrimaryApplicationIPAddress", kRegisterPrimaryApplicationIp, 0, 32, 0, 1,
     kCapabilityBitPrimaryApplication},
    {"GevMCPHostPort", kRegisterMessagePort, 0, 16},
    {"GevMCDA", kRegisterMessageDestination},
    {"GevMCTT", kRegisterMessageTimeout},
    {"GevMCRC", kRegisterMessageRetryCount},
    {"GevMCSP", kRegisterMessageSourcePort, 0, 16},
    {"GevSCPDirection", kRegisterStreamPort, 31, 1},
    {"GevSCPInterfaceIndex", kRegisterStreamPort, 16, 4},
    {"GevSCPHostPort", kRegisterStreamPort, 0, 16},
    {"GevSCPSFireTestPacket", kRegisterStreamPacketSize, 31, 1},
    {"GevSCPSDoNotFragment", kRegisterStreamPacketSize, 30, 1},
    {"GevSCPSBigEndian", kRegisterStreamPacketSize, 29, 1},
    {"GevSCPSPacketSize", kRegisterStreamPacketSize, 0, 16},
    {"GevSCPD", kRegisterStreamPacketDelay},
    {"GevSCDA", kRegisterStreamDestination},
    {"GevSCSP", kRegisterStreamSourcePort, 0, 16},
    {"GevSCCCapability", kRegisterStreamChannelCapability},
    {"GevSCCFG", kRegisterStreamChannelConfiguration},
};

constexpr unsigned int kWidestPositive = 63;

} // namespace

std::int64_t IntegerNode::maximum() const
{
    if (width >= kWidestPositive)
        return std::numeric_limits<std::int64_t>::max();
    return (std::int64_t{1} << width) - 1;
}

std::int64_t IntegerNode::valueIn(std::uint64_t registers) const
{
    return static_cast<std::int64_t>(registers >> shift & static_cast<std::uint64_t>(maximum()));
}

const IntegerNode *findIntegerNode(std::string_view name)
{
    const auto *found = std::find_if(std::begin(kNodes), std::end(kNodes),
                                     [name](const IntegerNode &node) { return node.name == name; });
    return found == std::end(kNodes) ? nullptr : found;
}

} // namespace kela::gige
