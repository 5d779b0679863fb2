// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/TrialLoad.h>

#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/core/UniqueFd.h>
#include <KelAIndustryControl/gentl/ProbeProcess.h>
#include <KelAIndustryControl/gentl/ProducerLibrary.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace kela::gentl
{
namespace
{

/// A trial under way or over. Guarded by the table's mutex, but for ended.
struct Trial {
    UniqueFd ended{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)}; // readable when it is over, one way or the other
    std::optional<Verdict> verdict;
};

struct Trials {
    std::mutex mutex; // guards the rest and the verdicts
    std::map<ProducerFile, std::shared_ptr<Trial>> trials;
    std::map<ProducerFile, Verdict> impossible; // why the last trial could not be made
};

// Never destroyed: workers may outlive the statics of the process.
Trials &trials()
{
    static auto *const table = new Trials;
    return *table;
}

/// True when the trial is over, false when the caller was cancelled.
bool waitForEnd(const Trial &trial, const CancelSignal &cancel)
{
    constexpr int kLookIntervalMs = 100;
    while (!cancel.isSet()) {
        pollfd events[] = {{trial.ended.get(), POLLIN, 0}, {cancel.fd(), POLLIN, 0}};
        if (::poll(events, 2, kLookIntervalMs) > 0 && (events[0].revents & POLLIN))
            return true;
    }
    return false;
}

// Never fails to come to an end: others wait for it.
std::optional<Verdict> makeTrial(const ProducerFile &file, const CancelSignal &cancel)
{
    try {
        const std::string fault = libraryFault(file.path);
        if (!fault.empty())
            return Verdict{KELA_ERROR_NOT_A_PRODUCER, fault};
        return runProbe(file.path, cancel);
    } catch (const std::exception &) {
        return Verdict{KELA_ERROR_RESOURCE, "it cannot be tried: memory or threads have run out"};
    }
}

/// Keeps how a trial ended. True when it is worth a line.
bool keepEnd(const ProducerFile &file, Trial &trial, const std::optional<Verdict> &verdict)
{
    Trials &table = trials();
    const std::lock_guard lock(table.mutex);
    trial.verdict = verdict;
    // Without a verdict the next one who asks makes the trial again; so it is when the probe could not
    // even be started.
    const bool isMade = verdict && verdict->code != KELA_ERROR_RESOURCE;
    if (!isMade)
        table.trials.erase(file);
    if (isMade) {
        table.impossible.erase(file);
    } else if (verdict) {
        return std::exchange(table.impossible[file], *verdict).text != verdict->text;
    }
    return isMade && verdict->code != KELA_OK;
}

void conclude(const ProducerFile &file, Trial &trial, const std::optional<Verdict> &verdict)
{
    const bool isTold = keepEnd(file, trial, verdict);
    const std::uint64_t one = 1;
    if (::write(trial.ended.get(), &one, sizeof one) < 0)
        logLine(KELA_LOG_ERROR, "the end of a producer's trial cannot be told");
    if (isTold) {
        logLine(KELA_LOG_WARNING,
                "GenTL producer " + printable(file.path) + " is refused: " + printable(verdict->text));
    }
}

} // namespace

unsigned int tryProducer(const ProducerFile &file, const CancelSignal &cancel)
{
    while (!cancel.isSet()) {
        std::shared_ptr<Trial> trial;
        bool isMine = false;
        {
            Trials &table = trials();
            const std::lock_guard lock(table.mutex);
            std::shared_ptr<Trial> &entry = table.trials[file];
            isMine = !entry;
            if (isMine)
                entry = std::make_shared<Trial>();
            trial = entry;
            if (trial->verdict)
                return trial->verdict->code;
        }
        if (isMine) {
            conclude(file, *trial, makeTrial(file, cancel));
        } else if (!waitForEnd(*trial, cancel)) {
            break;
        }
        const std::lock_guard lock(trials().mutex);
        if (trial->verdict)
            return trial->verdict->code;
    }
    return KELA_ERROR_CANCELLED;
}

std::optional<Verdict> knownVerdict(const ProducerFile &file)
{
    Trials &table = trials();
    const std::lock_guard lock(table.mutex);
    const auto made = table.trials.find(file);
    if (made != table.trials.end() && made->second->verdict)
        return made->second->verdict;
    const auto impossible = table.impossible.find(file);
    return impossible == table.impossible.end() ? std::nullopt : std::optional(impossible->second);
}

} // namespace kela::gentl
