// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/InfoReader.h>

#include <algorithm>
#include <cstring>

namespace kela::gentl
{
namespace
{

constexpr std::size_t kUsualRoom = 1024;
constexpr std::size_t kLongestText = 65536;
constexpr int kMostAttempts = 3;

} // namespace

GC_ERROR InfoReader::fill(const Call &call, std::size_t room, INFO_DATATYPE &type, std::size_t &size)
{
    char *const target = buffer(room);
    std::memset(target, 0, room);
    type = INFO_DATATYPE_UNKNOWN;
    size = room;
    const GC_ERROR result = call(&type, target, &size);
    if (result == GC_ERR_SUCCESS && size > room)
        m_sizeLied = true;
    return result;
}

std::size_t InfoReader::neededSize(const Call &call)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = 0;
    if (call(&type, nullptr, &size) != GC_ERR_SUCCESS)
        return 0;
    m_sizeLied = m_sizeLied || size > kLongestText;
    return size;
}

std::string InfoReader::text(const Call &call, GC_ERROR &result)
{
    // One call does for nearly every text; only one that is too long takes the standard's two.
    std::size_t room = std::min(kUsualRoom, m_capacity);
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
        std::size_t size = 0;
        result = fill(call, room, type, size);
        if (result == GC_ERR_SUCCESS) {
            const bool isText = type == INFO_DATATYPE_UNKNOWN || type == INFO_DATATYPE_STRING;
            std::string text(buffer(room), ::strnlen(buffer(room), room));
            if (m_asksSizes)
                neededSize(call);
            return isText ? text : std::string();
        }
        if (result != GC_ERR_BUFFER_TOO_SMALL)
            return {};
        const std::size_t needed = neededSize(call);
        // A size that cannot be, such as one that was too small just now, is answered with all the room
        // there is. One byte more than told is for producers that forget the NUL.
        const bool isLikely = needed >= room && needed < m_capacity && attempt == 0;
        room = isLikely ? needed + 1 : m_capacity;
    }
    return {};
}

std::optional<std::uint32_t> InfoReader::number(const Call &call)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = 0;
    std::uint32_t value = 0;
    if (fill(call, sizeof value, type, size) != GC_ERR_SUCCESS || size != sizeof value)
        return std::nullopt;
    const bool isNumber =
        type == INFO_DATATYPE_UNKNOWN || type == INFO_DATATYPE_INT32 || type == INFO_DATATYPE_UINT32;
    if (!isNumber)
        return std::nullopt;
    std::memcpy(&value, buffer(sizeof value), sizeof value);
    return value;
}

} // namespace kela::gentl
