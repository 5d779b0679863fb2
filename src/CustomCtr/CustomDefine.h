// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomCtrExport.h>

#include <QBrush>
#include <QRect>
#include <QString>

class QWidget;

/// What the styled widgets share: states, themes and the colour table.
///
/// Thread: GUI.
namespace Custom
{

/// State of a widget that images and colours are chosen for.
enum ItemStatus {
    StatusNormal = 0,
    StatusHover = 1,
    StatusPressed = 2,
    StatusDisabled = 3,
};

/// Look of the whole application.
enum Theme {
    ThemeDark = 0,
    ThemeLight = 1,
};

/// Icon of a message box.
enum IconStyle {
    IconNone = 0,
    IconInformation = 1,
    IconQuestion = 2,
    IconHint = 3,
    IconWarning = 4,
};

/// Applies a theme to the application: style sheet, palette and colour table.
CUSTOMCTR_EXPORT void setTheme(Theme theme);
/// The theme in use; dark until setTheme was called.
CUSTOMCTR_EXPORT Theme theme();

/// Brush of the colour table for a key; no brush for an unknown key.
/// @param strKey  name of the use, for example "DeviceEnumMngColor_KelDeviceTreeDelegate_StayTopItemRole"
/// @param rect    area that a gradient would span; empty for plain colours
CUSTOMCTR_EXPORT QBrush getDataBaseColor(const QString &strKey, const QRect &rect);

/// The application's main window: the one that setMainDialog named, else the active window, else the
/// first visible top-level one, else null.
CUSTOMCTR_EXPORT QWidget *mainDialog();
/// Names the application's main window. Not owned; forgotten when it is destroyed.
CUSTOMCTR_EXPORT void setMainDialog(QWidget *dialog);

} // namespace Custom
