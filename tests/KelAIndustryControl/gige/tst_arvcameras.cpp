// SPDX-License-Identifier: Apache-2.0
// Against cameras and clients that this project did not write: those of Debian's aravis-tools.
#include "WireNamespace.h"

#include <KelAIndustryControl/KelAIndustryControl.h>
#include <KelAIndustryControl/core/Clock.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

using namespace kela;
using kelatest::hostShell;
using kelatest::WireNamespace;

namespace
{

constexpr std::uint32_t kHost = 0xC0A83201; // 192.168.50.1
constexpr const char *kCamera = "/usr/bin/arv-fake-gv-camera-0.8";
constexpr const char *kViewer = "/usr/bin/arv-camera-test-0.8";

/// A program that runs until the object dies.
class Program
{
public:
    explicit Program(std::vector<std::string> arguments)
    {
        std::vector<char *> raw;
        raw.reserve(arguments.size() + 1);
        for (std::string &argument : arguments)
            raw.push_back(argument.data());
        raw.push_back(nullptr);
        m_pid = ::fork();
        if (m_pid != 0)
            return;
        const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        ::dup2(nothing, STDOUT_FILENO);
        ::dup2(nothing, STDERR_FILENO);
        ::execv(raw[0], raw.data());
        ::_exit(127);
    }
    Program(Program &&other) noexcept
        : m_pid(std::exchange(other.m_pid, -1))
    {
    }
    ~Program()
    {
        if (m_pid <= 0)
            return;
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }

private:
    pid_t m_pid = -1;
};

struct ArvCameras : testing::Test {
    std::unique_ptr<WireNamespace> wire;
    std::vector<Program> programs;

    void SetUp() override
    {
        if (::access(kCamera, X_OK) != 0 || ::access(kViewer, X_OK) != 0)
            GTEST_SKIP() << "aravis-tools and aravis-tools-cli are not installed";
        hostShell("ip link set lo up");
        wire = std::make_unique<WireNamespace>();
        wire->addCard("h0", "192.168.50.1/24", "c0");
    }

    void TearDown() override
    {
        programs.clear();
        wire.reset();
        hostShell("ip link del h0 2>/dev/null || true");
    }

    void plug(unsigned int count)
    {
        for (unsigned int number = 1; number <= count; ++number) {
            const std::string address = "192.168.50." + std::to_string(number + 1);
            wire->shell("ip addr add " + address + "/24 brd + dev c0");
            wire->run([&] { programs.emplace_back(fakeCamera(address, "F" + std::to_string(number))); });
        }
        waitFor([count](const KELA_DEVICE_INFO_LIST &list) { return list.count == count; });
    }

    static Program fakeCamera(const std::string &address, const std::string &serial)
    {
        return Program({kCamera, "-i", address, "-s", serial});
    }

    static void waitFor(const std::function<bool(const KELA_DEVICE_INFO_LIST &)> &fact)
    {
        KelAIndustryControl access;
        KELA_DEVICE_INFO_LIST list = {};
        const TimePoint deadline = Clock::now() + std::chrono::seconds{20};
        do {
            ASSERT_EQ(access.EnumDevices(1, &list, false), 0U);
        } while (!fact(list) && Clock::now() < deadline);
    }
};

bool isFree(KelAIndustryControl &access, KELA_DEVICE_INFO_EX *info)
{
    bool accessible = false;
    EXPECT_EQ(access.IsDeviceAccessible(info, KELA_ACCESS_CONTROL, &accessible), 0U);
    return accessible;
}

void expectFakeCamera(const KELA_DEVICE_INFO_EX &info)
{
    const std::string serial(fixedText(info.serialNumber));
    EXPECT_EQ(info.special.gige.currentIp, kHost + std::stoul(serial.substr(1))) << serial;
    EXPECT_EQ(fixedText(info.modelName), "Fake");
    EXPECT_EQ(fixedText(info.special.gige.manufacturerName), "Aravis");
    EXPECT_EQ(info.special.gige.hostIp, kHost);
    EXPECT_EQ(info.placement, static_cast<std::uint32_t>(KELA_PLACEMENT_REAL));
}

} // namespace

TEST_F(ArvCameras, sixteenAreAllListedByTheFirstPassOfAnObject)
{
    plug(16);
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    ASSERT_EQ(access.EnumDevices(1, &list, false), 0U);

    ASSERT_EQ(list.count, 16U);
    for (std::uint32_t i = 0; i < list.count; ++i) {
        expectFakeCamera(*list.devices[i]);
        EXPECT_TRUE(isFree(access, list.devices[i]));
    }
}

TEST_F(ArvCameras, cameraThatAnotherProgramOpenedIsInUse)
{
    plug(2);
    const Program viewer({kViewer, "-n", "Aravis-Fake-F2"});
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    const TimePoint deadline = Clock::now() + std::chrono::seconds{20};
    bool isHeld = false;
    while (!isHeld && Clock::now() < deadline) {
        ASSERT_EQ(access.EnumDevices(1, &list, false), 0U);
        ASSERT_EQ(list.count, 2U);
        isHeld = !isFree(access, list.devices[1]);
    }
    EXPECT_TRUE(isHeld);
    EXPECT_TRUE(isFree(access, list.devices[0]));

    KelAIndustryControl second;
    ASSERT_EQ(second.Init(list.devices[1], false), 0U);
    EXPECT_EQ(second.Connect(KELA_ACCESS_CONTROL), static_cast<unsigned int>(KELA_ERROR_IN_USE));
    EXPECT_EQ(second.Connect(KELA_ACCESS_MONITOR), 0U);
}

TEST_F(ArvCameras, controlIsTakenKeptBeyondTheHeartbeatAndGivenBack)
{
    plug(1);
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    ASSERT_EQ(access.EnumDevices(1, &list, false), 0U);
    ASSERT_EQ(list.count, 1U);
    KELA_DEVICE_INFO_EX info = *list.devices[0];
    ASSERT_EQ(access.Init(&info, false), 0U);
    ASSERT_EQ(access.Connect(KELA_ACCESS_CONTROL), 0U);
    KELCC_INTVALUE_EX_T value;
    ASSERT_EQ(access.GetIntegerNodeValue("GevHeartbeatTimeout", &value, true), 0U);
    EXPECT_EQ(value.current, 3000);

    ::usleep(3500 * 1000); // longer than the camera waits for a heartbeat

    ASSERT_EQ(access.GetIntegerNodeValue("GevCCP", &value, true), 0U);
    EXPECT_EQ(value.current, 2);
    EXPECT_EQ(access.DisConnect(false), 0U);
    KelAIndustryControl other;
    EXPECT_TRUE(isFree(other, &info));
}

TEST_F(ArvCameras, cameraOnThisHostIsVirtual)
{
    programs.emplace_back(fakeCamera("192.168.50.1", "HERE"));
    waitFor([](const KELA_DEVICE_INFO_LIST &list) { return list.count == 1; });
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    ASSERT_EQ(access.EnumDevices(1, &list, false), 0U);

    ASSERT_EQ(list.count, 1U);
    EXPECT_EQ(list.devices[0]->placement, static_cast<std::uint32_t>(KELA_PLACEMENT_VIRTUAL));
    EXPECT_TRUE(isFree(access, list.devices[0]));
}
