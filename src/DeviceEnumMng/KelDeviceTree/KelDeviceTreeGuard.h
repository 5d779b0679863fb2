// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QPersistentModelIndex>
#include <QPointer>

/// Tells after a signal whether the tree and one of its items are still there: a slot of the host may have
/// removed either. Thread: GUI.
class KelDeviceTreeGuard
{
public:
    /// @param item  null, or an item. One that stands in no tree is taken as it is: nobody is told of it.
    explicit KelDeviceTreeGuard(KelDeviceTree *tree, QTreeWidgetItem *item = nullptr);

    /// The tree; null when it is gone.
    KelDeviceTree *tree() const { return m_tree; }
    /// True while the tree has its private part.
    bool isTreeAlive() const;
    /// The item; null when it or the tree is gone.
    QTreeWidgetItem *item() const;
    /// Writes a role of the item, which tells everybody who listens to the tree.
    /// @return true when the item is still there afterwards
    bool write(int role, const QVariant &value) const;

private:
    QPointer<KelDeviceTree> m_tree;
    QPersistentModelIndex m_index;
    QTreeWidgetItem *m_loose;
};
