// SPDX-License-Identifier: Apache-2.0
// What the device tree costs: events, look-ups, construction, memory, and how long a pass keeps the event
// loop of the host from coming round.

#include <DeviceEnumMng/KelDeviceTree.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QApplication>
#include <QTimer>
#include <QTreeWidgetItem>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <thread>
#include <vector>

#include <malloc.h>
#include <time.h>

namespace
{

constexpr int kPassSize = 256;
constexpr int kRowsOfABigTree = 1000;

KELA_STRUCT_DEVICE_INFO camera(int id)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = id;
    record.deviceState = static_cast<int32_t>(KELA_DEV_STATE_GIGE_FREE);
    record.deviceInfo = gigeCamera("SN" + std::to_string(100000 + id));
    setField(record.deviceInfo.special.gige.userDefinedName, "camera " + std::to_string(100000 + id));
    setField(record.network.hardwareAddress, "00:11:22:33:44:55");
    return record;
}

QVariant networkCard()
{
    KELA_NETWORK card = {};
    card.id = 80001;
    setField(card.name, "eth0[192.168.10.1]");
    setField(card.hardwareAddress, "00:11:22:33:44:55");
    return QVariant::fromValue(card);
}

std::vector<QVariant> cameras(int first, int count)
{
    std::vector<QVariant> events;
    for (int id = first; id < first + count; ++id) {
        events.push_back(QVariant::fromValue(camera(id)));
    }
    return events;
}

// A tree as a host shows it, with cameras under one card.
std::unique_ptr<KelDeviceTree> shownTree(int rows)
{
    auto tree = std::make_unique<KelDeviceTree>();
    tree->resize(300, 600);
    tree->show();
    tree->onNewNetWork(networkCard());
    for (const QVariant &event : cameras(1, rows)) {
        tree->onNewDevice(event);
        tree->onUpdateDeviceInfo(event);
    }
    QApplication::processEvents();
    return tree;
}

void handle(KelDeviceTree &tree, KELA_INTERFACE_STATE kind, const QVariant &device)
{
    static const QVariant kNoInterface = QVariant::fromValue(KELA_INTERFACE_INFO{});
    tree.onEventSink(kNoInterface, device, static_cast<int>(kind), 0, KELA_INTERFACE_TYPE_GIGE);
}

// Makes the events of a pass one after another, as they arrive: made a moment before they are handled.
class FreshEvents
{
public:
    explicit FreshEvents(int rows)
        : m_rows(rows)
    {
    }
    const KELA_STRUCT_DEVICE_INFO &next()
    {
        m_id = m_id % m_rows + 1;
        m_record.deviceId = m_id;
        // As camera() writes them, without the cost of it.
        writeNumber(m_record.deviceInfo.serialNumber, 2);
        writeNumber(m_record.deviceInfo.special.gige.userDefinedName, 7);
        return m_record;
    }

private:
    template <std::size_t Size>
    void writeNumber(char (&field)[Size], std::size_t offset) const
    {
        std::to_chars(&field[offset], &field[offset + 6], 100000 + m_id);
    }

    const int m_rows;
    int m_id = 0;
    KELA_STRUCT_DEVICE_INFO m_record = camera(1);
};

// One update event, made and handled on the GUI thread; nothing changed.
void updateEvent(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const auto tree = shownTree(rows);
    FreshEvents events(rows);
    while (state.KeepRunning()) {
        handle(*tree, KELA_INTERFACE_STATE_DEVICE_UPDATED, QVariant::fromValue(events.next()));
    }
}
BENCHMARK(updateEvent)->RangeMultiplier(8)->Range(64, 4096);

// The same from the worker's callback on: records copied, queued, delivered and handled.
void updateEventFromTheWorker(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const auto tree = shownTree(rows);
    EnumEventUserData user{KELA_INTERFACE_TYPE_GIGE, tree.get()};
    FreshEvents events(rows);
    while (state.KeepRunning()) {
        std::thread worker([&] {
            for (int event = 0; event < kPassSize; ++event) {
                KELA_STRUCT_DEVICE_INFO record = events.next();
                EnumEventSink(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_UPDATED, 0, &user);
            }
        });
        worker.join();
        QApplication::processEvents();
    }
    state.SetItemsProcessed(state.iterations() * kPassSize);
    state.counters["per_event"] = benchmark::Counter(kPassSize, benchmark::Counter::kIsIterationInvariantRate |
                                                                    benchmark::Counter::kInvert);
}
BENCHMARK(updateEventFromTheWorker)->RangeMultiplier(8)->Range(64, 4096)->MeasureProcessCPUTime();

void newDeviceEvent(benchmark::State &state)
{
    const auto tree = shownTree(static_cast<int>(state.range(0)));
    const std::vector<QVariant> events = cameras(100000, kPassSize);
    while (state.KeepRunning()) {
        for (const QVariant &event : events) {
            handle(*tree, KELA_INTERFACE_STATE_DEVICE_NEW, event);
        }
        QApplication::processEvents();
        state.PauseTiming();
        for (const QVariant &event : events) {
            handle(*tree, KELA_INTERFACE_STATE_DEVICE_REMOVED, event);
        }
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kPassSize);
}
BENCHMARK(newDeviceEvent)->RangeMultiplier(8)->Range(64, 4096);

void lookUpByIdentifier(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    const auto tree = shownTree(rows);
    int id = 0;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(tree->findCameraItem(1 + id));
        id = (id + 1) % rows;
    }
}
BENCHMARK(lookUpByIdentifier)->Arg(4)->Arg(64)->Arg(4096);

void lookUpByKey(benchmark::State &state)
{
    const auto tree = shownTree(0);
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(tree.get());
    QTreeWidgetItem *gige = tree->findItem(KelDeviceTree::ItemGigERoot, -1);
    const int cards = static_cast<int>(state.range(0));
    std::vector<QString> keys;
    for (int number = 0; number < cards; ++number) {
        KELA_NETWORK card = {};
        card.id = static_cast<uint32_t>(number);
        setField(card.hardwareAddress, "key" + std::to_string(number));
        tree->onNewNetWork(QVariant::fromValue(card));
        keys.push_back(QStringLiteral("key%1").arg(number));
    }
    QApplication::processEvents();
    benchmark::DoNotOptimize(gige);
    std::size_t next = 0;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(inside.findNetWorkItem(keys[next]));
        next = (next + 1) % keys.size();
    }
}
BENCHMARK(lookUpByKey)->Arg(4)->Arg(64)->Arg(4096);

void construction(benchmark::State &state)
{
    while (state.KeepRunning()) {
        auto tree = std::make_unique<KelDeviceTree>();
        benchmark::DoNotOptimize(tree.get());
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(construction)->Unit(benchmark::kMillisecond);

void memoryPerRow(benchmark::State &state)
{
    const int rows = static_cast<int>(state.range(0));
    while (state.KeepRunning()) {
        const auto tree = shownTree(1);
        const auto before = mallinfo2();
        for (const QVariant &event : cameras(2, rows)) {
            tree->onNewDevice(event);
            tree->onUpdateDeviceInfo(event);
        }
        QApplication::processEvents();
        const auto after = mallinfo2();
        const std::size_t used = after.uordblks + after.hblkhd - before.uordblks - before.hblkhd;
        state.counters["bytes"] = static_cast<double>(used) / rows;
    }
}
BENCHMARK(memoryPerRow)->Arg(kRowsOfABigTree)->Iterations(1)->Unit(benchmark::kMillisecond);

double nowMilliseconds(clockid_t clock)
{
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Tells how long the event loop once did not come round, by the wall's clock and by what this thread itself
// used of it. The loop never rests meanwhile, so on a machine with nothing else to do both are the same.
class LoopWatch
{
public:
    LoopWatch()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_wall.comeRound();
            m_cpu.comeRound();
        });
        m_timer.start(0);
    }
    double longestWall() const { return m_wall.longest; }
    double longestCpu() const { return m_cpu.longest; }

private:
    struct Gap {
        clockid_t clock;
        double last = nowMilliseconds(clock);
        double longest = 0;
        void comeRound()
        {
            const double now = nowMilliseconds(clock);
            longest = std::max(longest, now - last);
            last = now;
        }
    };

    QTimer m_timer;
    Gap m_wall{CLOCK_MONOTONIC};
    Gap m_cpu{CLOCK_THREAD_CPUTIME_ID};
};

void plugPass()
{
    scriptedAccess().reset();
    scriptedAccess().recordCalls(false);
    for (int number = 0; number < kPassSize; ++number) {
        KELA_DEVICE_INFO_EX info = gigeCamera("PASS" + std::to_string(number), 2);
        info.special.gige.macLow = static_cast<uint32_t>(number);
        scriptedAccess().plug(info);
    }
}

void runPass(KelDeviceTree &tree)
{
    bool finished = false;
    const auto connection =
        QObject::connect(&tree, &KelDeviceTree::sigFinishEnumOnce, [&finished] { finished = true; });
    tree.updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);
    while (!finished) {
        QApplication::processEvents();
    }
    QObject::disconnect(connection);
    // What the pass left to lay out and to paint is part of it.
    for (int round = 0; round < 10; ++round) {
        QApplication::processEvents();
    }
}

void gapOfTheEventLoop(benchmark::State &state, bool isNew)
{
    plugPass();
    double wall = 0;
    double cpu = 0;
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto tree = shownTree(kRowsOfABigTree - (isNew ? 0 : kPassSize));
        if (!isNew) {
            runPass(*tree);
            runPass(*tree);
        }
        state.ResumeTiming();
        const LoopWatch watch;
        runPass(*tree);
        wall = std::max(wall, watch.longestWall());
        cpu = std::max(cpu, watch.longestCpu());
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.counters["longest_ms"] = wall;
    state.counters["longest_cpu_ms"] = cpu;
    scriptedAccess().reset();
}
BENCHMARK_CAPTURE(gapOfTheEventLoop, known_cameras, false)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK_CAPTURE(gapOfTheEventLoop, new_cameras, true)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The log is the host's; what its writing costs is not measured here.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
