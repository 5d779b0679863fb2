// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>
#include <KelAIndustryControl/gige/GvcpMessages.h>

#include <cstdint>

namespace kela::gige
{

/// Request ids of one socket: 1 to 0xFFFF, then 1 again; 0 is not allowed.
class RequestIds
{
public:
    std::uint16_t next()
    {
        m_last = m_last == 0xFFFF ? std::uint16_t{1} : static_cast<std::uint16_t>(m_last + 1);
        return m_last;
    }

private:
    std::uint16_t m_last = 0;
};

/// When a command is sent again and when it is given up.
struct RetryPlan {
    Milliseconds interval{250}; ///< between two sends
    int attempts = 2;           ///< sends in all
};

/// One command on its way to one device, from the first send to the answer or to giving up. Knows no
/// socket: its owner sends what is due and offers what arrives.
///
/// A retry keeps its request id, so that the device can repeat its answer instead of executing twice.
/// Datagrams that are not the answer are passed over and the wait goes on.
class GvcpTransaction
{
public:
    enum class State {
        Waiting,
        Answered, ///< payload() is the answer's
        Refused,  ///< status() says why
        GarbledAnswer,
        NoAnswer,
    };

    /// @param ids  gives the id now, and a new one after the device was busy; borrowed for life
    GvcpTransaction(Datagram command, RequestIds &ids, RetryPlan plan, TimePoint now);

    /// The command if it is to be sent now, else null. Each call that returns it counts as an attempt;
    /// giving up happens here too.
    const Datagram *takeDue(TimePoint now);

    /// @return true when the acknowledge was meant for this command
    bool offer(const Acknowledge &acknowledge, TimePoint now);

    /// The next moment at which takeDue() has something to do.
    TimePoint nextEvent() const { return m_nextEvent; }

    State state() const { return m_state; }
    bool isDone() const { return m_state != State::Waiting; }
    std::uint16_t status() const { return m_status; }
    std::uint16_t requestId() const { return requestIdOf(m_command); }
    ByteView payload() const { return {m_payload.data(), m_payload.size()}; }

private:
    void onPending(const Acknowledge &acknowledge, TimePoint now);
    void onBusy(TimePoint now);
    bool isPayloadUsable(ByteView payload) const;

    Datagram m_command;
    RequestIds *m_ids;
    RetryPlan m_plan;
    State m_state = State::Waiting;
    TimePoint m_started;
    TimePoint m_nextEvent;
    int m_attemptsLeft;
    int m_busyLeft;
    std::uint16_t m_status = 0;
    Datagram m_payload;
};

} // namespace kela::gige
