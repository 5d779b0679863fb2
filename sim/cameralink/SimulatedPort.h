// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace kelsim
{

/// What stands behind a simulated port.
enum class PortKind {
    Camera,   ///< answers
    Silent,   ///< never answers
    Noise,    ///< answers with bytes that are no packet
    Stops,    ///< stops in the middle of every answer
    Checksum, ///< answers with a wrong checksum
    Busy,     ///< somebody else has the port
    Hang,     ///< never returns from being opened
};

/// A port as a line of the description file gives it.
struct PortDescription {
    std::string name;
    PortKind kind = PortKind::Silent;
    std::map<std::string, std::string> texts; ///< manufacturer, model, version, serial, user, maker
    bool hasFullTexts = false;                ///< texts fill their registers, without a NUL
    bool isInstant = false;                   ///< bytes take no time on the line
};

/// The ports that a file describes: the one beside the library named like it with ".ports" behind, else the
/// one that KEL_SIM_CLSERIAL names. Read anew at every call. A line is
///   NAME KIND [full] [instant] [KEY=TEXT]…
/// with "_" for a blank in texts; "#" begins a comment.
std::vector<PortDescription> describedPorts();

/// Bytes that went over the lines of all ports, to the cameras and from them.
std::uint64_t bytesOnLines();

/// A port with a camera's registers behind it, at the speed of a line of 9600 baud.
class SimulatedPort
{
public:
    explicit SimulatedPort(PortDescription description);

    void receive(const std::uint8_t *bytes, std::size_t count);
    std::size_t available();
    std::size_t take(std::uint8_t *bytes, std::size_t count);
    void flush();

private:
    using Clock = std::chrono::steady_clock;

    struct LineByte {
        Clock::time_point arrival;
        std::uint8_t value;
    };

    std::chrono::microseconds byteTime() const;
    void fillRegisters();
    void setText(std::size_t address, const std::string &key);
    void answer(const std::vector<std::uint8_t> &command);
    void send(const std::vector<std::uint8_t> &packet, Clock::time_point begin);

    PortDescription m_description;
    std::array<std::uint8_t, 0x400> m_registers = {};
    std::vector<std::uint8_t> m_received;
    std::deque<LineByte> m_line;
    Clock::time_point m_writtenUntil;
};

} // namespace kelsim
