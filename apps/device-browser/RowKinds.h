// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace browser
{

/// A kind of rows that the user shows or hides as a whole.
struct RowKind {
    QString key;          ///< its name in the settings
    QString label;        ///< translated
    QList<int> itemTypes; ///< KelDeviceTree::ItemType values
};

/// The kinds in the order of the tree.
QList<RowKind> rowKinds();
/// The item types to show when some kinds are hidden; empty, which means all, when none is.
QList<int> visibleItemTypes(const QStringList &hiddenKinds);

} // namespace browser
