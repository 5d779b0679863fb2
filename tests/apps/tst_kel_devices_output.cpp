// SPDX-License-Identifier: Apache-2.0
#include "Printing.h"
#include "RecordFields.h"

#include "ScriptedRecords.h"

#include <KelAIndustryControl/KelAErrors.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

class tst_kel_devices_output : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyListHasItsFourArrays();
    void deviceHasItsFieldsInOrder();
    void cameraLinkDeviceHasItsUserName();
    void cardHasItsFieldsInOrder();
    void interfaceHasItsFieldsInOrder();
    void failureNamesTransportCodeAndText();
    void addressesThatAreNotThereAreEmpty();
    void fullTextFieldIsReadToItsEnd();
    void textsAreEscaped();
    void deviceTextsNeverReachATerminalRaw();
    void changedDeviceIsNews();
    void unchangedDeviceIsNoNews();
    void removedDeviceLeavesThePicture();
    void resultIsNewsWhenItChanges();
    void eventLineIsOneJsonObject();
    void everyKindOfEventHasItsWord();
};

namespace
{

KELA_STRUCT_DEVICE_INFO gigeRecord()
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = 7;
    record.deviceState = KELA_DEV_STATE_GIGE_IN_USE;
    record.deviceInfo = gigeCamera("S-7", 21);
    setField(record.deviceInfo.modelName, "Model");
    setField(record.deviceInfo.special.gige.manufacturerName, "Vendor");
    setField(record.deviceInfo.special.gige.userDefinedName, "Left");
    record.deviceInfo.special.gige.primaryApplicationIp = ipv4(192, 168, 10, 77);
    setField(record.network.hardwareAddress, "02:00:00:00:00:01");
    return record;
}

EnumerationEvent deviceEvent(KELA_INTERFACE_STATE kind, const KELA_STRUCT_DEVICE_INFO &record)
{
    EnumerationEvent event;
    event.kind = kind;
    event.transport = KELA_INTERFACE_TYPE_GIGE;
    event.id = record.deviceId;
    event.fields = deviceFields(record);
    return event;
}

EnumerationEvent passEnd(quint32 code)
{
    EnumerationEvent event;
    event.kind = KELA_INTERFACE_STATE_PASS_END;
    event.transport = KELA_INTERFACE_TYPE_USB;
    event.code = code;
    return event;
}

QJsonObject parsed(const QByteArray &line)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(line, &error).object();
    return error.error == QJsonParseError::NoError ? object : QJsonObject();
}

} // namespace

void tst_kel_devices_output::emptyListHasItsFourArrays()
{
    QCOMPARE(listJson(Picture()),
             QByteArray("{\"cards\":[],\"interfaces\":[],\"devices\":[],\"errors\":[]}\n"));
}

void tst_kel_devices_output::deviceHasItsFieldsInOrder()
{
    QCOMPARE(deviceFields(gigeRecord()).json(),
             QByteArray("{\"id\":7,\"transport\":\"gige\",\"vendor\":\"Vendor\",\"model\":\"Model\","
                        "\"serial\":\"S-7\",\"userName\":\"Left\",\"state\":2,\"stateText\":\"in use\","
                        "\"address\":\"192.168.10.21\",\"mask\":\"255.255.255.0\","
                        "\"hostAddress\":\"192.168.10.1\",\"cardMac\":\"02:00:00:00:00:01\","
                        "\"heldBy\":\"192.168.10.77\",\"placement\":0,\"interfaceId\":0}"));
}

void tst_kel_devices_output::cameraLinkDeviceHasItsUserName()
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo.transport = KELA_INTERFACE_TYPE_CAMERALINK;
    setField(record.deviceInfo.special.cameraLink.userDefinedName, "Press");

    QCOMPARE(deviceFields(record).text("userName"), QStringLiteral("Press"));
}

void tst_kel_devices_output::cardHasItsFieldsInOrder()
{
    KELA_NETWORK card = {};
    card.id = 80001;
    setField(card.name, "cam0[192.168.10.1]");
    setField(card.hardwareAddress, "02:00:00:00:00:01");
    card.addressCount = 1;
    card.addresses[0] = {ipv4(192, 168, 10, 1), ipv4(255, 255, 255, 0), 0xFFFFFFFFU};

    QCOMPARE(cardFields(card).json(),
             QByteArray("{\"id\":80001,\"name\":\"cam0[192.168.10.1]\",\"address\":\"192.168.10.1\","
                        "\"mask\":\"255.255.255.0\",\"gateway\":\"\",\"mac\":\"02:00:00:00:00:01\"}"));
}

void tst_kel_devices_output::interfaceHasItsFieldsInOrder()
{
    KELA_GENTL_IF_INFO interface = genTLInterface("eth-1");
    interface.id = 70001;
    setField(interface.displayName, "Port 1");

    QCOMPARE(
        interfaceFields(interface, QStringLiteral("/opt/p.cti")).json(),
        QByteArray("{\"id\":70001,\"identifier\":\"eth-1\",\"name\":\"Port 1\",\"producer\":\"/opt/p.cti\"}"));
}

void tst_kel_devices_output::failureNamesTransportCodeAndText()
{
    Picture picture;
    picture.apply(passEnd(KELA_ERROR_RESOURCE));

    const QJsonObject failure = parsed(listJson(picture))[QStringLiteral("errors")].toArray().at(0).toObject();

    QCOMPARE(failure[QStringLiteral("transport")].toString(), QStringLiteral("usb"));
    QCOMPARE(failure[QStringLiteral("code")].toDouble(), 2415919108.0);
    QVERIFY(!failure[QStringLiteral("text")].toString().isEmpty());
    QVERIFY(picture.hasFailure());
    QCOMPARE(failureLines(picture).count('\n'), 1);
}

void tst_kel_devices_output::addressesThatAreNotThereAreEmpty()
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = usbCamera("U-1");

    const Fields fields = deviceFields(record);

    for (const char *name : {"address", "mask", "hostAddress", "heldBy", "cardMac"}) {
        QCOMPARE(fields.text(name), QString());
    }
    QCOMPARE(fields.text("transport"), QStringLiteral("usb"));
}

void tst_kel_devices_output::fullTextFieldIsReadToItsEnd()
{
    KELA_STRUCT_DEVICE_INFO record = gigeRecord();
    setField(record.deviceInfo.modelName, std::string(80, 'm'));

    QCOMPARE(deviceFields(record).text("model"), QString(64, QLatin1Char('m')));
}

void tst_kel_devices_output::textsAreEscaped()
{
    QCOMPARE(jsonString(QStringLiteral("a\"b\\c\n\x01")), QByteArray("\"a\\\"b\\\\c\\u000a\\u0001\""));
    QCOMPARE(jsonString(QString::fromUtf8("\xC3\xA9")), QByteArray("\"\xC3\xA9\""));
}

void tst_kel_devices_output::deviceTextsNeverReachATerminalRaw()
{
    KELA_STRUCT_DEVICE_INFO record = gigeRecord();
    setField(record.deviceInfo.special.gige.userDefinedName, "\x1b[2J%1\t");
    Picture picture;
    const EnumerationEvent event = deviceEvent(KELA_INTERFACE_STATE_DEVICE_NEW, record);
    picture.apply(event);

    for (const QByteArray &text : {listTable(picture), eventLine(event)}) {
        QVERIFY(!text.contains('\x1b'));
        QVERIFY(!text.contains('\t'));
        QVERIFY(text.contains("[2J%1"));
    }
}

void tst_kel_devices_output::changedDeviceIsNews()
{
    Picture picture;
    KELA_STRUCT_DEVICE_INFO record = gigeRecord();
    QVERIFY(picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_NEW, record)));
    record.deviceState = KELA_DEV_STATE_GIGE_FREE;

    QVERIFY(picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_UPDATED, record)));
}

void tst_kel_devices_output::unchangedDeviceIsNoNews()
{
    Picture picture;
    picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_NEW, gigeRecord()));

    QVERIFY(!picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_UPDATED, gigeRecord())));
}

void tst_kel_devices_output::removedDeviceLeavesThePicture()
{
    Picture picture;
    picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_NEW, gigeRecord()));

    QVERIFY(picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_REMOVED, gigeRecord())));
    QVERIFY(picture.devices().isEmpty());
    QVERIFY(!picture.apply(deviceEvent(KELA_INTERFACE_STATE_DEVICE_REMOVED, gigeRecord())));
}

void tst_kel_devices_output::resultIsNewsWhenItChanges()
{
    Picture picture;

    QVERIFY(!picture.apply(passEnd(0)));
    QVERIFY(picture.apply(passEnd(KELA_ERROR_RESOURCE)));
    QVERIFY(!picture.apply(passEnd(KELA_ERROR_RESOURCE)));
    QVERIFY(picture.apply(passEnd(0)));
    QVERIFY(!picture.hasFailure());
}

void tst_kel_devices_output::eventLineIsOneJsonObject()
{
    const QByteArray line = eventJson(deviceEvent(KELA_INTERFACE_STATE_DEVICE_NEW, gigeRecord()));

    const QJsonObject event = parsed(line);

    QCOMPARE(line.count('\n'), 1);
    QCOMPARE(event.keys(), (QStringList{QStringLiteral("code"), QStringLiteral("device"),
                                        QStringLiteral("event"), QStringLiteral("transport")}));
    QCOMPARE(event[QStringLiteral("device")].toObject()[QStringLiteral("serial")].toString(),
             QStringLiteral("S-7"));
    QCOMPARE(eventJson(passEnd(KELA_ERROR_RESOURCE)),
             QByteArray("{\"event\":\"passEnd\",\"transport\":\"usb\",\"code\":2415919108}\n"));
}

void tst_kel_devices_output::everyKindOfEventHasItsWord()
{
    const char *const containerWords[] = {"New", "Updated", "Removed"};
    const char *const otherWords[] = {"deviceNew", "deviceUpdated", "deviceRemoved", "passBegin", "passEnd"};
    EnumerationEvent event;
    for (uint32_t kind = 0; kind < 8; ++kind) {
        event.kind = static_cast<KELA_INTERFACE_STATE>(kind);
        for (const bool isCard : {true, false}) {
            event.isCard = isCard;
            const QByteArray word = kind > 2 ? QByteArray(otherWords[kind - 3])
                                             : QByteArray(isCard ? "card" : "interface") + containerWords[kind];
            QVERIFY(eventJson(event).startsWith("{\"event\":\"" + word + "\","));
        }
    }
}

QTEST_GUILESS_MAIN(tst_kel_devices_output)
#include "tst_kel_devices_output.moc"
