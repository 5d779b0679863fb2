// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomObject.h>

#include <QCheckBox>

/// A styled check box. Thread: GUI.
class CUSTOMCTR_EXPORT CustomCheckBox : public QCheckBox, public CustomObject
{
    Q_OBJECT

public:
    explicit CustomCheckBox(QWidget *parent = nullptr);
    ~CustomCheckBox() override;

    using CustomObject::cSetStyleSelector;
    /// Chooses one of the numbered looks: 2 is a row of a menu.
    void cSetStyleSelector(int nStyle);
};
