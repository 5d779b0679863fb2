// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// @file
/// What identifies a GenTL interface or device in a record.

namespace kela::gentl
{

/// Longest identifier text that a record holds.
constexpr std::size_t kLongestIdentifier = 63;

/// An identifier as records carry it: unchanged when it fits, else its beginning and a hash of the whole,
/// the same for the same identifier everywhere.
std::string recordIdentifier(std::string_view identifier);

/// A text for display: without trailing blanks and line ends, cut between characters to @p limit bytes.
std::string_view displayText(std::string_view text, std::size_t limit);

/// Numbers of the interfaces of all producers. A number belongs to one interface of one producer file as
/// long as the process lives, wherever in the list the interface stands.
class InterfaceNumbers
{
public:
    struct Interface {
        std::string producerFile;
        std::string identifier;
    };

    /// The number of an interface; the same one for the same interface always. Thread: any.
    static std::uint32_t numberOf(const std::string &producerFile, const std::string &identifier);

    /// The interface with a number. Thread: any.
    static std::optional<Interface> interfaceOf(std::uint32_t number);
};

/// Identifiers of devices that have no serial number. A producer's device identifiers are its own below one
/// interface only, and nothing else tells such devices apart: the first place where an identifier is met keeps
/// it, every other place gets its beginning and a hash of the place. Thread: any.
class PlacedIdentifiers
{
public:
    /// The identifier for the record; the same one for the same place until its producer is forgotten.
    static std::string of(const std::string &producerFile, const std::string &interfaceId,
                          const std::string &deviceId);

    /// Frees what the devices of a producer hold, because it was let go.
    static void forget(const std::string &producerFile);
};

} // namespace kela::gentl
