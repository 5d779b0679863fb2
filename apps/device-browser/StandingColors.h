// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <QColor>

class QString;

namespace browser
{

/// Colours of a badge in the theme in use; readable on each other.
struct BadgeColors {
    QColor ground;
    QColor text;
};
BadgeColors badgeColors(Standing standing);
/// A mark that tells the standings apart without colour.
QString badgeMark(Standing standing);
/// Colour of secondary text in the theme in use.
QColor mutedTextColor();
/// Colour of thin lines in the theme in use.
QColor lineColor();

} // namespace browser
