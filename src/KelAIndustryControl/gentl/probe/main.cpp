// SPDX-License-Identifier: Apache-2.0
// kel-cti-probe FILE: loads a GenTL producer, calls everything that browsing calls and unloads it, so that
// a producer that crashes, hangs or ends its process does so here. It tells its steps through descriptor 3
// and is ended by who started it.
#include <KelAIndustryControl/gentl/ProbeProtocol.h>
#include <KelAIndustryControl/gentl/ProducerSession.h>

#include <KelAIndustryControl/core/Clock.h>

#include <csignal>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <thread>

using namespace kela::gentl;
using kela::Clock;
using kela::Milliseconds;

namespace
{

// Enough to meet every call; a producer with many interfaces that each take their time is not at fault.
constexpr Milliseconds kListBudget{5000};
// A thread that a producer left behind meets the unloaded code within this time.
constexpr Milliseconds kAfterUnload{50};

void tell(char kind, const std::string &text)
{
    const std::string line = kind + text + '\n';
    if (::write(kProbePipe, line.data(), line.size()) < 0)
        ::_exit(1);
}

/// Memory that ends before a page that must not be touched: a text written beyond its room crashes here.
char *guardedMemory()
{
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t size = ProducerSession::kMemorySize;
    void *const memory =
        ::mmap(nullptr, size + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    auto *const bytes = static_cast<char *>(memory);
    return ::mprotect(bytes + size, page, PROT_NONE) == 0 ? bytes : nullptr;
}

void keepToItself()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_DUMPABLE, 0);
    ::fcntl(kProbePipe, F_SETFD, FD_CLOEXEC);
    ::close_range(kProbePipe + 1, ~0U, 0);
}

void listEverything(ProducerSession &session)
{
    const auto deadline = Clock::now() + kListBudget;
    std::vector<InterfaceFacts> interfaces;
    session.listInterfaces(interfaces);
    for (const InterfaceFacts &interface : interfaces) {
        if (Clock::now() >= deadline)
            return;
        std::vector<DeviceFacts> devices;
        session.listDevices(interface.identifier, devices);
    }
}

} // namespace

#if defined(__SANITIZE_ADDRESS__)
// A producer that leaks is no reason to refuse it.
extern "C" __attribute__((visibility("default"))) int __lsan_is_turned_off();
extern "C" int __lsan_is_turned_off() // NOLINT(bugprone-reserved-identifier)
{
    return 1;
}
#endif

int main(int argc, char **argv)
{
    if (argc != 2 || ::fcntl(kProbePipe, F_GETFD) < 0) {
        std::fputs("kel-cti-probe is started by the device access, not by hand\n", stderr);
        return 2;
    }
    keepToItself();
    ProducerSession::Options options;
    options.memory = guardedMemory();
    options.asksSizes = true;
    std::string last;
    options.onStep = [&last](const char *step) {
        if (last != step)
            tell(kProbeStep, step);
        last = step;
    };
    ProducerSession session(argv[1], options);
    std::string error;
    if (!session.load(error)) {
        tell(kProbeFault, error);
        return 0;
    }
    // Errors are for the host to hear when it calls for itself.
    if (session.open())
        listEverything(session);
    session.close();
    std::this_thread::sleep_for(kAfterUnload);
    if (session.sizeLied())
        tell(kProbeLied, {});
    // Many libraries stay until the process ends, and so does what they do when they go.
    tell(kProbeStep, "the end of the process");
    tell(kProbeDone, {});
    return 0;
}
