// SPDX-License-Identifier: Apache-2.0
// The device access on the mocked USB devices of cameras.scene.
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

namespace
{

template <std::size_t Size>
void set(char (&field)[Size], const std::string &text)
{
    text.copy(field, Size - 1);
}

class Usb3 : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::getenv("UMOCKDEV_DIR")) // NOLINT(concurrency-mt-unsafe)
            GTEST_SKIP() << "runs on mocked devices only";
        ASSERT_EQ(m_access.EnumDevices(KELA_INTERFACE_TYPE_USB, &m_list, false),
                  static_cast<unsigned int>(KELA_OK));
    }

    KELA_DEVICE_INFO_EX *device(const std::string &serial)
    {
        for (uint32_t i = 0; i < m_list.count; ++i) {
            if (fixedText(m_list.devices[i]->serialNumber) == serial)
                return m_list.devices[i];
        }
        return nullptr;
    }

    bool isAccessible(const std::string &serial, unsigned int mode = KELA_ACCESS_CONTROL)
    {
        bool isFree = false;
        EXPECT_EQ(m_access.IsDeviceAccessible(device(serial), mode, &isFree),
                  static_cast<unsigned int>(KELA_OK));
        return isFree;
    }

    KelAIndustryControl m_access;
    KELA_DEVICE_INFO_LIST m_list = {};
};

TEST_F(Usb3, onlyCamerasWithWholeDescriptorsAreListed)
{
    std::vector<std::string> serials;
    for (uint32_t i = 0; i < m_list.count; ++i)
        serials.emplace_back(fixedText(m_list.devices[i]->serialNumber));
    EXPECT_EQ(serials, (std::vector<std::string>{"SN00042", "SN00043", "SN00044", "SN00045", "SN00046"}));
}

TEST_F(Usb3, recordHoldsWhatTheDescriptorsSay)
{
    KELA_DEVICE_INFO_EX expected = {};
    expected.transport = KELA_INTERFACE_TYPE_USB;
    set(expected.modelName, "EX-1000");
    set(expected.secondName, "1.7");
    set(expected.serialNumber, "SN00042");
    KELA_USB_DEVICE_INFO &usb = expected.special.usb;
    usb.portLocator[0] = 2;
    usb.portLocator[1] = 1;
    usb.usable = 1;
    usb.genCpVersion = 0x00010001;
    usb.u3vVersion = 0x00010001;
    set(usb.deviceGuid, "120900000042");
    set(usb.familyName, "EX");
    set(usb.manufacturerInfo, "Lab");
    set(usb.manufacturerName, "Example Optics");
    set(usb.userDefinedName, "left camera");
    usb.usbVersion = 0x0320;
    usb.linkSpeed = 5000;
    usb.speedSupport = 0x1E;
    usb.vendorId = 0x1209;
    usb.productId = 0x0001;
    usb.busNumber = 2;
    usb.deviceNumber = 5;

    ASSERT_TRUE(device("SN00042"));
    EXPECT_EQ(std::memcmp(device("SN00042"), &expected, sizeof(expected)), 0);
}

TEST_F(Usb3, locatorHoldsTheBusAndThePathOfPorts)
{
    const uint8_t expected[4] = {1, 4, 3, 2};
    ASSERT_TRUE(device("SN00044"));
    EXPECT_EQ(std::memcmp(device("SN00044")->special.usb.portLocator, expected, sizeof(expected)), 0);
}

TEST_F(Usb3, versionIsThatOfThePresentLink)
{
    ASSERT_TRUE(device("SN00044"));
    EXPECT_EQ(device("SN00044")->special.usb.usbVersion, 0x0210U);
    EXPECT_EQ(device("SN00044")->special.usb.linkSpeed, 480U);
    EXPECT_EQ(device("SN00044")->special.usb.usable, 1U);
}

TEST_F(Usb3, linkTooSlowForTheStandardIsNotUsable)
{
    ASSERT_TRUE(device("SN00045"));
    EXPECT_EQ(device("SN00045")->special.usb.usable, 0U);
}

TEST_F(Usb3, cameraWithoutPermissionIsListedWithTheSystemsTextsAndNotUsable)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may open everything";
    ASSERT_TRUE(device("SN00046"));
    EXPECT_EQ(device("SN00046")->special.usb.usable, 0U);
    EXPECT_EQ(fixedText(device("SN00046")->modelName), "EX-1000");
    EXPECT_EQ(fixedText(device("SN00046")->secondName), "1.00") << "the number of the device descriptor";
    EXPECT_FALSE(isAccessible("SN00046"));
}

TEST_F(Usb3, cameraThatAProgramHoldsIsNotAccessibleForControl)
{
    EXPECT_FALSE(isAccessible("SN00043"));
    EXPECT_TRUE(isAccessible("SN00043", KELA_ACCESS_MONITOR));
    EXPECT_TRUE(isAccessible("SN00042"));
}

TEST_F(Usb3, connectClaimsTheInterfaceAndDisconnectReleasesIt)
{
    KelAIndustryControl camera;
    ASSERT_EQ(camera.Init(device("SN00042"), false), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(camera.Connect(KELA_ACCESS_CONTROL), static_cast<unsigned int>(KELA_OK));
    EXPECT_EQ(camera.DisConnect(false), static_cast<unsigned int>(KELA_OK));
}

TEST_F(Usb3, connectToACameraInUseSaysSo)
{
    KelAIndustryControl camera;
    ASSERT_EQ(camera.Init(device("SN00043"), false), static_cast<unsigned int>(KELA_OK));

    EXPECT_EQ(camera.Connect(KELA_ACCESS_CONTROL), static_cast<unsigned int>(KELA_ERROR_IN_USE));
}

TEST_F(Usb3, secondPassGivesTheSameRecordsInTheSameOrder)
{
    std::vector<KELA_DEVICE_INFO_EX> before;
    for (uint32_t i = 0; i < m_list.count; ++i)
        before.push_back(*m_list.devices[i]);

    m_access.EnumDevices(KELA_INTERFACE_TYPE_USB, &m_list, false);

    ASSERT_EQ(m_list.count, before.size());
    for (uint32_t i = 0; i < m_list.count; ++i)
        EXPECT_EQ(std::memcmp(m_list.devices[i], &before[i], sizeof(before[i])), 0);
}

} // namespace
