// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomObject.h>

#include "CustomColors.h"
#include "CustomImages.h"

#include <QPalette>
#include <QStyle>
#include <QWidget>

namespace
{

// Texts follow the ground that they stand on, not the theme: through the palette where no style sheet is
// in use, through the sheet's rules for the property where one is.
void setTextsFor(const QColor &ground, QWidget *widget)
{
    const bool isDark = qGray(ground.rgb()) < 128;
    const QColor text = CustomColors::color(
        isDark ? QStringLiteral("TextOnDark") : QStringLiteral("TextOnLight"), Custom::theme());
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, ground);
    // Not the role Text: check marks are drawn with it, on a ground of their own.
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Active, role, text);
        palette.setColor(QPalette::Inactive, role, text);
    }
    widget->setPalette(palette);
    widget->setProperty("cGround", isDark ? QStringLiteral("dark") : QStringLiteral("light"));

    QList<QWidget *> touched = widget->findChildren<QWidget *>();
    touched.prepend(widget);
    for (QWidget *each : qAsConst(touched)) {
        each->style()->unpolish(each);
        each->style()->polish(each);
    }
}

} // namespace

CustomObject::CustomObject(QWidget *widget)
    : CustomQssHelper(widget)
{
}

CustomObject::~CustomObject() = default;

void CustomObject::cSetBackgroundImage(const QString &strPath, Custom::ItemStatus status,
                                       const QStringList & /*lstClass*/)
{
    if (m_images.value(status) == strPath) {
        return;
    }
    m_images.insert(status, strPath);
    cWidget()->updateGeometry();
    cWidget()->update();
}

QString CustomObject::cBackgroundImage(Custom::ItemStatus status) const
{
    return m_images.value(status);
}

void CustomObject::cSetBackgroundColor(const QString &strColor, Custom::ItemStatus status,
                                       const QStringList & /*lstClass*/)
{
    const QColor color(strColor);
    if (m_colors.value(status) == color) {
        return;
    }
    m_colors.insert(status, color);
    cThemeChange();
}

QColor CustomObject::cBackgroundColor(Custom::ItemStatus status) const
{
    return m_colors.value(status);
}

void CustomObject::cThemeChange()
{
    const QColor fill = cBackgroundFill(Custom::StatusNormal);
    if (fill.isValid()) {
        setTextsFor(fill, cWidget());
    }
    cWidget()->update();
}

QPixmap CustomObject::cBackgroundPixmap(Custom::ItemStatus status) const
{
    const QString path = m_images.value(status, m_images.value(Custom::StatusNormal));
    return CustomImages::pixmap(path, cWidget()->devicePixelRatioF());
}

QColor CustomObject::cBackgroundFill(Custom::ItemStatus status) const
{
    const QColor given = m_colors.value(status, m_colors.value(Custom::StatusNormal));
    const QColor themed = given.isValid() ? CustomColors::color(given.name(), Custom::theme()) : QColor();
    return themed.isValid() ? themed : given;
}
