// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/Identifiers.h>

#include <KelAIndustryControl/core/FieldText.h>

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <set>
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

// More than all producers together have; a producer that invents identifiers does not fill the memory.
constexpr std::size_t kMostPlaces = 65536;

struct PlaceTable {
    using Place = std::array<std::string, 3>; // producer file, interface, device

    std::mutex mutex; // guards the rest
    std::map<Place, std::string> identifiers;
    std::set<std::string> kept; // identifiers that some place has unchanged
};

PlaceTable &placeTable()
{
    static auto *const table = new PlaceTable;
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

std::string withHash(std::string_view identifier, std::string_view hashed)
{
    const std::string hash = hashText(hashed);
    const std::size_t begin = characterBoundary(identifier, kLongestIdentifier - hash.size() - 1);
    return std::string(identifier.substr(0, begin)) + '~' + hash;
}

} // namespace

std::string recordIdentifier(std::string_view identifier)
{
    return identifier.size() <= kLongestIdentifier ? std::string(identifier) : withHash(identifier, identifier);
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

std::string PlacedIdentifiers::of(const std::string &producerFile, const std::string &interfaceId,
                                  const std::string &deviceId)
{
    PlaceTable &table = placeTable();
    const std::lock_guard lock(table.mutex);
    const auto known = table.identifiers.find({producerFile, interfaceId, deviceId});
    if (known != table.identifiers.end())
        return known->second;
    std::string identifier = recordIdentifier(deviceId);
    if (table.identifiers.size() >= kMostPlaces)
        return identifier;
    if (!table.kept.insert(identifier).second) {
        // None of them holds a NUL, so no two places give one text.
        std::string place = producerFile;
        place.append(1, '\0').append(interfaceId).append(1, '\0').append(deviceId);
        identifier = withHash(deviceId, place);
    }
    table.identifiers.emplace(PlaceTable::Place{producerFile, interfaceId, deviceId}, identifier);
    return identifier;
}

void PlacedIdentifiers::forget(const std::string &producerFile)
{
    PlaceTable &table = placeTable();
    const std::lock_guard lock(table.mutex);
    const auto first = table.identifiers.lower_bound({producerFile, std::string(), std::string()});
    auto end = first;
    for (; end != table.identifiers.end() && end->first[0] == producerFile; ++end) {
        if (end->second == recordIdentifier(end->first[2]))
            table.kept.erase(end->second);
    }
    table.identifiers.erase(first, end);
}

} // namespace kela::gentl
