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
    /// @param item  null, or an item of the tree
    explicit KelDeviceTreeGuard(KelDeviceTree *tree, QTreeWidgetItem *item = nullptr);

    /// The tree; null when it is gone.
    KelDeviceTree *tree() const { return m_tree; }
    /// True while the tree has its private part.
    bool isTreeAlive() const;
    /// The item; null when it or the tree is gone.
    QTreeWidgetItem *item() const;

private:
    QPointer<KelDeviceTree> m_tree;
    QPersistentModelIndex m_index;
};
