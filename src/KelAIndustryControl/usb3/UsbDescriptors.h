// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>

#include <cstdint>
#include <optional>

namespace kela::usb3
{

/// What the descriptors of a USB3 Vision camera say. String fields are numbers of string descriptors, 0 = none.
struct CameraDescriptors {
    std::uint16_t vendorId = 0;
    std::uint16_t productId = 0;
    std::uint16_t usbVersion = 0;    ///< binary coded decimal
    std::uint16_t deviceVersion = 0; ///< binary coded decimal
    std::uint8_t configuration = 0;  ///< value of the configuration that holds the camera
    std::uint8_t controlInterface = 0;
    std::uint32_t genCpVersion = 0; ///< major number in the high half
    std::uint32_t u3vVersion = 0;   ///< major number in the high half
    std::uint8_t guidString = 0;
    std::uint8_t vendorString = 0;
    std::uint8_t modelString = 0;
    std::uint8_t familyString = 0;
    std::uint8_t versionString = 0;
    std::uint8_t infoString = 0;
    std::uint8_t serialString = 0;
    std::uint8_t userNameString = 0;
    std::uint8_t speedSupport = 0; ///< bit 0 low … bit 4 super-plus
};

/// Reads the descriptors of a device as the system keeps them: the device descriptor, then every
/// configuration whole. Nothing unless the active configuration holds a USB3 Vision control interface with
/// its device-info descriptor.
/// @param configuration  value of the active configuration, 0 = the first one that holds a camera
std::optional<CameraDescriptors> parseCameraDescriptors(ByteView bytes, std::uint8_t configuration);

} // namespace kela::usb3
