// SPDX-License-Identifier: Apache-2.0
#include "CustomBoxDialog.h"

#include "CustomImages.h"

#include <CustomCtr/CustomMessageBox.h>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QMap>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

constexpr int kTextWidth = 420;
constexpr int kMargin = 18;
constexpr int kSpacing = 14;
constexpr int kLongestText = 2000; // characters; a box that is higher than the screen cannot be closed

using Boxes = QMap<QString, QPointer<CustomBoxDialog>>;

Boxes &openBoxes()
{
    static Boxes boxes;
    return boxes;
}

QString imageOf(Custom::IconStyle icon)
{
    switch (icon) {
    case Custom::IconInformation:
        return QStringLiteral(":/CustomCtr/boxes/information.png");
    case Custom::IconQuestion:
        return QStringLiteral(":/CustomCtr/boxes/question.png");
    case Custom::IconHint:
        return QStringLiteral(":/CustomCtr/boxes/hint.png");
    case Custom::IconWarning:
        return QStringLiteral(":/CustomCtr/boxes/warning.png");
    case Custom::IconNone:
        break;
    }
    return QString();
}

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text.left(kLongestText));
    label->setWordWrap(true);
    label->setMinimumWidth(kTextWidth);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

void forgetClosedBoxes()
{
    for (auto box = openBoxes().begin(); box != openBoxes().end();) {
        const bool isOpen = *box && (*box)->isVisible();
        box = isOpen ? box + 1 : openBoxes().erase(box);
    }
}

} // namespace

CustomBoxDialog *CustomBoxDialog::create(QWidget *parent, const Content &content)
{
    forgetClosedBoxes();
    const QString key = content.text + QLatin1Char('\n') + content.extra;
    const QPointer<CustomBoxDialog> open = openBoxes().value(key);
    if (open) {
        open->raise();
        return nullptr;
    }
    auto *box = new CustomBoxDialog(parent, content);
    openBoxes().insert(key, box);
    return box;
}

CustomBoxDialog::CustomBoxDialog(QWidget *parent, const Content &content)
    : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(content.title);

    auto *texts = new QVBoxLayout;
    texts->addWidget(plainLabel(content.text, this));
    if (!content.extra.isEmpty()) {
        texts->addWidget(plainLabel(content.extra, this));
    }
    texts->addStretch();

    auto *row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    const QPixmap image = CustomImages::pixmap(imageOf(content.icon), devicePixelRatioF());
    if (!image.isNull()) {
        auto *icon = new QLabel(this);
        icon->setPixmap(image);
        row->addWidget(icon, 0, Qt::AlignTop);
    }
    row->addLayout(texts, 1);

    createButtons(content.buttons);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    outer->setSpacing(kSpacing);
    outer->addLayout(row);
    outer->addWidget(m_buttons);
}

// No standard buttons: Qt gives those its own words again on a change of the language, and these are
// translated only where Qt's translations are installed.
void CustomBoxDialog::createButtons(int wanted)
{
    m_buttons = new QDialogButtonBox(this);
    m_ok = m_buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    if (wanted & CustomMessageBox::ButtonCancel) {
        m_cancel = m_buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    }
    m_ok->setDefault(true);
    m_ok->setFocus();
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateTexts();
}

void CustomBoxDialog::updateTexts()
{
    m_ok->setText(QCoreApplication::translate("CustomMessageBox", "OK"));
    if (m_cancel) {
        m_cancel->setText(QCoreApplication::translate("CustomMessageBox", "Cancel"));
    }
}

void CustomBoxDialog::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        updateTexts();
    }
}
