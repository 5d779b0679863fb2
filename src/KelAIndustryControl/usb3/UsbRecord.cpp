// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbRecord.h>

#include <KelAIndustryControl/core/FieldText.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace kela::usb3
{
namespace
{

const std::string &firstText(const std::string &wanted, const std::string &instead)
{
    return wanted.empty() ? instead : wanted;
}

std::string versionText(std::uint16_t codedDecimal)
{
    char text[sizeof("ff.ff")];
    std::snprintf(text, sizeof(text), "%x.%02x", codedDecimal >> 8 & 0xFFU, codedDecimal & 0xFFU);
    return text;
}

/// The bus number first, so that the locator of a camera is never zero, then as much of the path as fits.
void setLocator(std::uint8_t (&locator)[4], const SysfsCamera &camera)
{
    locator[0] = static_cast<std::uint8_t>(std::clamp(camera.busNumber, 1U, 255U));
    const std::size_t count = std::min(camera.ports.size(), std::size(locator) - 1);
    std::copy_n(camera.ports.begin(), count, locator + 1);
}

// A camera on a slower port says an older version there. What the system tells and what the descriptors say can
// come from different moments: the older one of both is the one that holds.
std::uint16_t usbVersionOf(const SysfsCamera &camera)
{
    const std::uint16_t described = camera.descriptors.usbVersion;
    return camera.usbVersion != 0 ? std::min(camera.usbVersion, described) : described;
}

} // namespace

KELA_DEVICE_INFO_EX recordOf(const SysfsCamera &camera, const UsbTexts *texts, bool hasPermission)
{
    static const UsbTexts kNoTexts;
    const UsbTexts &known = texts ? *texts : kNoTexts;
    const std::string serial = firstText(firstText(known.serial, camera.serial), known.guid);

    KELA_DEVICE_INFO_EX record = {};
    record.transport = KELA_INTERFACE_TYPE_USB;
    setUtf8Field(record.modelName, firstText(known.model, camera.product));
    setUtf8Field(record.secondName, firstText(known.version, versionText(camera.descriptors.deviceVersion)));
    // Without any text of its own, the place where it is plugged tells a camera from its twin.
    setUtf8Field(record.serialNumber, firstText(serial, camera.name));

    KELA_USB_DEVICE_INFO &usb = record.special.usb;
    setLocator(usb.portLocator, camera);
    usb.usable = hasPermission && camera.linkSpeed >= kSlowestLinkMbits ? 1 : 0;
    usb.genCpVersion = camera.descriptors.genCpVersion;
    usb.u3vVersion = camera.descriptors.u3vVersion;
    setUtf8Field(usb.deviceGuid, known.guid);
    setUtf8Field(usb.familyName, known.family);
    setUtf8Field(usb.manufacturerInfo, known.info);
    setUtf8Field(usb.manufacturerName, firstText(known.vendor, camera.manufacturer));
    setUtf8Field(usb.userDefinedName, known.userName);
    usb.usbVersion = usbVersionOf(camera);
    usb.linkSpeed = camera.linkSpeed;
    usb.speedSupport = camera.descriptors.speedSupport;
    usb.vendorId = camera.descriptors.vendorId;
    usb.productId = camera.descriptors.productId;
    usb.busNumber = camera.busNumber;
    usb.deviceNumber = camera.deviceNumber;
    return record;
}

} // namespace kela::usb3
