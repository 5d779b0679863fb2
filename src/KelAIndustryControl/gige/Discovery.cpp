// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/Discovery.h>

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/gige/DiscoveryPass.h>
#include <KelAIndustryControl/gige/GigeBackend.h>
#include <KelAIndustryControl/gige/RegisterClient.h>
#include <KelAIndustryControl/gige/ReversePathFilter.h>

#include <algorithm>
#include <atomic>

namespace kela::gige
{
namespace
{

std::atomic<bool> g_areBroadcastAnswersAllowed{true};

} // namespace

void setBroadcastAnswers(bool areAllowed)
{
    g_areBroadcastAnswersAllowed.store(areAllowed);
}

bool areBroadcastAnswersAllowed()
{
    return g_areBroadcastAnswersAllowed.load();
}

unsigned int Discovery::run(std::vector<KELA_DEVICE_INFO_EX> &devices)
{
    const std::lock_guard lock(m_mutex);
    devices.clear();
    if (m_cancel.isSet())
        return KELA_ERROR_CANCELLED;
    if (const unsigned int error = prepare(); error != KELA_OK)
        return error;
    m_table.beginPass(++m_pass, m_cards);
    DiscoveryPass pass({m_cancel, m_cards, m_sockets, m_ids, m_requests, m_table});
    if (const unsigned int error = pass.run(); error != KELA_OK)
        return error;
    m_table.settle();
    logRefused(pass.refusedCount(), pass.refusedExample());
    giveResult(devices);
    return KELA_OK;
}

unsigned int Discovery::prepare()
{
    auto cards = readCards();
    if (!cards)
        return KELA_ERROR_RESOURCE;
    m_cards = std::move(*cards);
    logLostCards();
    logReversePathFilter();
    const int error = m_sockets.refresh(m_cards);
    return error == 0 ? static_cast<unsigned int>(KELA_OK) : errorOfErrno(error);
}

void Discovery::logLostCards()
{
    for (const auto &[index, name] : m_cardNames) {
        const auto &cameras = m_table.cameras();
        const auto lost = std::count_if(cameras.begin(), cameras.end(), [index = index](const auto &entry) {
            return entry.second.chosenCard == index;
        });
        if (!findCard(m_cards, index) && lost > 0) {
            logLine(KELA_LOG_WARNING, "gige: network card " + name + " is down, and with it " +
                                          std::to_string(lost) + (lost == 1 ? " camera" : " cameras"));
        }
    }
    m_cardNames.clear();
    for (const Card &card : m_cards)
        m_cardNames[card.index] = card.name;
}

void Discovery::logReversePathFilter()
{
    std::string filtering = filteringCards(m_cards);
    if (filtering == m_filtering)
        return;
    m_filtering = std::move(filtering);
    if (m_filtering.empty()) {
        logLine(KELA_LOG_INFO, "gige: reverse-path filtering no longer hides cameras of foreign subnets");
    } else {
        logLine(KELA_LOG_WARNING,
                "gige: reverse-path filtering (rp_filter) hides cameras of foreign subnets behind " +
                    m_filtering);
    }
}

void Discovery::logRefused(std::size_t refused, const std::string &example)
{
    const bool isRefusing = refused != 0;
    if (isRefusing && !m_wasRefusing) {
        logLine(KELA_LOG_WARNING, "gige: refused " + example +
                                      (refused > 1 ? ", and " + std::to_string(refused - 1) + " more" : ""));
    }
    m_wasRefusing = isRefusing;
}

void Discovery::giveResult(std::vector<KELA_DEVICE_INFO_EX> &devices)
{
    AccessBook::Entries entries;
    for (const auto &[key, camera] : m_table.cameras()) {
        const Sighting *chosen = camera.chosen();
        if (!chosen)
            continue;
        KELA_DEVICE_INFO_EX info = recordOf(chosen->answer, chosen->hostAddress, chosen->cardIndex == 0);
        if (camera.access.isHeld())
            info.special.gige.primaryApplicationIp = camera.access.holder;
        devices.push_back(info);
        entries[key] = {camera.access, chosen->answer.currentIp, chosen->cardIndex};
    }
    rememberCards(entries);
    m_book.replace(std::move(entries), Clock::now());
}

} // namespace kela::gige
