// SPDX-License-Identifier: Apache-2.0
#include "ForceIpDialog.h"

#include "DeviceText.h"
#include "Ipv4.h"
#include "PlainLabel.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace browser
{

ForceIpDialog::ForceIpDialog(const KELA_STRUCT_DEVICE_INFO &device, const AddressNeighbourhood &around,
                             QWidget *parent)
    : QDialog(parent)
    , m_device(device)
    , m_around(around)
    , m_address(new QLineEdit)
    , m_mask(new QLineEdit)
    , m_gateway(new QLineEdit)
    , m_message(new PlainLabel)
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Assign temporary address"));
    setMinimumWidth(520);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    auto *intro =
        new PlainLabel(tr("\"%1\" keeps this address until it is switched off. Nothing is stored in the "
                          "camera.")
                           .arg(displayName(device.deviceInfo)));
    intro->setWordWrap(true);
    layout->addWidget(intro);
    auto *form = new QFormLayout;
    form->addRow(tr("Address now:"),
                 new PlainLabel(ipv4::textWithMask(device.deviceInfo.special.gige.currentIp,
                                                   device.deviceInfo.special.gige.subnetMask)));
    form->addRow(tr("The card's address:"),
                 new PlainLabel(ipv4::textWithMask(around.card.address, around.card.mask)));
    form->addRow(tr("&New address:"), m_address);
    form->addRow(tr("&Mask:"), m_mask);
    form->addRow(tr("&Gateway (may be empty):"), m_gateway);
    layout->addLayout(form);
    m_message->setWordWrap(true);
    layout->addWidget(m_message);
    layout->addWidget(m_buttons);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Assign"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    if (const auto suggestion = suggestAddress(around)) {
        m_address->setText(ipv4::text(suggestion->address));
        m_mask->setText(ipv4::text(suggestion->mask));
    }
    for (QLineEdit *edit : {m_address, m_mask, m_gateway})
        connect(edit, &QLineEdit::textChanged, this, &ForceIpDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

TemporaryAddress ForceIpDialog::choice() const
{
    return {ipv4::parse(m_address->text()).value_or(0), ipv4::parse(m_mask->text()).value_or(0),
            ipv4::parse(m_gateway->text()).value_or(0)};
}

void ForceIpDialog::check()
{
    const TemporaryAddress wanted = choice();
    QString objection = objectionTo(wanted, m_around);
    if (objection.isEmpty() && !m_gateway->text().trimmed().isEmpty() && wanted.gateway == 0)
        objection = tr("The gateway is no address.");
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(objection.isEmpty());
    if (!objection.isEmpty()) {
        m_message->setText(objection);
        return;
    }
    const KELA_GIGE_DEVICE_INFO &camera = m_device.deviceInfo.special.gige;
    m_message->setText(
        tr("Will be sent as a broadcast on the card %1, for the hardware address %2 alone: address "
           "%3, mask %4, gateway %5.")
            .arg(ipv4::text(m_around.card.address), ipv4::macText(camera.macHigh, camera.macLow),
                 ipv4::text(wanted.address), ipv4::text(wanted.mask),
                 wanted.gateway == 0 ? QStringLiteral("0.0.0.0") : ipv4::text(wanted.gateway)));
}

} // namespace browser
