// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "KelDeviceTreeGuard.h"

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QTreeWidgetItem>
#include <QVariant>

#include <cstring>
#include <memory>

/// The record that a value holds, without copying it; null for a value of another kind. Lives as long as the
/// value.
template <typename Record>
const Record *recordIn(const QVariant &value)
{
    return value.userType() == qMetaTypeId<Record>() ? static_cast<const Record *>(value.constData()) : nullptr;
}

/// The record of an event: the one that the value holds, or an all-zero one for a value of another kind.
template <typename Record>
class RecordView
{
public:
    /// @param value  kept as long as the view
    explicit RecordView(const QVariant &value)
        : m_value(value)
        , m_record(recordIn<Record>(m_value))
    {
        if (!m_record) {
            m_converted = std::make_unique<Record>(m_value.value<Record>());
            m_record = m_converted.get();
        }
    }
    const Record &operator*() const { return *m_record; }

private:
    const QVariant m_value;
    std::unique_ptr<Record> m_converted;
    const Record *m_record;
};

/// True when a value holds this record, byte for byte.
template <typename Record>
bool holdsRecord(const QVariant &value, const Record &record)
{
    const Record *held = recordIn<Record>(value);
    return held && std::memcmp(held, &record, sizeof record) == 0;
}

/// Stores a record in an item as it came. A record that is there already is left alone: to a view every
/// write is a change, and QVariant takes two equal records for different.
/// @return true when the item is still there afterwards
template <typename Record>
bool setItemRecord(const KelDeviceTreeGuard &guard, const QVariant &value)
{
    const QTreeWidgetItem *item = guard.item();
    if (!item) {
        return false;
    }
    const Record *record = recordIn<Record>(value);
    const bool isThere = record && holdsRecord(item->data(0, KelDeviceTree::ItemInfoRole), *record);
    return isThere || guard.write(KelDeviceTree::ItemInfoRole, value);
}
