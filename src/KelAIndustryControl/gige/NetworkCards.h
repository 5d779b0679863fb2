// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kela::gige
{

/// One IPv4 address of a card. Addresses have their first octet in the highest byte.
struct CardAddress {
    std::uint32_t address = 0;
    std::uint32_t mask = 0;
    std::uint32_t broadcast = 0; ///< 0 = none
    std::uint32_t peer = 0;      ///< other end of a point-to-point link, 0 = none

    bool operator==(const CardAddress &other) const
    {
        return address == other.address && mask == other.mask && broadcast == other.broadcast &&
               peer == other.peer;
    }
};

/// A network card that is up and has an IPv4 address.
struct Card {
    unsigned int index = 0; ///< the kernel's interface index
    std::string name;
    bool isLoopback = false;
    bool sharesSubnet = false; ///< another card has an address in one of its subnets
    std::vector<CardAddress> addresses;

    bool owns(std::uint32_t address) const;
};

using Cards = std::vector<Card>;

/// The host's cards by their index, each with its addresses in the system's order. Nothing when the system
/// does not tell.
std::optional<Cards> readCards();

/// Sets Card::sharesSubnet of all.
void markSharedSubnets(Cards &cards);

/// Whether the address is one of this host's own.
bool isOwnAddress(const Cards &cards, std::uint32_t address);

const Card *findCard(const Cards &cards, unsigned int index);

/// The card that has @p address, null when there is none.
const Card *findCardByAddress(const Cards &cards, std::uint32_t address);

/// Whether host and camera take each other for neighbours: the addresses are equal under both masks, or the
/// camera is the other end of a point-to-point link. Never for an address that cannot be one camera's.
bool isNeighbour(const CardAddress &host, std::uint32_t cameraAddress, std::uint32_t cameraMask);

/// The card's address whose subnet the camera is in; null when the camera's subnet does not fit the card.
const CardAddress *fittingAddress(const Card &card, std::uint32_t cameraAddress, std::uint32_t cameraMask);

} // namespace kela::gige
