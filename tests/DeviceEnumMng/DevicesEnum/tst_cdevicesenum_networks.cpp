// SPDX-License-Identifier: Apache-2.0
// Cards of a network namespace of its own: virtual ones, made and addressed with ip, and the real route.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "CountedRoute.h"
#include "EventRecorder.h"
#include "LogCapture.h"
#include "VirtualCards.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

namespace
{

// The card events of one listing.
QVector<RecordedEvent> listing(CDevicesEnum &enumerator, EventRecorder &recorder)
{
    recorder.takeEvents();
    enumerator.EnumNetWorks();
    return recorder.takeEvents();
}

QStringList texts(const QVector<RecordedEvent> &events)
{
    QStringList result;
    for (const RecordedEvent &event : events) {
        result.append(event.text());
    }
    return result;
}

uint32_t gatewayOf(const RecordedEvent &event)
{
    return event.interface.special.network.addresses[0].gateway;
}

} // namespace

class tst_CDevicesEnum_networks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void cardBecomesARecord();
    void cardIsNewThenUpdatedThenRemovedOnce();
    void cardThatReturnsHasItsEarlierId();
    void cardThatIsRenamedKeepsItsId();
    void cardsWithOneHardwareAddressShareOneId();
    void loopbackIsNeverListed();
    void cardWithoutIpv4AddressIsNeverListed();
    void cardThatIsDownIsListedWithEmptyBracketsAndAddressZero();
    void lastAddressOfACardWins();
    void gatewayComesFromTheRoutingTable();
    void gatewayOfAnotherSubnetIsNotTaken();
    void routeIsFoundOutsideThePath();
    void missingRouteProgramLeavesTheGatewayUnset();
    void routeIsRunOncePerCardAndPass();
    void nameWithShellCharactersGetsNoGatewayAndRunsNothing();
    void nameLikeAnOptionGetsNoGateway();
    void cardEventIsOfTheEnumeratorsType_data();
    void cardEventIsOfTheEnumeratorsType();
    void cardsAreReportedBeforeDevices();
    void otherTransportsListNoCards();
    void deviceGetsTheBlockOfItsCard();
    void deviceSeenThroughTheOtherAddressOfItsCardHasNoCard();
    void reachabilityFollowsTheCard();
};

void tst_CDevicesEnum_networks::initTestCase()
{
    if (QStandardPaths::findExecutable("ip").isEmpty()) {
        QFAIL("iproute2 is not installed");
    }
    QVERIFY(ip({"link", "set", "dev", "lo", "up"}));
}

void tst_CDevicesEnum_networks::init()
{
    scriptedAccess().reset();
    removeAllCards();
}

void tst_CDevicesEnum_networks::cleanup()
{
    removeAllCards();
}

void tst_CDevicesEnum_networks::cardBecomesARecord()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:01") && addAddress("card-a", "10.1.0.1/20"));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(events.size(), 1);
    const KELA_NETWORK card = events.first().interface.special.network;
    KELA_NETWORK expected = {};
    expected.id = card.id;
    setField(expected.name, "card-a[10.1.0.1]");
    setField(expected.hardwareAddress, "02:00:00:00:0A:01");
    expected.cardValue = 1000;
    expected.addressCount = 1;
    expected.addresses[0] = {ipv4(10, 1, 0, 1), ipv4(255, 255, 240, 0), 0xFFFFFFFFU};
    QVERIFY(card.id > 80000);
    QCOMPARE(std::memcmp(&card, &expected, sizeof(card)), 0);
    QVERIFY(!events.first().hasDevice);
}

void tst_CDevicesEnum_networks::cardIsNewThenUpdatedThenRemovedOnce()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:02") && addAddress("card-a", "10.1.0.1/24"));

    QCOMPARE(texts(listing(enumerator, recorder)), QStringList("interface new card-a[10.1.0.1]"));
    QCOMPARE(texts(listing(enumerator, recorder)), QStringList("interface updated card-a[10.1.0.1]"));
    removeAllCards();
    QCOMPARE(texts(listing(enumerator, recorder)), QStringList("interface removed card-a[10.1.0.1]"));
    QCOMPARE(texts(listing(enumerator, recorder)), QStringList());
}

void tst_CDevicesEnum_networks::cardThatReturnsHasItsEarlierId()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:03") && addAddress("card-a", "10.1.0.1/24"));
    const uint32_t id = listing(enumerator, recorder).first().interface.special.network.id;
    removeAllCards();
    listing(enumerator, recorder);

    QVERIFY(makeCard("card-b", "02:00:00:00:0a:03") && addAddress("card-b", "10.2.0.1/24"));
    const RecordedEvent event = listing(enumerator, recorder).first();

    QCOMPARE(event.text(), QString("interface new card-b[10.2.0.1]"));
    QCOMPARE(event.interface.special.network.id, id);
}

void tst_CDevicesEnum_networks::cardThatIsRenamedKeepsItsId()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:04") && addAddress("card-a", "10.1.0.1/24"));
    listing(enumerator, recorder);

    QVERIFY(ip({"link", "set", "dev", "card-a", "down"}) &&
            ip({"link", "set", "dev", "card-a", "name", "card-b"}) && bringUp("card-b"));

    QCOMPARE(texts(listing(enumerator, recorder)), QStringList("interface updated card-b[10.1.0.1]"));
}

void tst_CDevicesEnum_networks::cardsWithOneHardwareAddressShareOneId()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:05") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(makeCard("card-b", "02:00:00:00:0a:05") && addAddress("card-b", "10.2.0.1/24"));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(events.size(), 2);
    QCOMPARE(events.at(1).interface.special.network.id, events.at(0).interface.special.network.id);
    // Known means known before the listing.
    QCOMPARE(events.at(1).kind, KELA_INTERFACE_STATE_INTERFACE_NEW);
}

void tst_CDevicesEnum_networks::loopbackIsNeverListed()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(ip({"link", "set", "dev", "lo", "up"}) && addAddress("lo", "127.0.0.2/8"));

    QCOMPARE(texts(listing(enumerator, recorder)), QStringList());
}

void tst_CDevicesEnum_networks::cardWithoutIpv4AddressIsNeverListed()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:06") && addAddress("card-a", "fd00::1/64"));

    QCOMPARE(texts(listing(enumerator, recorder)), QStringList());
}

void tst_CDevicesEnum_networks::cardThatIsDownIsListedWithEmptyBracketsAndAddressZero()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:07") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(ip({"link", "set", "dev", "card-a", "down"}));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(texts(events), QStringList("interface new card-a[]"));
    const KELA_NETWORK_ADDRESS address = events.first().interface.special.network.addresses[0];
    QCOMPARE(address.address, 0U);
    QCOMPARE(address.mask, ipv4(255, 255, 255, 0));
    QCOMPARE(events.first().interface.special.network.addressCount, 1U);
}

void tst_CDevicesEnum_networks::lastAddressOfACardWins()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:08") && addAddress("card-a", "10.1.0.1/24") &&
            addAddress("card-a", "10.2.0.1/16") && addAddress("card-a", "fd00::1/64"));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(texts(events), QStringList("interface new card-a[10.2.0.1]"));
    QCOMPARE(events.first().interface.special.network.addresses[0].mask, ipv4(255, 255, 0, 0));
}

void tst_CDevicesEnum_networks::gatewayComesFromTheRoutingTable()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:09") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(makeCard("card-b", "02:00:00:00:0a:0a") && addAddress("card-b", "10.2.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.0.254", "dev", "card-a"}));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(texts(events), QStringList({"interface new card-a[10.1.0.1]", "interface new card-b[10.2.0.1]"}));
    QCOMPARE(gatewayOf(events.at(0)), ipv4(10, 1, 0, 254));
    QCOMPARE(gatewayOf(events.at(1)), 0xFFFFFFFFU);
}

void tst_CDevicesEnum_networks::gatewayOfAnotherSubnetIsNotTaken()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:0b") && addAddress("card-a", "10.1.0.1/16"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.7.254", "dev", "card-a"}));

    QCOMPARE(gatewayOf(listing(enumerator, recorder).first()), 0xFFFFFFFFU);
}

void tst_CDevicesEnum_networks::routeIsFoundOutsideThePath()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:0c") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.0.254", "dev", "card-a"}));
    const QByteArray before = qgetenv("PATH");

    qputenv("PATH", "/usr/bin:/bin");
    const QVector<RecordedEvent> events = listing(enumerator, recorder);
    qputenv("PATH", before);

    QCOMPARE(gatewayOf(events.first()), ipv4(10, 1, 0, 254));
}

void tst_CDevicesEnum_networks::missingRouteProgramLeavesTheGatewayUnset()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:0d") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.0.254", "dev", "card-a"}));
    const QTemporaryDir folder;
    QFile program(folder.filePath("route"));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\nexit 127\n");
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    program.close();
    const QByteArray before = qgetenv("PATH");

    qputenv("PATH", QFile::encodeName(folder.path()) + ":" + before);
    const QVector<RecordedEvent> events = listing(enumerator, recorder);
    qputenv("PATH", before);

    QCOMPARE(gatewayOf(events.first()), 0xFFFFFFFFU);
}

void tst_CDevicesEnum_networks::routeIsRunOncePerCardAndPass()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:0e") && addAddress("card-a", "10.1.0.1/24") &&
            addAddress("card-a", "10.3.0.1/24"));
    QVERIFY(makeCard("card-b", "02:00:00:00:0a:0f") && addAddress("card-b", "10.2.0.1/24") &&
            addAddress("card-b", "10.4.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.3.0.254", "dev", "card-a"}));
    const CountedRoute route;

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(events.size(), 2);
    QCOMPARE(gatewayOf(events.first()), ipv4(10, 3, 0, 254));
    QCOMPARE(route.runs(), 2);
}

void tst_CDevicesEnum_networks::nameWithShellCharactersGetsNoGatewayAndRunsNothing()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("c;>witness", "02:00:00:00:0a:10") && addAddress("c;>witness", "10.1.0.1/24"));
    QVERIFY(makeCard("$(>witness2)", "02:00:00:00:0a:11") && addAddress("$(>witness2)", "10.2.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.0.254", "dev", "c;>witness"}));
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);
    QDir::setCurrent(before);

    QCOMPARE(texts(events),
             QStringList({"interface new c;>witness[10.1.0.1]", "interface new $(>witness2)[10.2.0.1]"}));
    QCOMPARE(gatewayOf(events.first()), 0xFFFFFFFFU);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

void tst_CDevicesEnum_networks::nameLikeAnOptionGetsNoGateway()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:12") && addAddress("card-a", "10.1.0.2/24"));
    // As an option of grep this name lets the lines of every other card through.
    QVERIFY(makeCard("-vX", "02:00:00:00:0a:13") && addAddress("-vX", "10.1.0.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "10.1.0.254", "dev", "card-a"}));

    const QVector<RecordedEvent> events = listing(enumerator, recorder);

    QCOMPARE(texts(events), QStringList({"interface new card-a[10.1.0.2]", "interface new -vX[10.1.0.1]"}));
    QCOMPARE(gatewayOf(events.at(0)), ipv4(10, 1, 0, 254));
    QCOMPARE(gatewayOf(events.at(1)), 0xFFFFFFFFU);
}

void tst_CDevicesEnum_networks::cardEventIsOfTheEnumeratorsType_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("GigE") << int(KELA_INTERFACE_TYPE_GIGE);
    QTest::newRow("network") << int(KELA_INTERFACE_TYPE_NETWORK);
    QTest::newRow("GigE variant") << int(KELA_INTERFACE_TYPE_GIGE_VARIANT);
    QTest::newRow("GigE and USB") << int(KELA_INTERFACE_TYPE_GIGE | KELA_INTERFACE_TYPE_USB);
}

void tst_CDevicesEnum_networks::cardEventIsOfTheEnumeratorsType()
{
    QFETCH(int, type);
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:14") && addAddress("card-a", "10.1.0.1/24"));
    enumerator.Init(static_cast<KELA_INTERFACE_TYPE>(type), false);

    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(texts(events), QStringList({"begin", "interface new card-a[10.1.0.1]", "end 0"}));
    QCOMPARE(events.at(1).interface.interfaceType, static_cast<uint32_t>(type));
}

void tst_CDevicesEnum_networks::cardsAreReportedBeforeDevices()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:15") && addAddress("card-a", "192.168.10.1/24"));
    scriptedAccess().plug(gigeCamera("A1"));
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);

    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    QCOMPARE(texts(recorder.takeEvents()),
             QStringList({"begin", "interface new card-a[192.168.10.1]", "new A1", "end 0"}));
}

void tst_CDevicesEnum_networks::otherTransportsListNoCards()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:16") && addAddress("card-a", "10.1.0.1/24"));
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);

    enumerator.UpdateOnce(true, true);
    QVERIFY(recorder.waitForEnds(1));

    QCOMPARE(texts(recorder.takeEvents()), QStringList({"begin", "end 0"}));
}

void tst_CDevicesEnum_networks::deviceGetsTheBlockOfItsCard()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:17") && addAddress("card-a", "192.168.10.1/24"));
    QVERIFY(ip({"route", "add", "default", "via", "192.168.10.254", "dev", "card-a"}));
    enumerator.EnumNetWorks();
    const LogCapture log;

    const KELA_DEVICE_NETWORK block = enumerator.GetDeviceNetWorkInfo(gigeCamera("A1"));

    KELA_DEVICE_NETWORK expected = {};
    expected.found = 1;
    setField(expected.name, "card-a[192.168.10.1]");
    setField(expected.hardwareAddress, "02:00:00:00:0A:17");
    expected.cardValue = 1000;
    expected.address = ipv4(192, 168, 10, 1);
    expected.mask = ipv4(255, 255, 255, 0);
    expected.gateway = ipv4(192, 168, 10, 254);
    QCOMPARE(std::memcmp(&block, &expected, sizeof(block)), 0);
    QCOMPARE(log.texts(), QStringList("DeviceSerial: A1; Netchard: card-a[192.168.10.1]"));
}

void tst_CDevicesEnum_networks::deviceSeenThroughTheOtherAddressOfItsCardHasNoCard()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:18") && addAddress("card-a", "192.168.10.1/24") &&
            addAddress("card-a", "10.1.0.1/24"));
    enumerator.EnumNetWorks();
    const LogCapture log;

    KELA_DEVICE_NETWORK expected = {};
    expected.cardValue = 1000;
    const KELA_DEVICE_NETWORK block = enumerator.GetDeviceNetWorkInfo(gigeCamera("A1"));

    QCOMPARE(std::memcmp(&block, &expected, sizeof(block)), 0);
    QCOMPARE(log.texts(), QStringList());
}

void tst_CDevicesEnum_networks::reachabilityFollowsTheCard()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    QVERIFY(makeCard("card-a", "02:00:00:00:0a:19") && addAddress("card-a", "192.168.10.1/24"));
    KELA_DEVICE_INFO_EX foreign = gigeCamera("A2");
    foreign.special.gige.currentIp = ipv4(192, 168, 77, 5);
    scriptedAccess().plug(gigeCamera("A1"));
    scriptedAccess().plug(foreign);
    enumerator.EnumNetWorks();
    recorder.takeEvents();

    enumerator.EnumDevices();

    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(events.at(0).device.deviceState, int32_t(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(events.at(0).device.network.found, uint8_t(1));
    QCOMPARE(events.at(1).device.deviceState, int32_t(KELA_DEV_STATE_GIGE_UNREACHABLE));
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_networks)
#include "tst_cdevicesenum_networks.moc"
