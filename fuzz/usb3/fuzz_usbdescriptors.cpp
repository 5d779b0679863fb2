// SPDX-License-Identifier: Apache-2.0
// The descriptors of any device that somebody plugs in.
#include <KelAIndustryControl/usb3/UsbDescriptors.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    for (const std::uint8_t configuration : {std::uint8_t{0}, std::uint8_t{1}})
        kela::usb3::parseCameraDescriptors({data, size}, configuration);
    return 0;
}
