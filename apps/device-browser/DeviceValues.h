// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QMetaType>
#include <QString>
#include <QVector>

namespace browser
{

/// How the number of a node is to be shown.
enum class ValueFormat { Number, Ipv4Address, ControlPrivilege, Milliseconds, MegabitPerSecond, Bytes };

/// A node of a connected device that is worth watching.
struct WatchedNode {
    const char *name;
    ValueFormat format;
};

/// What was read of a node.
struct ReadValue {
    QString node;
    ValueFormat format = ValueFormat::Number;
    bool isKnown = false; ///< the device has the node and answered
    qint64 value = 0;
};
using ReadValues = QVector<ReadValue>;

/// The nodes to watch on a device of a transport.
QVector<WatchedNode> watchedNodes(uint32_t transport);
/// A value as people read it, translated; "–" for one that is not known.
QString valueText(const ReadValue &value);

} // namespace browser

Q_DECLARE_METATYPE(browser::ReadValues)
