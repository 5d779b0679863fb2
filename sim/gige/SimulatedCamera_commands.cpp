// SPDX-License-Identifier: Apache-2.0
// How a camera answers the wire. Who may do what: anybody may read unless somebody holds the camera
// exclusively; only the holder writes; the privilege register itself may be written by anybody while it is
// free. The holder is a source address and port: another socket of the same program is a stranger. Only the
// holder's own commands keep its heartbeat alive.
#include "SimulatedCamera.h"

#include <cstring>

namespace kelsim
{

namespace
{

constexpr std::size_t kForceIpSize = 56;
constexpr std::size_t kForceIpMac = 2;
constexpr std::size_t kForceIpAddress = 20;
constexpr std::size_t kForceIpMask = 36;
constexpr std::size_t kForceIpGateway = 52;

std::vector<uint8_t> indexPayload(uint32_t index)
{
    std::vector<uint8_t> payload;
    appendU32(payload, index);
    return payload;
}

} // namespace

std::vector<Answer> SimulatedCamera::receive(const Datagram &datagram, Clock::time_point now)
{
    const auto command = parseCommand(datagram.data, datagram.size);
    if (!m_isPlugged || !command) {
        return {};
    }
    ++m_received[command->code];
    if (m_faults.swallows(command->code, datagram.isBroadcast)) {
        return {};
    }
    std::vector<Answer> answers = answer(*command, datagram, now);
    m_faults.treat(command->code, datagram.isBroadcast, answers);
    return answers;
}

std::vector<Answer> SimulatedCamera::answer(const CommandView &command, const Datagram &datagram,
                                            Clock::time_point now)
{
    if (command.code == static_cast<uint16_t>(Command::Discovery)) {
        return answerDiscovery(command, datagram);
    }
    if (command.code == static_cast<uint16_t>(Command::ForceIp)) {
        return answerForceIp(command, datagram, now);
    }
    // Everything else is a conversation between two: a broadcast is not meant for us.
    if (datagram.isBroadcast || command.code == static_cast<uint16_t>(Command::PacketResend)) {
        return {};
    }
    return answerRegisters(command, datagram, now);
}

std::vector<Answer> SimulatedCamera::answerDiscovery(const CommandView &command, const Datagram &datagram)
{
    std::vector<uint8_t> image;
    m_registers.read(0, kDiscoveryImageSize, image);
    auto answer =
        addressed(acknowledge(Status::Success, command.code, command.id, image), command, datagram.from);
    if (!answer) {
        return {};
    }
    const uint32_t longest = m_registers.value(reg::kDiscoveryAckDelay);
    if (longest != 0 && datagram.isBroadcast) {
        answer->delay = std::chrono::milliseconds(m_random() % (longest + 1));
    }
    return {*answer};
}

// Obeyed by the device whose hardware address it names, and only while nobody holds it.
std::vector<Answer> SimulatedCamera::answerForceIp(const CommandView &command, const Datagram &datagram,
                                                   Clock::time_point now)
{
    const auto &mac = m_settings.mac;
    if (command.length < kForceIpSize || privilege(now) != 0 ||
        std::memcmp(command.payload + kForceIpMac, mac.data(), mac.size()) != 0) {
        return {};
    }
    CameraPlace place;
    place.address = getU32(command.payload + kForceIpAddress);
    place.mask = getU32(command.payload + kForceIpMask);
    place.gateway = getU32(command.payload + kForceIpGateway);
    if (place.address != 0) {
        m_forcedPlace = place;
    }
    auto answer = addressed(acknowledge(Status::Success, command.code, command.id, {}), command, datagram.from);
    return answer ? std::vector<Answer>{*answer} : std::vector<Answer>{};
}

std::vector<Answer> SimulatedCamera::answerRegisters(const CommandView &command, const Datagram &datagram,
                                                     Clock::time_point now)
{
    const Reply reply = execute(command, datagram.from, now);
    auto last =
        addressed(acknowledge(reply.status, command.code, command.id, reply.payload), command, datagram.from);
    if (!last || (command.flags & kFlagAcknowledge) == 0) {
        return {};
    }
    std::vector<Answer> answers;
    if (m_settings.pendingMs != 0) {
        last->delay = std::chrono::milliseconds(m_settings.pendingMs);
        if ((m_registers.value(reg::kConfiguration) & kConfigurationPending) != 0) {
            answers.push_back({pendingAcknowledge(command.id, static_cast<uint16_t>(m_settings.pendingMs)),
                               datagram.from,
                               {},
                               false});
        }
    }
    answers.push_back(*last);
    return answers;
}

// A camera without a gateway cannot answer a stranger of another subnet by unicast; where the stranger
// allows it, the answer goes to everybody on the card.
std::optional<Answer> SimulatedCamera::addressed(std::vector<uint8_t> bytes, const CommandView &command,
                                                 const Endpoint &to) const
{
    const CameraPlace &here = m_settings.place;
    if (here.isInSubnet(to.address) || here.gateway != 0) {
        return Answer{std::move(bytes), to, {}, false};
    }
    const bool mayBroadcast = command.code == static_cast<uint16_t>(Command::Discovery) ||
                              command.code == static_cast<uint16_t>(Command::ForceIp);
    if (mayBroadcast && (command.flags & kFlagBroadcastAnswer) != 0) {
        return Answer{std::move(bytes), {kLimitedBroadcast, to.port}, {}, false};
    }
    return std::nullopt;
}

SimulatedCamera::Reply SimulatedCamera::execute(const CommandView &command, const Endpoint &from,
                                                Clock::time_point now)
{
    const bool isExclusive = (privilege(now) & kPrivilegeExclusive) != 0;
    if (isHolder(from)) {
        m_holderHeard = now;
    } else if (isExclusive) {
        return {Status::AccessDenied, {}};
    }
    switch (static_cast<Command>(command.code)) {
    case Command::ReadRegister:
        return readRegisters(command);
    case Command::WriteRegister:
        return writeRegisters(command, from, now);
    case Command::ReadMemory:
        return readMemory(command);
    case Command::WriteMemory:
        return writeMemory(command, from, now);
    default:
        return {Status::NotImplemented, {}};
    }
}

SimulatedCamera::Reply SimulatedCamera::readRegisters(const CommandView &command) const
{
    if (command.length == 0 || command.length % 4 != 0 || command.length > kLargestMemoryRead) {
        return {Status::InvalidHeader, {}};
    }
    Reply reply;
    for (std::size_t i = 0; i < command.length; i += 4) {
        const uint32_t address = getU32(command.payload + i);
        if (address % 4 != 0) {
            return {Status::BadAlignment, {}};
        }
        if (!m_registers.isReadable(address, 4)) {
            return {Status::InvalidAddress, {}};
        }
        m_registers.read(address, 4, reply.payload);
    }
    return reply;
}

SimulatedCamera::Reply SimulatedCamera::writeRegisters(const CommandView &command, const Endpoint &from,
                                                       Clock::time_point now)
{
    if (command.length == 0 || command.length % 8 != 0) {
        return {Status::InvalidHeader, {}};
    }
    const auto count = static_cast<uint32_t>(command.length / 8);
    for (uint32_t i = 0; i < count; ++i) {
        const uint8_t *const entry = command.payload + std::size_t{i} * 8;
        const Status status = writeRegister(getU32(entry), getU32(entry + 4), from, now);
        if (status != Status::Success) {
            return {status, indexPayload(i)};
        }
    }
    return {Status::Success, indexPayload(count)};
}

SimulatedCamera::Reply SimulatedCamera::readMemory(const CommandView &command) const
{
    if (command.length != 8) {
        return {Status::InvalidHeader, {}};
    }
    const uint32_t address = getU32(command.payload);
    const uint16_t size = getU16(command.payload + 6);
    if (address % 4 != 0 || size % 4 != 0) {
        return {Status::BadAlignment, {}};
    }
    if (size == 0 || size > kLargestMemoryRead) {
        return {Status::InvalidParameter, {}};
    }
    if (!m_registers.isReadable(address, size)) {
        return {Status::InvalidAddress, {}};
    }
    Reply reply;
    appendU32(reply.payload, address);
    m_registers.read(address, size, reply.payload);
    return reply;
}

SimulatedCamera::Reply SimulatedCamera::writeMemory(const CommandView &command, const Endpoint &from,
                                                    Clock::time_point now)
{
    if (command.length < 8 || command.length % 4 != 0) {
        return {Status::InvalidHeader, {}};
    }
    const uint32_t address = getU32(command.payload);
    const std::size_t size = command.length - 4;
    if (size == 4 && address % 4 == 0) {
        const Status status = writeRegister(address, getU32(command.payload + 4), from, now);
        return {status, indexPayload(status == Status::Success ? 4 : 0)};
    }
    if (!isHolder(from)) {
        return {Status::AccessDenied, {}};
    }
    if (!CameraRegisters::isTextWritable(address, size)) {
        return {Status::WriteProtected, {}};
    }
    m_registers.write(address, command.payload + 4, size);
    return {Status::Success, indexPayload(static_cast<uint32_t>(size))};
}

Status SimulatedCamera::writeRegister(uint32_t address, uint32_t value, const Endpoint &from,
                                      Clock::time_point now)
{
    if (address % 4 != 0) {
        return Status::BadAlignment;
    }
    if (!m_registers.isReadable(address, 4)) {
        return Status::InvalidAddress;
    }
    if (address == reg::kControlPrivilege) {
        return writePrivilege(value, from, now);
    }
    if (!isHolder(from)) {
        return Status::AccessDenied;
    }
    if (!CameraRegisters::isWritable(address) && !CameraRegisters::isTextWritable(address, 4)) {
        return Status::WriteProtected;
    }
    m_registers.setValue(address, value);
    return Status::Success;
}

Status SimulatedCamera::writePrivilege(uint32_t value, const Endpoint &from, Clock::time_point now)
{
    const uint32_t wanted = value & (kPrivilegeExclusive | kPrivilegeControl | kPrivilegeSwitchover);
    if (privilege(now) != 0 && !isHolder(from) && !mayTakeOver(value)) {
        return Status::AccessDenied;
    }
    if ((wanted & (kPrivilegeExclusive | kPrivilegeControl)) == 0) {
        if (isHolder(from)) {
            closeControl();
        }
        return Status::Success;
    }
    grant(wanted, from);
    m_holderHeard = now;
    return Status::Success;
}

bool SimulatedCamera::isHolder(const Endpoint &from) const
{
    return m_registers.value(reg::kControlPrivilege) != 0 && from == m_holder;
}

bool SimulatedCamera::mayTakeOver(uint32_t value) const
{
    const bool isAllowed = (m_registers.value(reg::kControlPrivilege) & kPrivilegeSwitchover) != 0;
    return isAllowed && (value >> 16) == (m_registers.value(reg::kSwitchoverKey) & 0xFFFF);
}

} // namespace kelsim
