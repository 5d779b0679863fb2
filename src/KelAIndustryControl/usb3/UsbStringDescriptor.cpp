// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbStringDescriptor.h>

#include <KelAIndustryControl/core/Utf16.h>

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
    return body ? std::optional(utf8FromLittleEndianUtf16(*body)) : std::nullopt;
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
