// SPDX-License-Identifier: Apache-2.0
// Where a row's button goes is decided while the row is painted: only then row, pointer and button are
// known to agree. So painting moves and shows buttons, but only where something differs: what is shown
// while painting paints again, and that must come to an end.
#include "KelDeviceTreeDelegate.h"

#include "KelDeviceTree_p.h"
#include "KelRightButtons.h"

#include <CustomCtr/CustomDefine.h>
#include <CustomCtr/CustomPushButton.h>

#include <QApplication>
#include <QCursor>
#include <QPainter>
#include <QTreeWidgetItem>

#include <algorithm>

namespace
{

constexpr int kRoomWithoutIcon = 30;
constexpr int kRoomWithIcon = 40;
constexpr int kRoomForButton = 34;
constexpr int kCameraShift = 20;

bool isUnderCursor(const QWidget &widget)
{
    return widget.rect().contains(widget.mapFromGlobal(QCursor::pos()));
}

// Only what differs: a move or a resize paints what lies beneath.
void place(CustomPushButton &button, const QRect &rowRect)
{
    const QRect wanted = KelRightButtons::placeIn(rowRect);
    if (button.pos() != wanted.topLeft()) {
        button.move(wanted.topLeft());
    }
    if (!button.isVisible() && button.size() != wanted.size()) {
        button.setFixedSize(wanted.size());
    }
}

void elide(QStyleOptionViewItem &row)
{
    const int room = row.icon.isNull() ? kRoomWithoutIcon : kRoomWithIcon;
    const int width = row.rect.right() - row.rect.left() - room - kRoomForButton;
    row.text = row.fontMetrics.elidedText(row.text, Qt::ElideRight, width);
}

// Drawn as a text of several lines, a name would push the other rows out of sight or look like rows of its own.
void showLineBreaks(QString &text)
{
    constexpr QChar kReturnSymbol(0x21B5);
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) {
            return character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
                   character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
        },
        kReturnSymbol);
}

} // namespace

KelDeviceTreeDelegate::KelDeviceTreeDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

KelDeviceTreeDelegate::~KelDeviceTreeDelegate() = default;

void KelDeviceTreeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
{
    QStyleOptionViewItem row(option);
    initStyleOption(&row, index);
    showLineBreaks(row.text);
    KelDeviceTreePrivate *tree = KelDeviceTreePrivate::of(qobject_cast<const KelDeviceTree *>(row.widget));
    if (!tree) {
        return;
    }
    if (takesHover(*tree, row, index)) {
        elide(row);
    }
    drawRow(painter, row, index);
}

// True when the row is drawn as hovered and leaves room for its button.
bool KelDeviceTreeDelegate::takesHover(KelDeviceTreePrivate &tree, QStyleOptionViewItem &row,
                                       const QModelIndex &index) const
{
    CustomPushButton *button = tree.livingButton(index.data(KelDeviceTree::ItemRightBtnRole));
    if (!row.state.testFlag(QStyle::State_MouseOver)) {
        const bool keeps = keepsHover(tree, button, index);
        row.state.setFlag(QStyle::State_MouseOver, keeps);
        return keeps;
    }
    if (!button || !isUnderCursor(*tree.q)) {
        tree.setCurRightBtn(nullptr, false);
        return false;
    }
    place(*button, row.rect);
    if (!button->isVisible()) {
        const int itemType = index.data(KelDeviceTree::ItemTypeRole).toInt();
        tree.showRowButton(button, itemType == KelDeviceTree::ItemGenTLRoot, index);
    }
    return true;
}

// The pointer left the row, perhaps for the row's button, which floats above it.
bool KelDeviceTreeDelegate::keepsHover(const KelDeviceTreePrivate &tree, CustomPushButton *button,
                                       const QModelIndex &index) const
{
    if (tree.m_configBtn && tree.m_configBtn->isVisible()) {
        return index.data(KelDeviceTree::ItemTypeRole).toInt() == KelDeviceTree::ItemGenTLRoot;
    }
    if (!button || !button->isVisible() || tree.isShownForAnotherRow(index)) {
        return false;
    }
    if (isUnderCursor(*button)) {
        return true;
    }
    button->hide();
    return false;
}

void KelDeviceTreeDelegate::drawRow(QPainter *painter, QStyleOptionViewItem &row,
                                    const QModelIndex &index) const
{
    const auto *tree = static_cast<const KelDeviceTree *>(row.widget);
    const QTreeWidgetItem *item = KelDeviceTreePrivate::itemAt(tree, index);
    const int itemType = item->data(0, KelDeviceTree::ItemTypeRole).toInt();
    if (index.column() == 0 && itemType >= KelDeviceTree::ItemGigECamera &&
        itemType <= KelDeviceTree::ItemGenTLDevice) {
        row.rect.setLeft(std::max(0, row.rect.left() - kCameraShift));
    }
    tree->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, tree);

    if (item->data(0, KelDeviceTree::StayTopItemRole).toBool()) {
        row.rect.setLeft(0);
        painter->fillRect(
            row.rect, Custom::getDataBaseColor(
                          QStringLiteral("DeviceEnumMngColor_KelDeviceTreeDelegate_StayTopItemRole"), QRect()));
    }
}

QSize KelDeviceTreeDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize ownSize = index.data(Qt::SizeHintRole).toSize();
    if (ownSize.isValid()) {
        return ownSize;
    }
    QStyleOptionViewItem row(option);
    initStyleOption(&row, index);
    showLineBreaks(row.text);
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    return style->sizeFromContents(QStyle::CT_ItemViewItem, &row, QSize(), row.widget);
}
