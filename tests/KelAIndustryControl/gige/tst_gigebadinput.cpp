// SPDX-License-Identifier: Apache-2.0
// Spoilt answers, floods, and networks that go away.
#include "GigeBed.h"

#include <sys/resource.h>

#include <atomic>
#include <random>

using namespace kela;
using namespace kela::gige;
using namespace kelatest;

namespace
{

using GigeBadInput = GigeBed;

struct Fault {
    const char *name;
    void (*spoil)(Datagram &bytes);
};

constexpr Fault kFaults[] = {
    {"cutInItsHead", [](Datagram &bytes) { bytes.resize(4); }},
    {"cutOneByteShort", [](Datagram &bytes) { bytes.resize(8 + 247); }},
    {"longerThanItSays", [](Datagram &bytes) { bytes[5] = 0x10; }},
    {"shorterThanItSays", [](Datagram &bytes) { bytes[4] = 0xFF; }},
    {"anError", [](Datagram &bytes) { bytes[0] = 0x80; }},
    {"ofAnotherRequest", [](Datagram &bytes) { bytes[7] = static_cast<std::uint8_t>(bytes[7] + 99); }},
    {"withoutACode", [](Datagram &bytes) { bytes[2] = bytes[3] = 0x00; }},
    {"withTheCommandsCode", [](Datagram &bytes) { bytes[3] = 0x02; }},
    {"withAnotherCommandsCode", [](Datagram &bytes) { bytes[3] = 0x05; }},
    {"withAnUnknownCode", [](Datagram &bytes) { bytes[2] = bytes[3] = 0xFF; }},
};

struct SpoiltAnswer : GigeBed, ::testing::WithParamInterface<Fault> {
};

} // namespace

TEST_P(SpoiltAnswer, leavesOneLineAndNoRow)
{
    cameras->add(smallCamera(2), "c0");
    SmallCamera camera = smallCamera(3);
    camera.spoil = GetParam().spoil;
    cameras->add(camera, "c0");

    for (int pass = 0; pass < 3; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        EXPECT_EQ(serials(), std::set<std::string>{"SN2"});
    }
    EXPECT_EQ(log.count("gige: refused"), 1) << log.all();
}

INSTANTIATE_TEST_SUITE_P(Gige, SpoiltAnswer, ::testing::ValuesIn(kFaults),
                         [](const auto &fault) { return std::string(fault.param.name); });

TEST_F(GigeBadInput, duplicateAnswersAreOneCameraAndNoSignOfLife)
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

TEST_F(GigeBadInput, cameraThatDiesBeforeTheAccessQuestionIsListedWithoutDelayAtTheQuestion)
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

TEST_F(GigeBadInput, spoiltAnswersAreRefusedWithOneLineAndTheRestOfThePassGoesOn)
{
    cameras->add(smallCamera(2), "c0");
    unsigned int number = 3;
    for (const Fault &fault : kFaults) {
        SmallCamera camera = smallCamera(number++);
        camera.spoil = fault.spoil;
        cameras->add(camera, "c0");
    }
    for (int pass = 0; pass < 3; ++pass) {
        ASSERT_EQ(enumerate(), 0U);
        EXPECT_EQ(serials(), std::set<std::string>{"SN2"});
    }
    EXPECT_EQ(log.count("gige: refused"), 1) << log.all();
}

TEST_F(GigeBadInput, answerCutAtEveryLengthMakesNoRow)
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

TEST_F(GigeBadInput, answerFromAWrongPortIsRefused)
{
    SmallCamera camera = smallCamera(2);
    camera.sourcePort = 3957;
    cameras->add(camera, "c0");
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 0U);
    EXPECT_EQ(log.count("wrong port"), 1) << log.all();
}

TEST_F(GigeBadInput, randomDatagramsBetweenPassesAreSurvived)
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

TEST_F(GigeBadInput, threeHundredCamerasGiveTheFirst256AndALineWithTheRest)
{
    for (unsigned int number = 1; number <= 300; ++number) {
        SmallCamera camera = smallCamera(0);
        camera.hardwareAddress = 0x020000000000 + number;
        camera.serial = "N" + std::to_string(number);
        camera.address = 0xC0A83200 + 2 + number % 250;
        if (number <= 250) {
            cameras->add(camera, "c0");
        } else {
            cameras->addBeside(camera, "c0");
        }
    }
    ASSERT_EQ(enumerate(), 0U);

    EXPECT_EQ(list.count, 256U);
    EXPECT_EQ(log.count("left out: 44"), 1) << log.all();
    EXPECT_EQ(fixedText(list.devices[0]->serialNumber), "N1");
    EXPECT_EQ(fixedText(list.devices[255]->serialNumber), "N256");
}

TEST_F(GigeBadInput, cardThatGoesDownTakesItsCamerasAndLeavesOneLine)
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

TEST_F(GigeBadInput, hostWithoutSocketsLeftReportsAnErrorAndNoEmptyList)
{
    cameras->add(smallCamera(2), "c0");
    // The first pass is for the sanitizers, which need descriptors of their own the first time.
    ASSERT_EQ(enumerate(), 0U);
    KelAIndustryControl second;
    KELA_DEVICE_INFO_LIST found = {};
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{3, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    const unsigned int result = second.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &found, false);
    ::setrlimit(RLIMIT_NOFILE, &before);

    EXPECT_EQ(result, static_cast<unsigned int>(KELA_ERROR_RESOURCE));
    EXPECT_EQ(second.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &found, false), 0U);
    EXPECT_EQ(found.count, 1U);
}

TEST_F(GigeBadInput, brokenCamerasBesideGoodOnesDoNotMakeThePassLong)
{
    for (unsigned int number = 2; number < 34; ++number) {
        SmallCamera camera = smallCamera(number);
        camera.answersRegisters = number % 2 == 0;
        cameras->add(camera, "c0");
    }
    const Milliseconds taken = timeOf([&] { ASSERT_EQ(enumerate(), 0U); });

    EXPECT_EQ(list.count, 32U);
    EXPECT_TRUE(isAccessible("SN2"));
    EXPECT_FALSE(isAccessible("SN3"));
    EXPECT_LT(taken, Milliseconds{1500}) << "all are asked at once, none after the other";
}
