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

} // namespace

KELA_DEV_STATE CDevicesEnum::GetDevState(KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    switch (stDeviceInfo.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return gigeState(stDeviceInfo);
    case KELA_INTERFACE_TYPE_NETWORK:
        return networkState(stDeviceInfo);
    case KELA_INTERFACE_TYPE_USB:
        return usbState(stDeviceInfo);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return KELA_DEV_STATE_CAMERALINK_FREE;
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return KELA_DEV_STATE_GENTL_FREE;
    default:
        return KELA_DEV_STATE_UNKNOWN;
    }
}

KELA_DEV_STATE CDevicesEnum::gigeState(KELA_STRUCT_DEVICE_INFO &device)
{
    if (device.deviceInfo.placement == KELA_PLACEMENT_REAL && !IsReachable(device) && device.remote == 0) {
        return KELA_DEV_STATE_GIGE_UNREACHABLE;
    }
    if (!m_deviceAccess) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    if (isAccessible(device, KELA_ACCESS_CONTROL)) {
        return KELA_DEV_STATE_GIGE_FREE;
    }
    return IsMultiOpened(device) ? KELA_DEV_STATE_GIGE_MULTICAST : KELA_DEV_STATE_GIGE_IN_USE;
}

KELA_DEV_STATE CDevicesEnum::networkState(KELA_STRUCT_DEVICE_INFO &device)
{
    if (!IsReachable(device) && device.remote == 0) {
        return KELA_DEV_STATE_NETWORK_UNREACHABLE;
    }
    if (!m_deviceAccess) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    return isAccessible(device, KELA_ACCESS_EXCLUSIVE) ? KELA_DEV_STATE_NETWORK_FREE
                                                       : KELA_DEV_STATE_NETWORK_IN_USE;
}

KELA_DEV_STATE CDevicesEnum::usbState(KELA_STRUCT_DEVICE_INFO &device)
{
    const bool isUsb3 = device.deviceInfo.special.usb.usbVersion > kLastUsb2Version;
    if (device.deviceInfo.special.usb.usable == 0) {
        return isUsb3 ? KELA_DEV_STATE_USB3_UNUSABLE : KELA_DEV_STATE_USB2_UNUSABLE;
    }
    if (!m_deviceAccess) {
        return KELA_DEV_STATE_UNKNOWN;
    }
    if (isAccessible(device, KELA_ACCESS_CONTROL)) {
        return isUsb3 ? KELA_DEV_STATE_USB3_FREE : KELA_DEV_STATE_USB2_FREE;
    }
    return isUsb3 ? KELA_DEV_STATE_USB3_IN_USE : KELA_DEV_STATE_USB2_IN_USE;
}

bool CDevicesEnum::isAccessible(KELA_STRUCT_DEVICE_INFO &device, KELA_ACCESS_MODE mode)
{
    bool accessible = false;
    const unsigned int result = m_deviceAccess->IsDeviceAccessible(&device.deviceInfo, mode, &accessible);
    return result == KELA_OK && accessible;
}

bool CDevicesEnum::IsReachable(const KELA_STRUCT_DEVICE_INFO &stDeviceInfo) const
{
    return isInSubnetOfItsCard(stDeviceInfo);
}

bool CDevicesEnum::IsMultiOpened(KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    KELA_DEVICE_INFO_EX &device = stDeviceInfo.deviceInfo;
    bool isStreaming = false;
    if (!m_deviceAccess || m_deviceAccess->GetMulticastStatus(&device, &isStreaming) != KELA_OK ||
        !isStreaming) {
        return false;
    }
    const TemporaryAccess access(*this);
    const bool isRead = readStreamDestination(*access, device);
    access->DisConnect(false);
    return isRead && IsMultiIPAdder(device.special.gige.streamDestination);
}

bool CDevicesEnum::IsMultiIPAdder(unsigned int nIp) const
{
    return isMulticastAddress(nIp);
}
