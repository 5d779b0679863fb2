// SPDX-License-Identifier: Apache-2.0
// What a pass finds, waits for and remembers.
#include "GigeBed.h"

#include <atomic>

using namespace kela;
using namespace kela::gige;
using namespace kelatest;

namespace
{

using GigeDiscovery = GigeBed;

} // namespace

TEST_F(GigeDiscovery, camerasAreListedWithWhatTheyTellInAStableOrder)
{
    for (unsigned int number : {12U, 3U, 7U})
        cameras->add(smallCamera(number), "c0");

    for (int pass = 0; pass < 3; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        EXPECT_EQ(orderedSerials(), (std::vector<std::string>{"SN3", "SN7", "SN12"}));
    }
    const KELA_DEVICE_INFO_EX &info = *find("SN3");
    EXPECT_EQ(info.special.gige.currentIp, kHost + 2);
    EXPECT_EQ(info.special.gige.subnetMask, 0xFFFFFF00U);
    EXPECT_EQ(info.special.gige.hostIp, kHost);
    EXPECT_EQ(fixedText(info.special.gige.manufacturerName), "Vendor");
    EXPECT_EQ(fixedText(info.modelName), "Model");
}

TEST_F(GigeDiscovery, knownCamerasDoNotMakeAPassLong)
{
    for (unsigned int number = 2; number < 18; ++number)
        cameras->add(smallCamera(number), "c0");
    ASSERT_EQ(enumerate(), 0U);
    ASSERT_EQ(list.count, 16U);
    cameras->edit("SN2", [](SmallCamera &camera) { camera.discoveries = 0; });

    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 16U);
    // One burst, a limited and a directed broadcast: nobody was waited for.
    EXPECT_LE(cameras->look("SN2").discoveries, 4);
}

TEST_F(GigeDiscovery, answerAfterTheWindowIsInTheNextResult)
{
    SmallCamera slow = smallCamera(2);
    slow.discoveryDelay = Milliseconds{400};
    cameras->add(slow, "c0");
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 0U);
    const CancelSignal never;
    never.waitUntil(Clock::now() + Milliseconds{500}); // the camera's delay

    // It takes as long again, so this pass can only know it from what came in between.
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(serials(), std::set<std::string>{"SN2"});
}

TEST_F(GigeDiscovery, slowCameraStaysListedFromPassToPass)
{
    SmallCamera slow = smallCamera(2);
    slow.discoveryDelay = Milliseconds{900};
    cameras->add(slow, "c0");
    enumerate();
    const CancelSignal never;
    never.waitUntil(Clock::now() + Milliseconds{950}); // the camera's delay

    for (int pass = 0; pass < 12; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        ASSERT_EQ(list.count, 1U) << pass;
    }
}

TEST_F(GigeDiscovery, oneLostDatagramRemovesNobody)
{
    cameras->add(smallCamera(2), "c0");
    cameras->add(smallCamera(3), "c0");
    enumerate();
    ASSERT_EQ(list.count, 2U);

    cameras->edit("SN2", [](SmallCamera &camera) { camera.discoveriesToLose = 2; });
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 2U);
}

TEST_F(GigeDiscovery, cameraThatHearsNoBroadcastIsAskedByUnicastBeforeItLeaves)
{
    cameras->add(smallCamera(2), "c0");
    enumerate();
    ASSERT_EQ(list.count, 1U);

    cameras->edit("SN2", [](SmallCamera &camera) { camera.discoveriesToLose = 1000; });
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_GE(cameras->look("SN2").unicastDiscoveries, 1);
}

TEST_F(GigeDiscovery, unpluggedCameraLeavesInTheNextPassAndReturns)
{
    cameras->add(smallCamera(2), "c0");
    cameras->add(smallCamera(3), "c0");
    enumerate();
    ASSERT_EQ(list.count, 2U);

    cameras->edit("SN2", [](SmallCamera &camera) { camera.isPlugged = false; });
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_EQ(serials(), std::set<std::string>{"SN3"});

    cameras->edit("SN2", [](SmallCamera &camera) { camera.isPlugged = true; });
    for (int pass = 0; pass < 3 && list.count < 2; ++pass)
        enumerate();
    EXPECT_EQ(list.count, 2U);
}

TEST_F(GigeDiscovery, stateIsReadWithinThePassAndNotAskedAgain)
{
    SmallCamera held = smallCamera(2);
    held.registers[0x0A00] = 2;
    held.registers[0x0A14] = 0xC0A83263;
    held.registers[0x0D00] = 0x1388;
    cameras->add(held, "c0");
    cameras->add(smallCamera(3), "c0");
    ASSERT_EQ(enumerate(), 0U);
    const int readsInPass = cameras->look("SN2").registerReads;

    EXPECT_FALSE(isAccessible("SN2"));
    EXPECT_TRUE(isAccessible("SN2", KELA_ACCESS_MONITOR));
    EXPECT_TRUE(isAccessible("SN3"));
    bool isOn = false;
    EXPECT_EQ(access.GetMulticastStatus(find("SN2"), &isOn), 0U);
    EXPECT_TRUE(isOn);
    EXPECT_EQ(find("SN2")->special.gige.primaryApplicationIp, 0xC0A83263U);
    EXPECT_EQ(find("SN3")->special.gige.primaryApplicationIp, 0U);
    EXPECT_EQ(cameras->look("SN2").registerReads, readsInPass);
}

TEST_F(GigeDiscovery, olderStateIsAskedOfTheDevice)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    const CancelSignal never;
    never.waitUntil(Clock::now() + Milliseconds{600}); // longer than a pass's values are taken for fresh
    cameras->edit("SN2", [](SmallCamera &camera) { camera.registers[0x0A00] = 2; });

    EXPECT_FALSE(isAccessible("SN2"));
}

TEST_F(GigeDiscovery, exclusivelyHeldCameraIsInUseForEverybody)
{
    SmallCamera exclusive = smallCamera(2);
    exclusive.registerStatus = kStatusAccessDenied;
    cameras->add(exclusive, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 1U);
    EXPECT_FALSE(isAccessible("SN2"));
    EXPECT_FALSE(isAccessible("SN2", KELA_ACCESS_MONITOR));
    bool isOn = true;
    EXPECT_EQ(access.GetMulticastStatus(find("SN2"), &isOn), static_cast<unsigned int>(KELA_ERROR_IN_USE));
    EXPECT_FALSE(isOn);
}

TEST_F(GigeDiscovery, lostRegisterAnswerIsAskedAgain)
{
    SmallCamera camera = smallCamera(2);
    camera.registerReadsToLose = 1;
    cameras->add(camera, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_TRUE(isAccessible("SN2"));
}

TEST_F(GigeDiscovery, acknowledgeModeDecidesTheFlagOfTheQuestion)
{
    cameras->add(smallCamera(2), "c0");
    EXPECT_EQ(access.SetEnumAckMode(0), 0U);
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 1U);
    EXPECT_FALSE(cameras->look("SN2").wasBroadcastAllowed);

    EXPECT_EQ(access.SetEnumAckMode(1), 0U);
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 1U);
    EXPECT_TRUE(cameras->look("SN2").wasBroadcastAllowed);
}

TEST_F(GigeDiscovery, placementTellsOtherDevices)
{
    SmallCamera light = smallCamera(2);
    light.deviceMode = 0xB0000000;
    cameras->add(light, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(find("SN2")->placement, static_cast<std::uint32_t>(KELA_PLACEMENT_OTHER));
}

TEST_F(GigeDiscovery, camerasWithoutHardwareAddressAreNotFoldedIntoOne)
{
    for (unsigned int number = 2; number < 6; ++number) {
        SmallCamera camera = smallCamera(number);
        camera.hardwareAddress = 0;
        cameras->add(camera, "c0");
    }
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 4U);
}

TEST_F(GigeDiscovery, changedNameAndHolderAreInTheNextResult)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    EXPECT_TRUE(isAccessible("SN2"));

    cameras->edit("SN2", [](SmallCamera &camera) {
        camera.userName = "sixteen bytes ok";
        camera.registers[0x0A00] = 2;
    });
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(fixedText(find("SN2")->special.gige.userDefinedName), "sixteen bytes ok");
    EXPECT_FALSE(isAccessible("SN2"));
}

TEST_F(GigeDiscovery, cancelEndsAPassAtOnce)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    cameras->edit("SN2", [](SmallCamera &camera) { camera.isPlugged = false; }); // makes the next pass long
    std::thread canceller([&] {
        const CancelSignal never;
        never.waitUntil(Clock::now() + Milliseconds{100});
        access.CancelEnum();
    });
    const Milliseconds taken =
        timeOf([&] { EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_ERROR_CANCELLED)); });
    canceller.join();

    EXPECT_LT(taken, Milliseconds{800});
    EXPECT_EQ(list.count, 0U);
}

TEST_F(GigeDiscovery, otherThreadsAskWhileAPassRuns)
{
    cameras->add(smallCamera(2), "c0");
    cameras->add(smallCamera(3), "c0");
    ASSERT_EQ(enumerate(), 0U);
    KELA_DEVICE_INFO_EX known = *find("SN2");
    std::atomic<bool> isEnding{false};
    std::atomic<int> answers{0};
    std::thread asker([&] {
        while (!isEnding) {
            bool accessible = false;
            bool isOn = false;
            if (access.IsDeviceAccessible(&known, 3, &accessible) == 0 && accessible)
                ++answers;
            access.GetMulticastStatus(&known, &isOn);
            access.UnloadGenTLLibrary("/nonexistent.cti");
        }
    });
    for (int pass = 0; pass < 10; ++pass) {
        EXPECT_EQ(enumerate(), 0U);
        EXPECT_EQ(list.count, 2U);
    }
    isEnding = true;
    asker.join();

    EXPECT_GT(answers, 0);
}

TEST_F(GigeDiscovery, listGivenBeforeIsUntouchedByOtherQuestions)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    const KELA_DEVICE_INFO_EX before = *list.devices[0];

    KelAIndustryControl other;
    KELA_DEVICE_INFO_LIST otherList = {};
    ASSERT_EQ(other.EnumDevices(1, &otherList, false), 0U);
    isAccessible("SN2");

    EXPECT_EQ(std::memcmp(&before, list.devices[0], sizeof before), 0);
    EXPECT_NE(otherList.devices[0], list.devices[0]);
}
