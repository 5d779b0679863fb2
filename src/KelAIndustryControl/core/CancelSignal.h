// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>
#include <KelAIndustryControl/core/UniqueFd.h>

#include <atomic>

namespace kela
{

/// Ends waits for good: once set it stays set. Thread: any.
class CancelSignal
{
public:
    CancelSignal();

    void set();
    bool isSet() const { return m_isSet.load(); }

    /// Readable once set, for poll(). -1 when the system gave none; then isSet() is all there is.
    int fd() const { return m_event.get(); }

    /// Waits until the signal is set or @p deadline has passed. True when it is set.
    bool waitUntil(TimePoint deadline) const;

private:
    UniqueFd m_event;
    std::atomic<bool> m_isSet{false};
};

} // namespace kela
