// SPDX-License-Identifier: Apache-2.0
#include "SimulatedCamera.h"

#include <gtest/gtest.h>

#include <set>

using namespace kelsim;
using namespace std::chrono_literals;

namespace
{

constexpr Endpoint kClient{0xC0A83201, 40000};
constexpr Endpoint kOtherSocket{0xC0A83201, 40001};
constexpr Endpoint kStranger{0x0A000001, 40000};

CameraSettings plainCamera()
{
    CameraSettings settings;
    settings.id = "A";
    settings.card = "eth0";
    settings.place = {0xC0A8320B, 0xFFFFFF00, 0};
    settings.mac = {0x02, 0x11, 0x22, 0x33, 0x44, 0x55};
    settings.serial = "S-1";
    return settings;
}

std::vector<uint8_t> command(Command code, const std::vector<uint8_t> &payload = {}, uint16_t id = 7,
                             uint8_t flags = kFlagAcknowledge)
{
    std::vector<uint8_t> bytes{kCommandKey, flags};
    bytes.resize(kHeaderSize);
    putU16(bytes.data() + 2, static_cast<uint16_t>(code));
    putU16(bytes.data() + 4, static_cast<uint16_t>(payload.size()));
    putU16(bytes.data() + 6, id);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

std::vector<uint8_t> words(std::initializer_list<uint32_t> values)
{
    std::vector<uint8_t> bytes;
    for (const uint32_t value : values) {
        appendU32(bytes, value);
    }
    return bytes;
}

class SimulatedCameraTest : public testing::Test
{
protected:
    std::vector<Answer> send(const std::vector<uint8_t> &bytes, const Endpoint &from = kClient,
                             bool isBroadcast = false)
    {
        return camera.receive({bytes.data(), bytes.size(), from, isBroadcast}, now);
    }

    uint16_t statusOf(const std::vector<uint8_t> &bytes, const Endpoint &from = kClient)
    {
        const auto answers = send(bytes, from);
        return answers.empty() ? uint16_t{0xFFFF} : getU16(answers.back().bytes.data());
    }

    uint16_t take(uint32_t privilege, const Endpoint &from = kClient)
    {
        return statusOf(command(Command::WriteRegister, words({reg::kControlPrivilege, privilege})), from);
    }

    uint16_t readPrivilege(const Endpoint &from)
    {
        return statusOf(command(Command::ReadRegister, words({reg::kControlPrivilege})), from);
    }

    SimulatedCamera camera{plainCamera()};
    Clock::time_point now{};
};

TEST_F(SimulatedCameraTest, discoveryAnswerIsTheImageOfTheFirstRegisters)
{
    const auto answers = send(command(Command::Discovery), kClient, true);

    ASSERT_EQ(answers.size(), 1U);
    const auto &bytes = answers[0].bytes;
    ASSERT_EQ(bytes.size(), 8U + 248U);
    const std::vector<uint8_t> header(bytes.begin(), bytes.begin() + 8);
    EXPECT_EQ(header, (std::vector<uint8_t>{0, 0, 0, 3, 0, 0xF8, 0, 7}));
    EXPECT_EQ(getU32(bytes.data() + 8), 0x00020000U);
    EXPECT_EQ(getU32(bytes.data() + 8 + 0x04), 0x80000001U);
    EXPECT_EQ(getU32(bytes.data() + 8 + 0x08), 0x0211U);
    EXPECT_EQ(getU32(bytes.data() + 8 + 0x0C), 0x22334455U);
    EXPECT_EQ(getU32(bytes.data() + 8 + 0x24), 0xC0A8320BU);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(bytes.data() + 8 + 0xD8)), "S-1");
    EXPECT_EQ(answers[0].to, kClient);
}

TEST_F(SimulatedCameraTest, registerAnswersAreTheStandardsGoldenBytes)
{
    take(kPrivilegeControl);
    const auto answers = send({0x42, 0x01, 0x00, 0x80, 0x00, 0x04, 0x00, 0x02, 0x00, 0x00, 0x0a, 0x00});

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes, (std::vector<uint8_t>{0, 0, 0, 0x81, 0, 4, 0, 2, 0, 0, 0, 2}));
}

TEST_F(SimulatedCameraTest, refusedWriteTellsItsStatus)
{
    camera.hold(0xC0A83209, false);

    const auto answers = send({0x42, 0x01, 0x00, 0x82, 0x00, 0x08, 0x00, 0x04, 0, 0, 0x0a, 0, 0, 0, 0, 2});

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(getU16(answers[0].bytes.data()), 0x8006);
    EXPECT_EQ(getU16(answers[0].bytes.data() + 2), 0x0083);
}

TEST_F(SimulatedCameraTest, strangerIsAnsweredByBroadcastOnlyWhereItAllowsThat)
{
    const auto allowed = send(command(Command::Discovery, {}, 7, 0x11), kStranger, true);
    const auto notAllowed = send(command(Command::Discovery, {}, 7, 0x01), kStranger, true);
    const auto registers = send(command(Command::ReadRegister, words({reg::kControlPrivilege})), kStranger);

    ASSERT_EQ(allowed.size(), 1U);
    EXPECT_EQ(allowed[0].to, (Endpoint{kLimitedBroadcast, kStranger.port}));
    EXPECT_TRUE(notAllowed.empty());
    EXPECT_TRUE(registers.empty());
}

TEST_F(SimulatedCameraTest, cameraWithAGatewayAnswersStrangers)
{
    camera.moveTo({0xC0A8320B, 0xFFFFFF00, 0xC0A832FE});

    EXPECT_EQ(readPrivilege(kStranger), 0);
}

TEST_F(SimulatedCameraTest, controlBelongsToASourcePort)
{
    ASSERT_EQ(take(kPrivilegeControl), 0);

    EXPECT_EQ(take(kPrivilegeControl, kOtherSocket), 0x8006);
    EXPECT_EQ(statusOf(command(Command::WriteRegister, words({reg::kStreamPort, 5000})), kOtherSocket), 0x8006);
    EXPECT_EQ(statusOf(command(Command::WriteRegister, words({reg::kStreamPort, 5000}))), 0);
    EXPECT_EQ(camera.registerValue(reg::kPrimaryIp), kClient.address);
    EXPECT_EQ(camera.registerValue(reg::kPrimaryPort), kClient.port);
}

TEST_F(SimulatedCameraTest, memoryIsWrittenWhereTheRegistersAre)
{
    const auto port = command(Command::WriteMemory, words({reg::kStreamPort, 5000}));
    const auto serial = command(Command::WriteMemory, words({reg::kSerialNumber, 1, 2}));
    EXPECT_EQ(statusOf(port), 0x8006);
    take(kPrivilegeControl);

    EXPECT_EQ(statusOf(port), 0);
    EXPECT_EQ(camera.registerValue(reg::kStreamPort), 5000U);
    EXPECT_EQ(statusOf(serial), 0x8004);
}

TEST_F(SimulatedCameraTest, onlyTheHoldersCommandsKeepTheHeartbeat)
{
    take(kPrivilegeControl);
    now += 2s;
    readPrivilege(kOtherSocket);
    now += 2s;

    EXPECT_EQ(camera.privilege(now), 0U);
    EXPECT_EQ(take(kPrivilegeControl, kOtherSocket), 0);
}

TEST_F(SimulatedCameraTest, heartbeatIsKeptByReadingAnything)
{
    take(kPrivilegeControl);
    for (int i = 0; i < 5; ++i) {
        now += 2s;
        readPrivilege(kClient);
    }

    EXPECT_EQ(camera.privilege(now), kPrivilegeControl);
}

TEST_F(SimulatedCameraTest, lostHeartbeatClosesTheStream)
{
    take(kPrivilegeControl);
    camera.openMulticast(0xEF010203, 5000);
    now += 4s;

    EXPECT_EQ(camera.privilege(now), 0U);
    EXPECT_EQ(camera.registerValue(reg::kStreamPort), 0U);
}

TEST_F(SimulatedCameraTest, heldByAnotherHostNeedsNoHeartbeat)
{
    camera.hold(0xC0A83209, false);
    now += 1h;

    EXPECT_EQ(camera.privilege(now), kPrivilegeControl);
    EXPECT_EQ(camera.holder().address, 0xC0A83209U);
}

TEST_F(SimulatedCameraTest, exclusiveCameraAnswersStrangersNothingButDiscovery)
{
    camera.hold(0xC0A83209, true);

    EXPECT_EQ(readPrivilege(kClient), 0x8006);
    EXPECT_EQ(send(command(Command::Discovery)).size(), 1U);
}

TEST_F(SimulatedCameraTest, switchoverNeedsTheKey)
{
    take(kPrivilegeControl | kPrivilegeSwitchover);
    statusOf(command(Command::WriteRegister, words({reg::kSwitchoverKey, 0x1234})));

    EXPECT_EQ(take(0x99990002, kOtherSocket), 0x8006);
    EXPECT_EQ(take(0x12340002, kOtherSocket), 0);
    EXPECT_EQ(camera.holder(), kOtherSocket);
}

TEST_F(SimulatedCameraTest, releaseIsTheHoldersAlone)
{
    take(kPrivilegeControl);

    EXPECT_EQ(take(0, kOtherSocket), 0x8006);
    EXPECT_EQ(take(0), 0);
    EXPECT_EQ(camera.privilege(now), 0U);
}

TEST_F(SimulatedCameraTest, unpluggedCameraIsSilentAndReturnsFree)
{
    take(kPrivilegeControl);
    camera.unplug();

    EXPECT_TRUE(send(command(Command::Discovery)).empty());

    camera.plug();

    EXPECT_EQ(camera.privilege(now), 0U);
    EXPECT_EQ(send(command(Command::Discovery)).size(), 1U);
}

TEST_F(SimulatedCameraTest, forceIpMovesTheNamedFreeCamera)
{
    std::vector<uint8_t> payload(56);
    const auto mac = plainCamera().mac;
    std::copy(mac.begin(), mac.end(), payload.begin() + 2);
    putU32(payload.data() + 20, 0x0A000005);
    putU32(payload.data() + 36, 0xFF000000);

    EXPECT_EQ(send(command(Command::ForceIp, payload, 5, 0x11), kClient, true).size(), 1U);
    const auto place = camera.takeForcedPlace();
    ASSERT_TRUE(place);
    EXPECT_EQ(place->address, 0x0A000005U);
    EXPECT_EQ(place->mask, 0xFF000000U);
}

TEST_F(SimulatedCameraTest, forceIpIsIgnoredByOthersAndByHeldCameras)
{
    std::vector<uint8_t> payload(56);
    putU32(payload.data() + 20, 0x0A000005);
    send(command(Command::ForceIp, payload, 5, 0x11), kClient, true);
    EXPECT_FALSE(camera.takeForcedPlace());

    const auto mac = plainCamera().mac;
    std::copy(mac.begin(), mac.end(), payload.begin() + 2);
    camera.hold(0xC0A83209, false);
    send(command(Command::ForceIp, payload, 5, 0x11), kClient, true);
    EXPECT_FALSE(camera.takeForcedPlace());
}

TEST_F(SimulatedCameraTest, pendingIsAnnouncedBeforeTheAnswer)
{
    camera.setPending(400);

    const auto answers = send({0x42, 0x01, 0x00, 0x80, 0x00, 0x04, 0x00, 0x04, 0x00, 0x00, 0x0a, 0x00});

    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].bytes, (std::vector<uint8_t>{0, 0, 0, 0x89, 0, 4, 0, 4, 0, 0, 0x01, 0x90}));
    EXPECT_EQ(answers[0].delay, 0ms);
    EXPECT_EQ(answers[1].delay, 400ms);
}

TEST_F(SimulatedCameraTest, hostileCommandsHaveDefinedResults)
{
    EXPECT_TRUE(send({}).empty());
    EXPECT_TRUE(send({0x42}).empty());
    EXPECT_TRUE(send({0x43, 1, 0, 2, 0, 0, 0, 1}).empty());
    EXPECT_TRUE(send({0x42, 1, 0, 2, 0, 0, 0, 0}).empty());
    EXPECT_TRUE(send({0x42, 1, 0, 0x80, 0, 4, 0, 1}).empty());
    EXPECT_EQ(statusOf(command(Command::ReadRegister, words({0xFFFFFFFC}))), 0x8003);
    EXPECT_EQ(statusOf(command(Command::ReadRegister, words({0x0A01}))), 0x8005);
    EXPECT_EQ(statusOf(command(Command::ReadMemory, words({0x9FFC, 8}))), 0x8003);
    EXPECT_EQ(statusOf(command(Command::ReadMemory, words({0, 0xFFFC}))), 0x8002);
    EXPECT_EQ(statusOf({0x42, 1, 0x01, 0x00, 0, 0, 0, 1}), 0x8001);
}

TEST_F(SimulatedCameraTest, lostCommandsAreCounted)
{
    camera.faults().setLost(2, Traffic::Registers);

    EXPECT_EQ(send(command(Command::Discovery)).size(), 1U);
    EXPECT_EQ(readPrivilege(kClient), 0xFFFF);
    EXPECT_EQ(readPrivilege(kClient), 0xFFFF);
    EXPECT_EQ(readPrivilege(kClient), 0);
    EXPECT_EQ(camera.received().at(0x0080), 3U);
}

TEST_F(SimulatedCameraTest, answersAreDelayedAndDuplicated)
{
    camera.faults().setDelay(900ms, Traffic::Discovery);
    camera.faults().setDuplicates(2);

    const auto answers = send(command(Command::Discovery));

    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[2].delay, 900ms);
    EXPECT_EQ(answers[2].bytes, answers[0].bytes);
}

TEST_F(SimulatedCameraTest, answersAreCutAtTheGivenLength)
{
    for (uint32_t size = 0; size <= 256; ++size) {
        camera.faults().setSpoiling(Spoiling::Cut, size);
        ASSERT_EQ(send(command(Command::Discovery))[0].bytes.size(), size);
    }
}

TEST_F(SimulatedCameraTest, spoiledTextHasNoEnd)
{
    camera.faults().setSpoiling(Spoiling::Text, 0);

    const auto answers = send(command(Command::Discovery));

    for (std::size_t i = 8 + 0x48; i < 8 + 0xF8; ++i) {
        ASSERT_EQ(answers[0].bytes[i], 0xFE);
    }
}

TEST_F(SimulatedCameraTest, discoveryDelayIsRandomWithinItsLimit)
{
    CameraSettings settings = plainCamera();
    settings.ackDelayMs = 500;
    SimulatedCamera slow(settings);
    const auto bytes = command(Command::Discovery);

    std::set<std::chrono::milliseconds> delays;
    for (int i = 0; i < 50; ++i) {
        delays.insert(slow.receive({bytes.data(), bytes.size(), kClient, true}, now)[0].delay);
    }

    EXPECT_LE(*delays.rbegin(), 500ms);
    EXPECT_GT(delays.size(), 20U);
}

} // namespace
