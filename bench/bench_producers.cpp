// SPDX-License-Identifier: Apache-2.0
// A GenTL producer loaded, looked through and let go, again and again: what it takes and what stays behind.

#include "../tests/KelAIndustryControl/gentl/SampleFolder.h"

#include <benchmark/benchmark.h>

#include <iterator>

#include <malloc.h>

namespace
{

constexpr int kWarmUp = 100;
constexpr int kCycles = 1000;

double entriesOf(const char *folder)
{
    const std::filesystem::directory_iterator first(folder);
    return static_cast<double>(std::distance(begin(first), end(first)));
}

struct Standing {
    double files = entriesOf("/proc/self/fd");
    double threads = entriesOf("/proc/self/task");
    double heap = static_cast<double>(mallinfo2().uordblks);
};

void useOnce(const std::string &producer)
{
    KelAIndustryControl access;
    for (const KELA_GENTL_IF_INFO &interface : interfacesOf(access, producer).records)
        benchmark::DoNotOptimize(devicesOf(access, interface).records.data());
    access.UnloadGenTLLibrary(producer.c_str());
    if (!areThreadsGone())
        std::abort();
}

void loadUseAndUnload(benchmark::State &state)
{
    const SampleFolder folder;
    const std::string producer = folder.add("KelFGSampleGEV.cti", "a.cti");
    describe(producer, "interface if-a|Interface A|GEV\ndevice cam-1|Maker|Model 1|S1|left|1.5|1\n");
    for (int i = 0; i < kWarmUp; ++i)
        useOnce(producer);

    const Standing before;
    for (auto step : state)
        useOnce(producer);
    const Standing after;
    state.counters["moreFiles"] = after.files - before.files;
    state.counters["moreThreads"] = after.threads - before.threads;
    state.counters["moreHeapBytes"] = after.heap - before.heap;
}
BENCHMARK(loadUseAndUnload)->Iterations(kCycles)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
