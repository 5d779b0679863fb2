// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gige/AccessBook.h>
#include <KelAIndustryControl/gige/CameraTable.h>
#include <KelAIndustryControl/gige/DiscoverySockets.h>
#include <KelAIndustryControl/gige/GvcpTransaction.h>
#include <KelAIndustryControl/gige/RecentRequests.h>

#include <KelAIndustryControl/KelARecords.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace kela::gige
{

/// Finds the cameras on all cards at once, pass after pass, and remembers between them what it needs to
/// tell a silent camera from a gone one.
class Discovery
{
public:
    /// @param cancel  outlives the object
    /// @param book    receives who holds which camera
    Discovery(const CancelSignal &cancel, AccessBook &book)
        : m_cancel(cancel)
        , m_book(book)
    {
    }

    /// One pass. Thread: one at a time.
    unsigned int run(std::vector<KELA_DEVICE_INFO_EX> &devices);

private:
    unsigned int prepare();
    void logLostCards();
    void logReversePathFilter();
    void logRefused(std::size_t refused, const std::string &example);
    void giveResult(std::vector<KELA_DEVICE_INFO_EX> &devices);

    const CancelSignal &m_cancel;
    AccessBook &m_book;
    std::mutex m_mutex; // guards all below: a pass at a time
    Cards m_cards;
    std::map<unsigned int, std::string> m_cardNames; ///< of the pass before
    DiscoverySockets m_sockets;
    RequestIds m_ids;
    RecentRequests m_requests;
    CameraTable m_table;
    std::uint64_t m_pass = 0;
    std::string m_filtering;    ///< cards with reverse-path filtering, as it was logged last
    bool m_wasRefusing = false; ///< datagrams were refused in the pass before
};

/// As setBroadcastAnswers() left it.
bool areBroadcastAnswersAllowed();

} // namespace kela::gige
