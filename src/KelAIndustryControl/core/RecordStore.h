// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Log.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kela
{

/// Keeps the records that a list given to the caller points to, until the next list of the same kind.
/// Thread: one at a time.
template <typename Record>
class RecordStore
{
public:
    /// Points the list at as many of the records as it holds. The rest is left out; their number is
    /// logged when it changes.
    template <std::size_t Limit>
    void give(std::vector<Record> &&records, Record *(&list)[Limit], std::uint32_t &count, const char *kind)
    {
        const std::size_t leftOut = records.size() > Limit ? records.size() - Limit : 0;
        if (leftOut != m_leftOut && leftOut) {
            logLine(KELA_LOG_WARNING, std::string(kind) + ": a list holds " + std::to_string(Limit) +
                                          ", left out: " + std::to_string(leftOut));
        }
        m_leftOut = leftOut;
        records.resize(records.size() - leftOut);
        m_records = std::move(records);
        count = static_cast<std::uint32_t>(m_records.size());
        for (std::size_t i = 0; i < m_records.size(); ++i)
            list[i] = &m_records[i];
    }

private:
    std::vector<Record> m_records;
    std::size_t m_leftOut = 0;
};

} // namespace kela
