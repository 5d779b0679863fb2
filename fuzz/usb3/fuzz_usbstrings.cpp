// SPDX-License-Identifier: Apache-2.0
// Any bytes as a string descriptor: the text is valid UTF-8 without a NUL, and not longer than the descriptor
// can say.
#include <KelAIndustryControl/usb3/UsbStringDescriptor.h>

#include <cstdlib>

using namespace kela;

namespace
{

bool isTail(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t lengthOfCharacter(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0x80U)
        return 1;
    if ((byte & 0xE0U) == 0xC0U)
        return 2;
    if ((byte & 0xF0U) == 0xE0U)
        return 3;
    return (byte & 0xF8U) == 0xF0U ? 4 : 0;
}

bool isUtf8(const std::string &text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthOfCharacter(text[at]);
        if (length == 0 || at + length > text.size())
            return false;
        for (std::size_t i = 1; i < length; ++i) {
            if (!isTail(text[at + i]))
                return false;
        }
        at += length;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ByteView bytes{data, size};
    usb3::parseLanguageList(bytes);
    const auto text = usb3::parseStringDescriptor(bytes);
    // 126 units of two bytes, of which each gives three bytes at most.
    constexpr std::size_t kLongestText = 126U * 3U;
    if (text && (text->size() > kLongestText || !isUtf8(*text) || text->find('\0') != std::string::npos))
        std::abort();
    return 0;
}
