// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/DevicesEnum/FoundDevices.h>
#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

#include <cstring>

namespace
{

KELA_STRUCT_DEVICE_INFO recordOf(const KELA_DEVICE_INFO_EX &device)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = device;
    return record;
}

KELA_NETWORK card(const std::string &name, uint32_t address, uint32_t mask)
{
    KELA_NETWORK record = {};
    setField(record.name, name);
    setField(record.routeText, name + " route");
    setField(record.hardwareAddress, name + " mac");
    record.cardValue = 1000;
    record.addressCount = 1;
    record.addresses[0] = {address, mask, 0xFFFFFFFFU};
    return record;
}

KELA_USBCONTROLLER_INFO controller(int id, std::initializer_list<uint8_t> lastPort)
{
    KELA_USBCONTROLLER_INFO record = {};
    record.id = id;
    std::memset(record.portLocators, 0xFF, sizeof(record.portLocators));
    std::copy(lastPort.begin(), lastPort.end(), record.portLocators[15]);
    return record;
}

} // namespace

class tst_PassDecisions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void devicesAreOneByTheComparedFields_data();
    void devicesAreOneByTheComparedFields();
    void devicesThatDifferOutsideTheComparedFieldsAreOne();
    void genTLEnumeratorsCallNoTwoDevicesTheSame();
    void equalDevicesHaveEqualHashes();
    void listOfFoundDevicesKnowsWhatItHolds();
    void deviceFitsTheSubnetOfItsHostAddressWithoutCard();
    void deviceFitsTheSubnetOfItsCard();
    void deviceMustFitTheNarrowerOfBothMasks();
    void multicastAddressesEndWhere240Begins();
    void controllerIsFoundByItsPortInTheirByteOrder();
    void lastControllerServesDevicesThatMatchNone();
    void noControllersLeaveTheBlockZero();
    void controllersAreEqualByTheirIdentifiers();
    void cardIsFoundByTheHostAddress();
    void firstCardOfTheListWins();
    void furtherAddressesOfACardAreFoundUpToItsCount();
    void cardWithoutAddressesIsPassedOver();
    void deviceWithoutCardHasOnlyTheCardValue();
    void countsAreCutToTheList();
};

void tst_PassDecisions::devicesAreOneByTheComparedFields_data()
{
    QTest::addColumn<QByteArray>("left");
    QTest::addColumn<QByteArray>("right");
    QTest::addColumn<bool>("isSame");
    const auto bytes = [](const KELA_DEVICE_INFO_EX &device) {
        return QByteArray(static_cast<const char *>(static_cast<const void *>(&device)), sizeof(device));
    };
    const auto row = [&bytes](const char *name, const KELA_DEVICE_INFO_EX &left,
                              const KELA_DEVICE_INFO_EX &right,
                              bool isSame) { QTest::newRow(name) << bytes(left) << bytes(right) << isSame; };
    const KELA_DEVICE_INFO_EX gige = gigeCamera("S");

    KELA_DEVICE_INFO_EX other = gige;
    row("GigE, identical", gige, other, true);
    setField(other.serialNumber, "T");
    row("GigE, other serial number", gige, other, false);
    other = gige;
    setField(other.secondName, "2.0.0");
    row("GigE, other second name", gige, other, false);
    other = gige;
    setField(other.modelName, "SX-200");
    row("GigE, other model", gige, other, false);
    other = gige;
    other.special.gige.macHigh ^= 1U;
    row("GigE, other high word", gige, other, false);
    other = gige;
    other.special.gige.macLow ^= 1U;
    row("GigE, other low word", gige, other, false);
    other = gige;
    other.special.gige.hostIp ^= 1U;
    row("GigE, other card", gige, other, false);
    other = gige;
    other.special.gige.currentIp ^= 1U;
    row("GigE, other address", gige, other, true);
    other = gige;
    other.transport = KELA_INTERFACE_TYPE_GIGE_VARIANT;
    row("GigE against variant", gige, other, false);
    row("variant, identical", other, other, true);

    KELA_DEVICE_INFO_EX usb = usbCamera("S");
    other = usb;
    other.special.usb.portLocator[3] = 9;
    row("USB, other port", usb, other, true);
    row("Camera Link, same port", cameraLinkCamera("S", "p"), cameraLinkCamera("S", "p"), true);
    row("Camera Link, other port", cameraLinkCamera("S", "p"), cameraLinkCamera("S", "q"), false);
    row("GenTL, identical", genTLDevice("S", "if0"), genTLDevice("S", "if0"), false);
    other = gige;
    other.transport = KELA_INTERFACE_TYPE_NETWORK;
    row("network transport, identical", other, other, false);
    other.transport = KELA_INTERFACE_TYPE_NONE;
    row("no transport, identical", other, other, false);
}

void tst_PassDecisions::devicesAreOneByTheComparedFields()
{
    QFETCH(QByteArray, left);
    QFETCH(QByteArray, right);
    QFETCH(bool, isSame);
    KELA_DEVICE_INFO_EX leftDevice = {};
    KELA_DEVICE_INFO_EX rightDevice = {};
    std::memcpy(&leftDevice, left.constData(), sizeof(leftDevice));
    std::memcpy(&rightDevice, right.constData(), sizeof(rightDevice));

    QCOMPARE(isSameDevice(leftDevice, rightDevice), isSame);
    QCOMPARE(isSameDevice(rightDevice, leftDevice), isSame);
    QCOMPARE(CDevicesEnum().CompareDevice(recordOf(leftDevice), recordOf(rightDevice)), isSame);
}

void tst_PassDecisions::devicesThatDifferOutsideTheComparedFieldsAreOne()
{
    KELA_STRUCT_DEVICE_INFO left = recordOf(gigeCamera("S"));
    KELA_STRUCT_DEVICE_INFO right = left;
    std::memset(right.deviceInfo.special.gige.reserved432, 0xA5,
                sizeof(right.deviceInfo.special.gige.reserved432));
    setField(right.deviceInfo.special.gige.userDefinedName, "another name");
    right.deviceInfo.placement = KELA_PLACEMENT_OTHER;
    right.remote = 1;
    // Behind the NUL of a text stands what stood there before.
    right.deviceInfo.serialNumber[40] = 'x';

    QVERIFY(CDevicesEnum().CompareDevice(left, right));
}

void tst_PassDecisions::genTLEnumeratorsCallNoTwoDevicesTheSame()
{
    scriptedAccess().reset();
    for (const KELA_INTERFACE_TYPE type : {KELA_INTERFACE_TYPE_GENTL, KELA_INTERFACE_TYPE_GENTL_INTERFACE}) {
        CDevicesEnum enumerator;
        enumerator.Init(type, false);

        QVERIFY(!enumerator.CompareDevice(recordOf(gigeCamera("S")), recordOf(gigeCamera("S"))));
    }
}

void tst_PassDecisions::equalDevicesHaveEqualHashes()
{
    KELA_DEVICE_INFO_EX left = gigeCamera("S");
    KELA_DEVICE_INFO_EX right = left;
    right.special.gige.currentIp ^= 1U;
    right.serialNumber[40] = 'x';

    QCOMPARE(sameDeviceHash(left), sameDeviceHash(right));
}

void tst_PassDecisions::listOfFoundDevicesKnowsWhatItHolds()
{
    FoundDevices found;
    found.append(gigeCamera("A1"), KELA_INTERFACE_TYPE_GIGE);

    QVERIFY(found.contains(gigeCamera("A1")));
    QVERIFY(!found.contains(gigeCamera("A2")));
    QVERIFY(!found.contains(usbCamera("A1")));
}

void tst_PassDecisions::deviceFitsTheSubnetOfItsHostAddressWithoutCard()
{
    KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("S"));
    QVERIFY(isInSubnetOfItsCard(record));

    record.deviceInfo.special.gige.hostIp = ipv4(192, 168, 11, 1);
    QVERIFY(!isInSubnetOfItsCard(record));

    record.deviceInfo.special.gige.subnetMask = ipv4(255, 255, 0, 0);
    QVERIFY(isInSubnetOfItsCard(record));
}

void tst_PassDecisions::deviceFitsTheSubnetOfItsCard()
{
    KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("S"));
    record.network.found = 1;
    record.network.address = ipv4(192, 168, 10, 9);
    record.network.mask = ipv4(255, 255, 255, 0);
    // The card counts, not what the device says of its host side.
    record.deviceInfo.special.gige.hostIp = ipv4(10, 0, 0, 1);
    QVERIFY(isInSubnetOfItsCard(record));

    record.network.address = ipv4(192, 168, 11, 9);
    QVERIFY(!isInSubnetOfItsCard(record));
}

void tst_PassDecisions::deviceMustFitTheNarrowerOfBothMasks()
{
    KELA_STRUCT_DEVICE_INFO record = recordOf(gigeCamera("S"));
    record.network.found = 1;
    record.network.address = ipv4(192, 168, 11, 9);
    record.network.mask = ipv4(255, 255, 0, 0);
    record.deviceInfo.special.gige.subnetMask = ipv4(255, 255, 255, 0);
    QVERIFY(!isInSubnetOfItsCard(record));

    record.network.mask = ipv4(255, 255, 255, 0);
    record.deviceInfo.special.gige.subnetMask = ipv4(255, 255, 0, 0);
    QVERIFY(!isInSubnetOfItsCard(record));

    record.network.mask = ipv4(255, 255, 0, 0);
    QVERIFY(isInSubnetOfItsCard(record));
}

void tst_PassDecisions::multicastAddressesEndWhere240Begins()
{
    const CDevicesEnum enumerator;
    QVERIFY(!enumerator.IsMultiIPAdder(ipv4(223, 255, 255, 255)));
    QVERIFY(enumerator.IsMultiIPAdder(ipv4(224, 0, 0, 0)));
    QVERIFY(enumerator.IsMultiIPAdder(ipv4(239, 255, 255, 255)));
    QVERIFY(!enumerator.IsMultiIPAdder(ipv4(240, 0, 0, 0)));
    QVERIFY(!enumerator.IsMultiIPAdder(ipv4(192, 168, 10, 224)));
}

void tst_PassDecisions::controllerIsFoundByItsPortInTheirByteOrder()
{
    KELA_DEVICE_INFO_EX device = usbCamera("S");
    const uint8_t locator[4] = {1, 2, 3, 4};
    std::memcpy(device.special.usb.portLocator, locator, sizeof(locator));
    const QVector<KELA_USBCONTROLLER_INFO> controllers = {
        controller(10, {1, 2, 3, 4}), controller(11, {1, 2, 4, 3}), controller(12, {9, 9, 9, 9})};

    QCOMPARE(controllerOf(device, controllers).id, 11);
}

void tst_PassDecisions::lastControllerServesDevicesThatMatchNone()
{
    const QVector<KELA_USBCONTROLLER_INFO> controllers = {controller(10, {1, 1, 1, 1}),
                                                          controller(11, {2, 2, 2, 2})};

    QCOMPARE(controllerOf(usbCamera("S"), controllers).id, 11);
}

void tst_PassDecisions::noControllersLeaveTheBlockZero()
{
    const KELA_USBCONTROLLER_INFO zero = {};

    const KELA_USBCONTROLLER_INFO block = controllerOf(usbCamera("S"), {});

    QCOMPARE(std::memcmp(&block, &zero, sizeof(zero)), 0);
}

void tst_PassDecisions::controllersAreEqualByTheirIdentifiers()
{
    KELA_USBCONTROLLER_INFO left = controller(1, {1, 2, 3, 4});
    KELA_USBCONTROLLER_INFO right = controller(2, {5, 6, 7, 8});
    setField(left.identifier, std::string(192, 'i'));
    setField(right.identifier, std::string(192, 'i'));
    QVERIFY(CDevicesEnum().CompareUSBController(left, right));

    setField(right.identifier, std::string(191, 'i'));
    QVERIFY(!CDevicesEnum().CompareUSBController(left, right));
}

void tst_PassDecisions::cardIsFoundByTheHostAddress()
{
    const QVector<KELA_NETWORK> cards = {card("eth0", ipv4(10, 0, 0, 1), ipv4(255, 0, 0, 0)),
                                         card("eth1", ipv4(192, 168, 10, 1), ipv4(255, 255, 255, 0))};

    const KELA_DEVICE_NETWORK block = cardOf(gigeCamera("S"), cards);

    KELA_DEVICE_NETWORK expected = {};
    expected.found = 1;
    setField(expected.name, "eth1");
    setField(expected.routeText, "eth1 route");
    setField(expected.hardwareAddress, "eth1 mac");
    expected.cardValue = 1000;
    expected.address = ipv4(192, 168, 10, 1);
    expected.mask = ipv4(255, 255, 255, 0);
    expected.gateway = 0xFFFFFFFFU;
    QCOMPARE(std::memcmp(&block, &expected, sizeof(block)), 0);
}

void tst_PassDecisions::firstCardOfTheListWins()
{
    const QVector<KELA_NETWORK> cards = {card("eth0", ipv4(192, 168, 10, 1), ipv4(255, 255, 255, 0)),
                                         card("eth1", ipv4(192, 168, 10, 1), ipv4(255, 255, 0, 0))};

    QCOMPARE(cardOf(gigeCamera("S"), cards).mask, ipv4(255, 255, 255, 0));
}

void tst_PassDecisions::furtherAddressesOfACardAreFoundUpToItsCount()
{
    KELA_NETWORK many = card("eth0", ipv4(10, 0, 0, 1), ipv4(255, 0, 0, 0));
    many.addresses[1] = {ipv4(192, 168, 10, 1), ipv4(255, 255, 255, 0), 7};

    QCOMPARE(cardOf(gigeCamera("S"), {many}).found, uint8_t(0));
    many.addressCount = 2;
    QCOMPARE(cardOf(gigeCamera("S"), {many}).gateway, 7U);
    many.addressCount = 0xFFFFFFFFU;
    many.addresses[1] = {};
    QCOMPARE(cardOf(gigeCamera("S"), {many}).found, uint8_t(0));
}

void tst_PassDecisions::cardWithoutAddressesIsPassedOver()
{
    KELA_NETWORK none = card("eth0", ipv4(192, 168, 10, 1), ipv4(255, 255, 255, 0));
    none.addressCount = 0;

    QCOMPARE(cardOf(gigeCamera("S"), {none}).found, uint8_t(0));
}

void tst_PassDecisions::deviceWithoutCardHasOnlyTheCardValue()
{
    KELA_DEVICE_NETWORK expected = {};
    expected.cardValue = 1000;

    const KELA_DEVICE_NETWORK block = cardOf(gigeCamera("S"), {});

    QCOMPARE(std::memcmp(&block, &expected, sizeof(block)), 0);
}

void tst_PassDecisions::countsAreCutToTheList()
{
    QCOMPARE(readableCount(0), std::size_t(0));
    QCOMPARE(readableCount(256), std::size_t(256));
    QCOMPARE(readableCount(257), std::size_t(256));
    QCOMPARE(readableCount(0xFFFFFFFFU), std::size_t(256));
}

QTEST_GUILESS_MAIN(tst_PassDecisions)
#include "tst_passdecisions.moc"
