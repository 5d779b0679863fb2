// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStatusBar>

class QLabel;

namespace browser
{

class EnumerationMonitor;
class PassScheduler;
class TreeHost;

/// Tells what runs, how long the last pass of each transport took, and how many cameras there are.
/// Thread: GUI.
class StatusLine : public QStatusBar
{
    Q_OBJECT

public:
    /// What is looked at; all must outlive this.
    struct Parts {
        TreeHost *host;
        PassScheduler *scheduler;
        EnumerationMonitor *monitor;
    };

    explicit StatusLine(const Parts &parts, QWidget *parent = nullptr);

    void refresh();

private:
    QString activityText() const;
    QString durationText() const;

    Parts m_parts;
    QLabel *m_activity;
    QLabel *m_durations;
    QLabel *m_count;
};

} // namespace browser
