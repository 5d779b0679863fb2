// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"
#include "LogCapture.h"

#include <QtTest>

#include <cstring>

namespace
{

char *pathOf(const char *path)
{
    // The operations take a char* and do not write through it.
    return const_cast<char *>(path);
}

const char *const kCtiA = "/cti/a.cti";
const char *const kCtiB = "/cti/b.cti";

// A GenTL enumerator with the producer A and its interface "if0" that holds the device "G1".
class ProducerUnderTest
{
public:
    explicit ProducerUnderTest(KELA_INTERFACE_TYPE type = KELA_INTERFACE_TYPE_GENTL)
    {
        recorder.listenTo(enumerator);
        enumerator.Init(type, false);
        scriptedAccess().plugInterface(kCtiA, genTLInterface("if0"));
        scriptedAccess().plug(genTLDevice("G1", "if0"));
        enumerator.AddCtiPath(pathOf(kCtiA));
    }

    QStringList pass() { return passOf(enumerator, recorder); }

    static int interfaceId(const char *identifier, unsigned int number = 0)
    {
        return static_cast<int>(genTLInterfaceId(identifier, number));
    }

    void *open(const char *identifier)
    {
        void *handle = scriptedAccess().openInterface(identifier, 0);
        enumerator.SetGenTLInterfaceHandle(interfaceId(identifier), handle);
        return handle;
    }

    EventRecorder recorder;
    CDevicesEnum enumerator;
};

} // namespace

class tst_CDevicesEnum_gentl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void samePathTwiceIsOneProducer();
    void pathsThatDifferInCaseAreTwoProducers();
    void producersAreEnumeratedInTheOrderOfAdding();
    void interfaceSeenTwiceKeepsItsIdAndIsUpdated();
    void interfaceEventIsOfType16WithAnyGenTLTransport_data();
    void interfaceEventIsOfType16WithAnyGenTLTransport();
    void interfaceRecordIsCopiedWholeButForItsId();
    void vanishedInterfaceIsReportedRemovedOnce();
    void failingProducerLosesItsInterfacesAndNobodyElses();
    void twoProducersWithTheSameTextAndNumberShareOneId();
    void missingObjectGivesItsCodeAndNoInterfaces();
    void interfaceCountAbove256ReadsTheListOnly();
    void producerTellsCountAndIdsOfItsInterfaces();
    void indexOutOfRangeGivesMinusOne_data();
    void indexOutOfRangeGivesMinusOne();
    void unknownProducerHasNoInterfaces();
    void nullResultsAreLeftAlone();
    void knownInterfaceIsFoundByTextAndNumber();
    void handleIsKeptPerInterface();
    void devicesOfAnOpenedInterfaceAreListedOnce();
    void devicesOfInterfacesNotAskedStayAsTheyAre();
    void updateAsksOpenedInterfacesAgain();
    void updateWithoutRequeueAsksNoInterface();
    void queuedHandleIsNotReplacedBeforeThePass();
    void closedInterfaceLosesItsDevices();
    void interfaceThatFailsLosesItsDevicesOnly();
    void deviceOfAnUnknownInterfaceIsDropped();
    void deviceCarriesItsInterface();
    void equalDevicesOfAnInterfaceAreNotMerged();
    void filteredGenTLDeviceIsNotListed();
    void fullInterfaceTextIsReadWithoutOverrun();
    void perRecordTransportListsEveryInterface();
    void perRecordTransportSkipsAFailingInterface();
    void removingAProducerUnloadsItAndDropsItsHandles();
    void removingAnUnlistedPathDoesNothing();
    void removedProducerKeepsItsListOfIds();
    void removedProducersInterfacesAndDevicesGoWithTheNextPass();
    void handlesOfARemovedProducerAreRefused();
    void producerRemovedWhileThePassIsInsideContributesNothing();
    void producerAddedWhileThePassRunsComesWithTheNextOne();
    void handleGivenFromTheCallbackServesTheSamePass();
    void longPathReachesTheDeviceAccessWhole();
    void destructorUnloadsEveryListedProducer();
    void logLinesAreWrittenToTheLetter();
};

void tst_CDevicesEnum_gentl::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_gentl::samePathTwiceIsOneProducer()
{
    ProducerUnderTest test;
    test.enumerator.AddCtiPath(pathOf(kCtiA));

    QCOMPARE(test.pass(), QStringList("interface new if0"));
}

void tst_CDevicesEnum_gentl::pathsThatDifferInCaseAreTwoProducers()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface("/cti/A.cti", genTLInterface("upper"));
    test.enumerator.AddCtiPath(pathOf("/cti/A.cti"));

    QCOMPARE(test.pass(), QStringList({"interface new if0", "interface new upper"}));
}

void tst_CDevicesEnum_gentl::producersAreEnumeratedInTheOrderOfAdding()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b1"));
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b0"));
    scriptedAccess().plugInterface("/cti/0.cti", genTLInterface("zero"));
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    test.enumerator.AddCtiPath(pathOf("/cti/0.cti"));

    QCOMPARE(test.pass(),
             QStringList({"interface new if0", "interface new b1", "interface new b0", "interface new zero"}));
}

void tst_CDevicesEnum_gentl::interfaceSeenTwiceKeepsItsIdAndIsUpdated()
{
    ProducerUnderTest test;
    test.enumerator.EnumDevices();
    const RecordedEvent first = test.recorder.takeEvents().first();
    test.enumerator.EnumDevices();
    const RecordedEvent second = test.recorder.takeEvents().first();

    QCOMPARE(first.kind, KELA_INTERFACE_STATE_INTERFACE_NEW);
    QCOMPARE(second.kind, KELA_INTERFACE_STATE_INTERFACE_UPDATED);
    QVERIFY(first.interface.special.genTLInterface.id > 70000);
    QCOMPARE(second.interface.special.genTLInterface.id, first.interface.special.genTLInterface.id);
    QVERIFY(!first.hasDevice);
}

void tst_CDevicesEnum_gentl::interfaceEventIsOfType16WithAnyGenTLTransport_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("per handle") << int(KELA_INTERFACE_TYPE_GENTL);
    QTest::newRow("per record") << int(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
}

void tst_CDevicesEnum_gentl::interfaceEventIsOfType16WithAnyGenTLTransport()
{
    QFETCH(int, type);
    ProducerUnderTest test(static_cast<KELA_INTERFACE_TYPE>(type));

    test.enumerator.EnumDevices();

    QCOMPARE(test.recorder.takeEvents().first().interface.interfaceType, 16U);
}

void tst_CDevicesEnum_gentl::interfaceRecordIsCopiedWholeButForItsId()
{
    ProducerUnderTest test;
    KELA_GENTL_IF_INFO interface = {};
    std::memset(static_cast<void *>(&interface), 'I', sizeof(interface));
    scriptedAccess().unplugInterface(kCtiA, "if0");
    scriptedAccess().plugInterface(kCtiA, interface);

    test.enumerator.EnumDevices();

    const KELA_GENTL_IF_INFO reported = test.recorder.takeEvents().first().interface.special.genTLInterface;
    interface.id = reported.id;
    QCOMPARE(reported.id, genTLInterfaceId(std::string(128, 'I'), interface.number));
    QCOMPARE(std::memcmp(&reported, &interface, sizeof(interface)), 0);
}

void tst_CDevicesEnum_gentl::vanishedInterfaceIsReportedRemovedOnce()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    test.pass();

    scriptedAccess().unplugInterface(kCtiA, "if0");

    QCOMPARE(test.pass(), QStringList({"interface updated if1", "interface removed if0"}));
    QCOMPARE(test.pass(), QStringList("interface updated if1"));
}

void tst_CDevicesEnum_gentl::failingProducerLosesItsInterfacesAndNobodyElses()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b0"));
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    test.pass();

    scriptedAccess().fail(KELA_ERROR_PRODUCER_FAILED, Operation::EnumInterfacesByGenTL, kCtiA);

    QCOMPARE(test.pass(), QStringList({"interface updated b0", "interface removed if0"}));
    QCOMPARE(test.enumerator.EnumDevices(), 0U);
}

void tst_CDevicesEnum_gentl::twoProducersWithTheSameTextAndNumberShareOneId()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("if0"));
    scriptedAccess().plugInterface(kCtiB, genTLInterface("if0", 1));
    test.enumerator.AddCtiPath(pathOf(kCtiB));

    test.enumerator.EnumDevices();

    const QVector<RecordedEvent> events = test.recorder.takeEvents();
    QCOMPARE(events.size(), 3);
    QCOMPARE(events.at(1).interface.special.genTLInterface.id,
             events.at(0).interface.special.genTLInterface.id);
    QVERIFY(events.at(2).interface.special.genTLInterface.id !=
            events.at(0).interface.special.genTLInterface.id);
    // Both are new: known means known before the pass.
    QCOMPARE(events.at(1).kind, KELA_INTERFACE_STATE_INTERFACE_NEW);
}

void tst_CDevicesEnum_gentl::missingObjectGivesItsCodeAndNoInterfaces()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.AddCtiPath(pathOf(kCtiA));
    QVector<KELA_GENTL_IF_INFO> interfaces;

    QCOMPARE(enumerator.EnumOneGenTLInterface(kCtiA, interfaces), 0x90002003U);
    QCOMPARE(enumerator.EnumGenTLInterface(), 0U);

    QVERIFY(interfaces.isEmpty());
    QCOMPARE(recorder.take(), QStringList());
}

void tst_CDevicesEnum_gentl::interfaceCountAbove256ReadsTheListOnly()
{
    ProducerUnderTest test;
    for (uint32_t number = 1; number < 300; ++number) {
        scriptedAccess().plugInterface(kCtiA, genTLInterface("if0", number));
    }
    scriptedAccess().claimCount(0xFFFFFFFFU);

    QCOMPARE(test.pass().size(), 256);
}

void tst_CDevicesEnum_gentl::producerTellsCountAndIdsOfItsInterfaces()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1", 7));
    test.pass();
    int count = -5;
    int id = -5;

    test.enumerator.GetCtiInterfaceCount(pathOf(kCtiA), &count);
    QCOMPARE(count, 2);
    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), 0, &id);
    QCOMPARE(id, ProducerUnderTest::interfaceId("if0"));
    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), 1, &id);
    QCOMPARE(id, ProducerUnderTest::interfaceId("if1", 7));
}

void tst_CDevicesEnum_gentl::indexOutOfRangeGivesMinusOne_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("the count") << 1;
    QTest::newRow("far out") << 0x7FFFFFFF;
}

void tst_CDevicesEnum_gentl::indexOutOfRangeGivesMinusOne()
{
    QFETCH(int, index);
    ProducerUnderTest test;
    test.pass();
    int id = -5;

    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), index, &id);

    QCOMPARE(id, -1);
}

void tst_CDevicesEnum_gentl::unknownProducerHasNoInterfaces()
{
    const CDevicesEnum enumerator;
    int count = -5;
    int id = -5;

    enumerator.GetCtiInterfaceCount(pathOf(kCtiB), &count);
    enumerator.GetCtiInterfaceID(pathOf(kCtiB), 0, &id);

    QCOMPARE(count, 0);
    QCOMPARE(id, -1);
}

void tst_CDevicesEnum_gentl::nullResultsAreLeftAlone()
{
    ProducerUnderTest test;
    test.pass();
    unsigned char text[] = "if0";

    test.enumerator.GetCtiInterfaceCount(pathOf(kCtiA), nullptr);
    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), 0, nullptr);

    QCOMPARE(int(test.enumerator.GetGENTLIFInfo(text, 0, nullptr).id), ProducerUnderTest::interfaceId("if0"));
}

void tst_CDevicesEnum_gentl::knownInterfaceIsFoundByTextAndNumber()
{
    ProducerUnderTest test;
    test.pass();
    unsigned char text[] = "if0";
    bool isFound = false;

    const KELA_GENTL_IF_INFO known = test.enumerator.GetGENTLIFInfo(text, 0, &isFound);
    QVERIFY(isFound);
    QCOMPARE(int(known.id), ProducerUnderTest::interfaceId("if0"));

    const KELA_GENTL_IF_INFO zero = {};
    const KELA_GENTL_IF_INFO unknown = test.enumerator.GetGENTLIFInfo(text, 1, &isFound);
    QVERIFY(!isFound);
    QCOMPARE(std::memcmp(&unknown, &zero, sizeof(zero)), 0);
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

void tst_CDevicesEnum_gentl::perRecordTransportSkipsAFailingInterface()
{
    ProducerUnderTest test(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    scriptedAccess().plug(genTLDevice("G2", "if1"));
    scriptedAccess().fail(KELA_ERROR_PRODUCER_FAILED, Operation::EnumDevicesByGenTL, "if0");

    QCOMPARE(test.pass(), QStringList({"interface new if0", "interface new if1", "new G2"}));
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

void tst_CDevicesEnum_gentl::longPathReachesTheDeviceAccessWhole()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GENTL, false);
    for (const std::size_t length : {511U, 512U, 513U, 4000U}) {
        const std::string path = "/" + std::string(length - 1, 'p');
        scriptedAccess().forgetCalls();
        QVector<KELA_GENTL_IF_INFO> interfaces;

        QCOMPARE(enumerator.EnumOneGenTLInterface(QString::fromStdString(path), interfaces),
                 static_cast<unsigned int>(KELA_ERROR_PRODUCER_MISSING));

        QVERIFY(scriptedAccess().calls(Operation::EnumInterfacesByGenTL).front().subject == path);
    }
}

void tst_CDevicesEnum_gentl::destructorUnloadsEveryListedProducer()
{
    {
        ProducerUnderTest test;
        test.enumerator.AddCtiPath(pathOf(kCtiB));
        test.enumerator.AddCtiPath(pathOf("/cti/c.cti"));
        test.enumerator.RemoveCtiPath(pathOf("/cti/c.cti"));
        scriptedAccess().forgetCalls();
    }

    const std::vector<ScriptedCall> calls = scriptedAccess().calls(Operation::UnloadGenTLLibrary);
    QCOMPARE(calls.size(), std::size_t(2));
    QCOMPARE(QString::fromStdString(calls[0].subject), QString(kCtiA));
    QCOMPARE(QString::fromStdString(calls[1].subject), QString(kCtiB));
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

QTEST_GUILESS_MAIN(tst_CDevicesEnum_gentl)
#include "tst_cdevicesenum_gentl.moc"
