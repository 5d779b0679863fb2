// SPDX-License-Identifier: Apache-2.0
#include "KelRowMove.h"

#include "KelDeviceTree_p.h"

#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidgetItem>
#include <QVector>

#include <algorithm>
#include <memory>

namespace
{

/// What the view knows about an item and forgets with its row.
struct ViewState {
    QTreeWidgetItem *item = nullptr;
    bool isExpanded = false;
    bool isSelected = false;
    bool isCurrent = false;
};

void collect(QTreeWidgetItem *item, const QTreeWidgetItem *current, QVector<ViewState> &states)
{
    states.append({item, item->isExpanded(), item->isSelected(), item == current});
    for (int row = 0; row < item->childCount(); ++row) {
        collect(item->child(row), current, states);
    }
}

/// Keeps a selection model silent while rows come and go, for as long as it lives.
class Silence
{
public:
    explicit Silence(QItemSelectionModel *model)
        : m_model(model)
        , m_wasBlocked(model->blockSignals(true))
    {
    }
    ~Silence()
    {
        if (m_model) {
            m_model->blockSignals(m_wasBlocked);
        }
    }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

private:
    QPointer<QItemSelectionModel> m_model;
    bool m_wasBlocked;
};

/// Forgets the current row for a moment. The view makes a neighbour current, and selects it, when the
/// current row is taken out.
void loosenCurrent(KelDeviceTree *tree, const QVector<ViewState> &states)
{
    for (const ViewState &state : states) {
        if (state.isCurrent) {
            tree->selectionModel()->clearCurrentIndex();
        }
    }
}

void restoreSilently(KelDeviceTree *tree, const QVector<ViewState> &states, int currentColumn)
{
    for (const ViewState &state : states) {
        if (state.isSelected) {
            tree->selectionModel()->select(KelDeviceTreePrivate::indexOf(tree, state.item),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        if (state.isCurrent) {
            tree->selectionModel()->setCurrentIndex(
                KelDeviceTreePrivate::indexOf(tree, state.item).siblingAtColumn(currentColumn),
                QItemSelectionModel::NoUpdate);
        }
    }
}

} // namespace

QModelIndex KelRowMove::toTop(KelDeviceTree *tree, const QModelIndex &row)
{
    const QPersistentModelIndex parentIndex = row.parent();
    QTreeWidgetItem *parent = KelDeviceTreePrivate::itemAt(tree, parentIndex);
    if (!row.isValid() || !parent) {
        return {};
    }
    QVector<ViewState> states;
    collect(KelDeviceTreePrivate::itemAt(tree, row), tree->currentItem(), states);
    const int currentColumn = std::max(0, tree->currentColumn());

    const QPointer<KelDeviceTree> livingTree(tree);
    {
        const Silence silence(tree->selectionModel());
        loosenCurrent(tree, states);
        std::unique_ptr<QTreeWidgetItem> taken(parent->takeChild(row.row()));
        if (!livingTree || !parentIndex.isValid()) {
            return {};
        }
        parent->insertChild(0, taken.get());
        if (!livingTree || !parentIndex.isValid()) {
            // It went with the parent that it stood in.
            static_cast<void>(taken.release());
            return {};
        }
        restoreSilently(tree, states, currentColumn);
        static_cast<void>(taken.release());
    }

    // Unfolding is told of, so it comes last.
    QVector<QPersistentModelIndex> expanded;
    for (const ViewState &state : states) {
        if (state.isExpanded) {
            expanded.append(KelDeviceTreePrivate::indexOf(tree, state.item));
        }
    }
    const QPersistentModelIndex moved = tree->model()->index(0, 0, parentIndex);
    for (const QPersistentModelIndex &item : expanded) {
        if (livingTree && item.isValid()) {
            tree->expand(item);
        }
    }
    return livingTree ? QModelIndex(moved) : QModelIndex();
}
