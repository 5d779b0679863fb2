// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ForceIpPlan.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QObject>
#include <QThreadPool>

namespace browser
{

/// Single talks with devices that are not held, off the GUI thread. Thread: GUI.
class DeviceTasks : public QObject
{
    Q_OBJECT

public:
    explicit DeviceTasks(QObject *parent = nullptr);
    /// Waits for the talk under way.
    ~DeviceTasks() override;

    /// Assigns a camera an address until it is switched off.
    void assignAddress(const KELA_STRUCT_DEVICE_INFO &device, const TemporaryAddress &address);

Q_SIGNALS:
    void addressAssigned(long id, uint errorCode);

private:
    QThreadPool m_pool;
};

} // namespace browser
