// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpTransaction.h>

#include <algorithm>
#include <utility>

namespace kela::gige
{
namespace
{

constexpr int kBusyRepeats = 4;
constexpr Milliseconds kBusyPause{30};

// A device announces how long it still works; one round trip is added. The sum has its limit, or a device
// that keeps announcing would hold its client for ever.
constexpr Milliseconds kPendingMargin{100};
constexpr Milliseconds kLongestPending{10000};

} // namespace

GvcpTransaction::GvcpTransaction(Datagram command, RequestIds &ids, RetryPlan plan, TimePoint now)
    : m_command(std::move(command))
    , m_ids(&ids)
    , m_plan(plan)
    , m_started(now)
    , m_nextEvent(now)
    , m_attemptsLeft(plan.attempts)
    , m_busyLeft(kBusyRepeats)
{
    setRequestId(m_command, ids.next());
}

const Datagram *GvcpTransaction::takeDue(TimePoint now)
{
    if (isDone() || now < m_nextEvent)
        return nullptr;
    if (m_attemptsLeft == 0) {
        m_state = State::NoAnswer;
        return nullptr;
    }
    --m_attemptsLeft;
    m_nextEvent = now + m_plan.interval;
    return &m_command;
}

bool GvcpTransaction::offer(const Acknowledge &acknowledge, TimePoint now)
{
    if (isDone() || acknowledge.requestId != requestId())
        return false;
    if (acknowledge.code == kPendingAcknowledge) {
        onPending(acknowledge, now);
        return true;
    }
    if (acknowledge.code != acknowledgeOf(commandOf(m_command)))
        return false;
    m_status = acknowledge.status;
    if (acknowledge.status == kStatusBusy) {
        onBusy(now);
    } else if (acknowledge.isError()) {
        m_state = State::Refused;
    } else if (!isPayloadUsable(acknowledge.payload)) {
        m_state = State::GarbledAnswer;
    } else {
        m_payload.assign(acknowledge.payload.data, acknowledge.payload.data + acknowledge.payload.size);
        m_state = State::Answered;
    }
    return true;
}

void GvcpTransaction::onPending(const Acknowledge &acknowledge, TimePoint now)
{
    const auto announced = parsePending(acknowledge.payload);
    if (!announced || acknowledge.isError())
        return;
    const TimePoint limit = m_started + kLongestPending;
    m_nextEvent = std::min(limit, now + Milliseconds(*announced) + kPendingMargin);
    // The wait that the device asked for is no attempt; but a device that asked for all there is gets no
    // further one.
    if (m_nextEvent == limit)
        m_attemptsLeft = 0;
}

void GvcpTransaction::onBusy(TimePoint now)
{
    if (m_busyLeft == 0) {
        m_state = State::Refused;
        return;
    }
    --m_busyLeft;
    m_attemptsLeft = std::max(m_attemptsLeft, 1);
    setRequestId(m_command, m_ids->next());
    m_nextEvent = now + kBusyPause;
}

bool GvcpTransaction::isPayloadUsable(ByteView payload) const
{
    switch (commandOf(m_command)) {
    case kReadRegisterCommand:
        return parseReadRegister(payload).has_value();
    case kReadMemoryCommand: {
        const auto asked = readLayout<ReadMemoryPayload>(
            ByteView{m_command.data(), m_command.size()}.from(sizeof(CommandHeader)));
        return asked && parseReadMemory(payload, asked->address.value(), asked->byteCount.value()).has_value();
    }
    case kDiscoveryCommand:
        return parseDiscovery(payload).has_value();
    default:
        return true; // a write says by its status alone whether it was done
    }
}

} // namespace kela::gige
