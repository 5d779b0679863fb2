// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

class AnswerDeadline;

/// A device-access object for one question to one device. The enumerator's Stop cancels it too.
class CDevicesEnum::TemporaryAccess
{
public:
    /// @param deadline  cancels it too; null when the question may take as long as it takes
    explicit TemporaryAccess(CDevicesEnum &owner, AnswerDeadline *deadline = nullptr);
    ~TemporaryAccess();

    TemporaryAccess(const TemporaryAccess &) = delete;
    TemporaryAccess &operator=(const TemporaryAccess &) = delete;

    KelAIndustryControl &operator*() const { return *m_access; }
    KelAIndustryControl *operator->() const { return m_access.get(); }

private:
    CDevicesEnum &m_owner;
    // Shared: Stop may be cancelling it at the moment when the question is over.
    std::shared_ptr<KelAIndustryControl> m_access;
};
