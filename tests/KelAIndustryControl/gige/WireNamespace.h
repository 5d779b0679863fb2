// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace kelatest
{

/// A second network namespace within this process: what is behind the cards of the test's own namespace.
/// A thread lives in it; threads and programs started from run() live there too.
class WireNamespace
{
public:
    WireNamespace();
    ~WireNamespace();

    WireNamespace(const WireNamespace &) = delete;
    WireNamespace &operator=(const WireNamespace &) = delete;

    /// Runs a function in the namespace and waits for its end.
    void run(const std::function<void()> &function);

    /// Runs a command in the namespace; throws when it fails.
    void shell(const std::string &command);

    /// A pair of cards: @p hostCard here with its addresses ("192.168.50.1/24", more behind commas),
    /// @p wireCard in the namespace; both up.
    void addCard(const std::string &hostCard, const std::string &hostAddresses, const std::string &wireCard);

private:
    void waitForCarrier(const std::string &hostCard, const std::string &wireCard);
    void live();

    std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    std::function<void()> m_task;
    pid_t m_threadId = 0;
    bool m_isEnding = false;
    std::thread m_thread;
};

/// Runs a command in the test's own namespace; throws when it fails.
void hostShell(const std::string &command);

} // namespace kelatest
