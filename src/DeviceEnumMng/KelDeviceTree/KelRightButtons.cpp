// SPDX-License-Identifier: Apache-2.0
#include "KelRightButtons.h"

#include <CustomCtr/CustomPushButton.h>

#include <QCoreApplication>
#include <QScrollBar>
#include <QTreeWidget>

#include <algorithm>
#include <utility>

namespace
{
constexpr int kButtonWidth = 35;
constexpr int kLargestButtonHeight = 32;
constexpr int kDistanceFromRightEdge = 32;
// The images stand at the top of the buttons, so the buttons stand lower than the middle of their rows.
constexpr int kDistanceBelowMiddle = 7;

quintptr addressOf(const CustomPushButton *button)
{
    return reinterpret_cast<quintptr>(button);
}

} // namespace

KelRightButtons::KelRightButtons(QTreeWidget *tree, std::function<void()> hideAll)
    : m_tree(tree)
    , m_hideAll(std::move(hideAll))
{
}

void KelRightButtons::add(CustomPushButton *button)
{
    m_living.insert(addressOf(button), button);
    if (!button->isHidden()) {
        m_shown.insert(button);
    }
    button->installEventFilter(this);
    QWidget *widget = button;
    connect(button, &QObject::destroyed, this, [this, widget, address = addressOf(button)] {
        m_living.remove(address);
        m_shown.remove(widget);
    });
}

void KelRightButtons::remove(CustomPushButton *button)
{
    button->removeEventFilter(this);
    m_living.remove(addressOf(button));
    m_shown.remove(button);
}

void KelRightButtons::setMenuButton(CustomPushButton *button)
{
    m_menuButton = button;
    button->installEventFilter(this);
}

void KelRightButtons::showOnly(CustomPushButton *button)
{
    m_row = QPersistentModelIndex();
    const QSet<QWidget *> shown = m_shown;
    for (QWidget *other : shown) {
        // Hiding one sends events, and whoever handles them may take another away.
        if (other != button && m_shown.contains(other)) {
            updateRowBelow(*other);
            other->hide();
        }
    }
    if (at(addressOf(button)) && button->isHidden()) {
        button->show();
        updateRowBelow(*button);
    }
}

// A whole page would be painted with every row that the pointer crosses.
void KelRightButtons::updateRowBelow(const QWidget &button)
{
    const QPoint middleOfRow(0, button.geometry().center().y() - kDistanceBelowMiddle);
    QRect row = m_tree->visualRect(m_tree->indexAt(middleOfRow));
    if (row.isEmpty()) {
        m_tree->viewport()->update();
        return;
    }
    row.setLeft(0);
    m_tree->viewport()->update(row);
}

void KelRightButtons::setRow(const QModelIndex &row, Place place)
{
    m_row = row;
    m_place = place;
}

void KelRightButtons::watchRows()
{
    m_tree->viewport()->setAttribute(Qt::WA_Hover);
    m_tree->viewport()->installEventFilter(this);
    for (const QScrollBar *bar : {m_tree->verticalScrollBar(), m_tree->horizontalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, [this] { m_hideAll(); });
    }
    connect(m_tree, &QTreeView::collapsed, this, &KelRightButtons::hideStray);
    connect(m_tree, &QTreeView::expanded, this, &KelRightButtons::hideStray);

    const QAbstractItemModel *model = m_tree->model();
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &KelRightButtons::onRowsAboutToBeRemoved);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_hideAll(); });
}

void KelRightButtons::hideStray()
{
    if (!m_row.isValid() || (m_shown.isEmpty() && !isMenuButtonShown())) {
        return;
    }
    // Empty for a row that is hidden or folded away.
    const QRect rowRect = m_tree->visualRect(m_row);
    if (rowRect.isEmpty() || (m_place == Place::InRow && !standIn(placeIn(rowRect)))) {
        m_hideAll();
    }
}

bool KelRightButtons::isMenuButtonShown() const
{
    return m_menuButton && !m_menuButton->isHidden();
}

bool KelRightButtons::standIn(const QRect &place) const
{
    if (isMenuButtonShown() && m_menuButton->y() != place.y()) {
        return false;
    }
    return std::all_of(m_shown.cbegin(), m_shown.cend(),
                       [&place](const QWidget *button) { return button->geometry() == place; });
}

QRect KelRightButtons::placeIn(const QRect &rowRect)
{
    const int height = std::min(rowRect.height(), kLargestButtonHeight);
    return {rowRect.right() - kDistanceFromRightEdge,
            rowRect.top() + (rowRect.height() - height) / 2 + kDistanceBelowMiddle, kButtonWidth, height};
}

bool KelRightButtons::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_tree->viewport()) {
        filterViewport(event);
        return false;
    }
    if (event->type() == QEvent::Wheel) {
        // The tree passes on what its viewport gets, and no more.
        return QCoreApplication::sendEvent(m_tree->viewport(), event);
    }
    if (watched != m_menuButton) {
        followShown(static_cast<QWidget *>(watched), event->type());
    }
    return false;
}

void KelRightButtons::followShown(QWidget *button, QEvent::Type type)
{
    if (type == QEvent::ShowToParent) {
        m_shown.insert(button);
    } else if (type == QEvent::HideToParent) {
        m_shown.remove(button);
    }
}

void KelRightButtons::filterViewport(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::StyleChange:
        // A style that is taken off may take the attribute with it.
        m_tree->viewport()->setAttribute(Qt::WA_Hover);
        break;
    case QEvent::Paint:
        // The last moment to see that a row was hidden or moved in a way that nothing tells of.
        hideStray();
        break;
    default:
        break;
    }
}

void KelRightButtons::onRowsAboutToBeRemoved(const QModelIndex &parent, int firstRow, int lastRow)
{
    for (QModelIndex row = m_row; row.isValid(); row = row.parent()) {
        if (row.parent() == parent && row.row() >= firstRow && row.row() <= lastRow) {
            m_hideAll();
            return;
        }
    }
}
