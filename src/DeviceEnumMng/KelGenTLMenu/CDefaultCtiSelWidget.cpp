// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>

#include "CCtiItemWidget.h"
#include "CtiConfigFile.h"

#include <QMouseEvent>
#include <QPointer>
#include <QSettings>
#include <QVBoxLayout>

CDefaultCtiSelWidget::CDefaultCtiSelWidget(QWidget *parent)
    : CustomWidget(parent)
{
    InitData();
    cSetBackgroundColor(QStringLiteral("#303030"), Custom::StatusNormal, QStringList());
    mergeDefaultFolder();
    createRows();
}

CDefaultCtiSelWidget::~CDefaultCtiSelWidget() = default;

void CDefaultCtiSelWidget::InitData()
{
    m_ctiStates.clear();
    m_ctiStates = CtiConfigFile::parse(CtiConfigFile::readValue());
}

void CDefaultCtiSelWidget::mergeDefaultFolder()
{
    CtiConfigFile::merge(m_ctiStates, CtiConfigFile::producersIn(GetCtiDir()));
}

void CDefaultCtiSelWidget::createRows()
{
    auto *layout = new QVBoxLayout;
    layout->setContentsMargins(16, 6, 10, 6);
    layout->setSpacing(0);
    for (auto state = m_ctiStates.cbegin(); state != m_ctiStates.cend(); ++state) {
        auto *row = new CCtiItemWidget(state.key(), state.value(), this);
        layout->addWidget(row);
        m_ctiItems[state.key()] = row;
    }
    setLayout(layout);
}

QMap<QString, int> &CDefaultCtiSelWidget::GetCtiStates()
{
    return m_ctiStates;
}

QString CDefaultCtiSelWidget::GetCtiDir()
{
    return QStringLiteral("/opt/KELS/lib/64/");
}

void CDefaultCtiSelWidget::SetEnableVirtualPort(bool enable)
{
    for (CCtiItemWidget *row : qAsConst(m_ctiItems)) {
        row->SetEnableVirtualPort(enable);
    }
}

void CDefaultCtiSelWidget::hideEvent(QHideEvent *e)
{
    m_ctiStates.clear();
    QString value;
    for (auto row = m_ctiItems.cbegin(); row != m_ctiItems.cend(); ++row) {
        const int state = row.value()->GetCtiState();
        value += CtiConfigFile::piece(row.key(), state);
        m_ctiStates[row.key()] = state;
    }

    // Reaches the disk when it leaves the scope, after the announcement. It is no child of the panel:
    // a receiver may destroy that.
    QSettings settings(CtiConfigFile::path(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Common/CtiDefault"), value);

    const QPointer<CDefaultCtiSelWidget> self(this);
    Q_EMIT SigCtiChanged();
    if (self) {
        QWidget::hideEvent(e);
    }
}

void CDefaultCtiSelWidget::mouseReleaseEvent(QMouseEvent *e)
{
    e->accept();
}
