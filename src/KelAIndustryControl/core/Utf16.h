// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>

#include <string>

namespace kela
{

/// UTF-8 of a text in UTF-16 with the high byte first, up to a NUL or the end; an odd last byte is left out.
/// Lone surrogates become the replacement character.
std::string utf8FromBigEndianUtf16(ByteView bytes);

/// The same with the low byte first.
std::string utf8FromLittleEndianUtf16(ByteView bytes);

} // namespace kela
