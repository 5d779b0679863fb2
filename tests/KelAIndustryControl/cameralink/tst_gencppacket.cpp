// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/GenCpPacket.h>

#include <gtest/gtest.h>

#include <vector>

using namespace kela;
using namespace kela::cameralink;

namespace
{

using Bytes = std::vector<std::uint8_t>;

ByteView view(const Bytes &bytes)
{
    return {bytes.data(), bytes.size()};
}

const Bytes kVersionAnswer = {0x01, 0x00, 0xf7, 0xfa, 0xf7, 0xf8, 0x00, 0x00, 0x00, 0x00,
                              0x08, 0x01, 0x00, 0x04, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01};

TEST(GenCpPacket, readOfTheVersionIsTheGoldenPacket)
{
    const Bytes golden = {0x01, 0x00, 0xb7, 0xf3, 0xb7, 0xef, 0x00, 0x00, 0x40, 0x00, 0x08, 0x00, 0x00, 0x0c,
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04};
    const ReadCommand command = readCommand(0, 4, 0);
    EXPECT_EQ(Bytes(command.begin(), command.end()), golden);
}

TEST(GenCpPacket, readOfATextIsTheGoldenPacket)
{
    const Bytes golden = {0x01, 0x00, 0xb7, 0xf2, 0xb7, 0xae, 0x00, 0x00, 0x40, 0x00, 0x08, 0x00, 0x00, 0x0c,
                          0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0x00, 0x00, 0x00, 0x40};
    const ReadCommand command = readCommand(4, 64, 1);
    EXPECT_EQ(Bytes(command.begin(), command.end()), golden);
}

TEST(GenCpPacket, goldenAcknowledgeIsUnderstood)
{
    const auto head = parsePacketHead(view(kVersionAnswer));
    ASSERT_TRUE(head);
    EXPECT_EQ(head->command, kAcknowledgeRead);
    EXPECT_EQ(head->dataLength, 4);
    EXPECT_EQ(head->requestId, 0);
    EXPECT_TRUE(isPacketDataValid(view(kVersionAnswer)));
}

TEST(GenCpPacket, everyFlippedBitIsNoticed)
{
    for (std::size_t bit = 0; bit < kVersionAnswer.size() * 8; ++bit) {
        Bytes damaged = kVersionAnswer;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ 1U << bit % 8);
        EXPECT_FALSE(parsePacketHead(view(damaged)) && isPacketDataValid(view(damaged))) << "bit " << bit;
    }
}

TEST(GenCpPacket, cutPacketIsNeverValid)
{
    for (std::size_t length = 0; length < kVersionAnswer.size(); ++length) {
        const Bytes cut(kVersionAnswer.begin(), kVersionAnswer.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(isPacketDataValid(view(cut))) << length;
    }
}

} // namespace
