// SPDX-License-Identifier: Apache-2.0
#include "RowNames.h"

#include "DeviceState.h"
#include "TreeRows.h"

#include <CustomCtr/CustomPushButton.h>

#include <QCoreApplication>
#include <QHash>
#include <QTreeWidgetItemIterator>

namespace browser::rows
{

namespace
{

struct Names {
    Q_DECLARE_TR_FUNCTIONS(RowNames)
};

QString spokenText(const QTreeWidgetItem *row, const KELA_STRUCT_DEVICE_INFO &device, bool isLost)
{
    if (isLost)
        return Names::tr("%1, connection lost").arg(textOf(row));
    return QStringLiteral("%1, %2").arg(textOf(row), conditionText(conditionOf(device.deviceState)));
}

QString buttonName(const QTreeWidgetItem *row)
{
    const std::optional<KELA_STRUCT_DEVICE_INFO> device = deviceOf(row);
    if (device && isOwnState(device->deviceState))
        return Names::tr("Disconnect %1").arg(textOf(row));
    if (device)
        return Names::tr("Connect %1").arg(textOf(row));
    if (typeOf(row) == KelDeviceTree::ItemGenTLInterface)
        return Names::tr("Open or close %1").arg(textOf(row));
    return Names::tr("Refresh %1").arg(textOf(row));
}

/// @return false when the row was spoken so already
bool nameRow(QTreeWidgetItem *row, bool isLost)
{
    const std::optional<KELA_STRUCT_DEVICE_INFO> device = deviceOf(row);
    if (!device)
        return true;
    const QString spoken = spokenText(row, *device, isLost);
    if (row->data(0, Qt::AccessibleTextRole).toString() == spoken)
        return false;
    row->setData(0, Qt::AccessibleTextRole, spoken);
    return true;
}

void nameButton(CustomPushButton *button, const QTreeWidgetItem *row)
{
    const QString name = button ? buttonName(row) : QString();
    if (button && button->accessibleName() != name)
        button->setAccessibleName(name);
}

} // namespace

void nameForScreenReaders(const KelDeviceTree &tree, QTreeWidgetItem *row, bool isLost)
{
    // A device's button is looked for only when something changed: that is a walk over all buttons, and
    // every pass comes by every device.
    if (row && nameRow(row, isLost))
        nameButton(buttonOf(tree, row), row);
}

void nameAllForScreenReaders(KelDeviceTree &tree, const QSet<long> &lost)
{
    QHash<quintptr, CustomPushButton *> buttons;
    const QList<CustomPushButton *> living = tree.findChildren<CustomPushButton *>();
    for (CustomPushButton *button : living)
        buttons.insert(reinterpret_cast<quintptr>(button), button);
    for (QTreeWidgetItemIterator row(&tree); *row; ++row) {
        nameRow(*row, isDevice(*row) && lost.contains(idOf(*row)));
        nameButton(buttons.value((*row)->data(0, KelDeviceTree::ItemRightBtnRole).value<quintptr>()), *row);
    }
}

} // namespace browser::rows
