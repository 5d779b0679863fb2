// SPDX-License-Identifier: Apache-2.0
// The device access on the mocked USB devices of faults.scene, which answer badly or leave.
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace
{

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

class Usb3Faults : public testing::Test
{
protected:
    // Some answer the first who asks in this process otherwise than those who come later.
    static void SetUpTestSuite()
    {
        KelAIndustryControl access;
        for (int pass = 0; pass < kFirstPasses; ++pass) {
            KELA_DEVICE_INFO_LIST list = {};
            access.EnumDevices(KELA_INTERFACE_TYPE_USB, &list, false);
            for (uint32_t i = 0; i < list.count; ++i) {
                const KELA_DEVICE_INFO_EX &found = *list.devices[i];
                s_firstNames[std::string(fixedText(found.serialNumber))].emplace_back(
                    fixedText(found.special.usb.userDefinedName));
            }
        }
    }

    void SetUp() override
    {
        if (!std::getenv("UMOCKDEV_DIR")) // NOLINT(concurrency-mt-unsafe)
            GTEST_SKIP() << "runs on mocked devices only";
        KelAIndustryControl::SetLogSink(&Usb3Faults::keepLine, &m_lines);
        enumerate();
    }

    void TearDown() override { KelAIndustryControl::SetLogSink(nullptr, nullptr); }

    static void keepLine(KELA_LOG_LEVEL, const char *text, void *lines)
    {
        static_cast<std::vector<std::string> *>(lines)->emplace_back(text);
    }

    milliseconds enumerate()
    {
        const auto begin = SteadyClock::now();
        EXPECT_EQ(m_access.EnumDevices(KELA_INTERFACE_TYPE_USB, &m_list, false),
                  static_cast<unsigned int>(KELA_OK));
        return std::chrono::duration_cast<milliseconds>(SteadyClock::now() - begin);
    }

    const KELA_USB_DEVICE_INFO *camera(const std::string &serial) const
    {
        for (uint32_t i = 0; i < m_list.count; ++i) {
            if (fixedText(m_list.devices[i]->serialNumber) == serial)
                return &m_list.devices[i]->special.usb;
        }
        return nullptr;
    }

    static constexpr int kFirstPasses = 5;
    static inline std::map<std::string, std::vector<std::string>> s_firstNames; // by camera, pass by pass
    std::vector<std::string> m_lines;
    KelAIndustryControl m_access;
    KELA_DEVICE_INFO_LIST m_list = {};
};

TEST_F(Usb3Faults, textThatDoesNotComeCostsItselfOnly)
{
    ASSERT_TRUE(camera("STUCK"));
    EXPECT_EQ(fixedText(camera("STUCK")->deviceGuid), "");
    EXPECT_EQ(fixedText(camera("STUCK")->familyName), "EX");
    EXPECT_EQ(fixedText(camera("STUCK")->userDefinedName), "left camera");
}

TEST_F(Usb3Faults, textThatDoesNotComeIsNotAskedForAgain)
{
    enumerate(); // the silent one's texts
    // 250 ms are waited for one; a pass over known cameras takes a few.
    EXPECT_LT(enumerate(), milliseconds(200));
    ASSERT_TRUE(camera("STUCK"));
    EXPECT_EQ(fixedText(camera("STUCK")->userDefinedName), "left camera");
}

TEST_F(Usb3Faults, textWhoseTransferFailsCostsItselfOnly)
{
    ASSERT_TRUE(camera("BROKEN"));
    EXPECT_EQ(fixedText(camera("BROKEN")->familyName), "");
    EXPECT_EQ(fixedText(camera("BROKEN")->deviceGuid), "120900000043");
    EXPECT_EQ(fixedText(camera("BROKEN")->userDefinedName), "right camera");
}

TEST_F(Usb3Faults, cameraThatAnswersNothingShowsTheSystemsTextsUntilItDoes)
{
    ASSERT_TRUE(camera("SILENT"));
    EXPECT_EQ(fixedText(camera("SILENT")->manufacturerName), "Example Optics");
    EXPECT_EQ(fixedText(camera("SILENT")->userDefinedName), "");

    enumerate();
    ASSERT_TRUE(camera("SILENT"));
    EXPECT_EQ(fixedText(camera("SILENT")->userDefinedName), "silent");
}

TEST_F(Usb3Faults, cameraThatIsPulledWhileItIsReadIsGone)
{
    EXPECT_FALSE(camera("PULLED"));
    EXPECT_TRUE(camera("SOUND"));
    EXPECT_EQ(m_list.count, 12U);
}

TEST_F(Usb3Faults, cameraThatGaveNothingIsAskedAgain)
{
    EXPECT_EQ(s_firstNames["FLAKY"], (std::vector<std::string>{"", "flaky", "flaky", "flaky", "flaky"}));
}

TEST_F(Usb3Faults, cameraThatBootsForSomePassesLosesNoTextByIt)
{
    EXPECT_EQ(s_firstNames["BOOTING"], (std::vector<std::string>{"", "", "", "", "booted"}));
    ASSERT_TRUE(camera("BOOTING"));
    EXPECT_EQ(fixedText(camera("BOOTING")->deviceGuid), "120900000049");
}

TEST_F(Usb3Faults, cameraWithoutADeviceNodeIsToldOnceAndNotAsForbidden)
{
    ASSERT_TRUE(camera("NODELESS"));
    EXPECT_EQ(camera("NODELESS")->usable, 0U);
    enumerate();

    EXPECT_EQ(m_lines.size(), 1U);
    EXPECT_NE(m_lines.front().find("has no device node /dev/bus/usb/002/011"), std::string::npos);
}

TEST_F(Usb3Faults, cameraThatIsHeldIsNotConnectedToWhateverAClaimWouldSay)
{
    KELA_DEVICE_INFO_EX held = {};
    for (uint32_t i = 0; i < m_list.count; ++i) {
        if (fixedText(m_list.devices[i]->serialNumber) == "HELD")
            held = *m_list.devices[i];
    }
    KelAIndustryControl own;
    ASSERT_EQ(own.Init(&held, false), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(own.Connect(KELA_ACCESS_CONTROL), static_cast<unsigned int>(KELA_ERROR_IN_USE));
}

TEST_F(Usb3Faults, cameraWithoutAnyTextIsToldByItsPlace)
{
    ASSERT_TRUE(camera("1-4"));
    EXPECT_EQ(fixedText(camera("1-4")->manufacturerName), "");
    EXPECT_EQ(camera("1-4")->usable, 1U);
}

TEST_F(Usb3Faults, olderUsbVersionOfSystemAndDescriptorsHolds)
{
    ASSERT_TRUE(camera("SLOWPORT") && camera("OLDER") && camera("UNTOLD"));
    EXPECT_EQ(camera("SLOWPORT")->usbVersion, 0x0210U);
    EXPECT_EQ(camera("OLDER")->usbVersion, 0x0210U);
    EXPECT_EQ(camera("UNTOLD")->usbVersion, 0x0310U);
}

} // namespace
