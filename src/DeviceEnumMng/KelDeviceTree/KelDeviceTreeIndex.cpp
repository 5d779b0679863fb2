// SPDX-License-Identifier: Apache-2.0
#include "KelDeviceTreeIndex.h"

#include "KelDeviceLabels.h"

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QAbstractItemModel>
#include <QTreeWidget>

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

bool isBelow(const QTreeWidgetItem *item, const QTreeWidgetItem *ancestor, const QTreeWidgetItem *root)
{
    if (ancestor == root) {
        return true;
    }
    for (const QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent()) {
        if (parent == ancestor) {
            return true;
        }
    }
    return false;
}

// A top-level item has no parent item: the invisible root stands for it.
const QTreeWidgetItem *parentOf(const QTreeWidgetItem *item, const QTreeWidgetItem *root)
{
    const QTreeWidgetItem *parent = item->parent();
    return parent ? parent : root;
}

int cameraTypeBelow(int topLevelType)
{
    switch (topLevelType) {
    case KelDeviceTree::ItemCamLinkRoot:
        return KelDeviceTree::ItemCamLinkCamera;
    case KelDeviceTree::ItemGenTLRoot:
        return KelDeviceTree::ItemGenTLDevice;
    case KelDeviceTree::ItemUSBRoot:
        return KelDeviceTree::ItemUSBCamera;
    default:
        return KelDeviceTree::ItemGigECamera;
    }
}

// The walk below an item that stands in no tree, which the index does not follow.
QTreeWidgetItem *walk(const QTreeWidgetItem *parent, int itemType, int id)
{
    for (int row = 0; row < parent->childCount(); ++row) {
        QTreeWidgetItem *child = parent->child(row);
        if (child->data(0, KelDeviceTree::ItemTypeRole).toInt() == itemType &&
            child->data(0, KelDeviceTree::ItemIdRole).toInt() == id) {
            return child;
        }
        if (QTreeWidgetItem *found = walk(child, itemType, id)) {
            return found;
        }
    }
    return nullptr;
}

bool concernsLookUps(const QVector<int> &roles)
{
    return roles.isEmpty() || roles.contains(KelDeviceTree::ItemTypeRole) ||
           roles.contains(KelDeviceTree::ItemIdRole) || roles.contains(KelDeviceTree::ItemInfoRole);
}

} // namespace

bool KelDeviceTreeIndex::Entry::operator==(const Entry &other) const
{
    return type == other.type && id == other.id && number == other.number && recordId == other.recordId &&
           key == other.key;
}

KelDeviceTreeIndex::KelDeviceTreeIndex(QTreeWidget *tree)
    : m_tree(tree)
{
    const QAbstractItemModel *model = tree->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &KelDeviceTreeIndex::onRowsInserted);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &KelDeviceTreeIndex::onRowsAboutToBeRemoved);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &KelDeviceTreeIndex::onOrderChanged);
    connect(model, &QAbstractItemModel::rowsMoved, this, &KelDeviceTreeIndex::onOrderChanged);
    connect(model, &QAbstractItemModel::layoutChanged, this, &KelDeviceTreeIndex::onOrderChanged);
    connect(model, &QAbstractItemModel::dataChanged, this, &KelDeviceTreeIndex::onDataChanged);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &KelDeviceTreeIndex::clear);
    connect(model, &QAbstractItemModel::modelReset, this, &KelDeviceTreeIndex::onModelReset);
    onModelReset();
}

QTreeWidgetItem *KelDeviceTreeIndex::findBelow(QTreeWidgetItem *parent, int itemType, int id)
{
    if (!parent) {
        return nullptr;
    }
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    if (parent != root && parent->treeWidget() != m_tree) {
        return walk(parent, itemType, id);
    }
    return first(bucketOf(m_byId, IdKey(itemType, id)),
                 [parent, root](const QTreeWidgetItem *item) { return isBelow(item, parent, root); });
}

QTreeWidgetItem *KelDeviceTreeIndex::findCamera(int id)
{
    return first(bucketOf(m_cameras, id), [](const QTreeWidgetItem *camera) {
        const QTreeWidgetItem *top = camera;
        while (top->parent()) {
            top = top->parent();
        }
        return top != camera && cameraTypeBelow(top->data(0, KelDeviceTree::ItemTypeRole).toInt()) ==
                                    camera->data(0, KelDeviceTree::ItemTypeRole).toInt();
    });
}

QTreeWidgetItem *KelDeviceTreeIndex::findContainer(QTreeWidgetItem *group, int itemType, const QString &key)
{
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    return first(bucketOf(m_byContainerKey, ContainerKey(itemType, key)),
                 [group, root](const QTreeWidgetItem *item) { return parentOf(item, root) == group; });
}

QTreeWidgetItem *KelDeviceTreeIndex::findInterface(QTreeWidgetItem *group, int interfaceId)
{
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    return first(bucketOf(m_interfacesById, interfaceId),
                 [group, root](const QTreeWidgetItem *item) { return parentOf(item, root) == group; });
}

QTreeWidgetItem *KelDeviceTreeIndex::findInterface(QTreeWidgetItem *group, const QString &key,
                                                   unsigned int number)
{
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    return first(bucketOf(m_interfacesByKey, InterfaceKey(key, number)),
                 [group, root](const QTreeWidgetItem *item) { return parentOf(item, root) == group; });
}

bool KelDeviceTreeIndex::isCamera(int itemType)
{
    return itemType >= KelDeviceTree::ItemGigECamera && itemType <= KelDeviceTree::ItemGenTLDevice;
}

KelDeviceTreeIndex::Entry KelDeviceTreeIndex::entryOf(const QTreeWidgetItem *item)
{
    Entry entry;
    entry.type = item->data(0, KelDeviceTree::ItemTypeRole).toInt();
    entry.id = item->data(0, KelDeviceTree::ItemIdRole).toInt();
    const QVariant record = item->data(0, KelDeviceTree::ItemInfoRole);
    if (entry.type == KelDeviceTree::ItemNetWork) {
        entry.key = KelDeviceLabels::networkKey(record.value<KELA_NETWORK>());
    } else if (entry.type == KelDeviceTree::ItemUSBController) {
        entry.key = KelDeviceLabels::controllerKey(record.value<KELA_USBCONTROLLER_INFO>());
    } else if (entry.type == KelDeviceTree::ItemGenTLInterface) {
        const auto interface = record.value<KELA_GENTL_IF_INFO>();
        entry.key = KelDeviceLabels::interfaceKey(interface);
        entry.number = interface.number;
        entry.recordId = static_cast<int>(interface.id);
    }
    return entry;
}

QTreeWidgetItem *KelDeviceTreeIndex::itemOf(const QModelIndex &index) const
{
    return index.isValid() ? itemOf(index.parent())->child(index.row()) : m_tree->invisibleRootItem();
}

template <typename Accepts>
QTreeWidgetItem *KelDeviceTreeIndex::first(Bucket *bucket, Accepts accepts)
{
    if (!bucket) {
        return nullptr;
    }
    sort(*bucket);
    const auto found = std::find_if(bucket->items.cbegin(), bucket->items.cend(), accepts);
    return found == bucket->items.cend() ? nullptr : *found;
}

template <typename Key>
KelDeviceTreeIndex::Bucket *KelDeviceTreeIndex::bucketOf(QHash<Key, Bucket> &buckets, const Key &key)
{
    const auto bucket = buckets.find(key);
    return bucket == buckets.end() ? nullptr : &bucket.value();
}

void KelDeviceTreeIndex::sort(Bucket &bucket)
{
    if (bucket.items.size() < 2 || bucket.sortedAt == m_order) {
        return;
    }
    QVector<QPair<QVector<int>, QTreeWidgetItem *>> byPath;
    byPath.reserve(bucket.items.size());
    for (QTreeWidgetItem *item : std::as_const(bucket.items)) {
        byPath.append({pathOf(item), item});
    }
    std::sort(byPath.begin(), byPath.end(),
              [](const auto &left, const auto &right) { return left.first < right.first; });
    std::transform(byPath.cbegin(), byPath.cend(), bucket.items.begin(),
                   [](const auto &entry) { return entry.second; });
    bucket.sortedAt = m_order;
}

// Paths compare like the rows stand: a parent before its children, children by their rows.
QVector<int> KelDeviceTreeIndex::pathOf(const QTreeWidgetItem *item) const
{
    QVector<int> path;
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    for (; item; item = item->parent()) {
        path.append(parentOf(item, root)->indexOfChild(const_cast<QTreeWidgetItem *>(item)));
    }
    std::reverse(path.begin(), path.end());
    return path;
}

void KelDeviceTreeIndex::add(QTreeWidgetItem *item)
{
    const Entry entry = entryOf(item);
    m_entries.insert(item, entry);
    enter(item, entry);
    for (int row = 0; row < item->childCount(); ++row) {
        add(item->child(row));
    }
}

void KelDeviceTreeIndex::remove(QTreeWidgetItem *item)
{
    const auto known = m_entries.constFind(item);
    if (known != m_entries.constEnd()) {
        leave(item, known.value());
        m_entries.erase(known);
    }
    for (int row = 0; row < item->childCount(); ++row) {
        remove(item->child(row));
    }
}

void KelDeviceTreeIndex::refresh(QTreeWidgetItem *item)
{
    const auto known = m_entries.find(item);
    if (known == m_entries.end()) {
        return;
    }
    const Entry entry = entryOf(item);
    if (entry == known.value()) {
        return;
    }
    leave(item, known.value());
    known.value() = entry;
    enter(item, entry);
}

namespace
{

template <typename Buckets, typename Key>
void append(Buckets &buckets, const Key &key, QTreeWidgetItem *item)
{
    auto &bucket = buckets[key];
    bucket.items.append(item);
    bucket.sortedAt = 0;
}

template <typename Buckets, typename Key>
void erase(Buckets &buckets, const Key &key, QTreeWidgetItem *item)
{
    const auto bucket = buckets.find(key);
    if (bucket == buckets.end()) {
        return;
    }
    auto &items = bucket->items;
    const auto found = std::find(items.begin(), items.end(), item);
    if (found != items.end()) {
        items.erase(found);
    }
    if (items.isEmpty()) {
        buckets.erase(bucket);
    }
}

} // namespace

void KelDeviceTreeIndex::enter(QTreeWidgetItem *item, const Entry &entry)
{
    append(m_byId, IdKey(entry.type, entry.id), item);
    if (isCamera(entry.type)) {
        append(m_cameras, entry.id, item);
    } else if (entry.type == KelDeviceTree::ItemNetWork || entry.type == KelDeviceTree::ItemUSBController) {
        append(m_byContainerKey, ContainerKey(entry.type, entry.key), item);
    } else if (entry.type == KelDeviceTree::ItemGenTLInterface) {
        append(m_interfacesById, entry.recordId, item);
        append(m_interfacesByKey, InterfaceKey(entry.key, entry.number), item);
    }
}

void KelDeviceTreeIndex::leave(QTreeWidgetItem *item, const Entry &entry)
{
    erase(m_byId, IdKey(entry.type, entry.id), item);
    if (isCamera(entry.type)) {
        erase(m_cameras, entry.id, item);
    } else if (entry.type == KelDeviceTree::ItemNetWork || entry.type == KelDeviceTree::ItemUSBController) {
        erase(m_byContainerKey, ContainerKey(entry.type, entry.key), item);
    } else if (entry.type == KelDeviceTree::ItemGenTLInterface) {
        erase(m_interfacesById, entry.recordId, item);
        erase(m_interfacesByKey, InterfaceKey(entry.key, entry.number), item);
    }
}

void KelDeviceTreeIndex::clear()
{
    m_entries.clear();
    m_byId.clear();
    m_cameras.clear();
    m_byContainerKey.clear();
    m_interfacesById.clear();
    m_interfacesByKey.clear();
}

void KelDeviceTreeIndex::onRowsInserted(const QModelIndex &parent, int firstRow, int lastRow)
{
    ++m_order;
    const QTreeWidgetItem *parentItem = itemOf(parent);
    for (int row = firstRow; row <= lastRow; ++row) {
        if (QTreeWidgetItem *item = parentItem->child(row)) {
            add(item);
        }
    }
}

void KelDeviceTreeIndex::onRowsAboutToBeRemoved(const QModelIndex &parent, int firstRow, int lastRow)
{
    const QTreeWidgetItem *parentItem = itemOf(parent);
    for (int row = firstRow; row <= lastRow; ++row) {
        if (QTreeWidgetItem *item = parentItem->child(row)) {
            remove(item);
        }
    }
}

// The tree tells of one item at a time. A receiver of itemChanged hears of it first and may have removed or
// moved the row, so nothing but the address is taken from the index.
void KelDeviceTreeIndex::onDataChanged(const QModelIndex &topLeft, const QModelIndex & /*bottomRight*/,
                                       const QVector<int> &roles)
{
    if (topLeft.column() == 0 && concernsLookUps(roles)) {
        refresh(static_cast<QTreeWidgetItem *>(topLeft.internalPointer()));
    }
}

void KelDeviceTreeIndex::onModelReset()
{
    clear();
    ++m_order;
    const QTreeWidgetItem *root = m_tree->invisibleRootItem();
    for (int row = 0; row < root->childCount(); ++row) {
        add(root->child(row));
    }
}

void KelDeviceTreeIndex::onOrderChanged()
{
    ++m_order;
}
