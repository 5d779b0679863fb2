// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Log.h>

#include <cstdint>
#include <map>
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
    /// @param subject  whose records they are; each subject's number is its own
    template <std::size_t Limit>
    void give(std::vector<Record> &&records, Record *(&list)[Limit], std::uint32_t &count,
              const std::string &subject)
    {
        const std::size_t leftOut = records.size() > Limit ? records.size() - Limit : 0;
        noteLeftOut(subject, Limit, leftOut);
        records.resize(records.size() - leftOut);
        m_records = std::move(records);
        count = static_cast<std::uint32_t>(m_records.size());
        for (std::size_t i = 0; i < m_records.size(); ++i)
            list[i] = &m_records[i];
    }

private:
    void noteLeftOut(const std::string &subject, std::size_t limit, std::size_t leftOut)
    {
        if (!leftOut) {
            m_leftOut.erase(subject);
        } else if (std::exchange(m_leftOut[subject], leftOut) != leftOut) {
            logLine(KELA_LOG_WARNING, subject + ": a list holds " + std::to_string(limit) +
                                          ", left out: " + std::to_string(leftOut));
        }
    }

    std::vector<Record> m_records;
    std::map<std::string, std::size_t> m_leftOut; // by subject
};

} // namespace kela
