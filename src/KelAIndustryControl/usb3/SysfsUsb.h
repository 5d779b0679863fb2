// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/usb3/UsbDescriptors.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kela::usb3
{

/// A camera as the system shows it without anybody opening it.
struct SysfsCamera {
    std::string name; ///< of its folder, for example "2-1.4"
    CameraDescriptors descriptors;
    unsigned int busNumber = 0;
    unsigned int deviceNumber = 0;
    std::vector<std::uint8_t> ports; ///< path of ports from the root hub on
    unsigned int linkSpeed = 0;      ///< Mbit/s, of the present link
    std::uint16_t usbVersion = 0;    ///< of the present link, binary coded decimal; 0 when it is not told
    std::string manufacturer;        ///< empty when the device has no such text
    std::string product;
    std::string serial;
    bool isClaimed = false; ///< somebody holds the control interface
};

/// The cameras present, in the order of bus and port path. One that goes while it is read is left out.
std::vector<SysfsCamera> listSysfsCameras();

/// One camera by the name of its folder; nothing when it is gone or no camera.
std::optional<SysfsCamera> readSysfsCamera(const std::string &name);

/// True while the same device stands in the same place.
bool isStillThere(const SysfsCamera &camera);

/// Path of the device node.
std::string deviceNode(unsigned int busNumber, unsigned int deviceNumber);

} // namespace kela::usb3
