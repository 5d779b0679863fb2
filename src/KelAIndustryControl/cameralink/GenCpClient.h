// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/GenCpPacket.h>
#include <KelAIndustryControl/cameralink/PacketStream.h>
#include <KelAIndustryControl/cameralink/SerialPort.h>
#include <KelAIndustryControl/core/Clock.h>

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

/// How long one port may be asked, whatever its camera asks for.
constexpr Milliseconds kLongestProbe{10000};

/// Reads a camera's registers over an open port at 9600 baud. It writes nothing into the camera.
/// Thread: the library's own.
class GenCpClient
{
public:
    /// @param isStopWanted  asked several times a second while an answer is waited for; true ends the probe
    GenCpClient(SerialPort &port, std::function<bool()> isStopWanted, Milliseconds limit = kLongestProbe);

    /// Asks who is there.
    /// @param identity  whole when ProbeResult::Identified is returned
    ProbeResult identify(CameraIdentity &identity);

private:
    using Data = std::vector<std::uint8_t>;
    struct Question;

    std::optional<Data> readMemory(std::uint64_t address, std::uint16_t count);
    std::optional<Packet> exchange(const Question &question, Milliseconds response);
    void readLimits();
    void readCapability();
    std::string readText(std::uint64_t address);

    SerialPort &m_port;
    std::function<bool()> m_isStopWanted;
    PacketStream m_stream;
    Milliseconds m_responseTime;
    std::uint32_t m_capability = 0;
    std::uint16_t m_nextId = 0;
    bool m_isLost = false; ///< it left a question unanswered; half an identity is another camera's
};

} // namespace kela::cameralink
