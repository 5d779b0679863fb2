// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomCheckBox.h>

CustomCheckBox::CustomCheckBox(QWidget *parent)
    : QCheckBox(parent)
    , CustomObject(this)
{
}

CustomCheckBox::~CustomCheckBox() = default;

void CustomCheckBox::cSetStyleSelector(int nStyle)
{
    cSetStyleSelector(QString::number(nStyle));
}
