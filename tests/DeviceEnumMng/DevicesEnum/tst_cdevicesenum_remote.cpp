// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"

#include <QElapsedTimer>
#include <QtTest>

#include <thread>

namespace
{

KELA_STRUCT_DEVICE_INFO request(uint32_t lastOctet)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE;
    record.deviceInfo.special.gige.currentIp = ipv4(192, 168, 10, lastOctet);
    return record;
}

KELA_STRUCT_DEVICE_INFO addRemote(CDevicesEnum &enumerator, const std::string &serial, uint32_t lastOctet)
{
    scriptedAccess().plugBehindRouter(gigeCamera(serial, lastOctet));
    KELA_STRUCT_DEVICE_INFO record = request(lastOctet);
    enumerator.AddRemoteDevice(&record);
    return record;
}

// A GigE enumerator whose events are recorded.
struct GigeUnderTest {
    GigeUnderTest()
    {
        recorder.listenTo(enumerator);
        enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    }

    EventRecorder recorder;
    CDevicesEnum enumerator;
};

} // namespace

class tst_CDevicesEnum_remote : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void addedDeviceIsReportedBeforeTheCallReturns();
    void callersRecordHoldsTheDevice();
    void deviceThatDoesNotAnswerGivesMinusOne();
    void deviceThatCannotBeChosenIsNotAsked();
    void addingEndsInTimeWhateverTheDeviceDoesNotTell_data();
    void addingEndsInTimeWhateverTheDeviceDoesNotTell();
    void addressOfAKnownDeviceGivesItsIdAndNothingElse();
    void addressOfAVanishedDeviceIsAskedAgain();
    void nullRecordIsRefused();
    void everyPassAsksAndReportsTheDevice();
    void refreshedDescriptionIsKept();
    void deviceThatStopsAnsweringIsReportedRemovedOnce();
    void deviceBehindAVanishedOneIsPassedOver();
    void deviceFoundByThePassIsAskedToo();
    void removedDeviceIsReportedBeforeTheCallReturnsAndAskedNoMore();
    void removalReportsTheCallersRecord();
    void deviceRemovedWhileItIsAskedGetsNoUpdate();
    void deviceRemovedWhileItFailsToAnswerIsNotReportedTwice();
    void deviceWhoseOwnerIsJustReportingItsRemovalIsNotReportedTwice();
    void deviceTakenBackWhileItIsReportedNewIsRemovedByTheNextPass();
    void deviceThatCallsItselfCancelledIsReportedRemoved();
    void neighbourOfADeviceRemovedByItsOwnerIsStillAsked();
    void deviceAddedWhileAPassRunsIsKept();
    void deviceSetOffIsAskedNoMore();
};

void tst_CDevicesEnum_remote::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_remote::addedDeviceIsReportedBeforeTheCallReturns()
{
    GigeUnderTest test;
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    KELA_STRUCT_DEVICE_INFO record = request(91);

    const long id = test.enumerator.AddRemoteDevice(&record);

    const QVector<RecordedEvent> events = test.recorder.takeEvents();
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().text(), QString("new R1"));
    QCOMPARE(long(events.first().device.deviceId), id);
    QVERIFY(events.first().thread == std::this_thread::get_id());
}

void tst_CDevicesEnum_remote::callersRecordHoldsTheDevice()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_DEVICE_INFO_EX device = gigeCamera("R1", 91);
    device.special.gige.hostIp = ipv4(10, 0, 0, 1);
    scriptedAccess().plugBehindRouter(device);
    KELA_STRUCT_DEVICE_INFO record = request(91);

    const long id = enumerator.AddRemoteDevice(&record);

    QCOMPARE(long(record.deviceId), id);
    // On another subnet than its card, and yet not unreachable.
    QCOMPARE(record.deviceState, int32_t(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(record.remote, uint8_t(1));
    QCOMPARE(record.network.cardValue, 1000U);
    QCOMPARE(record.network.found, uint8_t(0));
    QCOMPARE(std::memcmp(&record.deviceInfo, &device, sizeof(device)), 0);
}

void tst_CDevicesEnum_remote::deviceThatDoesNotAnswerGivesMinusOne()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = request(92);

    QCOMPARE(test.enumerator.AddRemoteDevice(&record), -1L);

    QCOMPARE(test.recorder.take(), QStringList());
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(1));
    QCOMPARE(scriptedAccess().objectCount(), 1);
}

void tst_CDevicesEnum_remote::deviceThatCannotBeChosenIsNotAsked()
{
    CDevicesEnum enumerator;
    scriptedAccess().fail(KELA_ERROR_PARAMETER, Operation::Init, "");
    KELA_STRUCT_DEVICE_INFO record = request(92);

    QVERIFY(!enumerator.GetRemoteDevice(record));

    QCOMPARE(scriptedAccess().calls(Operation::Init).front().flag, false);
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(0));
}

void tst_CDevicesEnum_remote::addingEndsInTimeWhateverTheDeviceDoesNotTell_data()
{
    QTest::addColumn<int>("hanging");
    QTest::addColumn<QStringList>("events");

    QTest::newRow("what it is") << int(Operation::GetDeviceInfo) << QStringList();
    QTest::newRow("whether it is free") << int(Operation::IsDeviceAccessible) << QStringList("new R1");
    QTest::newRow("whether it streams") << int(Operation::GetMulticastStatus) << QStringList("new R1");
    QTest::newRow("to a monitor") << int(Operation::Connect) << QStringList("new R1");
    QTest::newRow("where it streams to") << int(Operation::GetIntegerNodeValue) << QStringList("new R1");
}

void tst_CDevicesEnum_remote::addingEndsInTimeWhateverTheDeviceDoesNotTell()
{
    QFETCH(int, hanging);
    QFETCH(QStringList, events);
    GigeUnderTest test;
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    scriptedAccess().holdAndStream("R1", ipv4(239, 1, 2, 3), 5400);
    scriptedAccess().stall(static_cast<Operation>(hanging));
    KELA_STRUCT_DEVICE_INFO record = request(91);
    QElapsedTimer timer;
    timer.start();

    const long id = test.enumerator.AddRemoteDevice(&record);

    // What hangs is never let go: only the deadline of 750 ms ends it.
    QVERIFY(timer.elapsed() < 2000);
    QCOMPARE(test.recorder.take(), events);
    QCOMPARE(id == -1, events.isEmpty());
    QCOMPARE(record.deviceState, events.isEmpty() ? 0 : int32_t(KELA_DEV_STATE_GIGE_IN_USE));
    QCOMPARE(scriptedAccess().objectCount(), 1);

    // The test.enumerator itself goes on: the next pass tells what was left open.
    scriptedAccess().release();
    test.enumerator.AddRemoteDevice(&record);
    test.enumerator.EnumDevices();
    QCOMPARE(test.recorder.takeEvents().last().device.deviceState, int32_t(KELA_DEV_STATE_GIGE_MULTICAST));
}

void tst_CDevicesEnum_remote::addressOfAKnownDeviceGivesItsIdAndNothingElse()
{
    GigeUnderTest test;
    scriptedAccess().plug(gigeCamera("A1", 93));
    test.enumerator.EnumDevices();
    const long id = test.recorder.takeEvents().first().device.deviceId;
    scriptedAccess().forgetCalls();
    KELA_STRUCT_DEVICE_INFO record = request(93);

    QCOMPARE(test.enumerator.AddRemoteDevice(&record), id);

    QCOMPARE(test.recorder.take(), QStringList());
    QCOMPARE(scriptedAccess().calls().size(), std::size_t(0));
    QCOMPARE(record.remote, uint8_t(0));
}

void tst_CDevicesEnum_remote::addressOfAVanishedDeviceIsAskedAgain()
{
    GigeUnderTest test;
    scriptedAccess().plug(gigeCamera("A1", 93));
    test.enumerator.EnumDevices();
    const long id = test.recorder.takeEvents().first().device.deviceId;
    scriptedAccess().unplug("A1");
    test.enumerator.EnumDevices();
    test.recorder.takeEvents();

    scriptedAccess().plugBehindRouter(gigeCamera("A1", 93));
    KELA_STRUCT_DEVICE_INFO record = request(93);

    QCOMPARE(test.enumerator.AddRemoteDevice(&record), id);
    QCOMPARE(test.recorder.take(), QStringList("new A1"));
}

void tst_CDevicesEnum_remote::nullRecordIsRefused()
{
    CDevicesEnum enumerator;

    QCOMPARE(enumerator.AddRemoteDevice(nullptr), -1L);
    QCOMPARE(enumerator.RemoveRemoteDevice(nullptr), 0);
}

void tst_CDevicesEnum_remote::everyPassAsksAndReportsTheDevice()
{
    GigeUnderTest test;
    addRemote(test.enumerator, "R1", 91);
    scriptedAccess().forgetCalls();

    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList("updated R1"));
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList("updated R1"));

    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(2));
}

void tst_CDevicesEnum_remote::refreshedDescriptionIsKept()
{
    GigeUnderTest test;
    const KELA_STRUCT_DEVICE_INFO added = addRemote(test.enumerator, "R1", 91);
    KELA_DEVICE_INFO_EX renamed = gigeCamera("R1", 91);
    setField(renamed.special.gige.userDefinedName, "renamed");
    scriptedAccess().unplug("R1");
    scriptedAccess().plugBehindRouter(renamed);
    scriptedAccess().hold("R1");
    test.recorder.takeEvents();

    test.enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO updated = test.recorder.takeEvents().first().device;
    QCOMPARE(updated.deviceId, added.deviceId);
    QCOMPARE(updated.remote, uint8_t(1));
    QCOMPARE(updated.deviceState, int32_t(KELA_DEV_STATE_GIGE_IN_USE));
    QCOMPARE(QByteArray(updated.deviceInfo.special.gige.userDefinedName), QByteArray("renamed"));

    scriptedAccess().unplug("R1");
    test.enumerator.EnumDevices();
    const KELA_STRUCT_DEVICE_INFO removed = test.recorder.takeEvents().first().device;
    QCOMPARE(QByteArray(removed.deviceInfo.special.gige.userDefinedName), QByteArray("renamed"));
}

void tst_CDevicesEnum_remote::deviceThatStopsAnsweringIsReportedRemovedOnce()
{
    GigeUnderTest test;
    addRemote(test.enumerator, "R1", 91);
    scriptedAccess().unplug("R1");

    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList("removed R1"));
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList());

    // It is no remote device any more: it comes back only when it is added again.
    scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList());
}

void tst_CDevicesEnum_remote::deviceBehindAVanishedOneIsPassedOver()
{
    GigeUnderTest test;
    addRemote(test.enumerator, "R1", 91);
    addRemote(test.enumerator, "R2", 92);
    addRemote(test.enumerator, "R3", 93);
    scriptedAccess().unplug("R1");
    scriptedAccess().forgetCalls();

    // R2 is not looked at, so it was not seen, so it counts as vanished too.
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList({"removed R1", "updated R3", "removed R2"}));
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(2));
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList("updated R3"));
}

void tst_CDevicesEnum_remote::deviceFoundByThePassIsAskedToo()
{
    GigeUnderTest test;
    addRemote(test.enumerator, "R1", 91);
    scriptedAccess().plug(gigeCamera("R1", 91));

    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList({"updated R1", "updated R1"}));
}

void tst_CDevicesEnum_remote::removedDeviceIsReportedBeforeTheCallReturnsAndAskedNoMore()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = addRemote(test.enumerator, "R1", 91);
    test.recorder.takeEvents();

    QCOMPARE(test.enumerator.RemoveRemoteDevice(&record), 0);

    const QVector<RecordedEvent> events = test.recorder.takeEvents();
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().text(), QString("removed R1"));
    QVERIFY(events.first().thread == std::this_thread::get_id());
    scriptedAccess().forgetCalls();
    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList());
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(0));
}

void tst_CDevicesEnum_remote::removalReportsTheCallersRecord()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = addRemote(test.enumerator, "R1", 91);
    test.recorder.takeEvents();
    std::memset(record.reserved1832, 0xA5, sizeof(record.reserved1832));

    test.enumerator.RemoveRemoteDevice(&record);

    const KELA_STRUCT_DEVICE_INFO reported = test.recorder.takeEvents().first().device;
    QCOMPARE(std::memcmp(&reported, &record, sizeof(record)), 0);
}

void tst_CDevicesEnum_remote::deviceRemovedWhileItIsAskedGetsNoUpdate()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = addRemote(test.enumerator, "R1", 91);
    test.recorder.takeEvents();

    scriptedAccess().stall(Operation::GetDeviceInfo);
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    test.enumerator.RemoveRemoteDevice(&record);
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "removed R1", "end 0"}));
}

void tst_CDevicesEnum_remote::deviceRemovedWhileItFailsToAnswerIsNotReportedTwice()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = addRemote(test.enumerator, "R1", 91);
    test.recorder.takeEvents();

    scriptedAccess().stall(Operation::GetDeviceInfo);
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    test.enumerator.RemoveRemoteDevice(&record);
    scriptedAccess().unplug("R1");
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "removed R1", "end 0"}));
}

void tst_CDevicesEnum_remote::deviceWhoseOwnerIsJustReportingItsRemovalIsNotReportedTwice()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    bool hasPassed = false;
    recorder.listenTo(enumerator, [&enumerator, &hasPassed](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_DEVICE_REMOVED && !hasPassed) {
            hasPassed = true;
            enumerator.EnumDevices();
        }
    });
    KELA_STRUCT_DEVICE_INFO record = addRemote(enumerator, "R1", 91);
    recorder.takeEvents();

    // The whole pass lies between the end of the listing and the end of the registration.
    enumerator.RemoveRemoteDevice(&record);

    QVERIFY(hasPassed);
    QCOMPARE(recorder.take(), QStringList("removed R1"));
}

void tst_CDevicesEnum_remote::deviceTakenBackWhileItIsReportedNewIsRemovedByTheNextPass()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    int news = 0;
    recorder.listenTo(enumerator, [&enumerator, &news](RecordedEvent event) {
        if (event.kind == KELA_INTERFACE_STATE_DEVICE_NEW && ++news == 1) {
            enumerator.RemoveRemoteDevice(&event.device);
        }
    });

    // Adding registers the device after the event, so a pass has to find out that nobody lists it.
    addRemote(enumerator, "R1", 91);
    enumerator.EnumDevices();

    QCOMPARE(recorder.take(), QStringList({"new R1", "removed R1", "removed R1"}));
    addRemote(enumerator, "R1", 91);
    QCOMPARE(recorder.take(), QStringList("new R1"));
}

void tst_CDevicesEnum_remote::deviceThatCallsItselfCancelledIsReportedRemoved()
{
    GigeUnderTest test;
    addRemote(test.enumerator, "R1", 91);
    scriptedAccess().fail(KELA_ERROR_CANCELLED, Operation::GetDeviceInfo, "R1");

    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList("removed R1"));
}

void tst_CDevicesEnum_remote::neighbourOfADeviceRemovedByItsOwnerIsStillAsked()
{
    GigeUnderTest test;
    KELA_STRUCT_DEVICE_INFO record = addRemote(test.enumerator, "R1", 91);
    addRemote(test.enumerator, "R2", 92);
    test.recorder.takeEvents();

    scriptedAccess().stall(Operation::GetDeviceInfo, "R1");
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    test.enumerator.RemoveRemoteDevice(&record);
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "removed R1", "updated R2", "end 0"}));
}

void tst_CDevicesEnum_remote::deviceAddedWhileAPassRunsIsKept()
{
    GigeUnderTest test;
    scriptedAccess().stall(Operation::EnumDevices);
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    addRemote(test.enumerator, "R1", 91);
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "new R1", "updated R1", "end 0"}));
}

void tst_CDevicesEnum_remote::deviceSetOffIsAskedNoMore()
{
    GigeUnderTest test;
    test.enumerator.SetOffCameraID(addRemote(test.enumerator, "R1", 91).deviceId);
    scriptedAccess().forgetCalls();

    QCOMPARE(passOf(test.enumerator, test.recorder), QStringList());
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(0));
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_remote)
#include "tst_cdevicesenum_remote.moc"
