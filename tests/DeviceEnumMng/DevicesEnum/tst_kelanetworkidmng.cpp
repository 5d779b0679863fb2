// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/KelANetWorkIdMng.h>

#include <ScriptedRecords.h>

#include <QtTest>

#include <cstring>

namespace
{

KELA_NETWORK card(const std::string &hardwareAddress)
{
    KELA_NETWORK record = {};
    setField(record.hardwareAddress, hardwareAddress);
    return record;
}

} // namespace

class tst_KelANetWorkIdMng : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cardKeepsItsIdWhileItsHardwareAddressStays();
    void twoRegistriesGiveOneCardOneId();
    void cardIdsFollowEachOther();
    void fullHardwareAddressFieldIsReadWithoutOverrun();
    void addingTellsWhetherTheCardIsNew();
    void deletedCardKeepsItsRecord();
    void unknownIdGivesAnAllZeroRecord();
    void clearForgetsPresenceAndRecordsButNotIds();
    void recordIsCopiedWhole();
};

void tst_KelANetWorkIdMng::cardKeepsItsIdWhileItsHardwareAddressStays()
{
    KelANetWorkIdMng registry;
    KELA_NETWORK record = card("02:00:00:00:00:01");
    const long id = registry.getNetWorkID(record);

    setField(record.name, "renamed[10.0.0.1]");
    record.addresses[0].address = ipv4(10, 0, 0, 1);

    QCOMPARE(registry.getNetWorkID(record), id);
    QVERIFY(registry.getNetWorkID(card("02:00:00:00:00:02")) != id);
}

void tst_KelANetWorkIdMng::twoRegistriesGiveOneCardOneId()
{
    KelANetWorkIdMng first;
    KelANetWorkIdMng second;

    QCOMPARE(second.getNetWorkID(card("02:00:00:00:00:03")), first.getNetWorkID(card("02:00:00:00:00:03")));
}

void tst_KelANetWorkIdMng::cardIdsFollowEachOther()
{
    KelANetWorkIdMng registry;
    const long id = registry.getNetWorkID(card("02:00:00:00:01:01"));

    QVERIFY(id > 80000);
    QCOMPARE(registry.getNetWorkID(card("02:00:00:00:01:02")), id + 1);
}

void tst_KelANetWorkIdMng::fullHardwareAddressFieldIsReadWithoutOverrun()
{
    KelANetWorkIdMng registry;
    KELA_NETWORK full = card(std::string(64, 'A'));
    full.cardValue = 0x41414141;
    KELA_NETWORK other = full;
    other.cardValue = 0x42424242;

    QCOMPARE(registry.getNetWorkID(other), registry.getNetWorkID(full));
}

void tst_KelANetWorkIdMng::addingTellsWhetherTheCardIsNew()
{
    KelANetWorkIdMng registry;

    QVERIFY(registry.addNetWorkID(80001));
    QVERIFY(!registry.addNetWorkID(80001));
    registry.deleteNetWorkID(80001);
    QVERIFY(registry.addNetWorkID(80001));
}

void tst_KelANetWorkIdMng::deletedCardKeepsItsRecord()
{
    KelANetWorkIdMng registry;
    registry.addNetWorkID(80002);
    registry.updateNetWorkInfo(80002, card("kept"));

    registry.deleteNetWorkID(80002);

    QVERIFY(registry.NetWorkIdList().isEmpty());
    QCOMPARE(registry.getNetWorkInfo(80002).hardwareAddress[0], 'k');
}

void tst_KelANetWorkIdMng::unknownIdGivesAnAllZeroRecord()
{
    const KELA_NETWORK zero = {};

    const KELA_NETWORK record = KelANetWorkIdMng().getNetWorkInfo(1);

    QCOMPARE(std::memcmp(&record, &zero, sizeof(zero)), 0);
}

void tst_KelANetWorkIdMng::clearForgetsPresenceAndRecordsButNotIds()
{
    KelANetWorkIdMng registry;
    const long id = registry.getNetWorkID(card("cleared"));
    registry.addNetWorkID(id);
    registry.updateNetWorkInfo(id, card("cleared"));

    registry.Clear();

    QVERIFY(registry.NetWorkIdList().isEmpty());
    QCOMPARE(registry.getNetWorkInfo(id).hardwareAddress[0], '\0');
    QCOMPARE(registry.getNetWorkID(card("cleared")), id);
}

void tst_KelANetWorkIdMng::recordIsCopiedWhole()
{
    KelANetWorkIdMng registry;
    KELA_NETWORK record = {};
    std::memset(static_cast<void *>(&record), 0xA5, sizeof(record));

    registry.updateNetWorkInfo(1, record);
    const KELA_NETWORK kept = registry.getNetWorkInfo(1);

    QCOMPARE(std::memcmp(&kept, &record, sizeof(record)), 0);
}

QTEST_GUILESS_MAIN(tst_KelANetWorkIdMng)
#include "tst_kelanetworkidmng.moc"
