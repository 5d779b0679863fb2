// SPDX-License-Identifier: Apache-2.0
// Rows that stay on top of their container: the last serial number of the host's list stands topmost. Two
// functions make one order: where a new camera's row is inserted, and where the rows go when the list is
// set. Setting it means: entry by entry, each matching row goes to the top of its parent, in the order of
// the rows. Only the outcome is computed, and only the rows that have to move for it are moved.
#include "KelDeviceTree_p.h"

#include "KelRowMove.h"

#include <QHash>
#include <QPersistentModelIndex>
#include <QSet>
#include <QTreeWidgetItem>

#include <algorithm>

/// The rows below one parent that belong on top.
struct StayTopRows {
    /// A row and what decides its place.
    struct Row {
        QPersistentModelIndex index;
        int row = 0;             ///< where it stands
        int rank = 0;            ///< of its serial number: 0 is the last one of the list
        bool isReversed = false; ///< rows with this serial number swap their order
    };

    QVector<Row> rows; ///< in the order in which they belong
};

namespace
{

struct Place {
    int rank = 0;
    bool isReversed = false;
};

// A later entry goes above an earlier one. Each time a number is listed, its rows are turned over.
QHash<QString, Place> placesOf(const QStringList &serials)
{
    QHash<QString, Place> places;
    for (int entry = 0; entry < serials.size(); ++entry) {
        Place &place = places[serials.at(entry)];
        place.rank = static_cast<int>(serials.size()) - 1 - entry;
        place.isReversed = !place.isReversed;
    }
    return places;
}

void sortByPlace(QVector<StayTopRows::Row> &rows)
{
    std::sort(rows.begin(), rows.end(), [](const StayTopRows::Row &left, const StayTopRows::Row &right) {
        if (left.rank != right.rank) {
            return left.rank < right.rank;
        }
        return left.isReversed ? left.row > right.row : left.row < right.row;
    });
}

// How many of the first rows have to go to the top, so that all stand in order. What follows them stands
// at the top already, in order, with nothing but rows that go in between.
int countToMove(const StayTopRows &rows)
{
    QVector<int> standing;
    for (const StayTopRows::Row &row : rows.rows) {
        standing.append(row.row);
    }
    std::sort(standing.begin(), standing.end());
    int atTop = 0;
    while (atTop < standing.size() && standing.at(atTop) == atTop) {
        ++atTop;
    }
    int first = static_cast<int>(rows.rows.size());
    int below = atTop;
    while (first > 0 && rows.rows.at(first - 1).row < below) {
        --first;
        below = rows.rows.at(first).row;
    }
    return first;
}

/// Walks the tree once, in the order of the rows.
class StayTopWalk
{
public:
    StayTopWalk(KelDeviceTreePrivate &tree, const QStringList &serials)
        : m_tree(tree)
        , m_places(placesOf(serials))
    {
        walk(tree.q->invisibleRootItem(), QModelIndex());
    }

    /// What belongs on top, parent by parent; those below a row before those beside it, because a row that
    /// moves takes the indexes below it away.
    QVector<StayTopRows> groups;
    QVector<QPersistentModelIndex> unmarked; ///< rows whose mark is to go

private:
    void walk(const QTreeWidgetItem *parent, const QModelIndex &parentIndex)
    {
        StayTopRows group;
        for (int row = 0; row < parent->childCount(); ++row) {
            QTreeWidgetItem *item = parent->child(row);
            const QModelIndex index = m_tree.q->model()->index(row, 0, parentIndex);
            // Top-level rows stand where they stand.
            const auto place =
                parentIndex.isValid() ? m_places.constFind(m_tree.getCameraSerial(item)) : m_places.constEnd();
            if (place != m_places.constEnd()) {
                group.rows.append({index, row, place->rank, place->isReversed});
            } else if (item->data(0, KelDeviceTree::StayTopItemRole).toBool()) {
                unmarked.append(index);
            }
            if (item->childCount() > 0) {
                walk(item, index);
            }
        }
        if (!group.rows.isEmpty()) {
            sortByPlace(group.rows);
            groups.append(group);
        }
    }

    KelDeviceTreePrivate &m_tree;
    const QHash<QString, Place> m_places;
};

} // namespace

int KelDeviceTreePrivate::getStayTopIndex(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent)
{
    const int entry = static_cast<int>(m_stayTopList.indexOf(getSerialByInfo(info)));
    if (entry < 0) {
        return -1;
    }
    const QStringList later = m_stayTopList.mid(entry + 1);
    const QSet<QString> wanted(later.cbegin(), later.cend());
    QSet<QString> present;
    const QTreeWidgetItem *container = parent ? parent : q->invisibleRootItem();
    for (int row = 0; row < container->childCount() && present.size() < wanted.size(); ++row) {
        const QString serial = getCameraSerial(container->child(row));
        if (wanted.contains(serial)) {
            present.insert(serial);
        }
    }
    const auto above = std::count_if(later.cbegin(), later.cend(),
                                     [&present](const QString &serial) { return present.contains(serial); });
    // A number that is listed twice counts twice, but there is no row behind the last one.
    return std::min(static_cast<int>(above), container->childCount());
}

void KelDeviceTreePrivate::updateStatTopList(const QStringList &serials)
{
    if (m_stayTopList != serials) {
        m_stayTopList = serials;
    }
    const QPointer<KelDeviceTree> tree(q);
    const StayTopWalk walk(*this, m_stayTopList);
    for (const QPersistentModelIndex &row : walk.unmarked) {
        q->model()->setData(row, 0, KelDeviceTree::StayTopItemRole);
        if (!tree) {
            return;
        }
    }
    for (const StayTopRows &group : walk.groups) {
        if (!putOnTop(group)) {
            return;
        }
    }
}

bool KelDeviceTreePrivate::putOnTop(const StayTopRows &rows)
{
    const QPointer<KelDeviceTree> tree(q);
    const int toMove = countToMove(rows);
    for (int place = rows.rows.size() - 1; place >= 0; --place) {
        QPersistentModelIndex index = rows.rows.at(place).index;
        if (place < toMove) {
            index = KelRowMove::toTop(q, index);
        }
        if (tree && !index.data(KelDeviceTree::StayTopItemRole).toBool()) {
            q->model()->setData(index, 1, KelDeviceTree::StayTopItemRole);
        }
        if (!tree) {
            return false;
        }
    }
    return true;
}
