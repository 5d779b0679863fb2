// SPDX-License-Identifier: Apache-2.0
// Producers and their interfaces.
#include <KelAIndustryControl/KelAErrors.h>

#include "LogCapture.h"
#include "ProducerUnderTest.h"

#include <QtTest>

#include <cstring>

class tst_CDevicesEnum_producers : public QObject
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
    void failingProducerLosesItsInterfacesAndNobodyElses_data();
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
    void longPathReachesTheDeviceAccessWhole();
    void destructorUnloadsEveryListedProducer();
};

void tst_CDevicesEnum_producers::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_producers::samePathTwiceIsOneProducer()
{
    ProducerUnderTest test;
    test.enumerator.AddCtiPath(pathOf(kCtiA));

    QCOMPARE(test.pass(), QStringList("interface new if0"));
}

void tst_CDevicesEnum_producers::pathsThatDifferInCaseAreTwoProducers()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface("/cti/A.cti", genTLInterface("upper"));
    test.enumerator.AddCtiPath(pathOf("/cti/A.cti"));

    QCOMPARE(test.pass(), QStringList({"interface new if0", "interface new upper"}));
}

void tst_CDevicesEnum_producers::producersAreEnumeratedInTheOrderOfAdding()
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

void tst_CDevicesEnum_producers::interfaceSeenTwiceKeepsItsIdAndIsUpdated()
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

void tst_CDevicesEnum_producers::interfaceEventIsOfType16WithAnyGenTLTransport_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("per handle") << int(KELA_INTERFACE_TYPE_GENTL);
    QTest::newRow("per record") << int(KELA_INTERFACE_TYPE_GENTL_INTERFACE);
}

void tst_CDevicesEnum_producers::interfaceEventIsOfType16WithAnyGenTLTransport()
{
    QFETCH(int, type);
    ProducerUnderTest test(static_cast<KELA_INTERFACE_TYPE>(type));

    test.enumerator.EnumDevices();

    QCOMPARE(test.recorder.takeEvents().first().interface.interfaceType, 16U);
}

void tst_CDevicesEnum_producers::interfaceRecordIsCopiedWholeButForItsId()
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

void tst_CDevicesEnum_producers::vanishedInterfaceIsReportedRemovedOnce()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    test.pass();

    scriptedAccess().unplugInterface(kCtiA, "if0");

    QCOMPARE(test.pass(), QStringList({"interface updated if1", "interface removed if0"}));
    QCOMPARE(test.pass(), QStringList("interface updated if1"));
}

void tst_CDevicesEnum_producers::failingProducerLosesItsInterfacesAndNobodyElses_data()
{
    addFailures();
}

void tst_CDevicesEnum_producers::failingProducerLosesItsInterfacesAndNobodyElses()
{
    QFETCH(const unsigned int, code);
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiB, genTLInterface("b0"));
    test.enumerator.AddCtiPath(pathOf(kCtiB));
    test.pass();

    scriptedAccess().fail(code, Operation::EnumInterfacesByGenTL, kCtiA);

    QCOMPARE(test.pass(), QStringList({"interface updated b0", "interface removed if0"}));
    QCOMPARE(test.enumerator.EnumDevices(), 0U);
}

void tst_CDevicesEnum_producers::twoProducersWithTheSameTextAndNumberShareOneId()
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

void tst_CDevicesEnum_producers::missingObjectGivesItsCodeAndNoInterfaces()
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

void tst_CDevicesEnum_producers::interfaceCountAbove256ReadsTheListOnly()
{
    ProducerUnderTest test;
    for (uint32_t number = 1; number < 300; ++number) {
        scriptedAccess().plugInterface(kCtiA, genTLInterface("if0", number));
    }
    scriptedAccess().claimCount(0xFFFFFFFFU);

    QCOMPARE(test.pass().size(), 256);
}

void tst_CDevicesEnum_producers::producerTellsCountAndIdsOfItsInterfaces()
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

void tst_CDevicesEnum_producers::indexOutOfRangeGivesMinusOne_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("the count") << 1;
    QTest::newRow("far out") << 0x7FFFFFFF;
}

void tst_CDevicesEnum_producers::indexOutOfRangeGivesMinusOne()
{
    QFETCH(int, index);
    ProducerUnderTest test;
    test.pass();
    int id = -5;

    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), index, &id);

    QCOMPARE(id, -1);
}

void tst_CDevicesEnum_producers::unknownProducerHasNoInterfaces()
{
    const CDevicesEnum enumerator;
    int count = -5;
    int id = -5;

    enumerator.GetCtiInterfaceCount(pathOf(kCtiB), &count);
    enumerator.GetCtiInterfaceID(pathOf(kCtiB), 0, &id);

    QCOMPARE(count, 0);
    QCOMPARE(id, -1);
}

void tst_CDevicesEnum_producers::nullResultsAreLeftAlone()
{
    ProducerUnderTest test;
    test.pass();
    unsigned char text[] = "if0";

    test.enumerator.GetCtiInterfaceCount(pathOf(kCtiA), nullptr);
    test.enumerator.GetCtiInterfaceID(pathOf(kCtiA), 0, nullptr);

    QCOMPARE(int(test.enumerator.GetGENTLIFInfo(text, 0, nullptr).id), ProducerUnderTest::interfaceId("if0"));
}

void tst_CDevicesEnum_producers::knownInterfaceIsFoundByTextAndNumber()
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

void tst_CDevicesEnum_producers::longPathReachesTheDeviceAccessWhole()
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

void tst_CDevicesEnum_producers::destructorUnloadsEveryListedProducer()
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

QTEST_GUILESS_MAIN(tst_CDevicesEnum_producers)
#include "tst_cdevicesenum_producers.moc"
