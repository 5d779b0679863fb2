// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>

namespace kela
{

/// Bytes that somebody else owns: a datagram, a descriptor.
struct ByteView {
    const std::uint8_t *data = nullptr;
    std::size_t size = 0;

    /// The bytes from @p offset on; nothing when the offset lies behind the end.
    ByteView from(std::size_t offset) const
    {
        return offset < size ? ByteView{data + offset, size - offset} : ByteView{};
    }

    ByteView first(std::size_t count) const { return {data, count < size ? count : size}; }
};

/// Copies a fixed layout out of the beginning of @p bytes; nothing when they are too few.
template <typename Layout>
std::optional<Layout> readLayout(ByteView bytes)
{
    static_assert(std::is_trivially_copyable_v<Layout> && alignof(Layout) == 1);
    if (bytes.size < sizeof(Layout))
        return std::nullopt;
    Layout layout;
    std::memcpy(&layout, bytes.data, sizeof(Layout));
    return layout;
}

} // namespace kela
