// SPDX-License-Identifier: Apache-2.0
// A first pass over the ports of a simulated serial library, whose lines run at 9600 baud: what it takes, and
// what of that is not the lines' own time.
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// A copy of the simulated library: a loaded file keeps what it found.
class FreshLibrary
{
public:
    explicit FreshLibrary(const char *ports)
    {
        static int number = 0;
        m_file = std::filesystem::temp_directory_path() /
                 ("clserbench" + std::to_string(::getpid()) + '-' + std::to_string(++number) + ".so");
        std::filesystem::copy_file(SIMULATED_SERIAL_LIBRARY, m_file);
        std::ofstream(m_file.string() + ".ports") << ports;
        ::setenv("KELS_CLSERIAL", m_file.c_str(),
                 1); // NOLINT(concurrency-mt-unsafe): the only thread that asks
    }
    ~FreshLibrary()
    {
        std::filesystem::remove(m_file);
        std::filesystem::remove(m_file.string() + ".ports");
    }
    FreshLibrary(const FreshLibrary &) = delete;
    FreshLibrary &operator=(const FreshLibrary &) = delete;

    /// What the bytes that went over its lines took, ten bits each.
    Seconds lineTime() const
    {
        constexpr double kBytesPerSecond = 960;
        void *const library = ::dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL);
        void *const symbol = ::dlsym(library, "simBytesOnLines");
        std::uint64_t (*bytesOnLines)() = nullptr;
        std::memcpy(&bytesOnLines, &symbol, sizeof symbol);
        return Seconds(static_cast<double>(bytesOnLines()) / kBytesPerSecond);
    }

private:
    std::filesystem::path m_file;
};

void firstPass(benchmark::State &state, const char *ports, std::uint32_t cameras)
{
    double beyond = 0;
    for (auto step : state) {
        const FreshLibrary library(ports);
        KelAIndustryControl access;
        KELA_DEVICE_INFO_LIST list = {};
        const auto begin = Clock::now();
        access.EnumDevices(KELA_INTERFACE_TYPE_CAMERALINK, &list, false);
        const Seconds elapsed = Clock::now() - begin;
        if (list.count != cameras)
            state.SkipWithError("not all cameras were found");
        state.SetIterationTime(elapsed.count());
        beyond += (elapsed - library.lineTime()).count();
    }
    state.counters["msBeyondTheLines"] = benchmark::Counter(beyond * 1000, benchmark::Counter::kAvgIterations);
}
BENCHMARK_CAPTURE(firstPass, twoCameras, "A camera model=EX-1 serial=1\nB camera model=EX-2 serial=2\n", 2)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_CAPTURE(firstPass, twoCamerasAndASilentPort,
                  "A camera model=EX-1 serial=1\nB camera model=EX-2 serial=2\nC silent\n", 2)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

} // namespace

BENCHMARK_MAIN();
