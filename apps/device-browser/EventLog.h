// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

namespace browser
{

/// What happened, newest last. Holds a bounded number of lines, so that a program that runs for months
/// does not grow. Thread: GUI.
class EventLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum class Kind { Note, Appeared, Gone, Problem };
    static constexpr int kMostLines = 1000;

    explicit EventLog(QObject *parent = nullptr);

    /// Adds a line of plain text; drops the oldest when the log is full.
    void add(Kind kind, const QString &text);
    void clear();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Tells views that the headers are in another language now.
    void retranslate();

private:
    struct Line {
        QDateTime time;
        Kind kind = Kind::Note;
        QString text;
    };

    static QString kindText(Kind kind);

    QVector<Line> m_lines;
};

} // namespace browser
