// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

namespace browser
{

/// Lists the keys and the marks of the tree. Thread: GUI.
class HelpDialog : public QDialog
{
    Q_OBJECT

public:
    explicit HelpDialog(QWidget *parent = nullptr);
};

} // namespace browser
