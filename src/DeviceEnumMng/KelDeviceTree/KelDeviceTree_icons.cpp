// SPDX-License-Identifier: Apache-2.0
// The state icons of cameras: one table for the process, filled by the first tree and shared by all. It is
// never destroyed: a tree may outlive the static objects of this library.
#include "KelDeviceTree_p.h"

#include <utility>

namespace
{

constexpr std::pair<KELA_DEV_STATE, const char *> kIconNames[] = {
    {KELA_DEV_STATE_GIGE_FREE, "CameraFree"},
    {KELA_DEV_STATE_GIGE_IN_USE, "CameraInUse"},
    {KELA_DEV_STATE_GIGE_UNREACHABLE, "CameraNoReachable"},
    {KELA_DEV_STATE_GIGE_CONNECTED, "CameraConnected"},
    {KELA_DEV_STATE_GIGE_GRABBING, "CameraGrabbing"},
    {KELA_DEV_STATE_GIGE_MULTICAST, "MulticastDisConnect"},
    {KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED, "MulticastConnected"},
    {KELA_DEV_STATE_USB3_FREE, "USBDisConnect"},
    {KELA_DEV_STATE_USB3_IN_USE, "USBInUse"},
    {KELA_DEV_STATE_USB3_CONNECTED, "USBConnected"},
    {KELA_DEV_STATE_USB3_GRABBING, "USBGrabbing"},
    {KELA_DEV_STATE_USB3_UNUSABLE, "USBNoReachable"},
    {KELA_DEV_STATE_USB2_FREE, "USB2DisConnect"},
    {KELA_DEV_STATE_USB2_IN_USE, "USB2InUse"},
    {KELA_DEV_STATE_USB2_CONNECTED, "USB2Connected"},
    {KELA_DEV_STATE_USB2_GRABBING, "USB2Grabbing"},
    {KELA_DEV_STATE_USB2_UNUSABLE, "USB2NoReachable"},
    {KELA_DEV_STATE_CAMERALINK_FREE, "CameraLinkFree"},
    {KELA_DEV_STATE_CAMERALINK_CONNECTED, "CameraLinkConnect"},
    {KELA_DEV_STATE_CAMERALINK_UNREACHABLE, "CameraLinkNoReach"},
    {KELA_DEV_STATE_GENTL_FREE, "CameraFree"},
    {KELA_DEV_STATE_GENTL_CONNECTED, "CameraConnected"},
    {KELA_DEV_STATE_GENTL_GRABBING, "CameraGrabbing"},
    {KELA_DEV_STATE_GENTL_IN_USE, "CameraInUse"},
    // Resource files of hosts spell these so.
    {KELA_DEV_STATE_GENTL_INTERFACE_FREE, "IntrefaceFree"},
    {KELA_DEV_STATE_GENTL_INTERFACE_OPEN, "IntrefaceOpen"},
    {KELA_DEV_STATE_GENTL_INTERFACE_IN_USE, "IntrefaceInUse"},
};

QMap<KELA_DEV_STATE, QIcon> &stateIcons()
{
    static auto *const icons = new QMap<KELA_DEV_STATE, QIcon>;
    return *icons;
}

} // namespace

void KelDeviceTreePrivate::fillIconMap()
{
    if (!stateIcons().isEmpty()) {
        return;
    }
    for (const auto &[state, name] : kIconNames) {
        stateIcons().insert(state, QIcon(QStringLiteral(":/Kel/tree/%1.png").arg(QLatin1String(name))));
    }
}

const QMap<KELA_DEV_STATE, QIcon> &KelDeviceTreePrivate::iconMap()
{
    return stateIcons();
}
