// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

/// The devices that one pass found, in the order of finding. Knows without walking the list whether it
/// holds a device already.
class FoundDevices
{
public:
    /// True when a device of the list and this one are the same (isSameDevice).
    bool contains(const KELA_DEVICE_INFO_EX &device) const;

    /// Appends a record that is zero but for the device's description, with @p transport in it.
    /// @return the record, valid until the next one is appended
    KELA_STRUCT_DEVICE_INFO &append(const KELA_DEVICE_INFO_EX &device, uint32_t transport);

    /// Appends a whole record.
    void append(const KELA_STRUCT_DEVICE_INFO &record);

    /// Makes room for as many more records.
    void reserve(std::size_t count);

    std::vector<KELA_STRUCT_DEVICE_INFO>::iterator begin() { return m_records.begin(); }
    std::vector<KELA_STRUCT_DEVICE_INFO>::iterator end() { return m_records.end(); }

private:
    std::vector<KELA_STRUCT_DEVICE_INFO> m_records;
    std::unordered_multimap<std::size_t, std::size_t> m_indexByHash;
};
