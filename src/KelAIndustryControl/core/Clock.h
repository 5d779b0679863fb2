// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>

namespace kela
{

/// The clock of every wait. A deadline is a point on it, computed once: traffic never restarts it.
using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;
using Milliseconds = std::chrono::milliseconds;

/// Time-out for poll() until @p deadline, rounded up so that the wait does not end before it, and never
/// negative, since poll() takes that for "for ever".
inline int pollTimeout(TimePoint deadline, TimePoint now)
{
    constexpr Milliseconds kLongestWait{60000};
    const auto left = std::chrono::ceil<Milliseconds>(deadline - now);
    return static_cast<int>(std::clamp(left, Milliseconds{0}, kLongestWait).count());
}

} // namespace kela
