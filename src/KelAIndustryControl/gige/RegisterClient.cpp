// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/RegisterClient.h>

#include <KelAIndustryControl/KelAErrors.h>

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

namespace kela::gige
{

unsigned int errorOfErrno(int error)
{
    switch (error) {
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case ENOBUFS:
        return KELA_ERROR_RESOURCE;
    case EPERM:
    case EACCES:
        return KELA_ERROR_PERMISSION;
    default:
        return KELA_ERROR_UNREACHABLE;
    }
}

unsigned int errorOfStatus(std::uint16_t status)
{
    switch (status) {
    case kStatusNotImplemented:
    case kStatusInvalidAddress:
        return KELA_ERROR_NOT_SUPPORTED;
    case kStatusInvalidParameter:
        return KELA_ERROR_PARAMETER;
    case kStatusWriteProtected:
        return KELA_ERROR_PERMISSION;
    case kStatusAccessDenied:
        return KELA_ERROR_IN_USE;
    case kStatusBusy:
        return KELA_ERROR_TIMEOUT;
    default:
        return KELA_ERROR_PROTOCOL;
    }
}

unsigned int RegisterClient::open(const CameraRoute &route)
{
    const int error = m_socket.open(route.card, route.path.source);
    if (error != 0)
        return errorOfErrno(error);
    m_address = route.address;
    m_path = route.path;
    m_socket.connectTo(route.address);
    return KELA_OK;
}

unsigned int RegisterClient::readRegister(std::uint32_t address, std::uint32_t &value, RetryPlan plan,
                                          const CancelSignal *stop)
{
    Datagram payload;
    const unsigned int result = run(readRegisterCommand(0, address), plan, payload, stop);
    if (result == KELA_OK)
        value = parseReadRegister({payload.data(), payload.size()}).value_or(0);
    return result;
}

unsigned int RegisterClient::writeRegister(std::uint32_t address, std::uint32_t value, RetryPlan plan)
{
    Datagram payload;
    return run(writeRegisterCommand(0, address, value), plan, payload);
}

unsigned int RegisterClient::readMemory(std::uint32_t address, std::size_t byteCount, Datagram &data,
                                        RetryPlan plan)
{
    if (byteCount == 0 || byteCount > kLargestMemoryRead || byteCount % 4 != 0)
        return KELA_ERROR_PARAMETER;
    Datagram payload;
    const unsigned int result =
        run(readMemoryCommand(0, address, static_cast<std::uint16_t>(byteCount)), plan, payload);
    if (result != KELA_OK)
        return result;
    const auto bytes = parseReadMemory({payload.data(), payload.size()}, address, byteCount);
    if (!bytes)
        return KELA_ERROR_PROTOCOL;
    data.assign(bytes->data, bytes->data + bytes->size);
    return KELA_OK;
}

unsigned int RegisterClient::discover(DiscoveryAnswer &answer, RetryPlan plan)
{
    Datagram payload;
    const unsigned int result = run(discoveryCommand(0, false), plan, payload);
    if (result != KELA_OK)
        return result;
    const auto parsed = parseDiscovery({payload.data(), payload.size()});
    if (!parsed)
        return KELA_ERROR_PROTOCOL;
    answer = *parsed;
    return KELA_OK;
}

void RegisterClient::writeAndForget(std::uint32_t address, std::uint32_t value)
{
    const std::lock_guard lock(m_mutex);
    const Datagram command = writeRegisterCommand(m_ids.next(), address, value);
    m_socket.send(m_address, m_path, {command.data(), command.size()});
}

unsigned int RegisterClient::run(Datagram command, RetryPlan plan, Datagram &payload, const CancelSignal *stop)
{
    const std::lock_guard lock(m_mutex);
    if (isEnded(stop))
        return KELA_ERROR_CANCELLED;
    GvcpTransaction transaction(std::move(command), m_ids, plan, Clock::now());
    const unsigned int result = waitFor(transaction, stop);
    if (result != KELA_OK)
        return result;
    switch (transaction.state()) {
    case GvcpTransaction::State::Answered:
        payload.assign(transaction.payload().data, transaction.payload().data + transaction.payload().size);
        return KELA_OK;
    case GvcpTransaction::State::Refused:
        return errorOfStatus(transaction.status());
    case GvcpTransaction::State::GarbledAnswer:
        return KELA_ERROR_PROTOCOL;
    default:
        return KELA_ERROR_TIMEOUT;
    }
}

unsigned int RegisterClient::waitFor(GvcpTransaction &transaction, const CancelSignal *stop)
{
    for (;;) {
        if (Clock::now() >= m_deadline)
            return KELA_ERROR_TIMEOUT;
        if (const Datagram *command = transaction.takeDue(Clock::now())) {
            const int error = m_socket.send(m_address, m_path, {command->data(), command->size()});
            if (error != 0)
                return errorOfErrno(error);
        }
        if (transaction.isDone())
            return KELA_OK;
        pollfd events[] = {
            {m_socket.fd(), POLLIN, 0}, {m_cancel->fd(), POLLIN, 0}, {stop ? stop->fd() : -1, POLLIN, 0}};
        ::poll(events, std::size(events),
               pollTimeout(std::min(transaction.nextEvent(), m_deadline), Clock::now()));
        if (isEnded(stop))
            return KELA_ERROR_CANCELLED;
        const unsigned int result = events[0].revents != 0 ? receiveAll(transaction) : KELA_OK;
        if (result != KELA_OK || transaction.isDone())
            return result;
    }
}

unsigned int RegisterClient::receiveAll(GvcpTransaction &transaction)
{
    // Bounded, so that a flood cannot keep the clock from being looked at.
    constexpr int kBatch = 64;
    Arrival arrival;
    for (int i = 0; i < kBatch && !transaction.isDone(); ++i) {
        const int error = m_socket.receive(arrival);
        if (error == EAGAIN)
            return KELA_OK;
        if (error == ECONNREFUSED || error == EHOSTUNREACH || error == ENETUNREACH || error == ENETDOWN)
            return KELA_ERROR_UNREACHABLE;
        if (error != 0)
            return KELA_OK;
        const auto acknowledge = isFromCamera(arrival) ? parseAcknowledge(arrival.bytes) : std::nullopt;
        if (acknowledge)
            transaction.offer(*acknowledge, Clock::now());
    }
    return KELA_OK;
}

bool RegisterClient::isFromCamera(const Arrival &arrival) const
{
    return arrival.sender == m_address && arrival.senderPort == kGvcpPort;
}

} // namespace kela::gige
