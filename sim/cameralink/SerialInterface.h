// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SimulatedPort.h"

#include <cstdint>
#include <cstring>
#include <string>

#define SIM_EXPORT __attribute__((visibility("default")))

/// @file
/// What the functions of a vendor-neutral Camera Link serial library share. Names and numbers are those of the
/// public interface.

namespace kelsim
{

constexpr std::int32_t kNoError = 0;
constexpr std::int32_t kBufferTooSmall = -10001;
constexpr std::int32_t kPortInUse = -10003;
constexpr std::int32_t kTimeout = -10004;
constexpr std::int32_t kInvalidIndex = -10005;
constexpr std::int32_t kInvalidReference = -10006;
constexpr std::int32_t kFunctionNotFound = -10099;

/// Sizes of texts hold the room given and the room needed, the NUL included.
inline std::int32_t giveText(const std::string &text, char *buffer, std::uint32_t *size)
{
    const auto needed = static_cast<std::uint32_t>(text.size() + 1);
    const bool isTooSmall = *size < needed;
    if (!isTooSmall)
        std::memcpy(buffer, text.c_str(), needed);
    *size = needed;
    return isTooSmall ? kBufferTooSmall : kNoError;
}

inline SimulatedPort *portOf(void *reference)
{
    return static_cast<SimulatedPort *>(reference);
}

} // namespace kelsim
