// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TreeFixture.h"
#include "TreeTestKit.h"

#include <QObject>

#include <memory>

/// Gives every test a tree of its own, over a script that starts empty.
class TreeTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    virtual void init();
    virtual void cleanup();

protected:
    QTreeWidgetItem *gige() { return m_tree->findItem(KelDeviceTree::ItemGigERoot, -1); }
    QTreeWidgetItem *usb() { return m_tree->findItem(KelDeviceTree::ItemUSBRoot, -1); }
    QTreeWidgetItem *genTL() { return m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1); }
    KelDeviceTreePrivate &inside() { return privateOf(*m_tree); }
    /// Adds a group as a host does: the tree itself makes none of this kind.
    QTreeWidgetItem *addHostsGroup(KelDeviceTree::ItemType type);

    std::unique_ptr<KelDeviceTree> m_tree;
};
