// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QVector>

/// A line of Qt's message log with its source place.
struct LoggedLine {
    QtMsgType type;
    QString category;
    QString file;
    int line;
    QString function;
    QString text;
};

/// Keeps the lines of Qt's message log while it lives. One at a time.
class LogCapture
{
public:
    LogCapture()
    {
        s_current = this;
        m_previous = qInstallMessageHandler(handler);
    }

    ~LogCapture()
    {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
    }

    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QVector<LoggedLine> lines() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_lines;
    }

    QStringList texts() const
    {
        QStringList result;
        const QVector<LoggedLine> all = lines();
        for (const LoggedLine &line : all) {
            result.append(line.text);
        }
        return result;
    }

private:
    static void handler(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const QMutexLocker lock(&s_current->m_mutex);
        s_current->m_lines.append({type, QString::fromUtf8(context.category), QString::fromUtf8(context.file),
                                   context.line, QString::fromUtf8(context.function), text});
    }

    static inline LogCapture *s_current = nullptr;
    mutable QMutex m_mutex; // guards m_lines
    QVector<LoggedLine> m_lines;
    QtMessageHandler m_previous = nullptr;
};
