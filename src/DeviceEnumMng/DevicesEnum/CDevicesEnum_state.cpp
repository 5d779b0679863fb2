// SPDX-License-Identifier: Apache-2.0
// What state a device is in. Whether it can be opened is asked from the device access, which answers from the
// enumeration that has just ended where it can.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>
#include <DeviceEnumMng/DevicesEnum/TemporaryAccess.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

namespace
{

// From this binary coded decimal version on, the states of USB 3 are used.
constexpr uint32_t kLastUsb2Version = 767;

bool readNode(KelAIndustryControl &access, const char *node, uint32_t &value)
{
    KELCC_INTVALUE_EX_T nodeValue = {};
    if (access.GetIntegerNodeValue(node, &nodeValue, true) != KELA_OK) {
        return false;
    }
    value = static_cast<uint32_t>(static_cast<uint64_t>(nodeValue.current));
    return true;
}

bool readStreamDestination(KelAIndustryControl &access, KELA_DEVICE_INFO_EX &device)
{
    return access.Init(&device, false) == KELA_OK && access.Connect(KELA_ACCESS_MONITOR) == KELA_OK &&
           readNode(access, "GevSCDA", device.special.gige.streamDestination) &&
           readNode(access, "GevSCPHostPort", device.special.gige.streamHostPort);
}

bool isAccessible(KelAIndustryControl &access, KELA_STRUCT_DEVICE_INFO &device, KELA_ACCESS_MODE mode)
{
    bool accessible = false;
    return access.IsDeviceAccessible(&device.deviceInfo, mode, &accessible) == KELA_OK && accessible;
}

KELA_DEV_STATE usbState(KELA_STRUCT_DEVICE_INFO &device, KelAIndustryControl *access)
{
    const bool isUsb3 = device.deviceInfo.special.usb.usbVersion > kLastUsb2Version;
    if (device.deviceInfo.special.usb.usable == 0) {
        return isUsb3 ? KELA_DEV_STATE_USB3_UNUSABLE : KELA_DEV_STATE_USB2_UNUSABLE;
    }
    if (access == nullptr) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    if (isAccessible(*access, device, KELA_ACCESS_CONTROL)) {
        return isUsb3 ? KELA_DEV_STATE_USB3_FREE : KELA_DEV_STATE_USB2_FREE;
    }
    return isUsb3 ? KELA_DEV_STATE_USB3_IN_USE : KELA_DEV_STATE_USB2_IN_USE;
}

} // namespace

KELA_DEV_STATE CDevicesEnum::GetDevState(KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    return stateOf(stDeviceInfo, {m_deviceAccess.get(), nullptr});
}

KELA_DEV_STATE CDevicesEnum::stateOf(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked)
{
    switch (device.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return gigeState(device, asked);
    case KELA_INTERFACE_TYPE_NETWORK:
        return networkState(device, asked);
    case KELA_INTERFACE_TYPE_USB:
        return usbState(device, asked.access);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return KELA_DEV_STATE_CAMERALINK_FREE;
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return KELA_DEV_STATE_GENTL_FREE;
    default:
        return KELA_DEV_STATE_UNKNOWN;
    }
}

KELA_DEV_STATE CDevicesEnum::gigeState(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked)
{
    if (device.deviceInfo.placement == KELA_PLACEMENT_REAL && !IsReachable(device) && device.remote == 0) {
        return KELA_DEV_STATE_GIGE_UNREACHABLE;
    }
    if (asked.access == nullptr) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    if (isAccessible(*asked.access, device, KELA_ACCESS_CONTROL)) {
        return KELA_DEV_STATE_GIGE_FREE;
    }
    return isMultiOpened(device, asked) ? KELA_DEV_STATE_GIGE_MULTICAST : KELA_DEV_STATE_GIGE_IN_USE;
}

KELA_DEV_STATE CDevicesEnum::networkState(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked) const
{
    if (!IsReachable(device) && device.remote == 0) {
        return KELA_DEV_STATE_NETWORK_UNREACHABLE;
    }
    if (asked.access == nullptr) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    return isAccessible(*asked.access, device, KELA_ACCESS_EXCLUSIVE) ? KELA_DEV_STATE_NETWORK_FREE
                                                                      : KELA_DEV_STATE_NETWORK_IN_USE;
}

bool CDevicesEnum::IsReachable(const KELA_STRUCT_DEVICE_INFO &stDeviceInfo) const
{
    return isInSubnetOfItsCard(stDeviceInfo);
}

bool CDevicesEnum::IsMultiOpened(KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    return isMultiOpened(stDeviceInfo, {m_deviceAccess.get(), nullptr});
}

bool CDevicesEnum::isMultiOpened(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked)
{
    KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    bool isStreaming = false;
    if (asked.access == nullptr || asked.access->GetMulticastStatus(&info, &isStreaming) != KELA_OK ||
        !isStreaming) {
        return false;
    }
    const TemporaryAccess access(*this, asked.deadline);
    const bool isRead = readStreamDestination(*access, info);
    access->DisConnect(false);
    return isRead && IsMultiIPAdder(info.special.gige.streamDestination);
}

bool CDevicesEnum::IsMultiIPAdder(unsigned int nIp) const
{
    return isMulticastAddress(nIp);
}
