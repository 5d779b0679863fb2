// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <optional>

namespace kela::gige
{

/// The request ids of the discoveries to which an answer may still come: those of the last two passes and
/// of all passes of the last seconds, since a camera may take its time.
class RecentRequests
{
public:
    void add(std::uint16_t requestId, std::uint64_t pass, TimePoint now)
    {
        constexpr std::size_t kAlwaysKept = 2;
        constexpr Milliseconds kKept{5000};
        m_requests.push_back({requestId, pass, now});
        while (m_requests.size() > kAlwaysKept && now - m_requests.front().sent > kKept)
            m_requests.pop_front();
    }

    /// The pass that sent the request; nothing for an unknown one.
    std::optional<std::uint64_t> passOf(std::uint16_t requestId) const
    {
        const auto found =
            std::find_if(m_requests.rbegin(), m_requests.rend(),
                         [requestId](const Request &request) { return request.id == requestId; });
        if (found == m_requests.rend())
            return std::nullopt;
        return found->pass;
    }

private:
    struct Request {
        std::uint16_t id;
        std::uint64_t pass;
        TimePoint sent;
    };
    std::deque<Request> m_requests;
};

} // namespace kela::gige
