// SPDX-License-Identifier: Apache-2.0
// Asking what stands behind one port of a simulated library, over the functions of a real one.
#include "SimulatedLibrary.h"

#include <KelAIndustryControl/cameralink/GenCpClient.h>
#include <KelAIndustryControl/cameralink/SerialLibrary.h>

#include <memory>
#include <string>

using namespace kela;
using namespace kela::cameralink;

namespace
{

class GenCpClientTest : public testing::Test
{
protected:
    /// Asks the camera that @p words describe, of the library @p original.
    ProbeResult identify(const std::string &words, const char *original = SIMULATED_SERIAL_LIBRARY,
                         Milliseconds limit = kLongestProbe)
    {
        const SimulatedLibrary file(original);
        file.describe("A " + words + "\n");
        std::string error;
        const auto library = SerialLibrary::load(file.file(), error);
        EXPECT_TRUE(library) << error;
        std::int32_t result = kSerialOk;
        const auto port = library ? library->open(0, result) : nullptr;
        EXPECT_TRUE(port) << result;
        if (!port)
            return ProbeResult::NoAnswer;
        const auto countAsked = [this] {
            ++m_asked;
            return false;
        };
        const ProbeResult probed = GenCpClient(*port, countAsked, limit).identify(m_identity);
        m_bytes = file.bytesOnLines();
        return probed;
    }

    CameraIdentity m_identity;
    int m_asked = 0;           ///< how often it was asked whether to go on
    std::uint64_t m_bytes = 0; ///< on the line, in both directions
};

TEST_F(GenCpClientTest, textsInUtf16AreUnderstood)
{
    EXPECT_EQ(identify("camera instant utf16 manufacturer=Example model=EX-20 serial=CL001 user=left"),
              ProbeResult::Identified);

    EXPECT_EQ(m_identity.manufacturer, "Example");
    EXPECT_EQ(m_identity.model, "EX-20");
    EXPECT_EQ(m_identity.serial, "CL001");
    EXPECT_EQ(m_identity.userName, "left");
}

TEST_F(GenCpClientTest, cameraThatFallsSilentInTheMiddleIsNotIdentifiedByHalf)
{
    EXPECT_EQ(identify("camera instant response=50 model=EX-1 serial=1 dies=serial"), ProbeResult::Unknown);
    EXPECT_EQ(identify("camera instant response=50 model=EX-1 serial=1 user=left dies=user"),
              ProbeResult::Unknown);
}

TEST_F(GenCpClientTest, noiseThatHoldsThePreambleHidesNoPacket)
{
    EXPECT_EQ(identify("camera instant preamble model=EX-1 serial=1"), ProbeResult::Identified);
    const std::uint64_t noisy = m_bytes;

    EXPECT_EQ(identify("camera instant model=EX-1 serial=1"), ProbeResult::Identified);
    constexpr std::uint64_t kNoise = 4;
    constexpr std::uint64_t kQuestions = 7;
    EXPECT_EQ(noisy - m_bytes, kNoise * kQuestions) << "no question was repeated";
}

TEST_F(GenCpClientTest, answerThatDoesNotGoOnHidesNoPacketBehindIt)
{
    EXPECT_EQ(identify("camera instant cut model=EX-1 serial=1"), ProbeResult::Identified);
    const std::uint64_t disturbed = m_bytes;

    EXPECT_EQ(identify("camera instant model=EX-1 serial=1"), ProbeResult::Identified);
    EXPECT_EQ(disturbed - m_bytes, kPacketHeadSize) << "no question was repeated";
}

TEST_F(GenCpClientTest, cameraThatNamesNoResponseTimeIsGivenTheShortest)
{
    EXPECT_EQ(identify("camera delay=35 response=0 model=EX-1 serial=1"), ProbeResult::Identified);
    const std::uint64_t slow = m_bytes;

    EXPECT_EQ(identify("camera instant response=200 model=EX-1 serial=1"), ProbeResult::Identified);
    EXPECT_EQ(slow, m_bytes) << "no question was repeated";
}

TEST_F(GenCpClientTest, firstAnswerMayTakeTheLongestResponse)
{
    // 300 ms, and 40 of what the client allows for its bytes on the line.
    EXPECT_EQ(identify("camera instant first=340 model=EX-1 serial=1"), ProbeResult::Identified);
}

TEST_F(GenCpClientTest, cameraThatIsBusyIsAskedAgain)
{
    EXPECT_EQ(identify("camera instant busy=2 model=EX-1 serial=1"), ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "EX-1");
}

TEST_F(GenCpClientTest, pendingCameraIsGivenItsTime)
{
    // Longer than the response time and the answer's on the line, and than the repeats of the question.
    EXPECT_EQ(identify("camera instant pending=1000 response=50 model=EX-1 serial=1"), ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "EX-1");
}

TEST_F(GenCpClientTest, waitForAPendingCameraShowsThatTheProbeIsAlive)
{
    identify("camera instant model=EX-1 serial=1");
    const int asked = std::exchange(m_asked, 0);

    identify("camera instant pending=800 model=EX-1 serial=1");

    EXPECT_GE(m_asked - asked, 4) << "every tenth of a second of more than half a one";
}

TEST_F(GenCpClientTest, cameraThatIsAlwaysPendingDoesNotKeepTheProbe)
{
    const auto begin = Clock::now();
    EXPECT_EQ(identify("camera instant pending=60000 model=EX-1 serial=1", SIMULATED_SERIAL_LIBRARY,
                       Milliseconds{500}),
              ProbeResult::Unknown);

    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(3));
}

TEST_F(GenCpClientTest, libraryThatCannotCountItsBytesIsReadByteByByte)
{
    EXPECT_EQ(identify("camera instant uncounted model=EX-1 serial=1"), ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "EX-1");
}

TEST_F(GenCpClientTest, libraryOfTheFirstEditionIsReadByteByByte)
{
    // Its first answer takes longer than one call to read waits.
    EXPECT_EQ(identify("camera instant first=230 model=EX-1 serial=1", SIMULATED_OLD_LIBRARY),
              ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "EX-1");
}

TEST_F(GenCpClientTest, readsThatGiveLessThanWantedAreContinued)
{
    EXPECT_EQ(identify("camera instant pieces full model=EX-1 serial=1"), ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "EX-1" + std::string(60, 'x'));
}

TEST_F(GenCpClientTest, lateAnswerOfThePreviousQuestionIsPassedOver)
{
    EXPECT_EQ(
        identify("camera instant late manufacturer=Example model=EX-20 version=1.2 serial=CL001 user=left"),
        ProbeResult::Identified);

    EXPECT_EQ(m_identity.manufacturer, "Example");
    EXPECT_EQ(m_identity.model, "EX-20");
    EXPECT_EQ(m_identity.version, "1.2");
    EXPECT_EQ(m_identity.serial, "CL001");
    EXPECT_EQ(m_identity.userName, "left");
}

TEST_F(GenCpClientTest, registerThatIsNotThereLeavesItsTextEmpty)
{
    EXPECT_EQ(identify("camera instant without=model model=EX-1 serial=CL001"), ProbeResult::Identified);

    EXPECT_EQ(m_identity.model, "");
    EXPECT_EQ(m_identity.serial, "CL001");
}

TEST_F(GenCpClientTest, cameraWithoutModelAndSerialNumberIsNotUnderstood)
{
    EXPECT_EQ(identify("camera instant manufacturer=Example"), ProbeResult::Unknown);
}

} // namespace
