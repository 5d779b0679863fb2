// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomDefine.h>

#include "CustomBoxDialog.h"

#include <QApplication>
#include <QPointer>

namespace
{

QPointer<QWidget> &namedMainDialog()
{
    static QPointer<QWidget> dialog;
    return dialog;
}

// Menus, hints, tool windows and our own boxes come and go: none of them is a window to stand over.
bool isLastingWindow(const QWidget *widget)
{
    const bool isWindow = widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog;
    return isWindow && widget->isVisible() && !qobject_cast<const CustomBoxDialog *>(widget);
}

} // namespace

QWidget *Custom::mainDialog()
{
    if (namedMainDialog()) {
        return namedMainDialog();
    }
    for (QWidget *window = QApplication::activeWindow(); window; window = window->parentWidget()) {
        if (window->isWindow() && isLastingWindow(window)) {
            return window;
        }
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (isLastingWindow(window)) {
            return window;
        }
    }
    return nullptr;
}

void Custom::setMainDialog(QWidget *dialog)
{
    namedMainDialog() = dialog;
}
