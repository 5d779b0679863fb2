// SPDX-License-Identifier: Apache-2.0
// Opened interfaces, their devices, and producers that go.
#include <KelAIndustryControl/KelAErrors.h>

#include "LogCapture.h"
#include "ProducerUnderTest.h"

#include <QtTest>

#include <cstring>

class tst_CDevicesEnum_gentl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void handleIsKeptPerInterface();
    void devicesOfAnOpenedInterfaceAreListedOnce();
    void devicesOfInterfacesNotAskedStayAsTheyAre();
    void updateAsksOpenedInterfacesAgain();
    void updateWithoutRequeueAsksNoInterface();
    void queuedHandleIsNotReplacedBeforeThePass();
    void closedInterfaceLosesItsDevices();
    void devicesOfASharedInterfaceStayWhenOneOfItsProducersGoes();
    void interfaceThatFailsLosesItsDevicesOnly();
    void deviceOfAnUnknownInterfaceIsDropped();
    void deviceCarriesItsInterface();
    void equalDevicesOfAnInterfaceAreNotMerged();
    void filteredGenTLDeviceIsNotListed();
    void fullInterfaceTextIsReadWithoutOverrun();
    void perRecordTransportListsEveryInterface();
    void perRecordTransportSkipsAFailingInterface_data();
    void perRecordTransportSkipsAFailingInterface();
    void openedInterfaceThatCallsItselfCancelledIsSkippedLikeAnyOther();
    void everyGenTLListComesToTheDeviceAccessZeroed();
    void removingAProducerUnloadsItAndDropsItsHandles();
    void removingAnUnlistedPathDoesNothing();
    void removedProducerKeepsItsListOfIds();
    void removedProducersInterfacesAndDevicesGoWithTheNextPass();
    void handlesOfARemovedProducerAreRefused();
    void producerRemovedWhileThePassIsInsideContributesNothing();
    void producerAddedWhileThePassRunsComesWithTheNextOne();
    void handleGivenFromTheCallbackServesTheSamePass();
    void logLinesAreWrittenToTheLetter();
};

void tst_CDevicesEnum_gentl::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_gentl::handleIsKeptPerInterface()
{
    CDevicesEnum enumerator;
    int opened = 0;

    QCOMPARE(enumerator.GetGenTlInterfaceHandle(70001), static_cast<void *>(nullptr));
    enumerator.SetGenTLInterfaceHandle(70001, &opened);
    QCOMPARE(enumerator.GetGenTlInterfaceHandle(70001), static_cast<void *>(&opened));
    QCOMPARE(enumerator.GetGenTlInterfaceHandle(70002), static_cast<void *>(nullptr));
    enumerator.SetGenTLInterfaceHandle(70001, nullptr);
    QCOMPARE(enumerator.GetGenTlInterfaceHandle(70001), static_cast<void *>(nullptr));
}

void tst_CDevicesEnum_gentl::devicesOfAnOpenedInterfaceAreListedOnce()
{
    ProducerUnderTest test;
    QCOMPARE(test.pass(), QStringList("interface new if0"));

    test.open("if0");
    QCOMPARE(test.pass(), QStringList({"interface updated if0", "new G1"}));
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(1));

    test.pass();
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(1));
}

void tst_CDevicesEnum_gentl::devicesOfInterfacesNotAskedStayAsTheyAre()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    scriptedAccess().plug(genTLDevice("G2", "if1"));
    test.open("if0");
    test.open("if1");
    test.pass();
    scriptedAccess().unplug("G1");
    scriptedAccess().unplug("G2");

    // Only if1 is asked, so nobody knows that G1 is gone.
    test.open("if1");
    QCOMPARE(test.pass(),
             QStringList({"interface updated if0", "interface updated if1", "updated G1", "removed G2"}));

    test.open("if0");
    QCOMPARE(test.pass(), QStringList({"interface updated if0", "interface updated if1", "removed G1"}));
}

void tst_CDevicesEnum_gentl::updateAsksOpenedInterfacesAgain()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");
    test.pass();
    scriptedAccess().unplug("G1");

    test.enumerator.UpdateOnce(true, true);
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface updated if0", "removed G1", "end 0"}));
}

void tst_CDevicesEnum_gentl::updateWithoutRequeueAsksNoInterface()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");
    test.pass();
    scriptedAccess().unplug("G1");

    test.enumerator.UpdateOnce(true, false);
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface updated if0", "updated G1", "end 0"}));
}

void tst_CDevicesEnum_gentl::queuedHandleIsNotReplacedBeforeThePass()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");
    test.enumerator.SetGenTLInterfaceHandle(ProducerUnderTest::interfaceId("if0"), nullptr);

    // The pass uses the handle that was queued first.
    QCOMPARE(test.pass(), QStringList({"interface updated if0", "new G1"}));
    QCOMPARE(test.enumerator.GetGenTlInterfaceHandle(ProducerUnderTest::interfaceId("if0")),
             static_cast<void *>(nullptr));
}

void tst_CDevicesEnum_gentl::closedInterfaceLosesItsDevices()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");
    test.pass();

    test.enumerator.SetGenTLInterfaceHandle(ProducerUnderTest::interfaceId("if0"), nullptr);

    QCOMPARE(test.pass(), QStringList({"interface updated if0", "removed G1"}));
}

void tst_CDevicesEnum_gentl::interfaceThatFailsLosesItsDevicesOnly()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    scriptedAccess().plug(genTLDevice("G2", "if1"));
    test.open("if0");
    test.open("if1");
    test.pass();

    test.open("if0");
    scriptedAccess().failNext(KELA_ERROR_PRODUCER_FAILED, Operation::EnumDevicesByGenTLEx);

    QCOMPARE(test.pass(),
             QStringList({"interface updated if0", "interface updated if1", "updated G2", "removed G1"}));
}

void tst_CDevicesEnum_gentl::deviceOfAnUnknownInterfaceIsDropped()
{
    ProducerUnderTest test;
    test.open("if0");
    scriptedAccess().unplugInterface(kCtiA, "if0");

    QCOMPARE(test.pass(), QStringList());
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(1));
}

void tst_CDevicesEnum_gentl::deviceCarriesItsInterface()
{
    ProducerUnderTest test;
    test.open("if0");

    test.enumerator.EnumDevices();

    const QVector<RecordedEvent> events = test.recorder.takeEvents();
    const KELA_STRUCT_DEVICE_INFO device = events.at(1).device;
    QCOMPARE(std::memcmp(&device.genTLInterface, &events.at(0).interface.special.genTLInterface,
                         sizeof(device.genTLInterface)),
             0);
    QCOMPARE(device.deviceState, int32_t(KELA_DEV_STATE_GENTL_FREE));
    QVERIFY(device.deviceId > 50000);
}

void tst_CDevicesEnum_gentl::equalDevicesOfAnInterfaceAreNotMerged()
{
    ProducerUnderTest test;
    scriptedAccess().plug(genTLDevice("G1", "if0"));
    test.open("if0");

    QCOMPARE(test.pass(), QStringList({"interface new if0", "new G1", "new G1"}));
}

void tst_CDevicesEnum_gentl::filteredGenTLDeviceIsNotListed()
{
    ProducerUnderTest test;
    DEVICE_FILTER filter = {};
    filter.modelMode = 2;
    setField(filter.modelExclude, "SX-100");
    test.enumerator.SetFilter(&filter);
    test.open("if0");

    QCOMPARE(test.pass(), QStringList("interface new if0"));
}

void tst_CDevicesEnum_gentl::fullInterfaceTextIsReadWithoutOverrun()
{
    ProducerUnderTest test;
    const std::string text(64, 'i');
    scriptedAccess().plugInterface(kCtiA, genTLInterface(text));
    scriptedAccess().plug(genTLDevice("G2", text));
    test.open(text.c_str());

    QVERIFY(test.pass().contains("new G2"));
}

void tst_CDevicesEnum_gentl::perRecordTransportListsEveryInterface()
{
    ProducerUnderTest test(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1", 2));
    KELA_DEVICE_INFO_EX device = genTLDevice("G2", "if1", 2);
    device.transport = KELA_INTERFACE_TYPE_GENTL_INTERFACE;
    scriptedAccess().plug(device);

    QCOMPARE(test.pass(), QStringList({"interface new if0", "interface new if1", "new G1", "new G2"}));
    scriptedAccess().unplug("G2");
    QCOMPARE(test.pass(),
             QStringList({"interface updated if0", "interface updated if1", "updated G1", "removed G2"}));
}

void tst_CDevicesEnum_gentl::perRecordTransportSkipsAFailingInterface_data()
{
    addFailures();
}

void tst_CDevicesEnum_gentl::perRecordTransportSkipsAFailingInterface()
{
    QFETCH(const unsigned int, code);
    ProducerUnderTest test(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    scriptedAccess().plug(genTLDevice("G2", "if1"));
    scriptedAccess().fail(code, Operation::EnumDevicesByGenTL, "if0");

    QCOMPARE(test.pass(), QStringList({"interface new if0", "interface new if1", "new G2"}));
}

void tst_CDevicesEnum_gentl::openedInterfaceThatCallsItselfCancelledIsSkippedLikeAnyOther()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");
    scriptedAccess().failNext(KELA_ERROR_CANCELLED, Operation::EnumDevicesByGenTLEx);

    QCOMPARE(test.enumerator.EnumDevices(), 0U);
    QCOMPARE(test.recorder.take(), QStringList("interface updated if0"));
}

void tst_CDevicesEnum_gentl::removingAProducerUnloadsItAndDropsItsHandles()
{
    ProducerUnderTest test;
    test.pass();
    test.open("if0");

    test.enumerator.RemoveCtiPath(pathOf(kCtiA));

    QCOMPARE(test.enumerator.GetGenTlInterfaceHandle(ProducerUnderTest::interfaceId("if0")),
             static_cast<void *>(nullptr));
    QCOMPARE(scriptedAccess().count(Operation::UnloadGenTLLibrary), std::size_t(1));
    QCOMPARE(QString::fromStdString(scriptedAccess().calls(Operation::UnloadGenTLLibrary).front().subject),
             QString(kCtiA));
}

void tst_CDevicesEnum_gentl::removingAnUnlistedPathDoesNothing()
{
    ProducerUnderTest test;
    test.pass();
    void *handle = test.open("if0");

    test.enumerator.RemoveCtiPath(pathOf("/cti/A.cti"));

    QCOMPARE(test.enumerator.GetGenTlInterfaceHandle(ProducerUnderTest::interfaceId("if0")), handle);
    QCOMPARE(scriptedAccess().count(Operation::UnloadGenTLLibrary), std::size_t(0));
}

void tst_CDevicesEnum_gentl::removedProducerKeepsItsListOfIds()
{
    ProducerUnderTest test;
    test.pass();
    int count = -5;

    test.enumerator.RemoveCtiPath(pathOf(kCtiA));
    test.pass();

    test.enumerator.GetCtiInterfaceCount(pathOf(kCtiA), &count);
    QCOMPARE(count, 1);
}

void tst_CDevicesEnum_gentl::removedProducersInterfacesAndDevicesGoWithTheNextPass()
{
    ProducerUnderTest test;
    test.open("if0");
    test.pass();

    test.enumerator.RemoveCtiPath(pathOf(kCtiA));

    QCOMPARE(test.pass(), QStringList({"interface removed if0", "removed G1"}));
}

void tst_CDevicesEnum_gentl::handlesOfARemovedProducerAreRefused()
{
    ProducerUnderTest test;
    test.open("if0");
    test.pass();
    test.open("if0");
    const LogCapture log;

    // The interface stays queued; its handle leads nowhere any more.
    test.enumerator.RemoveCtiPath(pathOf(kCtiA));

    QCOMPARE(test.pass(), QStringList({"interface removed if0", "removed G1"}));
    QVERIFY(log.texts().contains("After EnumDevicesByGenTLEx count :0   ; nRet : 2415919104"));
}

void tst_CDevicesEnum_gentl::producerRemovedWhileThePassIsInsideContributesNothing()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b0"));
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    test.pass();
    test.open("if0");

    scriptedAccess().stall(Operation::EnumInterfacesByGenTL, kCtiA);
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    test.enumerator.RemoveCtiPath(pathOf(kCtiA));
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(),
             QStringList({"begin", "interface updated b0", "interface removed if0", "end 0"}));
    // Once by the owner and once by the pass, whose call may have loaded it again.
    QCOMPARE(scriptedAccess().count(Operation::UnloadGenTLLibrary), std::size_t(2));
}

void tst_CDevicesEnum_gentl::producerAddedWhileThePassRunsComesWithTheNextOne()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b0"));
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL, kCtiA);
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));
    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface new if0", "end 0"}));

    QCOMPARE(test.pass(), QStringList({"interface updated if0", "interface new b0"}));
}

void tst_CDevicesEnum_gentl::handleGivenFromTheCallbackServesTheSamePass()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator, [&enumerator](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_INTERFACE_NEW) {
            enumerator.SetGenTLInterfaceHandle(static_cast<int>(event.interface.special.genTLInterface.id),
                                               scriptedAccess().openInterface("if0", 0));
        }
    });
    enumerator.Init(KELA_INTERFACE_TYPE_GENTL, false);
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if0"));
    scriptedAccess().plug(genTLDevice("G1", "if0"));
    enumerator.AddCtiPath(pathOf(kCtiA));

    QCOMPARE(passOf(enumerator, recorder), QStringList({"interface new if0", "new G1"}));
}

void tst_CDevicesEnum_gentl::logLinesAreWrittenToTheLetter()
{
    ProducerUnderTest test;
    test.open("if0");
    const LogCapture log;

    test.pass();

    QCOMPARE(log.texts(), QStringList({"EnumGenTLInterface count : 1", "before EnumDevicesByGenTLEx",
                                       "After EnumDevicesByGenTLEx count :1   ; nRet : 0"}));
}

void tst_CDevicesEnum_gentl::devicesOfASharedInterfaceStayWhenOneOfItsProducersGoes()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("if0"));
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    test.open("if0");
    test.pass();

    // The handle is gone with the producer, so the interface is not asked although it is still known.
    test.enumerator.RemoveCtiPath(pathOf(kCtiA));
    test.enumerator.UpdateOnce(true, true);
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface updated if0", "updated G1", "end 0"}));
}

void tst_CDevicesEnum_gentl::everyGenTLListComesToTheDeviceAccessZeroed()
{
    ProducerUnderTest perHandle;
    ProducerUnderTest perRecord(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
    for (ProducerUnderTest *test : {&perHandle, &perRecord}) {
        test->open("if0");
        test->pass();
        test->pass();
    }

    std::size_t lists = 0;
    for (const Operation operation :
         {Operation::EnumInterfacesByGenTL, Operation::EnumDevicesByGenTL, Operation::EnumDevicesByGenTLEx}) {
        for (const ScriptedCall &call : scriptedAccess().calls(operation)) {
            QVERIFY(call.wasZeroed);
            ++lists;
        }
    }
    QVERIFY(lists >= 7);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_gentl)
#include "tst_cdevicesenum_gentl.moc"
