// SPDX-License-Identifier: Apache-2.0
#include "DetailsPanel.h"

#include "FactColumns.h"
#include "PlainLabel.h"
#include "StandingColors.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace browser
{

namespace
{

constexpr int kMargin = 20;
constexpr int kWidestText = 760;

void shrinkTo(QVBoxLayout *layout, int count)
{
    while (layout->count() > count) {
        QLayoutItem *item = layout->takeAt(layout->count() - 1);
        delete item->widget();
        delete item;
    }
}

} // namespace

DetailsPanel::DetailsPanel(QWidget *parent)
    : QScrollArea(parent)
    , m_title(new PlainLabel)
    , m_kind(new PlainLabel)
    , m_badge(new PlainLabel)
    , m_paragraphs(new QVBoxLayout)
    , m_buttons(new QHBoxLayout)
    , m_facts(new FactColumns)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Details"));
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(10);
    auto *heading = new QHBoxLayout;
    heading->setSpacing(12);
    heading->addWidget(m_title, 1);
    heading->addWidget(m_badge, 0, Qt::AlignTop | Qt::AlignRight);
    layout->addLayout(heading);
    layout->addWidget(m_kind);
    m_paragraphs->setSpacing(8);
    layout->addLayout(m_paragraphs);
    m_buttons->setContentsMargins(0, 6, 0, 6);
    m_buttons->addStretch(1);
    layout->addLayout(m_buttons);
    layout->addWidget(m_facts);
    layout->addStretch(1);
    m_title->setWordWrap(true);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setWeight(QFont::DemiBold);
    m_title->setFont(large);
    setWidget(content);
}

void DetailsPanel::addButtons(const QList<QAction *> &actions)
{
    int place = 0;
    for (QAction *action : actions) {
        auto *button = new QPushButton;
        const auto follow = [button, action] {
            button->setText(action->text());
            button->setVisible(action->isEnabled());
        };
        connect(action, &QAction::changed, button, follow);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        m_buttons->insertWidget(place++, button);
        follow();
    }
}

void DetailsPanel::explain(const Explanation &explanation)
{
    m_explanation = explanation;
    m_title->setText(explanation.title);
    m_kind->setText(explanation.kind);
    showBadge();
    showParagraphs();
    m_facts->setGroups(explanation.groups);
}

QString DetailsPanel::asText() const
{
    QStringList lines{m_explanation.title, m_explanation.kind, m_explanation.state, QString()};
    lines += m_explanation.paragraphs;
    for (const FactGroup &group : m_explanation.groups) {
        lines << QString() << group.title;
        for (const Fact &fact : group.facts)
            lines << QStringLiteral("  %1: %2").arg(fact.label, fact.value);
    }
    return lines.join(QLatin1Char('\n'));
}

void DetailsPanel::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setAccessibleName(tr("Details"));
    if (event->type() == QEvent::StyleChange)
        showBadge();
}

void DetailsPanel::showBadge()
{
    const BadgeColors colors = badgeColors(m_explanation.standing);
    const QString mark = badgeMark(m_explanation.standing);
    const QString style = QStringLiteral("QLabel { background: %1; color: %2; border-radius: 10px; "
                                         "padding: 3px 12px; font-weight: 600; }")
                              .arg(colors.ground.name(), colors.text.name());
    if (m_badge->styleSheet() != style)
        m_badge->setStyleSheet(style);
    const QString kindStyle = QStringLiteral("color: %1;").arg(mutedTextColor().name());
    if (m_kind->styleSheet() != kindStyle)
        m_kind->setStyleSheet(kindStyle);
    m_badge->setText(mark.isEmpty() ? m_explanation.state
                                    : QStringLiteral("%1  %2").arg(mark, m_explanation.state));
    m_badge->setVisible(!m_explanation.state.isEmpty());
}

void DetailsPanel::showParagraphs()
{
    const int count = m_explanation.paragraphs.size();
    shrinkTo(m_paragraphs, count);
    while (m_paragraphs->count() < count) {
        auto *label = new PlainLabel;
        label->setWordWrap(true);
        label->setMaximumWidth(kWidestText);
        m_paragraphs->addWidget(label);
    }
    for (int i = 0; i < count; ++i)
        static_cast<QLabel *>(m_paragraphs->itemAt(i)->widget())->setText(m_explanation.paragraphs.at(i));
}

} // namespace browser
