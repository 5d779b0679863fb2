// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/FoundDevices.h>

#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>

#include <algorithm>

bool FoundDevices::contains(const KELA_DEVICE_INFO_EX &device) const
{
    const auto candidates = m_indexByHash.equal_range(sameDeviceHash(device));
    return std::any_of(candidates.first, candidates.second, [this, &device](const auto &candidate) {
        return isSameDevice(m_records[candidate.second].deviceInfo, device);
    });
}

KELA_STRUCT_DEVICE_INFO &FoundDevices::append(const KELA_DEVICE_INFO_EX &device, uint32_t transport)
{
    KELA_STRUCT_DEVICE_INFO &record = m_records.emplace_back();
    record.deviceInfo = device;
    record.deviceInfo.transport = transport;
    m_indexByHash.emplace(sameDeviceHash(record.deviceInfo), m_records.size() - 1);
    return record;
}

void FoundDevices::append(const KELA_STRUCT_DEVICE_INFO &record)
{
    m_records.push_back(record);
    m_indexByHash.emplace(sameDeviceHash(record.deviceInfo), m_records.size() - 1);
}

void FoundDevices::reserve(std::size_t count)
{
    m_records.reserve(m_records.size() + count);
    m_indexByHash.reserve(m_records.size() + count);
}
