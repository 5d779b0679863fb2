// SPDX-License-Identifier: Apache-2.0
#include "ForceIpPlan.h"

#include <QTest>

using namespace browser;

namespace
{

constexpr uint32_t kCard = 0xC0A83201; // 192.168.50.1
constexpr uint32_t kMask = 0xFFFFFF00;
constexpr uint32_t kForeign = 0xC0A83C15; // 192.168.60.21

AddressNeighbourhood around(const QSet<uint32_t> &inUse = {kCard})
{
    return {{kCard, kMask}, inUse};
}

KELA_STRUCT_DEVICE_INFO camera(int id, uint32_t address)
{
    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceId = id;
    device.deviceState = KELA_DEV_STATE_GIGE_UNREACHABLE;
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE;
    device.deviceInfo.special.gige.currentIp = address;
    device.deviceInfo.special.gige.hostIp = kCard;
    device.network.found = 1;
    device.network.address = kCard;
    device.network.mask = kMask;
    return device;
}

} // namespace

class TestForceIpPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void suggestionLiesInTheCardsSubnetAndIsFree();
    void suggestionLeavesOutAddressesInUse();
    void fullSubnetGivesNoSuggestion();
    void cardWithoutMaskGivesNoSuggestion();
    void neighboursAreTheHostAndTheOtherCameras();
    void cardThatTheEnumerationMissedIsFoundByTheHostsAddress();
    void objectionsNameWhatIsWrong_data();
    void objectionsNameWhatIsWrong();
    void heldCameraMayNotBeReaddressed();
};

void TestForceIpPlan::suggestionLiesInTheCardsSubnetAndIsFree()
{
    const auto suggestion = suggestAddress(around());

    QVERIFY(suggestion.has_value());
    QCOMPARE(suggestion->address, 0xC0A832FEU);
    QCOMPARE(suggestion->mask, kMask);
    QCOMPARE(suggestion->gateway, 0U);
    QVERIFY(objectionTo(*suggestion, around()).isEmpty());
}

void TestForceIpPlan::suggestionLeavesOutAddressesInUse()
{
    const auto suggestion = suggestAddress(around({kCard, 0xC0A832FE, 0xC0A832FD}));

    QVERIFY(suggestion.has_value());
    QCOMPARE(suggestion->address, 0xC0A832FCU);
}

void TestForceIpPlan::fullSubnetGivesNoSuggestion()
{
    AddressNeighbourhood tiny{{0xC0A83201, 0xFFFFFFFC}, {0xC0A83201, 0xC0A83202}};
    QVERIFY(!suggestAddress(tiny).has_value());

    tiny.card.mask = 0xFFFFFFFF;
    QVERIFY(!suggestAddress(tiny).has_value());
}

void TestForceIpPlan::cardWithoutMaskGivesNoSuggestion()
{
    QVERIFY(!suggestAddress({{kCard, 0}, {}}).has_value());
    QVERIFY(!suggestAddress({{0, kMask}, {}}).has_value());
}

void TestForceIpPlan::neighboursAreTheHostAndTheOtherCameras()
{
    HostFacts host;
    host.cards = {{QStringLiteral("eth0"), QString(), {{kCard, kMask}}, ReversePathFilter::Off, 1500, true}};

    const AddressNeighbourhood found =
        neighbourhoodOf(camera(1, kForeign), host, {camera(1, kForeign), camera(2, 0xC0A83233)});

    QCOMPARE(found.card.address, kCard);
    QCOMPARE(found.card.mask, kMask);
    QCOMPARE(found.inUse, (QSet<uint32_t>{kCard, 0xC0A83233}));
}

void TestForceIpPlan::cardThatTheEnumerationMissedIsFoundByTheHostsAddress()
{
    HostFacts host;
    host.cards = {
        {QStringLiteral("eth0"), QString(), {{kCard, 0xFFFF0000}}, ReversePathFilter::Off, 1500, true}};
    KELA_STRUCT_DEVICE_INFO device = camera(1, kForeign);
    device.network = {};

    QCOMPARE(neighbourhoodOf(device, host, {}).card.mask, 0xFFFF0000U);
}

void TestForceIpPlan::objectionsNameWhatIsWrong_data()
{
    QTest::addColumn<uint>("address");
    QTest::addColumn<uint>("mask");
    QTest::newRow("no address") << 0U << kMask;
    QTest::newRow("mask with gaps") << 0xC0A83210U << 0xFF00FF00U;
    QTest::newRow("no mask") << 0xC0A83210U << 0U;
    QTest::newRow("other subnet") << kForeign << kMask;
    QTest::newRow("mask that parts it from the card") << 0xC0A832F0U << 0xFFFFFFF0U;
    QTest::newRow("the subnet itself") << 0xC0A83200U << kMask;
    QTest::newRow("the broadcast") << 0xC0A832FFU << kMask;
    QTest::newRow("the card's own") << kCard << kMask;
}

void TestForceIpPlan::objectionsNameWhatIsWrong()
{
    QFETCH(uint, address);
    QFETCH(uint, mask);

    QVERIFY(!objectionTo({address, mask, 0}, around()).isEmpty());
    QVERIFY(objectionTo({0xC0A83210, kMask, 0}, around()).isEmpty());
}

void TestForceIpPlan::heldCameraMayNotBeReaddressed()
{
    KELA_STRUCT_DEVICE_INFO device = camera(1, kForeign);
    QVERIFY(mayAssignAddress(device));

    device.deviceState = KELA_DEV_STATE_GIGE_IN_USE;
    QVERIFY(!mayAssignAddress(device));
    device.deviceState = KELA_DEV_STATE_GIGE_CONNECTED;
    QVERIFY(!mayAssignAddress(device));
    device.deviceState = KELA_DEV_STATE_USB3_UNUSABLE;
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_USB;
    QVERIFY(!mayAssignAddress(device));
}

QTEST_GUILESS_MAIN(TestForceIpPlan)
#include "tst_forceipplan.moc"
