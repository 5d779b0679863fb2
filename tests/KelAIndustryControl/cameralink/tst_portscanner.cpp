// SPDX-License-Identifier: Apache-2.0
// What is remembered of the ports of a library, scan after scan; the library is loaded for real.
#include "SimulatedLibrary.h"

#include <KelAIndustryControl/cameralink/PortScanner.h>

using namespace kela;
using namespace kela::cameralink;

namespace
{

class PortScannerTest : public testing::Test
{
protected:
    explicit PortScannerTest(const char *library = SIMULATED_SERIAL_LIBRARY)
        : m_library(library)
    {
    }

    /// Models of the cameras after one more scan, in their order.
    std::vector<std::string> scan()
    {
        m_scanner.scan();
        std::vector<std::string> models;
        for (const PortCamera &camera : m_cameras)
            models.push_back(camera.identity.model);
        return models;
    }

    using Models = std::vector<std::string>;

    const SimulatedLibrary m_library;
    LogLines m_log;
    TimePoint m_now = Clock::now();
    std::vector<PortCamera> m_cameras;
    PortScanner m_scanner{m_library.file(),
                          {[] {}, [this](std::vector<PortCamera> cameras) { m_cameras = std::move(cameras); }},
                          [this] { return m_now; }};
};

class OldLibraryTest : public PortScannerTest
{
protected:
    OldLibraryTest()
        : PortScannerTest(SIMULATED_OLD_LIBRARY)
    {
    }
};

TEST_F(OldLibraryTest, portsThatAreCountedByOpeningThemAreCountedOnceAMinute)
{
    m_library.describe("A camera instant model=EX-1 serial=1\n");
    EXPECT_EQ(scan(), Models{"EX-1"});
    m_library.describe("A camera instant model=EX-1 serial=1\nB camera instant model=EX-2 serial=2\n");

    m_now += kIdentityAge - Milliseconds{1};
    EXPECT_EQ(scan(), Models{"EX-1"});
    m_now += Milliseconds{1};
    EXPECT_EQ(scan(), (Models{"EX-1", "EX-2"}));
}

class DispatcherTest : public PortScannerTest
{
protected:
    DispatcherTest()
        : PortScannerTest(SIMULATED_DISPATCHER)
    {
    }
};

TEST_F(PortScannerTest, identifiedPortIsAskedAgainAfterAMinute)
{
    m_library.describe("A camera instant model=EX-1 serial=1\n");
    EXPECT_EQ(scan(), Models{"EX-1"});
    m_library.describe("A camera instant model=EX-2 serial=2\n");

    m_now += kIdentityAge - Milliseconds{1};
    EXPECT_EQ(scan(), Models{"EX-1"});
    m_now += Milliseconds{1};
    EXPECT_EQ(scan(), Models{"EX-2"});
}

TEST_F(PortScannerTest, portTakenByAnotherProgramHasNoCameraUntilItIsFree)
{
    m_library.describe("A camera instant model=EX-1 serial=1\n");
    EXPECT_EQ(scan(), Models{"EX-1"});

    m_library.describe("A busy\n");
    m_now += kIdentityAge;
    EXPECT_EQ(scan(), Models{});
    EXPECT_EQ(scan(), Models{});
    EXPECT_EQ(m_log.count("port A: in use by another program"), 1) << "once, not in every scan";

    m_library.describe("A camera instant model=EX-1 serial=1\n");
    EXPECT_EQ(scan(), Models{"EX-1"});

    m_library.describe("A busy\n");
    m_now += kIdentityAge;
    EXPECT_EQ(scan(), Models{});
    EXPECT_EQ(m_log.count("port A: in use by another program"), 2) << "taken anew";
}

TEST_F(PortScannerTest, portThatFailedIsAskedInTheNextScan)
{
    m_library.describe("A silent\n");
    EXPECT_EQ(scan(), Models{});
    m_library.describe("A camera instant model=EX-1 serial=1\n");

    EXPECT_EQ(scan(), Models{"EX-1"});
}

TEST_F(DispatcherTest, portsOfOneNameOfTwoMakersHaveACameraEach)
{
    m_library.describe("Port_0 camera instant maker=Alpha model=EX-1 serial=1\n"
                       "Port_0 camera instant maker=Beta model=EX-2 serial=2\n");

    EXPECT_EQ(scan(), (Models{"EX-1", "EX-2"}));
    for (const PortCamera &camera : m_cameras)
        EXPECT_EQ(camera.portName, "Port_0") << "the port's own name, without its maker";
}

TEST_F(DispatcherTest, portKeepsItsCameraWhenItsNumberChanges)
{
    m_library.describe("Port_0 camera instant maker=Beta model=EX-2 serial=2\n");
    EXPECT_EQ(scan(), Models{"EX-2"});
    const std::uint64_t before = m_library.bytesOnLines();

    m_library.describe("Port_0 busy maker=Alpha\nPort_0 busy maker=Beta\n");

    EXPECT_EQ(scan(), Models{"EX-2"}) << "its minute is not over";
    EXPECT_EQ(m_library.bytesOnLines(), before);
    EXPECT_EQ(m_log.count("port Port_0 of Alpha: in use"), 1);
    EXPECT_EQ(m_log.count("of Beta"), 0);
}

} // namespace
