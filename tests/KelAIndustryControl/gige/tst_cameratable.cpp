// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/CameraTable.h>

#include <gtest/gtest.h>

#include <cstring>

using namespace kela;
using namespace kela::gige;

namespace
{

constexpr std::uint32_t kCamera = 0xC0A83202; // 192.168.50.2
constexpr std::uint32_t kMask = 0xFFFFFF00;

Card card(unsigned int index, std::uint32_t address, std::uint32_t mask = kMask)
{
    Card result;
    result.index = index;
    result.name = "h" + std::to_string(index);
    result.addresses.push_back({address, mask, address | ~mask, 0});
    return result;
}

DiscoveryAnswer answer(std::uint64_t hardwareAddress, const char *serial = "S", std::uint32_t address = kCamera,
                       std::uint32_t mask = kMask)
{
    DiscoveryAnswer result;
    result.hardwareAddress = hardwareAddress;
    result.currentIp = address;
    result.subnetMask = mask;
    std::memcpy(result.texts.serialNumber, serial, std::strlen(serial));
    return result;
}

struct Table : testing::Test {
    Cards cards{card(1, 0xC0A83201), card(2, 0xC0A83209), card(3, 0x0A000001)};
    CameraTable table;
    std::uint64_t pass = 0;

    void begin() { table.beginPass(++pass, cards); }

    CameraTable::Noted hear(const DiscoveryAnswer &heard, unsigned int cardIndex, std::uint64_t requestPass = 0)
    {
        return table.note({heard, findCard(cards, cardIndex), 0, requestPass ? requestPass : pass},
                          Clock::now());
    }

    const Camera &only()
    {
        EXPECT_EQ(table.cameras().size(), 1U);
        return table.cameras().begin()->second;
    }
};

} // namespace

TEST_F(Table, cameraSeenThroughTwoCardsIsListedOnce)
{
    begin();
    EXPECT_TRUE(hear(answer(7), 1).isNew);
    EXPECT_FALSE(hear(answer(7), 2).isNew);
    table.settle();

    EXPECT_EQ(only().chosenCard, 1U);
}

TEST_F(Table, cardWhoseSubnetFitsIsTheBetterOne)
{
    begin();
    hear(answer(7, "S", 0x0A000005), 1);
    hear(answer(7, "S", 0x0A000005), 3);
    table.settle();

    EXPECT_EQ(only().chosenCard, 3U);
    EXPECT_EQ(only().chosen()->hostAddress, 0x0A000001U);
}

TEST_F(Table, cameraStaysWithTheCardThatReportedItBefore)
{
    begin();
    hear(answer(7), 2);
    table.settle();
    begin();
    hear(answer(7), 1);
    EXPECT_TRUE(table.isAwaited(only())) << "the card it was listed with has not heard it yet";
    hear(answer(7), 2);
    EXPECT_FALSE(table.isAwaited(only()));
    table.settle();

    EXPECT_EQ(only().chosenCard, 2U);
}

TEST_F(Table, cameraMovesToTheOnlyCardThatHearsIt)
{
    begin();
    hear(answer(7), 2);
    table.settle();
    begin();
    hear(answer(7), 1);
    table.settle();

    EXPECT_EQ(only().chosenCard, 1U);
}

TEST_F(Table, cameraIsNotWaitedForWhenItsCardIsGone)
{
    begin();
    hear(answer(7), 2);
    table.settle();
    cards.erase(cards.begin() + 1);
    begin();

    EXPECT_FALSE(table.isAwaited(only()));
    table.settle();
    EXPECT_TRUE(table.cameras().empty());
}

TEST_F(Table, camerasWithoutHardwareAddressAreToldApartBySerialAndAddress)
{
    begin();
    hear(answer(0, "A", 0xC0A83202), 1);
    hear(answer(0, "A", 0xC0A83203), 1);
    hear(answer(0, "B", 0xC0A83203), 1);
    EXPECT_EQ(table.cameras().size(), 3U);
}

TEST_F(Table, cameraWithHardwareAddressKeepsItsIdentityWhenItsAddressChanges)
{
    begin();
    hear(answer(7, "S", 0xC0A83202), 1);
    table.settle();
    begin();
    EXPECT_FALSE(hear(answer(7, "S", 0xC0A83263), 1).isNew);
    table.settle();

    EXPECT_EQ(only().chosen()->answer.currentIp, 0xC0A83263U);
}

TEST_F(Table, twinsWithOneHardwareAddressAreTwoCameras)
{
    begin();
    hear(answer(7, "left"), 1);
    hear(answer(7, "right"), 3);
    EXPECT_EQ(table.cameras().size(), 2U);
}

TEST_F(Table, silentCameraLeaves)
{
    begin();
    hear(answer(7), 1);
    table.settle();
    begin();
    EXPECT_TRUE(table.isAwaited(only()));
    table.settle();

    EXPECT_TRUE(table.cameras().empty());
}

TEST_F(Table, lateAnswerCountsForTheNextPassOnce)
{
    begin();
    table.settle();
    begin();
    EXPECT_TRUE(hear(answer(7), 1, 1).isNew);
    table.settle();
    EXPECT_EQ(table.cameras().size(), 1U);

    begin();
    EXPECT_EQ(hear(answer(7), 1, 1).camera, nullptr) << "a copy of what was counted before";
    EXPECT_TRUE(table.isAwaited(only()));
}

TEST_F(Table, copyOfTheLastPassesAnswerIsNoSignOfLife)
{
    begin();
    hear(answer(7), 1);
    table.settle();
    begin();
    hear(answer(7), 1, 1);
    table.settle();

    EXPECT_TRUE(table.cameras().empty());
}

TEST_F(Table, aliveCameraStaysUnlessItsAddressIsTaken)
{
    begin();
    hear(answer(7), 1);
    hear(answer(8, "T", 0xC0A83203), 1);
    table.settle();
    begin();
    for (auto &entry : table.cameras())
        entry.second.isAlive = true;
    hear(answer(9, "new", 0xC0A83203), 1);
    table.settle();

    EXPECT_EQ(table.cameras().size(), 2U);
    EXPECT_EQ(table.cameras().count(keyOf(answer(7))), 1U);
    EXPECT_EQ(table.cameras().count(keyOf(answer(8, "T", 0xC0A83203))), 0U);
}

TEST_F(Table, foreignSubnetDoesNotFit)
{
    begin();
    hear(answer(7, "S", 0xC0A83C02), 1);
    table.settle();

    EXPECT_FALSE(only().chosen()->fits);
    EXPECT_EQ(only().chosen()->hostAddress, 0xC0A83201U);
}

TEST_F(Table, cameraWithoutMaskIsMeasuredByTheCards)
{
    begin();
    hear(answer(7, "S", kCamera, 0), 1);
    EXPECT_TRUE(only().sightings.front().fits);
}

TEST_F(Table, addressThatIsNoSingleCamerasNeverFits)
{
    begin();
    hear(answer(1, "broadcast", 0xC0A832FF), 1);
    hear(answer(2, "multicast", 0xE0000001, 0), 1);
    hear(answer(3, "none", 0, 0), 1);
    hear(answer(4, "ours", 0xC0A83201), 1);
    for (const auto &entry : table.cameras())
        EXPECT_FALSE(entry.second.sightings.front().fits) << entry.first.serial;
}

TEST_F(Table, floodOfInventedCamerasIsBounded)
{
    begin();
    for (std::uint64_t i = 1; i < 5000; ++i)
        hear(answer(i), 1);
    EXPECT_LE(table.cameras().size(), 1024U);
}

TEST(HostAddress, isTheOneWhoseSubnetHoldsTheCamera)
{
    Card twoAddresses = card(1, 0x0A000001);
    twoAddresses.addresses.push_back({0xC0A83201, kMask, 0xC0A832FF, 0});

    EXPECT_EQ(hostAddressFor(twoAddresses, answer(7), 0x0A000001, 0), 0xC0A83201U);
    EXPECT_EQ(hostAddressFor(twoAddresses, answer(7), 0xC0A83201, 0x0A000001), 0xC0A83201U);
    EXPECT_EQ(hostAddressFor(twoAddresses, answer(7, "S", 0x01020304), 0xC0A83201, 0), 0xC0A83201U)
        << "a foreign camera: the address that it answered to";
    EXPECT_EQ(hostAddressFor(twoAddresses, answer(7, "S", 0x01020304), 0xFFFFFFFF, 0), 0x0A000001U);
}

TEST(CameraRecord, textsWithoutTheirEndAreReadToTheEndOfTheField)
{
    DiscoveryAnswer full = answer(0x000CDF010203);
    std::memset(full.texts.serialNumber, 'S', sizeof full.texts.serialNumber);
    std::memset(full.texts.userDefinedName, 'U', sizeof full.texts.userDefinedName);
    std::memset(full.texts.modelName, 'M', sizeof full.texts.modelName);
    std::memset(full.texts.manufacturerName, 'V', sizeof full.texts.manufacturerName);
    std::memset(full.texts.deviceVersion, '1', sizeof full.texts.deviceVersion);

    const KELA_DEVICE_INFO_EX info = recordOf(full, 0xC0A83201, false);

    EXPECT_EQ(fixedText(info.serialNumber), std::string(16, 'S'));
    EXPECT_EQ(fixedText(info.special.gige.userDefinedName), std::string(16, 'U'));
    EXPECT_EQ(fixedText(info.modelName), std::string(32, 'M'));
    EXPECT_EQ(fixedText(info.special.gige.manufacturerName), std::string(32, 'V'));
    EXPECT_EQ(fixedText(info.secondName), std::string(32, '1'));
}

TEST(CameraRecord, holdsWhatTheCameraTold)
{
    DiscoveryAnswer told = answer(0x000CDF010203, "S1");
    told.ipConfigOptions = 7;
    told.ipConfigCurrent = 5;
    told.gateway = 0xC0A832FE;

    const KELA_DEVICE_INFO_EX info = recordOf(told, 0xC0A83201, false);

    EXPECT_EQ(info.transport, static_cast<std::uint32_t>(KELA_INTERFACE_TYPE_GIGE));
    EXPECT_EQ(info.special.gige.macHigh, 0x000CU);
    EXPECT_EQ(info.special.gige.macLow, 0xDF010203U);
    EXPECT_EQ(info.special.gige.ipConfigOptions, 7U);
    EXPECT_EQ(info.special.gige.ipConfigCurrent, 5U);
    EXPECT_EQ(info.special.gige.currentIp, kCamera);
    EXPECT_EQ(info.special.gige.subnetMask, kMask);
    EXPECT_EQ(info.special.gige.gateway, 0xC0A832FEU);
    EXPECT_EQ(info.special.gige.hostIp, 0xC0A83201U);
    EXPECT_EQ(info.placement, static_cast<std::uint32_t>(KELA_PLACEMENT_REAL));
    EXPECT_EQ(keyOf(info).hardwareAddress, 0x000CDF010203U);
    EXPECT_EQ(keyOf(info).serial, "S1");
}

TEST(CameraRecord, junkBehindTheEndOfATextIsLeftOut)
{
    DiscoveryAnswer clean = answer(7, "S1");
    DiscoveryAnswer junk = clean;
    std::memcpy(junk.texts.serialNumber, "S1\0junk", 7);

    const KELA_DEVICE_INFO_EX one = recordOf(clean, 1, false);
    const KELA_DEVICE_INFO_EX other = recordOf(junk, 1, false);
    EXPECT_EQ(std::memcmp(&one, &other, sizeof one), 0);
}

TEST(CameraRecord, placementFollowsPlaceAndClass)
{
    DiscoveryAnswer light = answer(7);
    light.deviceMode = 0xB0000000;
    EXPECT_EQ(recordOf(light, 1, false).placement, static_cast<std::uint32_t>(KELA_PLACEMENT_OTHER));
    EXPECT_EQ(recordOf(light, 1, true).placement, static_cast<std::uint32_t>(KELA_PLACEMENT_VIRTUAL));
}
