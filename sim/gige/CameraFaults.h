// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraSettings.h"
#include "GvcpFormat.h"

#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace kelsim
{

constexpr uint32_t kLimitedBroadcast = 0xFFFFFFFFU;

/// A datagram on its way to a client.
struct Answer {
    std::vector<uint8_t> bytes;
    Endpoint to; ///< address kLimitedBroadcast: to everybody on the card
    std::chrono::milliseconds delay{0};
    bool isFromOtherPort = false; ///< leaves from another port than the camera's
};

/// Which commands a fault is about.
enum class Traffic { Everything, Discovery, BroadcastDiscovery, Registers };

/// What is wrong with the answers.
enum class Spoiling { None, Cut, Id, StatusCode, Code, Length, Garbage, Text, Port };

/// How a camera misbehaves: slow, lossy, talkative, or wrong.
class CameraFaults
{
public:
    static constexpr uint32_t kForever = 0xFFFFFFFFU;

    void setDelay(std::chrono::milliseconds delay, Traffic traffic);
    void setLost(uint32_t count, Traffic traffic);
    void setDuplicates(uint32_t count) { m_duplicates = count; }
    void setSpoiling(Spoiling spoiling, uint32_t value);

    /// Whether this command never arrives; counts down.
    bool swallows(uint16_t commandCode, bool isBroadcast);

    /// Delays, repeats and spoils the answers to a command.
    void treat(uint16_t commandCode, bool isBroadcast, std::vector<Answer> &answers);

private:
    void spoil(Answer &answer);
    void spoilText(Answer &answer) const;
    void fillWithGarbage(std::vector<uint8_t> &bytes);

    std::chrono::milliseconds m_delay{0};
    Traffic m_delayed = Traffic::Everything;
    uint32_t m_lost = 0;
    Traffic m_lossy = Traffic::Everything;
    uint32_t m_duplicates = 0;
    Spoiling m_spoiling = Spoiling::None;
    uint32_t m_spoilingValue = 0;
    std::minstd_rand m_random; ///< the same in every run, so that a failure can be repeated
};

/// Nothing when @p text names no fault.
std::optional<Spoiling> parseSpoiling(const std::string &text);
std::optional<Traffic> parseTraffic(const std::string &text);

} // namespace kelsim
