// SPDX-License-Identifier: Apache-2.0
// The functions of a vendor-neutral Camera Link serial library, on simulated ports. The names and numbers
// are those of the public interface.
#include "SimulatedPort.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

using namespace kelsim;

#define SIM_EXPORT __attribute__((visibility("default")))

namespace
{

constexpr std::int32_t kNoError = 0;
constexpr std::int32_t kBufferTooSmall = -10001;
constexpr std::int32_t kPortInUse = -10003;
constexpr std::int32_t kTimeout = -10004;
constexpr std::int32_t kInvalidIndex = -10005;
constexpr std::int32_t kInvalidReference = -10006;

std::int32_t giveText(const std::string &text, char *buffer, std::uint32_t *size)
{
    const auto needed = static_cast<std::uint32_t>(text.size() + 1);
    const bool isTooSmall = *size < needed;
    if (!isTooSmall)
        std::memcpy(buffer, text.c_str(), needed);
    *size = needed;
    return isTooSmall ? kBufferTooSmall : kNoError;
}

SimulatedPort *portOf(void *reference)
{
    return static_cast<SimulatedPort *>(reference);
}

} // namespace

extern "C" {

SIM_EXPORT std::int32_t clGetNumSerialPorts(std::uint32_t *count)
{
    *count = static_cast<std::uint32_t>(describedPorts().size());
    return kNoError;
}

SIM_EXPORT std::int32_t clGetManufacturerInfo(char *name, std::uint32_t *nameBytes, std::uint32_t *version)
{
    *version = 2;
    return giveText("Simulated", name, nameBytes);
}

SIM_EXPORT std::int32_t clGetSerialPortIdentifier(std::uint32_t index, char *name, std::uint32_t *nameBytes)
{
    const auto ports = describedPorts();
    return index < ports.size() ? giveText(ports[index].name, name, nameBytes) : kInvalidIndex;
}

SIM_EXPORT std::int32_t clSerialInit(std::uint32_t index, void **reference)
{
    const auto ports = describedPorts();
    if (index >= ports.size())
        return kInvalidIndex;
    if (ports[index].kind == PortKind::Busy)
        return kPortInUse;
    while (ports[index].kind == PortKind::Hang)
        std::this_thread::sleep_for(std::chrono::hours(1));
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
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    while (portOf(reference)->available() < *count) {
        if (std::chrono::steady_clock::now() >= deadline)
            return kTimeout;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    portOf(reference)->take(static_cast<std::uint8_t *>(static_cast<void *>(bytes)), *count);
    return kNoError;
}

SIM_EXPORT std::int32_t clGetNumBytesAvail(void *reference, std::uint32_t *count)
{
    if (!reference)
        return kInvalidReference;
    *count = static_cast<std::uint32_t>(portOf(reference)->available());
    return kNoError;
}

SIM_EXPORT std::int32_t clFlushPort(void *reference)
{
    if (!reference)
        return kInvalidReference;
    portOf(reference)->flush();
    return kNoError;
}

SIM_EXPORT std::int32_t clGetSupportedBaudRates(void *, std::uint32_t *rates)
{
    *rates = 1;
    return kNoError;
}

/// No function of the interface: tells a test what the lines had to carry.
SIM_EXPORT std::uint64_t simBytesOnLines()
{
    return bytesOnLines();
}

SIM_EXPORT std::int32_t clSetBaudRate(void *, std::uint32_t)
{
    return kNoError;
}
}
