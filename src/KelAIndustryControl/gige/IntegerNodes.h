// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kela::gige
{

/// An integer feature by its standard name, as the bootstrap registers hold it.
struct IntegerNode {
    std::string_view name;
    std::uint32_t address;
    unsigned int shift = 0;  ///< of its lowest bit in the register
    unsigned int width = 32; ///< bits
    std::int64_t minimum = 0;
    std::int64_t increment = 1;
    std::optional<unsigned int> capabilityBit = std::nullopt; ///< of the control protocol; needed to exist

    bool spansTwoRegisters() const { return width > 32; }
    std::int64_t maximum() const;
    std::int64_t valueIn(std::uint64_t registers) const;
};

/// Null for an unknown name.
const IntegerNode *findIntegerNode(std::string_view name);

} // namespace kela::gige
