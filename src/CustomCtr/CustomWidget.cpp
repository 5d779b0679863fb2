// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomWidget.h>

#include <QPainter>
#include <QStyleOption>

CustomWidget::CustomWidget(QWidget *parent)
    : QWidget(parent)
    , CustomObject(this)
{
}

CustomWidget::~CustomWidget() = default;

void CustomWidget::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    // Draws what the style sheet gives; the other styles draw nothing here.
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);

    const Custom::ItemStatus status = !isEnabled()   ? Custom::StatusDisabled
                                      : underMouse() ? Custom::StatusHover
                                                     : Custom::StatusNormal;
    const QColor fill = cBackgroundFill(status);
    if (fill.isValid()) {
        painter.fillRect(rect(), fill);
    }
    const QPixmap image = cBackgroundPixmap(status);
    if (!image.isNull()) {
        painter.drawPixmap(rect(), image);
    }
}
