// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <ScriptedAccess.h>

void TreeTest::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
}

void TreeTest::cleanup()
{
    m_tree.reset();
}

QTreeWidgetItem *TreeTest::addHostsGroup(KelDeviceTree::ItemType type)
{
    auto *group = new QTreeWidgetItem(m_tree.get());
    group->setData(0, KelDeviceTree::ItemTypeRole, type);
    group->setData(0, KelDeviceTree::ItemIdRole, -1);
    return group;
}
