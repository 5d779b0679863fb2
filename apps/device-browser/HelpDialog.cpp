// SPDX-License-Identifier: Apache-2.0
#include "HelpDialog.h"

#include "FactTable.h"

#include <QDialogButtonBox>
#include <QKeySequence>
#include <QPushButton>
#include <QVBoxLayout>

namespace browser
{

namespace
{

QString keys(const QKeySequence &sequence)
{
    return sequence.toString(QKeySequence::NativeText);
}

} // namespace

HelpDialog::HelpDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Keys"));
    setMinimumWidth(480);
    FactGroup group{tr("Everything works without a mouse"), {}};
    group.add(keys(Qt::Key_Up) + QLatin1Char(' ') + keys(Qt::Key_Down), tr("choose a row"));
    group.add(keys(Qt::Key_Left) + QLatin1Char(' ') + keys(Qt::Key_Right), tr("fold and unfold a row"));
    group.add(keys(Qt::Key_Return), tr("connect or disconnect the chosen camera, open or close an interface"));
    group.add(keys(Qt::Key_Menu), tr("show what can be done with the row"));
    group.add(keys(QStringLiteral("Ctrl+T")), tr("keep the camera on top"));
    group.add(keys(QStringLiteral("Ctrl+L")), tr("show the live values of a connected camera"));
    group.add(keys(QStringLiteral("Ctrl+I")), tr("assign a temporary address"));
    group.add(keys(Qt::Key_F5), tr("search everything now"));
    group.add(keys(QStringLiteral("Shift+F5")), tr("search the chosen group now"));
    group.add(keys(QStringLiteral("Ctrl+P")), tr("choose the GenTL producers"));
    auto *layout = new QVBoxLayout(this);
    auto *table = new FactTable;
    table->setGroup(group);
    layout->addWidget(table);
    layout->addStretch(1);
    auto *buttons = new QDialogButtonBox;
    connect(buttons->addButton(tr("Close"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &QDialog::reject);
    layout->addWidget(buttons);
}

} // namespace browser
