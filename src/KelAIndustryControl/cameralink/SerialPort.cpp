// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/SerialPort.h>

#include <KelAIndustryControl/cameralink/SerialFunctions.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <thread>

namespace kela::cameralink
{
namespace
{

constexpr std::uint32_t kRate9600 = 0x01; // a bit of the table of rates, not the number
constexpr Milliseconds kPollPause{3};

} // namespace

SerialPort::~SerialPort()
{
    if (m_reference)
        m_functions->close(m_reference);
}

void SerialPort::setDefaultRate()
{
    if (m_functions->setBaudRate)
        m_functions->setBaudRate(m_reference, kRate9600);
}

bool SerialPort::write(const std::uint8_t *bytes, std::size_t count, Milliseconds limit)
{
    std::string copy(count, '\0'); // the interface takes what it sends as writable
    std::memcpy(copy.data(), bytes, count);
    auto written = static_cast<std::uint32_t>(count);
    const auto timeout = static_cast<std::uint32_t>(limit.count());
    return m_functions->write(m_reference, copy.data(), &written, timeout) == kSerialOk && written == count;
}

std::optional<std::size_t> SerialPort::read(std::uint8_t *bytes, std::size_t count, TimePoint deadline)
{
    if (const auto available = waitForBytes(deadline))
        return *available == 0 ? 0 : take(bytes, std::min(*available, count), Clock::now());
    // A library that does not count waits for exactly what it is asked for: one byte at a time loses nothing.
    return take(bytes, 1, deadline);
}

/// Bytes that wait to be read, 0 at the deadline; nothing when the library does not count them.
std::optional<std::size_t> SerialPort::waitForBytes(TimePoint deadline)
{
    if (!m_functions->bytesAvailable || m_isCountRefused)
        return std::nullopt;
    for (;;) {
        std::uint32_t available = 0;
        m_isCountRefused = m_functions->bytesAvailable(m_reference, &available) != kSerialOk;
        if (m_isCountRefused)
            return std::nullopt;
        if (available > 0 || Clock::now() >= deadline)
            return available;
        std::this_thread::sleep_for(kPollPause);
    }
}

std::optional<std::size_t> SerialPort::take(std::uint8_t *bytes, std::size_t count, TimePoint deadline)
{
    std::string buffer(count, '\0');
    auto taken = static_cast<std::uint32_t>(count);
    const int timeout = std::max(1, pollTimeout(deadline, Clock::now()));
    const std::int32_t result =
        m_functions->read(m_reference, buffer.data(), &taken, static_cast<std::uint32_t>(timeout));
    if (result == kSerialTimeout)
        return 0;
    if (result != kSerialOk)
        return std::nullopt;
    const std::size_t kept = std::min<std::size_t>(taken, count);
    std::memcpy(bytes, buffer.data(), kept);
    return kept;
}

void SerialPort::drain(Milliseconds limit, Milliseconds firstWait)
{
    const TimePoint deadline = Clock::now() + limit;
    std::array<std::uint8_t, 64> dropped;
    Milliseconds wait = firstWait;
    while (Clock::now() < deadline &&
           read(dropped.data(), dropped.size(), Clock::now() + wait).value_or(0) > 0) {
        wait = kQuietLine;
    }
    if (m_functions->flush)
        m_functions->flush(m_reference);
}

} // namespace kela::cameralink
