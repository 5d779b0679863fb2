// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceExplanation.h"

namespace browser
{

/// Says why a USB camera that is present cannot be used, and what a udev rule would have to hold.
QStringList usbObstacles(const KELA_USB_DEVICE_INFO &camera, const DeviceNode &node);
/// Says that a camera is slower than it could be on its port; empty when it is not.
QString usbSpeedHint(const KELA_USB_DEVICE_INFO &camera);
/// Adds the figures of the camera's connection.
void addUsbFacts(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device, const DeviceNode &node);

} // namespace browser
