// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kelsim
{

/// A simulated USB device, as a line of the scene's file gives it.
struct UsbDevice {
    std::string kind; ///< camera, webcam or storage
    std::string port; ///< place of the device, for example 2-1.4
    int busNumber = 0;
    int deviceNumber = 0;
    std::map<std::string, std::string> words; ///< what follows the place; a word without "=" stands for itself

    bool has(const std::string &word) const { return words.count(word) != 0; }
    std::string text(const std::string &key, const std::string &otherwise = {}) const;
    std::string node() const;   ///< path of the device node
    std::string folder() const; ///< path of its folder under /sys
};

/// Reads a scene. A line is
///   KIND PORT [KEY=TEXT | KEY="TEXT WITH BLANKS" | WORD]…
/// with the kinds camera, webcam and storage; "#" begins a comment. What a camera understands: vendor, model,
/// serial, user, guid, family, device-version and info (its string descriptors), manufacturer, product and
/// sysfs-serial (what the system shows; the descriptors' texts otherwise), speed (Mbit/s), version (of USB, as
/// the system shows it), descriptor-version (the same in the descriptors, if they say another one), claimed (a
/// program holds it; claimed=unguarded: and a second claim is not refused), nodeless (it has no node),
/// forbidden (its node belongs to somebody else), cut=BYTES (descriptors that end early), length=NUMBER (a
/// device-info descriptor that lies about its length), booting=NUMBER (so many requests for strings never
/// come), stuck=INDEX (a string descriptor that never comes), broken=INDEX (one whose transfer fails,
/// broken=all for each one's first time), pulled (it leaves the bus when its strings are asked for).
/// @param error  receives what is wrong, with its line, when the result is empty
std::vector<UsbDevice> readUsbScene(const std::string &path, std::string &error);

/// String descriptors of a camera by their index.
std::map<int, std::string> cameraStrings(const UsbDevice &device);

/// The devices of a scene, their controller and root hubs, in the format that umockdev reads.
std::string describeUsbScene(const std::vector<UsbDevice> &devices);

} // namespace kelsim
