// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"
#include "HostFacts.h"
#include "OwnSession.h"

#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

/// The file through which a USB device is opened.
struct DeviceNode {
    QString path;
    bool exists = false;
    bool isWritable = false;
};

/// What besides the record decides what is to be said of a device.
struct DeviceContext {
    HostFacts host;
    DeviceNode node;    ///< of a USB device
    OwnSession session; ///< this program's connection to the device
};

/// Tells in words and figures what a device is, how it stands, and where it cannot be used, why and
/// what helps. Depends on its arguments, the language and the encoding of device texts alone.
Explanation explainDevice(const KELA_STRUCT_DEVICE_INFO &device, const DeviceContext &context);

/// Reads the device node of a USB device's record.
DeviceNode readDeviceNode(const KELA_DEVICE_INFO_EX &device);

} // namespace browser
