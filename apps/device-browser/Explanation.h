// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace browser
{

/// How a thing stands to the user, in one word; chooses the colour and the mark of the panel's badge.
enum class Standing {
    Neutral, ///< nothing to say, for example a group
    Ready,   ///< can be connected now
    Ours,    ///< connected by this program
    Busy,    ///< another program holds it
    Blocked, ///< cannot be used as it is
};

/// A named figure.
struct Fact {
    QString label;
    QString value;
    QString note{}; ///< in a column of its own; may be empty
};

/// Figures that belong together.
struct FactGroup {
    QString title;
    QVector<Fact> facts;

    /// Adds a figure unless it is empty.
    void add(const QString &label, const QString &value, const QString &note = QString())
    {
        if (!value.isEmpty())
            facts.append({label, value, note});
    }
};

/// What the details panel says of a row: plain texts, never to be read as rich text.
struct Explanation {
    QString title;
    QString kind;
    QString state;
    Standing standing = Standing::Neutral;
    QStringList paragraphs;
    QVector<FactGroup> groups;

    /// Adds a group unless it is empty.
    void add(const FactGroup &group)
    {
        if (!group.facts.isEmpty())
            groups.append(group);
    }
};

} // namespace browser
