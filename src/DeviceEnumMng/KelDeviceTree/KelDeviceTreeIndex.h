// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVarLengthArray>
#include <QVector>

class QModelIndex;
class QTreeWidget;
class QTreeWidgetItem;

/// Finds the items of a device tree by type, identifier and key, at a cost that does not grow with the rows.
///
/// Every look-up gives what a walk over the tree would give: the first match in the order of the rows, from
/// top to bottom, with the types matched. The index follows the tree's model, so items that a host adds,
/// moves, removes or changes are found like the tree's own.
///
/// Thread: GUI.
class KelDeviceTreeIndex : public QObject
{
    Q_OBJECT

public:
    /// @param tree  outlives the index
    explicit KelDeviceTreeIndex(QTreeWidget *tree);

    /// The first item below @p parent with a type and an identifier; null for a null parent.
    QTreeWidgetItem *findBelow(QTreeWidgetItem *parent, int itemType, int id);

    /// The first camera with an identifier, where the type of each top-level item decides which type of
    /// camera is looked for below it.
    QTreeWidgetItem *findCamera(int id);

    /// The first direct child of @p group that is a network card or a USB controller with a key.
    QTreeWidgetItem *findContainer(QTreeWidgetItem *group, int itemType, const QString &key);

    /// The first direct child of @p group that is a GenTL interface with an identifier in its record.
    QTreeWidgetItem *findInterface(QTreeWidgetItem *group, int interfaceId);

    /// The first direct child of @p group that is a GenTL interface with a key and a number in its record.
    QTreeWidgetItem *findInterface(QTreeWidgetItem *group, const QString &key, unsigned int number);

private:
    /// What an item is found by.
    struct Entry {
        int type = 0;
        int id = 0;
        QString key;      ///< of a container's record
        uint number = 0;  ///< of a GenTL interface's record
        int recordId = 0; ///< of a GenTL interface's record
        bool operator==(const Entry &other) const;
    };

    /// Items with one key. Nearly always there is one, so it is kept in place; more are sorted on demand.
    struct Bucket {
        QVarLengthArray<QTreeWidgetItem *, 1> items;
        quint64 sortedAt = 0;
    };

    using IdKey = QPair<int, int>;
    using ContainerKey = QPair<int, QString>;
    using InterfaceKey = QPair<QString, uint>;

    static bool isCamera(int itemType);
    static Entry entryOf(const QTreeWidgetItem *item);

    QTreeWidgetItem *itemOf(const QModelIndex &index) const;
    template <typename Accepts>
    QTreeWidgetItem *first(Bucket *bucket, Accepts accepts);
    template <typename Key>
    Bucket *bucketOf(QHash<Key, Bucket> &buckets, const Key &key);
    void sort(Bucket &bucket);
    QVector<int> pathOf(const QTreeWidgetItem *item) const;
    void add(QTreeWidgetItem *item);
    void remove(QTreeWidgetItem *item);
    void refresh(QTreeWidgetItem *item);
    void enter(QTreeWidgetItem *item, const Entry &entry);
    void leave(QTreeWidgetItem *item, const Entry &entry);
    void clear();

    void onRowsInserted(const QModelIndex &parent, int firstRow, int lastRow);
    void onRowsAboutToBeRemoved(const QModelIndex &parent, int firstRow, int lastRow);
    void onDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void onModelReset();
    void onOrderChanged();

    QTreeWidget *m_tree;
    quint64 m_order = 1; ///< changes with every change of the rows' order
    QHash<QTreeWidgetItem *, Entry> m_entries;
    QHash<IdKey, Bucket> m_byId;
    QHash<int, Bucket> m_cameras; ///< of all four types, by identifier
    QHash<ContainerKey, Bucket> m_byContainerKey;
    QHash<int, Bucket> m_interfacesById;
    QHash<InterfaceKey, Bucket> m_interfacesByKey;
};
