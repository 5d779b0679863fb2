// SPDX-License-Identifier: Apache-2.0
// What the engine itself costs per device and pass. The devices come from a script that does nothing but
// copy records, the log is off, and nobody works on the events.
//
// "passes" is the whole pass, "scriptAlone" what the script's part of it costs; the engine's own cost is the
// difference. Per device: divide by the argument, or read the counter.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <string>

namespace
{

// A card of this host, so that devices find theirs; 0 when there is none.
uint32_t s_cardAddress = 0;

void count(KELA_INTERFACE_INFO *interface, KELA_STRUCT_DEVICE_INFO *device, KELA_INTERFACE_STATE state,
           int error, void *user)
{
    static_cast<void>(state);
    static_cast<void>(error);
    if (interface != nullptr) {
        s_cardAddress = interface->special.network.addresses[0].address;
    }
    *static_cast<int64_t *>(user) += device != nullptr ? 1 : 0;
}

KELA_DEVICE_INFO_EX deviceOf(KELA_INTERFACE_TYPE type, int64_t index)
{
    const std::string serial = "bench " + std::to_string(index);
    if (type == KELA_INTERFACE_TYPE_USB) {
        return usbCamera(serial);
    }
    KELA_DEVICE_INFO_EX device = gigeCamera(serial);
    if (s_cardAddress != 0) {
        device.special.gige.hostIp = s_cardAddress;
        device.special.gige.currentIp = s_cardAddress ^ 1U;
    }
    return device;
}

void plugDevices(KELA_INTERFACE_TYPE type, int64_t devices)
{
    scriptedAccess().reset();
    scriptedAccess().recordCalls(false);
    for (int64_t index = 0; index < devices; ++index) {
        scriptedAccess().plug(deviceOf(type, index));
    }
}

void perDevice(benchmark::State &state)
{
    state.counters["perDevice"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void passes(benchmark::State &state, KELA_INTERFACE_TYPE type)
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.info=false"));
    int64_t events = 0;
    CDevicesEnum enumerator;
    enumerator.RegisterEventSink(count, &events);
    enumerator.Init(type, false);
    enumerator.EnumNetWorks();
    plugDevices(type, state.range(0));
    enumerator.EnumDevices();

    events = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        enumerator.EnumDevices();
    }
    if (events != state.range(0) * static_cast<int64_t>(state.iterations())) {
        state.SkipWithError("devices are missing");
    }
    perDevice(state);
}

void scriptAlone(benchmark::State &state, KELA_INTERFACE_TYPE type)
{
    plugDevices(type, state.range(0));
    KelAIndustryControl access;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        KELA_DEVICE_INFO_LIST list = {};
        access.EnumDevices(type, &list, false);
        for (uint32_t index = 0; index < list.count; ++index) {
            bool isAccessible = false;
            access.IsDeviceAccessible(list.devices[index], KELA_ACCESS_CONTROL, &isAccessible);
            benchmark::DoNotOptimize(isAccessible);
        }
    }
    perDevice(state);
}

} // namespace

BENCHMARK_CAPTURE(passes, gige, KELA_INTERFACE_TYPE_GIGE)->Arg(16)->Arg(64)->Arg(256);
BENCHMARK_CAPTURE(passes, usb, KELA_INTERFACE_TYPE_USB)->Arg(16)->Arg(64)->Arg(256);
BENCHMARK_CAPTURE(scriptAlone, gige, KELA_INTERFACE_TYPE_GIGE)->Arg(16)->Arg(64)->Arg(256);
BENCHMARK_CAPTURE(scriptAlone, usb, KELA_INTERFACE_TYPE_USB)->Arg(16)->Arg(64)->Arg(256);

BENCHMARK_MAIN();
