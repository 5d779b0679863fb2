// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/ProbeProcess.h>

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/core/UniqueFd.h>
#include <KelAIndustryControl/gentl/ProbeProtocol.h>
#include <KelAIndustryControl/gentl/ProducerFile.h>

#include <csignal>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>
#include <thread>

#ifndef KELA_PROBE_FOLDER
#define KELA_PROBE_FOLDER "../libexec"
#endif

namespace kela::gentl
{
namespace
{

constexpr char kProbeName[] = "/kel-cti-probe";

/// What the probe told so far.
struct Report {
    std::string step = "its start";
    std::string fault;
    bool lied = false;
    bool done = false;

    void takeLine(std::string_view line)
    {
        if (line.empty())
            return;
        const std::string text(line.substr(1));
        switch (line.front()) {
        case kProbeStep:
            step = text;
            break;
        case kProbeFault:
            fault = text.empty() ? "it is no producer" : text;
            break;
        case kProbeLied:
            lied = true;
            break;
        case kProbeDone:
            done = true;
            break;
        default:
            break;
        }
    }
};

enum class End { PipeClosed, TimeOver, Cancelled };

struct SpawnActions {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;

    explicit SpawnActions(int pipeEnd)
    {
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions, pipeEnd, kProbePipe);
        ::posix_spawnattr_init(&attributes);
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        // A group of its own, so that what the producer starts ends with the probe.
        ::posix_spawnattr_setpgroup(&attributes, 0);
        ::posix_spawnattr_setflags(&attributes,
                                   POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnActions()
    {
        ::posix_spawn_file_actions_destroy(&actions);
        ::posix_spawnattr_destroy(&attributes);
    }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
};

std::string folderOf(const std::string &path)
{
    return path.substr(0, path.rfind('/'));
}

void takeLines(std::string &text, Report &report)
{
    constexpr std::size_t kLongestLine = 4096;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        report.takeLine(std::string_view(text).substr(0, end));
        text.erase(0, end + 1);
    }
    if (text.size() > kLongestLine)
        text.clear();
}

End listen(int pipe, const CancelSignal &cancel, Report &report)
{
    const TimePoint deadline = Clock::now() + kTrialLimit;
    std::string text;
    for (TimePoint now = Clock::now(); now < deadline; now = Clock::now()) {
        if (cancel.isSet())
            return End::Cancelled;
        pollfd events[] = {{pipe, POLLIN, 0}, {cancel.fd(), POLLIN, 0}};
        if (::poll(events, 2, pollTimeout(deadline, now)) <= 0 || !(events[0].revents & (POLLIN | POLLHUP)))
            continue;
        char bytes[1024];
        const ssize_t length = ::read(pipe, bytes, sizeof bytes);
        if (length < 0 && errno == EINTR)
            continue;
        if (length <= 0)
            return End::PipeClosed;
        text.append(bytes, static_cast<std::size_t>(length));
        takeLines(text, report);
        if (report.done) // what the producer started may keep the pipe open
            return End::PipeClosed;
    }
    return End::TimeOver;
}

/// How the probe ended.
struct Exit {
    bool isKilled = false; // by us: it did not end by itself
    bool isGood = true;    // as far as is known
    std::string text;      // what it ended with, empty when that is not known
};

Exit exitOf(int status)
{
    if (WIFSIGNALED(status))
        return {false, false, " with signal " + std::to_string(WTERMSIG(status))};
    return {false, WEXITSTATUS(status) == 0, " with status " + std::to_string(WEXITSTATUS(status))};
}

/// Ends what the probe left behind and takes the probe's status. Its number is its own until then.
int collect(pid_t probe)
{
    ::kill(-probe, SIGKILL);
    int status = 0;
    while (::waitpid(probe, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Waits for the end of the probe for a while, then ends it.
Exit endProbe(pid_t probe, Milliseconds patience)
{
    constexpr Milliseconds kKillTime{500}; // one that the system holds fast is left to it
    constexpr Milliseconds kLookInterval{5};
    const TimePoint killAt = Clock::now() + patience;
    Exit result;
    for (; Clock::now() < killAt + kKillTime; std::this_thread::sleep_for(kLookInterval)) {
        siginfo_t ended = {};
        if (::waitid(P_PID, static_cast<id_t>(probe), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 &&
            errno != EINTR)
            break; // the host lets the system collect its children, and nothing is known
        if (ended.si_pid == probe) {
            const int status = collect(probe);
            return result.isKilled ? result : exitOf(status);
        }
        if (!result.isKilled && Clock::now() >= killAt) {
            ::kill(-probe, SIGKILL);
            result.isKilled = true;
        }
    }
    return result;
}

Verdict judge(const Report &report, End end, const Exit &exit)
{
    if (!report.fault.empty())
        return {KELA_ERROR_NOT_A_PRODUCER, report.fault};
    if (end == End::TimeOver || (report.done && exit.isKilled))
        return {KELA_ERROR_PRODUCER_REFUSED, "in its trial it did not come back from " + report.step};
    if (!report.done || !exit.isGood)
        return {KELA_ERROR_PRODUCER_REFUSED, "its trial ended in " + report.step + exit.text};
    if (report.lied)
        return {KELA_ERROR_PRODUCER_REFUSED, "it hands out sizes that cannot be"};
    return {};
}

/// How long a probe may take to end, once its pipe is no longer listened to.
Milliseconds patienceFor(const Report &report, End end)
{
    if (end != End::PipeClosed)
        return Milliseconds{0};
    return report.done || !report.fault.empty() ? Milliseconds{2000} : Milliseconds{250};
}

} // namespace

std::string probePath()
{
    Dl_info info = {};
    if (::dladdr(reinterpret_cast<const void *>(&kProbeName), &info) == 0 || !info.dli_fname)
        return {};
    const auto own = ProducerFile::of(info.dli_fname);
    if (!own)
        return {};
    const std::string folder = folderOf(own->path);
    for (const char *place : {"/" KELA_PROBE_FOLDER, "/../libexec", ""}) {
        std::string path = folder + place + kProbeName;
        if (::access(path.c_str(), X_OK) == 0)
            return path;
    }
    return {};
}

std::optional<Verdict> runProbe(const std::string &file, const CancelSignal &cancel)
{
    const std::string program = probePath();
    if (program.empty())
        return Verdict{KELA_ERROR_RESOURCE, "kel-cti-probe, which tries it first, is missing"};
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return Verdict{KELA_ERROR_RESOURCE, std::generic_category().message(errno)};
    const UniqueFd readEnd(ends[0]);
    UniqueFd writeEnd(ends[1]);
    // In a host that closed its standard files, the pipe would stand where the probe's are put.
    writeEnd = UniqueFd(::fcntl(writeEnd.get(), F_DUPFD_CLOEXEC, kProbePipe + 1));
    if (!writeEnd)
        return Verdict{KELA_ERROR_RESOURCE, std::generic_category().message(errno)};

    std::string programName = program;
    std::string fileName = file;
    char *const arguments[] = {programName.data(), fileName.data(), nullptr};
    const SpawnActions spawn(writeEnd.get());
    pid_t probe = -1;
    const int error =
        ::posix_spawn(&probe, program.c_str(), &spawn.actions, &spawn.attributes, arguments, ::environ);
    if (error != 0)
        return Verdict{KELA_ERROR_RESOURCE, std::generic_category().message(error)};
    writeEnd = UniqueFd();

    Report report;
    const End end = listen(readEnd.get(), cancel, report);
    const Exit exit = endProbe(probe, patienceFor(report, end));
    if (end == End::Cancelled)
        return std::nullopt;
    return judge(report, end, exit);
}

} // namespace kela::gentl
