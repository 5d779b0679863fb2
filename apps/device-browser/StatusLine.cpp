// SPDX-License-Identifier: Apache-2.0
#include "StatusLine.h"

#include "CameraOverview.h"
#include "EnumerationMonitor.h"
#include "EventReporter.h"
#include "PassScheduler.h"
#include "PlainLabel.h"
#include "TreeHost.h"
#include "TreeRows.h"

namespace browser
{

namespace
{

constexpr uint kTransports[] = {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL};

QString namesOf(uint transports)
{
    QStringList names;
    for (const uint transport : kTransports) {
        if (transports & transport)
            names << transportName(transport);
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

StatusLine::StatusLine(const Parts &parts, QWidget *parent)
    : QStatusBar(parent)
    , m_parts(parts)
    , m_activity(new PlainLabel)
    , m_durations(new PlainLabel)
    , m_count(new PlainLabel)
{
    addWidget(m_activity, 1);
    addPermanentWidget(m_durations);
    addPermanentWidget(m_count);
    connect(parts.scheduler, &PassScheduler::changed, this, &StatusLine::refresh);
    connect(parts.monitor, &EnumerationMonitor::passEnded, this, &StatusLine::refresh);
}

void StatusLine::refresh()
{
    m_activity->setText(activityText());
    m_durations->setText(durationText());
    if (m_parts.host->tree())
        m_count->setText(countText(countOf(rows::allDevices(*m_parts.host->tree()))));
}

QString StatusLine::activityText() const
{
    const PassScheduler &scheduler = *m_parts.scheduler;
    KelDeviceTree *tree = m_parts.host->tree();
    if (scheduler.transports() == 0)
        return tr("No transport is chosen");
    if (scheduler.isHeld())
        return tr("The tree is frozen");
    if (scheduler.paused() != 0)
        return tr("Waiting on %1 until you refresh: the last search failed").arg(namesOf(scheduler.paused()));
    if (tree && !tree->hasEnumOnce(scheduler.transports()))
        return tr("Searching for the first time: %1 …").arg(namesOf(scheduler.running()));
    if (!scheduler.isAutomatic()) {
        return scheduler.running() == 0 ? tr("Automatic refresh is off")
                                        : tr("Searching: %1 …").arg(namesOf(scheduler.running()));
    }
    return tr("Up to date, refreshed automatically");
}

QString StatusLine::durationText() const
{
    QStringList texts;
    for (const uint transport : kTransports) {
        const int milliseconds = m_parts.monitor->lastPassMs(transport);
        if ((m_parts.scheduler->transports() & transport) == 0 || milliseconds < 0)
            continue;
        texts << tr("%1 %2 ms").arg(transportName(transport)).arg(milliseconds);
    }
    return texts.isEmpty() ? QString() : tr("Last search: %1").arg(texts.join(QStringLiteral(", ")));
}

} // namespace browser
