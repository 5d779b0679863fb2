// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdint>
#include <string>

namespace kela::gentl
{

/// The process's locale at one moment: texts and numbers of the host depend on it.
class SavedLocale
{
public:
    SavedLocale()
        : m_name(current())
    {
    }

    void putBack() const
    {
        if (current() != m_name)
            std::setlocale(LC_ALL, m_name.c_str()); // NOLINT(concurrency-mt-unsafe): undoes a call as unsafe
    }

private:
    static std::string current()
    {
        const char *const name = std::setlocale(LC_ALL, nullptr); // NOLINT(concurrency-mt-unsafe): only asks
        return name ? name : "C";
    }

    const std::string m_name;
};

/// Puts the process's locale back when a producer changed it while it was loaded and initialised.
class LocaleKeeper
{
public:
    LocaleKeeper() = default;
    ~LocaleKeeper() { m_before.putBack(); }
    LocaleKeeper(const LocaleKeeper &) = delete;
    LocaleKeeper &operator=(const LocaleKeeper &) = delete;

private:
    const SavedLocale m_before;
};

/// The same around any other call, where it takes a change for the producer's only when it hardly was anybody
/// else's: no other producer was called meanwhile, and the call was short, so the host had little time for it.
class CallLocaleKeeper
{
public:
    CallLocaleKeeper()
        : m_isFirst(s_inside++ == 0)
        , m_number(++s_calls)
    {
    }
    ~CallLocaleKeeper()
    {
        const bool wasAlone = m_isFirst && m_number == s_calls;
        if (wasAlone && Clock::now() - m_begin < kShort)
            m_before.putBack();
        --s_inside;
    }
    CallLocaleKeeper(const CallLocaleKeeper &) = delete;
    CallLocaleKeeper &operator=(const CallLocaleKeeper &) = delete;

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds kShort{1};
    static inline std::atomic<std::uint64_t> s_calls{0};
    static inline std::atomic<int> s_inside{0};

    const bool m_isFirst;
    const std::uint64_t m_number;
    const SavedLocale m_before;
    const Clock::time_point m_begin = Clock::now();
};

} // namespace kela::gentl
