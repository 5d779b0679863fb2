// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomRadioButton.h>

CustomRadioButton::CustomRadioButton(QWidget *parent)
    : QRadioButton(parent)
    , CustomObject(this)
{
}

CustomRadioButton::~CustomRadioButton() = default;
