// SPDX-License-Identifier: Apache-2.0
#include "DeviceState.h"

#include <QCoreApplication>

namespace browser
{

namespace
{

struct State {
    Q_DECLARE_TR_FUNCTIONS(DeviceState)
};

constexpr uint32_t kNewestUsb2 = 767;

bool isUsb3(const KELA_DEVICE_INFO_EX &device)
{
    return device.special.usb.usbVersion > kNewestUsb2;
}

} // namespace

Condition conditionOf(int32_t deviceState)
{
    switch (static_cast<KELA_DEV_STATE>(deviceState)) {
    case KELA_DEV_STATE_GIGE_FREE:
    case KELA_DEV_STATE_USB3_FREE:
    case KELA_DEV_STATE_USB2_FREE:
    case KELA_DEV_STATE_CAMERALINK_FREE:
    case KELA_DEV_STATE_GENTL_FREE:
    case KELA_DEV_STATE_GENTL_INTERFACE_FREE:
    case KELA_DEV_STATE_NETWORK_FREE:
        return Condition::Free;
    case KELA_DEV_STATE_GIGE_IN_USE:
    case KELA_DEV_STATE_USB3_IN_USE:
    case KELA_DEV_STATE_USB2_IN_USE:
    case KELA_DEV_STATE_GENTL_IN_USE:
    case KELA_DEV_STATE_GENTL_INTERFACE_IN_USE:
    case KELA_DEV_STATE_NETWORK_IN_USE:
        return Condition::InUse;
    case KELA_DEV_STATE_GIGE_MULTICAST:
        return Condition::Multicast;
    case KELA_DEV_STATE_GIGE_CONNECTED:
    case KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED:
    case KELA_DEV_STATE_USB3_CONNECTED:
    case KELA_DEV_STATE_USB2_CONNECTED:
    case KELA_DEV_STATE_CAMERALINK_CONNECTED:
    case KELA_DEV_STATE_GENTL_CONNECTED:
    case KELA_DEV_STATE_GENTL_INTERFACE_OPEN:
        return Condition::Connected;
    case KELA_DEV_STATE_GIGE_GRABBING:
    case KELA_DEV_STATE_USB3_GRABBING:
    case KELA_DEV_STATE_USB2_GRABBING:
    case KELA_DEV_STATE_GENTL_GRABBING:
        return Condition::Grabbing;
    case KELA_DEV_STATE_GIGE_UNREACHABLE:
    case KELA_DEV_STATE_USB3_UNUSABLE:
    case KELA_DEV_STATE_USB2_UNUSABLE:
    case KELA_DEV_STATE_CAMERALINK_UNREACHABLE:
    case KELA_DEV_STATE_NETWORK_UNREACHABLE:
        return Condition::Unusable;
    case KELA_DEV_STATE_UNKNOWN:
        break;
    }
    return Condition::Unknown;
}

bool isOwnState(int32_t deviceState)
{
    const Condition condition = conditionOf(deviceState);
    return deviceState != KELA_DEV_STATE_GENTL_INTERFACE_OPEN &&
           (condition == Condition::Connected || condition == Condition::Grabbing);
}

KELA_DEV_STATE connectedState(const KELA_STRUCT_DEVICE_INFO &device)
{
    switch (device.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_USB:
        return isUsb3(device.deviceInfo) ? KELA_DEV_STATE_USB3_CONNECTED : KELA_DEV_STATE_USB2_CONNECTED;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return KELA_DEV_STATE_CAMERALINK_CONNECTED;
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return KELA_DEV_STATE_GENTL_CONNECTED;
    default:
        return device.deviceState == KELA_DEV_STATE_GIGE_MULTICAST ? KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED
                                                                   : KELA_DEV_STATE_GIGE_CONNECTED;
    }
}

KELA_DEV_STATE freeState(const KELA_DEVICE_INFO_EX &device)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_USB:
        return isUsb3(device) ? KELA_DEV_STATE_USB3_FREE : KELA_DEV_STATE_USB2_FREE;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return KELA_DEV_STATE_CAMERALINK_FREE;
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return KELA_DEV_STATE_GENTL_FREE;
    default:
        return KELA_DEV_STATE_GIGE_FREE;
    }
}

Standing standingOf(Condition condition)
{
    switch (condition) {
    case Condition::Free:
        return Standing::Ready;
    case Condition::InUse:
    case Condition::Multicast:
        return Standing::Busy;
    case Condition::Connected:
    case Condition::Grabbing:
        return Standing::Ours;
    case Condition::Unusable:
        return Standing::Blocked;
    case Condition::Unknown:
        break;
    }
    return Standing::Neutral;
}

QString conditionText(Condition condition)
{
    switch (condition) {
    case Condition::Free:
        return State::tr("Free");
    case Condition::InUse:
        return State::tr("In use");
    case Condition::Multicast:
        return State::tr("Opened by multicast");
    case Condition::Connected:
        return State::tr("Connected");
    case Condition::Grabbing:
        return State::tr("Grabbing");
    case Condition::Unusable:
        return State::tr("Cannot be used");
    case Condition::Unknown:
        break;
    }
    return State::tr("State unknown");
}

} // namespace browser
