// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomObject.h>

#include <QWidget>

/// A styled widget that paints the background of its state. Thread: GUI.
class CUSTOMCTR_EXPORT CustomWidget : public QWidget, public CustomObject
{
    Q_OBJECT

public:
    explicit CustomWidget(QWidget *parent = nullptr);
    ~CustomWidget() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
