// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/GenCpClient.h>

#include <KelAIndustryControl/core/BigEndian.h>
#include <KelAIndustryControl/core/Utf16.h>

#include <algorithm>
#include <iterator>
#include <utility>

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

constexpr std::uint32_t kEncodingShift = 4;
constexpr std::uint32_t kEncodingMask = 0x0F;
constexpr std::uint32_t kUtf16 = 2;

constexpr std::size_t kTries = 3;
// Most ports that do not answer have no camera: they are not to cost much. A question that is repeated keeps
// its number, so that the answer to either is taken: together both wait for the longest response.
constexpr Milliseconds kFirstResponses[] = {Milliseconds{100}, Milliseconds{150}};
constexpr Milliseconds kLongestResponse{300};
constexpr Milliseconds kShortestResponse{50}; // what it tells is the camera's time, not that of this host
constexpr Milliseconds kLongestPending{5000};
constexpr Milliseconds kFirstListen{10}; // ten bytes' time: who was talking before is heard
constexpr std::uint16_t kStatusError = 0x8000;
constexpr std::uint16_t kStatusBusy = 0x8007;

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

std::string textOf(const std::vector<std::uint8_t> &data, std::uint32_t encoding)
{
    if (encoding == kUtf16)
        return utf8FromBigEndianUtf16(ByteView{data.data(), data.size()});
    return std::string(data.begin(), std::find(data.begin(), data.end(), std::uint8_t{0}));
}

template <typename Layout>
std::optional<Layout> layoutOf(const std::optional<std::vector<std::uint8_t>> &data)
{
    return data ? readLayout<Layout>(ByteView{data->data(), data->size()}) : std::nullopt;
}

} // namespace

struct GenCpClient::Question {
    ReadCommand command;
    std::uint16_t id;
    std::uint16_t count; ///< bytes of the camera's memory
};

GenCpClient::GenCpClient(SerialPort &port, std::function<bool()> isStopWanted, Milliseconds limit)
    : m_port(port)
    , m_isStopWanted([isStopWanted = std::move(isStopWanted), end = Clock::now() + limit] {
        return isStopWanted() || Clock::now() >= end;
    })
    , m_stream(port, m_isStopWanted)
    , m_responseTime(kLongestResponse)
{
}

ProbeResult GenCpClient::identify(CameraIdentity &identity)
{
    m_port.setDefaultRate();
    m_stream.resynchronise(kFirstListen);
    if (!readMemory(kVersionRegister, kWordSize))
        return m_stream.hasHeardBytes() ? ProbeResult::Unknown : ProbeResult::NoAnswer;
    readLimits();
    readCapability();
    identity.manufacturer = readText(kManufacturerRegister);
    identity.model = readText(kModelRegister);
    identity.version = readText(kDeviceVersionRegister);
    identity.serial = readText(kSerialRegister);
    if (m_capability & kHasUserName)
        identity.userName = readText(kUserNameRegister);
    const bool isNameless = identity.model.empty() && identity.serial.empty();
    return isNameless || m_isLost || m_isStopWanted() ? ProbeResult::Unknown : ProbeResult::Identified;
}

void GenCpClient::readLimits()
{
    if (const auto limit = layoutOf<Be32>(readMemory(kResponseTimeRegister, kWordSize)))
        m_responseTime = std::clamp(Milliseconds(limit->value()), kShortestResponse, kLongestResponse);
}

void GenCpClient::readCapability()
{
    if (const auto bits = layoutOf<Capability>(readMemory(kCapabilityRegister, sizeof(Capability))))
        m_capability = bits->low.value();
}

std::string GenCpClient::readText(std::uint64_t address)
{
    const auto data = readMemory(address, kTextSize);
    return data ? textOf(*data, m_capability >> kEncodingShift & kEncodingMask) : std::string();
}

/// The bytes of a register; nothing when the camera has none there, or does not answer.
std::optional<GenCpClient::Data> GenCpClient::readMemory(std::uint64_t address, std::uint16_t count)
{
    if (m_isLost)
        return std::nullopt;
    // The first command after opening has number 0; from then on they count and wrap to 1.
    const std::uint16_t id = m_nextId;
    m_nextId = id == UINT16_MAX ? std::uint16_t{1} : static_cast<std::uint16_t>(id + 1);
    const Question question{readCommand(address, count, id), id, count};
    const bool isFirst = id == 0;
    const std::size_t tries = isFirst ? std::size(kFirstResponses) : kTries;
    for (std::size_t attempt = 0; attempt < tries && !m_isStopWanted(); ++attempt) {
        const auto answer = exchange(question, isFirst ? kFirstResponses[attempt] : m_responseTime);
        const bool isBusy = answer && answer->head.status == kStatusBusy;
        if (answer && !isBusy) {
            if (answer->head.status & kStatusError)
                return std::nullopt;
            return Data(answer->data.begin(), answer->data.begin() + count);
        }
        // A camera that is busy gets its pause by this as well.
        if (m_stream.hasHeardBytes())
            m_stream.resynchronise(kQuietLine);
    }
    m_isLost = true;
    return std::nullopt;
}

/// Sends a question and waits for its acknowledge, which has an error status or as many bytes as wanted.
std::optional<Packet> GenCpClient::exchange(const Question &question, Milliseconds response)
{
    const Milliseconds questionTime = lineTime(question.command.size());
    if (!m_port.write(question.command.data(), question.command.size(), questionTime + kLongestResponse))
        return std::nullopt;
    const Milliseconds answerTime = lineTime(kPacketHeadSize + question.count);
    TimePoint deadline = Clock::now() + questionTime + response + answerTime;
    const TimePoint latest = deadline + kLongestPending;
    do {
        auto packet = m_stream.next(deadline);
        if (!packet)
            return std::nullopt;
        if (packet->head.requestId != question.id)
            continue;
        const bool isWhole = (packet->head.status & kStatusError) || packet->data.size() >= question.count;
        if (packet->head.command == kAcknowledgeRead)
            return isWhole ? std::move(packet) : std::nullopt;
        const auto wait = pendingTime(ByteView{packet->data.data(), packet->data.size()});
        if (packet->head.command == kAcknowledgePending && wait)
            deadline = std::min(latest, Clock::now() + Milliseconds(*wait) + answerTime);
    } while (Clock::now() < deadline);
    return std::nullopt;
}

} // namespace kela::cameralink
