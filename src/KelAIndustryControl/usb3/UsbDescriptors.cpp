// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbDescriptors.h>

#include <cstddef>

namespace kela::usb3
{
namespace
{

// USB counts its bytes from the low one, and the class descriptor keeps its numbers unaligned.
struct Le16 {
    std::uint8_t bytes[2];
    std::uint16_t value() const { return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8); }
};

struct Le32 {
    Le16 low;
    Le16 high;
    std::uint32_t value() const
    {
        return static_cast<std::uint32_t>(low.value()) | static_cast<std::uint32_t>(high.value()) << 16;
    }
};

struct DescriptorHeader {
    std::uint8_t length;
    std::uint8_t type;
};

struct DeviceDescriptor {
    DescriptorHeader header;
    Le16 usbVersion;
    std::uint8_t deviceClass;
    std::uint8_t deviceSubClass;
    std::uint8_t deviceProtocol;
    std::uint8_t maxPacketSize;
    Le16 vendorId;
    Le16 productId;
    Le16 deviceVersion;
    std::uint8_t manufacturerString;
    std::uint8_t productString;
    std::uint8_t serialString;
    std::uint8_t configurations;
};
static_assert(sizeof(DeviceDescriptor) == 18 && offsetof(DeviceDescriptor, vendorId) == 8);

struct ConfigurationDescriptor {
    DescriptorHeader header;
    Le16 totalLength;
    std::uint8_t interfaces;
    std::uint8_t value;
    std::uint8_t nameString;
    std::uint8_t attributes;
    std::uint8_t maxPower;
};
static_assert(sizeof(ConfigurationDescriptor) == 9 && offsetof(ConfigurationDescriptor, value) == 5);

struct InterfaceDescriptor {
    DescriptorHeader header;
    std::uint8_t number;
    std::uint8_t alternate;
    std::uint8_t endpoints;
    std::uint8_t interfaceClass;
    std::uint8_t interfaceSubClass;
    std::uint8_t interfaceProtocol;
    std::uint8_t nameString;
};
static_assert(sizeof(InterfaceDescriptor) == 9 && offsetof(InterfaceDescriptor, interfaceClass) == 5);

struct DeviceInfoDescriptor {
    DescriptorHeader header;
    std::uint8_t subType;
    Le32 genCpVersion;
    Le32 u3vVersion;
    std::uint8_t guidString;
    std::uint8_t vendorString;
    std::uint8_t modelString;
    std::uint8_t familyString;
    std::uint8_t versionString;
    std::uint8_t infoString;
    std::uint8_t serialString;
    std::uint8_t userNameString;
    std::uint8_t speedSupport;
};
static_assert(sizeof(DeviceInfoDescriptor) == 20 && offsetof(DeviceInfoDescriptor, guidString) == 11);
static_assert(alignof(DeviceInfoDescriptor) == 1 && alignof(DeviceDescriptor) == 1);

constexpr std::uint8_t kTypeDevice = 0x01;
constexpr std::uint8_t kTypeConfiguration = 0x02;
constexpr std::uint8_t kTypeInterface = 0x04;
constexpr std::uint8_t kTypeClassInterface = 0x24;
constexpr std::uint8_t kSubTypeDeviceInfo = 0x01;
constexpr std::uint8_t kClassMiscellaneous = 0xEF;
constexpr std::uint8_t kSubClassUsb3Vision = 0x05;
constexpr std::uint8_t kProtocolControl = 0x00;

/// The descriptor at the beginning of @p bytes, of its own length; empty when that length lies.
ByteView firstDescriptor(ByteView bytes)
{
    const auto header = readLayout<DescriptorHeader>(bytes);
    if (!header || header->length < sizeof(DescriptorHeader) || header->length > bytes.size)
        return {};
    return bytes.first(header->length);
}

std::uint8_t typeOf(ByteView descriptor)
{
    return descriptor.data[offsetof(DescriptorHeader, type)];
}

bool isControlInterface(const InterfaceDescriptor &interface)
{
    return interface.interfaceClass == kClassMiscellaneous &&
           interface.interfaceSubClass == kSubClassUsb3Vision &&
           interface.interfaceProtocol == kProtocolControl;
}

std::optional<DeviceInfoDescriptor> deviceInfo(ByteView descriptor)
{
    const auto info = readLayout<DeviceInfoDescriptor>(descriptor);
    return info && info->subType == kSubTypeDeviceInfo ? info : std::nullopt;
}

struct Control {
    std::uint8_t interfaceNumber;
    DeviceInfoDescriptor info;
};

/// The control interface and the device info that stands behind it, before the next interface.
std::optional<Control> findControl(ByteView configuration)
{
    std::optional<InterfaceDescriptor> control;
    for (ByteView rest = configuration; rest.size;) {
        const ByteView descriptor = firstDescriptor(rest);
        if (!descriptor.size)
            return std::nullopt;
        if (typeOf(descriptor) == kTypeInterface) {
            control = readLayout<InterfaceDescriptor>(descriptor);
            if (control && !isControlInterface(*control))
                control.reset();
        } else if (control && typeOf(descriptor) == kTypeClassInterface) {
            if (const auto info = deviceInfo(descriptor))
                return Control{control->number, *info};
        }
        rest = rest.from(descriptor.size);
    }
    return std::nullopt;
}

CameraDescriptors describe(const DeviceDescriptor &device, std::uint8_t configuration, const Control &control)
{
    CameraDescriptors camera;
    camera.vendorId = device.vendorId.value();
    camera.productId = device.productId.value();
    camera.usbVersion = device.usbVersion.value();
    camera.deviceVersion = device.deviceVersion.value();
    camera.configuration = configuration;
    camera.controlInterface = control.interfaceNumber;
    camera.genCpVersion = control.info.genCpVersion.value();
    camera.u3vVersion = control.info.u3vVersion.value();
    camera.guidString = control.info.guidString;
    camera.vendorString = control.info.vendorString;
    camera.modelString = control.info.modelString;
    camera.familyString = control.info.familyString;
    camera.versionString = control.info.versionString;
    camera.infoString = control.info.infoString;
    camera.serialString = control.info.serialString ? control.info.serialString : device.serialString;
    camera.userNameString = control.info.userNameString;
    camera.speedSupport = control.info.speedSupport;
    return camera;
}

} // namespace

std::optional<CameraDescriptors> parseCameraDescriptors(ByteView bytes, std::uint8_t configuration)
{
    const auto device = readLayout<DeviceDescriptor>(firstDescriptor(bytes));
    if (!device || device->header.type != kTypeDevice)
        return std::nullopt;
    ByteView rest = bytes.from(device->header.length);
    while (const auto head = readLayout<ConfigurationDescriptor>(rest)) {
        const std::size_t length = head->totalLength.value();
        if (head->header.type != kTypeConfiguration || length < sizeof(ConfigurationDescriptor))
            return std::nullopt;
        const bool isWanted = configuration == 0 || head->value == configuration;
        const auto control = isWanted ? findControl(rest.first(length)) : std::nullopt;
        if (control)
            return describe(*device, head->value, *control);
        rest = rest.from(length);
    }
    return std::nullopt;
}

} // namespace kela::usb3
