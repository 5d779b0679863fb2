// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/ProbeRunner.h>

#include <algorithm>

namespace kela::gige
{
namespace
{

constexpr RetryPlan kProbePlan{Milliseconds{250}, 2};

} // namespace

void ProbeRunner::start(const CameraKey &key, const Sighting &sighting, std::optional<std::uint32_t> capability,
                        TimePoint now)
{
    const auto [entry, isNew] = m_runs.try_emplace(key);
    Run &run = entry->second;
    if (!isNew && run.address == sighting.answer.currentIp)
        return;
    run.address = sighting.answer.currentIp;
    run.path = {sighting.cardIndex, sighting.hostAddress};
    run.probe = AccessProbe(capability);
    m_byAddress.emplace(run.address, &entry->first);
    next(run, now);
}

void ProbeRunner::next(Run &run, TimePoint now)
{
    run.transaction.reset();
    if (const auto address = run.probe.nextRegister())
        run.transaction.emplace(readRegisterCommand(0, *address), m_ids, kProbePlan, now);
}

void ProbeRunner::drive(TimePoint now)
{
    for (auto &[key, run] : m_runs) {
        if (!run.transaction)
            continue;
        if (const Datagram *command = run.transaction->takeDue(now))
            m_sockets.send(run.address, run.path, {command->data(), command->size()});
        if (run.transaction->isDone())
            finishTransaction(run, now);
    }
}

void ProbeRunner::finishTransaction(Run &run, TimePoint now)
{
    switch (run.transaction->state()) {
    case GvcpTransaction::State::Answered:
        run.probe.onValue(parseReadRegister(run.transaction->payload()).value_or(0));
        break;
    case GvcpTransaction::State::Refused:
        run.probe.onRefused(run.transaction->status());
        break;
    default:
        run.probe.onSilence();
        break;
    }
    next(run, now);
}

const CameraKey *ProbeRunner::offer(std::uint32_t sender, const Acknowledge &acknowledge, TimePoint now)
{
    const auto [first, last] = m_byAddress.equal_range(sender);
    for (auto entry = first; entry != last; ++entry) {
        Run &run = m_runs.at(*entry->second);
        if (run.address != sender || !run.transaction || !run.transaction->offer(acknowledge, now))
            continue;
        if (run.transaction->isDone())
            finishTransaction(run, now);
        return entry->second;
    }
    return nullptr;
}

bool ProbeRunner::isBusy() const
{
    return std::any_of(m_runs.begin(), m_runs.end(),
                       [](const auto &entry) { return entry.second.transaction.has_value(); });
}

TimePoint ProbeRunner::nextEvent() const
{
    TimePoint earliest = TimePoint::max();
    for (const auto &[key, run] : m_runs) {
        if (run.transaction)
            earliest = std::min(earliest, run.transaction->nextEvent());
    }
    return earliest;
}

void ProbeRunner::giveUp()
{
    for (auto &[key, run] : m_runs) {
        if (run.transaction)
            run.probe.onSilence();
        run.transaction.reset();
    }
}

const AccessProbe *ProbeRunner::find(const CameraKey &key) const
{
    const auto entry = m_runs.find(key);
    return entry == m_runs.end() ? nullptr : &entry->second.probe;
}

} // namespace kela::gige
