// SPDX-License-Identifier: Apache-2.0
// Talking over simulated ports: the functions that libraries of every kind and edition have.
#include "SerialInterface.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

using namespace kelsim;

namespace
{

constexpr std::uint32_t kPieceSize = 3;

} // namespace

extern "C" {

SIM_EXPORT std::int32_t clSerialInit(std::uint32_t index, void **reference)
{
    const auto ports = describedPorts();
    if (index >= ports.size())
        return kInvalidIndex;
    if (ports[index].kind == PortKind::Busy)
        return kPortInUse;
    while (ports[index].kind == PortKind::Hang)
        std::this_thread::sleep_for(std::chrono::hours(1));
    if (ports[index].kind == PortKind::Throws)
        throw std::runtime_error("what no library should let out");
    *reference = std::make_unique<SimulatedPort>(ports[index]).release();
    return kNoError;
}

SIM_EXPORT void clSerialClose(void *reference)
{
    const std::unique_ptr<SimulatedPort> port(portOf(reference));
}

SIM_EXPORT std::int32_t clSerialWrite(void *reference, char *bytes, std::uint32_t *count, std::uint32_t)
{
    if (!reference)
        return kInvalidReference;
    portOf(reference)->receive(static_cast<const std::uint8_t *>(static_cast<const void *>(bytes)), *count);
    return kNoError;
}

SIM_EXPORT std::int32_t clSerialRead(void *reference, char *bytes, std::uint32_t *count,
                                     std::uint32_t timeoutMs)
{
    if (!reference)
        return kInvalidReference;
    if (portOf(reference)->description().is("pieces"))
        *count = std::min(*count, kPieceSize);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (portOf(reference)->available() < *count) {
        if (std::chrono::steady_clock::now() >= deadline)
            return kTimeout;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    portOf(reference)->take(static_cast<std::uint8_t *>(static_cast<void *>(bytes)), *count);
    return kNoError;
}

/// No function of the interface: tells a test what the lines had to carry.
SIM_EXPORT std::uint64_t simBytesOnLines()
{
    return bytesOnLines();
}
}
