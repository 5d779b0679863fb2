// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
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
    Throws,   ///< the library throws when it is opened
};

/// A port as a line of the description file gives it.
struct PortDescription {
    std::string name;
    PortKind kind = PortKind::Silent;
    std::map<std::string, std::string> values; ///< what stands behind "KEY="
    std::set<std::string> traits;              ///< the words without "="

    bool is(const std::string &trait) const { return traits.count(trait) > 0; }
    /// The number behind "KEY="; @p otherwise when there is none.
    unsigned int number(const std::string &key, unsigned int otherwise = 0) const;
};

/// The ports that a file describes: the one beside the library named like it with ".ports" behind, else the
/// one that KEL_SIM_CLSERIAL names. Read anew at every call. A line is
///   NAME KIND [TRAIT | KEY=VALUE]…
/// with "_" for a blank in values; "#" begins a comment.
///
/// Texts of a camera: manufacturer, model, version, serial, user; maker is the one of the port.
/// full       texts fill their registers, without a NUL
/// utf16      texts are in UTF-16
/// instant    bytes take no time on the line
/// pieces     a read gives three bytes at most
/// uncounted  the library fails when it is asked how many bytes wait
/// preamble   noise that holds the bytes of a preamble stands before every answer
/// cut        the head of an answer that does not go on stands before the first one
/// late       the previous answer comes once more before every answer
/// first=MS   time that the camera takes for its first answer; delay=MS for every one
/// response=MS  the longest that it says it takes
/// pending=MS   before it gives its model it asks for so much patience, and needs three quarters of it
/// busy=N       so many times it is too busy to give its model
/// without=KEY  it has no register for that text
/// dies=KEY     it answers nothing any more once it is asked for that text
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
    const PortDescription &description() const { return m_description; }

private:
    using Clock = std::chrono::steady_clock;

    struct LineByte {
        Clock::time_point arrival;
        std::uint8_t value;
    };

    using Bytes = std::vector<std::uint8_t>;

    std::chrono::microseconds byteTime() const;
    void fillRegisters();
    void setText(std::size_t address, const std::string &key);
    void answer(const Bytes &command);
    void answerRead(std::size_t address, std::size_t count, std::uint16_t requestId);
    std::chrono::milliseconds sendWhatStandsBefore(std::size_t address, std::uint16_t requestId,
                                                   Clock::time_point begin);
    Bytes answerOf(std::size_t address, std::size_t count, std::uint16_t requestId) const;
    bool isRefused(std::size_t address, std::size_t count) const;
    bool isTextOf(const std::string &key, std::size_t address) const;
    void send(const Bytes &packet, Clock::time_point begin);

    PortDescription m_description;
    std::array<std::uint8_t, 0x400> m_registers = {};
    Bytes m_received;
    Bytes m_previousAnswer;
    std::deque<LineByte> m_line;
    Clock::time_point m_writtenUntil;
    unsigned int m_busyAnswers = 0;
    bool m_isDead = false;
};

} // namespace kelsim
