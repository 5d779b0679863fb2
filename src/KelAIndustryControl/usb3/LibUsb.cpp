// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/LibUsb.h>

#include <KelAIndustryControl/KelAErrors.h>

namespace kela::usb3
{
namespace
{

/// The devices of a context, given back with their references.
class DeviceList
{
public:
    explicit DeviceList(libusb_context *context)
        : m_count(libusb_get_device_list(context, &m_devices))
    {
    }
    ~DeviceList()
    {
        if (m_devices)
            libusb_free_device_list(m_devices, 1);
    }
    DeviceList(const DeviceList &) = delete;
    DeviceList &operator=(const DeviceList &) = delete;

    libusb_device *find(unsigned int busNumber, unsigned int deviceNumber) const
    {
        for (ssize_t i = 0; i < m_count; ++i) {
            if (libusb_get_bus_number(m_devices[i]) == busNumber &&
                libusb_get_device_address(m_devices[i]) == deviceNumber)
                return m_devices[i];
        }
        return nullptr;
    }

private:
    libusb_device **m_devices = nullptr;
    ssize_t m_count;
};

} // namespace

LibUsbContext openLibUsb()
{
    libusb_context *context = nullptr;
    return LibUsbContext(libusb_init(&context) == LIBUSB_SUCCESS ? context : nullptr);
}

LibUsbHandle openCamera(libusb_context *context, const SysfsCamera &camera, int &result)
{
    const DeviceList devices(context);
    libusb_device *device = devices.find(camera.busNumber, camera.deviceNumber);
    libusb_device_handle *handle = nullptr;
    result = device ? libusb_open(device, &handle) : static_cast<int>(LIBUSB_ERROR_NO_DEVICE);
    return LibUsbHandle(result == LIBUSB_SUCCESS ? handle : nullptr);
}

unsigned int errorOfLibUsb(int result)
{
    switch (result) {
    case LIBUSB_SUCCESS:
        return KELA_OK;
    case LIBUSB_ERROR_ACCESS:
        return KELA_ERROR_PERMISSION;
    case LIBUSB_ERROR_BUSY:
        return KELA_ERROR_IN_USE;
    case LIBUSB_ERROR_NO_DEVICE:
    case LIBUSB_ERROR_NOT_FOUND:
        return KELA_ERROR_UNREACHABLE;
    case LIBUSB_ERROR_TIMEOUT:
        return KELA_ERROR_TIMEOUT;
    case LIBUSB_ERROR_NO_MEM:
        return KELA_ERROR_RESOURCE;
    default:
        return KELA_ERROR_PROTOCOL;
    }
}

} // namespace kela::usb3
