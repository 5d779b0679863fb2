// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomPushButton.h>

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

namespace
{

Custom::ItemStatus statusOf(const QPushButton &button)
{
    if (!button.isEnabled()) {
        return Custom::StatusDisabled;
    }
    if (button.isDown()) {
        return Custom::StatusPressed;
    }
    return button.underMouse() ? Custom::StatusHover : Custom::StatusNormal;
}

QSize logicalSize(const QPixmap &pixmap)
{
    return pixmap.size() / pixmap.devicePixelRatio();
}

} // namespace

CustomPushButton::CustomPushButton(QWidget *parent)
    : QPushButton(parent)
    , CustomObject(this)
{
    setAttribute(Qt::WA_Hover);
}

CustomPushButton::~CustomPushButton() = default;

void CustomPushButton::cSetControlClickEvent(bool bControl)
{
    m_controlsClick = bControl;
}

QSize CustomPushButton::sizeHint() const
{
    const QPixmap image = cBackgroundPixmap(Custom::StatusNormal);
    return image.isNull() ? QPushButton::sizeHint() : logicalSize(image);
}

void CustomPushButton::paintEvent(QPaintEvent *event)
{
    const QPixmap image = cBackgroundPixmap(statusOf(*this));
    if (image.isNull()) {
        QPushButton::paintEvent(event);
        return;
    }
    // At the top: the tree places its buttons a little below their row's top for images of this height.
    const QSize extent = logicalSize(image).boundedTo(size());
    const QRect target(QPoint((width() - extent.width()) / 2, 0), extent);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, image);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = target;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

// A handler of the click may destroy the button: nothing of it is touched after the base class.
void CustomPushButton::mousePressEvent(QMouseEvent *event)
{
    const bool controls = m_controlsClick;
    QPushButton::mousePressEvent(event);
    if (controls) {
        event->accept();
    }
}

void CustomPushButton::mouseReleaseEvent(QMouseEvent *event)
{
    const bool controls = m_controlsClick;
    QPushButton::mouseReleaseEvent(event);
    if (controls) {
        event->accept();
    }
}

void CustomPushButton::mouseDoubleClickEvent(QMouseEvent *event)
{
    const bool controls = m_controlsClick;
    QPushButton::mouseDoubleClickEvent(event);
    if (controls) {
        event->accept();
    }
}
