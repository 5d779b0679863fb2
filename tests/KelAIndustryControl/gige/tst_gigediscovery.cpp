// SPDX-License-Identifier: Apache-2.0
#include "../LogRecorder.h"
#include "SmallCamera.h"
#include "WireNamespace.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <set>

using namespace kela;
using namespace kela::gige;
using kelatest::hostShell;
using kelatest::LogRecorder;
using kelatest::SmallCamera;
using kelatest::smallCamera;
using kelatest::SmallCameras;
using kelatest::WireNamespace;

namespace
{

constexpr std::uint32_t kHost = 0xC0A83201; // 192.168.50.1

void setReversePathFilter(int value)
{
    hostShell("for c in all default; do echo " + std::to_string(value) +
              " > /proc/sys/net/ipv4/conf/$c/rp_filter; done");
}

/// One card at 192.168.50.1, and cameras behind it.
struct GigeDiscovery : testing::Test {
    LogRecorder log;
    std::unique_ptr<WireNamespace> wire;
    std::unique_ptr<SmallCameras> cameras;
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};

    void SetUp() override
    {
        setReversePathFilter(0);
        wire = std::make_unique<WireNamespace>();
        wire->addCard("h0", "192.168.50.1/24", "c0");
        cameras = std::make_unique<SmallCameras>(*wire);
    }

    void TearDown() override
    {
        cameras.reset();
        wire.reset();
        for (const char *card : {"h0", "h1"})
            if (::system((std::string("ip link del ") + card + " 2>/dev/null").c_str()) != 0) // NOLINT
                continue;
    }

    unsigned int enumerate() { return access.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &list, false); }

    std::set<std::string> serials() const
    {
        std::set<std::string> result;
        for (std::uint32_t i = 0; i < list.count; ++i)
            result.emplace(fixedText(list.devices[i]->serialNumber));
        return result;
    }

    KELA_DEVICE_INFO_EX *find(const std::string &serial)
    {
        for (std::uint32_t i = 0; i < list.count; ++i)
            if (fixedText(list.devices[i]->serialNumber) == serial)
                return list.devices[i];
        ADD_FAILURE() << serial << " is not listed";
        static KELA_DEVICE_INFO_EX none;
        none = {};
        return &none;
    }

    bool isAccessible(const std::string &serial, unsigned int mode = KELA_ACCESS_CONTROL)
    {
        bool accessible = false;
        access.IsDeviceAccessible(find(serial), mode, &accessible);
        return accessible;
    }

    static Milliseconds timeOf(const std::function<void()> &action)
    {
        const TimePoint begin = Clock::now();
        action();
        return std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
    }
};

} // namespace

TEST_F(GigeDiscovery, camerasAreListedWithWhatTheyTellInAStableOrder)
{
    for (unsigned int number : {12U, 3U, 7U})
        cameras->add(smallCamera(number), "c0");

    for (int pass = 0; pass < 3; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        ASSERT_EQ(list.count, 3U);
        EXPECT_EQ(fixedText(list.devices[0]->serialNumber), "SN3");
        EXPECT_EQ(fixedText(list.devices[1]->serialNumber), "SN7");
        EXPECT_EQ(fixedText(list.devices[2]->serialNumber), "SN12");
        EXPECT_EQ(list.devices[0]->special.gige.currentIp, kHost + 2);
        EXPECT_EQ(list.devices[0]->special.gige.subnetMask, 0xFFFFFF00U);
        EXPECT_EQ(list.devices[0]->special.gige.hostIp, kHost);
        EXPECT_EQ(fixedText(list.devices[0]->special.gige.manufacturerName), "Vendor");
        EXPECT_EQ(fixedText(list.devices[0]->modelName), "Model");
    }
}

TEST_F(GigeDiscovery, noCameraAndNoCardGiveAnEmptyList)
{
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 0U);
    hostShell("ip link del h0");
    EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 0U);
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

TEST_F(GigeDiscovery, duplicateAnswersAreOneCameraAndNoSignOfLife)
{
    SmallCamera chatty = smallCamera(2);
    chatty.copies = 5;
    cameras->add(chatty, "c0");
    enumerate();
    EXPECT_EQ(list.count, 1U);

    cameras->edit("SN2", [](SmallCamera &camera) { camera.isPlugged = false; });
    enumerate();
    EXPECT_EQ(list.count, 0U);
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

TEST_F(GigeDiscovery, cameraThatDiesBeforeTheAccessQuestionIsListedWithoutDelayAtTheQuestion)
{
    SmallCamera dying = smallCamera(2);
    dying.answersRegisters = false;
    cameras->add(dying, "c0");
    const Milliseconds pass = timeOf([&] { ASSERT_EQ(enumerate(), 0U); });
    ASSERT_EQ(list.count, 1U);
    EXPECT_LT(pass, Milliseconds{1500});

    bool accessible = true;
    unsigned int result = 0;
    const int readsBefore = cameras->look("SN2").registerReads;
    result = access.IsDeviceAccessible(find("SN2"), 3, &accessible);

    EXPECT_EQ(result, static_cast<unsigned int>(KELA_ERROR_TIMEOUT));
    EXPECT_FALSE(accessible);
    EXPECT_EQ(cameras->look("SN2").registerReads, readsBefore) << "asked once per pass";
}

TEST_F(GigeDiscovery, lostRegisterAnswerIsAskedAgain)
{
    SmallCamera camera = smallCamera(2);
    camera.registerReadsToLose = 1;
    cameras->add(camera, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_TRUE(isAccessible("SN2"));
}

TEST_F(GigeDiscovery, foreignSubnetIsListedAndItsRegistersAreNotRead)
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

TEST_F(GigeDiscovery, broadcastAnswersAreHeard)
{
    SmallCamera loud = smallCamera(2);
    loud.address = 0xC0A83C02;
    loud.answersByBroadcast = true;
    cameras->add(loud, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 1U);
    EXPECT_EQ(find("SN2")->special.gige.hostIp, kHost);
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

TEST_F(GigeDiscovery, spoiltAnswersAreRefusedWithOneLineAndTheRestOfThePassGoesOn)
{
    const std::vector<std::function<void(Datagram &)>> faults = {
        [](Datagram &bytes) { bytes.resize(4); },
        [](Datagram &bytes) { bytes.resize(8 + 247); },
        [](Datagram &bytes) { bytes[4] = 0xFF; },
        [](Datagram &bytes) { bytes[5] = 0x10; },
        [](Datagram &bytes) { bytes[0] = 0x80; },
        [](Datagram &bytes) { bytes[7] = static_cast<std::uint8_t>(bytes[7] + 99); },
    };
    cameras->add(smallCamera(2), "c0");
    unsigned int number = 3;
    for (const auto &fault : faults) {
        SmallCamera camera = smallCamera(number++);
        camera.spoil = fault;
        cameras->add(camera, "c0");
    }
    for (int pass = 0; pass < 3; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        EXPECT_EQ(serials(), std::set<std::string>{"SN2"});
    }
    EXPECT_EQ(log.count("gige: refused"), 1) << log.all();
}

TEST_F(GigeDiscovery, answerCutAtEveryLengthMakesNoRow)
{
    SmallCamera camera = smallCamera(2);
    std::atomic<std::size_t> length{0};
    camera.spoil = [&length](Datagram &bytes) { bytes.resize(length); };
    cameras->add(camera, "c0");
    for (length = 0; length < 256; length = length + (length < 16 ? 1 : 31)) {
        ASSERT_EQ(enumerate(), 0U);
        ASSERT_EQ(list.count, 0U) << length;
    }
}

TEST_F(GigeDiscovery, answerFromAWrongPortIsRefused)
{
    SmallCamera camera = smallCamera(2);
    camera.sourcePort = 3957;
    cameras->add(camera, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 0U);
    EXPECT_EQ(log.count("wrong port"), 1) << log.all();
}

TEST_F(GigeDiscovery, randomDatagramsBetweenPassesAreSurvived)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    std::mt19937 random(7);
    for (int i = 0; i < 500; ++i) {
        Datagram bytes(random() % 600);
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        cameras->throwAt("c0", kHost + 1, kHost, cameras->lastClientPort(), bytes);
    }
    for (int pass = 0; pass < 2; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        EXPECT_EQ(serials(), std::set<std::string>{"SN2"});
    }
}

TEST_F(GigeDiscovery, threeHundredCamerasGiveTheFirst256AndALineWithTheRest)
{
    for (unsigned int number = 1; number <= 300; ++number) {
        SmallCamera camera = smallCamera(0);
        camera.hardwareAddress = 0x020000000000 + number;
        camera.serial = "N" + std::to_string(number);
        camera.address = 0xC0A83200 + 2 + number % 250;
        if (number <= 250)
            cameras->add(camera, "c0");
        else
            cameras->addBeside(camera, "c0");
    }
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 256U);
    EXPECT_EQ(log.count("left out: 44"), 1) << log.all();
    EXPECT_EQ(fixedText(list.devices[0]->serialNumber), "N1");
    EXPECT_EQ(fixedText(list.devices[255]->serialNumber), "N256");
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

TEST_F(GigeDiscovery, cardThatGoesDownTakesItsCamerasAndLeavesOneLine)
{
    cameras->add(smallCamera(2), "c0");
    ASSERT_EQ(enumerate(), 0U);
    ASSERT_EQ(list.count, 1U);
    std::thread downer([] {
        const CancelSignal never;
        never.waitUntil(Clock::now() + Milliseconds{5});
        hostShell("ip link set h0 down");
    });
    EXPECT_EQ(enumerate(), 0U);
    downer.join();
    for (int pass = 0; pass < 3; ++pass)
        EXPECT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 0U);
    EXPECT_EQ(log.count("network card h0"), 1) << log.all();

    hostShell("ip link set h0 up");
    const TimePoint deadline = Clock::now() + std::chrono::seconds{5};
    while (list.count == 0 && Clock::now() < deadline)
        EXPECT_EQ(enumerate(), 0U);
    EXPECT_EQ(list.count, 1U) << "the card came back";
}

TEST_F(GigeDiscovery, cardThatAppearsIsAskedInTheNextPass)
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

TEST_F(GigeDiscovery, twoLinkLocalCardsEachReachTheirOwnCamera)
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
        KelAIndustryControl opened;
        ASSERT_EQ(opened.Init(find(serial), false), 0U);
        EXPECT_EQ(opened.Connect(KELA_ACCESS_CONTROL), 0U) << serial;
    }
}

TEST_F(GigeDiscovery, sameAddressOnTwoCardsStillReachesBothCameras)
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
        KelAIndustryControl opened;
        ASSERT_EQ(opened.Init(find(serial), false), 0U);
        EXPECT_EQ(opened.Connect(KELA_ACCESS_CONTROL), 0U) << serial;
    }
}

TEST_F(GigeDiscovery, severalAddressesOnACardAreAllAsked)
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

TEST_F(GigeDiscovery, cameraOnOneWireWithTwoCardsIsListedOnceAndReachable)
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
    KelAIndustryControl opened;
    ASSERT_EQ(opened.Init(find("SN2"), false), 0U);
    EXPECT_EQ(opened.Connect(KELA_ACCESS_CONTROL), 0U);
}

TEST_F(GigeDiscovery, cameraOnThisHostIsVirtual)
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

TEST_F(GigeDiscovery, reversePathFilteringIsReportedWhenItChanges)
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
