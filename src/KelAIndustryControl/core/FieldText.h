// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace kela
{

/// The longest beginning of a text that has room in @p limit bytes and ends with a whole UTF-8 character. Bytes
/// that are no UTF-8 are cut at the limit.
inline std::size_t characterBoundary(std::string_view text, std::size_t limit)
{
    constexpr std::size_t kLongestCharacter = 4;
    const auto isContinuation = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    if (limit >= text.size())
        return text.size();
    std::size_t end = limit;
    while (end > 0 && limit - end < kLongestCharacter && isContinuation(text[end]))
        --end;
    return isContinuation(text[end]) ? limit : end;
}

/// Writes a text into a fixed field of a record: cut to the field less one, the rest zero, so that
/// records of the same device compare by their bytes.
template <std::size_t Size>
void setFieldText(char (&field)[Size], std::string_view text)
{
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memset(field, 0, Size);
    if (length)
        std::memcpy(field, text.data(), length);
}

/// The same for a text that is UTF-8: no character is cut in the middle.
template <std::size_t Size>
void setUtf8Field(char (&field)[Size], std::string_view text)
{
    setFieldText(field, text.substr(0, characterBoundary(text, Size - 1)));
}

} // namespace kela
