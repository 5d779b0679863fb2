// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/usb3/SysfsUsb.h>

#include <libusb.h>

#include <memory>

namespace kela::usb3
{

struct ExitLibUsb {
    void operator()(libusb_context *context) const { libusb_exit(context); }
};
using LibUsbContext = std::unique_ptr<libusb_context, ExitLibUsb>;

struct CloseLibUsb {
    void operator()(libusb_device_handle *handle) const { libusb_close(handle); }
};
using LibUsbHandle = std::unique_ptr<libusb_device_handle, CloseLibUsb>;

/// Null when the system has no USB.
LibUsbContext openLibUsb();

/// Opens a camera. @p result receives 0 or a libusb error.
LibUsbHandle openCamera(libusb_context *context, const SysfsCamera &camera, int &result);

/// A KELA_ERROR for a libusb error.
unsigned int errorOfLibUsb(int result);

} // namespace kela::usb3
