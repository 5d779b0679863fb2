// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomDefine.h>

#include <QString>

class QWidget;

/// Message boxes in plain text. They are shown and return at once: none starts an event loop, none
/// keeps the application from quitting, and a second one with the same text is not stacked.
/// Thread: GUI.
class CUSTOMCTR_EXPORT CustomMessageBox
{
public:
    /// Buttons of a box.
    enum Button {
        ButtonOk = 1,
        ButtonCancel = 2,
    };

    /// Shows a box without blocking anybody.
    /// @param parent    window to stand over, or null
    /// @param strText   message; plain text
    /// @param strTitle  window title
    /// @param strExtra  further text below the message; may be empty
    /// @param icon      icon of the box
    /// @param bCancel   adds a button that cancels
    static void simple(QWidget *parent, const QString &strText, const QString &strTitle,
                       const QString &strExtra, Custom::IconStyle icon, bool bCancel);

    /// Shows a warning with one acknowledge button, modal to its parent window.
    /// @param nButtons  Button values
    /// @param strExtra  further text below the message; may be empty
    static void warning(QWidget *parent, const QString &strText, const QString &strTitle, int nButtons,
                        const QString &strExtra);
};
