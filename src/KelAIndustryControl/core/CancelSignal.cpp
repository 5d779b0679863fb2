// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/CancelSignal.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace kela
{

CancelSignal::CancelSignal()
    : m_event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void CancelSignal::set()
{
    m_isSet.store(true);
    const std::uint64_t one = 1;
    // Nothing reads the event, so it stays readable; a second write changes nothing.
    if (m_event && ::write(m_event.get(), &one, sizeof one) < 0)
        return;
}

bool CancelSignal::waitUntil(TimePoint deadline) const
{
    // Without an event descriptor the flag is looked at now and then.
    constexpr Milliseconds kLookInterval{20};
    for (TimePoint now = Clock::now(); !isSet() && now < deadline; now = Clock::now()) {
        pollfd event{m_event.get(), POLLIN, 0};
        const TimePoint until = m_event ? deadline : std::min(deadline, now + kLookInterval);
        ::poll(&event, 1, pollTimeout(until, now));
    }
    return isSet();
}

} // namespace kela
