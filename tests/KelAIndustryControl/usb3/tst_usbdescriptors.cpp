// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbDescriptors.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace kela;
using namespace kela::usb3;

namespace
{

using Bytes = std::vector<std::uint8_t>;

Bytes fromHex(const std::string &hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

/// A camera with three interfaces; its device info names strings 5, 1, 2, 6, 7, 8, 3 and 9.
Bytes camera()
{
    return fromHex("12012003EF02010909120100000101020301"
                   "090274000301008070"
                   "080B0003EF050000"
                   "0904000002EF050000"
                   "142401010001000100010005010206070803091E"
                   "07058102000400063000000000"
                   "07050102000400063000000000"
                   "0904010001EF050100"
                   "07058202000400063000000000"
                   "0904020001EF050200"
                   "0705830200040006300F000000");
}

constexpr std::size_t kDeviceInfoAt = 18 + 9 + 8 + 9;

std::optional<CameraDescriptors> parse(const Bytes &bytes, std::uint8_t configuration = 1)
{
    return parseCameraDescriptors(ByteView{bytes.data(), bytes.size()}, configuration);
}

TEST(UsbDescriptors, cameraIsRecognisedByItsControlInterface)
{
    const auto found = parse(camera());

    ASSERT_TRUE(found);
    EXPECT_EQ(found->vendorId, 0x1209);
    EXPECT_EQ(found->productId, 0x0001);
    EXPECT_EQ(found->usbVersion, 0x0320);
    EXPECT_EQ(found->controlInterface, 0);
    EXPECT_EQ(found->genCpVersion, 0x00010001U);
    EXPECT_EQ(found->u3vVersion, 0x00010001U);
    EXPECT_EQ(found->guidString, 5);
    EXPECT_EQ(found->vendorString, 1);
    EXPECT_EQ(found->modelString, 2);
    EXPECT_EQ(found->familyString, 6);
    EXPECT_EQ(found->versionString, 7);
    EXPECT_EQ(found->infoString, 8);
    EXPECT_EQ(found->serialString, 3);
    EXPECT_EQ(found->userNameString, 9);
    EXPECT_EQ(found->speedSupport, 0x1E);
}

TEST(UsbDescriptors, deviceOfTheSameDeviceClassIsNoCamera)
{
    Bytes webcam = camera();
    webcam[18 + 9 + 8 + 6] = 0x02; // the control interface's subclass
    EXPECT_FALSE(parse(webcam));
}

TEST(UsbDescriptors, inactiveConfigurationIsNotLookedAt)
{
    EXPECT_FALSE(parse(camera(), 2));
    EXPECT_TRUE(parse(camera(), 0)) << "no configuration told: the first camera counts";
}

TEST(UsbDescriptors, descriptorsCutBeforeTheDeviceInfoEndsAreNoCamera)
{
    const Bytes whole = camera();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(parse(cut).has_value(), length >= kDeviceInfoAt + 20) << length;
    }
}

TEST(UsbDescriptors, lyingLengthsAreNoCameraAndNoOverrun)
{
    const Bytes whole = camera();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int value : {0, 1, 2, 8, 0x7F, 0xFF}) {
            Bytes damaged = whole;
            damaged[at] = static_cast<std::uint8_t>(value);
            parse(damaged); // whatever comes of it: the sanitizers watch
        }
    }
    Bytes shortInfo = whole;
    shortInfo[kDeviceInfoAt] = 19;
    EXPECT_FALSE(parse(shortInfo));
    Bytes emptyInfo = whole;
    emptyInfo[kDeviceInfoAt] = 0;
    EXPECT_FALSE(parse(emptyInfo));
}

} // namespace
