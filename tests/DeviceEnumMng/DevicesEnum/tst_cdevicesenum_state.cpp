// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

namespace
{

KELA_STRUCT_DEVICE_INFO plugged(const KELA_DEVICE_INFO_EX &device)
{
    scriptedAccess().plug(device);
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = device;
    return record;
}

KELA_DEVICE_INFO_EX onOtherSubnet(KELA_DEVICE_INFO_EX device)
{
    device.special.gige.currentIp = ipv4(192, 168, 77, 20);
    return device;
}

KELA_DEVICE_INFO_EX withTransport(KELA_DEVICE_INFO_EX device, uint32_t transport)
{
    device.transport = transport;
    return device;
}

} // namespace

class tst_CDevicesEnum_state : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void gigeDeviceIsFreeInUseOrUnreachable_data();
    void gigeDeviceIsFreeInUseOrUnreachable();
    void unreachableDeviceIsNeverAsked();
    void remoteDeviceIsNeverUnreachable();
    void virtualAndOtherDevicesSkipTheReachabilityTest_data();
    void virtualAndOtherDevicesSkipTheReachabilityTest();
    void networkTransportHasStatesOfItsOwn();
    void networkTransportTestsDevicesOfAnyPlacement();
    void usbStateFollowsVersionAndUse_data();
    void usbStateFollowsVersionAndUse();
    void cameraLinkAndGenTLStatesAreFixed();
    void otherTransportsAreUnknown();
    void withoutDeviceAccessTheStateIsUnknown();
    void errorOfTheAccessQuestionMeansInUse();
    void multicastStreamGivesItsOwnState();
    void streamTo240IsPlainUse();
    void multicastTestWritesDestinationAndPort();
    void multicastTestEndsWhenTheStatusIsNotTold();
    void multicastTestWithoutDeviceAccessAsksNobody();
    void multicastTestUsesTheGivenCallsInOrder();
    void multicastTestDisconnectsWhateverFails_data();
    void multicastTestDisconnectsWhateverFails();
    void destinationIsTheLow32BitsOfItsNode();
    void everyNodeValueComesToTheDeviceAccessZeroed();
    void temporaryObjectsAreGoneAfterwards();
    void deviceWithoutCardIsJudgedByItsHostAddress();
};

void tst_CDevicesEnum_state::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_state::gigeDeviceIsFreeInUseOrUnreachable_data()
{
    QTest::addColumn<int>("transport");
    QTest::newRow("GigE") << int(KELA_INTERFACE_TYPE_GIGE);
    QTest::newRow("GigE variant") << int(KELA_INTERFACE_TYPE_GIGE_VARIANT);
}

void tst_CDevicesEnum_state::gigeDeviceIsFreeInUseOrUnreachable()
{
    QFETCH(int, transport);
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(withTransport(gigeCamera("A1"), static_cast<uint32_t>(transport)));

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_FREE);
    QCOMPARE(scriptedAccess().calls(Operation::IsDeviceAccessible).front().argument, int64_t(3));

    scriptedAccess().hold("A1");
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_IN_USE);

    record.deviceInfo = onOtherSubnet(record.deviceInfo);
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_UNREACHABLE);
}

void tst_CDevicesEnum_state::unreachableDeviceIsNeverAsked()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(onOtherSubnet(gigeCamera("A1")));

    enumerator.GetDevState(record);

    QCOMPARE(scriptedAccess().calls().size(), std::size_t(0));
}

void tst_CDevicesEnum_state::remoteDeviceIsNeverUnreachable()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(onOtherSubnet(gigeCamera("A1")));
    record.remote = 1;

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_FREE);

    record.deviceInfo.transport = KELA_INTERFACE_TYPE_NETWORK;
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_NETWORK_FREE);
}

void tst_CDevicesEnum_state::virtualAndOtherDevicesSkipTheReachabilityTest_data()
{
    QTest::addColumn<int>("placement");
    QTest::newRow("virtual") << int(KELA_PLACEMENT_VIRTUAL);
    QTest::newRow("other") << int(KELA_PLACEMENT_OTHER);
}

void tst_CDevicesEnum_state::virtualAndOtherDevicesSkipTheReachabilityTest()
{
    QFETCH(int, placement);
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_DEVICE_INFO_EX device = onOtherSubnet(gigeCamera("A1"));
    device.placement = static_cast<uint32_t>(placement);
    KELA_STRUCT_DEVICE_INFO record = plugged(device);

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_FREE);
}

void tst_CDevicesEnum_state::networkTransportHasStatesOfItsOwn()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_NETWORK, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(withTransport(gigeCamera("A1"), KELA_INTERFACE_TYPE_NETWORK));

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_NETWORK_FREE);
    QCOMPARE(scriptedAccess().calls(Operation::IsDeviceAccessible).front().argument, int64_t(1));

    scriptedAccess().holdAndStream("A1", ipv4(239, 0, 0, 1), 1234);
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_NETWORK_IN_USE);
    QCOMPARE(scriptedAccess().count(Operation::GetMulticastStatus), std::size_t(0));

    record.deviceInfo = onOtherSubnet(record.deviceInfo);
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_NETWORK_UNREACHABLE);
}

void tst_CDevicesEnum_state::networkTransportTestsDevicesOfAnyPlacement()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_NETWORK, false);
    KELA_DEVICE_INFO_EX device = onOtherSubnet(withTransport(gigeCamera("A1"), KELA_INTERFACE_TYPE_NETWORK));
    device.placement = KELA_PLACEMENT_VIRTUAL;
    KELA_STRUCT_DEVICE_INFO record = plugged(device);

    // Only GigE devices are exempt by their placement.
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_NETWORK_UNREACHABLE);
}

void tst_CDevicesEnum_state::usbStateFollowsVersionAndUse_data()
{
    QTest::addColumn<unsigned int>("version");
    QTest::addColumn<unsigned int>("usable");
    QTest::addColumn<bool>("isHeld");
    QTest::addColumn<int>("state");
    QTest::newRow("USB 3 free") << 0x0300U << 1U << false << 8;
    QTest::newRow("USB 3 in use") << 0x0310U << 1U << true << 9;
    QTest::newRow("USB 3 unusable") << 0x0300U << 0U << true << 12;
    QTest::newRow("version 768 is USB 3") << 768U << 1U << false << 8;
    QTest::newRow("version 767 is older") << 767U << 1U << false << 13;
    QTest::newRow("USB 2 in use") << 0x0210U << 1U << true << 14;
    QTest::newRow("USB 2 unusable") << 0x0200U << 0U << false << 17;
}

void tst_CDevicesEnum_state::usbStateFollowsVersionAndUse()
{
    QFETCH(unsigned int, version);
    QFETCH(unsigned int, usable);
    QFETCH(bool, isHeld);
    QFETCH(int, state);
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    KELA_DEVICE_INFO_EX device = usbCamera("U1");
    device.special.usb.usbVersion = version;
    device.special.usb.usable = usable;
    KELA_STRUCT_DEVICE_INFO record = plugged(device);
    if (isHeld) {
        scriptedAccess().hold("U1");
    }

    QCOMPARE(int(enumerator.GetDevState(record)), state);
}

void tst_CDevicesEnum_state::cameraLinkAndGenTLStatesAreFixed()
{
    CDevicesEnum enumerator;
    KELA_STRUCT_DEVICE_INFO record = plugged(cameraLinkCamera("C1", "port"));
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_CAMERALINK_FREE);

    record = plugged(genTLDevice("G1", "if0"));
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GENTL_FREE);
    record.deviceInfo.transport = KELA_INTERFACE_TYPE_GENTL_INTERFACE;
    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GENTL_FREE);
}

void tst_CDevicesEnum_state::otherTransportsAreUnknown()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    for (const uint32_t transport : {0U, 2U, 64U, 5U, 512U}) {
        KELA_STRUCT_DEVICE_INFO record = plugged(withTransport(gigeCamera("A1"), transport));
        QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_UNKNOWN);
    }
}

void tst_CDevicesEnum_state::withoutDeviceAccessTheStateIsUnknown()
{
    CDevicesEnum enumerator;
    for (const KELA_DEVICE_INFO_EX &device :
         {gigeCamera("A1"), usbCamera("U1"), withTransport(gigeCamera("A2"), KELA_INTERFACE_TYPE_NETWORK)}) {
        KELA_STRUCT_DEVICE_INFO record = plugged(device);
        QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_UNKNOWN);
    }
}

void tst_CDevicesEnum_state::errorOfTheAccessQuestionMeansInUse()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().fail(KELA_ERROR_TIMEOUT, Operation::IsDeviceAccessible, "A1");

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_IN_USE);
}

void tst_CDevicesEnum_state::multicastStreamGivesItsOwnState()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_MULTICAST);
}

void tst_CDevicesEnum_state::streamTo240IsPlainUse()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(240, 1, 2, 3), 50000);

    QCOMPARE(enumerator.GetDevState(record), KELA_DEV_STATE_GIGE_IN_USE);
}

void tst_CDevicesEnum_state::multicastTestWritesDestinationAndPort()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(192, 168, 10, 9), 50000);

    QVERIFY(!enumerator.IsMultiOpened(record));

    QCOMPARE(record.deviceInfo.special.gige.streamDestination, ipv4(192, 168, 10, 9));
    QCOMPARE(record.deviceInfo.special.gige.streamHostPort, 50000U);
}

void tst_CDevicesEnum_state::multicastTestEndsWhenTheStatusIsNotTold()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);
    scriptedAccess().fail(KELA_ERROR_TIMEOUT, Operation::GetMulticastStatus, "A1");

    QVERIFY(!enumerator.IsMultiOpened(record));

    QCOMPARE(scriptedAccess().calls().size(), std::size_t(1));
    QCOMPARE(scriptedAccess().objectCount(), 1);
}

void tst_CDevicesEnum_state::multicastTestWithoutDeviceAccessAsksNobody()
{
    CDevicesEnum enumerator;
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);

    QVERIFY(!enumerator.IsMultiOpened(record));

    QCOMPARE(scriptedAccess().calls().size(), std::size_t(0));
}

void tst_CDevicesEnum_state::multicastTestUsesTheGivenCallsInOrder()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);

    enumerator.IsMultiOpened(record);

    const std::vector<ScriptedCall> calls = scriptedAccess().calls();
    const std::vector<Operation> expected = {Operation::GetMulticastStatus,
                                             Operation::Init,
                                             Operation::Connect,
                                             Operation::GetIntegerNodeValue,
                                             Operation::GetIntegerNodeValue,
                                             Operation::DisConnect};
    QCOMPARE(calls.size(), expected.size());
    for (std::size_t index = 0; index < calls.size(); ++index) {
        QVERIFY(calls[index].operation == expected[index]);
    }
    QCOMPARE(calls[1].flag, false);
    QCOMPARE(calls[2].argument, int64_t(7));
    QCOMPARE(QString::fromStdString(calls[3].subject), QString("GevSCDA"));
    QCOMPARE(calls[3].flag, true);
    QCOMPARE(QString::fromStdString(calls[4].subject), QString("GevSCPHostPort"));
    QCOMPARE(calls[4].flag, true);
    QCOMPARE(calls[5].flag, false);
}

void tst_CDevicesEnum_state::multicastTestDisconnectsWhateverFails_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("subject");
    QTest::newRow("Init") << int(Operation::Init) << "";
    QTest::newRow("Connect") << int(Operation::Connect) << "";
    QTest::newRow("destination") << int(Operation::GetIntegerNodeValue) << "GevSCDA";
    QTest::newRow("port") << int(Operation::GetIntegerNodeValue) << "GevSCPHostPort";
}

void tst_CDevicesEnum_state::multicastTestDisconnectsWhateverFails()
{
    QFETCH(int, operation);
    QFETCH(QString, subject);
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);
    scriptedAccess().fail(KELA_ERROR_TIMEOUT, static_cast<Operation>(operation), subject.toStdString());

    QVERIFY(!enumerator.IsMultiOpened(record));

    QCOMPARE(scriptedAccess().count(Operation::DisConnect), std::size_t(1));
    QCOMPARE(scriptedAccess().objectCount(), 1);
}

void tst_CDevicesEnum_state::destinationIsTheLow32BitsOfItsNode()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", 0, 50000);
    scriptedAccess().setNode("A1", "GevSCDA", 0x7FFFFFFFEF010203LL);

    QVERIFY(enumerator.IsMultiOpened(record));
    QCOMPARE(record.deviceInfo.special.gige.streamDestination, ipv4(239, 1, 2, 3));
}

void tst_CDevicesEnum_state::temporaryObjectsAreGoneAfterwards()
{
    {
        CDevicesEnum enumerator;
        enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
        KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
        scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);
        enumerator.IsMultiOpened(record);
        enumerator.GetRemoteDevice(record);

        QCOMPARE(scriptedAccess().objectCount(), 1);
    }
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_CDevicesEnum_state::deviceWithoutCardIsJudgedByItsHostAddress()
{
    const CDevicesEnum enumerator;
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = gigeCamera("A1");

    QVERIFY(enumerator.IsReachable(record));
    record.deviceInfo.special.gige.hostIp = ipv4(10, 0, 0, 1);
    QVERIFY(!enumerator.IsReachable(record));
}

void tst_CDevicesEnum_state::everyNodeValueComesToTheDeviceAccessZeroed()
{
    CDevicesEnum enumerator;
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = plugged(gigeCamera("A1"));
    scriptedAccess().holdAndStream("A1", ipv4(239, 1, 2, 3), 50000);

    enumerator.IsMultiOpened(record);

    const std::vector<ScriptedCall> calls = scriptedAccess().calls(Operation::GetIntegerNodeValue);
    QCOMPARE(calls.size(), std::size_t(2));
    QVERIFY(calls[0].wasZeroed && calls[1].wasZeroed);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_state)
#include "tst_cdevicesenum_state.moc"
