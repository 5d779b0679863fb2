// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "ConnectionController.h"
#include "DetailsPanel.h"
#include "DeviceDialogs.h"
#include "EventReporter.h"
#include "PreferenceMenus.h"
#include "Preferences.h"
#include "RemoteCameras.h"
#include "RowActions.h"
#include "SelectionExplainer.h"
#include "StatusLine.h"
#include "TreeHost.h"
#include "TreeRows.h"
#include "WindowStyle.h"
#include "WorkArea.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomDefine.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDockWidget>
#include <QHeaderView>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

namespace browser
{

namespace
{

/// A camera that does not answer must not keep the program from ending.
constexpr int kReleaseAtMostMs = 2000;

} // namespace

MainWindow::MainWindow(const CommandLine &line, QWidget *parent)
    : QMainWindow(parent)
    , m_line(line)
    , m_settings(KelInterface::programDataPath())
{
    Custom::setMainDialog(this);
    makeParts();
    makeDocks();
    setStyleSheet(windowStyle());
    makeMenus();
    joinParts();
    m_preferences->applyToProgram();
    if (!line.language.isEmpty())
        m_preferences->showLanguage(line.language);
    if (line.theme)
        Custom::setTheme(static_cast<Custom::Theme>(*line.theme));
    retranslate();
    restoreLayout();
    m_host->build();
    if (!line.select.isEmpty())
        selectWhenSeen(line.select);
}

MainWindow::~MainWindow()
{
    // The tree first: it tells of nothing any more while the rest goes.
    delete m_host;
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_preferenceMenus)
        retranslate();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_line.screenshot.isEmpty() || m_isClosing) {
        event->accept();
        return;
    }
    m_settings.setWindow(saveGeometry(), saveState());
    m_isClosing = true;
    // The cameras are given back properly, but nobody has to watch that.
    event->ignore();
    hide();
    connect(m_controller, &ConnectionController::allReleased, qApp, &QCoreApplication::quit,
            Qt::QueuedConnection);
    QTimer::singleShot(kReleaseAtMostMs, qApp, &QCoreApplication::quit);
    m_controller->releaseAll();
}

void MainWindow::makeParts()
{
    m_host = new TreeHost;
    m_details = new DetailsPanel;
    m_workArea = new WorkArea(m_details, &m_connections);
    m_preferences = new Preferences(&m_settings, m_host, &m_scheduler, this);
    m_controller =
        new ConnectionController({m_host, &m_connections, &m_interfaces, &m_monitor, &m_scheduler}, this);
    new EventReporter({m_host, &m_connections, &m_interfaces, &m_monitor, &m_log}, this);
    auto *remoteCameras = new RemoteCameras(m_host, &m_log, this);
    m_dialogs = new DeviceDialogs({m_host, &m_tasks, remoteCameras, &m_log}, this);
    m_rowActions = new RowActions(
        {m_host, m_controller, &m_connections, &m_interfaces, m_preferences, m_dialogs, remoteCameras}, this);
    m_preferenceMenus = new PreferenceMenus(m_preferences, this);
    m_explainer = new SelectionExplainer({m_host, &m_connections, &m_interfaces, m_details}, this);
    m_status = new StatusLine({m_host, &m_scheduler, &m_monitor});
    m_details->addButtons(m_rowActions->panelActions());
    setStatusBar(m_status);
    setCentralWidget(m_workArea);
}

void MainWindow::makeDocks()
{
    m_treeDock = new QDockWidget;
    m_treeDock->setObjectName(QStringLiteral("tree"));
    m_treeDock->setWidget(m_host);
    addDockWidget(Qt::LeftDockWidgetArea, m_treeDock);
    m_logDock = new QDockWidget;
    m_logDock->setObjectName(QStringLiteral("log"));
    m_logDock->setWidget(makeLogView());
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

void MainWindow::makeMenus()
{
    for (int i = 0; i < 5; ++i)
        m_menus.append(menuBar()->addMenu(QString()));
    QMenu *devices = m_menus.at(0);
    m_refresh = devices->addAction(QString());
    m_refresh->setShortcut(Qt::Key_F5);
    m_freeze = devices->addAction(QString());
    m_freeze->setCheckable(true);
    devices->addSeparator();
    m_addCamera = devices->addAction(QString());
    m_filters = devices->addAction(QString());
    devices->addSeparator();
    m_quit = devices->addAction(QString());
    m_quit->setShortcut(QKeySequence::Quit);
    m_rowActions->fill(m_menus.at(1));
    m_menus.at(1)->addSeparator();
    m_copy = m_menus.at(1)->addAction(QString());
    m_copy->setShortcut(QStringLiteral("Ctrl+Shift+C"));
    m_preferenceMenus->fillSearch(m_menus.at(2));
    m_preferenceMenus->fillView(m_menus.at(3));
    m_menus.at(3)->addSeparator();
    m_menus.at(3)->addAction(m_treeDock->toggleViewAction());
    m_menus.at(3)->addAction(m_logDock->toggleViewAction());
    m_help = m_menus.at(4)->addAction(QString());
    m_help->setShortcut(QKeySequence::HelpContents);
}

void MainWindow::joinParts()
{
    connect(m_host, &TreeHost::replaced, this, &MainWindow::listenTo);
    connect(m_refresh, &QAction::triggered, this, [this] { m_scheduler.requestNow(m_scheduler.transports()); });
    // Names of rows follow the encoding.
    connect(m_preferences, &Preferences::changed, m_controller, &ConnectionController::nameRows);
    connect(m_freeze, &QAction::toggled, m_controller, &ConnectionController::setFrozen);
    connect(m_addCamera, &QAction::triggered, m_dialogs, &DeviceDialogs::askRemoteCamera);
    connect(m_filters, &QAction::triggered, m_dialogs, &DeviceDialogs::editFilters);
    connect(m_help, &QAction::triggered, m_dialogs, &DeviceDialogs::showHelp);
    connect(m_copy, &QAction::triggered, this,
            [this] { QApplication::clipboard()->setText(m_details->asText()); });
    connect(m_quit, &QAction::triggered, this, &QWidget::close);
    connect(m_rowActions, &RowActions::liveViewWanted, m_workArea, &WorkArea::openLiveView);
    connect(m_controller, &ConnectionController::unreachableChosen, m_dialogs, &DeviceDialogs::askAddress);
    connect(m_dialogs, &DeviceDialogs::rebuildWanted, m_host, &TreeHost::build);
    connect(m_dialogs, &DeviceDialogs::refreshWanted, this,
            [this] { m_scheduler.requestNow(KELA_INTERFACE_TYPE_GIGE); });
    connect(m_explainer, &SelectionExplainer::explained, m_rowActions, &RowActions::update);
    connect(m_explainer, &SelectionExplainer::explained, m_status, &StatusLine::refresh);
    connect(&m_scheduler, &PassScheduler::passWanted, this, [this](uint transport, bool byUser) {
        m_host->tree()->updateDeviceTypes(transport, true, true,
                                          byUser && m_host->tree()->hasEnumOnce(transport));
    });
    connect(&m_hotplug, &HotplugMonitor::changed, &m_scheduler, &PassScheduler::requestForChange);
    connect(&m_monitor, &EnumerationMonitor::passEnded, &m_scheduler,
            [this](int transport, int, int errorCode) { m_scheduler.noteResult(transport, errorCode); });
}

void MainWindow::listenTo(KelDeviceTree *tree)
{
    m_scheduler.reset();
    m_monitor.listenTo(tree);
    connect(tree, &KelDeviceTree::sigFinishEnumOnce, &m_scheduler, &PassScheduler::noteFinished);
    tree->setAccessibleName(tr("Devices"));
    m_preferences->applyToTree();
    if (m_line.transports)
        m_scheduler.setTransports(*m_line.transports);
    m_scheduler.requestNow(m_scheduler.transports());
}

void MainWindow::selectWhenSeen(const QString &serial)
{
    connect(m_host->tree(), &KelDeviceTree::sigNewDeviceItem, this, [this, serial](QTreeWidgetItem *row) {
        if (m_host->tree()->getCameraSerial(row) == serial)
            m_host->tree()->setCurrentItem(row);
    });
}

void MainWindow::retranslate()
{
    setWindowTitle(tr("Device Browser"));
    const QString menus[] = {tr("&Devices"), tr("&Camera"), tr("&Search"), tr("&View"), tr("&Help")};
    for (int i = 0; i < m_menus.size(); ++i)
        m_menus.at(i)->setTitle(menus[i]);
    m_treeDock->setWindowTitle(tr("Devices"));
    m_logDock->setWindowTitle(tr("Events"));
    m_refresh->setText(tr("&Refresh all"));
    m_freeze->setText(tr("&Freeze the tree"));
    m_addCamera->setText(tr("&Add camera by address…"));
    m_filters->setText(tr("&Filters…"));
    m_quit->setText(tr("&Quit"));
    m_copy->setText(tr("Copy &details"));
    m_help->setText(tr("&Keys"));
    if (m_host->tree())
        m_host->tree()->setAccessibleName(tr("Devices"));
    m_rowActions->retranslate();
    m_preferenceMenus->retranslate();
    m_log.retranslate();
    m_status->refresh();
    m_explainer->refresh();
    // The tree hears of the language later than its window, and names its buttons anew.
    QMetaObject::invokeMethod(m_controller, &ConnectionController::nameRows, Qt::QueuedConnection);
}

void MainWindow::restoreLayout()
{
    resize(QSize(1280, 900).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
    resizeDocks({m_treeDock}, {380}, Qt::Horizontal);
    resizeDocks({m_logDock}, {170}, Qt::Vertical);
    if (m_line.screenshot.isEmpty()) {
        restoreGeometry(m_settings.geometry());
        restoreState(m_settings.layout());
    }
}

QTableView *MainWindow::makeLogView()
{
    auto *view = new QTableView;
    view->setModel(&m_log);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setFrameShape(QFrame::NoFrame);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 8);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    view->horizontalHeader()->setStretchLastSection(true);
    view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view->horizontalHeader()->setHighlightSections(false);
    view->setColumnWidth(0, 110);
    view->setColumnWidth(1, 100);
    // Follows the newest line unless the user looks at an older one.
    connect(&m_log, &QAbstractItemModel::rowsAboutToBeInserted, view, [view] {
        const QScrollBar *bar = view->verticalScrollBar();
        view->setProperty("followsNewest", bar->value() == bar->maximum());
    });
    connect(&m_log, &QAbstractItemModel::rowsInserted, view, [view] {
        if (view->property("followsNewest").toBool())
            QTimer::singleShot(0, view, &QTableView::scrollToBottom);
    });
    return view;
}

} // namespace browser
