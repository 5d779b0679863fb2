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
constexpr std::size_t kTextSize = 64;

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

PortKind kindOf(const std::string &word)
{
    // Plain data: a port that hangs still runs while the process ends.
    static constexpr std::pair<std::string_view, PortKind> kKinds[] = {
        {"camera", PortKind::Camera}, {"silent", PortKind::Silent},     {"noise", PortKind::Noise},
        {"stops", PortKind::Stops},   {"checksum", PortKind::Checksum}, {"busy", PortKind::Busy},
        {"hang", PortKind::Hang},
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
        if (item == "full") {
            port.hasFullTexts = true;
        } else if (item == "instant") {
            port.isInstant = true;
        } else if (equals != std::string::npos) {
            port.texts[item.substr(0, equals)] = item.substr(equals + 1);
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
    m_registers[0x001] = 1; // version 1.1
    m_registers[0x003] = 1;
    setText(0x004, "manufacturer");
    setText(0x044, "model");
    setText(0x0C4, "version");
    setText(0x144, "serial");
    setText(0x184, "user");
    m_registers[0x1CB] = m_description.texts.count("user") ? 0x11 : 0x10; // UTF-8; has a user-defined name
    m_registers[0x1CF] = 200;                                             // longest response, ms
}

void SimulatedPort::setText(std::size_t address, const std::string &key)
{
    std::string text = m_description.texts[key];
    if (m_description.hasFullTexts && !text.empty())
        text.resize(kTextSize, 'x');
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

void SimulatedPort::answer(const std::vector<std::uint8_t> &command)
{
    const bool isWhole = complementOfSum(command, 6, kHeadSize) == word(command, 2) &&
                         complementOfSum(command, 6, command.size()) == word(command, 4);
    if (m_description.kind == PortKind::Silent || !isWhole || word(command, 10) != 0x0800)
        return;
    if (m_description.kind == PortKind::Noise) {
        send(std::vector<std::uint8_t>{'l', 'o', 'g', 'i', 'n', ':', ' ', 0x01, 0x02, 0xFF}, m_writtenUntil);
        return;
    }
    const std::size_t address = static_cast<std::size_t>(word(command, 20)) << 16 | word(command, 22);
    const std::size_t count = word(command, 26);
    const bool isThere = address + count <= m_registers.size();
    std::vector<std::uint8_t> packet(kHeadSize);
    setWord(packet, 0, 0x0100);
    setWord(packet, 8, isThere ? 0x0000 : 0x8003);
    setWord(packet, 10, 0x0801);
    setWord(packet, 12, static_cast<std::uint16_t>(isThere ? count : 0));
    setWord(packet, 14, word(command, 14));
    if (isThere) {
        const auto begin = m_registers.begin() + static_cast<std::ptrdiff_t>(address);
        packet.insert(packet.end(), begin, begin + static_cast<std::ptrdiff_t>(count));
    }
    setWord(packet, 2, complementOfSum(packet, 6, kHeadSize));
    setWord(packet, 4, complementOfSum(packet, 6, packet.size()));
    if (m_description.kind == PortKind::Checksum)
        packet[5] ^= 1;
    if (m_description.kind == PortKind::Stops)
        packet.resize(packet.size() / 2);
    send(packet, m_writtenUntil);
}

void SimulatedPort::send(const std::vector<std::uint8_t> &packet, Clock::time_point begin)
{
    bytesMoved += packet.size();
    for (const std::uint8_t value : packet) {
        begin += byteTime();
        m_line.push_back({begin, value});
    }
}

std::chrono::microseconds SimulatedPort::byteTime() const
{
    return m_description.isInstant ? std::chrono::microseconds{0} : kByteTime;
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
