// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbStringDescriptor.h>

#include <libusb.h>

namespace kela::usb3
{
namespace
{

struct Head {
    std::uint8_t length;
    std::uint8_t type;
};
static_assert(sizeof(Head) == 2);

void appendUtf8(std::string &text, std::uint32_t point)
{
    const auto tail = [&text](std::uint32_t bits) { text += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        tail(point);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0U | point >> 12);
        tail(point >> 6);
        tail(point);
    } else {
        text += static_cast<char>(0xF0U | point >> 18);
        tail(point >> 12);
        tail(point >> 6);
        tail(point);
    }
}

bool isHighSurrogate(std::uint32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

std::string textOf(ByteView bytes)
{
    constexpr std::uint32_t kReplacement = 0xFFFD;
    const auto unitAt = [&bytes](std::size_t at) -> std::uint32_t {
        return at + 1 < bytes.size ? static_cast<std::uint32_t>(bytes.data[at] | bytes.data[at + 1] << 8) : 0U;
    };
    std::string text;
    for (std::size_t at = 0; unitAt(at) != 0; at += 2) {
        const std::uint32_t unit = unitAt(at);
        const std::uint32_t next = unitAt(at + 2);
        if (isHighSurrogate(unit) && isLowSurrogate(next)) {
            appendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            at += 2;
        } else {
            appendUtf8(text, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
        }
    }
    return text;
}

/// What follows the head of a string descriptor.
std::optional<ByteView> bodyOf(ByteView bytes)
{
    const auto head = readLayout<Head>(bytes);
    if (!head || head->type != LIBUSB_DT_STRING)
        return std::nullopt;
    return bytes.first(head->length).from(sizeof(Head));
}

} // namespace

std::optional<std::string> parseStringDescriptor(ByteView bytes)
{
    const auto body = bodyOf(bytes);
    return body ? std::optional(textOf(*body)) : std::nullopt;
}

std::optional<std::uint16_t> parseLanguageList(ByteView bytes)
{
    const auto body = bodyOf(bytes);
    if (!body || body->size < sizeof(std::uint16_t))
        return std::nullopt;
    const auto language = static_cast<std::uint16_t>(body->data[0] | body->data[1] << 8);
    return language ? std::optional(language) : std::nullopt;
}

} // namespace kela::usb3
