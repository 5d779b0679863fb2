// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVector>

#include <variant>

/// What is told about a device, card or interface: named values in the order in which they are printed.
class Fields
{
public:
    using Value = std::variant<qint64, QString>;

    void add(const char *name, qint64 value) { m_values.append({name, value}); }
    void add(const char *name, const QString &value) { m_values.append({name, value}); }

    /// A value as text, empty when there is no such field.
    QString text(const char *name) const;

    /// As a JSON object.
    QByteArray json() const;

    bool operator==(const Fields &other) const;

private:
    QVector<QPair<const char *, Value>> m_values;
};

/// A text as a JSON string, with its quotes.
QByteArray jsonString(const QString &text);

/// A text of a device as it may go to a terminal: what is not printable is replaced.
QString printable(const QString &text);
