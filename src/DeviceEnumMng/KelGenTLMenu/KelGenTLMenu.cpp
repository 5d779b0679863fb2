// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomMessageBox.h>
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QPointer>
#include <QStandardPaths>

namespace
{
constexpr int kStateImported = 3;

void warn(const QString &text)
{
    CustomMessageBox::warning(Custom::mainDialog(), text, KelGenTLMenu::tr("Prompt"),
                              CustomMessageBox::ButtonOk, QString());
}
} // namespace

KelGenTLMenu::KelGenTLMenu(QWidget *parent)
    : CustomMenu(parent)
{
    m_importAction = new QAction(this);
    m_defaultCtiWidget = new CDefaultCtiSelWidget(this);
    m_defaultLoadMenu = cAddCustomWidgetMenu(m_defaultCtiWidget);
    addAction(m_importAction);
    UpdateText();

    connect(m_defaultCtiWidget, &CDefaultCtiSelWidget::SigCtiChanged, this, &KelGenTLMenu::SigCtiChanged);
    connect(m_importAction, &QAction::triggered, this, &KelGenTLMenu::OnAddCtiFile);
}

KelGenTLMenu::~KelGenTLMenu()
{
    // The panel is hidden once more as the menu goes, and saves. Nobody may hear of it: neither this menu
    // nor its parent is itself any more then.
    m_defaultCtiWidget->disconnect(this);
}

void KelGenTLMenu::UpdateText()
{
    if (m_defaultLoadMenu) {
        m_defaultLoadMenu->setTitle(tr("Default Load"));
    }
    if (m_importAction) {
        m_importAction->setText(tr("Import Cti File"));
    }
}

void KelGenTLMenu::OnAddCtiFile()
{
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    const QPointer<KelGenTLMenu> self(this);
    // The odd form of the filter is how the program's dialogs are known.
    const QString chosen = KelInterface::getOpenFileName(nullptr, tr("Select Cti File."), desktop,
                                                         QStringLiteral("cti file(*.cti) | *.cti"));
    // The dialog lets other things happen meanwhile.
    if (!self || chosen.isEmpty()) {
        return;
    }

    const QString path = QDir::toNativeSeparators(chosen);
    if (m_3rdCtiList.contains(path)) {
        warn(tr("The cti file have been load."));
        return;
    }
    if (isDefaultCti(path)) {
        warn(tr("It is the default load cti file."));
        return;
    }
    m_3rdCtiList.append(path);
    Q_EMIT SigCtiChanged();
}

bool KelGenTLMenu::isDefaultCti(const QString &path) const
{
    const QMap<QString, int> states = m_defaultCtiWidget->GetCtiStates();
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        if (QDir::toNativeSeparators(m_defaultCtiWidget->GetCtiDir() + state.key()) == path) {
            return true;
        }
    }
    return false;
}

void KelGenTLMenu::GetCtiStates(QMap<QString, int> &states)
{
    states.clear();
    const QMap<QString, int> defaults = m_defaultCtiWidget->GetCtiStates();
    for (auto state = defaults.cbegin(); state != defaults.cend(); ++state) {
        states[QDir::toNativeSeparators(m_defaultCtiWidget->GetCtiDir() + state.key())] = state.value();
    }
    for (const QString &path : qAsConst(m_3rdCtiList)) {
        states[path] = kStateImported;
    }
}

void KelGenTLMenu::Delete3rdCti(const QString &path)
{
    if (m_3rdCtiList.removeOne(path)) {
        Q_EMIT SigCtiChanged();
    }
}

void KelGenTLMenu::SetEnableVirtualPort(bool enable)
{
    if (m_defaultCtiWidget) {
        m_defaultCtiWidget->SetEnableVirtualPort(enable);
    }
}

void KelGenTLMenu::changeEvent(QEvent *e)
{
    if (e->type() == QEvent::LanguageChange) {
        UpdateText();
    }
    CustomMenu::changeEvent(e);
}
