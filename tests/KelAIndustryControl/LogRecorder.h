// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace kelatest
{

/// Collects the log lines of the device access while it lives.
class LogRecorder
{
public:
    LogRecorder() { KelAIndustryControl::SetLogSink(&LogRecorder::take, this); }
    ~LogRecorder() { KelAIndustryControl::SetLogSink(nullptr, nullptr); }

    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    /// Lines that hold @p part.
    long count(const std::string &part)
    {
        const std::lock_guard lock(m_mutex);
        return std::count_if(m_lines.begin(), m_lines.end(),
                             [&](const std::string &line) { return line.find(part) != std::string::npos; });
    }

    std::string all()
    {
        const std::lock_guard lock(m_mutex);
        std::string text;
        for (const std::string &line : m_lines)
            text += line + "\n";
        return text;
    }

private:
    static void take(KELA_LOG_LEVEL, const char *text, void *user)
    {
        auto *self = static_cast<LogRecorder *>(user);
        const std::lock_guard lock(self->m_mutex);
        self->m_lines.emplace_back(text);
    }

    std::mutex m_mutex; // guards m_lines
    std::vector<std::string> m_lines;
};

} // namespace kelatest
