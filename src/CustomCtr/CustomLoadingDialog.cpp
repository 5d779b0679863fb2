// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomLoadingDialog.h>

#include "CustomBusyIndicator.h"

#include <CustomCtr/CustomDefine.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMap>
#include <QPointer>

namespace
{

constexpr int kMargin = 16;
constexpr int kSpacing = 12;
constexpr int kTextWidth = 420;

using Indicators = QMap<int, QPointer<CustomLoadingDialog>>;

Indicators &indicators()
{
    static Indicators shown;
    return shown;
}

} // namespace

CustomLoadingDialog::CustomLoadingDialog(QWidget *parent)
    : QDialog(parent, Qt::Tool | Qt::FramelessWindowHint)
    , m_text(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    // Whoever types goes on typing where they were.
    setAttribute(Qt::WA_ShowWithoutActivating);

    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(new CustomBusyIndicator(this));
    layout->addWidget(m_text, 1);
    if (parent) {
        parent->installEventFilter(this);
    }
}

CustomLoadingDialog::~CustomLoadingDialog() = default;

void CustomLoadingDialog::showLoading(const QString &strText, int nId)
{
    QPointer<CustomLoadingDialog> &dialog = indicators()[nId];
    // One that the user closed is still there for a moment.
    if (!dialog || !dialog->isVisible()) {
        delete dialog;
        dialog = new CustomLoadingDialog(Custom::mainDialog());
    }
    dialog->setText(strText);
    dialog->show();
}

void CustomLoadingDialog::hideLoading(int nId)
{
    const QPointer<CustomLoadingDialog> dialog = indicators().take(nId);
    if (dialog) {
        dialog->hide();
        dialog->deleteLater();
    }
}

bool CustomLoadingDialog::isLoading(int nId)
{
    const QPointer<CustomLoadingDialog> dialog = indicators().value(nId);
    return dialog && dialog->isVisible();
}

void CustomLoadingDialog::setText(const QString &strText)
{
    setWindowTitle(strText);
    m_text->setText(strText);
    // A label that wraps asks for little width by itself.
    m_text->setFixedWidth(
        qMin(kTextWidth, m_text->fontMetrics().boundingRect(QRect(), 0, strText).width() + 1));
    adjustSize();
    standOverParent();
}

void CustomLoadingDialog::standOverParent()
{
    if (!parentWidget()) {
        return;
    }
    QRect area(QPoint(), size());
    area.moveCenter(parentWidget()->window()->frameGeometry().center());
    move(area.topLeft());
}

bool CustomLoadingDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
        standOverParent();
    }
    return QDialog::eventFilter(watched, event);
}
