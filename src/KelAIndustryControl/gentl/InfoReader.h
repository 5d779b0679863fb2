// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gentl/GenTLStandard.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace kela::gentl
{

/// Reads values out of a producer without trusting the sizes, types and terminators that it hands out.
/// Thread: one at a time.
class InfoReader
{
public:
    /// A call that fills a buffer: type (ignored by calls that have none), buffer, size.
    using Call = std::function<GC_ERROR(INFO_DATATYPE *, void *, std::size_t *)>;

    /// @param memory    where the producer writes; not owned, outlives the reader
    /// @param capacity  of it. A buffer is always its last bytes, so that whoever places a forbidden page
    ///                  behind it meets a producer that writes too much.
    InfoReader(char *memory, std::size_t capacity)
        : m_memory(memory)
        , m_capacity(capacity)
    {
    }

    /// Asks for the size of every text as well, as one that is too long for the usual room would need it.
    void askSizes() { m_asksSizes = true; }

    /// A text: up to its NUL or the end of the buffer that the producer was given.
    /// @param result  receives the code of the call
    std::string text(const Call &call, GC_ERROR &result);

    /// A 32-bit number, no value when the type or the size is another.
    std::optional<std::uint32_t> number(const Call &call);

    /// True once a producer told that it wrote more than it was given room for, or needs more than any text.
    bool sizeLied() const { return m_sizeLied; }

private:
    GC_ERROR fill(const Call &call, std::size_t room, INFO_DATATYPE &type, std::size_t &size);
    std::size_t neededSize(const Call &call);
    char *buffer(std::size_t room) const { return m_memory + (m_capacity - room); }

    char *m_memory;
    std::size_t m_capacity;
    bool m_asksSizes = false;
    bool m_sizeLied = false;
};

} // namespace kela::gentl
