// SPDX-License-Identifier: Apache-2.0
// A whole conversation over a serial line, with a camera or with anything else. The port is this file's: what
// it gives to read after each question is dealt out of the input.
#include <KelAIndustryControl/cameralink/GenCpClient.h>
#include <KelAIndustryControl/cameralink/SerialFunctions.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace kela::cameralink;

namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kHeadChecksumAt = 2;
constexpr std::size_t kDataChecksumAt = 4;
constexpr std::size_t kCoveredAt = 6;
constexpr std::size_t kStatusAt = 8;
constexpr std::size_t kCommandAt = 10;
constexpr std::size_t kLengthAt = 12;
constexpr std::size_t kRequestIdAt = 14;
constexpr std::size_t kCountAt = 26;

void setWord(Bytes &bytes, std::size_t at, std::uint16_t value)
{
    bytes[at] = static_cast<std::uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<std::uint8_t>(value);
}

std::uint16_t word(const Bytes &bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

std::uint16_t checksum(const Bytes &bytes, std::size_t end)
{
    std::uint32_t sum = 0;
    for (std::size_t at = kCoveredAt; at < end; ++at)
        sum += at % 2 == 0 ? static_cast<std::uint32_t>(bytes[at]) << 8 : bytes[at];
    while (sum > UINT16_MAX)
        sum = (sum & UINT16_MAX) + (sum >> 16);
    return static_cast<std::uint16_t>(~sum);
}

/// What the input makes of the other end of the line.
class Line
{
public:
    Line(const std::uint8_t *data, std::size_t size)
        : m_input(data, data + size)
        , m_piece(byte())
    {
    }

    void ask(const std::uint8_t *bytes, std::size_t count)
    {
        m_question.assign(bytes, bytes + count);
        constexpr unsigned int kMostDeliveries = 4;
        for (unsigned int left = byte() % kMostDeliveries; left > 0; --left)
            deliver();
    }

    std::optional<std::size_t> read(std::uint8_t *bytes, std::size_t count)
    {
        if (m_toRead.empty())
            return std::nullopt; // nothing will come any more: the client need not wait for it
        std::size_t taken = std::min(count, m_toRead.size());
        if (m_piece)
            taken = std::min<std::size_t>(taken, m_piece);
        std::copy_n(m_toRead.begin(), taken, bytes);
        m_toRead.erase(m_toRead.begin(), m_toRead.begin() + static_cast<std::ptrdiff_t>(taken));
        return taken;
    }

    void drop() { m_toRead.clear(); }

private:
    void deliver()
    {
        enum : unsigned int { Raw, Whole, Cut, Good, Kinds };
        const unsigned int kind = byte() % Kinds;
        if (kind == Raw) {
            send(take(byte()));
        } else if (kind == Good) {
            send(packet(0, kAcknowledgeRead, word(m_question, kRequestIdAt), take(word(m_question, kCountAt))));
        } else {
            Bytes bytes = anyPacket();
            if (kind == Cut)
                bytes.resize(byte() % bytes.size());
            send(bytes);
        }
    }

    /// A packet whose checksums are right.
    static Bytes packet(std::uint16_t status, std::uint16_t command, std::uint16_t id, const Bytes &data)
    {
        Bytes bytes(kPacketHeadSize + data.size());
        std::copy(data.begin(), data.end(), bytes.begin() + static_cast<std::ptrdiff_t>(kPacketHeadSize));
        bytes[0] = 1;
        setWord(bytes, kStatusAt, status);
        setWord(bytes, kCommandAt, command);
        setWord(bytes, kLengthAt, static_cast<std::uint16_t>(data.size()));
        setWord(bytes, kRequestIdAt, id);
        setWord(bytes, kHeadChecksumAt, checksum(bytes, kPacketHeadSize));
        setWord(bytes, kDataChecksumAt, checksum(bytes, bytes.size()));
        return bytes;
    }

    Bytes anyPacket()
    {
        constexpr std::uint16_t kCommands[] = {kAcknowledgeRead, kAcknowledgePending};
        const std::uint8_t choice = byte();
        const bool isOwnCommand = choice & 1U;
        const std::uint16_t command = isOwnCommand ? number() : kCommands[choice >> 1 & 1U];
        const std::uint16_t id = choice & 4U ? number() : word(m_question, kRequestIdAt);
        const std::uint16_t status = choice & 8U ? number() : std::uint16_t{0};
        return packet(status, command, id, take(number() % (2 * kLargestPacket)));
    }

    void send(const Bytes &bytes) { m_toRead.insert(m_toRead.end(), bytes.begin(), bytes.end()); }

    Bytes take(std::size_t count)
    {
        const auto begin = m_input.begin() + static_cast<std::ptrdiff_t>(m_at);
        const std::size_t taken = std::min(count, m_input.size() - m_at);
        Bytes bytes(begin, begin + static_cast<std::ptrdiff_t>(taken));
        bytes.resize(count);
        m_at += taken;
        return bytes;
    }
    std::uint8_t byte() { return take(1)[0]; }
    std::uint16_t number() { return word(take(2), 0); }

    Bytes m_input;
    std::size_t m_at = 0;
    Bytes m_question;
    Bytes m_toRead;
    std::uint8_t m_piece;
};

Line &lineOf(void *reference)
{
    return *static_cast<Line *>(reference);
}

} // namespace

namespace kela::cameralink
{

SerialPort::~SerialPort() = default;

void SerialPort::setDefaultRate() {}

bool SerialPort::write(const std::uint8_t *bytes, std::size_t count, Milliseconds)
{
    lineOf(m_reference).ask(bytes, count);
    return true;
}

std::optional<std::size_t> SerialPort::read(std::uint8_t *bytes, std::size_t count, TimePoint)
{
    return lineOf(m_reference).read(bytes, count);
}

void SerialPort::drain(Milliseconds, Milliseconds)
{
    lineOf(m_reference).drop();
}

} // namespace kela::cameralink

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const SerialFunctions kNoFunctions;
    Line line(data, size);
    SerialPort port(kNoFunctions, &line);
    CameraIdentity identity;
    const ProbeResult result = GenCpClient(port, [] { return false; }).identify(identity);

    // A register has 64 bytes: half as many units of UTF-16, of up to three bytes each in UTF-8.
    constexpr std::size_t kLongestText = 96;
    for (const std::string *text :
         {&identity.manufacturer, &identity.model, &identity.version, &identity.serial, &identity.userName}) {
        if (text->size() > kLongestText || text->find('\0') != std::string::npos)
            std::abort();
    }
    if (result == ProbeResult::Identified && identity.model.empty() && identity.serial.empty())
        std::abort();
    return 0;
}
