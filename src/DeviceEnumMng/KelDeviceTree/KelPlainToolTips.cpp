// SPDX-License-Identifier: Apache-2.0
#include "KelPlainToolTips.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeWidget>

KelPlainToolTips::KelPlainToolTips(QTreeWidget *tree)
    : QObject(tree)
    , m_tree(tree)
{
    tree->viewport()->installEventFilter(this);
}

QString KelPlainToolTips::escaped(const QString &text)
{
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<span style=\"white-space:pre\">%1</span>").arg(text.toHtmlEscaped());
}

bool KelPlainToolTips::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ToolTip) {
        return QObject::eventFilter(watched, event);
    }
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex row = m_tree->indexAt(help->pos());
    const QString text = row.data(Qt::ToolTipRole).toString();
    if (!Qt::mightBeRichText(text)) {
        return QObject::eventFilter(watched, event);
    }
    QToolTip::showText(help->globalPos(), escaped(text), m_tree->viewport(), m_tree->visualRect(row));
    event->accept();
    return true;
}
