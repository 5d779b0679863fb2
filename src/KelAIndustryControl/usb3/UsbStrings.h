// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/usb3/SysfsUsb.h>

#include <map>
#include <string>

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

    /// Reads the texts of those cameras that were not read before and forgets those that are gone. A camera
    /// that could not be opened is tried again the next time.
    void update(const std::vector<SysfsCamera> &cameras);

    /// Null when they could not be read.
    const UsbTexts *texts(const SysfsCamera &camera) const;

private:
    struct Key {
        unsigned int busNumber;
        unsigned int deviceNumber;
        std::string serial;
        bool operator<(const Key &other) const;
    };
    static Key keyOf(const SysfsCamera &camera);

    const CancelSignal &m_cancel;
    std::map<Key, UsbTexts> m_texts;
};

} // namespace kela::usb3
