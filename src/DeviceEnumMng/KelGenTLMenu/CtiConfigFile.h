// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// Which producers of the default folder are switched on: the value that "CtiConfig.ini" keeps, and
/// how it is brought in line with the folder.
///
/// The value is one string, "name:state;" for every producer. Names are written as they are, so a name
/// with a ";" or ":" in it comes back cut.
namespace CtiConfigFile
{

using States = QMap<QString, int>; ///< producer state by file name

/// Full path of the configuration file.
QString path();

/// The stored value, empty when there is none.
QString readValue();

/// States of a stored value. Pieces without a state are skipped, a state that is no number is 0, the
/// last of several pieces with one name counts.
States parse(const QString &value);

/// One producer's part of the value.
QString piece(const QString &name, int state);

/// Names of the producers directly in a folder, those of folders among them; hidden ones are left out.
QStringList producersIn(const QString &folder);

/// Leaves in @p states the producers found and no others. A state that is there stays; a producer
/// without one is on when its name begins with "KelFG", else off.
void merge(States &states, const QStringList &found);

} // namespace CtiConfigFile
