// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomTreeWidget.h>

CustomTreeWidget::CustomTreeWidget(QWidget *parent)
    : QTreeWidget(parent)
    , CustomQssHelper(this)
{
    // Not every style asks for hover events by itself.
    viewport()->setAttribute(Qt::WA_Hover);
}

CustomTreeWidget::~CustomTreeWidget() = default;
