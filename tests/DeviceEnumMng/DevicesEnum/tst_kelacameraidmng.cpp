// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/KelACameraIdMng.h>

#include <ScriptedRecords.h>

#include <QtTest>

#include <cstring>
#include <set>
#include <thread>
#include <vector>

namespace
{

KELA_STRUCT_DEVICE_INFO recordOf(const KELA_DEVICE_INFO_EX &device)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = device;
    return record;
}

} // namespace

class tst_KelACameraIdMng : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removedDeviceReturnsWithItsEarlierId();
    void twoRegistriesGiveOneDeviceOneId();
    void clearedRegistryKeepsTheIds();
    void gigeIdentityIsSerialAndBothHardwareAddressWords();
    void usbIdentityIsTheSerialAlone();
    void cameraLinkIdentityIsSerialAndPort();
    void genTLIdentityIsSerialAndDeviceText();
    void gigeVariantSharesTheIdOfGigE();
    void devicesWithoutIdentityShareOneId();
    void identifierRangesFollowTheTransport_data();
    void identifierRangesFollowTheTransport();
    void fullSerialFieldIsReadWithoutOverrun();
    void unknownIdGivesAnAllZeroRecord();
    void recordIsCopiedWithItsReservedBytes();
    void addressFindsTheLowestGigeId();
    void addressOfOtherTransportsIsNotFound();
    void textIsPaddedToTheWidthAndNeverCut();
    void clearForgetsPresenceAndRecords();
    void deletedDeviceKeepsItsRecord();
    void registriesOnManyThreadsAgree();
};

void tst_KelACameraIdMng::removedDeviceReturnsWithItsEarlierId()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("returns"));
    const long id = registry.getDeviceID(record);
    registry.addDeviceID(id);

    registry.deleteDeviceID(id);
    registry.getDeviceID(recordOf(gigeCamera("came between")));

    QVERIFY(!registry.isPresent(id));
    QCOMPARE(registry.getDeviceID(record), id);
}

void tst_KelACameraIdMng::twoRegistriesGiveOneDeviceOneId()
{
    KelACameraIdMng first;
    KelACameraIdMng second;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(usbCamera("seen by two"));

    QCOMPARE(second.getDeviceID(record), first.getDeviceID(record));
}

void tst_KelACameraIdMng::clearedRegistryKeepsTheIds()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("cleared"));
    const long id = registry.getDeviceID(record);

    registry.Clear();

    QCOMPARE(registry.getDeviceID(record), id);
}

void tst_KelACameraIdMng::gigeIdentityIsSerialAndBothHardwareAddressWords()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("gige identity"));
    KELA_STRUCT_DEVICE_INFO otherHigh = record;
    otherHigh.deviceInfo.special.gige.macHigh += 1;
    KELA_STRUCT_DEVICE_INFO otherLow = record;
    otherLow.deviceInfo.special.gige.macLow += 1;
    KELA_STRUCT_DEVICE_INFO otherAddress = record;
    otherAddress.deviceInfo.special.gige.currentIp += 1;

    const long id = registry.getDeviceID(record);

    QVERIFY(registry.getDeviceID(otherHigh) != id);
    QVERIFY(registry.getDeviceID(otherLow) != id);
    QCOMPARE(registry.getDeviceID(otherAddress), id);
}

void tst_KelACameraIdMng::usbIdentityIsTheSerialAlone()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(usbCamera("usb identity"));
    KELA_STRUCT_DEVICE_INFO onOtherPort = record;
    onOtherPort.deviceInfo.special.usb.portLocator[1] = 7;

    QCOMPARE(registry.getDeviceID(onOtherPort), registry.getDeviceID(record));
}

void tst_KelACameraIdMng::cameraLinkIdentityIsSerialAndPort()
{
    KelACameraIdMng registry;
    const long id = registry.getDeviceID(recordOf(cameraLinkCamera("cl", "port 0")));

    QVERIFY(registry.getDeviceID(recordOf(cameraLinkCamera("cl", "port 1"))) != id);
    QCOMPARE(registry.getDeviceID(recordOf(cameraLinkCamera("cl", "port 0"))), id);
}

void tst_KelACameraIdMng::genTLIdentityIsSerialAndDeviceText()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO record = recordOf(genTLDevice("gentl identity", "if0"));
    KELA_STRUCT_DEVICE_INFO onOtherInterface = recordOf(genTLDevice("gentl identity", "if1"));
    onOtherInterface.deviceInfo.transport = KELA_INTERFACE_TYPE_GENTL_INTERFACE;
    KELA_STRUCT_DEVICE_INFO otherText = record;
    setField(otherText.deviceInfo.special.genTL.deviceId, "another");

    QCOMPARE(registry.getDeviceID(onOtherInterface), registry.getDeviceID(record));
    QVERIFY(registry.getDeviceID(otherText) != registry.getDeviceID(record));
}

void tst_KelACameraIdMng::gigeVariantSharesTheIdOfGigE()
{
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("variant"));
    const long id = registry.getDeviceID(record);

    record.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE_VARIANT;

    QCOMPARE(registry.getDeviceID(record), id);
}

void tst_KelACameraIdMng::devicesWithoutIdentityShareOneId()
{
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO ieee1394 = recordOf(gigeCamera("no identity 1"));
    ieee1394.deviceInfo.transport = KELA_INTERFACE_TYPE_1394;
    KELA_STRUCT_DEVICE_INFO further = recordOf(gigeCamera("no identity 2"));
    further.deviceInfo.transport = KELA_INTERFACE_TYPE_FURTHER;
    KELA_STRUCT_DEVICE_INFO network = recordOf(gigeCamera("no identity 3"));
    network.deviceInfo.transport = KELA_INTERFACE_TYPE_NETWORK;

    const long id = registry.getDeviceID(ieee1394);

    QCOMPARE(registry.getDeviceID(further), id);
    QCOMPARE(registry.getDeviceID(network), id);
}

void tst_KelACameraIdMng::identifierRangesFollowTheTransport_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<int>("base");
    QTest::newRow("GigE") << int(KELA_INTERFACE_TYPE_GIGE) << 0;
    QTest::newRow("GigE variant") << int(KELA_INTERFACE_TYPE_GIGE_VARIANT) << 0;
    QTest::newRow("USB") << int(KELA_INTERFACE_TYPE_USB) << 30000;
    QTest::newRow("Camera Link") << int(KELA_INTERFACE_TYPE_CAMERALINK) << 40000;
    QTest::newRow("GenTL per handle") << int(KELA_INTERFACE_TYPE_GENTL) << 50000;
    QTest::newRow("GenTL per record") << int(KELA_INTERFACE_TYPE_GENTL_INTERFACE) << 50000;
}

void tst_KelACameraIdMng::identifierRangesFollowTheTransport()
{
    QFETCH(int, transport);
    QFETCH(int, base);
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("range " + std::to_string(transport)));
    record.deviceInfo.transport = static_cast<uint32_t>(transport);

    const long id = registry.getDeviceID(record);

    QVERIFY(id > base && id < base + 10000);
}

void tst_KelACameraIdMng::fullSerialFieldIsReadWithoutOverrun()
{
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO full = recordOf(usbCamera(std::string(64, 'S')));
    // What follows the field is not part of the serial number.
    full.deviceInfo.special.usb.portLocator[0] = 'X';
    KELA_STRUCT_DEVICE_INFO other = full;
    other.deviceInfo.special.usb.portLocator[0] = 'Y';

    QCOMPARE(registry.getDeviceID(other), registry.getDeviceID(full));
    QVERIFY(registry.getDeviceID(recordOf(usbCamera(std::string(63, 'S')))) != registry.getDeviceID(full));
}

void tst_KelACameraIdMng::unknownIdGivesAnAllZeroRecord()
{
    KelACameraIdMng registry;
    const KELA_STRUCT_DEVICE_INFO zero = {};

    const KELA_STRUCT_DEVICE_INFO record = registry.getDeviceInfo(4711);

    QCOMPARE(std::memcmp(&record, &zero, sizeof(zero)), 0);
}

void tst_KelACameraIdMng::recordIsCopiedWithItsReservedBytes()
{
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO record = {};
    std::memset(static_cast<void *>(&record), 0xA5, sizeof(record));

    registry.updateDeviceInfo(1, record);
    const KELA_STRUCT_DEVICE_INFO kept = registry.getDeviceInfo(1);

    QCOMPARE(std::memcmp(&kept, &record, sizeof(record)), 0);
}

void tst_KelACameraIdMng::addressFindsTheLowestGigeId()
{
    KelACameraIdMng registry;
    KELA_STRUCT_DEVICE_INFO later = recordOf(gigeCamera("later", 50));
    later.deviceId = 9;
    KELA_STRUCT_DEVICE_INFO earlier = recordOf(gigeCamera("earlier", 50));
    earlier.deviceId = 4;
    earlier.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE_VARIANT;
    registry.updateDeviceInfo(9, later);
    registry.updateDeviceInfo(4, earlier);

    KELA_STRUCT_DEVICE_INFO found = {};

    QVERIFY(registry.findDeviceInfoByIP(ipv4(192, 168, 10, 50), found));
    QCOMPARE(found.deviceId, 4);
    QVERIFY(!registry.findDeviceInfoByIP(ipv4(192, 168, 10, 51), found));
}

void tst_KelACameraIdMng::addressOfOtherTransportsIsNotFound()
{
    KelACameraIdMng registry;
    for (const uint32_t transport :
         {KELA_INTERFACE_TYPE_USB, KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL,
          KELA_INTERFACE_TYPE_GENTL_INTERFACE, KELA_INTERFACE_TYPE_NETWORK}) {
        KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("not GigE", 60));
        record.deviceInfo.transport = transport;
        registry.updateDeviceInfo(static_cast<long>(transport), record);
    }

    KELA_STRUCT_DEVICE_INFO found = {};

    QVERIFY(!registry.findDeviceInfoByIP(ipv4(192, 168, 10, 60), found));
}

void tst_KelACameraIdMng::textIsPaddedToTheWidthAndNeverCut()
{
    QCOMPARE(KelACameraIdMng::stringFormat("7", 3), QString("007"));
    QCOMPARE(KelACameraIdMng::stringFormat("1234", 3), QString("1234"));
    QCOMPARE(KelACameraIdMng::stringFormat("", 2), QString("00"));
}

void tst_KelACameraIdMng::clearForgetsPresenceAndRecords()
{
    KelACameraIdMng registry;
    registry.addDeviceID(3);
    registry.updateDeviceInfo(3, recordOf(gigeCamera("forgotten", 70)));

    registry.Clear();

    KELA_STRUCT_DEVICE_INFO found = {};
    QVERIFY(registry.DeviceIdList().isEmpty());
    QVERIFY(!registry.findDeviceInfoByIP(ipv4(192, 168, 10, 70), found));
}

void tst_KelACameraIdMng::deletedDeviceKeepsItsRecord()
{
    KelACameraIdMng registry;
    registry.addDeviceID(5);
    registry.updateDeviceInfo(5, recordOf(gigeCamera("kept", 80)));

    registry.deleteDeviceID(5);

    QVERIFY(registry.DeviceIdList().isEmpty());
    QCOMPARE(registry.getDeviceInfo(5).deviceInfo.special.gige.currentIp, ipv4(192, 168, 10, 80));
}

void tst_KelACameraIdMng::registriesOnManyThreadsAgree()
{
    constexpr int kThreads = 4;
    constexpr int kDevices = 200;
    std::vector<std::vector<long>> ids(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (std::vector<long> &own : ids) {
        threads.emplace_back([&own] {
            KelACameraIdMng registry;
            for (int device = 0; device < kDevices; ++device) {
                own.push_back(registry.getDeviceID(recordOf(gigeCamera("thread " + std::to_string(device)))));
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    for (const std::vector<long> &own : ids) {
        QVERIFY(own == ids.front());
    }
    QCOMPARE(std::set<long>(ids.front().begin(), ids.front().end()).size(), std::size_t(kDevices));
}

QTEST_GUILESS_MAIN(tst_KelACameraIdMng)
#include "tst_kelacameraidmng.moc"
