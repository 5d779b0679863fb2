// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>

class KelDeviceTree;
class QTreeWidgetItem;

namespace browser
{

class ConnectionManager;
class EnumerationMonitor;
class EventLog;
class InterfaceManager;
class TreeHost;

/// Writes into the event log what happens: rows that come, change their state and go, connections, and
/// passes that fail. Thread: GUI.
class EventReporter : public QObject
{
    Q_OBJECT

public:
    /// What is reported on; all must outlive this.
    struct Parts {
        TreeHost *host;
        ConnectionManager *connections;
        InterfaceManager *interfaces;
        EnumerationMonitor *monitor;
        EventLog *log;
    };

    explicit EventReporter(const Parts &parts, QObject *parent = nullptr);

private:
    void listenTo(KelDeviceTree *tree);
    void listenToConnections();
    void noteNewDevice(QTreeWidgetItem *row);
    void noteChangedDevice(QTreeWidgetItem *row);
    void noteGoneDevice(QTreeWidgetItem *row);
    void notePassEnd(int transport, int milliseconds, int errorCode);
    QString nameOf(long id) const;

    Parts m_parts;
    QHash<long, int> m_states;
    QHash<long, QString> m_names;
    QHash<int, int> m_lastResults;
};

/// A transport's name as the tree shows it.
QString transportName(uint transport);

} // namespace browser
