// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CommandLine.h"
#include "ConnectionManager.h"
#include "DeviceTasks.h"
#include "EnumerationMonitor.h"
#include "EventLog.h"
#include "HotplugMonitor.h"
#include "InterfaceManager.h"
#include "PassScheduler.h"
#include "SettingsStore.h"

#include <QMainWindow>

#include <memory>

class KelDeviceTree;
class QDockWidget;
class QTableView;

namespace browser
{

class ConnectionController;
class DetailsPanel;
class DeviceDialogs;
class EventReporter;
class PreferenceMenus;
class Preferences;
class RowActions;
class SelectionExplainer;
class StatusLine;
class TreeHost;
class WorkArea;

/// The browser's window: puts the parts together and into place. Thread: GUI.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(const CommandLine &line, QWidget *parent = nullptr);
    ~MainWindow() override;

    TreeHost *treeHost() const { return m_host; }
    WorkArea *workArea() const { return m_workArea; }
    DetailsPanel *details() const { return m_details; }
    ConnectionManager *connections() { return &m_connections; }
    Preferences *preferences() const { return m_preferences; }
    PassScheduler *scheduler() { return &m_scheduler; }
    EventLog *eventLog() { return &m_log; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void makeParts();
    void makeDocks();
    void makeMenus();
    void joinParts();
    void listenTo(KelDeviceTree *tree);
    void selectWhenSeen(const QString &serial);
    void retranslate();
    void restoreLayout();
    QTableView *makeLogView();

    CommandLine m_line;
    SettingsStore m_settings;
    EventLog m_log;
    PassScheduler m_scheduler;
    HotplugMonitor m_hotplug;
    EnumerationMonitor m_monitor;
    ConnectionManager m_connections;
    InterfaceManager m_interfaces;
    DeviceTasks m_tasks;
    TreeHost *m_host = nullptr;
    Preferences *m_preferences = nullptr;
    ConnectionController *m_controller = nullptr;
    DeviceDialogs *m_dialogs = nullptr;
    RowActions *m_rowActions = nullptr;
    PreferenceMenus *m_preferenceMenus = nullptr;
    DetailsPanel *m_details = nullptr;
    WorkArea *m_workArea = nullptr;
    SelectionExplainer *m_explainer = nullptr;
    StatusLine *m_status = nullptr;
    QDockWidget *m_treeDock = nullptr;
    QDockWidget *m_logDock = nullptr;
    QList<QMenu *> m_menus;
    QAction *m_refresh = nullptr;
    QAction *m_freeze = nullptr;
    QAction *m_addCamera = nullptr;
    QAction *m_filters = nullptr;
    QAction *m_help = nullptr;
    QAction *m_copy = nullptr;
    QAction *m_quit = nullptr;
    bool m_isClosing = false;
};

} // namespace browser
