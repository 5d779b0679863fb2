// SPDX-License-Identifier: Apache-2.0
// The bytes of the records, written down here a second time: hosts read them in memory.
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>
#include <KelAIndustryControl/KelARecords.h>

#include <ScriptedRecords.h>

#include <QByteArray>
#include <QtTest>

#include <cstring>
#include <new>

namespace
{

class GoldenBytes
{
public:
    explicit GoldenBytes(int size)
        : m_bytes(size, '\0')
    {
    }

    GoldenBytes &number(int offset, quint32 value)
    {
        for (int index = 0; index < 4; ++index) {
            byte(offset + index, static_cast<quint8>(value >> (8 * index)));
        }
        return *this;
    }

    GoldenBytes &byte(int offset, quint8 value)
    {
        m_bytes[offset] = static_cast<char>(value);
        return *this;
    }

    GoldenBytes &text(int offset, const QByteArray &value)
    {
        m_bytes.replace(offset, value.size(), value);
        return *this;
    }

    GoldenBytes &block(int offset, const GoldenBytes &value) { return text(offset, value.m_bytes); }

    const QByteArray &bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

template <typename Record>
QByteArray bytesOf(const Record &record)
{
    return QByteArray(static_cast<const char *>(static_cast<const void *>(&record)), sizeof(Record));
}

KELA_GENTL_IF_INFO filledInterface()
{
    KELA_GENTL_IF_INFO interface = {};
    setField(interface.identifier, "if-text");
    setField(interface.displayName, "if-name");
    interface.number = 0x11111111;
    interface.id = 0x22222222;
    interface.state = 0x33333333;
    interface.hasBracketText = 0x44;
    setField(interface.bracketText, "bracket");
    setField(interface.alternativeName, "alternative");
    interface.producerToken = 0x55555555;
    return interface;
}

GoldenBytes goldenInterface()
{
    GoldenBytes golden(560);
    golden.text(0, "if-text").text(128, "if-name").number(192, 0x11111111).number(196, 0x22222222);
    golden.number(200, 0x33333333).byte(204, 0x44).text(205, "bracket").text(461, "alternative");
    golden.number(528, 0x55555555);
    return golden;
}

GoldenBytes goldenHead(quint32 transport)
{
    GoldenBytes golden(600);
    golden.number(0, transport).text(4, "model").text(68, "second").text(132, "serial").number(588, 2);
    return golden;
}

KELA_DEVICE_INFO_EX filledHead(uint32_t transport)
{
    KELA_DEVICE_INFO_EX device = {};
    device.transport = transport;
    setField(device.modelName, "model");
    setField(device.secondName, "second");
    setField(device.serialNumber, "serial");
    device.placement = KELA_PLACEMENT_OTHER;
    return device;
}

} // namespace

class tst_Records : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gigeDeviceHasItsGoldenBytes();
    void usbDeviceHasItsGoldenBytes();
    void cameraLinkDeviceHasItsGoldenBytes();
    void genTLDeviceHasItsGoldenBytes();
    void deviceRecordHasItsGoldenBytes();
    void networkCardHasItsGoldenBytes();
    void usbControllerHasItsGoldenBytes();
    void genTLInterfaceHasItsGoldenBytes();
    void interfaceEventHasItsGoldenBytes();
    void emptyInterfaceEventIsZeroToItsLastByte();
    void filterHasItsGoldenBytes();
    void nodeValueHasItsGoldenBytes();
    void fullFieldEndsAtItsLastByte();
    void byteFieldsAreReadLikeTextFields();
    void fieldIsReadAsUtf8();
};

void tst_Records::gigeDeviceHasItsGoldenBytes()
{
    KELA_DEVICE_INFO_EX device = filledHead(KELA_INTERFACE_TYPE_GIGE_VARIANT);
    KELA_GIGE_DEVICE_INFO &gige = device.special.gige;
    gige.macHigh = 0x01010101;
    gige.macLow = 0x02020202;
    gige.ipConfigOptions = 0x03030303;
    gige.ipConfigCurrent = 0x04040404;
    gige.currentIp = 0xC0A80A14;
    gige.subnetMask = 0xFFFFFF00;
    gige.gateway = 0xC0A80A01;
    setField(gige.manufacturerName, "vendor");
    setField(gige.userDefinedName, "user");
    gige.hostIp = 0xC0A80A02;
    gige.streamDestination = 0xEF000001;
    gige.streamHostPort = 0x00001234;
    gige.primaryApplicationIp = 0xC0A80A03;

    GoldenBytes golden = goldenHead(256);
    golden.number(196, 0x01010101).number(200, 0x02020202).number(204, 0x03030303).number(208, 0x04040404);
    golden.number(212, 0xC0A80A14).number(216, 0xFFFFFF00).number(220, 0xC0A80A01);
    golden.text(224, "vendor").text(352, "user").number(416, 0xC0A80A02);
    golden.number(420, 0xEF000001).number(424, 0x00001234).number(428, 0xC0A80A03);
    QCOMPARE(bytesOf(device), golden.bytes());
}

void tst_Records::usbDeviceHasItsGoldenBytes()
{
    KELA_DEVICE_INFO_EX device = filledHead(KELA_INTERFACE_TYPE_USB);
    KELA_USB_DEVICE_INFO &usb = device.special.usb;
    usb.portLocator[0] = 1;
    usb.portLocator[1] = 2;
    usb.portLocator[2] = 3;
    usb.portLocator[3] = 4;
    usb.usable = 0x05050505;
    setField(usb.manufacturerName, "vendor");
    setField(usb.userDefinedName, "user");
    usb.usbVersion = 0x0320;

    GoldenBytes golden = goldenHead(4);
    golden.byte(196, 1).byte(197, 2).byte(198, 3).byte(199, 4).number(204, 0x05050505);
    golden.text(400, "vendor").text(464, "user").number(528, 0x0320);
    QCOMPARE(bytesOf(device), golden.bytes());
}

void tst_Records::cameraLinkDeviceHasItsGoldenBytes()
{
    KELA_DEVICE_INFO_EX device = filledHead(KELA_INTERFACE_TYPE_CAMERALINK);
    setField(device.special.cameraLink.portName, "port");
    setField(device.special.cameraLink.manufacturerName, "vendor");

    GoldenBytes golden = goldenHead(8);
    golden.text(196, "port").text(324, "vendor");
    QCOMPARE(bytesOf(device), golden.bytes());
}

void tst_Records::genTLDeviceHasItsGoldenBytes()
{
    KELA_DEVICE_INFO_EX device = filledHead(KELA_INTERFACE_TYPE_GENTL);
    KELA_GENTL_DEVICE_INFO &genTL = device.special.genTL;
    setField(genTL.interfaceId, "interface");
    setField(genTL.deviceId, "device");
    setField(genTL.vendorName, "vendor");
    setField(genTL.userDefinedName, "user");
    genTL.interfaceNumber = 0x06060606;

    GoldenBytes golden = goldenHead(16);
    golden.text(196, "interface").text(260, "device").text(324, "vendor").text(516, "user");
    golden.number(580, 0x06060606);
    QCOMPARE(bytesOf(device), golden.bytes());
}

void tst_Records::deviceRecordHasItsGoldenBytes()
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = 0x01020304;
    record.deviceState = 0x05060708;
    record.deviceInfo = filledHead(1);
    record.network.found = 1;
    setField(record.network.name, "card");
    setField(record.network.routeText, "route");
    setField(record.network.hardwareAddress, "mac");
    record.network.cardValue = 1000;
    record.network.address = 0xC0A80A01;
    record.network.mask = 0xFFFFFF00;
    record.network.gateway = 0xFFFFFFFF;
    setField(record.usbController.name, "controller");
    record.genTLInterface = filledInterface();
    record.remote = 1;

    GoldenBytes golden(2300);
    golden.number(0, 0x01020304).number(4, 0x05060708).block(8, goldenHead(1));
    golden.byte(608, 1).text(609, "card").text(673, "route").text(737, "mac");
    golden.number(804, 1000).number(808, 0xC0A80A01).number(812, 0xFFFFFF00).number(816, 0xFFFFFFFF);
    golden.text(824, "controller").block(1272, goldenInterface()).byte(2280, 1);
    QCOMPARE(bytesOf(record), golden.bytes());
}

void tst_Records::networkCardHasItsGoldenBytes()
{
    KELA_NETWORK card = {};
    card.id = 80001;
    setField(card.name, "eth0[10.0.0.1]");
    setField(card.routeText, "route");
    setField(card.hardwareAddress, "02:00:00:00:00:01");
    card.cardValue = 1000;
    card.addressCount = 2;
    card.addresses[0] = {0x0A000001, 0xFF000000, 0x0A0000FE};
    card.addresses[1] = {0x0B000001, 0xFFFF0000, 0xFFFFFFFF};

    GoldenBytes golden(3276);
    golden.number(0, 80001).text(4, "eth0[10.0.0.1]").text(68, "route").text(132, "02:00:00:00:00:01");
    golden.number(196, 1000).number(200, 2);
    golden.number(204, 0x0A000001).number(208, 0xFF000000).number(212, 0x0A0000FE);
    golden.number(216, 0x0B000001).number(220, 0xFFFF0000).number(224, 0xFFFFFFFF);
    QCOMPARE(bytesOf(card), golden.bytes());
}

void tst_Records::usbControllerHasItsGoldenBytes()
{
    KELA_USBCONTROLLER_INFO controller = {};
    controller.id = 7;
    setField(controller.name, "name");
    setField(controller.identifier, "identifier");
    controller.portLocators[0][3] = 0x0A;
    controller.portLocators[15][0] = 0x0B;

    GoldenBytes golden(452);
    golden.number(0, 7).text(4, "name").text(196, "identifier").byte(391, 0x0A).byte(448, 0x0B);
    QCOMPARE(bytesOf(controller), golden.bytes());
}

void tst_Records::genTLInterfaceHasItsGoldenBytes()
{
    QCOMPARE(bytesOf(filledInterface()), goldenInterface().bytes());
}

void tst_Records::interfaceEventHasItsGoldenBytes()
{
    KELA_INTERFACE_INFO event = {};
    event.interfaceType = 16;
    event.special.genTLInterface = filledInterface();

    GoldenBytes golden(3292);
    golden.number(0, 16).block(4, goldenInterface());
    QCOMPARE(bytesOf(event), golden.bytes());
}

void tst_Records::emptyInterfaceEventIsZeroToItsLastByte()
{
    alignas(KELA_INTERFACE_INFO) unsigned char memory[sizeof(KELA_INTERFACE_INFO)];
    std::memset(memory, 0xFF, sizeof(memory));

    // The network card in the union is shorter than the GenTL interface: the rest is to be zeroed too.
    auto *const event = new (memory) KELA_INTERFACE_INFO{};

    QCOMPARE(bytesOf(*event), GoldenBytes(3292).bytes());
}

void tst_Records::filterHasItsGoldenBytes()
{
    DEVICE_FILTER filter = {};
    filter.vendorMode = 1;
    setField(filter.vendorInclude, "a");
    setField(filter.vendorExclude, "b");
    filter.modelMode = 2;
    setField(filter.modelInclude, "c");
    setField(filter.modelExclude, "d");

    GoldenBytes golden(264);
    golden.number(0, 1).text(4, "a").text(68, "b").number(132, 2).text(136, "c").text(200, "d");
    QCOMPARE(bytesOf(filter), golden.bytes());
}

void tst_Records::nodeValueHasItsGoldenBytes()
{
    KELCC_INTVALUE_EX_T value = {};
    value.current = 0x11;
    value.maximum = 0x22;
    value.minimum = 0x33;
    value.increment = 0x44;

    QCOMPARE(bytesOf(value), GoldenBytes(48).byte(0, 0x11).byte(8, 0x22).byte(16, 0x33).byte(24, 0x44).bytes());
}

void tst_Records::fullFieldEndsAtItsLastByte()
{
    KELA_DEVICE_INFO_EX device = filledHead(1);
    setField(device.serialNumber, std::string(64, 'S'));
    device.special.gige.macHigh = 0x58585858;

    QCOMPARE(fixedText(device.serialNumber).size(), std::size_t(64));
    QCOMPARE(textOf(device.serialNumber), QString(64, 'S'));
}

void tst_Records::byteFieldsAreReadLikeTextFields()
{
    KELA_GENTL_IF_INFO interface = filledInterface();

    QCOMPARE(QByteArray(fixedText(interface.displayName).data(), 7), QByteArray("if-name"));
    setField(interface.displayName, std::string(64, 'n'));
    QCOMPARE(fixedText(interface.displayName).size(), std::size_t(64));
}

void tst_Records::fieldIsReadAsUtf8()
{
    KELA_DEVICE_INFO_EX device = {};
    setField(device.modelName, "\xC3\xA4\xE7\x9B\xB8");

    QCOMPARE(textOf(device.modelName), QString::fromUtf8("\xC3\xA4\xE7\x9B\xB8"));
}

QTEST_GUILESS_MAIN(tst_Records)
#include "tst_records.moc"
