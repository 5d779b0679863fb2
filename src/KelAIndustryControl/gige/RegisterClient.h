// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/gige/GvcpSocket.h>
#include <KelAIndustryControl/gige/GvcpTransaction.h>

#include <mutex>
#include <vector>

namespace kela::gige
{

/// Reads and writes registers of one camera and waits for the answers. A camera knows its controller by
/// address and port, so one client keeps one socket for life.
///
/// Operations return 0 or a KELA_ERROR.
/// Thread: any; one command at a time is on its way.
class RegisterClient
{
public:
    /// @param cancel  ends every wait; outlives the client
    explicit RegisterClient(const CancelSignal &cancel)
        : m_cancel(&cancel)
    {
    }

    /// Sends nothing.
    unsigned int open(const CameraRoute &route);

    /// No wait goes on after this moment, whatever a device announces. Call it before the first command.
    void setDeadline(TimePoint deadline) { m_deadline = deadline; }

    /// @param stop  ends this wait too, may be null
    unsigned int readRegister(std::uint32_t address, std::uint32_t &value, RetryPlan plan = {},
                              const CancelSignal *stop = nullptr);
    unsigned int writeRegister(std::uint32_t address, std::uint32_t value, RetryPlan plan = {});
    unsigned int readMemory(std::uint32_t address, std::size_t byteCount, Datagram &data, RetryPlan plan = {});
    unsigned int discover(DiscoveryAnswer &answer, RetryPlan plan = {});

    /// Sends a write and does not wait for what comes of it.
    void writeAndForget(std::uint32_t address, std::uint32_t value);

    /// Address that the camera sees us under; 0 when not known.
    std::uint32_t localAddress() const { return m_socket.localAddress(); }

private:
    unsigned int run(Datagram command, RetryPlan plan, Datagram &payload, const CancelSignal *stop = nullptr);
    unsigned int waitFor(GvcpTransaction &transaction, const CancelSignal *stop);
    bool isEnded(const CancelSignal *stop) const { return m_cancel->isSet() || (stop && stop->isSet()); }
    unsigned int receiveAll(GvcpTransaction &transaction);
    bool isFromCamera(const Arrival &arrival) const;

    const CancelSignal *m_cancel;
    std::mutex m_mutex; // guards m_ids and keeps one command at a time on m_socket
    GvcpSocket m_socket;
    std::uint32_t m_address = 0;
    Path m_path;
    TimePoint m_deadline = TimePoint::max();
    RequestIds m_ids;
};

/// The KELA_ERROR for an errno of a socket.
unsigned int errorOfErrno(int error);

/// The KELA_ERROR for a status of an acknowledge.
unsigned int errorOfStatus(std::uint16_t status);

} // namespace kela::gige
