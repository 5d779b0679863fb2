// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomWidget.h>

#include <QString>

class CustomCheckBox;
class CustomRadioButton;
class QVBoxLayout;

/// One producer of the default folder in the panel: a check box that switches it on and, for those
/// that offer it, the choice how it is opened.
class CCtiItemWidget : public CustomWidget
{
public:
    /// @param ctiName  file name without folder
    /// @param state    producer state to start with
    CCtiItemWidget(const QString &ctiName, int state, QWidget *parent);
    ~CCtiItemWidget() override;

    /// The producer state that the row stands for now. While the virtual port is disabled, a row with
    /// the choice answers the state it was built with, whatever its boxes show: the stored choice must
    /// outlive a time in which the port cannot be used.
    int GetCtiState();

    /// Sets the translated texts.
    void UpdateText();

    /// Shows the choice only while the producer is switched on.
    void OnCheckBoxChanged(int state);

    /// Enables or disables the choice; without a choice nothing happens.
    void SetEnableVirtualPort(bool enable);

    void changeEvent(QEvent *e) override;

private:
    void createRadioPanel(QVBoxLayout *outer);

    bool m_enableVirtualPort = true;
    int m_initState;
    CustomCheckBox *m_checkBox = nullptr;
    CustomRadioButton *m_defaultRadio = nullptr;
    CustomRadioButton *m_virtualPortRadio = nullptr;
    CustomWidget *m_radioPanel = nullptr;
    QString m_ctiName;
};
