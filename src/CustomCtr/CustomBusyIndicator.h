// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QBasicTimer>
#include <QWidget>

/// A turning arc. It turns while it is shown and costs nothing else.
class CustomBusyIndicator : public QWidget
{
    Q_OBJECT

public:
    explicit CustomBusyIndicator(QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    int m_degrees = 0;
};
