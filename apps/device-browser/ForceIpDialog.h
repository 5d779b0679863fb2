// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ForceIpPlan.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace browser
{

/// Asks for the address that a camera is to have until it is switched off, and shows what will be sent.
/// Thread: GUI.
class ForceIpDialog : public QDialog
{
    Q_OBJECT

public:
    ForceIpDialog(const KELA_STRUCT_DEVICE_INFO &device, const AddressNeighbourhood &around,
                  QWidget *parent = nullptr);

    /// The address chosen; meaningful when the dialog was accepted.
    TemporaryAddress choice() const;

private:
    void check();

    KELA_STRUCT_DEVICE_INFO m_device;
    AddressNeighbourhood m_around;
    QLineEdit *m_address;
    QLineEdit *m_mask;
    QLineEdit *m_gateway;
    QLabel *m_message;
    QDialogButtonBox *m_buttons;
};

} // namespace browser
