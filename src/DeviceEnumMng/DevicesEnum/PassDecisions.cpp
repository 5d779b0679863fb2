// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>

namespace
{

constexpr uint32_t kDefaultCardValue = 1000;

// The locator bytes of a controller's ports, as they stand in a device's record.
bool isPortOf(const uint8_t (&port)[4], const uint8_t (&device)[4])
{
    // Controllers give the last two bytes the other way round.
    return port[0] == device[0] && port[1] == device[1] && port[2] == device[3] && port[3] == device[2];
}

bool hasPortOf(const KELA_USBCONTROLLER_INFO &controller, const KELA_DEVICE_INFO_EX &device)
{
    return std::any_of(
        std::begin(controller.portLocators), std::end(controller.portLocators),
        [&device](const uint8_t(&port)[4]) { return isPortOf(port, device.special.usb.portLocator); });
}

const KELA_NETWORK_ADDRESS *addressOn(const KELA_NETWORK &card, uint32_t address)
{
    const KELA_NETWORK_ADDRESS *end = card.addresses + readableCount(card.addressCount);
    const KELA_NETWORK_ADDRESS *match =
        std::find_if(static_cast<const KELA_NETWORK_ADDRESS *>(card.addresses), end,
                     [address](const KELA_NETWORK_ADDRESS &entry) { return entry.address == address; });
    return match == end ? nullptr : match;
}

} // namespace

bool isSameDevice(const KELA_DEVICE_INFO_EX &left, const KELA_DEVICE_INFO_EX &right)
{
    if (left.transport != right.transport || fixedText(left.serialNumber) != fixedText(right.serialNumber) ||
        fixedText(left.secondName) != fixedText(right.secondName) ||
        fixedText(left.modelName) != fixedText(right.modelName)) {
        return false;
    }
    switch (left.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return left.special.gige.macHigh == right.special.gige.macHigh &&
               left.special.gige.macLow == right.special.gige.macLow &&
               left.special.gige.hostIp == right.special.gige.hostIp;
    case KELA_INTERFACE_TYPE_USB:
        return true;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return fixedText(left.special.cameraLink.portName) == fixedText(right.special.cameraLink.portName);
    default:
        return false;
    }
}

std::size_t sameDeviceHash(const KELA_DEVICE_INFO_EX &device)
{
    std::size_t hash = std::hash<std::string_view>()(fixedText(device.serialNumber)) * 31U + device.transport;
    if (isGigETransport(device.transport)) {
        hash = hash * 31U + device.special.gige.macLow;
        hash = hash * 31U + device.special.gige.hostIp;
    } else if (device.transport == KELA_INTERFACE_TYPE_CAMERALINK) {
        hash = hash * 31U + std::hash<std::string_view>()(fixedText(device.special.cameraLink.portName));
    }
    return hash;
}

bool isInSubnetOfItsCard(const KELA_STRUCT_DEVICE_INFO &record)
{
    const KELA_GIGE_DEVICE_INFO &device = record.deviceInfo.special.gige;
    if (record.network.found == 0) {
        return ((device.hostIp ^ device.currentIp) & device.subnetMask) == 0;
    }
    return ((record.network.address ^ device.currentIp) & (device.subnetMask | record.network.mask)) == 0;
}

bool isMulticastAddress(uint32_t address)
{
    return (address >> 28U) == 0xEU;
}

bool isGigETransport(uint32_t transport)
{
    return transport == KELA_INTERFACE_TYPE_GIGE || transport == KELA_INTERFACE_TYPE_GIGE_VARIANT;
}

bool isNetworkTransport(uint32_t transport)
{
    return isGigETransport(transport) || transport == KELA_INTERFACE_TYPE_NETWORK;
}

bool isGenTLTransport(uint32_t transport)
{
    return transport == KELA_INTERFACE_TYPE_GENTL || transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
}

KELA_USBCONTROLLER_INFO controllerOf(const KELA_DEVICE_INFO_EX &device,
                                     const QVector<KELA_USBCONTROLLER_INFO> &controllers)
{
    if (controllers.isEmpty()) {
        return {};
    }
    const auto match = std::find_if(
        controllers.cbegin(), controllers.cend(),
        [&device](const KELA_USBCONTROLLER_INFO &controller) { return hasPortOf(controller, device); });
    return match == controllers.cend() ? controllers.last() : *match;
}

KELA_DEVICE_NETWORK cardOf(const KELA_DEVICE_INFO_EX &device, const QVector<KELA_NETWORK> &cards)
{
    KELA_DEVICE_NETWORK block = {};
    block.cardValue = kDefaultCardValue;
    for (const KELA_NETWORK &card : cards) {
        const KELA_NETWORK_ADDRESS *match = addressOn(card, device.special.gige.hostIp);
        if (match == nullptr) {
            continue;
        }
        block.found = 1;
        std::memcpy(block.name, card.name, sizeof(block.name));
        std::memcpy(block.routeText, card.routeText, sizeof(block.routeText));
        std::memcpy(block.hardwareAddress, card.hardwareAddress, sizeof(block.hardwareAddress));
        block.cardValue = static_cast<uint32_t>(card.cardValue);
        block.address = match->address;
        block.mask = match->mask;
        block.gateway = match->gateway;
        break;
    }
    return block;
}

std::size_t readableCount(uint32_t count)
{
    constexpr std::size_t kListLength = std::size(KELA_DEVICE_INFO_LIST{}.devices);
    static_assert(kListLength == std::size(KELA_GENTL_IF_INFO_LIST{}.interfaces));
    static_assert(kListLength == std::size(KELA_NETWORK{}.addresses));
    return std::min<std::size_t>(count, kListLength);
}
