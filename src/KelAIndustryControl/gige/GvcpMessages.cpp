// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpMessages.h>

#include <KelAIndustryControl/gige/BootstrapRegisters.h>

#include <cstring>

namespace kela::gige
{
namespace
{

struct NoPayload {
};

template <typename Payload>
Datagram makeCommand(std::uint16_t command, std::uint8_t flags, std::uint16_t requestId, const Payload &payload)
{
    constexpr std::size_t length = std::is_empty_v<Payload> ? 0 : sizeof(Payload);
    CommandHeader header;
    header.key = kCommandKey;
    header.flags = flags;
    header.command = Be16(command);
    header.length = Be16(static_cast<std::uint16_t>(length));
    header.requestId = Be16(requestId);
    Datagram datagram(sizeof header + length);
    std::memcpy(datagram.data(), &header, sizeof header);
    if constexpr (length > 0)
        std::memcpy(datagram.data() + sizeof header, &payload, length);
    return datagram;
}

std::uint8_t flagsFor(bool allowBroadcastAnswer)
{
    return allowBroadcastAnswer ? kFlagAcknowledge | kFlagBroadcastAnswer : kFlagAcknowledge;
}

CommandHeader headerOf(const Datagram &command)
{
    return readLayout<CommandHeader>({command.data(), command.size()}).value_or(CommandHeader{});
}

} // namespace

Datagram discoveryCommand(std::uint16_t requestId, bool allowBroadcastAnswer)
{
    return makeCommand(kDiscoveryCommand, flagsFor(allowBroadcastAnswer), requestId, NoPayload{});
}

Datagram readRegisterCommand(std::uint16_t requestId, std::uint32_t address)
{
    return makeCommand(kReadRegisterCommand, kFlagAcknowledge, requestId, ReadRegisterPayload{Be32(address)});
}

Datagram writeRegisterCommand(std::uint16_t requestId, std::uint32_t address, std::uint32_t value)
{
    return makeCommand(kWriteRegisterCommand, kFlagAcknowledge, requestId,
                       WriteRegisterPayload{Be32(address), Be32(value)});
}

Datagram readMemoryCommand(std::uint16_t requestId, std::uint32_t address, std::uint16_t byteCount)
{
    return makeCommand(kReadMemoryCommand, kFlagAcknowledge, requestId,
                       ReadMemoryPayload{Be32(address), Be16(0), Be16(byteCount)});
}

Datagram forceIpCommand(std::uint16_t requestId, const ForcedAddress &forced, bool allowBroadcastAnswer)
{
    ForceIpPayload payload = {};
    for (std::size_t i = 0; i < sizeof payload.hardwareAddress; ++i)
        payload.hardwareAddress[i] = static_cast<std::uint8_t>(forced.hardwareAddress >> (40 - 8 * i));
    payload.address = Be32(forced.address);
    payload.mask = Be32(forced.mask);
    payload.gateway = Be32(forced.gateway);
    return makeCommand(kForceIpCommand, flagsFor(allowBroadcastAnswer), requestId, payload);
}

std::uint16_t commandOf(const Datagram &command)
{
    return headerOf(command).command.value();
}

std::uint16_t requestIdOf(const Datagram &command)
{
    return headerOf(command).requestId.value();
}

void setRequestId(Datagram &command, std::uint16_t requestId)
{
    CommandHeader header = headerOf(command);
    header.requestId = Be16(requestId);
    std::memcpy(command.data(), &header, sizeof header);
}

std::optional<Acknowledge> parseAcknowledge(ByteView datagram)
{
    const auto header = readLayout<AckHeader>(datagram);
    if (!header || header->length.value() > datagram.size - sizeof(AckHeader))
        return std::nullopt;
    Acknowledge acknowledge;
    acknowledge.status = header->status.value();
    acknowledge.code = header->acknowledge.value();
    acknowledge.requestId = header->requestId.value();
    acknowledge.payload = datagram.from(sizeof(AckHeader)).first(header->length.value());
    return acknowledge;
}

bool DiscoveryAnswer::isPlainTransmitter() const
{
    return ((deviceMode >> kDeviceClassShift) & kDeviceClassMask) == kDeviceClassTransmitter;
}

std::optional<DiscoveryAnswer> parseDiscovery(ByteView payload)
{
    const auto layout = readLayout<DiscoveryPayload>(payload);
    if (!layout)
        return std::nullopt;
    DiscoveryAnswer answer;
    answer.version = layout->version.value();
    answer.deviceMode = layout->deviceMode.value();
    for (const std::uint8_t octet : layout->hardwareAddress)
        answer.hardwareAddress = answer.hardwareAddress << 8 | octet;
    answer.ipConfigOptions = layout->ipConfigOptions.value();
    answer.ipConfigCurrent = layout->ipConfigCurrent.value();
    answer.currentIp = layout->currentIp.value();
    answer.subnetMask = layout->subnetMask.value();
    answer.gateway = layout->gateway.value();
    answer.texts = *layout;
    return answer;
}

std::optional<std::uint32_t> parseReadRegister(ByteView payload)
{
    const auto layout = readLayout<ReadRegisterAckPayload>(payload);
    if (!layout)
        return std::nullopt;
    return layout->value.value();
}

std::optional<ByteView> parseReadMemory(ByteView payload, std::uint32_t address, std::size_t byteCount)
{
    const auto head = readLayout<ReadMemoryAckHead>(payload);
    if (!head || head->address.value() != address || payload.size - sizeof(ReadMemoryAckHead) < byteCount)
        return std::nullopt;
    return payload.from(sizeof(ReadMemoryAckHead)).first(byteCount);
}

std::optional<std::uint16_t> parsePending(ByteView payload)
{
    const auto layout = readLayout<PendingAckPayload>(payload);
    if (!layout)
        return std::nullopt;
    return layout->milliseconds.value();
}

} // namespace kela::gige
