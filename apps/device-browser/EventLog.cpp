// SPDX-License-Identifier: Apache-2.0
#include "EventLog.h"

namespace browser
{

namespace
{

enum Column { ColumnTime, ColumnKind, ColumnText, ColumnCount };

} // namespace

EventLog::EventLog(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void EventLog::add(Kind kind, const QString &text)
{
    if (m_lines.size() >= kMostLines) {
        beginRemoveRows(QModelIndex(), 0, 0);
        m_lines.removeFirst();
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), m_lines.size(), m_lines.size());
    m_lines.append({QDateTime::currentDateTime(), kind, text.simplified()});
    endInsertRows();
}

void EventLog::clear()
{
    beginResetModel();
    m_lines.clear();
    endResetModel();
}

int EventLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_lines.size();
}

int EventLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant EventLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_lines.size())
        return {};
    const Line &line = m_lines.at(index.row());
    if (role == Qt::ToolTipRole && index.column() == ColumnText)
        return line.text.toHtmlEscaped();
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case ColumnTime:
        return line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case ColumnKind:
        return kindText(line.kind);
    case ColumnText:
        return line.text;
    default:
        return {};
    }
}

QVariant EventLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    switch (section) {
    case ColumnTime:
        return tr("Time");
    case ColumnKind:
        return tr("Kind");
    case ColumnText:
        return tr("Event");
    default:
        return {};
    }
}

void EventLog::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (!m_lines.isEmpty())
        Q_EMIT dataChanged(index(0, ColumnKind), index(m_lines.size() - 1, ColumnKind));
}

QString EventLog::kindText(Kind kind)
{
    switch (kind) {
    case Kind::Appeared:
        return tr("Appeared");
    case Kind::Gone:
        return tr("Gone");
    case Kind::Problem:
        return tr("Problem");
    case Kind::Note:
        break;
    }
    return tr("Note");
}

} // namespace browser
