// SPDX-License-Identifier: Apache-2.0
#include "FactColumns.h"

#include "FactTable.h"

#include <QGridLayout>

namespace browser
{

namespace
{

/// Two columns need this width to keep their values in one line.
constexpr int kRoomForTwo = 680;

} // namespace

FactColumns::FactColumns(QWidget *parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(36);
    m_grid->setVerticalSpacing(22);
}

void FactColumns::setGroups(const QVector<FactGroup> &groups)
{
    while (m_tables.size() > groups.size())
        delete m_tables.takeLast();
    while (m_tables.size() < groups.size())
        m_tables.append(new FactTable(this));
    for (int i = 0; i < groups.size(); ++i)
        m_tables.at(i)->setGroup(groups.at(i));
    place();
}

void FactColumns::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

void FactColumns::place()
{
    const int columns = width() >= kRoomForTwo && m_tables.size() > 1 ? 2 : 1;
    if (columns == m_columns && m_grid->count() == m_tables.size())
        return;
    m_columns = columns;
    for (FactTable *table : qAsConst(m_tables))
        m_grid->removeWidget(table);
    for (int i = 0; i < m_tables.size(); ++i) {
        m_grid->addWidget(m_tables.at(i), i / m_columns, i % m_columns, Qt::AlignTop);
        m_tables.at(i)->show();
    }
    for (int column = 0; column < 2; ++column)
        m_grid->setColumnStretch(column, column < m_columns ? 1 : 0);
}

} // namespace browser
