// SPDX-License-Identifier: Apache-2.0
// Requests and the passes that come of them.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "BusyEnumerator.h"
#include "EventRecorder.h"
#include "LogCapture.h"

#include <QtTest>

#include <atomic>
#include <thread>

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
    void deviceSetOffWhileThePassRunsIsReportedAsNew();
    void deviceSetOffWhileThePassMissesItIsNotReportedRemoved();
    void reportFlagIsReadAfterTheEnumeration();
    void unreportedPassKeepsRemoteDevices();
    void unreportedPassRemovesEveryKnownDevice();
    void sleepTimeIsNotConsulted();
    void eventsGoToTheLatestSink();
    void passWithoutSinkEndsAndLeavesItsRecords();
    void secondInitKeepsTheWorker();
    void logFramesAPass();
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

void tst_CDevicesEnum_worker::deviceSetOffWhileThePassRunsIsReportedAsNew()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    scriptedAccess().plug(usbCamera("U1"));
    busy.enumerator->EnumDevices();
    const int id = busy.recorder.takeEvents().first().device.deviceId;

    scriptedAccess().stall(Operation::IsDeviceAccessible, "U1");
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    busy.enumerator->SetOffCameraID(id);
    scriptedAccess().release();
    QVERIFY(busy.recorder.waitForEnds(1));

    QCOMPARE(busy.recorder.take(), QStringList({"begin", "new U1", "end 0"}));
}

void tst_CDevicesEnum_worker::deviceSetOffWhileThePassMissesItIsNotReportedRemoved()
{
    BusyEnumerator busy(KELA_INTERFACE_TYPE_USB);
    scriptedAccess().plug(usbCamera("U1"));
    scriptedAccess().plug(usbCamera("U2"));
    busy.enumerator->EnumDevices();
    const int id = busy.recorder.takeEvents().first().device.deviceId;
    scriptedAccess().unplug("U1");

    scriptedAccess().stall(Operation::IsDeviceAccessible, "U2");
    busy.enumerator->UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    busy.enumerator->SetOffCameraID(id);
    scriptedAccess().release();
    QVERIFY(busy.recorder.waitForEnds(1));

    QCOMPARE(busy.recorder.take(), QStringList({"begin", "updated U2", "end 0"}));
}

void tst_CDevicesEnum_worker::unreportedPassRemovesEveryKnownDevice()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator, [&enumerator](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
            enumerator.FinishOneEnum();
        }
    });
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    enumerator.UpdateOnce(false, true);
    QVERIFY(recorder.waitForEnds(2));

    QCOMPARE(recorder.take(), QStringList({"begin", "new U1", "end 0", "begin", "removed U1", "end 0"}));
}

void tst_CDevicesEnum_worker::unreportedPassKeepsRemoteDevices()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator, [&enumerator](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
            enumerator.FinishOneEnum();
        }
    });
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 99));
    KELA_STRUCT_DEVICE_INFO remote = {};
    remote.deviceInfo = gigeCamera("R1", 99);
    QVERIFY(enumerator.AddRemoteDevice(&remote) > 0);
    recorder.takeEvents();

    enumerator.UpdateOnce(false, true);
    QVERIFY(recorder.waitForEnds(1));

    QCOMPARE(recorder.take(), QStringList({"begin", "updated R1", "end 0"}));
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_worker)
#include "tst_cdevicesenum_worker.moc"
