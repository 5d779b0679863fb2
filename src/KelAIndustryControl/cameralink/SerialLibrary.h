// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kela::cameralink
{

/// What the functions of a serial library return; texts and numbers are those of the public interface.
constexpr std::int32_t kSerialOk = 0;
constexpr std::int32_t kSerialPortInUse = -10003;
constexpr std::int32_t kSerialTimeout = -10004;
constexpr std::int32_t kSerialInvalidIndex = -10005;
constexpr std::int32_t kSerialFunctionMissing = -10099;

/// A line without bytes for so long is quiet: what comes then is something new.
constexpr Milliseconds kQuietLine{50};

/// Entry points of a loaded library; those of the newer edition may be missing.
struct SerialFunctions;

/// An open port of a serial library, closed by its destructor. It is nobody else's meanwhile.
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
    /// @return the bytes taken, 0 when none came or the library reported an error
    std::size_t read(std::uint8_t *bytes, std::size_t count, TimePoint deadline);

    /// Throws away what has arrived until the line was quiet for a moment, @p limit at most.
    /// @param firstWait  how long to listen for the first byte
    void drain(Milliseconds limit, Milliseconds firstWait);

private:
    const SerialFunctions *m_functions;
    void *m_reference;
};

/// What tells a port from others: its number may change when boards come and go.
struct PortName {
    std::string maker; ///< empty but where makers share one library
    std::string port;
};

inline bool operator<(const PortName &a, const PortName &b)
{
    return std::tie(a.maker, a.port) < std::tie(b.maker, b.port);
}

/// A vendor-neutral serial interface library, loaded for the life of the process: it may have threads of its
/// own, so it is never unloaded.
/// Thread: one, the library's own.
class SerialLibrary
{
public:
    /// @param file   path, or a name for the loader's path
    /// @param error  receives what the loader says when null is returned
    static std::unique_ptr<SerialLibrary> load(const std::string &file, std::string &error);
    ~SerialLibrary();

    /// Number of ports. A library of the first edition does not tell: then ports are found by opening them.
    std::uint32_t portCount() const;

    /// What the library calls a port; "port N" where it does not say.
    PortName portName(std::uint32_t index) const;

    /// @param result  receives the library's code
    /// @return null when the port could not be opened
    std::unique_ptr<SerialPort> open(std::uint32_t index, std::int32_t &result) const;

private:
    SerialLibrary();
    std::unique_ptr<SerialFunctions> m_functions;
};

} // namespace kela::cameralink
