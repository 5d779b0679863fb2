// SPDX-License-Identifier: Apache-2.0
#include "CameraRegisters.h"

#include "DescriptionFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>

namespace kelsim
{

namespace
{

constexpr std::size_t kBootstrapSize = 0xA000;
constexpr uint32_t kDescriptionAddress = 0x10000;

// User name, serial number, link speed, primary application, ack delay, PENDING, switchover, heartbeat off,
// WRITEMEM, several registers at once.
constexpr uint32_t kCapabilities =
    (1U << 31) | (1U << 30) | (1U << 29) | (1U << 28) | (1U << 27) | (1U << 24) | (1U << 21) | (1U << 5) | 0x3;

constexpr uint32_t kBigEndianUtf8 = 0x80000001U;
constexpr uint32_t kConfigPersistentDhcpLinkLocal = 0x7;
constexpr uint32_t kConfigLinkLocal = 0x4;

} // namespace

CameraRegisters::CameraRegisters(const CameraSettings &settings)
    : m_bytes(kBootstrapSize)
{
    setIdentity(settings);
    setPlace(settings.place);
    setControls(settings);
}

void CameraRegisters::setIdentity(const CameraSettings &settings)
{
    const auto &mac = settings.mac;
    setValue(reg::kVersion, 0x00020000);
    setValue(reg::kDeviceMode, kBigEndianUtf8 | (static_cast<uint32_t>(settings.deviceClass) << 28));
    setValue(reg::kMacHigh, static_cast<uint32_t>((mac[0] << 8) | mac[1]));
    setValue(reg::kMacLow, getU32(mac.data() + 2));
    setValue(reg::kIpConfigSupported, kConfigPersistentDhcpLinkLocal);
    setValue(reg::kIpConfigCurrent, kConfigLinkLocal);
    setText(reg::kManufacturer, 32, settings.vendor);
    setText(reg::kModel, 32, settings.model);
    setText(reg::kDeviceVersion, 32, settings.version);
    setText(reg::kManufacturerInfo, 48, settings.info);
    setText(reg::kSerialNumber, 16, settings.serial);
    setText(reg::kUserName, 16, settings.name);
}

void CameraRegisters::setPlace(const CameraPlace &place)
{
    setValue(reg::kCurrentIp, place.address);
    setValue(reg::kCurrentMask, place.mask);
    setValue(reg::kCurrentGateway, place.gateway);
}

void CameraRegisters::setControls(const CameraSettings &settings)
{
    char url[64];
    std::snprintf(url, sizeof url, "Local:camera.xml;%x;%zx", kDescriptionAddress, descriptionFile().size());
    setText(reg::kFirstUrl, 512, url);
    setValue(reg::kInterfaceCount, 1);
    setValue(reg::kLinkSpeed, 1000);
    setValue(reg::kStreamChannelCount, 1);
    setValue(reg::kCapability, kCapabilities);
    setValue(reg::kHeartbeatTimeout, settings.heartbeatMs);
    setValue(reg::kTickFrequencyLow, 1000000000);
    setValue(reg::kDiscoveryAckDelay, settings.ackDelayMs);
    setValue(reg::kConfiguration, settings.pendingMs != 0 ? kConfigurationPending : 0);
    setValue(reg::kPendingTimeout, settings.pendingMs);
    setValue(reg::kStreamPacketSize, 1500);
}

bool CameraRegisters::isReadable(uint32_t address, std::size_t size) const
{
    const std::size_t first = address;
    if (first + size <= m_bytes.size()) {
        return true;
    }
    return first >= kDescriptionAddress && first - kDescriptionAddress + size <= descriptionFile().size();
}

bool CameraRegisters::isWritable(uint32_t address)
{
    static const std::set<uint32_t> writable = {
        reg::kIpConfigCurrent,   reg::kPersistentIp,      reg::kPersistentMask,     reg::kPersistentGateway,
        reg::kActionDeviceKey,   reg::kHeartbeatTimeout,  reg::kTimestampControl,   reg::kConfiguration,
        reg::kSwitchoverKey,     reg::kControlPrivilege,  reg::kMessagePort,        reg::kMessageDestination,
        reg::kMessageTimeout,    reg::kMessageRetries,    reg::kStreamPort,         reg::kStreamPacketSize,
        reg::kStreamPacketDelay, reg::kStreamDestination, reg::kStreamConfiguration};
    return writable.count(address) != 0;
}

bool CameraRegisters::isTextWritable(uint32_t address, std::size_t size)
{
    return address >= reg::kUserName && address + size <= reg::kUserName + 16;
}

uint32_t CameraRegisters::value(uint32_t address) const
{
    return getU32(m_bytes.data() + address);
}

void CameraRegisters::setValue(uint32_t address, uint32_t value)
{
    putU32(m_bytes.data() + address, value);
}

void CameraRegisters::setText(uint32_t address, std::size_t size, const std::string &text)
{
    const auto field = m_bytes.begin() + address;
    std::fill(field, field + static_cast<std::ptrdiff_t>(size), uint8_t{0});
    std::copy_n(text.begin(), std::min(size, text.size()), field);
}

void CameraRegisters::read(uint32_t address, std::size_t size, std::vector<uint8_t> &bytes) const
{
    if (address < kDescriptionAddress) {
        bytes.insert(bytes.end(), m_bytes.begin() + address,
                     m_bytes.begin() + address + static_cast<std::ptrdiff_t>(size));
        return;
    }
    const std::string &text = descriptionFile();
    const auto first = text.begin() + (address - kDescriptionAddress);
    bytes.insert(bytes.end(), first, first + static_cast<std::ptrdiff_t>(size));
}

void CameraRegisters::write(uint32_t address, const uint8_t *bytes, std::size_t size)
{
    std::memcpy(m_bytes.data() + address, bytes, size);
}

} // namespace kelsim
