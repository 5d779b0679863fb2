// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/Identifiers.h>

#include <KelAIndustryControl/core/FieldText.h>

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace kela::gentl
{
namespace
{

// Identifiers of interfaces are made of text and number written one after the other: with numbers of one
// width "port1" and "port" never come to the same.
constexpr std::uint32_t kFirstNumber = 1000000;

struct NumberTable {
    std::mutex mutex; // guards the rest
    std::map<std::pair<std::string, std::string>, std::uint32_t> numbers;
    std::vector<InterfaceNumbers::Interface> interfaces; // by number, from kFirstNumber on
};

// Never destroyed: producer threads may outlive the statics of the process.
NumberTable &numberTable()
{
    static auto *const table = new NumberTable;
    return *table;
}

std::string hashText(std::string_view text)
{
    std::uint64_t hash = 0xCBF29CE484222325ULL; // FNV-1a
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3ULL;
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4)
        digits.push_back(kDigits[(hash >> shift) & 0xFU]);
    return digits;
}

} // namespace

std::string recordIdentifier(std::string_view identifier)
{
    if (identifier.size() <= kLongestIdentifier)
        return std::string(identifier);
    const std::string hash = hashText(identifier);
    const std::size_t begin = characterBoundary(identifier, kLongestIdentifier - hash.size() - 1);
    return std::string(identifier.substr(0, begin)) + '~' + hash;
}

std::string_view displayText(std::string_view text, std::size_t limit)
{
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    text = text.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return text.substr(0, characterBoundary(text, limit));
}

std::uint32_t InterfaceNumbers::numberOf(const std::string &producerFile, const std::string &identifier)
{
    NumberTable &table = numberTable();
    const std::lock_guard lock(table.mutex);
    const std::uint32_t next = kFirstNumber + static_cast<std::uint32_t>(table.interfaces.size());
    const auto [entry, isNew] = table.numbers.try_emplace({producerFile, identifier}, next);
    if (isNew)
        table.interfaces.push_back({producerFile, identifier});
    return entry->second;
}

std::optional<InterfaceNumbers::Interface> InterfaceNumbers::interfaceOf(std::uint32_t number)
{
    NumberTable &table = numberTable();
    const std::lock_guard lock(table.mutex);
    if (number < kFirstNumber || number - kFirstNumber >= table.interfaces.size())
        return std::nullopt;
    return table.interfaces[number - kFirstNumber];
}

} // namespace kela::gentl
