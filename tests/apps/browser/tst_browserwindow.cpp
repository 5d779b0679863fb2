// SPDX-License-Identifier: Apache-2.0
#include "SteeredCameras.h"

#include "ConnectionController.h"
#include "DetailsPanel.h"
#include "DeviceState.h"
#include "ForceIpDialog.h"
#include "LiveView.h"
#include "MainWindow.h"
#include "Preferences.h"
#include "RowActions.h"
#include "TreeHost.h"
#include "TreeRows.h"
#include "WorkArea.h"

#include <CommonTools/KelInterface.h>

#include <QAction>
#include <QDir>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>

using namespace browser;

namespace
{

constexpr int kLeavesWithinMs = 3000;
constexpr int kAppearsWithinMs = 5000;

const QString kEntrance = QStringLiteral("HO-20117");
const QString kConveyor = QStringLiteral("HO-20118");
const QString kLabels = QStringLiteral("7714-0031");
const QString kShared = QStringLiteral("HO-18002");
const QString kStranger = QStringLiteral("7714-0107");
const QString kLight = QStringLiteral("OS-8-0044");
const QString kInlet = QStringLiteral("HO-31001");
const QString kOnThisHost = QStringLiteral("SIM-0001");

} // namespace

/// The whole browser among simulated cameras: no part of it is replaced.
class TestBrowserWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void camerasOfEveryStateAreShown();
    void unpluggedCameraLeavesAndReturnsWithItsIdentifier();
    void connectingTakesControlAndDisconnectingGivesItBack();
    void multicastCameraIsOpenedForReadingOnly();
    void heldCameraCannotBeConnected();
    void cameraLostWhileConnectedIsShownAndCanBeLetGo();
    void vanishedCardLeavesWhenItsHeldCameraIsLetGo();
    void unreachableCameraGetsATemporaryAddress();
    void cameraIsAddedByItsAddressAndTakenOut();
    void droppedCameraShowsItsLiveValues();
    void freeCameraCannotBeDropped();
    void languageChangesInTheRunningWindow();
    void cameraStaysOnTopOverARestart();
    void frozenTreeCatchesUpWhenItIsResumed();
    void newTreeKnowsWhatIsConnected();
    void returnKeyConnects();
    void everythingIsReachableFromTheMenuBar();
    void hiddenKindsLeaveAndComeBack();
    void refreshingByHandWorksWithoutAutomatic();
    void genTLInterfaceShowsItsCamerasWhileItIsOpen();
    void cameraLinkCamerasStandInTheGroupOfTheBrowser();
    void usbCameraIsHeldAndGivenBack();
    void closingGivesCamerasBack();

private:
    void openWindow();
    KelDeviceTree *tree() const { return m_window->treeHost()->tree(); }
    QTreeWidgetItem *row(const QString &serial) const { return rows::rowOfSerial(*tree(), serial); }
    long idOf(const QString &serial) const { return rows::idOf(row(serial)); }
    int stateOf(const QString &serial) const;
    void connectCamera(const QString &serial);
    void trigger(const QString &text);
    QAction *action(const QString &text) const;
    void keepPicture(const QString &name);

    std::unique_ptr<MainWindow> m_window;
};

void TestBrowserWindow::initTestCase()
{
    if (!steeredcameras::areThere())
        QSKIP("no private network here");
}

void TestBrowserWindow::init()
{
    QDir(KelInterface::programDataPath()).removeRecursively();
    openWindow();
}

void TestBrowserWindow::cleanup()
{
    m_window.reset();
    steeredcameras::tell({"plug", "all"});
}

void TestBrowserWindow::openWindow()
{
    CommandLine line;
    line.language = QStringLiteral("en");
    m_window = std::make_unique<MainWindow>(line);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance) && row(kInlet) && row(kStranger), kAppearsWithinMs);
}

int TestBrowserWindow::stateOf(const QString &serial) const
{
    const auto device = rows::deviceOf(row(serial));
    return device ? device->deviceState : -1;
}

void TestBrowserWindow::connectCamera(const QString &serial)
{
    tree()->setCurrentItem(row(serial));
    Q_EMIT tree()->sigRightBtnClicked(idOf(serial), false);
    QTRY_COMPARE_WITH_TIMEOUT(m_window->connections()->session(idOf(serial)).state, SessionState::Open, 3000);
}

QAction *TestBrowserWindow::action(const QString &text) const
{
    const QList<QAction *> actions = m_window->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text().remove(QLatin1Char('&')) == text)
            return candidate;
    }
    return nullptr;
}

void TestBrowserWindow::trigger(const QString &text)
{
    QTRY_VERIFY2(action(text) && action(text)->isEnabled(), qPrintable(text));
    action(text)->trigger();
}

void TestBrowserWindow::keepPicture(const QString &name)
{
    const QString folder = qEnvironmentVariable("KEL_PICTURES");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    QVERIFY(m_window->grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png")));
}

void TestBrowserWindow::camerasOfEveryStateAreShown()
{
    QTRY_VERIFY(row(kLight) && row(kOnThisHost) && row(kShared));

    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(stateOf(kLabels), int(KELA_DEV_STATE_GIGE_IN_USE));
    QCOMPARE(stateOf(kShared), int(KELA_DEV_STATE_GIGE_MULTICAST));
    QCOMPARE(stateOf(kStranger), int(KELA_DEV_STATE_GIGE_UNREACHABLE));
    QCOMPARE(rows::typeOf(row(kOnThisHost)->parent()), int(KelDeviceTree::ItemGigEVirtualGroup));
    QCOMPARE(rows::typeOf(row(kLight)->parent()), int(KelDeviceTree::ItemOtherGroup));
    QCOMPARE(rows::typeOf(row(kEntrance)->parent()), int(KelDeviceTree::ItemNetWork));
    QVERIFY(row(kEntrance)->parent() != row(kInlet)->parent());

    tree()->setCurrentItem(row(kStranger));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("192.168.60.21/24")));
    keepPicture(QStringLiteral("browser-unreachable"));
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("192.168.50.77")));
    keepPicture(QStringLiteral("browser-in-use"));
}

void TestBrowserWindow::unpluggedCameraLeavesAndReturnsWithItsIdentifier()
{
    const long id = idOf(kConveyor);
    QElapsedTimer clock;
    clock.start();

    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
    QVERIFY2(clock.elapsed() < kLeavesWithinMs, qPrintable(QString::number(clock.elapsed())));

    steeredcameras::tell({"plug", "conveyor"});
    QTRY_VERIFY_WITH_TIMEOUT(row(kConveyor), kAppearsWithinMs);
    QCOMPARE(idOf(kConveyor), id);
}

void TestBrowserWindow::connectingTakesControlAndDisconnectingGivesItBack()
{
    connectCamera(kEntrance);

    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QVERIFY(row(kEntrance)->data(0, KelDeviceTree::ItemConnectedRole).toBool());
    QVERIFY2(steeredcameras::describe("entrance").contains(QStringLiteral("held")),
             qPrintable(steeredcameras::describe("entrance")));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("This program holds it")));
    keepPicture(QStringLiteral("browser-connected"));

    // Longer than the camera's heartbeat time: the connection is kept alive.
    QTest::qWait(4000);
    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QVERIFY(steeredcameras::describe("entrance").contains(QStringLiteral("held")));

    Q_EMIT tree()->sigRightBtnClicked(idOf(kEntrance), false);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE), 3000);
    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
    QVERIFY(!row(kEntrance)->data(0, KelDeviceTree::ItemConnectedRole).toBool());
}

void TestBrowserWindow::multicastCameraIsOpenedForReadingOnly()
{
    connectCamera(kShared);

    QCOMPARE(stateOf(kShared), int(KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED));
    QVERIFY(m_window->connections()->session(idOf(kShared)).isReadOnly);
    QVERIFY(steeredcameras::describe("shared").contains(QStringLiteral("192.168.50.77")));
}

void TestBrowserWindow::heldCameraCannotBeConnected()
{
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(action(QStringLiteral("Connect")) && !action(QStringLiteral("Connect"))->isEnabled());

    Q_EMIT tree()->sigRightBtnClicked(idOf(kLabels), false);

    QCOMPARE(m_window->connections()->session(idOf(kLabels)).state, SessionState::None);
}

void TestBrowserWindow::cameraLostWhileConnectedIsShownAndCanBeLetGo()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);

    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_COMPARE_WITH_TIMEOUT(m_window->connections()->session(id).state, SessionState::Lost, 15000);
    QVERIFY(row(kConveyor));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("Connection lost")));
    keepPicture(QStringLiteral("browser-lost"));

    // The row only stays because it is held; the enumeration has long told that the camera is gone.
    QTest::qWait(2500);
    QVERIFY(row(kConveyor));
    Q_EMIT tree()->sigRightBtnClicked(id, false);
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), 3000);
}

void TestBrowserWindow::vanishedCardLeavesWhenItsHeldCameraIsLetGo()
{
    const auto bringBack = qScopeGuard([] {
        steeredcameras::run({"ip", "address", "add", "10.20.30.1/24", "brd", "+", "dev", "cam1"});
    });
    connectCamera(kInlet);
    const long id = idOf(kInlet);
    const auto card = rows::recordOf<KELA_NETWORK>(row(kInlet)->parent());
    QVERIFY(card.has_value());

    QVERIFY(steeredcameras::run({"ip", "address", "delete", "10.20.30.1/24", "dev", "cam1"}));
    QTRY_COMPARE_WITH_TIMEOUT(m_window->connections()->session(id).state, SessionState::Lost, 15000);
    QTest::qWait(2500);
    QVERIFY(rows::cardRow(*tree(), *card));

    Q_EMIT tree()->sigRightBtnClicked(id, false);
    QTRY_VERIFY_WITH_TIMEOUT(!rows::cardRow(*tree(), *card), 4000);
    QVERIFY(!row(kInlet));
}

void TestBrowserWindow::unreachableCameraGetsATemporaryAddress()
{
    const auto moveBack = qScopeGuard([] {
        steeredcameras::tell({"move", "stranger", "192.168.60.21", "24"});
    });
    tree()->setCurrentItem(row(kStranger));

    Q_EMIT tree()->sigRightBtnClicked(idOf(kStranger), false);
    QTRY_VERIFY(m_window->findChild<ForceIpDialog *>());
    auto *dialog = m_window->findChild<ForceIpDialog *>();
    const uint32_t wanted = dialog->choice().address;
    keepPicture(QStringLiteral("browser-assign"));
    dialog->accept();

    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kStranger), int(KELA_DEV_STATE_GIGE_FREE), 6000);
    QCOMPARE(rows::deviceOf(row(kStranger))->deviceInfo.special.gige.currentIp, wanted);
}

void TestBrowserWindow::cameraIsAddedByItsAddressAndTakenOut()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    // Behind a router a camera hears no broadcast.
    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
    steeredcameras::tell({"lose", "conveyor", "all", "broadcast"});
    steeredcameras::tell({"plug", "conveyor"});
    QTest::qWait(1500);
    QVERIFY(!row(kConveyor));

    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE;
    device.deviceInfo.special.gige.currentIp = 0xC0A8320C;
    QVERIFY(tree()->addRemoteDevice(device) >= 0);
    QTRY_VERIFY(row(kConveyor));
    QTest::qWait(2500);
    QVERIFY(row(kConveyor));

    tree()->setCurrentItem(row(kConveyor));
    trigger(QStringLiteral("Take out"));
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
}

void TestBrowserWindow::droppedCameraShowsItsLiveValues()
{
    connectCamera(kEntrance);
    const std::unique_ptr<QMimeData> data(tree()->mimeData({row(kEntrance)}));
    QVERIFY(data);
    WorkArea *area = m_window->workArea();

    QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(area, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(100, 100), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(area, &drop);

    QCOMPARE(area->liveViewCount(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!m_window->connections()->values(idOf(kEntrance)).isEmpty(), 3000);
    const ReadValues values = m_window->connections()->values(idOf(kEntrance));
    QCOMPARE(values.first().node, QStringLiteral("GevCCP"));
    QVERIFY(values.first().isKnown);
    QVERIFY(values.first().value & 3);
    QTest::qWait(1200);
    keepPicture(QStringLiteral("browser-live"));

    area->openLiveView(idOf(kEntrance));
    QCOMPARE(area->liveViewCount(), 1);
}

void TestBrowserWindow::freeCameraCannotBeDropped()
{
    QVERIFY(!tree()->mimeData({row(kEntrance)}));

    m_window->workArea()->openLiveView(idOf(kEntrance));

    QCOMPARE(m_window->workArea()->liveViewCount(), 0);
}

void TestBrowserWindow::languageChangesInTheRunningWindow()
{
    const auto all = [this] { return tree()->findItem(KelDeviceTree::ItemAll, -1)->text(0); };
    const auto firstMenu = [this] {
        return m_window->menuBar()->actions().first()->text().remove(QLatin1Char('&'));
    };
    m_window->preferences()->setLanguage(QStringLiteral("en"));
    QTRY_COMPARE(all(), QStringLiteral("All"));
    QCOMPARE(firstMenu(), QStringLiteral("Devices"));

    m_window->preferences()->setLanguage(QStringLiteral("de"));
    QTRY_COMPARE(all(), QStringLiteral("Alle"));
    QTRY_COMPARE(firstMenu(), QStringLiteral("Geräte"));
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("Kamera")));
    keepPicture(QStringLiteral("browser-de"));

    m_window->preferences()->setLanguage(QStringLiteral("zh_CN"));
    QTRY_VERIFY(firstMenu().startsWith(QStringLiteral("设备")));
    QTRY_VERIFY(all() != QStringLiteral("All"));
    keepPicture(QStringLiteral("browser-zh"));

    m_window->preferences()->setLanguage(QStringLiteral("en"));
    QTRY_COMPARE(all(), QStringLiteral("All"));
}

void TestBrowserWindow::cameraStaysOnTopOverARestart()
{
    tree()->setCurrentItem(row(kLabels));
    trigger(QStringLiteral("Keep on top"));
    QTRY_COMPARE(row(kLabels)->parent()->indexOfChild(row(kLabels)), 0);

    m_window.reset();
    openWindow();

    QTRY_VERIFY(row(kLabels));
    QCOMPARE(row(kLabels)->parent()->indexOfChild(row(kLabels)), 0);
    QCOMPARE(row(kLabels)->data(0, KelDeviceTree::StayTopItemRole).toInt(), 1);
}

void TestBrowserWindow::frozenTreeCatchesUpWhenItIsResumed()
{
    trigger(QStringLiteral("Freeze the tree"));
    steeredcameras::tell({"unplug", "conveyor"});
    QTest::qWait(kLeavesWithinMs);
    QVERIFY(row(kConveyor));

    trigger(QStringLiteral("Freeze the tree"));

    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
    QVERIFY(row(kEntrance));
}

void TestBrowserWindow::newTreeKnowsWhatIsConnected()
{
    connectCamera(kEntrance);

    m_window->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance), kAppearsWithinMs);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    Q_EMIT tree()->sigRightBtnClicked(idOf(kEntrance), false);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
}

void TestBrowserWindow::returnKeyConnects()
{
    tree()->setCurrentItem(row(kEntrance));
    QTRY_VERIFY(action(QStringLiteral("Connect")) && action(QStringLiteral("Connect"))->isEnabled());

    QTest::keyClick(tree(), Qt::Key_Return);

    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QTRY_VERIFY(action(QStringLiteral("Disconnect")));
    QTest::keyClick(tree(), Qt::Key_Return);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
}

void TestBrowserWindow::everythingIsReachableFromTheMenuBar()
{
    for (const char *text : {"Refresh all",
                             "Freeze the tree",
                             "Add camera by address…",
                             "Filters…",
                             "Connect",
                             "Show live values",
                             "Keep on top",
                             "Assign temporary address…",
                             "Take out",
                             "Refresh this group",
                             "Choose producers…",
                             "Remove imported producer",
                             "Refresh automatically",
                             "GigE",
                             "GenTL",
                             "Allow virtual ports of producers",
                             "Buttons in rows",
                             "Dark",
                             "Light",
                             "Deutsch",
                             "GB18030",
                             "Virtual devices"})
        QVERIFY2(action(QString::fromUtf8(text)), text);

    tree()->setCurrentItem(tree()->findItem(KelDeviceTree::ItemGigERoot, -1));
    trigger(QStringLiteral("Refresh this group"));
    QVERIFY(!row(kEntrance)->data(0, Qt::AccessibleTextRole).toString().isEmpty());
}

void TestBrowserWindow::hiddenKindsLeaveAndComeBack()
{
    QTreeWidgetItem *other = row(kLight)->parent();
    m_window->preferences()->setKindVisible(QStringLiteral("other"), false);
    QVERIFY(other->isHidden());
    QVERIFY(!row(kEntrance)->isHidden());

    m_window->preferences()->setKindVisible(QStringLiteral("other"), true);
    QVERIFY(!other->isHidden());
}

void TestBrowserWindow::refreshingByHandWorksWithoutAutomatic()
{
    m_window->preferences()->setAutomaticRefresh(false);
    QTRY_COMPARE(m_window->scheduler()->running(), 0U);
    steeredcameras::tell({"unplug", "conveyor"});
    QTest::qWait(kLeavesWithinMs);
    QVERIFY(row(kConveyor));

    trigger(QStringLiteral("Refresh all"));

    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
}

void TestBrowserWindow::genTLInterfaceShowsItsCamerasWhileItIsOpen()
{
    QTreeWidgetItem *group = tree()->findItem(KelDeviceTree::ItemGenTLRoot, -1);
    if (!QFileInfo::exists(QStringLiteral("/opt/KELS/lib/64/KelFGSampleGEV.cti")))
        QSKIP("no private /opt here");
    const auto interfaceId = [group]() -> long {
        for (int i = 0; i < group->childCount(); ++i) {
            if (rows::textOf(group->child(i)).contains(QStringLiteral("Ethernet port 0")))
                return rows::idOf(group->child(i));
        }
        return -1;
    };
    QTRY_VERIFY_WITH_TIMEOUT(interfaceId() >= 0, 10000);
    const long id = interfaceId();
    QVERIFY(!row(QStringLiteral("GT-0001")));

    Q_EMIT tree()->sigRightBtnClicked(id, true);
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("GT-0001")) && row(QStringLiteral("GT-0002")), 5000);
    QCOMPARE(rows::idOf(row(QStringLiteral("GT-0001"))->parent()), id);
    tree()->setCurrentItem(tree()->findItem(KelDeviceTree::ItemGenTLInterface, id));
    QTRY_VERIFY(action(QStringLiteral("Close interface")));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("Ethernet port 0")));
    tree()->scrollToBottom();
    keepPicture(QStringLiteral("browser-gentl"));

    Q_EMIT tree()->sigRightBtnClicked(id, true);
    QTRY_VERIFY(!row(QStringLiteral("GT-0001")));
    QTest::qWait(2500);
    QVERIFY(!row(QStringLiteral("GT-0001")));

    Q_EMIT tree()->sigRightBtnClicked(id, true);
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("GT-0001")), 5000);
}

void TestBrowserWindow::cameraLinkCamerasStandInTheGroupOfTheBrowser()
{
    if (qEnvironmentVariableIsEmpty("KELS_CLSERIAL"))
        QSKIP("no simulated frame grabber here");
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("CL-0031")), 8000);

    QCOMPARE(rows::typeOf(row(QStringLiteral("CL-0031"))->parent()), int(KelDeviceTree::ItemCamLinkRoot));
    tree()->setCurrentItem(row(QStringLiteral("CL-0031")));
    QTRY_VERIFY(m_window->details()->asText().contains(QStringLiteral("Grabber_0/A")));
}

void TestBrowserWindow::usbCameraIsHeldAndGivenBack()
{
    const QString camera = QStringLiteral("U-50017");
    if (qEnvironmentVariableIsEmpty("UMOCKDEV_DIR"))
        QSKIP("no mocked USB devices here");
    QTRY_VERIFY_WITH_TIMEOUT(row(camera), 5000);
    QCOMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_FREE));

    connectCamera(camera);
    QCOMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_CONNECTED));
    m_window->workArea()->openLiveView(idOf(camera));
    QCOMPARE(m_window->workArea()->liveViewCount(), 1);

    Q_EMIT tree()->sigRightBtnClicked(idOf(camera), false);
    QTRY_COMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_FREE));
}

void TestBrowserWindow::closingGivesCamerasBack()
{
    connectCamera(kEntrance);

    m_window->close();
    QVERIFY(!m_window->isVisible());
    QTRY_VERIFY(m_window->connections()->ids().isEmpty());

    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
}

QTEST_MAIN(TestBrowserWindow)
#include "tst_browserwindow.moc"
