// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/Utf16.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

std::string decoded(const std::vector<std::uint8_t> &bytes)
{
    return kela::utf8FromBigEndianUtf16(kela::ByteView{bytes.data(), bytes.size()});
}

TEST(Utf16, charactersOfEveryLengthAreUnderstood)
{
    EXPECT_EQ(decoded({0x00, 'A', 0x00, 0xE4, 0x76, 0xF8, 0xD8, 0x3D, 0xDC, 0xF7}), "A\u00e4\u76f8\U0001F4F7");
}

TEST(Utf16, textEndsAtItsNulOrWithItsBytes)
{
    EXPECT_EQ(decoded({0x00, 'A', 0x00, 0x00, 0x00, 'B'}), "A");
    EXPECT_EQ(decoded({0x00, 'A', 0x00, 'B'}), "AB");
    EXPECT_EQ(decoded({}), "");
}

TEST(Utf16, oddLastByteIsLeftOut)
{
    EXPECT_EQ(decoded({0x00, 'A', 0x41}), "A");
}

TEST(Utf16, loneSurrogatesAreReplaced)
{
    EXPECT_EQ(decoded({0xD8, 0x3D, 0x00, 'A'}), "\ufffdA");
    EXPECT_EQ(decoded({0xDC, 0xF7, 0x00, 'A'}), "\ufffdA");
    EXPECT_EQ(decoded({0xD8, 0x3D}), "\ufffd");
}

TEST(Utf16, eitherByteMayComeFirst)
{
    const std::vector<std::uint8_t> bytes = {'A', 0x00, 0xF8, 0x76, 0x3D, 0xD8, 0xF7, 0xDC};

    EXPECT_EQ(kela::utf8FromLittleEndianUtf16({bytes.data(), bytes.size()}), "A\u76f8\U0001F4F7");
}

} // namespace
