// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

class CustomPushButton;
class KelDeviceTreePrivate;

/// Paints the rows of a device tree: places the hovered row's button, shortens that row's text to leave
/// room for it, draws camera rows further left and tints the rows that are kept on top.
///
/// Thread: GUI.
class KelDeviceTreeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit KelDeviceTreeDelegate(QObject *parent = nullptr);
    ~KelDeviceTreeDelegate() override;

    /// Paints a row of a KelDeviceTree; nothing when the option names no such tree.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// The row's own size hint when it has a valid one, else the style's.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    bool takesHover(KelDeviceTreePrivate &tree, QStyleOptionViewItem &row, const QModelIndex &index) const;
    bool keepsHover(const KelDeviceTreePrivate &tree, CustomPushButton *button, const QModelIndex &index) const;
    void drawRow(QPainter *painter, QStyleOptionViewItem &row, const QModelIndex &index) const;
};
