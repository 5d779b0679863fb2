// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"
#include "LogCapture.h"

#include <QtTest>

#include <cstring>

class tst_CDevicesEnum_pass : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void newKnownAndVanishedDevicesAreReported();
    void vanishedDeviceIsReportedOnceAndReturnsAsNewWithItsEarlierId();
    void deviceSeenTwiceInOneEnumerationIsReportedOnce();
    void deviceSeenThroughTwoCardsIsReportedTwiceUnderOneId();
    void failedPassRemovesNothing();
    void passWithoutDeviceAccessGivesTheMissingObjectCode();
    void eventsFollowTheOrderOfTheList();
    void deviceEventsCarryNoInterface();
    void recordIsZeroBesidesWhatThePassKnows();
    void reservedBytesOfADeviceTravelUnchanged();
    void deviceWithoutCardHasOnlyTheCardValueInItsNetworkBlock_data();
    void deviceWithoutCardHasOnlyTheCardValueInItsNetworkBlock();
    void deviceThatNamesNoTransportBecomesGigEWithoutNetworkBlock();
    void deviceThatNamesNoTransportStaysSoWithoutTheFlag();
    void gigeTwinOfADeviceThatBecameGigEIsDropped();
    void twoEqualDevicesThatNameNoTransportAreBothReported();
    void usbDeviceHasAnEmptyControllerBlockWithoutControllers();
    void transportsAndFlagReachTheDeviceAccess();
    void everyListComesToTheDeviceAccessZeroed();
    void gigeVariantEnumeratorRemovesGigEDevicesOnly();
    void enumeratorOfOneTransportLeavesOthersAlone();
    void countAbove256ReadsTheListOnly();
    void deviceSetOffIsReportedAsNewAgain();
    void deviceSetOffBeforeItVanishesIsNotReportedRemoved();
    void filteredDeviceIsNotReportedAndVanishes();
    void fullTextFieldsAreReadWithoutOverrun();
    void usbControllerNumbersStartAtOne();
};

void tst_CDevicesEnum_pass::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_pass::newKnownAndVanishedDevicesAreReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plug(gigeCamera("A1", 11));
    scriptedAccess().plug(gigeCamera("A2", 12));

    QCOMPARE(passOf(enumerator, recorder), QStringList({"new A1", "new A2"}));

    scriptedAccess().unplug("A1");
    scriptedAccess().plug(gigeCamera("A3", 13));
    QCOMPARE(passOf(enumerator, recorder), QStringList({"updated A2", "new A3", "removed A1"}));
}

void tst_CDevicesEnum_pass::vanishedDeviceIsReportedOnceAndReturnsAsNewWithItsEarlierId()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plug(gigeCamera("A1"));
    enumerator.EnumDevices();
    const int id = recorder.takeEvents().first().device.deviceId;

    scriptedAccess().unplug("A1");
    QCOMPARE(passOf(enumerator, recorder), QStringList("removed A1"));
    QCOMPARE(passOf(enumerator, recorder), QStringList());

    scriptedAccess().plug(gigeCamera("A1"));
    enumerator.EnumDevices();
    const RecordedEvent event = recorder.takeEvents().first();
    QCOMPARE(event.text(), QString("new A1"));
    QCOMPARE(event.device.deviceId, id);
}

void tst_CDevicesEnum_pass::deviceSeenTwiceInOneEnumerationIsReportedOnce()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plug(gigeCamera("A1", 11));
    scriptedAccess().plug(gigeCamera("A1", 12));

    enumerator.EnumDevices();

    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().device.deviceInfo.special.gige.currentIp, ipv4(192, 168, 10, 11));
}

void tst_CDevicesEnum_pass::deviceSeenThroughTwoCardsIsReportedTwiceUnderOneId()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_DEVICE_INFO_EX device = gigeCamera("A1");
    scriptedAccess().plug(device);
    device.special.gige.hostIp = ipv4(192, 168, 10, 2);
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    // Known means known before the pass, so both are new.
    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(events.size(), 2);
    QCOMPARE(events.at(0).kind, KELA_INTERFACE_STATE_DEVICE_NEW);
    QCOMPARE(events.at(1).kind, KELA_INTERFACE_STATE_DEVICE_NEW);
    QCOMPARE(events.at(0).device.deviceId, events.at(1).device.deviceId);
}

void tst_CDevicesEnum_pass::failedPassRemovesNothing()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plug(gigeCamera("A1"));
    enumerator.EnumDevices();
    recorder.takeEvents();

    scriptedAccess().failNext(KELA_ERROR_TIMEOUT);
    QCOMPARE(enumerator.EnumDevices(), static_cast<unsigned int>(KELA_ERROR_TIMEOUT));
    QCOMPARE(recorder.take(), QStringList());

    QCOMPARE(passOf(enumerator, recorder), QStringList("updated A1"));
}

void tst_CDevicesEnum_pass::passWithoutDeviceAccessGivesTheMissingObjectCode()
{
    CDevicesEnum enumerator;

    QCOMPARE(enumerator.EnumDevices(), 0x90000000U);
}

void tst_CDevicesEnum_pass::eventsFollowTheOrderOfTheList()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    for (const char *serial : {"U3", "U1", "U2"}) {
        scriptedAccess().plug(usbCamera(serial));
    }

    QCOMPARE(passOf(enumerator, recorder), QStringList({"new U3", "new U1", "new U2"}));
}

void tst_CDevicesEnum_pass::deviceEventsCarryNoInterface()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));

    enumerator.EnumDevices();

    const RecordedEvent event = recorder.takeEvents().first();
    QVERIFY(event.hasDevice);
    QVERIFY(!event.hasInterface);
    QCOMPARE(event.errorCode, 0);
}

void tst_CDevicesEnum_pass::recordIsZeroBesidesWhatThePassKnows()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_CAMERALINK, false);
    const KELA_DEVICE_INFO_EX device = cameraLinkCamera("C1", "port");
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    KELA_STRUCT_DEVICE_INFO expected = {};
    expected.deviceId = record.deviceId;
    expected.deviceState = KELA_DEV_STATE_CAMERALINK_FREE;
    expected.deviceInfo = device;
    QVERIFY(record.deviceId > 40000);
    QCOMPARE(std::memcmp(&record, &expected, sizeof(record)), 0);
}

void tst_CDevicesEnum_pass::reservedBytesOfADeviceTravelUnchanged()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    KELA_DEVICE_INFO_EX device = usbCamera("U1");
    std::memset(device.reserved592, 0xA5, sizeof(device.reserved592));
    std::memset(device.special.usb.reserved552, 0x5A, sizeof(device.special.usb.reserved552));
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    QCOMPARE(std::memcmp(&record.deviceInfo, &device, sizeof(device)), 0);
}

void tst_CDevicesEnum_pass::deviceWithoutCardHasOnlyTheCardValueInItsNetworkBlock_data()
{
    QTest::addColumn<int>("transport");
    QTest::newRow("GigE") << 1;
    QTest::newRow("network") << 128;
    QTest::newRow("GigE variant") << 256;
}

void tst_CDevicesEnum_pass::deviceWithoutCardHasOnlyTheCardValueInItsNetworkBlock()
{
    QFETCH(int, transport);
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(static_cast<KELA_INTERFACE_TYPE>(transport), false);
    KELA_DEVICE_INFO_EX device = gigeCamera("A1");
    device.transport = static_cast<uint32_t>(transport);
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    KELA_DEVICE_NETWORK expected = {};
    expected.cardValue = 1000;
    QCOMPARE(std::memcmp(&record.network, &expected, sizeof(expected)), 0);
}

void tst_CDevicesEnum_pass::deviceThatNamesNoTransportBecomesGigEWithoutNetworkBlock()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, true);
    KELA_DEVICE_INFO_EX device = gigeCamera("N1");
    device.transport = KELA_INTERFACE_TYPE_NONE;
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    const KELA_DEVICE_NETWORK zero = {};
    QCOMPARE(record.deviceInfo.transport, uint32_t(KELA_INTERFACE_TYPE_GIGE));
    QCOMPARE(record.deviceState, int32_t(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(std::memcmp(&record.network, &zero, sizeof(zero)), 0);
}

void tst_CDevicesEnum_pass::deviceThatNamesNoTransportStaysSoWithoutTheFlag()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_DEVICE_INFO_EX device = gigeCamera("N2");
    device.transport = KELA_INTERFACE_TYPE_NONE;
    scriptedAccess().plug(device);

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    QCOMPARE(record.deviceInfo.transport, uint32_t(KELA_INTERFACE_TYPE_NONE));
    QCOMPARE(record.deviceState, int32_t(KELA_DEV_STATE_UNKNOWN));
}

void tst_CDevicesEnum_pass::gigeTwinOfADeviceThatBecameGigEIsDropped()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, true);
    KELA_DEVICE_INFO_EX device = gigeCamera("N3");
    device.transport = KELA_INTERFACE_TYPE_NONE;
    scriptedAccess().plug(device);
    scriptedAccess().plug(gigeCamera("N3"));

    QCOMPARE(passOf(enumerator, recorder), QStringList("new N3"));
}

void tst_CDevicesEnum_pass::twoEqualDevicesThatNameNoTransportAreBothReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, true);
    KELA_DEVICE_INFO_EX device = gigeCamera("N4");
    device.transport = KELA_INTERFACE_TYPE_NONE;
    scriptedAccess().plug(device);
    scriptedAccess().plug(device);

    // They are compared as they came, before they become GigE.
    QCOMPARE(passOf(enumerator, recorder), QStringList({"new N4", "new N4"}));
}

void tst_CDevicesEnum_pass::usbDeviceHasAnEmptyControllerBlockWithoutControllers()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    enumerator.EnumUSBControllers();
    scriptedAccess().plug(usbCamera("U1"));

    enumerator.EnumDevices();

    const KELA_STRUCT_DEVICE_INFO record = recorder.takeEvents().first().device;
    const KELA_USBCONTROLLER_INFO zero = {};
    QCOMPARE(std::memcmp(&record.usbController, &zero, sizeof(zero)), 0);
}

void tst_CDevicesEnum_pass::transportsAndFlagReachTheDeviceAccess()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_CAMERALINK, true);

    enumerator.EnumDevices();

    const ScriptedCall call = scriptedAccess().calls(Operation::EnumDevices).front();
    QCOMPARE(call.argument, int64_t(8));
    QVERIFY(call.flag);
}

void tst_CDevicesEnum_pass::gigeVariantEnumeratorRemovesGigEDevicesOnly()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(
        static_cast<KELA_INTERFACE_TYPE>(KELA_INTERFACE_TYPE_GIGE_VARIANT | KELA_INTERFACE_TYPE_GIGE), false);
    KELA_DEVICE_INFO_EX variant = gigeCamera("V1");
    variant.transport = KELA_INTERFACE_TYPE_GIGE_VARIANT;
    scriptedAccess().plug(variant);
    scriptedAccess().plug(gigeCamera("A1"));
    enumerator.EnumDevices();
    recorder.takeEvents();

    enumerator.Init(KELA_INTERFACE_TYPE_GIGE_VARIANT, false);
    scriptedAccess().unplug("V1");
    scriptedAccess().unplug("A1");

    QCOMPARE(passOf(enumerator, recorder), QStringList("removed A1"));
}

void tst_CDevicesEnum_pass::enumeratorOfOneTransportLeavesOthersAlone()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.EnumDevices();
    recorder.takeEvents();

    enumerator.Init(KELA_INTERFACE_TYPE_CAMERALINK, false);
    scriptedAccess().unplug("U1");

    QCOMPARE(passOf(enumerator, recorder), QStringList());
}

void tst_CDevicesEnum_pass::countAbove256ReadsTheListOnly()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    for (int index = 0; index < 300; ++index) {
        scriptedAccess().plug(usbCamera("many " + std::to_string(index)));
    }
    scriptedAccess().claimCount(0xFFFFFFFFU);

    QCOMPARE(passOf(enumerator, recorder).size(), 256);
}

void tst_CDevicesEnum_pass::deviceSetOffIsReportedAsNewAgain()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.EnumDevices();

    enumerator.SetOffCameraID(recorder.takeEvents().first().device.deviceId);

    QCOMPARE(passOf(enumerator, recorder), QStringList("new U1"));
    QCOMPARE(passOf(enumerator, recorder), QStringList("updated U1"));
}

void tst_CDevicesEnum_pass::deviceSetOffBeforeItVanishesIsNotReportedRemoved()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.EnumDevices();

    enumerator.SetOffCameraID(recorder.takeEvents().first().device.deviceId);
    scriptedAccess().unplug("U1");

    QCOMPARE(passOf(enumerator, recorder), QStringList());
}

void tst_CDevicesEnum_pass::filteredDeviceIsNotReportedAndVanishes()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));
    enumerator.EnumDevices();
    recorder.takeEvents();

    DEVICE_FILTER filter = {};
    filter.vendorMode = 2;
    setField(filter.vendorExclude, "Scripted Vision");
    enumerator.SetFilter(&filter);

    QCOMPARE(passOf(enumerator, recorder), QStringList("removed U1"));
}

void tst_CDevicesEnum_pass::fullTextFieldsAreReadWithoutOverrun()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_DEVICE_INFO_EX device = {};
    std::memset(static_cast<void *>(&device), 'F', sizeof(device));
    device.transport = KELA_INTERFACE_TYPE_GIGE;
    device.placement = KELA_PLACEMENT_REAL;
    scriptedAccess().plug(device);
    const LogCapture log;

    QCOMPARE(passOf(enumerator, recorder), QStringList("new " + QString(64, 'F')));
}

void tst_CDevicesEnum_pass::usbControllerNumbersStartAtOne()
{
    CDevicesEnum enumerator;

    QCOMPARE(enumerator.GetUSBControllersIDIndex(), 1);
    QCOMPARE(enumerator.GetUSBControllersIDIndex(), 2);
}

void tst_CDevicesEnum_pass::everyListComesToTheDeviceAccessZeroed()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));

    enumerator.EnumDevices();
    enumerator.EnumDevices();

    for (const ScriptedCall &call : scriptedAccess().calls(Operation::EnumDevices)) {
        QVERIFY(call.wasZeroed);
    }
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_pass)
#include "tst_cdevicesenum_pass.moc"
