// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomObject.h>

#include <QRadioButton>

/// A styled radio button. Thread: GUI.
class CUSTOMCTR_EXPORT CustomRadioButton : public QRadioButton, public CustomObject
{
    Q_OBJECT

public:
    explicit CustomRadioButton(QWidget *parent = nullptr);
    ~CustomRadioButton() override;
};
