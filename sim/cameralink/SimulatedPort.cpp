// SPDX-License-Identifier: Apache-2.0
#include "SimulatedPort.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace kelsim
{
namespace
{

constexpr std::chrono::microseconds kByteTime{1042}; // ten bits at 9600 baud
constexpr std::size_t kHeadSize = 16;
constexpr std::size_t kReadCommandSize = 28;
constexpr std::size_t kPendingSize = 4;
constexpr std::size_t kTextSize = 64;

// Where the words of a packet stand, and those behind the head of a command.
constexpr std::size_t kHeadChecksumAt = 2;
constexpr std::size_t kDataChecksumAt = 4;
constexpr std::size_t kCoveredAt = 6;
constexpr std::size_t kStatusAt = 8;
constexpr std::size_t kCommandAt = 10;
constexpr std::size_t kLengthAt = 12;
constexpr std::size_t kRequestIdAt = 14;
constexpr std::size_t kAddressAt = 20; // its lower half
constexpr std::size_t kCountAt = 26;
constexpr std::size_t kPendingTimeAt = 2;

constexpr std::size_t kVersionRegister = 0x000;
constexpr std::size_t kModelRegister = 0x044;
constexpr std::size_t kCapabilityRegister = 0x1C4;
constexpr std::size_t kResponseTimeRegister = 0x1CC;
constexpr std::pair<std::string_view, std::size_t> kTextRegisters[] = {
    {"manufacturer", 0x004}, {"model", kModelRegister}, {"version", 0x0C4}, {"serial", 0x144}, {"user", 0x184},
};

constexpr std::uint8_t kHasUserName = 0x01;
constexpr std::uint8_t kUtf8 = 0x10;
constexpr std::uint8_t kUtf16 = 0x20;

constexpr std::uint16_t kPreamble = 0x0100;
constexpr std::uint16_t kCommandRead = 0x0800;
constexpr std::uint16_t kAcknowledgeRead = 0x0801;
constexpr std::uint16_t kAcknowledgePending = 0x0805;
constexpr std::uint16_t kStatusGood = 0x0000;
constexpr std::uint16_t kStatusInvalidAddress = 0x8003;
constexpr std::uint16_t kStatusBusy = 0x8007;

std::atomic<std::uint64_t> bytesMoved{0};

std::uint16_t word(const std::vector<std::uint8_t> &bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

void setWord(std::vector<std::uint8_t> &bytes, std::size_t at, std::uint16_t value)
{
    bytes[at] = static_cast<std::uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<std::uint8_t>(value);
}

std::uint16_t complementOfSum(const std::vector<std::uint8_t> &bytes, std::size_t begin, std::size_t end)
{
    std::uint32_t sum = 0;
    for (std::size_t i = begin; i < end; ++i)
        sum += i % 2 == begin % 2 ? static_cast<std::uint32_t>(bytes[i]) << 8 : bytes[i];
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint16_t>(~sum);
}

std::vector<std::uint8_t> acknowledge(std::uint16_t code, std::uint16_t status, std::uint16_t requestId,
                                      const std::vector<std::uint8_t> &data)
{
    std::vector<std::uint8_t> packet(kHeadSize + data.size());
    std::copy(data.begin(), data.end(), packet.begin() + static_cast<std::ptrdiff_t>(kHeadSize));
    setWord(packet, 0, kPreamble);
    setWord(packet, kStatusAt, status);
    setWord(packet, kCommandAt, code);
    setWord(packet, kLengthAt, static_cast<std::uint16_t>(data.size()));
    setWord(packet, kRequestIdAt, requestId);
    setWord(packet, kHeadChecksumAt, complementOfSum(packet, kCoveredAt, kHeadSize));
    setWord(packet, kDataChecksumAt, complementOfSum(packet, kCoveredAt, packet.size()));
    return packet;
}

PortKind kindOf(const std::string &word)
{
    // Plain data: a port that hangs still runs while the process ends.
    static constexpr std::pair<std::string_view, PortKind> kKinds[] = {
        {"camera", PortKind::Camera}, {"silent", PortKind::Silent},     {"noise", PortKind::Noise},
        {"stops", PortKind::Stops},   {"checksum", PortKind::Checksum}, {"busy", PortKind::Busy},
        {"hang", PortKind::Hang},     {"throws", PortKind::Throws},
    };
    const auto *kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&word](const auto &entry) { return entry.first == word; });
    return kind == std::end(kKinds) ? PortKind::Silent : kind->second;
}

PortDescription described(std::istringstream &line, const std::string &name)
{
    PortDescription port;
    port.name = name;
    std::string kind;
    line >> kind;
    port.kind = kindOf(kind);
    for (std::string item; line >> item;) {
        std::replace(item.begin(), item.end(), '_', ' ');
        const std::size_t equals = item.find('=');
        if (equals == std::string::npos) {
            port.traits.insert(item);
        } else {
            port.values[item.substr(0, equals)] = item.substr(equals + 1);
        }
    }
    return port;
}

/// Two libraries of one process differ by what stands beside them.
std::ifstream openDescription()
{
    Dl_info library = {};
    if (::dladdr(&kByteTime, &library) != 0) {
        std::ifstream own(std::string(library.dli_fname) + ".ports");
        if (own)
            return own;
    }
    const char *path = std::getenv("KEL_SIM_CLSERIAL"); // NOLINT(concurrency-mt-unsafe): set before the start
    return std::ifstream(path ? path : "");
}

} // namespace

std::vector<PortDescription> describedPorts()
{
    std::vector<PortDescription> ports;
    std::ifstream file = openDescription();
    for (std::string text; std::getline(file, text);) {
        std::istringstream line(text);
        std::string name;
        if (line >> name && name[0] != '#')
            ports.push_back(described(line, name));
    }
    return ports;
}

unsigned int PortDescription::number(const std::string &key, unsigned int otherwise) const
{
    const auto value = values.find(key);
    return value == values.end() ? otherwise
                                 : static_cast<unsigned int>(std::strtoul(value->second.c_str(), nullptr, 10));
}

std::uint64_t bytesOnLines()
{
    return bytesMoved;
}

SimulatedPort::SimulatedPort(PortDescription description)
    : m_description(std::move(description))
{
    fillRegisters();
}

void SimulatedPort::fillRegisters()
{
    m_registers[kVersionRegister + 1] = 1; // 1.1
    m_registers[kVersionRegister + 3] = 1;
    for (const auto &[key, address] : kTextRegisters)
        setText(address, std::string(key));
    const std::uint8_t encoding = m_description.is("utf16") ? kUtf16 : kUtf8;
    const std::uint8_t userName = m_description.values.count("user") ? kHasUserName : std::uint8_t{0};
    m_registers[kCapabilityRegister + 7] = static_cast<std::uint8_t>(encoding | userName);
    const unsigned int response = m_description.number("response", 200);
    m_registers[kResponseTimeRegister + 2] = static_cast<std::uint8_t>(response >> 8);
    m_registers[kResponseTimeRegister + 3] = static_cast<std::uint8_t>(response);
}

void SimulatedPort::setText(std::size_t address, const std::string &key)
{
    const auto value = m_description.values.find(key);
    std::string text = value == m_description.values.end() ? std::string() : value->second;
    if (m_description.is("full") && !text.empty())
        text.resize(kTextSize, 'x');
    if (m_description.is("utf16")) {
        std::string wide;
        for (const char letter : text)
            wide += {'\0', letter};
        text = wide;
    }
    text.resize(std::min(text.size(), kTextSize));
    std::copy(text.begin(), text.end(), m_registers.begin() + static_cast<std::ptrdiff_t>(address));
}

void SimulatedPort::receive(const std::uint8_t *bytes, std::size_t count)
{
    bytesMoved += count;
    m_received.insert(m_received.end(), bytes, bytes + count);
    m_writtenUntil = std::max(m_writtenUntil, Clock::now()) + byteTime() * count;
    if (m_received.size() < kReadCommandSize)
        return;
    answer(std::exchange(m_received, {}));
}

void SimulatedPort::answer(const Bytes &command)
{
    const bool isWhole = complementOfSum(command, kCoveredAt, kHeadSize) == word(command, kHeadChecksumAt) &&
                         complementOfSum(command, kCoveredAt, command.size()) == word(command, kDataChecksumAt);
    if (m_description.kind == PortKind::Silent || !isWhole || word(command, kCommandAt) != kCommandRead)
        return;
    if (m_description.kind == PortKind::Noise) {
        send(Bytes{'l', 'o', 'g', 'i', 'n', ':', ' ', 0x01, 0x02, 0xFF}, m_writtenUntil);
        return;
    }
    const std::size_t address =
        static_cast<std::size_t>(word(command, kAddressAt)) << 16 | word(command, kAddressAt + 2);
    answerRead(address, word(command, kCountAt), word(command, kRequestIdAt));
}

void SimulatedPort::answerRead(std::size_t address, std::size_t count, std::uint16_t requestId)
{
    m_isDead = m_isDead || isTextOf("dies", address);
    if (m_isDead)
        return;
    auto begin = m_writtenUntil + std::chrono::milliseconds(m_description.number("delay"));
    if (address == kVersionRegister)
        begin += std::chrono::milliseconds(m_description.number("first"));
    if (address == kModelRegister && m_busyAnswers < m_description.number("busy")) {
        ++m_busyAnswers;
        send(acknowledge(kAcknowledgeRead, kStatusBusy, requestId, {}), begin);
        return;
    }
    begin += sendWhatStandsBefore(address, requestId, begin);
    m_previousAnswer = answerOf(address, count, requestId);
    send(m_previousAnswer, begin);
}

/// @return how much later the answer comes by it
std::chrono::milliseconds SimulatedPort::sendWhatStandsBefore(std::size_t address, std::uint16_t requestId,
                                                              Clock::time_point begin)
{
    if (m_description.is("late"))
        send(m_previousAnswer, begin);
    if (m_description.is("preamble"))
        send(Bytes{0x55, 0x01, 0x00, 0x41}, begin);
    if (m_description.is("cut") && address == kVersionRegister) {
        Bytes head = acknowledge(kAcknowledgeRead, kStatusGood, requestId, Bytes(kTextSize));
        head.resize(kHeadSize);
        send(head, begin);
    }
    const unsigned int pending = address == kModelRegister ? m_description.number("pending") : 0;
    if (pending > 0) {
        Bytes patience(kPendingSize);
        setWord(patience, kPendingTimeAt, static_cast<std::uint16_t>(pending));
        send(acknowledge(kAcknowledgePending, kStatusGood, requestId, patience), begin);
    }
    return std::chrono::milliseconds(pending) * 3 / 4;
}

SimulatedPort::Bytes SimulatedPort::answerOf(std::size_t address, std::size_t count,
                                             std::uint16_t requestId) const
{
    Bytes packet = acknowledge(kAcknowledgeRead, kStatusInvalidAddress, requestId, {});
    if (!isRefused(address, count)) {
        const auto *const data = m_registers.begin() + address;
        packet = acknowledge(kAcknowledgeRead, kStatusGood, requestId, Bytes(data, data + count));
    }
    if (m_description.kind == PortKind::Checksum)
        packet[kDataChecksumAt] ^= 1;
    if (m_description.kind == PortKind::Stops)
        packet.resize(packet.size() / 2);
    return packet;
}

bool SimulatedPort::isRefused(std::size_t address, std::size_t count) const
{
    return address + count > m_registers.size() || isTextOf("without", address);
}

/// True when the description names the text at an address behind "KEY=".
bool SimulatedPort::isTextOf(const std::string &key, std::size_t address) const
{
    const auto named = m_description.values.find(key);
    return named != m_description.values.end() &&
           std::any_of(std::begin(kTextRegisters), std::end(kTextRegisters), [&](const auto &entry) {
               return entry.second == address && named->second == entry.first;
           });
}

/// The line carries one byte after another: what is sent waits for what is on its way.
void SimulatedPort::send(const Bytes &packet, Clock::time_point begin)
{
    if (!m_line.empty())
        begin = std::max(begin, m_line.back().arrival);
    bytesMoved += packet.size();
    for (const std::uint8_t value : packet) {
        begin += byteTime();
        m_line.push_back({begin, value});
    }
}

std::chrono::microseconds SimulatedPort::byteTime() const
{
    return m_description.is("instant") ? std::chrono::microseconds{0} : kByteTime;
}

std::size_t SimulatedPort::available()
{
    const auto now = Clock::now();
    const auto firstLater =
        std::find_if(m_line.begin(), m_line.end(), [now](const LineByte &b) { return b.arrival > now; });
    return static_cast<std::size_t>(firstLater - m_line.begin());
}

std::size_t SimulatedPort::take(std::uint8_t *bytes, std::size_t count)
{
    const std::size_t taken = std::min(count, available());
    for (std::size_t i = 0; i < taken; ++i) {
        bytes[i] = m_line.front().value;
        m_line.pop_front();
    }
    return taken;
}

void SimulatedPort::flush()
{
    const std::size_t arrived = available();
    m_line.erase(m_line.begin(), m_line.begin() + static_cast<std::ptrdiff_t>(arrived));
}

} // namespace kelsim
