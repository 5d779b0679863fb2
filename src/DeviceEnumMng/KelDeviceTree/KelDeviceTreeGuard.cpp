// SPDX-License-Identifier: Apache-2.0
#include "KelDeviceTreeGuard.h"

#include "KelDeviceTree_p.h"

#include <QTreeWidgetItem>

KelDeviceTreeGuard::KelDeviceTreeGuard(KelDeviceTree *tree, QTreeWidgetItem *item)
    : m_tree(tree)
    , m_index(KelDeviceTreePrivate::indexOf(tree, item))
    , m_loose(item && item->treeWidget() != tree ? item : nullptr)
{
}

bool KelDeviceTreeGuard::isTreeAlive() const
{
    return m_tree && KelDeviceTreePrivate::of(m_tree);
}

QTreeWidgetItem *KelDeviceTreeGuard::item() const
{
    if (!isTreeAlive()) {
        return nullptr;
    }
    return m_loose ? m_loose : KelDeviceTreePrivate::itemAt(m_tree, m_index);
}

bool KelDeviceTreeGuard::write(int role, const QVariant &value) const
{
    if (QTreeWidgetItem *row = item()) {
        row->setData(0, role, value);
    }
    return item() != nullptr;
}
