// SPDX-License-Identifier: Apache-2.0
#include "ContainerExplanation.h"
#include "DeviceExplanation.h"
#include "DeviceState.h"
#include "DeviceText.h"

#include <KelAIndustryControl/KelAErrors.h>

#include <QTest>

using namespace browser;

namespace
{

constexpr uint32_t kCardAddress = 0xC0A83201; // 192.168.50.1
constexpr uint32_t kMask24 = 0xFFFFFF00;

template <std::size_t Size>
void put(char (&field)[Size], const char *text)
{
    qstrncpy(field, text, Size);
}

KELA_STRUCT_DEVICE_INFO gigeCamera(KELA_DEV_STATE state, uint32_t address = 0xC0A8320B)
{
    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceId = 3;
    device.deviceState = state;
    KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    info.transport = KELA_INTERFACE_TYPE_GIGE;
    put(info.modelName, "LV-4M");
    put(info.serialNumber, "7714");
    put(info.special.gige.manufacturerName, "Linden");
    info.special.gige.currentIp = address;
    info.special.gige.subnetMask = kMask24;
    info.special.gige.hostIp = kCardAddress;
    device.network.found = 1;
    put(device.network.name, "eth0[192.168.50.1]");
    put(device.network.hardwareAddress, "00:11:22:33:44:55");
    device.network.address = kCardAddress;
    device.network.mask = kMask24;
    return device;
}

KELA_STRUCT_DEVICE_INFO usbCamera(KELA_DEV_STATE state)
{
    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceState = state;
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_USB;
    KELA_USB_DEVICE_INFO &usb = device.deviceInfo.special.usb;
    usb.usbVersion = 0x0310;
    usb.vendorId = 0x2ba2;
    usb.productId = 0x4d55;
    usb.linkSpeed = 5000;
    usb.speedSupport = 0x1e;
    return device;
}

DeviceContext contextWith(ReversePathFilter filter)
{
    DeviceContext context;
    context.host.cards = {{QStringLiteral("eth0"),
                           QStringLiteral("00:11:22:33:44:55"),
                           {{kCardAddress, kMask24}},
                           filter,
                           1500,
                           true}};
    context.host.routes = {{QStringLiteral("eth0"), 0xC0A83200, kMask24, 0}};
    return context;
}

QString words(const Explanation &explanation)
{
    return explanation.paragraphs.join(QLatin1Char('\n'));
}

QString figure(const Explanation &explanation, const QString &group, const QString &label)
{
    for (const FactGroup &facts : explanation.groups) {
        for (const Fact &fact : facts.facts) {
            if (facts.title == group && fact.label == label)
                return fact.value;
        }
    }
    return {};
}

} // namespace

class TestDeviceExplanation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freeCameraCanBeConnected();
    void holderOnAnotherComputerIsNamed();
    void holderOnThisComputerIsToldAsSuch();
    void holderThatTheCameraDoesNotTellIsToldAsSuch();
    void multicastCameraNamesItsGroup();
    void foreignSubnetNamesCardAndBothAddresses();
    void strictFilterIsNamedAsAnObstacle();
    void looseFilterIsAnObstacleOnlyWithoutARoute();
    void filterThatIsOffIsNoObstacle();
    void linkLocalAddressIsExplained();
    void cameraWithoutAddressIsExplained();
    void maskThatDisagreesIsExplained();
    void cameraWithoutCardIsExplained();
    void figuresComeFromTheRecord();
    void usbCameraWithoutPermissionGetsAUdevRule();
    void usbCameraWithoutDeviceFileNamesTheFile();
    void usbCameraThatIsBusyOtherwiseHasNoRule();
    void usbCameraOnALinkTooSlowToUseIsTold();
    void usb3CameraOnASlowPortIsTold();
    void usbCameraAtFullSpeedHasNoHint();
    void ownConnectionIsTold();
    void lostConnectionStandsFirstAndIsBlocked();
    void failedAttemptNamesTheError();
    void placementAndRemoteAreTold();
    void textsFromDevicesAreNotInterpreted();
    void fullFieldsAreReadToTheirEnd();
    void cameraLinkCameraGoesByItsOwnName();
    void everyStateHasACondition_data();
    void everyStateHasACondition();
    void connectedStateFollowsTheTransport();
    void cardWithStrictFilterWarnsOfHiddenCameras();
    void cardWithMoreAddressesThanFitIsRead();
    void camerasAreCountedByState();
};

void TestDeviceExplanation::freeCameraCanBeConnected()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_FREE), {});

    QCOMPARE(explanation.title, QStringLiteral("LV-4M (7714)"));
    QCOMPARE(explanation.standing, Standing::Ready);
    QCOMPARE(explanation.state, QStringLiteral("Free"));
    QVERIFY(words(explanation).contains(QStringLiteral("can be connected")));
}

void TestDeviceExplanation::holderOnAnotherComputerIsNamed()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_IN_USE);
    device.deviceInfo.special.gige.primaryApplicationIp = 0xC0A8324D;

    const Explanation explanation = explainDevice(device, contextWith(ReversePathFilter::Off));

    QCOMPARE(explanation.standing, Standing::Busy);
    QVERIFY2(words(explanation).contains(QStringLiteral("on the computer 192.168.50.77")),
             qPrintable(words(explanation)));
    QCOMPARE(figure(explanation, QStringLiteral("Use"), QStringLiteral("Held by")),
             QStringLiteral("192.168.50.77"));
}

void TestDeviceExplanation::holderOnThisComputerIsToldAsSuch()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_IN_USE);
    device.deviceInfo.special.gige.primaryApplicationIp = kCardAddress;

    const Explanation explanation = explainDevice(device, contextWith(ReversePathFilter::Off));

    QVERIFY(words(explanation).contains(QStringLiteral("A program on this computer (192.168.50.1)")));
}

void TestDeviceExplanation::holderThatTheCameraDoesNotTellIsToldAsSuch()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_IN_USE), {});

    QVERIFY(words(explanation).contains(QStringLiteral("does not tell")));
}

void TestDeviceExplanation::multicastCameraNamesItsGroup()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_MULTICAST);
    device.deviceInfo.special.gige.streamDestination = 0xEFC0010F;
    device.deviceInfo.special.gige.streamHostPort = 5400;

    const Explanation explanation = explainDevice(device, {});

    QVERIFY(words(explanation).contains(QStringLiteral("239.192.1.15")));
    QCOMPARE(figure(explanation, QStringLiteral("Use"), QStringLiteral("Images go to")),
             QStringLiteral("239.192.1.15:5400"));
}

void TestDeviceExplanation::foreignSubnetNamesCardAndBothAddresses()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15),
                                                  contextWith(ReversePathFilter::Off));

    QCOMPARE(explanation.standing, Standing::Blocked);
    for (const char *part : {"\"eth0\"", "192.168.50.1/24", "192.168.60.21/24", "temporary address"})
        QVERIFY2(words(explanation).contains(QLatin1String(part)), qPrintable(words(explanation)));
}

void TestDeviceExplanation::strictFilterIsNamedAsAnObstacle()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15),
                                                  contextWith(ReversePathFilter::Strict));

    QVERIFY(words(explanation).contains(QStringLiteral("rp_filter 1")));
    QCOMPARE(figure(explanation, QStringLiteral("Seen by the card"), QStringLiteral("Reverse-path filter")),
             QStringLiteral("strict (rp_filter 1)"));
}

void TestDeviceExplanation::looseFilterIsAnObstacleOnlyWithoutARoute()
{
    DeviceContext context = contextWith(ReversePathFilter::Loose);
    const KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15);
    QVERIFY(words(explainDevice(device, context)).contains(QStringLiteral("rp_filter 2")));

    context.host.routes.append({QStringLiteral("eth1"), 0, 0, 0xC0A80101});
    QVERIFY(!words(explainDevice(device, context)).contains(QStringLiteral("rp_filter")));
}

void TestDeviceExplanation::filterThatIsOffIsNoObstacle()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15),
                                                  contextWith(ReversePathFilter::Off));

    QVERIFY(!words(explanation).contains(QStringLiteral("rp_filter")));
}

void TestDeviceExplanation::linkLocalAddressIsExplained()
{
    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xA9FE1234),
                                                  contextWith(ReversePathFilter::Off));

    QVERIFY(words(explanation).contains(QStringLiteral("gives itself")));
}

void TestDeviceExplanation::cameraWithoutAddressIsExplained()
{
    const Explanation explanation =
        explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0), contextWith(ReversePathFilter::Strict));

    QVERIFY(words(explanation).contains(QStringLiteral("no address yet")));
}

void TestDeviceExplanation::maskThatDisagreesIsExplained()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15);
    device.deviceInfo.special.gige.subnetMask = 0xFFFF0000;
    QVERIFY(words(explainDevice(device, contextWith(ReversePathFilter::Off)))
                .contains(QStringLiteral("By its own mask")));

    device.deviceInfo.special.gige.subnetMask = kMask24;
    device.network.mask = 0xFFFF0000;
    QVERIFY(words(explainDevice(device, contextWith(ReversePathFilter::Off)))
                .contains(QStringLiteral("could reach the camera")));
}

void TestDeviceExplanation::cameraWithoutCardIsExplained()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15);
    device.network = {};
    device.deviceInfo.special.gige.hostIp = 0;
    QVERIFY(words(explainDevice(device, {})).contains(QStringLiteral("no network card of this computer")));

    device.deviceInfo.special.gige.hostIp = kCardAddress;
    QVERIFY(
        words(explainDevice(device, contextWith(ReversePathFilter::Off))).contains(QStringLiteral("\"eth0\"")));
}

void TestDeviceExplanation::figuresComeFromTheRecord()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_FREE);
    device.deviceInfo.special.gige.macHigh = 0x025A;
    device.deviceInfo.special.gige.macLow = 0xC0A8320B;
    device.deviceInfo.special.gige.ipConfigCurrent = 2;

    const Explanation explanation = explainDevice(device, contextWith(ReversePathFilter::Off));

    const QString network = QStringLiteral("Camera's network");
    QCOMPARE(figure(explanation, network, QStringLiteral("Address")), QStringLiteral("192.168.50.11"));
    QCOMPARE(figure(explanation, network, QStringLiteral("Hardware address")),
             QStringLiteral("02:5A:C0:A8:32:0B"));
    QCOMPARE(figure(explanation, network, QStringLiteral("Address comes from")), QStringLiteral("DHCP"));
    QCOMPARE(figure(explanation, QStringLiteral("Identity"), QStringLiteral("Vendor")),
             QStringLiteral("Linden"));
    QCOMPARE(figure(explanation, QStringLiteral("Seen by the card"), QStringLiteral("Card")),
             QStringLiteral("eth0"));
}

void TestDeviceExplanation::usbCameraWithoutPermissionGetsAUdevRule()
{
    DeviceContext context;
    context.node = {QStringLiteral("/dev/bus/usb/002/005"), true, false};

    const Explanation explanation = explainDevice(usbCamera(KELA_DEV_STATE_USB3_UNUSABLE), context);

    QVERIFY(words(explanation).contains(QStringLiteral("no permission")));
    QVERIFY(words(explanation).contains(QStringLiteral("ATTR{idVendor}==\"2ba2\"")));
}

void TestDeviceExplanation::usbCameraWithoutDeviceFileNamesTheFile()
{
    DeviceContext context;
    context.node = {QStringLiteral("/dev/bus/usb/002/005"), false, false};

    const Explanation explanation = explainDevice(usbCamera(KELA_DEV_STATE_USB3_UNUSABLE), context);

    QVERIFY(words(explanation).contains(QStringLiteral("/dev/bus/usb/002/005 does not exist")));
}

void TestDeviceExplanation::usbCameraThatIsBusyOtherwiseHasNoRule()
{
    DeviceContext context;
    context.node = {QStringLiteral("/dev/bus/usb/002/005"), true, true};

    const Explanation explanation = explainDevice(usbCamera(KELA_DEV_STATE_USB3_UNUSABLE), context);

    QVERIFY(!words(explanation).contains(QStringLiteral("udev")));
}

void TestDeviceExplanation::usbCameraOnALinkTooSlowToUseIsTold()
{
    KELA_STRUCT_DEVICE_INFO device = usbCamera(KELA_DEV_STATE_USB2_UNUSABLE);
    device.deviceInfo.special.usb.linkSpeed = 12;
    DeviceContext context;
    context.node = {QStringLiteral("/dev/bus/usb/001/005"), true, true};

    QVERIFY(words(explainDevice(device, context)).contains(QStringLiteral("12 Mbit/s")));
    QVERIFY(words(explainDevice(device, context)).contains(QStringLiteral("too slow")));
}

void TestDeviceExplanation::usb3CameraOnASlowPortIsTold()
{
    KELA_STRUCT_DEVICE_INFO device = usbCamera(KELA_DEV_STATE_USB3_FREE);
    device.deviceInfo.special.usb.linkSpeed = 480;

    QVERIFY(words(explainDevice(device, {})).contains(QStringLiteral("runs at 480")));
}

void TestDeviceExplanation::usbCameraAtFullSpeedHasNoHint()
{
    KELA_STRUCT_DEVICE_INFO device = usbCamera(KELA_DEV_STATE_USB3_FREE);
    QVERIFY(!words(explainDevice(device, {})).contains(QStringLiteral("cable")));

    device.deviceInfo.special.usb.linkSpeed = 480;
    device.deviceInfo.special.usb.speedSupport = 0x06; // a USB 2 camera
    QVERIFY(!words(explainDevice(device, {})).contains(QStringLiteral("cable")));
}

void TestDeviceExplanation::ownConnectionIsTold()
{
    DeviceContext context;
    context.session = {SessionState::Open, 0, false};

    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_CONNECTED), context);

    QCOMPARE(explanation.standing, Standing::Ours);
    QVERIFY(words(explanation).contains(QStringLiteral("This program holds it")));
}

void TestDeviceExplanation::lostConnectionStandsFirstAndIsBlocked()
{
    DeviceContext context;
    context.session = {SessionState::Lost, KELA_ERROR_TIMEOUT, false};

    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_CONNECTED), context);

    QCOMPARE(explanation.standing, Standing::Blocked);
    QCOMPARE(explanation.state, QStringLiteral("Connection lost"));
    QVERIFY(explanation.paragraphs.first().contains(QStringLiteral("connection was lost")));
}

void TestDeviceExplanation::failedAttemptNamesTheError()
{
    DeviceContext context;
    context.session = {SessionState::None, KELA_ERROR_IN_USE, false};

    const Explanation explanation = explainDevice(gigeCamera(KELA_DEV_STATE_GIGE_FREE), context);

    QVERIFY2(words(explanation).contains(QStringLiteral("90000006")), qPrintable(words(explanation)));
}

void TestDeviceExplanation::placementAndRemoteAreTold()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_FREE);
    device.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;
    QVERIFY(words(explainDevice(device, {})).contains(QStringLiteral("simulated on this computer")));

    device.deviceInfo.placement = KELA_PLACEMENT_OTHER;
    QVERIFY(words(explainDevice(device, {})).contains(QStringLiteral("class")));

    device.remote = 1;
    QVERIFY(words(explainDevice(device, {})).contains(QStringLiteral("added it by its address")));
}

void TestDeviceExplanation::textsFromDevicesAreNotInterpreted()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_UNREACHABLE, 0xC0A83C15);
    put(device.deviceInfo.special.gige.userDefinedName, "%1 <b>%2</b>");
    put(device.network.name, "%3 card");

    const Explanation explanation = explainDevice(device, {});

    QCOMPARE(explanation.title, QStringLiteral("%1 <b>%2</b> (7714)"));
    QVERIFY2(words(explanation).contains(QStringLiteral("\"%3 card\"")), qPrintable(words(explanation)));
}

void TestDeviceExplanation::fullFieldsAreReadToTheirEnd()
{
    KELA_STRUCT_DEVICE_INFO device = gigeCamera(KELA_DEV_STATE_GIGE_FREE);
    std::memset(device.deviceInfo.modelName, 'M', sizeof(device.deviceInfo.modelName));
    std::memset(device.deviceInfo.serialNumber, 'S', sizeof(device.deviceInfo.serialNumber));

    const Explanation explanation = explainDevice(device, {});

    const QString identity = QStringLiteral("Identity");
    QCOMPARE(figure(explanation, identity, QStringLiteral("Model")), QString(64, QLatin1Char('M')));
    QCOMPARE(figure(explanation, identity, QStringLiteral("Serial number")), QString(64, QLatin1Char('S')));
}

void TestDeviceExplanation::everyStateHasACondition_data()
{
    QTest::addColumn<int>("state");
    for (int state = KELA_DEV_STATE_GIGE_FREE; state <= int(KELA_DEV_STATE_NETWORK_UNREACHABLE); ++state)
        QTest::addRow("state %d", state) << state;
}

void TestDeviceExplanation::everyStateHasACondition()
{
    QFETCH(int, state);
    const QList<int> ownStates{4, 5, 7, 10, 11, 15, 16, 19, 22, 23};

    QVERIFY(conditionOf(state) != Condition::Unknown);
    QCOMPARE(isOwnState(state), ownStates.contains(state));
}

void TestDeviceExplanation::connectedStateFollowsTheTransport()
{
    QCOMPARE(connectedState(gigeCamera(KELA_DEV_STATE_GIGE_FREE)), KELA_DEV_STATE_GIGE_CONNECTED);
    QCOMPARE(connectedState(gigeCamera(KELA_DEV_STATE_GIGE_MULTICAST)),
             KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED);
    KELA_STRUCT_DEVICE_INFO usb = usbCamera(KELA_DEV_STATE_USB3_FREE);
    QCOMPARE(connectedState(usb), KELA_DEV_STATE_USB3_CONNECTED);
    QCOMPARE(freeState(usb.deviceInfo), KELA_DEV_STATE_USB3_FREE);
    usb.deviceInfo.special.usb.usbVersion = 0x0210;
    QCOMPARE(connectedState(usb), KELA_DEV_STATE_USB2_CONNECTED);
    QCOMPARE(freeState(usb.deviceInfo), KELA_DEV_STATE_USB2_FREE);
}

void TestDeviceExplanation::cardWithStrictFilterWarnsOfHiddenCameras()
{
    KELA_NETWORK card{};
    put(card.name, "eth0[192.168.50.1]");
    put(card.hardwareAddress, "00:11:22:33:44:55");
    card.addressCount = 1;
    card.addresses[0] = {kCardAddress, kMask24, 0xFFFFFFFF};

    const Explanation strict = explainCard(card, contextWith(ReversePathFilter::Strict).host, {});
    QVERIFY(words(strict).contains(QStringLiteral("net.ipv4.conf.eth0.rp_filter")));
    QCOMPARE(figure(strict, QStringLiteral("Card"), QStringLiteral("Address")),
             QStringLiteral("192.168.50.1/24"));
    QVERIFY(figure(strict, QStringLiteral("Card"), QStringLiteral("Gateway")).isEmpty());

    QVERIFY(words(explainCard(card, contextWith(ReversePathFilter::Off).host, {})).isEmpty());
}

void TestDeviceExplanation::cardWithMoreAddressesThanFitIsRead()
{
    KELA_NETWORK card{};
    card.addressCount = 100000;

    explainCard(card, {}, {}); // reads no address behind the record's end
}

void TestDeviceExplanation::camerasAreCountedByState()
{
    DeviceCount count;
    for (const KELA_DEV_STATE state :
         {KELA_DEV_STATE_GIGE_FREE, KELA_DEV_STATE_USB3_FREE, KELA_DEV_STATE_GIGE_MULTICAST,
          KELA_DEV_STATE_GIGE_CONNECTED, KELA_DEV_STATE_GIGE_UNREACHABLE})
        count.add(state);

    QCOMPARE(count.total, 5);
    QCOMPARE(count.free, 2);
    QCOMPARE(count.busy, 1);
    QCOMPARE(count.own, 1);
    QCOMPARE(count.unusable, 1);
    QCOMPARE(countText(count), QStringLiteral("Cameras: 5 (1 connected, 2 free, 1 in use, 1 not usable)"));
}

void TestDeviceExplanation::cameraLinkCameraGoesByItsOwnName()
{
    KELA_DEVICE_INFO_EX device = {};
    device.transport = KELA_INTERFACE_TYPE_CAMERALINK;
    put(device.special.cameraLink.userDefinedName, "Press");
    put(device.serialNumber, "CL-1");

    QCOMPARE(browser::displayName(device), QStringLiteral("Press (CL-1)"));
}

QTEST_GUILESS_MAIN(TestDeviceExplanation)
#include "tst_deviceexplanation.moc"
