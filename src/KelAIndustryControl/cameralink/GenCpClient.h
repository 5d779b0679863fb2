// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/GenCpPacket.h>
#include <KelAIndustryControl/cameralink/SerialLibrary.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kela::cameralink
{

/// What a camera says of itself.
struct CameraIdentity {
    std::string manufacturer;
    std::string model;
    std::string version;
    std::string serial;
    std::string userName;
};

/// What came of asking a port.
enum class ProbeResult { Identified, NoAnswer, Unknown };

/// The longest that a camera may take for an answer.
constexpr Milliseconds kLongestResponse{300};

/// Reads a camera's registers over an open port at 9600 baud. It writes nothing into the camera.
/// Thread: the library's own.
class GenCpClient
{
public:
    /// @param isStopWanted  asked between packets; true ends the probe
    GenCpClient(SerialPort &port, std::function<bool()> isStopWanted)
        : m_port(port)
        , m_isStopWanted(std::move(isStopWanted))
    {
    }

    ProbeResult identify(CameraIdentity &identity);

private:
    using Data = std::vector<std::uint8_t>;
    enum class Answer { Data, NotThere, None };

    Answer readMemory(std::uint64_t address, std::uint16_t count, Data &data);
    bool exchange(const ReadCommand &command, std::uint16_t requestId, std::uint16_t count,
                  Milliseconds response, PacketHead &head, Data &data);
    bool receivePacket(TimePoint deadline, PacketHead &head, Data &data);
    bool receiveBytes(Data &packet, std::size_t count, TimePoint deadline);
    bool findPreamble(Data &packet, TimePoint deadline);
    std::string readText(std::uint64_t address);

    SerialPort &m_port;
    std::function<bool()> m_isStopWanted;
    Milliseconds m_responseTime = kLongestResponse;
    std::uint16_t m_nextId = 0;
    bool m_hasHeardBytes = false;
};

} // namespace kela::cameralink
