// SPDX-License-Identifier: Apache-2.0
#include "CustomThemeStyle.h"

CustomThemeStyle::CustomThemeStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

// A selected row keeps its icon as it is: a tint would take the state's colour from it.
QPixmap CustomThemeStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const
{
    return mode == QIcon::Selected ? pixmap : QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}
