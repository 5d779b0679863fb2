// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/InfoReader.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using namespace kela::gentl;

namespace
{

constexpr std::size_t kMemory = 65536;

struct Reading : ::testing::Test {
    std::vector<char> memory = std::vector<char>(kMemory);
    InfoReader reader{memory.data(), kMemory};
    GC_ERROR code = GC_ERR_SUCCESS;

    /// A producer that hands out a text by the standard.
    static InfoReader::Call good(const std::string &text)
    {
        return [text](INFO_DATATYPE *type, void *buffer, std::size_t *size) -> GC_ERROR {
            *type = INFO_DATATYPE_STRING;
            const std::size_t room = *size;
            *size = text.size() + 1;
            if (!buffer)
                return GC_ERR_SUCCESS;
            if (room < text.size() + 1)
                return GC_ERR_BUFFER_TOO_SMALL;
            std::memcpy(buffer, text.c_str(), text.size() + 1);
            return GC_ERR_SUCCESS;
        };
    }
};

} // namespace

TEST_F(Reading, shortTextTakesOneCall)
{
    int calls = 0;
    const auto text = reader.text(
        [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            ++calls;
            return good("camera")(type, buffer, size);
        },
        code);

    EXPECT_EQ(text, "camera");
    EXPECT_EQ(calls, 1);
}

TEST_F(Reading, longTextIsReadWhole)
{
    const std::string text(5000, 'x');

    EXPECT_EQ(reader.text(good(text), code), text);
}

TEST_F(Reading, textWithoutTerminatorEndsWithWhatWasWritten)
{
    const auto call = [](INFO_DATATYPE *, void *buffer, std::size_t *size) {
        std::memcpy(buffer, "abc", 3);
        *size = 3;
        return GC_ERR_SUCCESS;
    };

    EXPECT_EQ(reader.text(call, code), "abc");
}

TEST_F(Reading, textThatFillsItsRoomEndsThere)
{
    std::size_t room = 0;
    const auto call = [&](INFO_DATATYPE *, void *buffer, std::size_t *size) {
        room = *size;
        std::memset(buffer, 'x', *size);
        return GC_ERR_SUCCESS;
    };

    const std::string text = reader.text(call, code);

    EXPECT_EQ(text.size(), room);
    EXPECT_EQ(text.find_first_not_of('x'), std::string::npos);
}

TEST_F(Reading, sizeBeyondTheRoomIsALie)
{
    const auto call = [](INFO_DATATYPE *, void *, std::size_t *size) {
        *size *= 10;
        return GC_ERR_SUCCESS;
    };
    EXPECT_FALSE(reader.sizeLied());
    reader.text(call, code);

    EXPECT_TRUE(reader.sizeLied());
}

TEST_F(Reading, failedCallGivesNoTextWhateverItWrote)
{
    const auto call = [](INFO_DATATYPE *, void *buffer, std::size_t *size) {
        std::memcpy(buffer, "junk", 5);
        *size = 5;
        return GC_ERR_ERROR;
    };

    EXPECT_EQ(reader.text(call, code), "");
    EXPECT_EQ(code, GC_ERR_ERROR);
}

TEST_F(Reading, textThatGrowsForEverIsGivenUp)
{
    int calls = 0;
    const auto call = [&](INFO_DATATYPE *, void *, std::size_t *size) {
        ++calls;
        *size += 100;
        return GC_ERR_BUFFER_TOO_SMALL;
    };

    EXPECT_EQ(reader.text(call, code), "");
    EXPECT_LT(calls, 10);
}

TEST_F(Reading, neededSizeThatCannotBeIsAnsweredWithAllTheRoom)
{
    std::size_t largest = 0;
    const auto call = [&](INFO_DATATYPE *, void *buffer, std::size_t *size) -> GC_ERROR {
        if (!buffer) {
            *size = ~std::size_t{0};
            return GC_ERR_SUCCESS;
        }
        largest = *size;
        if (*size < 2000)
            return GC_ERR_BUFFER_TOO_SMALL;
        std::memcpy(buffer, "there", 6);
        return GC_ERR_SUCCESS;
    };

    EXPECT_EQ(reader.text(call, code), "there");
    EXPECT_EQ(largest, kMemory);
}

TEST_F(Reading, neededSizeThatIsTooSmallIsAnsweredWithAllTheRoom)
{
    // Gives its size in words, say, or in the digits of a number.
    const std::string text(3000, 'x');
    const auto call = [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) -> GC_ERROR {
        if (buffer)
            return good(text)(type, buffer, size);
        *size = 10;
        return GC_ERR_SUCCESS;
    };

    EXPECT_EQ(reader.text(call, code), text);
}

TEST_F(Reading, neededSizeOfEveryTextIsAskedWhereItIsWanted)
{
    const auto call = [&](INFO_DATATYPE *type, void *buffer, std::size_t *size) -> GC_ERROR {
        if (buffer)
            return good("short")(type, buffer, size);
        *size = 0xFFFFFFFFU;
        return GC_ERR_SUCCESS;
    };
    EXPECT_EQ(reader.text(call, code), "short");
    EXPECT_FALSE(reader.sizeLied());
    reader.askSizes();
    EXPECT_EQ(reader.text(call, code), "short");

    EXPECT_TRUE(reader.sizeLied());
}

TEST_F(Reading, valueOfAnotherTypeIsNoText)
{
    const auto call = [](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
        *type = INFO_DATATYPE_INT32;
        std::memcpy(buffer, "abc", 4);
        *size = 4;
        return GC_ERR_SUCCESS;
    };

    EXPECT_EQ(reader.text(call, code), "");
}

TEST_F(Reading, numberOfEitherSignIsRead)
{
    for (const INFO_DATATYPE given : {INFO_DATATYPE_UNKNOWN, INFO_DATATYPE_INT32, INFO_DATATYPE_UINT32}) {
        const auto value = reader.number([given](INFO_DATATYPE *type, void *buffer, std::size_t *size) {
            const std::int32_t four = 4;
            *type = given;
            std::memcpy(buffer, &four, sizeof four);
            *size = sizeof four;
            return GC_ERR_SUCCESS;
        });
        EXPECT_EQ(value, 4U);
    }
}

TEST_F(Reading, numberOfAnotherSizeOrTypeIsNone)
{
    const auto wide = [](INFO_DATATYPE *, void *, std::size_t *size) {
        *size = 8;
        return GC_ERR_SUCCESS;
    };
    const auto text = [](INFO_DATATYPE *type, void *, std::size_t *) {
        *type = INFO_DATATYPE_STRING;
        return GC_ERR_SUCCESS;
    };

    EXPECT_FALSE(reader.number(wide));
    EXPECT_FALSE(reader.number(text));
}
