// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>

#include <cstdint>
#include <optional>
#include <string>

namespace kela::usb3
{

/// The text of a string descriptor in UTF-8: what its own length and its NUL leave of it. Halves of a character
/// become the replacement character.
/// @return nothing when the bytes are no string descriptor
std::optional<std::string> parseStringDescriptor(ByteView bytes);

/// The first language that string descriptor 0 lists; nothing when it lists none.
std::optional<std::uint16_t> parseLanguageList(ByteView bytes);

} // namespace kela::usb3
