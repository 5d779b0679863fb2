// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/SerialFunctions.h>
#include <KelAIndustryControl/cameralink/SerialPort.h>

#include <cstdint>
#include <memory>
#include <string>
#include <tuple>

namespace kela::cameralink
{

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
    bool isCountedByOpening() const;

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
