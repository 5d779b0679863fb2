// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomMenu.h>

#include <QEvent>
#include <QWidgetAction>

CustomMenu::CustomMenu(QWidget *parent)
    : QMenu(parent)
    , CustomObject(this)
{
}

CustomMenu::~CustomMenu() = default;

QMenu *CustomMenu::cAddCustomWidgetMenu(QWidget *widget)
{
    auto *menu = new CustomMenu(this);
    auto *action = new QWidgetAction(menu);
    action->setDefaultWidget(widget);
    menu->addAction(action);
    addMenu(menu);
    return menu;
}

void CustomMenu::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        cLanguageChange();
    }
    QMenu::changeEvent(event);
}
