// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QEvent>
#include <QHash>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSet>

#include <functional>

class CustomPushButton;
class QModelIndex;
class QTreeWidget;
class QWidget;

/// The buttons that float over the rows of a device tree: which of them live, which are shown, and for
/// which row.
///
/// A button is no part of its row. When rows scroll, fold, move or go, a button that stayed behind would
/// stand on another camera's row, so it is hidden then. What is shown is followed as it changes, so that
/// showing one and hiding the others costs the same for a handful of buttons and for thousands.
///
/// Thread: GUI.
class KelRightButtons : public QObject
{
    Q_OBJECT

public:
    /// Where a shown button stands.
    enum class Place {
        InRow,   ///< where painting put it
        Unknown, ///< wherever the host left it
    };

    /// @param tree     parent of all buttons; outlives this object
    /// @param hideAll  hides all buttons; called when one no longer stands on its row
    KelRightButtons(QTreeWidget *tree, std::function<void()> hideAll);

    /// Follows a button until it is removed or destroyed.
    void add(CustomPushButton *button);
    /// A button that is about to be disposed of counts as gone from now on.
    void remove(CustomPushButton *button);
    /// Follows the button that stands to the left of a row's button while that row is hovered.
    void setMenuButton(CustomPushButton *button);
    /// The button at an address, when one lives there that was added and is neither removed nor destroyed.
    /// Any number may be asked about.
    CustomPushButton *at(quintptr address) const { return m_living.value(address); }

    /// Makes every button visible exactly when it is @p button; null hides all. Paints the rows below those
    /// that it changes, and nothing when it changes none: painting calls this, and must come to an end.
    void showOnly(CustomPushButton *button);
    /// Paints the row over which a button floats, the whole view when there is none.
    void updateRowBelow(const QWidget &button);

    /// Tells for which row a button, or the menu's button alone, is shown. Forgotten with the next showOnly().
    void setRow(const QModelIndex &row, Place place);
    /// The row of the shown button; invalid when nobody told it.
    QPersistentModelIndex row() const { return m_row; }

    /// Starts to hide buttons when rows move under them.
    void watchRows();
    /// Hides the buttons if the row of the shown one is not to be seen or has moved from below it.
    void hideStray();

    /// Where the button of a row stands, in the coordinates of the row.
    static QRect placeIn(const QRect &rowRect);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void filterViewport(const QEvent *event);
    void followShown(QWidget *button, QEvent::Type type);
    bool isMenuButtonShown() const;
    bool standIn(const QRect &place) const;
    void onRowsAboutToBeRemoved(const QModelIndex &parent, int firstRow, int lastRow);

    QTreeWidget *m_tree;
    std::function<void()> m_hideAll;
    QHash<quintptr, CustomPushButton *> m_living; ///< by address
    /// As widgets: a button that is being destroyed tells that it hides when nothing else of it is left.
    QSet<QWidget *> m_shown;
    QPointer<QWidget> m_menuButton; ///< shown and hidden by the tree
    QPersistentModelIndex m_row;
    Place m_place = Place::Unknown;
};
