// SPDX-License-Identifier: Apache-2.0
// The device access over a simulated serial library that is loaded for real.
#include "SimulatedLibrary.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kTwoQuestions = 2 * 28; // bytes

class CameraLink : public testing::Test
{
protected:
    CameraLink()
        : m_library(SIMULATED_SERIAL_LIBRARY)
    {
        use(m_library);
    }

    void describe(const std::string &ports) { m_library.describe(ports); }

    void use(const SimulatedLibrary &library)
    {
        setenv("KELS_CLSERIAL", library.file().c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    }

    unsigned int enumerate() { return m_access.EnumDevices(KELA_INTERFACE_TYPE_CAMERALINK, &m_list, false); }

    const SimulatedLibrary m_library;
    LogLines m_log;
    KelAIndustryControl m_access;
    KELA_DEVICE_INFO_LIST m_list = {};
};

TEST_F(CameraLink, cameraIsIdentifiedOverItsSerialLine)
{
    describe("Port_A camera manufacturer=Example_Optics model=EX-20 version=1.2 serial=CL001 user=left\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 1U);
    KELA_DEVICE_INFO_EX expected = {};
    expected.transport = KELA_INTERFACE_TYPE_CAMERALINK;
    std::string("EX-20").copy(expected.modelName, 5);
    std::string("1.2").copy(expected.secondName, 3);
    std::string("CL001").copy(expected.serialNumber, 5);
    std::string("Port_A").copy(expected.special.cameraLink.portName, 6);
    std::string("Example Optics").copy(expected.special.cameraLink.manufacturerName, 14);
    std::string("left").copy(expected.special.cameraLink.userDefinedName, 4);
    EXPECT_EQ(std::memcmp(m_list.devices[0], &expected, sizeof(expected)), 0);
}

TEST_F(CameraLink, longNamesAreAskedForWithTheRoomTheyNeed)
{
    const std::string name(350, 'N');
    describe(name + " camera instant model=EX serial=1\n");
    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    ASSERT_EQ(m_list.count, 1U);
    const auto &field = m_list.devices[0]->special.cameraLink.portName;
    EXPECT_EQ(fixedText(field), name.substr(0, sizeof(field) - 1));

    const SimulatedLibrary dispatcher(SIMULATED_DISPATCHER);
    use(dispatcher);
    dispatcher.describe(name + " camera instant model=EX serial=2 maker=" + std::string(300, 'M') + "\n");
    KelAIndustryControl access;
    ASSERT_EQ(access.EnumDevices(KELA_INTERFACE_TYPE_CAMERALINK, &m_list, false),
              static_cast<unsigned int>(KELA_OK));
    ASSERT_EQ(m_list.count, 1U);
    EXPECT_EQ(fixedText(m_list.devices[0]->special.cameraLink.portName), name.substr(0, sizeof(field) - 1));
}

TEST_F(CameraLink, silentPortGivesNoDeviceAndOneLogLine)
{
    describe("A silent\n");

    enumerate();
    enumerate();

    EXPECT_EQ(m_list.count, 0U);
    EXPECT_EQ(m_log.count("port A: no answer"), 1);
}

TEST_F(CameraLink, portInUseGivesNoDeviceAndOneLogLine)
{
    describe("A busy\n");

    enumerate();
    enumerate();

    EXPECT_EQ(m_list.count, 0U);
    EXPECT_EQ(m_log.count("port A: in use"), 1);
}

TEST_F(CameraLink, noiseAndDamageAreNoCamera)
{
    describe("A noise\nB stops model=EX serial=1\nC checksum model=EX serial=2\n");

    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(m_list.count, 0U);
    EXPECT_EQ(m_log.count("is not understood"), 3);
}

TEST_F(CameraLink, textThatFillsItsRegisterIsReadToItsEnd)
{
    describe("A camera instant full model=EX serial=CL9\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 1U);
    // The record's field holds 63 characters and a NUL, as every text that the device access writes.
    EXPECT_EQ(fixedText(m_list.devices[0]->modelName), "EX" + std::string(61, 'x'));
}

TEST_F(CameraLink, camerasBesideASilentPortAreListedInThePortsOrder)
{
    describe("B camera instant model=EX-2 serial=2\nC silent\nA camera instant model=EX-1 serial=1\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 2U);
    EXPECT_EQ(fixedText(m_list.devices[0]->special.cameraLink.portName), "A");
    EXPECT_EQ(fixedText(m_list.devices[1]->special.cameraLink.portName), "B");
}

TEST_F(CameraLink, identifiedPortIsNotProbedAgainInTheNextPass)
{
    describe("A camera instant model=EX-1 serial=1\n");
    enumerate();
    describe("A camera instant model=EX-2 serial=1\n");

    enumerate();

    ASSERT_EQ(m_list.count, 1U);
    EXPECT_EQ(fixedText(m_list.devices[0]->modelName), "EX-1");
}

TEST_F(CameraLink, portThatVanishesTakesItsCameraWithIt)
{
    describe("A camera instant model=EX-1 serial=1\n");
    enumerate();
    describe("");

    enumerate();

    EXPECT_EQ(m_list.count, 0U);
}

TEST_F(CameraLink, hangingLibraryDelaysAPassOnlyForItsLimit)
{
    describe("A hang\n");

    const auto begin = Clock::now();
    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    enumerate();

    EXPECT_EQ(m_list.count, 0U);
    EXPECT_EQ(m_log.count("does not return"), 1);
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(20)) << "the library hangs for an hour";
}

TEST_F(CameraLink, cameraThatAsksForPatienceIsNotSaidToHang)
{
    // It needs three quarters of that: longer than a call into a library may take.
    describe("A camera instant pending=4400 model=EX-1 serial=1\n");

    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(m_list.count, 1U);
    EXPECT_EQ(m_log.count("does not return"), 0);
}

TEST_F(CameraLink, scanThatGoesOnForLongIsNotWaitedForAndItsCameraComesLater)
{
    // Each alone is waited for, the three together are not.
    describe("A camera instant pending=4400 model=EX-1 serial=1\n"
             "B camera instant pending=4400 model=EX-2 serial=2\n"
             "C camera instant pending=4400 model=EX-3 serial=3\n");

    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    EXPECT_LT(m_list.count, 3U);
    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    EXPECT_EQ(m_list.count, 3U);
    EXPECT_EQ(m_log.count("does not return"), 0);
}

TEST_F(CameraLink, camerasBeforeAHangingPortAreListed)
{
    describe("A camera instant model=EX-1 serial=1\nB hang\n");

    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 1U);
    EXPECT_EQ(fixedText(m_list.devices[0]->serialNumber), "1");
}

TEST_F(CameraLink, portsOfOneNameAreProbedEach)
{
    describe("A camera instant model=EX-1 serial=1\nA camera instant model=EX-2 serial=2\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 2U);
    EXPECT_EQ(fixedText(m_list.devices[0]->serialNumber), "1");
    EXPECT_EQ(fixedText(m_list.devices[1]->serialNumber), "2");
}

TEST_F(CameraLink, camerasBesideASilentPortAreListed)
{
    describe("A camera model=EX-1 serial=1\nB silent\nC camera model=EX-2 serial=2\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 2U);
    EXPECT_EQ(fixedText(m_list.devices[1]->serialNumber), "2");
}

// What a port takes beside its line's time is measured by the benchmark; here counts what is asked.
TEST_F(CameraLink, silentPortIsAskedTwiceInEveryPass)
{
    describe("A silent\n");
    for (int pass = 0; pass < 3; ++pass) {
        const std::uint64_t before = m_library.bytesOnLines();
        enumerate();
        EXPECT_EQ(m_library.bytesOnLines() - before, kTwoQuestions);
    }
}

TEST_F(CameraLink, twoLibrariesAtOnceGiveTheirCamerasEach)
{
    const SimulatedLibrary other(SIMULATED_SERIAL_LIBRARY);
    const std::string both = m_library.file() + ":" + other.file();
    setenv("KELS_CLSERIAL", both.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    describe("A camera instant model=EX-1 serial=1\n");
    other.describe("A camera instant model=EX-2 serial=2\nB camera instant model=EX-3 serial=3\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 3U);
    EXPECT_EQ(fixedText(m_list.devices[0]->modelName), "EX-1");
    EXPECT_EQ(fixedText(m_list.devices[1]->modelName), "EX-2");
    EXPECT_EQ(fixedText(m_list.devices[2]->modelName), "EX-3");
}

TEST_F(CameraLink, hangingLibraryHidesNoCamerasOfAnother)
{
    const SimulatedLibrary other(SIMULATED_SERIAL_LIBRARY);
    const std::string both = m_library.file() + ":" + other.file();
    setenv("KELS_CLSERIAL", both.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    describe("A hang\n");
    other.describe("A camera instant model=EX-2 serial=2\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 1U);
    EXPECT_EQ(fixedText(m_list.devices[0]->modelName), "EX-2");
}

TEST_F(CameraLink, libraryThatThrowsKeepsTheCamerasBefore)
{
    describe("A camera instant model=EX-1 serial=1\nB throws\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    ASSERT_EQ(m_list.count, 1U);
    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));
    EXPECT_EQ(m_list.count, 1U);
    EXPECT_EQ(m_log.count("failed in the middle of a scan"), 2);
}

TEST_F(CameraLink, libraryUnderTwoNamesIsAskedOnce)
{
    describe("A camera instant model=EX-1 serial=1\n");
    const std::string link = m_library.file() + ".link.so";
    ASSERT_EQ(::symlink(m_library.file().c_str(), link.c_str()), 0);
    const std::string both = m_library.file() + ":" + link;
    setenv("KELS_CLSERIAL", both.c_str(), 1); // NOLINT(concurrency-mt-unsafe)

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(m_list.count, 1U);
    EXPECT_EQ(m_log.count("in use"), 0);
}

TEST_F(CameraLink, portsOfALibraryThatCannotCountThemAreFoundByOpeningThem)
{
    const SimulatedLibrary old(SIMULATED_OLD_LIBRARY);
    use(old);
    old.describe("A camera instant model=EX-1 serial=1\nB busy\nC camera instant model=EX-2 serial=2\n");

    ASSERT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    ASSERT_EQ(m_list.count, 2U);
    EXPECT_EQ(fixedText(m_list.devices[0]->special.cameraLink.portName), "port 0");
    EXPECT_EQ(fixedText(m_list.devices[1]->special.cameraLink.portName), "port 2");
    EXPECT_EQ(m_log.count("port port 1: in use"), 1);
}

TEST_F(CameraLink, cancelEndsTheWaitForALibrary)
{
    describe("A hang\n");
    unsigned int result = KELA_OK;
    std::thread worker([&] { result = enumerate(); });

    m_access.CancelEnum();
    worker.join();

    EXPECT_EQ(result, static_cast<unsigned int>(KELA_ERROR_CANCELLED));
}

TEST_F(CameraLink, missingLibraryIsAnEmptyTransport)
{
    setenv("KELS_CLSERIAL", "/nowhere/clsernone.so", 1); // NOLINT(concurrency-mt-unsafe)

    EXPECT_EQ(enumerate(), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(m_list.count, 0U);
    EXPECT_EQ(m_log.count("clsernone.so"), 1);
}

} // namespace
