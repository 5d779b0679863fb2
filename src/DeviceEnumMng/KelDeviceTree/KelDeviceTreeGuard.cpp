// SPDX-License-Identifier: Apache-2.0
#include "KelDeviceTreeGuard.h"

#include "KelDeviceTree_p.h"

KelDeviceTreeGuard::KelDeviceTreeGuard(KelDeviceTree *tree, QTreeWidgetItem *item)
    : m_tree(tree)
    , m_index(KelDeviceTreePrivate::indexOf(tree, item))
{
}

bool KelDeviceTreeGuard::isTreeAlive() const
{
    return m_tree && KelDeviceTreePrivate::of(m_tree);
}

QTreeWidgetItem *KelDeviceTreeGuard::item() const
{
    return isTreeAlive() ? KelDeviceTreePrivate::itemAt(m_tree, m_index) : nullptr;
}
