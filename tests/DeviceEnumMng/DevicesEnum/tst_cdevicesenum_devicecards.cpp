// SPDX-License-Identifier: Apache-2.0
// Several cards at once, and what devices of every network transport have of theirs.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"
#include "VirtualCards.h"

#include <QtTest>

namespace
{

QStringList listing(CDevicesEnum &enumerator, EventRecorder &recorder)
{
    recorder.takeEvents();
    enumerator.EnumNetWorks();
    QStringList texts;
    const QVector<RecordedEvent> events = recorder.takeEvents();
    for (const RecordedEvent &event : events) {
        texts.append(event.text());
    }
    return texts;
}

bool removeCard(const QString &name)
{
    return ip({"link", "del", "dev", name});
}

} // namespace

class tst_CDevicesEnum_devicecards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void cardsComeInTheirOrderAndTheVanishedOnesLast();
    void cardIsGoneWhenNoneOfItsHardwareAddressIsLeft();
    void cardIsRegisteredAfterItIsReported();
    void cardIsUnregisteredAfterItIsReported();
    void devicesOfEveryNetworkTransportGetTheirCard_data();
    void devicesOfEveryNetworkTransportGetTheirCard();
};

void tst_CDevicesEnum_devicecards::initTestCase()
{
    QVERIFY(ip({"link", "set", "dev", "lo", "up"}));
}

void tst_CDevicesEnum_devicecards::init()
{
    scriptedAccess().reset();
    removeAllCards();
}

void tst_CDevicesEnum_devicecards::cleanup()
{
    removeAllCards();
}

void tst_CDevicesEnum_devicecards::cardsComeInTheirOrderAndTheVanishedOnesLast()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0b:01") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(makeCard("card-b", "02:00:00:00:0b:02") && addAddress("card-b", "10.2.0.1/24"));
    QCOMPARE(listing(enumerator, recorder),
             QStringList({"interface new card-a[10.1.0.1]", "interface new card-b[10.2.0.1]"}));

    QVERIFY(removeCard("card-a"));
    QVERIFY(makeCard("card-c", "02:00:00:00:0b:03") && addAddress("card-c", "10.3.0.1/24"));

    QCOMPARE(listing(enumerator, recorder),
             QStringList({"interface updated card-b[10.2.0.1]", "interface new card-c[10.3.0.1]",
                          "interface removed card-a[10.1.0.1]"}));
}

void tst_CDevicesEnum_devicecards::cardIsGoneWhenNoneOfItsHardwareAddressIsLeft()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    QVERIFY(makeCard("card-a", "02:00:00:00:0b:04") && addAddress("card-a", "10.1.0.1/24"));
    QVERIFY(makeCard("card-b", "02:00:00:00:0b:04") && addAddress("card-b", "10.2.0.1/24"));
    listing(enumerator, recorder);

    QVERIFY(removeCard("card-a"));
    QCOMPARE(listing(enumerator, recorder), QStringList("interface updated card-b[10.2.0.1]"));

    QVERIFY(removeCard("card-b"));
    QCOMPARE(listing(enumerator, recorder), QStringList("interface removed card-b[10.2.0.1]"));
}

void tst_CDevicesEnum_devicecards::cardIsRegisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    int calls = 0;
    recorder.listenTo(enumerator, [&enumerator, &calls](const RecordedEvent &) {
        if (++calls == 1) {
            enumerator.EnumNetWorks();
        }
    });
    QVERIFY(makeCard("card-a", "02:00:00:00:0b:05") && addAddress("card-a", "10.1.0.1/24"));

    // The listing from inside the first report finds a card that is not registered yet.
    QCOMPARE(listing(enumerator, recorder),
             QStringList({"interface new card-a[10.1.0.1]", "interface new card-a[10.1.0.1]"}));
}

void tst_CDevicesEnum_devicecards::cardIsUnregisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    int removals = 0;
    recorder.listenTo(enumerator, [&enumerator, &removals](const RecordedEvent &event) {
        if (event.kind == KELA_INTERFACE_STATE_INTERFACE_REMOVED && ++removals == 1) {
            enumerator.EnumNetWorks();
        }
    });
    QVERIFY(makeCard("card-a", "02:00:00:00:0b:06") && addAddress("card-a", "10.1.0.1/24"));
    listing(enumerator, recorder);
    removeAllCards();

    QCOMPARE(listing(enumerator, recorder),
             QStringList({"interface removed card-a[10.1.0.1]", "interface removed card-a[10.1.0.1]"}));
}

void tst_CDevicesEnum_devicecards::devicesOfEveryNetworkTransportGetTheirCard_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<int>("free");
    QTest::addColumn<int>("unreachable");

    QTest::newRow("GigE") << 1 << int(KELA_DEV_STATE_GIGE_FREE) << int(KELA_DEV_STATE_GIGE_UNREACHABLE);
    QTest::newRow("network") << 128 << int(KELA_DEV_STATE_NETWORK_FREE)
                             << int(KELA_DEV_STATE_NETWORK_UNREACHABLE);
    QTest::newRow("GigE variant") << 256 << int(KELA_DEV_STATE_GIGE_FREE)
                                  << int(KELA_DEV_STATE_GIGE_UNREACHABLE);
}

void tst_CDevicesEnum_devicecards::devicesOfEveryNetworkTransportGetTheirCard()
{
    QFETCH(int, transport);
    QFETCH(int, free);
    QFETCH(int, unreachable);
    EventRecorder recorder;
    CDevicesEnum enumerator;
    recorder.listenTo(enumerator);
    enumerator.Init(static_cast<KELA_INTERFACE_TYPE>(transport), false);
    QVERIFY(makeCard("card-a", "02:00:00:00:0b:07") && addAddress("card-a", "192.168.10.1/24"));
    KELA_DEVICE_INFO_EX near = gigeCamera("A1");
    near.transport = static_cast<uint32_t>(transport);
    KELA_DEVICE_INFO_EX foreign = near;
    setField(foreign.serialNumber, "A2");
    foreign.special.gige.currentIp = ipv4(192, 168, 77, 5);
    scriptedAccess().plug(near);
    scriptedAccess().plug(foreign);
    enumerator.EnumNetWorks();
    recorder.takeEvents();

    enumerator.EnumDevices();

    const QVector<RecordedEvent> events = recorder.takeEvents();
    QCOMPARE(events.size(), 2);
    for (const RecordedEvent &event : events) {
        QCOMPARE(event.device.network.found, uint8_t(1));
        QCOMPARE(QByteArray(event.device.network.hardwareAddress), QByteArray("02:00:00:00:0B:07"));
    }
    QCOMPARE(events.at(0).device.deviceState, free);
    QCOMPARE(events.at(1).device.deviceState, unreachable);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_devicecards)
#include "tst_cdevicesenum_devicecards.moc"
