// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QTreeWidgetItem>
#include <QVariant>

#include <cstring>

/// True when both values hold a record of one kind with the same bytes.
template <typename Record>
bool holdSameRecord(const QVariant &left, const QVariant &right)
{
    const int type = qMetaTypeId<Record>();
    return left.userType() == type && right.userType() == type &&
           std::memcmp(left.constData(), right.constData(), sizeof(Record)) == 0;
}

/// Stores a record in an item as it came. A record that is there already is left alone: to a view every
/// write is a change, and QVariant takes two equal records for different.
template <typename Record>
void setItemRecord(QTreeWidgetItem *item, const QVariant &record)
{
    if (!holdSameRecord<Record>(item->data(0, KelDeviceTree::ItemInfoRole), record)) {
        item->setData(0, KelDeviceTree::ItemInfoRole, record);
    }
}
