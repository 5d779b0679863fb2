// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/cameralink/PacketStream.h>

#include <algorithm>

namespace kela::cameralink
{
namespace
{

constexpr Milliseconds kWaitSlice{100};
constexpr Milliseconds kDrainLimit{200};

ByteView view(const std::vector<std::uint8_t> &bytes)
{
    return {bytes.data(), bytes.size()};
}

} // namespace

// Noise may hold the bytes of a preamble, or a packet may lose its end: where a packet turns out to be none,
// only its first byte is dropped, since the true one may begin at the next. So it is when its end does not come
// in time.
std::optional<Packet> PacketStream::next(TimePoint deadline)
{
    m_lateBytes = kLargestPacket;
    while (fill(kPacketHeadSize, deadline)) {
        const auto head = parsePacketHead(view(m_buffer));
        if (head && fill(kPacketHeadSize + head->dataLength, deadline) && isPacketDataValid(view(m_buffer))) {
            const auto dataBegin = m_buffer.begin() + static_cast<std::ptrdiff_t>(kPacketHeadSize);
            const auto dataEnd = dataBegin + head->dataLength;
            Packet packet{*head, {dataBegin, dataEnd}};
            m_buffer.erase(m_buffer.begin(), dataEnd);
            return packet;
        }
        m_buffer.erase(m_buffer.begin());
    }
    return std::nullopt;
}

void PacketStream::resynchronise(Milliseconds firstWait)
{
    m_port.drain(kDrainLimit, firstWait);
    m_buffer.clear();
}

// Bytes that arrived in time are taken after the deadline too; not so many that a line which never falls silent
// keeps the reader for ever.
bool PacketStream::fill(std::size_t count, TimePoint deadline)
{
    while (m_buffer.size() < count) {
        const TimePoint now = Clock::now();
        const bool isLate = now >= deadline;
        if (m_isStopWanted() || (isLate && m_lateBytes == 0))
            return false;
        const std::size_t before = m_buffer.size();
        m_buffer.resize(count);
        const auto read =
            m_port.read(m_buffer.data() + before, count - before, std::min(deadline, now + kWaitSlice));
        const std::size_t taken = read.value_or(0);
        m_buffer.resize(before + taken);
        m_hasHeardBytes = m_hasHeardBytes || taken > 0;
        if (!read || (taken == 0 && Clock::now() >= deadline))
            return false;
        if (isLate)
            m_lateBytes -= std::min(taken, m_lateBytes);
    }
    return true;
}

} // namespace kela::cameralink
