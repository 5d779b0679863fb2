// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomDefine.h>

#include <QColor>
#include <QStringList>

/// The one table of colours: a name and its colour in each theme. Style sheets and palettes take theirs
/// from here too.
namespace CustomColors
{

/// The colour of a name, invalid when the table has none.
QColor color(const QString &name, Custom::Theme theme);

/// All names.
QStringList names();

} // namespace CustomColors
