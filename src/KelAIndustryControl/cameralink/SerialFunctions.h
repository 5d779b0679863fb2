// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kela::cameralink
{

extern "C" {
using CountPorts = std::int32_t (*)(std::uint32_t *count);
using PortIdentifier = std::int32_t (*)(std::uint32_t index, char *name, std::uint32_t *nameBytes);
using PortInfo = std::int32_t (*)(std::uint32_t index, char *maker, std::uint32_t *makerBytes, char *name,
                                  std::uint32_t *nameBytes, std::uint32_t *version);
using OpenPort = std::int32_t (*)(std::uint32_t index, void **reference);
using ClosePort = void (*)(void *reference);
using Transfer = std::int32_t (*)(void *reference, char *bytes, std::uint32_t *count, std::uint32_t timeoutMs);
using BytesAvailable = std::int32_t (*)(void *reference, std::uint32_t *count);
using FlushPort = std::int32_t (*)(void *reference);
using SetBaudRate = std::int32_t (*)(void *reference, std::uint32_t rate);
}

/// What the functions of a serial library return; texts and numbers are those of the public interface.
constexpr std::int32_t kSerialOk = 0;
constexpr std::int32_t kSerialBufferTooSmall = -10001;
constexpr std::int32_t kSerialPortInUse = -10003;
constexpr std::int32_t kSerialTimeout = -10004;
constexpr std::int32_t kSerialInvalidIndex = -10005;
constexpr std::int32_t kSerialFunctionMissing = -10099;

/// Entry points of a loaded library. Open, close, read and write are there, the others may be null: libraries
/// of the first edition have no more, and the names of ports differ between the kinds.
struct SerialFunctions {
    CountPorts numSerialPorts = nullptr; ///< of one maker
    CountPorts numPorts = nullptr;       ///< of all makers
    PortIdentifier portIdentifier = nullptr;
    PortInfo portInfo = nullptr;
    OpenPort open = nullptr;
    ClosePort close = nullptr;
    Transfer read = nullptr;
    Transfer write = nullptr;
    BytesAvailable bytesAvailable = nullptr;
    FlushPort flush = nullptr;
    SetBaudRate setBaudRate = nullptr;
};

} // namespace kela::cameralink
