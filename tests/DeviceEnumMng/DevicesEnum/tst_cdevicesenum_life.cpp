// SPDX-License-Identifier: Apache-2.0
// Several enumerators at once, and the end of an enumerator.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "BusyEnumerator.h"
#include "EventRecorder.h"
#include "ProducerUnderTest.h"

#include <QDeadlineTimer>
#include <QThreadPool>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <vector>

namespace
{

constexpr std::chrono::milliseconds kQuiet(kQuietMilliseconds);

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

class tst_CDevicesEnum_life : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void fiveEnumeratorsRunAtOnceOnAOneCoreMachine();
    void enumeratorWithoutWorkerIsDestroyedAtOnce();
    void destructionWaitsForThePassUnderWay();
    void destructionCancelsAHangingEnumeration();
    void destructionCancelsAHangingQuestionToARemoteDevice();
    void stoppedGenTLPassReportsNothingGone_data();
    void stoppedGenTLPassReportsNothingGone();
    void noCallbackAfterDestruction();
    void enumeratorsToldToStopEndTogether();
    void stoppedEnumeratorBeginsNoFurtherPass();
    void enumeratorsAreAddedWhileOthersRun();
    void ownerWorksWhilePassesRun();
    void burstOf256DevicesIsReportedInOnePass();
};

void tst_CDevicesEnum_life::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_life::fiveEnumeratorsRunAtOnceOnAOneCoreMachine()
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

void tst_CDevicesEnum_life::enumeratorWithoutWorkerIsDestroyedAtOnce()
{
    {
        CDevicesEnum never;
        never.UpdateOnce(true, true);
        never.Stop();
    }
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_CDevicesEnum_life::destructionWaitsForThePassUnderWay()
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

void tst_CDevicesEnum_life::destructionCancelsAHangingEnumeration()
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

void tst_CDevicesEnum_life::destructionCancelsAHangingQuestionToARemoteDevice()
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
    // It did not answer, but nobody waited for its answer either.
    QCOMPARE(recorder.take(), QStringList({"new R1", "begin", "end 9000000a"}));
}

void tst_CDevicesEnum_life::stoppedGenTLPassReportsNothingGone_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<int>("hanging");
    QTest::addColumn<QStringList>("events");
    const QStringList nothing{"begin", "end 9000000a"};
    const QStringList interfaceSeen{"begin", "interface updated if0", "end 9000000a"};

    QTest::newRow("interfaces") << 16 << int(Operation::EnumInterfacesByGenTL) << nothing;
    QTest::newRow("devices by handle") << 16 << int(Operation::EnumDevicesByGenTLEx) << interfaceSeen;
    QTest::newRow("devices by record") << 32 << int(Operation::EnumDevicesByGenTL) << interfaceSeen;
}

void tst_CDevicesEnum_life::stoppedGenTLPassReportsNothingGone()
{
    QFETCH(int, transport);
    QFETCH(int, hanging);
    QFETCH(QStringList, events);
    ProducerUnderTest test(static_cast<KELA_INTERFACE_TYPE>(transport));
    test.open("if0");
    QCOMPARE(test.pass(), QStringList({"interface new if0", "new G1"}));
    scriptedAccess().stall(static_cast<Operation>(hanging));
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    test.enumerator.Stop();

    QVERIFY(test.recorder.waitForEnds(1));
    QCOMPARE(test.recorder.take(), events);
}

void tst_CDevicesEnum_life::noCallbackAfterDestruction()
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

void tst_CDevicesEnum_life::enumeratorsToldToStopEndTogether()
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

void tst_CDevicesEnum_life::stoppedEnumeratorBeginsNoFurtherPass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(busy.recorder.waitForEnds(1));

    busy.enumerator->Stop();
    busy.enumerator->UpdateOnce(true, true);

    QVERIFY(!busy.recorder.waitForBegins(2, kQuietMilliseconds));
}

void tst_CDevicesEnum_life::enumeratorsAreAddedWhileOthersRun()
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

void tst_CDevicesEnum_life::ownerWorksWhilePassesRun()
{
    char path[] = "/cti/a.cti";
    BusyEnumerator genTL(KELA_INTERFACE_TYPE_GENTL);
    BusyEnumerator withRemotes(KELA_INTERFACE_TYPE_CAMERALINK);
    scriptedAccess().plugInterface(path, genTLInterface("if0"));
    scriptedAccess().plug(genTLDevice("G1", "if0"));
    scriptedAccess().plug(cameraLinkCamera("C1", "port"));
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    void *handle = scriptedAccess().openInterface("if0", 0);

    // Stays, so that every pass writes to the list that the owner changes.
    scriptedAccess().plugBehindRouter(gigeCamera("R2", 92));
    KELA_STRUCT_DEVICE_INFO steady = {};
    steady.deviceInfo = gigeCamera("R2", 92);
    QVERIFY(withRemotes.enumerator->AddRemoteDevice(&steady) > 0);

    constexpr int kPasses = 300;
    for (int pass = 0; pass < kPasses; ++pass) {
        genTL.enumerator->UpdateOnce(true, true);
        withRemotes.enumerator->UpdateOnce(true, true);
    }
    // Works as long as passes run, so that the two meet.
    const QDeadlineTimer deadline(60000);
    while (!genTL.recorder.waitForEnds(kPasses, 0) || !withRemotes.recorder.waitForEnds(kPasses, 0)) {
        QVERIFY(!deadline.hasExpired());
        genTL.enumerator->AddCtiPath(path);
        genTL.enumerator->SetGenTLInterfaceHandle(70001, handle);
        KELA_STRUCT_DEVICE_INFO record = {};
        record.deviceInfo = gigeCamera("R1", 91);
        QVERIFY(withRemotes.enumerator->AddRemoteDevice(&record) > 0);
        DEVICE_FILTER filter = {};
        withRemotes.enumerator->SetFilter(&filter);
        int count = -1;
        genTL.enumerator->GetCtiInterfaceCount(path, &count);
        QVERIFY(count == 0 || count == 1);
        withRemotes.enumerator->RemoveRemoteDevice(&record);
        genTL.enumerator->RemoveCtiPath(path);
    }
}

void tst_CDevicesEnum_life::burstOf256DevicesIsReportedInOnePass()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    for (int index = 0; index < 256; ++index) {
        scriptedAccess().plug(usbCamera("B" + std::to_string(index)));
    }

    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(busy.recorder.waitForEnds(1));

    QCOMPARE(busy.recorder.take().size(), 258);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_life)
#include "tst_cdevicesenum_life.moc"
