// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbStringDescriptor.h>

#include <gtest/gtest.h>

#include <vector>

using namespace kela;
using namespace kela::usb3;

namespace
{

/// A descriptor of 16-bit units that tells its true length.
std::vector<std::uint8_t> descriptorOf(const std::vector<std::uint16_t> &units)
{
    std::vector<std::uint8_t> bytes = {static_cast<std::uint8_t>(2 + 2 * units.size()), 3};
    for (const std::uint16_t unit : units) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFFU));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8U));
    }
    return bytes;
}

std::optional<std::string> textOf(const std::vector<std::uint8_t> &bytes)
{
    return parseStringDescriptor({bytes.data(), bytes.size()});
}

} // namespace

TEST(UsbStringDescriptor, textOfEveryWidthBecomesUtf8)
{
    EXPECT_EQ(textOf(descriptorOf({'C', 'a', 'm'})), "Cam");
    EXPECT_EQ(textOf(descriptorOf({0x00E9, 0x76F8})), "\xC3\xA9\xE7\x9B\xB8");
    EXPECT_EQ(textOf(descriptorOf({0xD83D, 0xDE00})), "\xF0\x9F\x98\x80");
}

TEST(UsbStringDescriptor, halfACharacterBecomesTheReplacement)
{
    EXPECT_EQ(textOf(descriptorOf({0xD83D, 'a', 0xDE00})), "\xEF\xBF\xBD"
                                                           "a\xEF\xBF\xBD");
    EXPECT_EQ(textOf(descriptorOf({'a', 0xD83D})), "a\xEF\xBF\xBD");
}

TEST(UsbStringDescriptor, textEndsAtItsNul)
{
    EXPECT_EQ(textOf(descriptorOf({'a', 0, 'b'})), "a");
    EXPECT_EQ(textOf(descriptorOf({0})), "");
}

TEST(UsbStringDescriptor, lengthThatLiesEndsWithTheBytes)
{
    EXPECT_EQ(textOf({255, 3, 'a', 0, 'b', 0}), "ab");
    EXPECT_EQ(textOf({4, 3, 'a', 0, 'b', 0}), "a");
    EXPECT_EQ(textOf({0, 3, 'a', 0}), "");
    EXPECT_EQ(textOf({5, 3, 'a', 0, 'b'}), "a");
}

TEST(UsbStringDescriptor, otherBytesAreNoText)
{
    EXPECT_FALSE(textOf({}));
    EXPECT_FALSE(textOf({2}));
    EXPECT_FALSE(textOf({4, 2, 'a', 0}));
}

TEST(UsbStringDescriptor, firstLanguageIsTaken)
{
    const std::vector<std::uint8_t> two = descriptorOf({0x0407, 0x0409});
    const std::vector<std::uint8_t> none = descriptorOf({});

    EXPECT_EQ(parseLanguageList({two.data(), two.size()}), 0x0407);
    EXPECT_FALSE(parseLanguageList({none.data(), none.size()}));
}
