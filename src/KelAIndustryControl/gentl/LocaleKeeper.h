// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <clocale>
#include <string>

namespace kela::gentl
{

/// Puts the process's locale back when a producer changed it: texts and numbers of the host depend on it.
class LocaleKeeper
{
public:
    LocaleKeeper()
        : m_before(current())
    {
    }
    ~LocaleKeeper()
    {
        if (current() != m_before)
            std::setlocale(LC_ALL, m_before.c_str()); // NOLINT(concurrency-mt-unsafe): undoes a call as unsafe
    }
    LocaleKeeper(const LocaleKeeper &) = delete;
    LocaleKeeper &operator=(const LocaleKeeper &) = delete;

private:
    static std::string current()
    {
        const char *const name = std::setlocale(LC_ALL, nullptr); // NOLINT(concurrency-mt-unsafe): only asks
        return name ? name : "C";
    }

    const std::string m_before;
};

} // namespace kela::gentl
