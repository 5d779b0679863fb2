// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/Identifiers.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace kela::gentl;

TEST(GenTLIdentifiers, identifierThatFitsIsUnchanged)
{
    const std::string fits(63, 'a');

    EXPECT_EQ(recordIdentifier(fits), fits);
    EXPECT_EQ(recordIdentifier(""), "");
}

TEST(GenTLIdentifiers, longIdentifierIsCutToTheFieldAndToldApartByItsEnd)
{
    const std::string one = std::string(100, 'a') + "1";
    const std::string other = std::string(100, 'a') + "2";

    EXPECT_EQ(recordIdentifier(one).size(), 63U);
    EXPECT_EQ(recordIdentifier(one), recordIdentifier(one));
    EXPECT_NE(recordIdentifier(one), recordIdentifier(other));
}

TEST(GenTLIdentifiers, characterOfSeveralBytesIsNotCut)
{
    const std::string identifier = std::string(45, 'a') + "\xC3\xA9" + std::string(40, 'b');

    EXPECT_EQ(recordIdentifier(identifier).substr(0, 46), std::string(45, 'a') + "~");
    EXPECT_EQ(displayText("ab\xC3\xA9", 3), "ab");
    EXPECT_EQ(displayText("ab\xC3\xA9", 4), "ab\xC3\xA9");
}

TEST(GenTLIdentifiers, bytesThatAreNoTextAreKept)
{
    const std::string bytes(70, '\x80');

    EXPECT_EQ(recordIdentifier(bytes).size(), 63U);
    EXPECT_EQ(displayText(bytes, 10).size(), 10U);
}

TEST(GenTLIdentifiers, displayTextLosesTrailingBlanksAndLineEnds)
{
    EXPECT_EQ(displayText("name \r\n", 64), "name");
    EXPECT_EQ(displayText(" \n", 64), "");
    EXPECT_EQ(displayText(" a b", 64), " a b");
}

TEST(GenTLIdentifiers, firstPlaceOfADeviceKeepsItsIdentifier)
{
    EXPECT_EQ(PlacedIdentifiers::of("/first.cti", "if", "dev0"), "dev0");
    const std::string other = PlacedIdentifiers::of("/first.cti", "if2", "dev0");
    const std::string third = PlacedIdentifiers::of("/second.cti", "if", "dev0");

    EXPECT_EQ(std::set<std::string>({"dev0", other, third}).size(), 3U);
    EXPECT_EQ(other.substr(0, 5), "dev0~");
    EXPECT_EQ(PlacedIdentifiers::of("/first.cti", "if2", "dev0"), other);

    PlacedIdentifiers::forget("/first.cti");

    EXPECT_EQ(PlacedIdentifiers::of("/second.cti", "if", "dev0"), third) << "it stays as it was";
    EXPECT_EQ(PlacedIdentifiers::of("/second.cti", "if2", "dev0"), "dev0");
    PlacedIdentifiers::forget("/second.cti");
}

TEST(GenTLIdentifiers, interfaceKeepsItsNumber)
{
    const std::uint32_t number = InterfaceNumbers::numberOf("/a.cti", "if");

    EXPECT_EQ(InterfaceNumbers::numberOf("/a.cti", "if"), number);
    EXPECT_NE(InterfaceNumbers::numberOf("/b.cti", "if"), number);
    EXPECT_NE(InterfaceNumbers::numberOf("/a.cti", "if2"), number);
    ASSERT_TRUE(InterfaceNumbers::interfaceOf(number));
    EXPECT_EQ(InterfaceNumbers::interfaceOf(number)->identifier, "if");
}

TEST(GenTLIdentifiers, textAndNumberTogetherNameOneInterface)
{
    // Enumerators write them one after the other.
    std::set<std::string> keys;
    for (const char *const text : {"port", "port1", "port10", "port1000000"}) {
        for (const char *const file : {"/k1.cti", "/k2.cti", "/k3.cti"})
            keys.insert(text + std::to_string(InterfaceNumbers::numberOf(file, text)));
    }

    EXPECT_EQ(keys.size(), 12U);
}

TEST(GenTLIdentifiers, unknownNumberHasNoInterface)
{
    EXPECT_FALSE(InterfaceNumbers::interfaceOf(0));
    EXPECT_FALSE(InterfaceNumbers::interfaceOf(0xFFFFFFFFU));
}
