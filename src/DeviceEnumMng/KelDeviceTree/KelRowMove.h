// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QModelIndex>

class KelDeviceTree;

/// Moves a row of a device tree to the top of its parent.
namespace KelRowMove
{

/// Takes a row out and puts it back as the first one of its parent. The view forgets what it knows of a
/// row that is taken out, but for its being hidden; here the row and all below it keep being unfolded,
/// selected and current, and nobody is told that the selection or the current row changed meanwhile.
///
/// The model's own signals are sent, and whoever hears them may remove the row or destroy the tree.
///
/// @param row  with a valid parent; invalid does nothing
/// @return the row in its new place; invalid when it or the tree is gone
QModelIndex toTop(KelDeviceTree *tree, const QModelIndex &row);

} // namespace KelRowMove
