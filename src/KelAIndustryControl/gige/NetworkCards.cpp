// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/NetworkCards.h>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

namespace kela::gige
{
namespace
{

std::uint32_t ipv4Of(const sockaddr *address)
{
    if (!address || address->sa_family != AF_INET)
        return 0;
    sockaddr_in ipv4;
    std::memcpy(&ipv4, address, sizeof ipv4);
    return ntohl(ipv4.sin_addr.s_addr);
}

// A label such as "eth0:1" names the same card as "eth0".
std::string cardName(const char *label)
{
    const std::string name(label);
    return name.substr(0, name.find(':'));
}

CardAddress addressOf(const ifaddrs &entry)
{
    CardAddress result;
    result.address = ipv4Of(entry.ifa_addr);
    result.mask = ipv4Of(entry.ifa_netmask);
    if ((entry.ifa_flags & IFF_POINTOPOINT) != 0) {
        result.peer = ipv4Of(entry.ifa_dstaddr);
    } else if ((entry.ifa_flags & IFF_BROADCAST) != 0) {
        result.broadcast = ipv4Of(entry.ifa_broadaddr);
    }
    // An address that was given without its broadcast still has one.
    if (result.broadcast == 0 && result.peer == 0 && result.mask != 0 && result.mask < 0xFFFFFFFE)
        result.broadcast = result.address | ~result.mask;
    if (result.peer == result.address)
        result.peer = 0;
    return result;
}

bool overlap(const Card &one, const Card &other)
{
    const auto isIn = [](const CardAddress &a, const CardAddress &b) {
        return ((a.address ^ b.address) & a.mask & b.mask) == 0;
    };
    return std::any_of(one.addresses.begin(), one.addresses.end(), [&](const CardAddress &a) {
        return std::any_of(other.addresses.begin(), other.addresses.end(),
                           [&](const CardAddress &b) { return isIn(a, b); });
    });
}

} // namespace

bool Card::owns(std::uint32_t address) const
{
    return std::any_of(addresses.begin(), addresses.end(),
                       [address](const CardAddress &entry) { return entry.address == address; });
}

std::optional<Cards> readCards()
{
    ifaddrs *first = nullptr;
    if (::getifaddrs(&first) != 0)
        return std::nullopt;
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> list(first, &::freeifaddrs);

    std::map<unsigned int, Card> byIndex;
    for (const ifaddrs *entry = first; entry; entry = entry->ifa_next) {
        if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_INET || (entry->ifa_flags & IFF_UP) == 0)
            continue;
        const std::string name = cardName(entry->ifa_name);
        const unsigned int index = ::if_nametoindex(name.c_str());
        if (index == 0)
            continue;
        Card &card = byIndex[index];
        card.index = index;
        card.name = name;
        card.isLoopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
        card.addresses.push_back(addressOf(*entry));
    }
    Cards cards;
    for (auto &[index, card] : byIndex)
        cards.push_back(std::move(card));
    markSharedSubnets(cards);
    return cards;
}

void markSharedSubnets(Cards &cards)
{
    for (Card &card : cards) {
        card.sharesSubnet = std::any_of(cards.begin(), cards.end(), [&card](const Card &other) {
            return other.index != card.index && overlap(card, other);
        });
    }
}

bool isOwnAddress(const Cards &cards, std::uint32_t address)
{
    constexpr std::uint32_t kLoopbackNet = 127;
    return address >> 24 == kLoopbackNet || findCardByAddress(cards, address) != nullptr;
}

const Card *findCard(const Cards &cards, unsigned int index)
{
    const auto found =
        std::find_if(cards.begin(), cards.end(), [index](const Card &card) { return card.index == index; });
    return found == cards.end() ? nullptr : &*found;
}

const Card *findCardByAddress(const Cards &cards, std::uint32_t address)
{
    const auto found =
        std::find_if(cards.begin(), cards.end(), [address](const Card &card) { return card.owns(address); });
    return found == cards.end() ? nullptr : &*found;
}

bool isNeighbour(const CardAddress &host, std::uint32_t cameraAddress, std::uint32_t cameraMask)
{
    constexpr std::uint32_t kFirstMulticast = 0xE0000000;
    if (cameraAddress == 0 || cameraAddress >= kFirstMulticast || cameraAddress == host.broadcast ||
        cameraAddress == host.address)
        return false;
    if (host.peer != 0 && host.peer == cameraAddress)
        return true;
    return ((host.address ^ cameraAddress) & (host.mask | cameraMask)) == 0;
}

const CardAddress *fittingAddress(const Card &card, std::uint32_t cameraAddress, std::uint32_t cameraMask)
{
    const auto found =
        std::find_if(card.addresses.begin(), card.addresses.end(),
                     [&](const CardAddress &entry) { return isNeighbour(entry, cameraAddress, cameraMask); });
    return found == card.addresses.end() ? nullptr : &*found;
}

} // namespace kela::gige
