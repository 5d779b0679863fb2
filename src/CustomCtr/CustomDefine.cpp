// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomDefine.h>

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace
{

QPointer<QWidget> &namedMainDialog()
{
    static QPointer<QWidget> dialog;
    return dialog;
}

// Menus, hints and our own boxes come and go: none of them is a window to stand over.
bool isLastingWindow(const QWidget *widget)
{
    if (!widget || !widget->isVisible()) {
        return false;
    }
    const Qt::WindowType type = widget->windowType();
    return (type == Qt::Window || type == Qt::Dialog) && widget->testAttribute(Qt::WA_QuitOnClose);
}

} // namespace

QWidget *Custom::mainDialog()
{
    if (namedMainDialog()) {
        return namedMainDialog();
    }
    QWidget *active = QApplication::activeWindow();
    if (isLastingWindow(active)) {
        return active;
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
