// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/Utf16.h>

#include <cstdint>

namespace kela
{
namespace
{

constexpr std::uint32_t kHighSurrogates = 0xD800;
constexpr std::uint32_t kLowSurrogates = 0xDC00;
constexpr std::uint32_t kSurrogatesEnd = 0xE000;
constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kFirstOfPairs = 0x10000;

void appendUtf8(std::string &text, std::uint32_t point)
{
    const auto tail = [&text](std::uint32_t bits) { text += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        tail(point);
    } else if (point < kFirstOfPairs) {
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

std::uint32_t bigEndian(std::uint8_t first, std::uint8_t second)
{
    return static_cast<std::uint32_t>(first) << 8 | second;
}

std::uint32_t littleEndian(std::uint8_t first, std::uint8_t second)
{
    return static_cast<std::uint32_t>(second) << 8 | first;
}

std::string utf8FromUtf16(ByteView bytes, std::uint32_t (*joined)(std::uint8_t, std::uint8_t))
{
    // 0 behind the end.
    const auto unitAt = [&](std::size_t offset) {
        return offset + 1 < bytes.size ? joined(bytes.data[offset], bytes.data[offset + 1]) : 0U;
    };
    std::string text;
    for (std::size_t at = 0; unitAt(at) != 0; at += 2) {
        const std::uint32_t unit = unitAt(at);
        const std::uint32_t next = unitAt(at + 2);
        const bool isPair =
            unit >= kHighSurrogates && unit < kLowSurrogates && next >= kLowSurrogates && next < kSurrogatesEnd;
        if (isPair) {
            appendUtf8(text, kFirstOfPairs + ((unit - kHighSurrogates) << 10) + (next - kLowSurrogates));
            at += 2;
        } else {
            appendUtf8(text, unit >= kHighSurrogates && unit < kSurrogatesEnd ? kReplacement : unit);
        }
    }
    return text;
}

} // namespace

std::string utf8FromBigEndianUtf16(ByteView bytes)
{
    return utf8FromUtf16(bytes, bigEndian);
}

std::string utf8FromLittleEndianUtf16(ByteView bytes)
{
    return utf8FromUtf16(bytes, littleEndian);
}

} // namespace kela
