// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/GenCpClient.h>

#include <KelAIndustryControl/core/BigEndian.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace kela::cameralink
{
namespace
{

constexpr std::uint64_t kVersionRegister = 0x000;
constexpr std::uint64_t kManufacturerRegister = 0x004;
constexpr std::uint64_t kModelRegister = 0x044;
constexpr std::uint64_t kDeviceVersionRegister = 0x0C4;
constexpr std::uint64_t kSerialRegister = 0x144;
constexpr std::uint64_t kUserNameRegister = 0x184;
constexpr std::uint64_t kCapabilityRegister = 0x1C4;
constexpr std::uint64_t kResponseTimeRegister = 0x1CC;
constexpr std::uint16_t kWordSize = 4;
constexpr std::uint16_t kTextSize = 64;
constexpr std::uint32_t kHasUserName = 0x01;

constexpr std::size_t kTries = 3;
// Most ports that do not answer have no camera: they are not to cost much. A question that is repeated keeps
// its number, so that the answer to either is taken: together both wait for the longest response.
constexpr Milliseconds kFirstResponses[] = {Milliseconds{100}, Milliseconds{150}};
constexpr Milliseconds kShortestResponse{50}; // what it tells is the camera's time, not that of this host
constexpr Milliseconds kLongestPending{5000};
constexpr Milliseconds kDrainLimit{200};
constexpr Milliseconds kFirstListen{10}; // ten bytes' time: who was talking before is heard
constexpr std::uint16_t kStatusError = 0x8000;

struct Capability {
    Be32 high;
    Be32 low;
};

/// Time that bytes take on the line at 9600 baud, ten bits each.
Milliseconds lineTime(std::size_t bytes)
{
    constexpr std::size_t kBitsPerByte = 10;
    constexpr std::size_t kBaud = 9600;
    return Milliseconds(bytes * kBitsPerByte * 1000 / kBaud + 1);
}

std::string textOf(const std::vector<std::uint8_t> &data)
{
    const auto end = std::find(data.begin(), data.end(), std::uint8_t{0});
    return std::string(data.begin(), end);
}

template <typename Layout>
std::optional<Layout> layoutOf(const std::vector<std::uint8_t> &data)
{
    return readLayout<Layout>(ByteView{data.data(), data.size()});
}

} // namespace

ProbeResult GenCpClient::identify(CameraIdentity &identity)
{
    m_port.setDefaultRate();
    m_port.drain(kDrainLimit, kFirstListen);
    Data data;
    if (readMemory(kVersionRegister, kWordSize, data) != Answer::Data)
        return m_hasHeardBytes ? ProbeResult::Unknown : ProbeResult::NoAnswer;
    if (readMemory(kResponseTimeRegister, kWordSize, data) == Answer::Data) {
        if (const auto limit = layoutOf<Be32>(data))
            m_responseTime = std::clamp(Milliseconds(limit->value()), kShortestResponse, kLongestResponse);
    }
    std::uint32_t capability = 0;
    if (readMemory(kCapabilityRegister, sizeof(Capability), data) == Answer::Data) {
        if (const auto bits = layoutOf<Capability>(data))
            capability = bits->low.value();
    }
    identity.manufacturer = readText(kManufacturerRegister);
    identity.model = readText(kModelRegister);
    identity.version = readText(kDeviceVersionRegister);
    identity.serial = readText(kSerialRegister);
    if (capability & kHasUserName)
        identity.userName = readText(kUserNameRegister);
    return identity.model.empty() && identity.serial.empty() ? ProbeResult::Unknown : ProbeResult::Identified;
}

std::string GenCpClient::readText(std::uint64_t address)
{
    Data data;
    return readMemory(address, kTextSize, data) == Answer::Data ? textOf(data) : std::string();
}

GenCpClient::Answer GenCpClient::readMemory(std::uint64_t address, std::uint16_t count, Data &data)
{
    // The first command after opening has number 0; from then on they count and wrap to 1.
    const std::uint16_t requestId = m_nextId;
    m_nextId = m_nextId == UINT16_MAX ? std::uint16_t{1} : static_cast<std::uint16_t>(m_nextId + 1);
    const ReadCommand command = readCommand(address, count, requestId);
    const bool isFirst = requestId == 0;
    const std::size_t tries = isFirst ? std::size(kFirstResponses) : kTries;
    for (std::size_t attempt = 0; attempt < tries && !m_isStopWanted(); ++attempt) {
        PacketHead head;
        const Milliseconds response = isFirst ? kFirstResponses[attempt] : m_responseTime;
        if (exchange(command, requestId, count, response, head, data)) {
            if (head.status & kStatusError)
                return Answer::NotThere;
            data.resize(count);
            return Answer::Data;
        }
        if (m_hasHeardBytes)
            m_port.drain(kDrainLimit, kQuietLine);
    }
    return Answer::None;
}

bool GenCpClient::exchange(const ReadCommand &command, std::uint16_t requestId, std::uint16_t count,
                           Milliseconds response, PacketHead &head, Data &data)
{
    if (!m_port.write(command.data(), command.size(), lineTime(command.size()) + kLongestResponse))
        return false;
    const Milliseconds answerTime = lineTime(kPacketHeadSize + count);
    TimePoint deadline = Clock::now() + lineTime(command.size()) + response + answerTime;
    const TimePoint latest = deadline + kLongestPending;
    while (Clock::now() < deadline && receivePacket(deadline, head, data)) {
        if (head.requestId != requestId)
            continue;
        const ByteView view{data.data(), data.size()};
        if (head.command == kAcknowledgeRead)
            return (head.status & kStatusError) || data.size() >= count;
        const auto wait = pendingTime(view);
        if (head.command == kAcknowledgePending && wait)
            deadline = std::min(latest, Clock::now() + Milliseconds(*wait) + answerTime);
    }
    return false;
}

bool GenCpClient::receivePacket(TimePoint deadline, PacketHead &head, Data &data)
{
    Data packet;
    if (!findPreamble(packet, deadline) || !receiveBytes(packet, kPacketHeadSize, deadline))
        return false;
    const auto parsed = parsePacketHead(ByteView{packet.data(), packet.size()});
    if (!parsed || !receiveBytes(packet, kPacketHeadSize + parsed->dataLength, deadline))
        return false;
    if (!isPacketDataValid(ByteView{packet.data(), packet.size()}))
        return false;
    head = *parsed;
    data.assign(packet.begin() + kPacketHeadSize, packet.end());
    return true;
}

/// Noise may stand before a packet: drops bytes until the two of the preamble follow each other.
bool GenCpClient::findPreamble(Data &packet, TimePoint deadline)
{
    constexpr std::uint8_t kFirst = 0x01;
    constexpr std::uint8_t kSecond = 0x00;
    while (receiveBytes(packet, 2, deadline)) {
        if (packet[0] == kFirst && packet[1] == kSecond)
            return true;
        packet.erase(packet.begin());
    }
    return false;
}

bool GenCpClient::receiveBytes(Data &packet, std::size_t count, TimePoint deadline)
{
    while (packet.size() < count) {
        const std::size_t before = packet.size();
        packet.resize(count);
        const std::size_t taken = m_port.read(packet.data() + before, count - before, deadline);
        packet.resize(before + taken);
        m_hasHeardBytes = m_hasHeardBytes || taken > 0;
        if (taken == 0)
            return false;
    }
    return true;
}

} // namespace kela::cameralink
