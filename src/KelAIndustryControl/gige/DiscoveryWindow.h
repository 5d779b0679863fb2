// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>

#include <cstddef>

namespace kela::gige
{

/// When a pass asks, asks again and stops listening. It listens until every camera of the last result has
/// answered and no new one was heard for a quiet time, and one second at most. All times are counted from
/// the start of the pass; no datagram moves the end.
class DiscoveryWindow
{
public:
    /// @param knowsCameras  the last result was not empty
    DiscoveryWindow(TimePoint start, bool knowsCameras);

    /// Something unknown was heard.
    void noteNew(TimePoint now) { m_lastNew = now; }

    /// True once per burst. Datagrams get lost, and all at the same moment: so bursts are repeated.
    bool takeBroadcast(TimePoint now);

    /// True once per round in which silent cameras are asked one by one.
    bool takeReask(TimePoint now);

    bool isOver(TimePoint now, bool isSomebodyAwaited) const;

    /// The next moment at which one of the above changes.
    TimePoint nextEvent(bool isSomebodyAwaited) const;

    TimePoint start() const { return m_start; }

private:
    TimePoint quietEnd() const { return m_lastNew + m_quiet; }

    TimePoint m_start;
    TimePoint m_lastNew;
    Milliseconds m_quiet;
    std::size_t m_broadcasts = 0;
    std::size_t m_reasks = 0;
};

} // namespace kela::gige
