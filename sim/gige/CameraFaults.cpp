// SPDX-License-Identifier: Apache-2.0
#include "CameraFaults.h"

#include <algorithm>
#include <map>

namespace kelsim
{

namespace
{

bool concerns(Traffic traffic, uint16_t commandCode, bool isBroadcast)
{
    const bool isDiscovery = commandCode == static_cast<uint16_t>(Command::Discovery);
    switch (traffic) {
    case Traffic::Everything:
        return true;
    case Traffic::Discovery:
        return isDiscovery;
    case Traffic::BroadcastDiscovery:
        return isDiscovery && isBroadcast;
    case Traffic::Registers:
        return !isDiscovery;
    }
    return false;
}

} // namespace

void CameraFaults::setDelay(std::chrono::milliseconds delay, Traffic traffic)
{
    m_delay = delay;
    m_delayed = traffic;
}

void CameraFaults::setLost(uint32_t count, Traffic traffic)
{
    m_lost = count;
    m_lossy = traffic;
}

void CameraFaults::setSpoiling(Spoiling spoiling, uint32_t value)
{
    m_spoiling = spoiling;
    m_spoilingValue = value;
}

bool CameraFaults::swallows(uint16_t commandCode, bool isBroadcast)
{
    if (m_lost == 0 || !concerns(m_lossy, commandCode, isBroadcast)) {
        return false;
    }
    if (m_lost != kForever) {
        --m_lost;
    }
    return true;
}

void CameraFaults::treat(uint16_t commandCode, bool isBroadcast, std::vector<Answer> &answers)
{
    const bool isDelayed = concerns(m_delayed, commandCode, isBroadcast);
    for (Answer &answer : answers) {
        answer.delay += isDelayed ? m_delay : std::chrono::milliseconds(0);
        spoil(answer);
    }
    const std::vector<Answer> originals = answers;
    for (uint32_t i = 0; i < m_duplicates; ++i) {
        answers.insert(answers.end(), originals.begin(), originals.end());
    }
}

void CameraFaults::spoil(Answer &answer)
{
    std::vector<uint8_t> &bytes = answer.bytes;
    switch (m_spoiling) {
    case Spoiling::None:
        return;
    case Spoiling::Cut:
        bytes.resize(std::min<std::size_t>(bytes.size(), m_spoilingValue));
        return;
    case Spoiling::Id:
        putU16(bytes.data() + 6, static_cast<uint16_t>(getU16(bytes.data() + 6) ^ 0x5555));
        return;
    case Spoiling::StatusCode:
        putU16(bytes.data(), static_cast<uint16_t>(m_spoilingValue));
        bytes.resize(kHeaderSize);
        putU16(bytes.data() + 4, 0);
        return;
    case Spoiling::Code:
        putU16(bytes.data() + 2, static_cast<uint16_t>(m_spoilingValue));
        return;
    case Spoiling::Length:
        putU16(bytes.data() + 4, static_cast<uint16_t>(m_spoilingValue));
        return;
    case Spoiling::Garbage:
        fillWithGarbage(bytes);
        return;
    case Spoiling::Text:
        spoilText(answer);
        return;
    case Spoiling::Port:
        answer.isFromOtherPort = true;
        return;
    }
}

// Every text field full to its last byte, no NUL anywhere, bytes that are valid in no encoding.
void CameraFaults::spoilText(Answer &answer) const
{
    std::vector<uint8_t> &bytes = answer.bytes;
    if (bytes.size() >= kHeaderSize + kDiscoveryImageSize) {
        std::fill(bytes.begin() + kHeaderSize + reg::kManufacturer,
                  bytes.begin() + kHeaderSize + kDiscoveryImageSize, uint8_t{0xFE});
    }
}

void CameraFaults::fillWithGarbage(std::vector<uint8_t> &bytes)
{
    bytes.resize(1 + m_random() % 600);
    for (uint8_t &byte : bytes) {
        byte = static_cast<uint8_t>(m_random() & 0xFF);
    }
}

std::optional<Spoiling> parseSpoiling(const std::string &text)
{
    static const std::map<std::string, Spoiling> names = {
        {"none", Spoiling::None},         {"cut", Spoiling::Cut},   {"id", Spoiling::Id},
        {"status", Spoiling::StatusCode}, {"code", Spoiling::Code}, {"length", Spoiling::Length},
        {"garbage", Spoiling::Garbage},   {"text", Spoiling::Text}, {"port", Spoiling::Port}};
    const auto found = names.find(text);
    return found == names.end() ? std::nullopt : std::make_optional(found->second);
}

std::optional<Traffic> parseTraffic(const std::string &text)
{
    static const std::map<std::string, Traffic> names = {{"everything", Traffic::Everything},
                                                         {"discovery", Traffic::Discovery},
                                                         {"broadcast", Traffic::BroadcastDiscovery},
                                                         {"registers", Traffic::Registers}};
    const auto found = names.find(text);
    return found == names.end() ? std::nullopt : std::make_optional(found->second);
}

} // namespace kelsim
