// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Tells changed bytes from unchanged ones without keeping them: equal bytes have equal digests, and that
/// different ones have too is as unlikely as guessing 64 bits. Digests mean nothing outside this process.
///
/// Thread: any.
uint64_t digestOfBytes(const void *bytes, std::size_t size) noexcept;

/// Digest of a record, its reserved bytes included.
template <typename Record>
uint64_t digestOf(const Record &record) noexcept
{
    static_assert(std::is_trivially_copyable_v<Record>);
    return digestOfBytes(&record, sizeof record);
}
