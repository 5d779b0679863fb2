// SPDX-License-Identifier: Apache-2.0
#include "LiveView.h"

#include "ConnectionManager.h"
#include "DeviceExplanation.h"
#include "DeviceText.h"
#include "PlainLabel.h"
#include "StandingColors.h"

#include <QEvent>
#include <QHeaderView>
#include <QTime>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace browser
{

namespace
{

constexpr qint64 kDayMs = 24LL * 3600 * 1000;

} // namespace

LiveView::LiveView(long id, ConnectionManager *manager, QWidget *parent)
    : QWidget(parent)
    , m_id(id)
    , m_manager(manager)
    , m_title(new PlainLabel)
    , m_state(new PlainLabel)
    , m_table(new QTreeWidget)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setWeight(QFont::DemiBold);
    m_title->setFont(large);
    layout->addWidget(m_title);
    layout->addWidget(m_state);
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setColumnCount(2);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(m_table, 1);
    if (const KELA_STRUCT_DEVICE_INFO *device = manager->device(id))
        m_name = displayName(device->deviceInfo);
    m_title->setText(m_name);
    m_since.start();
    connect(manager, &ConnectionManager::changed, this, [this](long changedId) {
        if (changedId == m_id)
            showState();
    });
    connect(manager, &ConnectionManager::valuesRead, this, [this](long readId, const ReadValues &values) {
        if (readId == m_id)
            showValues(values);
    });
    retranslate();
    showValues(manager->values(id));
}

void LiveView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    if (event->type() == QEvent::StyleChange)
        showState();
}

void LiveView::showState()
{
    const SessionState state = m_manager->session(m_id).state;
    const bool isLive = state == SessionState::Open;
    const QColor color = isLive ? mutedTextColor() : badgeColors(Standing::Blocked).text;
    const QString style = QStringLiteral("color: %1;").arg(color.name());
    if (m_state->styleSheet() != style)
        m_state->setStyleSheet(style);
    if (isLive) {
        const QTime shown = QTime(0, 0).addMSecs(static_cast<int>(m_since.elapsed() % kDayMs));
        m_state->setText(tr("Live, in view for %1").arg(shown.toString(QStringLiteral("HH:mm:ss"))));
    } else if (state == SessionState::Lost) {
        m_state->setText(tr("Connection lost; the values are the last ones read."));
    } else {
        m_state->setText(tr("Not connected any more; the values are the last ones read."));
    }
    m_table->setEnabled(isLive);
}

void LiveView::showValues(const ReadValues &values)
{
    showState();
    QVector<Fact> lines;
    for (const ReadValue &value : values)
        lines.append({value.node, valueText(value)});
    if (lines.isEmpty())
        lines = factsOfRecord();
    // What was shown last stays in view when the camera has been given back.
    if (lines.isEmpty())
        return;
    while (m_table->topLevelItemCount() > lines.size())
        delete m_table->takeTopLevelItem(lines.size());
    while (m_table->topLevelItemCount() < lines.size())
        m_table->addTopLevelItem(new QTreeWidgetItem);
    for (int i = 0; i < lines.size(); ++i) {
        m_table->topLevelItem(i)->setText(0, lines.at(i).label);
        m_table->topLevelItem(i)->setText(1, lines.at(i).value);
    }
    m_table->resizeColumnToContents(0);
}

QVector<Fact> LiveView::factsOfRecord() const
{
    QVector<Fact> facts;
    const KELA_STRUCT_DEVICE_INFO *device = m_manager->device(m_id);
    if (!device || !watchedNodes(device->deviceInfo.transport).isEmpty())
        return facts;
    DeviceContext context;
    context.node = readDeviceNode(device->deviceInfo);
    const QVector<FactGroup> groups = explainDevice(*device, context).groups;
    for (const FactGroup &group : groups)
        facts += group.facts;
    return facts;
}

void LiveView::retranslate()
{
    m_table->setHeaderLabels({tr("Value"), tr("Now")});
    m_table->setAccessibleName(tr("Live values of %1").arg(m_name));
    showValues(m_manager->values(m_id));
}

} // namespace browser
