// SPDX-License-Identifier: Apache-2.0
#include "Fields.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr ushort kFirstPlainCharacter = 0x20;

void appendEscaped(QString &text, QChar character)
{
    if (character == QLatin1Char('"') || character == QLatin1Char('\\')) {
        text += QLatin1Char('\\');
        text += character;
    } else if (character.unicode() < kFirstPlainCharacter) {
        text += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    } else {
        text += character;
    }
}

QString valueText(const Fields::Value &value)
{
    const auto *number = std::get_if<qint64>(&value);
    return number != nullptr ? QString::number(*number) : std::get<QString>(value);
}

QByteArray valueJson(const Fields::Value &value)
{
    const auto *number = std::get_if<qint64>(&value);
    return number != nullptr ? QByteArray::number(*number) : jsonString(std::get<QString>(value));
}

} // namespace

QByteArray jsonString(const QString &text)
{
    QString escaped = QStringLiteral("\"");
    for (const QChar character : text) {
        appendEscaped(escaped, character);
    }
    escaped += QLatin1Char('"');
    return escaped.toUtf8();
}

QString printable(const QString &text)
{
    QString result = text;
    std::replace_if(
        result.begin(), result.end(),
        [](QChar character) { return !character.isPrint() && !character.isSurrogate(); },
        QChar(QChar::ReplacementCharacter));
    return result;
}

QString Fields::text(const char *name) const
{
    for (const auto &[key, value] : m_values) {
        if (std::strcmp(key, name) == 0) {
            return valueText(value);
        }
    }
    return {};
}

QByteArray Fields::json() const
{
    QByteArray object = "{";
    for (const auto &[key, value] : m_values) {
        object += object.size() > 1 ? ",\"" : "\"";
        object += key;
        object += "\":";
        object += valueJson(value);
    }
    return object + '}';
}

bool Fields::operator==(const Fields &other) const
{
    return m_values.size() == other.m_values.size() &&
           std::equal(m_values.begin(), m_values.end(), other.m_values.begin(),
                      [](const auto &left, const auto &right) {
                          return std::strcmp(left.first, right.first) == 0 && left.second == right.second;
                      });
}
