// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/usb3/SysfsUsb.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>

struct libusb_device_handle;

namespace kela
{
class CancelSignal;
}

namespace kela::usb3
{

/// Texts that only an open device gives. One that was not read is empty.
struct UsbTexts {
    std::string guid;
    std::string vendor;
    std::string model;
    std::string family;
    std::string version;
    std::string info;
    std::string serial;
    std::string userName;
};

/// Reads the texts of cameras and keeps them: they do not change until the camera is plugged again, and
/// reading them wakes it up.
/// Thread: one at a time.
class UsbStrings
{
public:
    explicit UsbStrings(const CancelSignal &cancel)
        : m_cancel(cancel)
    {
    }

    /// Reads the texts that were not read before and forgets the cameras that are gone. A camera that could not
    /// be opened is tried again the next time; of one that did not answer in time, the texts that are left.
    void update(const std::vector<SysfsCamera> &cameras);

    /// Null when none could be read.
    const UsbTexts *texts(const SysfsCamera &camera) const;

private:
    struct Key {
        unsigned int busNumber;
        unsigned int deviceNumber;
        std::string serial;
        bool operator<(const Key &other) const;
    };
    struct Known {
        UsbTexts texts;
        std::set<std::uint8_t> stuck; // numbers of strings that did not come in time
        bool isRead = false;          // the camera answered at all
        bool isComplete = false;      // nothing is left to be asked for
    };
    static Key keyOf(const SysfsCamera &camera);
    static void read(libusb_device_handle *handle, const CameraDescriptors &descriptors, Known &known);

    const CancelSignal &m_cancel;
    std::map<Key, Known> m_known;
};

} // namespace kela::usb3
