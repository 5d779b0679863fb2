// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/GenCpPacket.h>

#include <KelAIndustryControl/core/BigEndian.h>

#include <cstring>

namespace kela::cameralink
{
namespace
{

struct Head {
    Be16 preamble;
    Be16 headChecksum;
    Be16 dataChecksum;
    Be16 channel;
    Be16 flagsOrStatus;
    Be16 command;
    Be16 dataLength;
    Be16 requestId;
};
static_assert(sizeof(Head) == kPacketHeadSize && offsetof(Head, channel) == 6 &&
              offsetof(Head, dataLength) == 12);

struct ReadPacket {
    Head head;
    Be32 addressHigh;
    Be32 addressLow;
    Be16 reserved;
    Be16 count;
};
static_assert(sizeof(ReadPacket) == kReadCommandSize && offsetof(ReadPacket, count) == 26);

struct PendingData {
    Be16 reserved;
    Be16 milliseconds;
};

constexpr std::uint16_t kPreamble = 0x0100;
constexpr std::uint16_t kControlChannel = 0;
constexpr std::uint16_t kAcknowledgeWanted = 0x4000;
constexpr std::uint16_t kCommandRead = 0x0800;
constexpr std::size_t kChecksumBegin = offsetof(Head, channel);

/// The complement of the sum of 16-bit words with end-around carry; an odd last byte counts as a high one.
std::uint16_t checksum(ByteView bytes)
{
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size; i += 2) {
        const std::uint32_t low = i + 1 < bytes.size ? bytes.data[i + 1] : 0U;
        sum += static_cast<std::uint32_t>(bytes.data[i]) << 8 | low;
        sum = (sum & 0xFFFFU) + (sum >> 16);
    }
    return static_cast<std::uint16_t>(~sum);
}

} // namespace

ReadCommand readCommand(std::uint64_t address, std::uint16_t count, std::uint16_t requestId)
{
    constexpr auto kDataLength = static_cast<std::uint16_t>(sizeof(ReadPacket) - sizeof(Head));
    ReadPacket packet = {};
    packet.head.preamble = Be16(kPreamble);
    packet.head.channel = Be16(kControlChannel);
    packet.head.flagsOrStatus = Be16(kAcknowledgeWanted);
    packet.head.command = Be16(kCommandRead);
    packet.head.dataLength = Be16(kDataLength);
    packet.head.requestId = Be16(requestId);
    packet.addressHigh = Be32(static_cast<std::uint32_t>(address >> 32));
    packet.addressLow = Be32(static_cast<std::uint32_t>(address));
    packet.reserved = Be16(0);
    packet.count = Be16(count);

    ReadCommand bytes;
    std::memcpy(bytes.data(), &packet, sizeof(packet));
    const ByteView covered = ByteView{bytes.data(), bytes.size()}.from(kChecksumBegin);
    packet.head.headChecksum = Be16(checksum(covered.first(kPacketHeadSize - kChecksumBegin)));
    packet.head.dataChecksum = Be16(checksum(covered));
    std::memcpy(bytes.data(), &packet, sizeof(packet));
    return bytes;
}

std::optional<PacketHead> parsePacketHead(ByteView bytes)
{
    const auto head = readLayout<Head>(bytes);
    if (!head || head->preamble.value() != kPreamble || head->channel.value() != kControlChannel)
        return std::nullopt;
    if (checksum(bytes.first(kPacketHeadSize).from(kChecksumBegin)) != head->headChecksum.value())
        return std::nullopt;
    if (head->dataLength.value() > kLargestPacket - kPacketHeadSize)
        return std::nullopt;
    return PacketHead{head->flagsOrStatus.value(), head->command.value(), head->dataLength.value(),
                      head->requestId.value()};
}

bool isPacketDataValid(ByteView packet)
{
    const auto head = readLayout<Head>(packet);
    const std::size_t whole = head ? sizeof(Head) + head->dataLength.value() : 0;
    return head && packet.size >= whole &&
           checksum(packet.first(whole).from(kChecksumBegin)) == head->dataChecksum.value();
}

std::optional<std::uint16_t> pendingTime(ByteView data)
{
    const auto pending = readLayout<PendingData>(data);
    return pending ? std::optional(pending->milliseconds.value()) : std::nullopt;
}

} // namespace kela::cameralink
