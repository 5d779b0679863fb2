// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

/// The log lines of the device access while it lives.
class LogLines
{
public:
    LogLines() { KelAIndustryControl::SetLogSink(&LogLines::take, this); }
    ~LogLines() { KelAIndustryControl::SetLogSink(nullptr, nullptr); }

    int count(const std::string &part)
    {
        const std::lock_guard lock(m_mutex);
        int found = 0;
        for (const std::string &line : m_lines)
            found += line.find(part) != std::string::npos ? 1 : 0;
        return found;
    }

private:
    static void take(KELA_LOG_LEVEL, const char *text, void *user)
    {
        auto *self = static_cast<LogLines *>(user);
        const std::lock_guard lock(self->m_mutex);
        self->m_lines.emplace_back(text);
    }

    std::mutex m_mutex;
    std::vector<std::string> m_lines;
};

/// A simulated serial library of the running test's own. A file is loaded once in a process and keeps what
/// it found, so each test copies it; its ports are described beside it.
class SimulatedLibrary
{
public:
    /// @param original  the library as it was built
    explicit SimulatedLibrary(const std::string &original)
    {
        const std::string folder = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe)
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        static int number = 0;
        m_file = folder + "/clser" + test->name() + std::to_string(++number) + ".so";
        std::ifstream from(original, std::ios::binary);
        std::ofstream(m_file, std::ios::binary) << from.rdbuf();
        describe("");
    }

    const std::string &file() const { return m_file; }

    void describe(const std::string &ports) const { std::ofstream(m_file + ".ports") << ports; }

    /// Bytes that went over its lines until now, in both directions.
    std::uint64_t bytesOnLines() const
    {
        void *handle = ::dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL);
        void *symbol = handle ? ::dlsym(handle, "simBytesOnLines") : nullptr;
        EXPECT_NE(symbol, nullptr);
        if (!symbol)
            return 0;
        std::uint64_t (*ask)() = nullptr;
        std::memcpy(&ask, &symbol, sizeof(symbol));
        return ask();
    }

private:
    std::string m_file;
};
