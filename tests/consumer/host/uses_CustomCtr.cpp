// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomDefine.h>
#include <CustomCtr/CustomLoadingDialog.h>
#include <CustomCtr/CustomMenu.h>
#include <CustomCtr/CustomMessageBox.h>
#include <CustomCtr/CustomPushButton.h>
#include <CustomCtr/CustomRadioButton.h>
#include <CustomCtr/CustomTreeWidget.h>
#include <CustomCtr/CustomWidget.h>

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    Custom::setTheme(Custom::ThemeLight);
    CustomTreeWidget tree;
    tree.cSetUserData(true);
    return tree.cUserData().toBool() && Custom::theme() == Custom::ThemeLight ? 0 : 1;
}
