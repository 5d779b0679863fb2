// SPDX-License-Identifier: Apache-2.0
// A producer that answers with any code, type and size and writes any bytes into the room it was given.
#include <KelAIndustryControl/gentl/Identifiers.h>
#include <KelAIndustryControl/gentl/InfoReader.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace kela::gentl;

namespace
{

constexpr std::size_t kMemory = 65536;

/// Deals the input out.
class Dealer
{
public:
    Dealer(const std::uint8_t *data, std::size_t size)
        : m_data(data)
        , m_left(size)
    {
    }

    bool isEmpty() const { return m_left == 0; }

    template <typename Number>
    Number number()
    {
        Number value = 0;
        const std::size_t length = std::min(sizeof value, m_left);
        std::memcpy(&value, m_data, length);
        skip(length);
        return value;
    }

    void fill(void *room, std::size_t length)
    {
        length = std::min(length, m_left);
        if (length)
            std::memcpy(room, m_data, length);
        skip(length);
    }

private:
    void skip(std::size_t length)
    {
        m_data += length;
        m_left -= length;
    }

    const std::uint8_t *m_data;
    std::size_t m_left;
};

GC_ERROR answer(Dealer &dealer, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    constexpr GC_ERROR kCodes[] = {GC_ERR_SUCCESS, GC_ERR_SUCCESS, GC_ERR_BUFFER_TOO_SMALL, GC_ERR_ERROR};
    const std::size_t room = *size;
    const GC_ERROR code = kCodes[dealer.number<std::uint8_t>() % 4U];
    *type = dealer.number<std::int8_t>();
    *size = dealer.number<std::size_t>();
    if (buffer)
        dealer.fill(buffer, std::min<std::size_t>(room, dealer.number<std::uint16_t>()));
    return code;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static std::vector<char> memory(kMemory);
    InfoReader reader(memory.data(), memory.size());
    Dealer dealer(data, size);
    const auto call = [&dealer](INFO_DATATYPE *type, void *buffer, std::size_t *room) {
        return answer(dealer, type, buffer, room);
    };
    while (!dealer.isEmpty()) {
        GC_ERROR code = GC_ERR_SUCCESS;
        const std::string text = reader.text(call, code);
        reader.number(call);
        if (text.size() > kMemory || text.find('\0') != std::string::npos)
            std::abort();
        if (recordIdentifier(text).size() > kLongestIdentifier || displayText(text, 31).size() > 31)
            std::abort();
    }
    return 0;
}
