// SPDX-License-Identifier: Apache-2.0
#include "TreeHost.h"

#include "TreeRows.h"

#include <QVBoxLayout>

namespace browser
{

TreeHost::TreeHost(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

TreeHost::~TreeHost()
{
    delete m_tree;
}

void TreeHost::build()
{
    if (m_tree) {
        Q_EMIT aboutToReplace();
        delete m_tree;
    }
    m_tree = new KelDeviceTree(this);
    m_tree->setDragEnabled(true);
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    rows::addCameraLinkGroup(*m_tree);
    layout()->addWidget(m_tree);
    setFocusProxy(m_tree);
    Q_EMIT replaced(m_tree);
}

} // namespace browser
