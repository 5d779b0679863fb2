// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class KelAIndustryControl;

/// A moment after which nobody waits for a device any more: the device accesses that it was given are then
/// cancelled, for good, and those that come later at once.
class AnswerDeadline
{
public:
    explicit AnswerDeadline(std::chrono::milliseconds limit);
    ~AnswerDeadline();

    AnswerDeadline(const AnswerDeadline &) = delete;
    AnswerDeadline &operator=(const AnswerDeadline &) = delete;

    void add(const std::shared_ptr<KelAIndustryControl> &access);

private:
    void watch(std::chrono::milliseconds limit);
    void cancelAll();

    std::mutex m_mutex; // guards everything below but the thread
    std::condition_variable m_changed;
    bool m_isDone = false;
    bool m_hasPassed = false;
    std::vector<std::weak_ptr<KelAIndustryControl>> m_accesses;
    std::thread m_watch;
};
