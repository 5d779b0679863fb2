// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

#include <functional>

/// The user in front of the import's file dialog, which has an event loop of its own.
namespace ImportDialog
{

/// Acts on the dialog as soon as it is shown.
inline void act(const std::function<void(QFileDialog *)> &action)
{
    QTimer::singleShot(0, qApp, [action] {
        const auto widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible()) {
                action(dialog);
                return;
            }
        }
        act(action);
    });
}

/// Chooses a file in the dialog that is about to open.
inline void choose(const QString &path)
{
    act([path](QFileDialog *dialog) {
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->accept();
    });
}

} // namespace ImportDialog
