// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomDefine.h>

#include <QDialog>

class QDialogButtonBox;
class QPushButton;

/// The window of a message box. Destroys itself when it is closed.
class CustomBoxDialog : public QDialog
{
    Q_OBJECT

public:
    /// What a box shows; all texts are plain.
    struct Content {
        QString text;
        QString title;
        QString extra;
        Custom::IconStyle icon = Custom::IconNone;
        int buttons = 0; ///< CustomMessageBox::Button values
    };

    /// A new box that is not shown yet; null when one with the same text is open, which comes to the front.
    static CustomBoxDialog *create(QWidget *parent, const Content &content);

protected:
    void changeEvent(QEvent *event) override;

private:
    CustomBoxDialog(QWidget *parent, const Content &content);

    void createButtons(int wanted);
    void updateTexts();

    QDialogButtonBox *m_buttons = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_cancel = nullptr; ///< null where nothing can be cancelled
};
