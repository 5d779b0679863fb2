// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpSocket.h>
#include <KelAIndustryControl/gige/IntegerNodes.h>
#include <KelAIndustryControl/gige/NetworkCards.h>
#include <KelAIndustryControl/gige/ReversePathFilter.h>

#include <gtest/gtest.h>

using namespace kela::gige;

namespace
{

constexpr std::uint32_t kMask = 0xFFFFFF00;

Card card(unsigned int index, std::uint32_t address, std::uint32_t mask = kMask)
{
    Card result;
    result.index = index;
    result.addresses.push_back({address, mask, address | ~mask, 0});
    return result;
}

} // namespace

TEST(NetworkCards, neighboursAreEqualUnderBothMasks)
{
    const CardAddress host{0xC0A83201, kMask, 0xC0A832FF, 0};
    EXPECT_TRUE(isNeighbour(host, 0xC0A83202, kMask));
    EXPECT_TRUE(isNeighbour(host, 0xC0A83202, 0));
    EXPECT_FALSE(isNeighbour(host, 0xC0A83302, kMask));
    EXPECT_FALSE(isNeighbour(host, 0xC0A83281, 0xFFFFFF80)) << "the camera takes us for a stranger";
    EXPECT_FALSE(isNeighbour(host, 0xC0A83302, 0xFFFF0000)) << "we take it for a stranger";
}

TEST(NetworkCards, otherEndOfAPointToPointLinkIsANeighbour)
{
    const CardAddress host{0x0A000001, 0xFFFFFFFF, 0, 0x0A000002};
    EXPECT_TRUE(isNeighbour(host, 0x0A000002, 0xFFFFFFFF));
    EXPECT_FALSE(isNeighbour(host, 0x0A000003, 0xFFFFFFFF));
}

TEST(NetworkCards, cardsOfOneSubnetAreMarked)
{
    Cards cards{card(1, 0xA9FE0001, 0xFFFF0000), card(2, 0xA9FE0102, 0xFFFF0000), card(3, 0x0A000001)};
    markSharedSubnets(cards);
    EXPECT_TRUE(cards[0].sharesSubnet);
    EXPECT_TRUE(cards[1].sharesSubnet);
    EXPECT_FALSE(cards[2].sharesSubnet);
}

TEST(NetworkCards, everyLoopbackAddressIsOurs)
{
    EXPECT_TRUE(isOwnAddress({}, 0x7F000005));
    EXPECT_TRUE(isOwnAddress({card(1, 0x0A000001)}, 0x0A000001));
    EXPECT_FALSE(isOwnAddress({card(1, 0x0A000001)}, 0x0A000002));
}

TEST(CameraRoute, leavesByTheCardThatSawTheCamera)
{
    const Cards cards{card(1, 0xC0A83201), card(2, 0x0A000001)};
    const CameraRoute route = routeTo(cards, {0xC0A83202, kMask, 0x0A000001, 0});
    EXPECT_EQ(route.path.cardIndex, 2U);
    EXPECT_EQ(route.path.source, 0x0A000001U);
}

TEST(CameraRoute, cardsWithOneAddressAreToldApartByTheirIndex)
{
    const Cards cards{card(1, 0xA9FE0001), card(2, 0xA9FE0001)};
    EXPECT_EQ(routeTo(cards, {0xA9FE0002, kMask, 0xA9FE0001, 2}).path.cardIndex, 2U);
    EXPECT_EQ(routeTo(cards, {0xA9FE0002, kMask, 0xA9FE0001, 0}).path.cardIndex, 1U);
    EXPECT_EQ(routeTo(cards, {0xA9FE0002, kMask, 0xA9FE0001, 9}).path.cardIndex, 1U) << "a card that is gone";
}

TEST(CameraRoute, unseenCameraLeavesByTheCardOfItsSubnetOrByTheRoutingTable)
{
    const Cards cards{card(1, 0xC0A83201), card(2, 0x0A000001)};
    EXPECT_EQ(routeTo(cards, {0x0A000005, kMask, 0, 0}).path.cardIndex, 2U);
    EXPECT_EQ(routeTo(cards, {0x08080808, kMask, 0, 0}).card, nullptr);
    EXPECT_EQ(routeTo(cards, {0xC0A83201, kMask, 0xC0A83201, 1}).card, nullptr)
        << "a camera on this host itself";
}

TEST(ReversePathFilter, defaultRouteIsFoundInTheTable)
{
    const std::string head =
        "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\tMTU\tWindow\tIRTT\n";
    const std::string local = "h0\t0032A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0\n";
    const std::string byDefault = "h0\t00000000\t0132A8C0\t0003\t0\t0\t0\t00000000\t0\t0\t0\n";
    EXPECT_FALSE(hasDefaultRoute(""));
    EXPECT_FALSE(hasDefaultRoute(head + local));
    EXPECT_TRUE(hasDefaultRoute(head + local + byDefault));
    EXPECT_FALSE(hasDefaultRoute(head + "garbage\n\n\t\t\n"));
}

TEST(IntegerNodes, areFoundByTheirStandardNames)
{
    ASSERT_NE(findIntegerNode("GevSCDA"), nullptr);
    EXPECT_EQ(findIntegerNode("GevSCDA")->address, 0x0D18U);
    EXPECT_EQ(findIntegerNode("GevSCPHostPort")->valueIn(0x80031234), 0x1234);
    EXPECT_EQ(findIntegerNode("GevSCPHostPort")->maximum(), 0xFFFF);
    EXPECT_EQ(findIntegerNode("GevSCPInterfaceIndex")->valueIn(0x80031234), 3);
    EXPECT_EQ(findIntegerNode("GevCCP")->address, 0x0A00U);
    EXPECT_EQ(findIntegerNode("GevHeartbeatTimeout")->address, 0x0938U);
    EXPECT_EQ(findIntegerNode("GevCurrentIPAddress")->maximum(), 0xFFFFFFFF);
    EXPECT_EQ(findIntegerNode("GevMACAddress")->valueIn(0xEEEE000CDF010203), 0x000CDF010203);
    EXPECT_GE(findIntegerNode("GevTimestampValue")->valueIn(~0ULL), 0) << "never negative";
}

TEST(IntegerNodes, unknownNameIsNone)
{
    EXPECT_EQ(findIntegerNode(""), nullptr);
    EXPECT_EQ(findIntegerNode("GevSCD"), nullptr);
    EXPECT_EQ(findIntegerNode("gevscda"), nullptr);
}
