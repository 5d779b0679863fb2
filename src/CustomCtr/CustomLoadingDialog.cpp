// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomLoadingDialog.h>

#include <CustomCtr/CustomDefine.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QMap>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>

namespace
{

using Indicators = QMap<int, QPointer<CustomLoadingDialog>>;

Indicators &indicators()
{
    static Indicators shown;
    return shown;
}

constexpr char kTextLabel[] = "cLoadingText";

} // namespace

CustomLoadingDialog::CustomLoadingDialog(QWidget *parent)
    : QDialog(parent, Qt::Tool | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);

    auto *busy = new QProgressBar(this);
    busy->setRange(0, 0);
    busy->setTextVisible(false);
    auto *text = new QLabel(this);
    text->setObjectName(QLatin1String(kTextLabel));
    text->setTextFormat(Qt::PlainText);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(busy);
}

CustomLoadingDialog::~CustomLoadingDialog() = default;

void CustomLoadingDialog::showLoading(const QString &strText, int nId)
{
    QWidget *over = Custom::mainDialog();
    QPointer<CustomLoadingDialog> &dialog = indicators()[nId];
    if (!dialog) {
        dialog = new CustomLoadingDialog(over);
    }
    dialog->findChild<QLabel *>(QLatin1String(kTextLabel))->setText(strText);
    dialog->adjustSize();
    if (over) {
        QRect area(QPoint(), dialog->size());
        area.moveCenter(over->frameGeometry().center());
        dialog->move(area.topLeft());
    }
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
