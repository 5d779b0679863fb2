// SPDX-License-Identifier: Apache-2.0
#include "FactTable.h"

#include "PlainLabel.h"
#include "StandingColors.h"

#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace browser
{

namespace
{

/// As wide in every table, so that values stand below each other across the panel.
constexpr int kLabelWidth = 150;
constexpr int kColumns = 3;

} // namespace

FactTable::FactTable(QWidget *parent)
    : QWidget(parent)
    , m_title(new PlainLabel)
    , m_line(new QWidget)
    , m_grid(new QGridLayout)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    m_title->setFont(bold);
    layout->addWidget(m_title);
    m_line->setFixedHeight(1);
    m_line->setAutoFillBackground(true);
    layout->addWidget(m_line);
    m_grid->setHorizontalSpacing(16);
    m_grid->setVerticalSpacing(4);
    m_grid->setColumnMinimumWidth(0, kLabelWidth);
    m_grid->setColumnStretch(1, 1);
    layout->addLayout(m_grid);
    showStyle();
}

void FactTable::setGroup(const FactGroup &group)
{
    m_title->setText(group.title);
    const int count = group.facts.size();
    const bool hasNotes = std::any_of(group.facts.cbegin(), group.facts.cend(),
                                      [](const Fact &fact) { return !fact.note.isEmpty(); });
    m_grid->setColumnStretch(2, hasNotes ? 3 : 0);
    for (int row = 0; row < count; ++row) {
        cell(row, 0)->setText(group.facts.at(row).label);
        cell(row, 1)->setText(group.facts.at(row).value);
        cell(row, 2)->setText(group.facts.at(row).note);
    }
    m_rows = std::max(m_rows, count);
    for (int row = 0; row < m_rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            QLabel *label = cell(row, column);
            label->setVisible(row < count && (column < kColumns - 1 || !label->text().isEmpty()));
        }
    }
}

void FactTable::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        showStyle();
}

QLabel *FactTable::cell(int row, int column)
{
    if (QLayoutItem *item = m_grid->itemAtPosition(row, column))
        return static_cast<QLabel *>(item->widget());
    auto *label = new PlainLabel;
    label->setWordWrap(column == 1);
    if (column == 0)
        label->setStyleSheet(QStringLiteral("color: %1;").arg(mutedTextColor().name()));
    m_grid->addWidget(label, row, column, Qt::AlignTop);
    return label;
}

void FactTable::showStyle()
{
    const QString line = QStringLiteral("background: %1;").arg(lineColor().name());
    if (m_line->styleSheet() == line)
        return;
    m_line->setStyleSheet(line);
    for (int row = 0; row < m_rows; ++row)
        cell(row, 0)->setStyleSheet(QStringLiteral("color: %1;").arg(mutedTextColor().name()));
}

} // namespace browser
