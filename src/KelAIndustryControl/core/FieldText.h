// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace kela
{

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

} // namespace kela
