// SPDX-License-Identifier: Apache-2.0
#include "FilterDialog.h"

#include "FilterEditor.h"
#include "PlainLabel.h"

#include <CommonTools/KelInterface.h>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace browser
{

FilterDialog::FilterDialog(QWidget *parent)
    : QDialog(parent)
    , m_vendor(new FilterEditor(tr("Vendors")))
    , m_model(new FilterEditor(tr("Models")))
    , m_message(
          new PlainLabel(tr("Whole names are compared; upper and lower case are the same. The filters take "
                            "effect in a new tree: with the next start, or at once when you rebuild the "
                            "tree now.")))
{
    setWindowTitle(tr("Filters"));
    setMinimumWidth(560);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(m_vendor);
    layout->addWidget(m_model);
    m_message->setWordWrap(true);
    layout->addWidget(m_message);
    auto *buttons = new QDialogButtonBox;
    QPushButton *rebuild = buttons->addButton(tr("Save and rebuild the tree"), QDialogButtonBox::AcceptRole);
    QPushButton *save = buttons->addButton(tr("Save"), QDialogButtonBox::ApplyRole);
    QPushButton *cancel = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    layout->addWidget(buttons);
    m_vendor->setFilter(KelInterface::vendorFilterState(), KelInterface::vendorFilterInclude(),
                        KelInterface::vendorFilterExclude());
    m_model->setFilter(KelInterface::modelFilterState(), KelInterface::modelFilterInclude(),
                       KelInterface::modelFilterExclude());
    connect(rebuild, &QPushButton::clicked, this, [this] { store(true); });
    connect(save, &QPushButton::clicked, this, [this] { store(false); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void FilterDialog::store(bool isRebuildWanted)
{
    const bool isStored =
        KelInterface::setVendorFilter(m_vendor->state(), m_vendor->include(), m_vendor->exclude()) &&
        KelInterface::setModelFilter(m_model->state(), m_model->include(), m_model->exclude());
    if (!isStored) {
        m_message->setText(
            tr("The filters could not be written to the folder %1.").arg(KelInterface::programDataPath()));
        return;
    }
    accept();
    if (isRebuildWanted)
        Q_EMIT rebuildWanted();
}

} // namespace browser
