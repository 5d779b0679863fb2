// SPDX-License-Identifier: Apache-2.0
#include "CustomBusyIndicator.h"

#include <QPainter>
#include <QTimerEvent>

namespace
{
constexpr int kExtent = 28;
constexpr qreal kLineWidth = 3;
constexpr int kStepMs = 40;
constexpr int kDegreesPerStep = 16;
constexpr int kArcDegrees = 100;
constexpr int kAngleUnits = 16; // QPainter's angles are sixteenths of a degree
} // namespace

CustomBusyIndicator::CustomBusyIndicator(QWidget *parent)
    : QWidget(parent)
{
    setFixedSize(kExtent, kExtent);
}

QSize CustomBusyIndicator::sizeHint() const
{
    return {kExtent, kExtent};
}

void CustomBusyIndicator::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle = QRectF(rect()).adjusted(kLineWidth, kLineWidth, -kLineWidth, -kLineWidth);
    QPen pen(palette().color(QPalette::Mid), kLineWidth, Qt::SolidLine, Qt::RoundCap);
    painter.setPen(pen);
    painter.drawEllipse(circle);
    pen.setColor(palette().color(QPalette::Highlight));
    painter.setPen(pen);
    painter.drawArc(circle, -m_degrees * kAngleUnits, kArcDegrees * kAngleUnits);
}

void CustomBusyIndicator::showEvent(QShowEvent *event)
{
    m_timer.start(kStepMs, this);
    QWidget::showEvent(event);
}

void CustomBusyIndicator::hideEvent(QHideEvent *event)
{
    m_timer.stop();
    QWidget::hideEvent(event);
}

void CustomBusyIndicator::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_degrees = (m_degrees + kDegreesPerStep) % 360;
    update();
}
