// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomQssHelper.h>

#include <QStyle>
#include <QWidget>

namespace
{
constexpr char kSelectorProperty[] = "cStyleSelector";
}

CustomQssHelper::CustomQssHelper(QWidget *widget)
    : m_widget(widget)
{
}

CustomQssHelper::~CustomQssHelper() = default;

void CustomQssHelper::cSetStyleSelector(const QString &strName)
{
    if (cStyleSelector() == strName) {
        return;
    }
    m_widget->setProperty(kSelectorProperty, strName);
    // A style looks at the properties when it takes a widget on, not later.
    QStyle *style = m_widget->style();
    style->unpolish(m_widget);
    style->polish(m_widget);
    m_widget->update();
}

QString CustomQssHelper::cStyleSelector() const
{
    return m_widget->property(kSelectorProperty).toString();
}

void CustomQssHelper::cSetUserData(const QVariant &data)
{
    m_userData = data;
}

QVariant CustomQssHelper::cUserData() const
{
    return m_userData;
}

void CustomQssHelper::cLanguageChange() {}

QWidget *CustomQssHelper::cWidget() const
{
    return m_widget;
}
