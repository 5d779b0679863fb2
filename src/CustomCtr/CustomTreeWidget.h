// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomQssHelper.h>

#include <QTreeWidget>

/// A styled tree. Thread: GUI.
class CUSTOMCTR_EXPORT CustomTreeWidget : public QTreeWidget, public CustomQssHelper
{
    Q_OBJECT

public:
    explicit CustomTreeWidget(QWidget *parent = nullptr);
    ~CustomTreeWidget() override;
};
