// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include "KelDeviceLabels.h"

#include <CommonTools/KelInterface.h>

#include <ScriptedRecords.h>

#include <QtTest>

using namespace TreeRecords;

class tst_KelDeviceLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void emptyUserNameGivesWayToTheModel();
    void userNameTakesThePlaceOfTheModel();
    void gigeNameIsCutToTheGivenLength();
    void gigeNameLengthNeverExceedsTheField();
    void usbAndGenTLNamesAreReadWhole();
    void cameraLinkLabelBeginsWithThePort();
    void fullFieldsAreReadWithoutOverrun();
    void textsFromDevicesAreNeverAFormat();
    void namesFollowTheChosenEncoding();
    void cameraLinkPortIgnoresTheChosenEncoding();
    void serialIsKnownForShownTransportsOnly_data();
    void serialIsKnownForShownTransportsOnly();
    void interfaceWithBracketTextShowsTheAlternativeName();
    void interfaceWithoutAlternativeNameShowsItsDisplayName();
    void interfaceWithoutFlagShowsItsDisplayName();
    void keysAreTakenAsTheyStand();
};

void tst_KelDeviceLabels::cleanup()
{
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
}

void tst_KelDeviceLabels::emptyUserNameGivesWayToTheModel()
{
    QCOMPARE(KelDeviceLabels::camera(QString(), QStringLiteral("Model"), QStringLiteral("S1")),
             QStringLiteral("Model (S1)"));
}

void tst_KelDeviceLabels::userNameTakesThePlaceOfTheModel()
{
    QCOMPARE(KelDeviceLabels::camera(QStringLiteral("Left"), QStringLiteral("Model"), QStringLiteral("S1")),
             QStringLiteral("Left (S1)"));
}

void tst_KelDeviceLabels::gigeNameIsCutToTheGivenLength()
{
    KELA_DEVICE_INFO_EX info = gigeCamera("S1");
    setField(info.special.gige.userDefinedName, "0123456789abcdefghij");

    QCOMPARE(KelDeviceLabels::gigeCamera(info, 16), QStringLiteral("0123456789abcdef (S1)"));
    QCOMPARE(KelDeviceLabels::gigeCamera(info, 64), QStringLiteral("0123456789abcdefghij (S1)"));
}

void tst_KelDeviceLabels::gigeNameLengthNeverExceedsTheField()
{
    KELA_DEVICE_INFO_EX info = gigeCamera("S1");
    setField(info.special.gige.userDefinedName, std::string(64, 'n'));

    QCOMPARE(KelDeviceLabels::gigeCamera(info, 1000), QString(64, QLatin1Char('n')) + QStringLiteral(" (S1)"));
}

void tst_KelDeviceLabels::usbAndGenTLNamesAreReadWhole()
{
    KELA_DEVICE_INFO_EX usb = usbCamera("U1");
    setField(usb.special.usb.userDefinedName, "0123456789abcdefghij");
    KELA_DEVICE_INFO_EX genTL = ::genTLDevice("G1", "IF");
    setField(genTL.special.genTL.userDefinedName, "0123456789abcdefghij");

    QCOMPARE(KelDeviceLabels::usbCamera(usb), QStringLiteral("0123456789abcdefghij (U1)"));
    QCOMPARE(KelDeviceLabels::genTLDevice(genTL), QStringLiteral("0123456789abcdefghij (G1)"));
}

void tst_KelDeviceLabels::cameraLinkLabelBeginsWithThePort()
{
    KELA_DEVICE_INFO_EX info = cameraLinkCamera("C1", "COM3");
    setField(info.modelName, "Area");

    QCOMPARE(KelDeviceLabels::cameraLinkCamera(info), QStringLiteral("COM3 Area (C1)"));
}

void tst_KelDeviceLabels::fullFieldsAreReadWithoutOverrun()
{
    KELA_DEVICE_INFO_EX info = {};
    std::memset(&info, 'x', sizeof info);
    const auto x = [](int count) { return QString(count, QLatin1Char('x')); };

    QCOMPARE(KelDeviceLabels::gigeCamera(info, 64), x(64) + QStringLiteral(" (") + x(64) + QStringLiteral(")"));
    QCOMPARE(KelDeviceLabels::usbCamera(info), KelDeviceLabels::gigeCamera(info, 64));
    QCOMPARE(KelDeviceLabels::genTLDevice(info), KelDeviceLabels::gigeCamera(info, 64));
    QCOMPARE(KelDeviceLabels::cameraLinkCamera(info),
             x(128) + QStringLiteral(" ") + x(64) + QStringLiteral(" (") + x(64) + QStringLiteral(")"));
}

void tst_KelDeviceLabels::textsFromDevicesAreNeverAFormat()
{
    QCOMPARE(KelDeviceLabels::camera(QStringLiteral("%2 %1"), QString(), QStringLiteral("%1")),
             QStringLiteral("%2 %1 (%1)"));
    QCOMPARE(
        KelDeviceLabels::cameraLinkCamera(QStringLiteral("%3"), QStringLiteral("%1"), QStringLiteral("%2")),
        QStringLiteral("%3 %1 (%2)"));
}

void tst_KelDeviceLabels::namesFollowTheChosenEncoding()
{
    KELA_DEVICE_INFO_EX info = gigeCamera("S1");
    setField(info.special.gige.userDefinedName, "\xD6\xD0");

    KelInterface::SetEncodingType(KelInterface::EncodingGb18030);

    QCOMPARE(KelDeviceLabels::gigeCamera(info, 16), QString(QChar(0x4E2D)) + QStringLiteral(" (S1)"));
}

void tst_KelDeviceLabels::cameraLinkPortIgnoresTheChosenEncoding()
{
    KELA_DEVICE_INFO_EX info = cameraLinkCamera("C1", "\xC3\xA4");
    setField(info.modelName, "M");

    KelInterface::SetEncodingType(KelInterface::EncodingGb18030);

    QCOMPARE(KelDeviceLabels::cameraLinkCamera(info), QString(QChar(0xE4)) + QStringLiteral(" M (C1)"));
}

void tst_KelDeviceLabels::serialIsKnownForShownTransportsOnly_data()
{
    QTest::addColumn<uint>("transport");
    QTest::addColumn<QString>("serial");
    QTest::newRow("GigE") << 1U << QStringLiteral("S1");
    QTest::newRow("USB") << 4U << QStringLiteral("S1");
    QTest::newRow("Camera Link") << 8U << QStringLiteral("S1");
    QTest::newRow("GenTL") << 16U << QStringLiteral("S1");
    QTest::newRow("none") << 0U << QString();
    QTest::newRow("IEEE 1394") << 2U << QString();
    QTest::newRow("GenTL by interface") << 32U << QString();
    QTest::newRow("GigE variant") << 256U << QString();
}

void tst_KelDeviceLabels::serialIsKnownForShownTransportsOnly()
{
    QFETCH(uint, transport);
    QFETCH(QString, serial);
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1");
    info.deviceInfo.transport = transport;

    QCOMPARE(KelDeviceLabels::serial(info), serial);
}

void tst_KelDeviceLabels::interfaceWithBracketTextShowsTheAlternativeName()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF", 0, "Display");
    interface.hasBracketText = 1;
    setField(interface.bracketText, "eth0");
    setField(interface.alternativeName, "Other");

    QCOMPARE(KelDeviceLabels::interfaceLabel(interface), QStringLiteral("Other (eth0)"));
    QCOMPARE(KelDeviceLabels::interfaceName(interface), QStringLiteral("Display"));
}

void tst_KelDeviceLabels::interfaceWithoutAlternativeNameShowsItsDisplayName()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF", 0, "Display");
    interface.hasBracketText = 1;
    setField(interface.bracketText, "eth0");
    setField(interface.alternativeName, "");

    QCOMPARE(KelDeviceLabels::interfaceLabel(interface), QStringLiteral("Display"));
}

void tst_KelDeviceLabels::interfaceWithoutFlagShowsItsDisplayName()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF", 0, "Display");
    interface.hasBracketText = 0;
    setField(interface.bracketText, "eth0");
    setField(interface.alternativeName, "Other");

    QCOMPARE(KelDeviceLabels::interfaceLabel(interface), QStringLiteral("Display"));
}

void tst_KelDeviceLabels::keysAreTakenAsTheyStand()
{
    KelInterface::SetEncodingType(KelInterface::EncodingGb18030);
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "00:11:22:AA:bb:cc");

    QCOMPARE(KelDeviceLabels::networkKey(info), QStringLiteral("00:11:22:AA:bb:cc"));
    QCOMPARE(KelDeviceLabels::networkKey(networkCard(1, "00:11:22:AA:bb:cc")),
             KelDeviceLabels::networkKey(info));
    QCOMPARE(KelDeviceLabels::controllerKey(usbController(1, " key ")), QStringLiteral(" key "));
    QCOMPARE(KelDeviceLabels::interfaceKey(TreeRecords::genTLInterface(1, "\xC3\xA4")), QString(QChar(0xE4)));
}

QTEST_APPLESS_MAIN(tst_KelDeviceLabels)
#include "tst_keldevicelabels.moc"
