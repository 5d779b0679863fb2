// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomMessageBox.h>

#include "CustomBoxDialog.h"

void CustomMessageBox::simple(QWidget *parent, const QString &strText, const QString &strTitle,
                              const QString &strExtra, Custom::IconStyle icon, bool bCancel)
{
    const int buttons = bCancel ? ButtonOk | ButtonCancel : ButtonOk;
    if (CustomBoxDialog *box = CustomBoxDialog::create(parent, {strText, strTitle, strExtra, icon, buttons})) {
        box->show();
    }
}

void CustomMessageBox::warning(QWidget *parent, const QString &strText, const QString &strTitle, int nButtons,
                               const QString &strExtra)
{
    const CustomBoxDialog::Content content{strText, strTitle, strExtra, Custom::IconWarning, nButtons};
    if (CustomBoxDialog *box = CustomBoxDialog::create(parent, content)) {
        box->open();
    }
}
