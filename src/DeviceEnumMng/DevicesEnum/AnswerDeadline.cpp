// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/AnswerDeadline.h>

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <system_error>

AnswerDeadline::AnswerDeadline(std::chrono::milliseconds limit)
{
    try {
        m_watch = std::thread(&AnswerDeadline::watch, this, limit);
    } catch (const std::system_error &) {
        // Nobody can watch the time, so there is none.
        m_hasPassed = true;
    }
}

AnswerDeadline::~AnswerDeadline()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isDone = true;
    }
    m_changed.notify_one();
    if (m_watch.joinable()) {
        m_watch.join();
    }
}

void AnswerDeadline::add(const std::shared_ptr<KelAIndustryControl> &access)
{
    bool isTooLate = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_accesses.push_back(access);
        isTooLate = m_hasPassed;
    }
    if (isTooLate) {
        access->CancelEnum();
    }
}

void AnswerDeadline::watch(std::chrono::milliseconds limit)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_changed.wait_for(lock, limit, [this] { return m_isDone; })) {
            return;
        }
        m_hasPassed = true;
    }
    cancelAll();
}

void AnswerDeadline::cancelAll()
{
    std::vector<std::weak_ptr<KelAIndustryControl>> accesses;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        accesses = m_accesses;
    }
    for (const std::weak_ptr<KelAIndustryControl> &known : accesses) {
        if (const std::shared_ptr<KelAIndustryControl> access = known.lock()) {
            access->CancelEnum();
        }
    }
}
