// SPDX-License-Identifier: Apache-2.0
// Several cards, several addresses, foreign subnets, and this host itself.
#include "GigeBed.h"

using namespace kela;
using namespace kela::gige;
using namespace kelatest;

namespace
{

using GigeCards = GigeBed;

} // namespace

TEST_F(GigeCards, noCameraAndNoCardGiveAnEmptyList)
{
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 0U);
    hostShell("ip link del h0");
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 0U);
}

TEST_F(GigeCards, foreignSubnetIsListedAndItsRegistersAreNotRead)
{
    SmallCamera stranger = smallCamera(2);
    stranger.address = 0xC0A83C02;
    cameras->add(stranger, "c0");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(list.count, 1U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, kHost);
    EXPECT_EQ(cameras->look("SN2").registerReads, 0);
    bool accessible = true;
    EXPECT_EQ(access.IsDeviceAccessible(find("SN2"), 3, &accessible),
              static_cast<unsigned int>(KELA_ERROR_UNREACHABLE));
    EXPECT_FALSE(accessible);
    EXPECT_EQ(cameras->look("SN2").registerReads, 0);
}

TEST_F(GigeCards, broadcastAnswersAreHeard)
{
    SmallCamera loud = smallCamera(2);
    loud.address = 0xC0A83C02;
    loud.answersByBroadcast = true;
    cameras->add(loud, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 1U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, kHost);
}

TEST_F(GigeCards, cardThatAppearsIsAskedInTheNextPass)
{
    ASSERT_EQ(enumerate(), 0U);
    wire->addCard("h1", "10.0.0.1/24", "c1");
    SmallCamera camera = smallCamera(2);
    camera.address = 0x0A000002;
    cameras->add(camera, "c1");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(list.count, 1U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, 0x0A000001U);
}

TEST_F(GigeCards, twoLinkLocalCardsEachReachTheirOwnCamera)
{
    hostShell("ip link del h0");
    wire->addCard("h0", "169.254.1.1/16", "d0");
    WireNamespace otherWire;
    otherWire.addCard("h1", "169.254.1.2/16", "d1");
    SmallCameras otherCameras(otherWire);
    SmallCamera one = smallCamera(2);
    one.address = 0xA9FE0905;
    one.mask = 0xFFFF0000;
    SmallCamera other = smallCamera(3);
    other.address = 0xA9FE0906;
    other.mask = 0xFFFF0000;
    cameras->add(one, "d0");
    otherCameras.add(other, "d1");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(list.count, 2U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, 0xA9FE0101U);
    EXPECT_EQ(find("SN3")->special.gige.hostIp, 0xA9FE0102U);
    EXPECT_TRUE(isAccessible("SN2"));
    EXPECT_TRUE(isAccessible("SN3"));
    for (const char *serial : {"SN2", "SN3"}) {
        EXPECT_EQ(connect(serial), 0U) << serial;
    }
}

TEST_F(GigeCards, sameAddressOnTwoCardsStillReachesBothCameras)
{
    hostShell("ip link del h0");
    wire->addCard("h0", "169.254.1.1/16", "d0");
    WireNamespace otherWire;
    otherWire.addCard("h1", "169.254.1.1/16", "d1");
    SmallCameras otherCameras(otherWire);
    SmallCamera one = smallCamera(2);
    one.address = 0xA9FE0905;
    one.mask = 0xFFFF0000;
    SmallCamera other = smallCamera(3);
    other.address = 0xA9FE0906;
    other.mask = 0xFFFF0000;
    cameras->add(one, "d0");
    otherCameras.add(other, "d1");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(list.count, 2U);
    for (const char *serial : {"SN2", "SN3"}) {
        EXPECT_TRUE(isAccessible(serial)) << serial;
        EXPECT_EQ(connect(serial), 0U) << serial;
    }
}

TEST_F(GigeCards, severalAddressesOnACardAreAllAsked)
{
    hostShell("ip addr add 10.1.1.1/24 brd + dev h0");
    SmallCamera inSecond = smallCamera(3);
    inSecond.address = 0x0A010105;
    cameras->add(smallCamera(2), "c0");
    cameras->add(inSecond, "c0");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(list.count, 2U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, kHost);
    EXPECT_EQ(find("SN3")->special.gige.hostIp, 0x0A010101U);
    EXPECT_TRUE(isAccessible("SN2"));
    EXPECT_TRUE(isAccessible("SN3"));
}

TEST_F(GigeCards, cameraOnOneWireWithTwoCardsIsListedOnceAndReachable)
{
    // Both cards on one switch, in one subnet: either may get the answers.
    wire->addCard("h1", "192.168.50.9/24", "c1");
    wire->shell("ip link add sw type bridge && ip link set c0 master sw && ip link set c1 master sw && ip link "
                "set sw up");
    cameras->add(smallCamera(2), "sw");
    const CancelSignal never;
    const TimePoint deadline = Clock::now() + std::chrono::seconds{5};
    while (list.count == 0 && Clock::now() < deadline)
        ASSERT_EQ(enumerate(), 0U); // a bridge takes a moment until it forwards

    ASSERT_EQ(list.count, 1U);
    const std::uint32_t hostIp = list.devices[0]->special.gige.hostIp;
    EXPECT_TRUE(isAccessible("SN2"));
    for (int pass = 0; pass < 5; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        ASSERT_EQ(list.count, 1U);
        EXPECT_EQ(list.devices[0]->special.gige.hostIp, hostIp);
    }
    EXPECT_EQ(connect("SN2"), 0U);
}

TEST_F(GigeCards, cameraOnThisHostIsVirtual)
{
    hostShell("ip link set lo up");
    SmallCameras onThisHost;
    SmallCamera own = smallCamera(1);
    own.serial = "OWN";
    onThisHost.addBeside(own, "h0");
    ASSERT_EQ(enumerate(), 0U);

    ASSERT_EQ(serials(), std::set<std::string>{"OWN"});
    EXPECT_EQ(find("OWN")->placement, static_cast<std::uint32_t>(KELA_PLACEMENT_VIRTUAL));
    EXPECT_EQ(find("OWN")->special.gige.hostIp, kHost);
}

TEST_F(GigeCards, reversePathFilteringIsReportedWhenItChanges)
{
    setReversePathFilter(1);
    ASSERT_EQ(enumerate(), 0U);
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_EQ(log.count("reverse-path filtering (rp_filter) hides"), 1) << log.all();
    setReversePathFilter(0);
    hostShell("echo 0 > /proc/sys/net/ipv4/conf/h0/rp_filter");
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_EQ(log.count("no longer hides"), 1) << log.all();
}
