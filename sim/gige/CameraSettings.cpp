// SPDX-License-Identifier: Apache-2.0
#include "CameraSettings.h"

#include <arpa/inet.h>

#include <cstdio>
#include <functional>
#include <map>

namespace kelsim
{

std::optional<std::vector<std::string>> splitWords(const std::string &line)
{
    std::vector<std::string> words;
    std::string word;
    bool isInWord = false;
    bool isQuoted = false;
    for (char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
            isInWord = true;
        } else if (isQuoted || (c != ' ' && c != '\t' && c != '\r')) {
            word += c;
            isInWord = true;
        } else if (isInWord) {
            words.push_back(word);
            word.clear();
            isInWord = false;
        }
    }
    if (isInWord) {
        words.push_back(word);
    }
    return isQuoted ? std::nullopt : std::make_optional(words);
}

std::optional<uint32_t> parseAddress(const std::string &text)
{
    in_addr address{};
    if (inet_pton(AF_INET, text.c_str(), &address) != 1) {
        return std::nullopt;
    }
    return ntohl(address.s_addr);
}

std::optional<uint32_t> parseNumber(const std::string &text, uint32_t largest)
{
    if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    const unsigned long long value = std::stoull(text);
    return value > largest ? std::nullopt : std::make_optional(static_cast<uint32_t>(value));
}

std::optional<uint32_t> parseMask(const std::string &text)
{
    if (text.find('.') != std::string::npos) {
        return parseAddress(text);
    }
    const auto length = parseNumber(text, 32);
    if (!length) {
        return std::nullopt;
    }
    return *length == 0 ? 0U : 0xFFFFFFFFU << (32 - *length);
}

bool parsePlace(const std::string &text, CameraPlace &place)
{
    const auto slash = text.find('/');
    const auto address = parseAddress(text.substr(0, slash));
    const auto mask = slash == std::string::npos ? place.mask : parseMask(text.substr(slash + 1));
    if (!address || !mask) {
        return false;
    }
    place.address = *address;
    place.mask = *mask;
    return true;
}

std::string addressText(uint32_t address)
{
    const in_addr network{htonl(address)};
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &network, text, sizeof text);
    return text;
}

std::string macText(const std::array<uint8_t, 6> &mac)
{
    char text[18] = "";
    std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4],
                  mac[5]);
    return text;
}

int prefixLength(uint32_t mask)
{
    int length = 0;
    for (; mask & 0x80000000U; mask <<= 1) {
        ++length;
    }
    return length;
}

namespace
{

bool parseMac(const std::string &text, std::array<uint8_t, 6> &mac)
{
    unsigned int part[6] = {};
    char rest = 0;
    if (std::sscanf(text.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x%c", &part[0], &part[1], &part[2], &part[3], &part[4],
                    &part[5], &rest) != 6) {
        return false;
    }
    for (std::size_t i = 0; i < mac.size(); ++i) {
        mac[i] = static_cast<uint8_t>(part[i]);
    }
    return true;
}

bool parseClass(const std::string &text, DeviceClass &deviceClass)
{
    static const std::map<std::string, DeviceClass> classes = {{"transmitter", DeviceClass::Transmitter},
                                                               {"receiver", DeviceClass::Receiver},
                                                               {"transceiver", DeviceClass::Transceiver},
                                                               {"peripheral", DeviceClass::Peripheral}};
    const auto found = classes.find(text);
    if (found == classes.end()) {
        return false;
    }
    deviceClass = found->second;
    return true;
}

bool parseHolder(const std::string &text, CameraSettings &camera)
{
    camera.heldBy = parseAddress(text);
    return camera.heldBy.has_value();
}

bool parseMulticast(const std::string &text, CameraSettings &camera)
{
    const auto colon = text.find(':');
    const auto group = parseAddress(text.substr(0, colon));
    const auto port = colon == std::string::npos ? std::nullopt : parseNumber(text.substr(colon + 1), 65535);
    if (!group || !port) {
        return false;
    }
    camera.multicastGroup = *group;
    camera.multicastPort = static_cast<uint16_t>(*port);
    return true;
}

bool assign(std::string &field, const std::string &text)
{
    field = text;
    return true;
}

template <typename Field>
bool assignNumber(Field &field, const std::optional<uint32_t> &value)
{
    field = value.value_or(0);
    return value.has_value();
}

using Setter = std::function<bool(CameraSettings &, const std::string &)>;

const std::map<std::string, Setter> &setters()
{
    static const std::map<std::string, Setter> table = {
        {"card", [](auto &c, auto &v) { return assign(c.card, v); }},
        {"address", [](auto &c, auto &v) { return parsePlace(v, c.place); }},
        {"gateway", [](auto &c, auto &v) { return assignNumber(c.place.gateway, parseAddress(v)); }},
        {"mac", [](auto &c, auto &v) { return parseMac(v, c.mac); }},
        {"vendor", [](auto &c, auto &v) { return assign(c.vendor, v); }},
        {"model", [](auto &c, auto &v) { return assign(c.model, v); }},
        {"version", [](auto &c, auto &v) { return assign(c.version, v); }},
        {"info", [](auto &c, auto &v) { return assign(c.info, v); }},
        {"serial", [](auto &c, auto &v) { return assign(c.serial, v); }},
        {"name", [](auto &c, auto &v) { return assign(c.name, v); }},
        {"class", [](auto &c, auto &v) { return parseClass(v, c.deviceClass); }},
        {"heartbeat", [](auto &c, auto &v) { return assignNumber(c.heartbeatMs, parseNumber(v, 600000)); }},
        {"ack-delay", [](auto &c, auto &v) { return assignNumber(c.ackDelayMs, parseNumber(v, 65535)); }},
        {"pending", [](auto &c, auto &v) { return assignNumber(c.pendingMs, parseNumber(v, 65535)); }},
        {"hold", [](auto &c, auto &v) { return parseHolder(v, c); }},
        {"exclusive",
         [](auto &c, auto &v) {
             c.heldExclusively = true;
             return parseHolder(v, c);
         }},
        {"multicast", [](auto &c, auto &v) { return parseMulticast(v, c); }},
        {"plugged",
         [](auto &c, auto &v) {
             c.plugged = v == "yes";
             return v == "yes" || v == "no";
         }},
    };
    return table;
}

std::string knownKeys()
{
    std::string keys;
    for (const auto &entry : setters()) {
        keys += (keys.empty() ? "" : ", ") + entry.first;
    }
    return keys;
}

bool applySetting(CameraSettings &camera, const std::string &word, std::string &error)
{
    const auto equals = word.find('=');
    if (equals == std::string::npos) {
        error = "'" + word + "' is not key=value";
        return false;
    }
    const std::string key = word.substr(0, equals);
    const auto setter = setters().find(key);
    if (setter == setters().end()) {
        error = "unknown key '" + key + "'; known are " + knownKeys();
        return false;
    }
    if (!setter->second(camera, word.substr(equals + 1))) {
        error = "bad value in '" + word + "'";
        return false;
    }
    return true;
}

// Locally administered, and different for different addresses.
std::array<uint8_t, 6> macOfAddress(uint32_t address)
{
    return {0x02,
            0x5A,
            static_cast<uint8_t>(address >> 24),
            static_cast<uint8_t>((address >> 16) & 0xFF),
            static_cast<uint8_t>((address >> 8) & 0xFF),
            static_cast<uint8_t>(address & 0xFF)};
}

void fillWhatWasNotGiven(CameraSettings &camera)
{
    if (camera.mac == std::array<uint8_t, 6>{}) {
        camera.mac = macOfAddress(camera.place.address);
    }
    if (camera.serial.empty()) {
        camera.serial = camera.id;
    }
}

bool checkCamera(const CameraSettings &camera, std::string &error)
{
    if (camera.place.address == 0) {
        error = "camera '" + camera.id + "' has no address=ADDRESS/LENGTH";
    } else if (camera.card.empty()) {
        error = "camera '" + camera.id + "' has no card=NAME";
    }
    return error.empty();
}

bool applySettings(CameraSettings &camera, const std::vector<std::string> &words, std::size_t first,
                   std::string &error)
{
    for (std::size_t i = first; i < words.size(); ++i) {
        if (!applySetting(camera, words[i], error)) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<CameraSettings> parseCamera(const std::vector<std::string> &words, const CameraSettings &defaults,
                                          std::string &error)
{
    error.clear();
    if (words.empty() || words[0].empty() || words[0].find('=') != std::string::npos) {
        error = "a camera begins with its ID";
        return std::nullopt;
    }
    CameraSettings camera = defaults;
    camera.id = words[0];
    if (!applySettings(camera, words, 1, error) || !checkCamera(camera, error)) {
        return std::nullopt;
    }
    fillWhatWasNotGiven(camera);
    return camera;
}

std::vector<CameraSettings> parseFleet(const std::vector<std::string> &words, const CameraSettings &defaults,
                                       std::string &error)
{
    error.clear();
    const auto count = words.size() < 2 ? std::nullopt : parseNumber(words[1], 4096);
    if (!count) {
        error = "a fleet begins with a prefix and a count up to 4096";
        return {};
    }
    CameraSettings first = defaults;
    first.id = words[0];
    if (!applySettings(first, words, 2, error) || !checkCamera(first, error)) {
        return {};
    }

    std::vector<CameraSettings> cameras;
    for (uint32_t i = 0; i < *count; ++i) {
        CameraSettings camera = first;
        char serial[16];
        std::snprintf(serial, sizeof serial, "%04u", i + 1);
        camera.id = first.id + std::to_string(i + 1);
        camera.serial = first.id + serial;
        camera.place.address = first.place.address + i;
        fillWhatWasNotGiven(camera);
        cameras.push_back(camera);
    }
    return cameras;
}

} // namespace kelsim
