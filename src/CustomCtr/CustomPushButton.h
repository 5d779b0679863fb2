// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomObject.h>

#include <QPushButton>

/// A push button that shows an image per state. Thread: GUI.
class CUSTOMCTR_EXPORT CustomPushButton : public QPushButton, public CustomObject
{
    Q_OBJECT

public:
    explicit CustomPushButton(QWidget *parent = nullptr);
    ~CustomPushButton() override;

    /// Keeps mouse clicks to the button: what lies under it, a tree's row for example, gets none.
    void cSetControlClickEvent(bool bControl);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    bool m_controlsClick = false;
};
