// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gige/CameraTable.h>
#include <KelAIndustryControl/gige/DiscoverySockets.h>
#include <KelAIndustryControl/gige/DiscoveryWindow.h>
#include <KelAIndustryControl/gige/ProbeRunner.h>
#include <KelAIndustryControl/gige/RecentRequests.h>

#include <cstddef>
#include <string>

namespace kela::gige
{

/// One pass of the discovery: asks, listens, and reads who holds what it hears, all on one poll loop.
class DiscoveryPass
{
public:
    struct Tools {
        const CancelSignal &cancel;
        const Cards &cards;
        DiscoverySockets &sockets;
        RequestIds &ids;
        RecentRequests &requests;
        CameraTable &table; ///< its pass has begun
    };

    explicit DiscoveryPass(const Tools &tools);

    /// @return 0, or KELA_ERROR_CANCELLED
    unsigned int run();

    /// Datagrams that were no answer to us.
    std::size_t refusedCount() const { return m_refused; }

    /// What was wrong with the first of them.
    const std::string &refusedExample() const { return m_refusedExample; }

private:
    void receive();
    void onDatagram(const Arrival &arrival, const Card *card);
    void onDiscoveryAnswer(const Arrival &arrival, const Acknowledge &acknowledge, const Card *card);
    void onRegisterAnswer(const Arrival &arrival, const Acknowledge &acknowledge);
    void refuse(const Arrival &arrival, const char *reason);
    void ask(TimePoint now);
    void askSilentOnes(TimePoint now);
    bool isSomebodyAwaited() const;
    bool isOver(TimePoint now);
    TimePoint nextEvent() const;
    void takeProbes();

    Tools m_tools;
    Datagram m_command;
    DiscoveryWindow m_window;
    ProbeRunner m_probes;
    bool m_isListening = true;
    std::size_t m_refused = 0;
    std::string m_refusedExample;
};

} // namespace kela::gige
