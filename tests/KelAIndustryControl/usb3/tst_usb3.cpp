// SPDX-License-Identifier: Apache-2.0
// The device access on the mocked USB devices of cameras.scene.
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace
{

template <std::size_t Size>
void set(char (&field)[Size], const std::string &text)
{
    std::fill(std::begin(field), std::end(field), '\0');
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

/// What every camera of the scene has in common, as the first one has it.
KELA_DEVICE_INFO_EX recordOf(const std::string &serial, const std::string &model)
{
    KELA_DEVICE_INFO_EX record = {};
    record.transport = KELA_INTERFACE_TYPE_USB;
    set(record.modelName, model);
    set(record.secondName, "1.00"); // the number of the device descriptor
    set(record.serialNumber, serial);
    KELA_USB_DEVICE_INFO &usb = record.special.usb;
    usb.usable = 1;
    usb.genCpVersion = 0x00010001;
    usb.u3vVersion = 0x00010001;
    set(usb.manufacturerName, "Example Optics");
    usb.usbVersion = 0x0320;
    usb.linkSpeed = 5000;
    usb.speedSupport = 0x1E;
    usb.vendorId = 0x1209;
    usb.productId = 0x0001;
    return record;
}

void place(KELA_DEVICE_INFO_EX &record, std::initializer_list<uint8_t> locator, uint32_t deviceNumber)
{
    KELA_USB_DEVICE_INFO &usb = record.special.usb;
    std::copy(locator.begin(), locator.end(), usb.portLocator);
    usb.busNumber = usb.portLocator[0];
    usb.deviceNumber = deviceNumber;
}

bool isSame(const KELA_DEVICE_INFO_EX *found, const KELA_DEVICE_INFO_EX &expected)
{
    return found && std::memcmp(found, &expected, sizeof(expected)) == 0;
}

TEST_F(Usb3, recordHoldsWhatTheDescriptorsSay)
{
    KELA_DEVICE_INFO_EX expected = recordOf("SN00042", "EX-1000");
    set(expected.secondName, "1.7");
    place(expected, {2, 1}, 5);
    KELA_USB_DEVICE_INFO &usb = expected.special.usb;
    set(usb.deviceGuid, "120900000042");
    set(usb.familyName, "EX");
    set(usb.manufacturerInfo, "Lab");
    set(usb.userDefinedName, "left camera");

    EXPECT_TRUE(isSame(device("SN00042"), expected));
}

TEST_F(Usb3, recordOfACameraInUseIsThatOfAFreeOne)
{
    KELA_DEVICE_INFO_EX expected = recordOf("SN00043", "EX-1000");
    place(expected, {2, 2}, 6);

    EXPECT_TRUE(isSame(device("SN00043"), expected));
}

TEST_F(Usb3, recordOfAUsb2CameraTellsItsLink)
{
    KELA_DEVICE_INFO_EX expected = recordOf("SN00044", "EX-200");
    place(expected, {1, 4, 3, 2}, 7);
    expected.special.usb.usbVersion = 0x0210;
    expected.special.usb.linkSpeed = 480;

    EXPECT_TRUE(isSame(device("SN00044"), expected));
}

TEST_F(Usb3, recordOfACameraOnASlowLinkIsNotUsable)
{
    KELA_DEVICE_INFO_EX expected = recordOf("SN00045", "EX-200");
    place(expected, {1, 5}, 8);
    expected.special.usb.usbVersion = 0x0110;
    expected.special.usb.linkSpeed = 12;
    expected.special.usb.usable = 0;

    EXPECT_TRUE(isSame(device("SN00045"), expected));
}

TEST_F(Usb3, recordOfACameraWithoutPermissionHoldsWhatTheSystemKnows)
{
    KELA_DEVICE_INFO_EX expected = recordOf("SN00046", "EX-1000");
    place(expected, {2, 6}, 9);
    expected.special.usb.usable = 0;

    EXPECT_TRUE(isSame(device("SN00046"), expected));
}

TEST_F(Usb3, cameraWithoutPermissionIsNotAccessible)
{
    ASSERT_TRUE(device("SN00046"));
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
