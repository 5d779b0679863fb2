// SPDX-License-Identifier: Apache-2.0
#include "../LogRecorder.h"
#include "SmallCamera.h"
#include "WireNamespace.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <algorithm>

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
constexpr auto kUnreachable = static_cast<unsigned int>(KELA_ERROR_UNREACHABLE);
constexpr auto kTimeout = static_cast<unsigned int>(KELA_ERROR_TIMEOUT);
constexpr auto kInUse = static_cast<unsigned int>(KELA_ERROR_IN_USE);
constexpr auto kParameter = static_cast<unsigned int>(KELA_ERROR_PARAMETER);
constexpr auto kNotSupported = static_cast<unsigned int>(KELA_ERROR_NOT_SUPPORTED);

/// One camera, SN2 at 192.168.50.2, behind a card at 192.168.50.1. Nothing is enumerated.
struct GigeAccess : testing::Test {
    LogRecorder log;
    std::unique_ptr<WireNamespace> wire;
    std::unique_ptr<SmallCameras> cameras;
    KELA_DEVICE_INFO_EX info = {};

    void SetUp() override
    {
        wire = std::make_unique<WireNamespace>();
        wire->addCard("h0", "192.168.50.1/24", "c0");
        cameras = std::make_unique<SmallCameras>(*wire);
        cameras->add(smallCamera(2), "c0");
        info.transport = KELA_INTERFACE_TYPE_GIGE;
        info.special.gige.currentIp = kHost + 1;
        info.special.gige.subnetMask = 0xFFFFFF00;
        info.special.gige.hostIp = kHost;
    }

    void TearDown() override
    {
        cameras.reset();
        wire.reset();
        hostShell("ip link del h0 2>/dev/null || true");
    }

    void change(const std::function<void(SmallCamera &)> &edit) { cameras->edit("SN2", edit); }

    static void expectStreamNodes(KelAIndustryControl &access)
    {
        EXPECT_EQ(node(access, "GevSCDA"), 0xEF010203);
        EXPECT_EQ(node(access, "GevSCPHostPort"), 0x1388);
        EXPECT_EQ(node(access, "GevSCPInterfaceIndex"), 1);
    }

    static long long node(KelAIndustryControl &access, const char *name)
    {
        KELCC_INTVALUE_EX_T value;
        EXPECT_EQ(access.GetIntegerNodeValue(name, &value, true), 0U) << name;
        return value.current;
    }
};

} // namespace

TEST_F(GigeAccess, controlIsTakenKeptAndGivenBack)
{
    change([](SmallCamera &camera) { camera.registers[0x0938] = 300; });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_CONTROL), 0U);
    EXPECT_EQ(cameras->look("SN2").registers[0x0A00], 2U);

    const int before = cameras->look("SN2").registerReads;
    EXPECT_TRUE(cameras->waitFor("SN2", [before](const SmallCamera &camera) {
        return camera.registerReads >= before + 3;
    })) << "the heartbeat goes on by itself";

    EXPECT_EQ(access.DisConnect(false), 0U);
    EXPECT_EQ(cameras->look("SN2").registers[0x0A00], 0U);
    EXPECT_EQ(cameras->look("SN2").writes, (std::vector<std::uint32_t>{2, 0}));
}

TEST_F(GigeAccess, exclusiveAccessIsTaken)
{
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_EXCLUSIVE), 0U);
    EXPECT_EQ(cameras->look("SN2").registers[0x0A00], 1U);
}

TEST_F(GigeAccess, monitorWritesNothing)
{
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_MONITOR), 0U);
    EXPECT_EQ(node(access, "GevCCP"), 0);
    EXPECT_EQ(access.DisConnect(false), 0U);
    EXPECT_TRUE(cameras->look("SN2").writes.empty());
}

TEST_F(GigeAccess, cameraIsGivenBackWhenTheObjectDies)
{
    {
        KelAIndustryControl access;
        ASSERT_EQ(access.Init(&info, false), 0U);
        ASSERT_EQ(access.Connect(KELA_ACCESS_CONTROL), 0U);
        access.CancelEnum();
    }
    EXPECT_TRUE(cameras->waitFor("SN2", [](const SmallCamera &camera) {
        return camera.writes.size() >= 2 && camera.writes.back() == 0;
    }));
}

TEST_F(GigeAccess, cameraOfSomebodyElseIsLeftAlone)
{
    change([](SmallCamera &camera) { camera.registers[0x0A00] = 2; });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);

    EXPECT_EQ(access.Connect(KELA_ACCESS_CONTROL), kInUse);
    EXPECT_EQ(access.Connect(KELA_ACCESS_EXCLUSIVE), kInUse);
    EXPECT_TRUE(cameras->look("SN2").writes.empty());
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), 0U);
}

TEST_F(GigeAccess, secondObjectFindsTheCameraInUse)
{
    KelAIndustryControl first;
    ASSERT_EQ(first.Init(&info, false), 0U);
    ASSERT_EQ(first.Connect(KELA_ACCESS_CONTROL), 0U);

    KelAIndustryControl second;
    bool accessible = true;
    EXPECT_EQ(second.IsDeviceAccessible(&info, KELA_ACCESS_CONTROL, &accessible), 0U);
    EXPECT_FALSE(accessible);
    ASSERT_EQ(second.Init(&info, false), 0U);
    EXPECT_EQ(second.Connect(KELA_ACCESS_CONTROL), kInUse);
}

TEST_F(GigeAccess, exclusivelyHeldCameraRefusesEvenMonitors)
{
    change([](SmallCamera &camera) { camera.registerStatus = kStatusAccessDenied; });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), kInUse);
}

TEST_F(GigeAccess, lostControlIsNoticedAndNotGivenBack)
{
    change([](SmallCamera &camera) { camera.registers[0x0938] = 300; });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_CONTROL), 0U);
    change([](SmallCamera &camera) { camera.registers[0x0A00] = 1; });
    const CancelSignal never;
    const TimePoint deadline = Clock::now() + std::chrono::seconds{3};
    while (log.count("was lost") == 0 && Clock::now() < deadline)
        never.waitUntil(Clock::now() + Milliseconds{10});

    EXPECT_EQ(log.count("control of camera"), 1) << log.all();
    EXPECT_EQ(access.DisConnect(false), 0U);
    EXPECT_EQ(cameras->look("SN2").writes, std::vector<std::uint32_t>{2});
}

TEST_F(GigeAccess, integerNodesHaveTheirValuesAndLimits)
{
    change([](SmallCamera &camera) {
        camera.registers[0x0D18] = 0xEF010203;
        camera.registers[0x0D00] = 0x00011388;
        camera.registers[0x0A14] = 0xC0A83263;
        camera.registers[0x0024] = kHost + 1;
    });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_MONITOR), 0U);

    expectStreamNodes(access);
    EXPECT_EQ(node(access, "GevHeartbeatTimeout"), 3000);
    EXPECT_EQ(node(access, "GevCurrentIPAddress"), kHost + 1);
    EXPECT_EQ(node(access, "GevPrimaryApplicationIPAddress"), 0xC0A83263);

    KELCC_INTVALUE_EX_T value;
    ASSERT_EQ(access.GetIntegerNodeValue("GevSCPHostPort", &value, true), 0U);
    EXPECT_EQ(value.minimum, 0);
    EXPECT_EQ(value.maximum, 0xFFFF);
    EXPECT_EQ(value.increment, 1);
}

TEST_F(GigeAccess, unknownNodeIsAnErrorAndMissingRegisterIsNotSupported)
{
    change([](SmallCamera &camera) { camera.registers[0x0934] = 0; });
    KelAIndustryControl access;
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_MONITOR), 0U);
    KELCC_INTVALUE_EX_T value;
    EXPECT_EQ(access.GetIntegerNodeValue("ExposureTime", &value, true), kParameter);
    EXPECT_EQ(access.GetIntegerNodeValue("GevPrimaryApplicationIPAddress", &value, true), kNotSupported);
    EXPECT_EQ(access.GetIntegerNodeValue("GevMCDA", &value, true), kNotSupported);
}

TEST_F(GigeAccess, deviceIsAskedAgainByItsAddressAlone)
{
    change([](SmallCamera &camera) {
        camera.userName = "renamed";
        camera.registers[0x0A00] = 2;
        camera.registers[0x0A14] = 0xC0A83263;
    });
    KELA_DEVICE_INFO_EX only = {};
    only.transport = KELA_INTERFACE_TYPE_GIGE;
    only.special.gige.currentIp = kHost + 1;
    KelAIndustryControl access;
    ASSERT_EQ(access.GetDeviceInfo(&only), 0U);

    EXPECT_EQ(fixedText(only.serialNumber), "SN2");
    EXPECT_EQ(fixedText(only.special.gige.userDefinedName), "renamed");
    EXPECT_EQ(only.special.gige.hostIp, kHost);
    EXPECT_EQ(only.special.gige.primaryApplicationIp, 0xC0A83263U);
}

TEST_F(GigeAccess, deviceBehindARouterIsReached)
{
    // 10.9.9.2 is no neighbour: the routing table leads to it by way of 192.168.50.2.
    wire->shell("ip link add far type veth peer name farther && ip link set far up && ip link set farther up");
    SmallCamera far = smallCamera(9);
    far.address = 0x0A090902;
    cameras->add(far, "far");
    hostShell("ip route add default via 192.168.50.2");
    KELA_DEVICE_INFO_EX remote = {};
    remote.transport = KELA_INTERFACE_TYPE_GIGE;
    remote.special.gige.currentIp = far.address;
    KelAIndustryControl access;

    ASSERT_EQ(access.GetDeviceInfo(&remote), 0U);
    EXPECT_EQ(fixedText(remote.serialNumber), "SN9");
    EXPECT_EQ(remote.special.gige.hostIp, kHost);
    bool accessible = false;
    EXPECT_EQ(access.IsDeviceAccessible(&remote, KELA_ACCESS_CONTROL, &accessible), 0U);
    EXPECT_TRUE(accessible);
    ASSERT_EQ(access.Init(&remote, false), 0U);
    EXPECT_EQ(access.Connect(KELA_ACCESS_CONTROL), 0U);
}

TEST_F(GigeAccess, silentDeviceIsGivenUpWithin750Milliseconds)
{
    change([](SmallCamera &camera) { camera.isPlugged = false; });
    KelAIndustryControl access;
    const TimePoint begin = Clock::now();
    EXPECT_EQ(access.GetDeviceInfo(&info), kTimeout);
    EXPECT_LT(Clock::now() - begin, Milliseconds{750});
}

TEST_F(GigeAccess, hostWithoutACameraIsGivenUpAtOnce)
{
    cameras.reset(); // port 3956 is closed now, the host still answers
    KelAIndustryControl access;
    bool accessible = true;
    const TimePoint begin = Clock::now();
    EXPECT_EQ(access.IsDeviceAccessible(&info, KELA_ACCESS_CONTROL, &accessible), kUnreachable);
    EXPECT_FALSE(accessible);
    EXPECT_LT(Clock::now() - begin, Milliseconds{400});
}

TEST_F(GigeAccess, addressWithoutARouteIsUnreachable)
{
    info.special.gige.currentIp = 0x08080808;
    info.special.gige.hostIp = 0;
    KelAIndustryControl access;
    EXPECT_EQ(access.GetDeviceInfo(&info), kUnreachable);
}

TEST_F(GigeAccess, lostAnswersAreAskedAgain)
{
    change([](SmallCamera &camera) { camera.registerReadsToLose = 1; });
    KelAIndustryControl access;
    bool accessible = false;
    EXPECT_EQ(access.IsDeviceAccessible(&info, KELA_ACCESS_CONTROL, &accessible), 0U);
    EXPECT_TRUE(accessible);
}

TEST_F(GigeAccess, multicastStatusIsWhetherTheStreamIsOpen)
{
    KelAIndustryControl access;
    bool isOn = true;
    EXPECT_EQ(access.GetMulticastStatus(&info, &isOn), 0U);
    EXPECT_FALSE(isOn);
    change([](SmallCamera &camera) { camera.registers[0x0D00] = 0x1388; });
    EXPECT_EQ(access.GetMulticastStatus(&info, &isOn), 0U);
    EXPECT_TRUE(isOn);
}

TEST_F(GigeAccess, cancelEndsAWaitForASilentDevice)
{
    change([](SmallCamera &camera) { camera.isPlugged = false; });
    KelAIndustryControl access;
    std::thread canceller([&] {
        const CancelSignal never;
        never.waitUntil(Clock::now() + Milliseconds{50});
        access.CancelEnum();
    });
    const TimePoint begin = Clock::now();
    EXPECT_EQ(access.GetDeviceInfo(&info), static_cast<unsigned int>(KELA_ERROR_CANCELLED));
    canceller.join();
    EXPECT_LT(Clock::now() - begin, Milliseconds{400});
    bool accessible = true;
    EXPECT_EQ(access.IsDeviceAccessible(&info, 3, &accessible),
              static_cast<unsigned int>(KELA_ERROR_CANCELLED));
}

TEST_F(GigeAccess, forcedAddressIsTakenByTheNamedCameraOnly)
{
    change([](SmallCamera &camera) { camera.address = 0x0A636302; }); // another subnet on the same wire
    wire->shell("ip addr add 10.99.99.2/24 dev c0");
    cameras->add(smallCamera(3), "c0");
    KELA_DEVICE_INFO_EX stranger = info;
    stranger.special.gige.macHigh = 0x0200;
    stranger.special.gige.macLow = 2;
    KelAIndustryControl access;
    ASSERT_EQ(access.ForceIp(&stranger, kHost + 6, 0xFFFFFF00, 0), 0U);

    EXPECT_TRUE(cameras->waitFor("SN2", [](const SmallCamera &camera) { return camera.address == kHost + 6; }));
    EXPECT_EQ(cameras->look("SN3").address, kHost + 2);
}

TEST_F(GigeAccess, addressThatNoCameraCanHaveIsNotForced)
{
    info.special.gige.macLow = 2;
    KelAIndustryControl access;
    EXPECT_EQ(access.ForceIp(&info, 0xE0000001, 0xFFFFFF00, 0), kParameter) << "multicast";
    EXPECT_EQ(access.ForceIp(&info, 0x7F000001, 0xFFFFFF00, 0), kParameter) << "loopback";
    EXPECT_EQ(access.ForceIp(&info, 0xC0A832FF, 0xFFFFFF00, 0), kParameter) << "broadcast";
    EXPECT_EQ(access.ForceIp(&info, 0xC0A83200, 0xFFFFFF00, 0), kParameter) << "the net itself";
    EXPECT_EQ(access.ForceIp(&info, 0xC0A83205, 0xFF00FF00, 0), kParameter) << "a mask with holes";
    info.special.gige.macLow = 0;
    EXPECT_EQ(access.ForceIp(&info, 0xC0A83205, 0xFFFFFF00, 0), kParameter) << "no hardware address";
}
