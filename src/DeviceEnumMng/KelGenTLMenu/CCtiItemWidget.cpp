// SPDX-License-Identifier: Apache-2.0
#include "CCtiItemWidget.h"

#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomRadioButton.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QEvent>
#include <QVBoxLayout>

namespace
{
constexpr int kRowHeight = 30;
constexpr int kMenuRowStyle = 2;
constexpr int kRadioIndent = 26;

constexpr int kStateOff = 0;
constexpr int kStateDefault = 1;
constexpr int kStateVirtualPort = 2;
} // namespace

CCtiItemWidget::CCtiItemWidget(const QString &ctiName, int state, QWidget *parent)
    : CustomWidget(parent)
    , m_initState(state)
    , m_ctiName(ctiName)
{
    auto *outer = new QVBoxLayout;
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    m_checkBox = new CustomCheckBox(this);
    m_checkBox->cSetStyleSelector(kMenuRowStyle);
    m_ctiName.remove(QStringLiteral(".cti"));
    m_checkBox->setText(m_ctiName);
    m_checkBox->setFixedHeight(kRowHeight);
    outer->addWidget(m_checkBox);
    m_checkBox->setChecked(state != kStateOff);

    if (m_ctiName.contains(QStringLiteral("CML"), Qt::CaseInsensitive)) {
        createRadioPanel(outer);
    }
    setLayout(outer);
    UpdateText();

    connect(m_checkBox, &QCheckBox::stateChanged, this, &CCtiItemWidget::OnCheckBoxChanged);
    OnCheckBoxChanged(m_checkBox->checkState());
}

CCtiItemWidget::~CCtiItemWidget() = default;

void CCtiItemWidget::createRadioPanel(QVBoxLayout *outer)
{
    auto *inner = new QVBoxLayout;
    inner->setContentsMargins(kRadioIndent, 0, 0, 0);
    inner->setSpacing(0);

    m_radioPanel = new CustomWidget(this);
    m_virtualPortRadio = new CustomRadioButton(this);
    m_defaultRadio = new CustomRadioButton(this);
    m_virtualPortRadio->setFixedHeight(kRowHeight);
    m_defaultRadio->setFixedHeight(kRowHeight);
    inner->addWidget(m_defaultRadio);
    inner->addWidget(m_virtualPortRadio);
    m_radioPanel->setLayout(inner);

    m_defaultRadio->setChecked(m_initState != kStateVirtualPort);
    m_virtualPortRadio->setChecked(m_initState == kStateVirtualPort);
    outer->addWidget(m_radioPanel);
}

int CCtiItemWidget::GetCtiState()
{
    if (!m_checkBox->isChecked()) {
        return kStateOff;
    }
    if (!m_defaultRadio || !m_virtualPortRadio) {
        return kStateDefault;
    }
    if (!m_enableVirtualPort) {
        return m_initState;
    }
    return m_virtualPortRadio->isChecked() ? kStateVirtualPort : kStateDefault;
}

void CCtiItemWidget::UpdateText()
{
    if (m_virtualPortRadio) {
        m_virtualPortRadio->setText(KelGenTLMenu::tr("Virtual Port"));
    }
    if (m_defaultRadio) {
        m_defaultRadio->setText(KelGenTLMenu::tr("Default"));
    }
}

void CCtiItemWidget::OnCheckBoxChanged(int /*state*/)
{
    const bool isOn = m_checkBox->isChecked();
    if (m_virtualPortRadio) {
        m_virtualPortRadio->setVisible(isOn);
    }
    if (m_defaultRadio) {
        m_defaultRadio->setVisible(isOn);
    }
}

void CCtiItemWidget::SetEnableVirtualPort(bool enable)
{
    if (!m_defaultRadio || !m_virtualPortRadio) {
        return;
    }
    m_enableVirtualPort = enable;
    m_defaultRadio->setEnabled(enable);
    m_virtualPortRadio->setEnabled(enable);
    if (!enable) {
        m_defaultRadio->setChecked(true);
        m_virtualPortRadio->setChecked(false);
    }
}

void CCtiItemWidget::changeEvent(QEvent *e)
{
    if (e->type() == QEvent::LanguageChange) {
        UpdateText();
    }
    QWidget::changeEvent(e);
}
