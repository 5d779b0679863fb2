// SPDX-License-Identifier: Apache-2.0
#include "DeviceTasks.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QtConcurrent>

namespace browser
{

DeviceTasks::DeviceTasks(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

DeviceTasks::~DeviceTasks()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void DeviceTasks::assignAddress(const KELA_STRUCT_DEVICE_INFO &device, const TemporaryAddress &address)
{
    // The signal leaves the pool's thread and reaches its receivers through their event loop.
    QtConcurrent::run(&m_pool, [this, device, address] {
        KelAIndustryControl access;
        const uint code = access.ForceIp(&device.deviceInfo, address.address, address.mask, address.gateway);
        Q_EMIT addressAssigned(device.deviceId, code);
    });
}

} // namespace browser
