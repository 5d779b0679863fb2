// SPDX-License-Identifier: Apache-2.0
#include "GvcpFormat.h"

#include <algorithm>

namespace kelsim
{

uint16_t getU16(const uint8_t *bytes)
{
    return static_cast<uint16_t>((bytes[0] << 8) | bytes[1]);
}

uint32_t getU32(const uint8_t *bytes)
{
    return (static_cast<uint32_t>(getU16(bytes)) << 16) | getU16(bytes + 2);
}

void putU16(uint8_t *bytes, uint16_t value)
{
    bytes[0] = static_cast<uint8_t>(value >> 8);
    bytes[1] = static_cast<uint8_t>(value & 0xFF);
}

void putU32(uint8_t *bytes, uint32_t value)
{
    putU16(bytes, static_cast<uint16_t>(value >> 16));
    putU16(bytes + 2, static_cast<uint16_t>(value & 0xFFFF));
}

void appendU32(std::vector<uint8_t> &bytes, uint32_t value)
{
    bytes.resize(bytes.size() + 4);
    putU32(bytes.data() + bytes.size() - 4, value);
}

std::optional<CommandView> parseCommand(const uint8_t *data, std::size_t size)
{
    if (size < kHeaderSize || data[0] != kCommandKey) {
        return std::nullopt;
    }

    CommandView command;
    command.flags = data[1];
    command.code = getU16(data + 2);
    command.length = getU16(data + 4);
    command.id = getU16(data + 6);
    command.payload = data + kHeaderSize;
    if (command.id == 0 || command.length > size - kHeaderSize) {
        return std::nullopt;
    }
    return command;
}

static std::vector<uint8_t> answerOfSize(uint16_t status, uint16_t code, std::size_t length, uint16_t id)
{
    std::vector<uint8_t> bytes(kHeaderSize + length);
    putU16(bytes.data(), status);
    putU16(bytes.data() + 2, code);
    putU16(bytes.data() + 4, static_cast<uint16_t>(length));
    putU16(bytes.data() + 6, id);
    return bytes;
}

std::vector<uint8_t> acknowledge(Status status, uint16_t commandCode, uint16_t id,
                                 const std::vector<uint8_t> &payload)
{
    const auto code = static_cast<uint16_t>(commandCode + 1);
    std::vector<uint8_t> bytes = answerOfSize(static_cast<uint16_t>(status), code, payload.size(), id);
    std::copy(payload.begin(), payload.end(), bytes.begin() + kHeaderSize);
    return bytes;
}

std::vector<uint8_t> pendingAcknowledge(uint16_t id, uint16_t milliseconds)
{
    std::vector<uint8_t> bytes = answerOfSize(0, kPendingAcknowledge, 4, id);
    putU16(bytes.data() + kHeaderSize + 2, milliseconds);
    return bytes;
}

} // namespace kelsim
