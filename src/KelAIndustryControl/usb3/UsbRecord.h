// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/usb3/SysfsUsb.h>
#include <KelAIndustryControl/usb3/UsbStrings.h>

namespace kela::usb3
{

/// Slower links than this carry no USB3 Vision camera.
constexpr unsigned int kSlowestLinkMbits = 480;

/// The record of a camera.
/// @param texts          null when they could not be read; the system's own texts stand in
/// @param hasPermission  the device node may be opened for reading and writing
KELA_DEVICE_INFO_EX recordOf(const SysfsCamera &camera, const UsbTexts *texts, bool hasPermission);

} // namespace kela::usb3
