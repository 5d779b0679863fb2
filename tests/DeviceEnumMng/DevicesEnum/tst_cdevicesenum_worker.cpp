// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"
#include "LogCapture.h"

#include <QThreadPool>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace
{

// Long enough for a worker that wrongly begins a pass to be seen doing so: it looks every 10 ms.
constexpr int kQuietMilliseconds = 100;

constexpr std::chrono::milliseconds kQuiet(kQuietMilliseconds);

// An enumerator that acknowledges its passes by itself.
class BusyEnumerator
{
public:
    explicit BusyEnumerator(KELA_INTERFACE_TYPE type)
        : enumerator(std::make_unique<CDevicesEnum>())
    {
        recorder.listenTo(*enumerator, [owned = enumerator.get()](const RecordedEvent &event) {
            if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
                owned->FinishOneEnum();
            }
        });
        enumerator->Init(type, false);
    }

    EventRecorder recorder;
    std::unique_ptr<CDevicesEnum> enumerator;
};

// The pool of the application as it is on a machine with one core.
class OneCoreMachine
{
public:
    OneCoreMachine()
        : m_before(QThreadPool::globalInstance()->maxThreadCount())
    {
        QThreadPool::globalInstance()->setMaxThreadCount(1);
    }

    ~OneCoreMachine() { QThreadPool::globalInstance()->setMaxThreadCount(m_before); }

    OneCoreMachine(const OneCoreMachine &) = delete;
    OneCoreMachine &operator=(const OneCoreMachine &) = delete;

private:
    int m_before;
};

} // namespace

class tst_CDevicesEnum_worker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nothingRunsBeforeTheFirstRequest();
    void passBeginsReportsAndEnds();
    void endEventCarriesTheResultOfThePass();
    void eventsOfAPassComeFromTheWorker();
    void twoRequestsGiveTwoPassesEachAfterTheAcknowledgement();
    void requestDuringAPassGivesASecondPass();
    void requestFromTheCallbackGivesASecondPass();
    void acknowledgementWithoutRequestStartsNothing();
    void latestReportFlagDecidesForWaitingPasses();
    void reportFlagIsReadAfterTheEnumeration();
    void sleepTimeIsNotConsulted();
    void eventsGoToTheLatestSink();
    void passWithoutSinkEndsAndLeavesItsRecords();
    void secondInitKeepsTheWorker();
    void logFramesAPass();
    void fiveEnumeratorsRunAtOnceOnAOneCoreMachine();
    void enumeratorWithoutWorkerIsDestroyedAtOnce();
    void destructionWaitsForThePassUnderWay();
    void destructionCancelsAHangingEnumeration();
    void destructionCancelsAHangingQuestionToARemoteDevice();
    void noCallbackAfterDestruction();
    void enumeratorsToldToStopEndTogether();
    void stoppedEnumeratorBeginsNoFurtherPass();
    void enumeratorsAreAddedWhileOthersRun();
    void ownerWorksWhilePassesRun();
    void burstOf256DevicesIsReportedInOnePass();
};

void tst_CDevicesEnum_worker::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_worker::nothingRunsBeforeTheFirstRequest()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QCOMPARE(enumerator.Init(KELA_INTERFACE_TYPE_USB, false), 0);

    QVERIFY(!recorder.waitForBegins(1, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::passBeginsReportsAndEnds()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));

    QCOMPARE(enumerator.UpdateOnce(true, true), 0);
    QVERIFY(recorder.waitForEnds(1));

    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(events.size(), 3);
    QCOMPARE(events.at(0).text(), QString("begin"));
    QVERIFY(!events.at(0).hasInterface && !events.at(0).hasDevice);
    QCOMPARE(events.at(0).errorCode, 0);
    QCOMPARE(events.at(1).text(), QString("new U1"));
    QCOMPARE(events.at(2).text(), QString("end 0"));
    QVERIFY(!events.at(2).hasInterface && !events.at(2).hasDevice);
}

void tst_CDevicesEnum_worker::endEventCarriesTheResultOfThePass()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().failNext(KELA_ERROR_PERMISSION);

    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    QCOMPARE(recorder.take(), QStringList({"begin", "end 90000008"}));
}

void tst_CDevicesEnum_worker::eventsOfAPassComeFromTheWorker()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));

    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    const QVector<RecordedEvent> events = recorder.takeEvents();
    for (const RecordedEvent &event : events) {
        QVERIFY(event.thread != std::this_thread::get_id());
        QVERIFY(event.thread == events.first().thread);
    }
}

void tst_CDevicesEnum_worker::twoRequestsGiveTwoPassesEachAfterTheAcknowledgement()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.UpdateOnce(true, true);
    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));
    QVERIFY(!recorder.waitForBegins(2, kQuietMilliseconds));

    enumerator.FinishOneEnum();
    QVERIFY(recorder.waitForEnds(2));

    enumerator.FinishOneEnum();
    QVERIFY(!recorder.waitForBegins(3, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::requestDuringAPassGivesASecondPass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    scriptedAccess().stall(Operation::EnumDevices);
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    busy.enumerator->UpdateOnce(true, true);
    scriptedAccess().release();

    QVERIFY(busy.recorder.waitForEnds(2));
    QVERIFY(!busy.recorder.waitForBegins(3, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::requestFromTheCallbackGivesASecondPass()
{
    EventRecorder recorder;
    std::atomic<int> requests{0};
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator, [&enumerator, &requests](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
            enumerator.FinishOneEnum();
            if (++requests < 3) {
                enumerator.UpdateOnce(true, true);
            }
        }
    });
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    enumerator.UpdateOnce(true, true);

    QVERIFY(recorder.waitForEnds(3));
    QVERIFY(!recorder.waitForBegins(4, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::acknowledgementWithoutRequestStartsNothing()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.FinishOneEnum();

    QVERIFY(!recorder.waitForBegins(1, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::latestReportFlagDecidesForWaitingPasses()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.UpdateOnce(true, true);
    enumerator.UpdateOnce(false, true);

    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    QVERIFY(recorder.waitForEnds(1));

    QCOMPARE(recorder.take(), QStringList({"begin", "end 0"}));
}

void tst_CDevicesEnum_worker::reportFlagIsReadAfterTheEnumeration()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    scriptedAccess().plug(usbCamera("U1"));
    scriptedAccess().stall(Operation::EnumDevices);
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    busy.enumerator->UpdateOnce(false, true);
    scriptedAccess().release();
    QVERIFY(busy.recorder.waitForEnds(2));

    QCOMPARE(busy.recorder.take(), QStringList({"begin", "end 0", "begin", "end 0"}));
}

void tst_CDevicesEnum_worker::sleepTimeIsNotConsulted()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.SetSleepTime(3600000);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.UpdateOnce(true, true);

    QVERIFY(recorder.waitForEnds(1));
}

void tst_CDevicesEnum_worker::eventsGoToTheLatestSink()
{
    EventRecorder first;
    EventRecorder second;
    CDevicesEnum enumerator;
    first.listenTo(enumerator);
    second.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.UpdateOnce(true, true);

    QVERIFY(second.waitForEnds(1));
    QCOMPARE(first.take(), QStringList());
}

void tst_CDevicesEnum_worker::passWithoutSinkEndsAndLeavesItsRecords()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    QCOMPARE(enumerator.EnumDevices(), 0U);

    recorder.listenTo(enumerator);

    QCOMPARE(passOf(enumerator, recorder), QStringList("updated U1"));
}

void tst_CDevicesEnum_worker::secondInitKeepsTheWorker()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    scriptedAccess().stall(Operation::EnumDevices);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.UpdateOnce(true, true);
    enumerator.UpdateOnce(true, true);
    enumerator.FinishOneEnum();

    // A second worker would run the second pass beside the first.
    QVERIFY(scriptedAccess().waitUntilStalled());
    enumerator.FinishOneEnum();
    QVERIFY(!recorder.waitForBegins(2, kQuietMilliseconds));
    QCOMPARE(scriptedAccess().objectCount(), 1);
}

void tst_CDevicesEnum_worker::logFramesAPass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_CAMERALINK);
    const LogCapture log;

    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(busy.recorder.waitForEnds(1));
    busy.enumerator.reset();

    QCOMPARE(log.texts(),
             QStringList({"Begin Enum Devices; CameraType: 8", "End Enum Devices; CameraType: 8"}));
}

void tst_CDevicesEnum_worker::fiveEnumeratorsRunAtOnceOnAOneCoreMachine()
{
    const OneCoreMachine machine;
    std::vector<std::unique_ptr<BusyEnumerator>> enumerators;
    scriptedAccess().stall(Operation::EnumDevices);
    for (int index = 0; index < 5; ++index) {
        enumerators.push_back(std::make_unique<BusyEnumerator>(KELA_INTERFACE_TYPE_USB));
        enumerators.back()->enumerator->UpdateOnce(true, true);
    }

    QVERIFY(scriptedAccess().waitUntilStalled(5));
    QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);

    scriptedAccess().release();
    for (const std::unique_ptr<BusyEnumerator> &busy : enumerators) {
        QVERIFY(busy->recorder.waitForEnds(1));
    }
}

void tst_CDevicesEnum_worker::enumeratorWithoutWorkerIsDestroyedAtOnce()
{
    {
        CDevicesEnum never;
        never.UpdateOnce(true, true);
        never.Stop();
    }
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_CDevicesEnum_worker::destructionWaitsForThePassUnderWay()
{
    std::promise<void> entered;
    std::promise<void> mayLeave;
    std::atomic<bool> hasLeft{false};
    EventRecorder recorder;
    auto enumerator = std::make_unique<CDevicesEnum>();
    recorder.listenTo(*enumerator, [&](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_DEVICE_NEW) {
            entered.set_value();
            mayLeave.get_future().wait();
            hasLeft = true;
        }
    });
    scriptedAccess().plug(usbCamera("U1"));
    enumerator->Init(KELA_INTERFACE_TYPE_USB, false);
    enumerator->UpdateOnce(true, true);
    entered.get_future().wait();

    std::future<bool> destroyed = std::async(std::launch::async, [&enumerator, &hasLeft] {
        enumerator.reset();
        return hasLeft.load();
    });
    QVERIFY(destroyed.wait_for(kQuiet) == std::future_status::timeout);
    mayLeave.set_value();

    QVERIFY(destroyed.get());
    QCOMPARE(recorder.take(), QStringList({"begin", "new U1", "end 0"}));
}

void tst_CDevicesEnum_worker::destructionCancelsAHangingEnumeration()
{
    EventRecorder recorder;
    auto enumerator = std::make_unique<CDevicesEnum>();
    recorder.listenTo(*enumerator);
    enumerator->Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().stall(Operation::EnumDevices);
    enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    enumerator.reset();

    QCOMPARE(recorder.take(), QStringList({"begin", "end 9000000a"}));
}

void tst_CDevicesEnum_worker::destructionCancelsAHangingQuestionToARemoteDevice()
{
    EventRecorder recorder;
    auto enumerator = std::make_unique<CDevicesEnum>();
    recorder.listenTo(*enumerator);
    enumerator->Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = gigeCamera("R1", 91);
    enumerator->AddRemoteDevice(&record);
    scriptedAccess().stall(Operation::GetDeviceInfo);
    enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    enumerator.reset();

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_CDevicesEnum_worker::noCallbackAfterDestruction()
{
    for (int round = 0; round < 20; ++round) {
        std::atomic<bool> isGone{false};
        std::atomic<int> late{0};
        EventRecorder recorder;
        auto enumerator = std::make_unique<CDevicesEnum>();
        recorder.listenTo(*enumerator, [&isGone, &late, owned = enumerator.get()](const RecordedEvent &event) {
            late += isGone ? 1 : 0;
            if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
                owned->FinishOneEnum();
            }
        });
        scriptedAccess().plug(usbCamera("U" + std::to_string(round)));
        enumerator->Init(KELA_INTERFACE_TYPE_USB, false);
        for (int pass = 0; pass < 10; ++pass) {
            enumerator->UpdateOnce(true, true);
        }
        QVERIFY(recorder.waitForBegins(1));

        enumerator.reset();
        isGone = true;

        QVERIFY(!recorder.waitForBegins(11, 5));
        QCOMPARE(late.load(), 0);
    }
}

void tst_CDevicesEnum_worker::enumeratorsToldToStopEndTogether()
{
    std::vector<std::unique_ptr<BusyEnumerator>> enumerators;
    scriptedAccess().stall(Operation::EnumDevices);
    for (int index = 0; index < 4; ++index) {
        enumerators.push_back(std::make_unique<BusyEnumerator>(KELA_INTERFACE_TYPE_USB));
        enumerators.back()->enumerator->UpdateOnce(true, true);
    }
    QVERIFY(scriptedAccess().waitUntilStalled(4));

    for (const std::unique_ptr<BusyEnumerator> &busy : enumerators) {
        busy->enumerator->Stop();
    }

    // All passes end although nothing was deleted yet.
    for (const std::unique_ptr<BusyEnumerator> &busy : enumerators) {
        QVERIFY(busy->recorder.waitForEnds(1));
    }
}

void tst_CDevicesEnum_worker::stoppedEnumeratorBeginsNoFurtherPass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(busy.recorder.waitForEnds(1));

    busy.enumerator->Stop();
    busy.enumerator->UpdateOnce(true, true);

    QVERIFY(!busy.recorder.waitForBegins(2, kQuietMilliseconds));
}

void tst_CDevicesEnum_worker::enumeratorsAreAddedWhileOthersRun()
{
    for (int index = 0; index < 16; ++index) {
        scriptedAccess().plug(usbCamera("U" + std::to_string(index)));
        scriptedAccess().plug(gigeCamera("A" + std::to_string(index), 100 + static_cast<uint32_t>(index)));
        scriptedAccess().plug(cameraLinkCamera("C" + std::to_string(index), "port"));
    }
    const auto runSome = [] {
        for (int round = 0; round < 5; ++round) {
            BusyEnumerator usb(KELA_INTERFACE_TYPE_USB);
            BusyEnumerator cameraLink(KELA_INTERFACE_TYPE_CAMERALINK);
            for (BusyEnumerator *busy : {&usb, &cameraLink}) {
                busy->enumerator->UpdateOnce(true, true);
                busy->enumerator->UpdateOnce(true, true);
            }
            if (!usb.recorder.waitForEnds(2) || !cameraLink.recorder.waitForEnds(2)) {
                return false;
            }
        }
        return true;
    };

    std::future<bool> first = std::async(std::launch::async, runSome);
    std::future<bool> second = std::async(std::launch::async, runSome);

    QVERIFY(first.get());
    QVERIFY(second.get());
}

void tst_CDevicesEnum_worker::ownerWorksWhilePassesRun()
{
    char path[] = "/cti/a.cti";
    BusyEnumerator genTL(KELA_INTERFACE_TYPE_GENTL);
    BusyEnumerator gige(KELA_INTERFACE_TYPE_CAMERALINK);
    scriptedAccess().plugInterface(path, genTLInterface("if0"));
    scriptedAccess().plug(genTLDevice("G1", "if0"));
    scriptedAccess().plug(cameraLinkCamera("C1", "port"));
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    void *handle = scriptedAccess().openInterface("if0", 0);

    constexpr int kRounds = 200;
    for (int round = 0; round < kRounds; ++round) {
        genTL.enumerator->AddCtiPath(path);
        genTL.enumerator->SetGenTLInterfaceHandle(70001, handle);
        genTL.enumerator->UpdateOnce(true, true);
        gige.enumerator->UpdateOnce(round % 2 == 0, true);
        KELA_STRUCT_DEVICE_INFO record = {};
        record.deviceInfo = gigeCamera("R1", 91);
        QVERIFY(gige.enumerator->AddRemoteDevice(&record) > 0);
        DEVICE_FILTER filter = {};
        gige.enumerator->SetFilter(&filter);
        int count = -1;
        genTL.enumerator->GetCtiInterfaceCount(path, &count);
        QVERIFY(count == 0 || count == 1);
        gige.enumerator->RemoveRemoteDevice(&record);
        genTL.enumerator->RemoveCtiPath(path);
    }

    QVERIFY(genTL.recorder.waitForEnds(kRounds));
    QVERIFY(gige.recorder.waitForEnds(kRounds));
}

void tst_CDevicesEnum_worker::burstOf256DevicesIsReportedInOnePass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    for (int index = 0; index < 256; ++index) {
        scriptedAccess().plug(usbCamera("B" + std::to_string(index)));
    }

    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(busy.recorder.waitForEnds(1));

    QCOMPARE(busy.recorder.take().size(), 258);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_worker)
#include "tst_cdevicesenum_worker.moc"
