// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraSettings.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kelsim
{

/// Gives cards the addresses of the cameras on them, and takes back what it gave.
class AddressKeeper
{
public:
    AddressKeeper() = default;
    ~AddressKeeper();

    AddressKeeper(const AddressKeeper &) = delete;
    AddressKeeper &operator=(const AddressKeeper &) = delete;

    /// Adds the address of each place to its card; one that is there already stays as it is.
    /// @return false when the system's tool could not be run at all
    bool add(const std::vector<std::pair<std::string, CameraPlace>> &places);

    /// Removes an address that add() gave.
    void remove(const std::string &card, const CameraPlace &place);

private:
    std::set<std::string> m_given; ///< "ADDRESS/LENGTH dev CARD"
};

/// Addresses that the host's cards have now.
std::set<uint32_t> hostAddresses();

} // namespace kelsim
