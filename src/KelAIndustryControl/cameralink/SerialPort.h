// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace kela::cameralink
{

struct SerialFunctions;

/// A line without bytes for so long is quiet: what comes then is something new.
constexpr Milliseconds kQuietLine{50};

/// An open port of a serial library, closed by its destructor. It is nobody else's meanwhile.
/// Thread: the library's own.
class SerialPort
{
public:
    SerialPort(const SerialFunctions &functions, void *reference)
        : m_functions(&functions)
        , m_reference(reference)
    {
    }
    SerialPort(SerialPort &&other) noexcept
        : m_functions(other.m_functions)
        , m_reference(std::exchange(other.m_reference, nullptr))
    {
    }
    SerialPort &operator=(SerialPort &&) = delete;
    ~SerialPort();

    /// 9600 baud, where the library can set it.
    void setDefaultRate();

    bool write(const std::uint8_t *bytes, std::size_t count, Milliseconds limit);

    /// Takes what has arrived, at most @p count bytes; waits for the first one until @p deadline.
    /// @return the bytes taken, 0 when none came in time; nothing when the library reported an error
    std::optional<std::size_t> read(std::uint8_t *bytes, std::size_t count, TimePoint deadline);

    /// Throws away what has arrived until the line was quiet for a moment, @p limit at most.
    /// @param firstWait  how long to listen for the first byte
    void drain(Milliseconds limit, Milliseconds firstWait);

private:
    std::optional<std::size_t> waitForBytes(TimePoint deadline);
    std::optional<std::size_t> take(std::uint8_t *bytes, std::size_t count, TimePoint deadline);

    const SerialFunctions *m_functions;
    void *m_reference;
    bool m_isCountRefused = false; ///< the library has the function, and it fails
};

} // namespace kela::cameralink
