// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gige/AccessProbe.h>
#include <KelAIndustryControl/gige/CameraTable.h>
#include <KelAIndustryControl/gige/DiscoverySockets.h>
#include <KelAIndustryControl/gige/GvcpTransaction.h>

#include <map>
#include <optional>

namespace kela::gige
{

/// Reads who holds each camera, all cameras at once, over the sockets of the discovery.
/// Thread: the one that enumerates.
class ProbeRunner
{
public:
    ProbeRunner(DiscoverySockets &sockets, RequestIds &ids)
        : m_sockets(sockets)
        , m_ids(ids)
    {
    }

    /// Starts to read a camera's registers; a run under way by another address is started anew.
    void start(const CameraKey &key, const Sighting &sighting, std::optional<std::uint32_t> capability,
               TimePoint now);

    /// Sends what is due and gives up what has waited long enough.
    void drive(TimePoint now);

    /// @return the camera whose registers answered, null when the acknowledge was for none
    const CameraKey *offer(std::uint32_t sender, const Acknowledge &acknowledge, TimePoint now);

    bool isBusy() const;
    TimePoint nextEvent() const;

    /// Takes what is not answered yet as silence.
    void giveUp();

    /// What was found; null when the camera was not asked.
    const AccessProbe *find(const CameraKey &key) const;

private:
    struct Run {
        std::uint32_t address = 0;
        Path path;
        AccessProbe probe;
        std::optional<GvcpTransaction> transaction; ///< none when all is read
    };

    void next(Run &run, TimePoint now);
    void finishTransaction(Run &run, TimePoint now);

    DiscoverySockets &m_sockets;
    RequestIds &m_ids;
    std::map<CameraKey, Run> m_runs;
    std::multimap<std::uint32_t, const CameraKey *> m_byAddress; ///< keys of m_runs
};

} // namespace kela::gige
