// SPDX-License-Identifier: Apache-2.0
// The device access on the mocked USB devices of faults.scene, which answer badly or leave.
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

class Usb3Faults : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::getenv("UMOCKDEV_DIR")) // NOLINT(concurrency-mt-unsafe)
            GTEST_SKIP() << "runs on mocked devices only";
        enumerate();
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
    // 250 ms are waited for one.
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
    EXPECT_EQ(m_list.count, 4U);
}

} // namespace
