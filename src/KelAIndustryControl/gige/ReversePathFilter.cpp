// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/ReversePathFilter.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace kela::gige
{
namespace
{

constexpr int kStrict = 1;
constexpr int kLoose = 2;

int filterValue(const std::string &name)
{
    std::ifstream file("/proc/sys/net/ipv4/conf/" + name + "/rp_filter");
    int value = 0;
    file >> value; // 0 when the file is not there
    return value;
}

std::string fileText(const char *path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

std::string filteringCards(const Cards &cards)
{
    // The kernel takes the larger of the value for all cards and the card's own.
    const int forAll = filterValue("all");
    const bool isRouted = hasDefaultRoute(fileText("/proc/thread-self/net/route"));
    std::string text;
    for (const Card &card : cards) {
        const int value = card.isLoopback ? 0 : std::max(forAll, filterValue(card.name));
        const bool isDropping = value == kStrict || (value == kLoose && !isRouted);
        if (!isDropping)
            continue;
        text += (text.empty() ? "" : ", ") + card.name;
        text += value == kStrict ? " (strict)" : " (loose, and no default route)";
    }
    return text;
}

bool hasDefaultRoute(const std::string &table)
{
    std::istringstream lines(table);
    std::string line;
    std::getline(lines, line); // the headings
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string card;
        std::string destination;
        std::string gateway;
        std::string flags;
        std::string unused;
        std::string mask;
        fields >> card >> destination >> gateway >> flags >> unused >> unused >> unused >> mask;
        if (destination == "00000000" && mask == "00000000")
            return true;
    }
    return false;
}

} // namespace kela::gige
