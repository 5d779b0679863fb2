// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QEvent;
class QTreeWidget;

/// Shows the tool tips of a tree's rows as they are written. A row's tool tip is a name that comes from a
/// device, and a name that looks like rich text would be drawn as such.
///
/// Thread: GUI.
class KelPlainToolTips : public QObject
{
    Q_OBJECT

public:
    /// @param tree  owner of this object
    explicit KelPlainToolTips(QTreeWidget *tree);

    /// A text that a tool tip shows as @p text, to the letter.
    static QString escaped(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTreeWidget *m_tree;
};
