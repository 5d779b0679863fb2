// SPDX-License-Identifier: Apache-2.0
#include "AddressKeeper.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>

#include <cstdio>
#include <cstring>
#include <fstream>

namespace kelsim
{

namespace
{

std::string addressArguments(const std::string &card, const CameraPlace &place)
{
    return addressText(place.address) + "/" + std::to_string(prefixLength(place.mask)) + " dev " + card;
}

// One run of the tool for any number of addresses; what it complains about is left to the socket that cannot
// be bound afterwards.
bool runBatch(const std::string &commands)
{
    FILE *const tool = popen("PATH=$PATH:/usr/sbin:/sbin ip -force -batch - 2>/dev/null", "we");
    if (tool == nullptr) {
        return false;
    }
    const bool isWritten = std::fwrite(commands.data(), 1, commands.size(), tool) == commands.size();
    return pclose(tool) != 127 * 256 && isWritten;
}

// Else the first address of a subnet would take the others with it when it goes.
void keepOtherAddresses(const std::string &card)
{
    std::ofstream("/proc/sys/net/ipv4/conf/" + card + "/promote_secondaries") << "1\n";
}

} // namespace

std::set<uint32_t> hostAddresses()
{
    std::set<uint32_t> addresses;
    ifaddrs *list = nullptr;
    if (getifaddrs(&list) != 0) {
        return addresses;
    }
    for (const ifaddrs *entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET) {
            sockaddr_in address{};
            std::memcpy(&address, entry->ifa_addr, sizeof address);
            addresses.insert(ntohl(address.sin_addr.s_addr));
        }
    }
    freeifaddrs(list);
    return addresses;
}

bool AddressKeeper::add(const std::vector<std::pair<std::string, CameraPlace>> &places)
{
    const std::set<uint32_t> present = hostAddresses();
    std::string commands;
    for (const auto &[card, place] : places) {
        const std::string arguments = addressArguments(card, place);
        if (present.count(place.address) == 0 && m_given.insert(arguments).second) {
            keepOtherAddresses(card);
            commands += "addr add " + arguments + " brd +\n";
        }
    }
    return commands.empty() || runBatch(commands);
}

void AddressKeeper::remove(const std::string &card, const CameraPlace &place)
{
    const std::string arguments = addressArguments(card, place);
    if (m_given.erase(arguments) != 0) {
        runBatch("addr del " + arguments + "\n");
    }
}

AddressKeeper::~AddressKeeper()
{
    std::string commands;
    for (const std::string &arguments : m_given) {
        commands += "addr del " + arguments + "\n";
    }
    if (!commands.empty()) {
        runBatch(commands);
    }
}

} // namespace kelsim
