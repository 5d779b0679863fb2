// SPDX-License-Identifier: Apache-2.0
#include "CustomBoxDialog.h"

#include <CustomCtr/CustomMessageBox.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QMap>
#include <QPointer>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

constexpr int kTextWidth = 420;

using Boxes = QMap<QString, QPointer<CustomBoxDialog>>;

Boxes &openBoxes()
{
    static Boxes boxes;
    return boxes;
}

QPixmap pixmapOf(Custom::IconStyle icon, const QWidget &widget)
{
    QStyle::StandardPixmap standard = QStyle::SP_MessageBoxInformation;
    switch (icon) {
    case Custom::IconNone:
        return QPixmap();
    case Custom::IconQuestion:
        standard = QStyle::SP_MessageBoxQuestion;
        break;
    case Custom::IconWarning:
        standard = QStyle::SP_MessageBoxWarning;
        break;
    case Custom::IconInformation:
    case Custom::IconHint:
        break;
    }
    const int size = widget.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &widget);
    return widget.style()->standardIcon(standard, nullptr, &widget).pixmap(size);
}

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setMinimumWidth(kTextWidth);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

CustomBoxDialog *CustomBoxDialog::create(QWidget *parent, const Content &content)
{
    QPointer<CustomBoxDialog> &box = openBoxes()[content.text + QLatin1Char('\n') + content.extra];
    if (box && box->isVisible()) {
        box->raise();
        return nullptr;
    }
    box = new CustomBoxDialog(parent, content);
    return box;
}

CustomBoxDialog::CustomBoxDialog(QWidget *parent, const Content &content)
    : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(content.title);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    if (content.buttons & CustomMessageBox::ButtonCancel) {
        buttons->addButton(QDialogButtonBox::Cancel);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *texts = new QVBoxLayout;
    texts->addWidget(plainLabel(content.text, this));
    if (!content.extra.isEmpty()) {
        texts->addWidget(plainLabel(content.extra, this));
    }
    auto *row = new QHBoxLayout;
    const QPixmap pixmap = pixmapOf(content.icon, *this);
    if (!pixmap.isNull()) {
        auto *icon = new QLabel(this);
        icon->setPixmap(pixmap);
        row->addWidget(icon, 0, Qt::AlignTop);
    }
    row->addLayout(texts, 1);
    auto *outer = new QVBoxLayout(this);
    outer->addLayout(row);
    outer->addWidget(buttons);
}
