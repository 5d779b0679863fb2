// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/TemporaryAccess.h>

#include <DeviceEnumMng/DevicesEnum/AnswerDeadline.h>

#include <algorithm>

CDevicesEnum::TemporaryAccess::TemporaryAccess(CDevicesEnum &owner, AnswerDeadline *deadline)
    : m_owner(owner)
    , m_access(std::make_shared<KelAIndustryControl>())
{
    bool isTooLate = false;
    {
        const std::lock_guard<std::mutex> lock(m_owner.m_mutex);
        m_owner.m_temporaryAccesses.push_back(m_access);
        isTooLate = m_owner.m_stopped;
    }
    if (isTooLate) {
        m_access->CancelEnum();
    }
    if (deadline != nullptr) {
        deadline->add(m_access);
    }
}

CDevicesEnum::TemporaryAccess::~TemporaryAccess()
{
    const std::lock_guard<std::mutex> lock(m_owner.m_mutex);
    std::vector<std::shared_ptr<KelAIndustryControl>> &accesses = m_owner.m_temporaryAccesses;
    accesses.erase(std::find(accesses.begin(), accesses.end(), m_access));
}
