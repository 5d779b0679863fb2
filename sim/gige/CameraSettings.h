// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelsim
{

/// IPv4 addresses are numbers with the first octet in the highest byte.
struct Endpoint {
    uint32_t address = 0;
    uint16_t port = 0;

    bool operator==(const Endpoint &other) const { return address == other.address && port == other.port; }
    bool operator!=(const Endpoint &other) const { return !(*this == other); }
};

enum class DeviceClass : uint32_t { Transmitter = 0, Receiver = 1, Transceiver = 2, Peripheral = 3 };

/// Where a camera stands on the network.
struct CameraPlace {
    uint32_t address = 0;
    uint32_t mask = 0xFFFFFF00U;
    uint32_t gateway = 0; ///< 0 = none: strangers of another subnet cannot be answered by unicast

    bool isInSubnet(uint32_t other) const { return ((address ^ other) & mask) == 0; }
    uint32_t directedBroadcast() const { return address | ~mask; }
};

/// What a simulated camera is when it is switched on.
struct CameraSettings {
    std::string id;   ///< the name by which it is steered
    std::string card; ///< the network card that it hangs on
    CameraPlace place;
    std::array<uint8_t, 6> mac = {};
    std::string vendor = "Simulated Cameras";
    std::string model = "Area 5M";
    std::string version = "1.0";
    std::string info;
    std::string serial;
    std::string name;
    DeviceClass deviceClass = DeviceClass::Transmitter;
    uint32_t heartbeatMs = 3000;
    uint32_t ackDelayMs = 0; ///< discovery answers come after a random time up to this
    uint32_t pendingMs = 0;  ///< how long a register command takes
    bool plugged = true;
    std::optional<uint32_t> heldBy; ///< another host holds it from the start
    bool heldExclusively = false;
    uint32_t multicastGroup = 0; ///< with multicastPort: where the holder streams to
    uint16_t multicastPort = 0;
};

/// Splits a line at blanks; "double quotes" keep blanks in a word. Nothing when a quote stays open.
std::optional<std::vector<std::string>> splitWords(const std::string &line);

std::optional<uint32_t> parseAddress(const std::string &text);
std::optional<uint32_t> parseMask(const std::string &text); ///< dotted, or a prefix length
std::optional<uint32_t> parseNumber(const std::string &text, uint32_t largest);

/// "ADDRESS/LENGTH" or "ADDRESS": then the mask stays as it is.
bool parsePlace(const std::string &text, CameraPlace &place);
std::string addressText(uint32_t address);
std::string macText(const std::array<uint8_t, 6> &mac);
int prefixLength(uint32_t mask);

/// Reads the words "ID key=value…" into settings.
/// @param defaults  what a key that is not given has
/// @param error     receives one line when nothing is returned
std::optional<CameraSettings> parseCamera(const std::vector<std::string> &words, const CameraSettings &defaults,
                                          std::string &error);

/// Reads the words "PREFIX COUNT key=value…": COUNT cameras PREFIX1, PREFIX2…, their addresses counted up
/// from the given one, their serial numbers PREFIX0001…
std::vector<CameraSettings> parseFleet(const std::vector<std::string> &words, const CameraSettings &defaults,
                                       std::string &error);

/// Reads a whole file: lines "card NAME", "camera ID key=value…", "fleet PREFIX COUNT key=value…"; "#" begins
/// a comment.
std::vector<CameraSettings> readCameraFile(const std::string &path, const std::string &card,
                                           std::string &error);

} // namespace kelsim
