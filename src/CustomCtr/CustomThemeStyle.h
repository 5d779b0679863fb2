// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

/// The style below the themes' sheet.
class CustomThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    CustomThemeStyle();

    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                const QStyleOption *option) const override;
};
