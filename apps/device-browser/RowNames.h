// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>

class KelDeviceTree;
class QTreeWidgetItem;

/// The names that screen readers speak: a device's row tells its state as well, and every button tells
/// which row it belongs to. Rows of other kinds are spoken as they are shown. Thread: GUI.
namespace browser::rows
{

/// Names a row and its button.
/// @param isLost  the row's device is held but no longer answers
void nameForScreenReaders(const KelDeviceTree &tree, QTreeWidgetItem *row, bool isLost = false);
/// Names every row and button again, for another language or encoding.
/// @param lost  identifiers of the devices that are held but no longer answer
void nameAllForScreenReaders(KelDeviceTree &tree, const QSet<long> &lost);

} // namespace browser::rows
