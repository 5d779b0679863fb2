// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/cameralink/GenCpPacket.h>
#include <KelAIndustryControl/cameralink/SerialPort.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace kela::cameralink
{

/// A whole packet. Its checksums were right.
struct Packet {
    PacketHead head;
    std::vector<std::uint8_t> data;
};

/// Finds the packets in what comes over a serial line, whatever stands between them.
/// Thread: the library's own.
class PacketStream
{
public:
    /// @param isStopWanted  asked several times a second while a packet is waited for; true ends the wait
    PacketStream(SerialPort &port, std::function<bool()> isStopWanted)
        : m_port(port)
        , m_isStopWanted(std::move(isStopWanted))
    {
    }

    /// The next packet. Waits until @p deadline; what has arrived by then is looked at even by a caller who
    /// comes late.
    std::optional<Packet> next(TimePoint deadline);

    /// Forgets what has come, and what still comes until the line is quiet.
    /// @param firstWait  how long to listen for the first byte
    void resynchronise(Milliseconds firstWait);

    /// True once a packet was waited for and anything came.
    bool hasHeardBytes() const { return m_hasHeardBytes; }

private:
    bool fill(std::size_t count, TimePoint deadline);

    SerialPort &m_port;
    std::function<bool()> m_isStopWanted;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_lateBytes = 0; ///< how many may still be taken after the deadline
    bool m_hasHeardBytes = false;
};

} // namespace kela::cameralink
