// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "DetailsPanel.h"
#include "ForceIpDialog.h"
#include "MainWindow.h"
#include "SteeredCameras.h"
#include "TreeHost.h"
#include "WorkArea.h"

#include <QAction>
#include <QDropEvent>
#include <QMimeData>
#include <QScopeGuard>
#include <QTest>

using namespace browser;

namespace
{

constexpr int kAppearsWithinMs = 5000;

const QString kShared = QStringLiteral("HO-18002");

} // namespace

/// Cameras are connected, watched, lost and given back.
class TestBrowserConnecting : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void connectingTakesControlAndDisconnectingGivesItBack();
    void multicastCameraIsOpenedForReadingOnly();
    void heldCameraCannotBeConnected();
    void returnKeyConnects();
    void usbCameraIsHeldAndGivenBack();
    void unreachableCameraGetsATemporaryAddress();

    void droppedCameraShowsItsLiveValues();
    void freeCameraCannotBeDropped();

    void cameraLostWhileConnectedIsShownAndCanBeLetGo();
    void vanishedCardLeavesWhenItsHeldCameraIsLetGo();
    void newTreeKnowsWhatIsConnected();
    void closingGivesCamerasBack();
};

void TestBrowserConnecting::connectingTakesControlAndDisconnectingGivesItBack()
{
    connectCamera(kEntrance);

    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QVERIFY(row(kEntrance)->data(0, KelDeviceTree::ItemConnectedRole).toBool());
    QVERIFY2(steeredcameras::describe("entrance").contains(QStringLiteral("held")),
             qPrintable(steeredcameras::describe("entrance")));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("This program holds it")));
    keepPicture(window(), QStringLiteral("browser-connected"));

    // Longer than the camera's heartbeat time: the connection is kept alive.
    QTest::qWait(4000);
    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QVERIFY(steeredcameras::describe("entrance").contains(QStringLiteral("held")));

    Q_EMIT tree()->sigRightBtnClicked(idOf(kEntrance), false);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE), 3000);
    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
    QVERIFY(!row(kEntrance)->data(0, KelDeviceTree::ItemConnectedRole).toBool());
}

void TestBrowserConnecting::multicastCameraIsOpenedForReadingOnly()
{
    QTRY_VERIFY(row(kShared));
    connectCamera(kShared);

    QCOMPARE(stateOf(kShared), int(KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED));
    QVERIFY(window()->connections()->session(idOf(kShared)).isReadOnly);
    QVERIFY(steeredcameras::describe("shared").contains(QStringLiteral("192.168.50.77")));
}

void TestBrowserConnecting::heldCameraCannotBeConnected()
{
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(action(QStringLiteral("Connect")) && !action(QStringLiteral("Connect"))->isEnabled());

    Q_EMIT tree()->sigRightBtnClicked(idOf(kLabels), false);

    QCOMPARE(window()->connections()->session(idOf(kLabels)).state, SessionState::None);
}

void TestBrowserConnecting::returnKeyConnects()
{
    tree()->setCurrentItem(row(kEntrance));
    QTRY_VERIFY(action(QStringLiteral("Connect")) && action(QStringLiteral("Connect"))->isEnabled());

    QTest::keyClick(tree(), Qt::Key_Return);

    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    QTRY_VERIFY(action(QStringLiteral("Disconnect")));
    QTest::keyClick(tree(), Qt::Key_Return);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
}

void TestBrowserConnecting::usbCameraIsHeldAndGivenBack()
{
    const QString camera = QStringLiteral("U-50017");
    if (qEnvironmentVariableIsEmpty("UMOCKDEV_DIR"))
        QSKIP("no mocked USB devices here");
    QTRY_VERIFY_WITH_TIMEOUT(row(camera), 5000);
    QCOMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_FREE));

    connectCamera(camera);
    QCOMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_CONNECTED));
    window()->workArea()->openLiveView(idOf(camera));
    QCOMPARE(window()->workArea()->liveViewCount(), 1);

    Q_EMIT tree()->sigRightBtnClicked(idOf(camera), false);
    QTRY_COMPARE(stateOf(camera), int(KELA_DEV_STATE_USB3_FREE));
}

void TestBrowserConnecting::unreachableCameraGetsATemporaryAddress()
{
    const auto moveBack = qScopeGuard([] {
        steeredcameras::tell({"move", "stranger", "192.168.60.21", "24"});
    });
    tree()->setCurrentItem(row(kStranger));

    Q_EMIT tree()->sigRightBtnClicked(idOf(kStranger), false);
    QTRY_VERIFY(window()->findChild<ForceIpDialog *>());
    auto *dialog = window()->findChild<ForceIpDialog *>();
    const uint32_t wanted = dialog->choice().address;
    keepPicture(window(), QStringLiteral("browser-assign"));
    dialog->accept();

    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kStranger), int(KELA_DEV_STATE_GIGE_FREE), 6000);
    QCOMPARE(rows::deviceOf(row(kStranger))->deviceInfo.special.gige.currentIp, wanted);
}

void TestBrowserConnecting::droppedCameraShowsItsLiveValues()
{
    connectCamera(kEntrance);
    const std::unique_ptr<QMimeData> data(tree()->mimeData({row(kEntrance)}));
    QVERIFY(data);
    WorkArea *area = window()->workArea();

    QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(area, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(100, 100), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(area, &drop);

    QCOMPARE(area->liveViewCount(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!window()->connections()->values(idOf(kEntrance)).isEmpty(), 3000);
    const ReadValues values = window()->connections()->values(idOf(kEntrance));
    QCOMPARE(values.first().node, QStringLiteral("GevCCP"));
    QVERIFY(values.first().isKnown);
    QVERIFY(values.first().value & 3);
    QTest::qWait(1200);
    keepPicture(window(), QStringLiteral("browser-live"));

    area->openLiveView(idOf(kEntrance));
    QCOMPARE(area->liveViewCount(), 1);
}

void TestBrowserConnecting::freeCameraCannotBeDropped()
{
    QVERIFY(!tree()->mimeData({row(kEntrance)}));

    window()->workArea()->openLiveView(idOf(kEntrance));

    QCOMPARE(window()->workArea()->liveViewCount(), 0);
}

void TestBrowserConnecting::cameraLostWhileConnectedIsShownAndCanBeLetGo()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);

    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_COMPARE_WITH_TIMEOUT(window()->connections()->session(id).state, SessionState::Lost, 15000);
    QVERIFY(row(kConveyor));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("Connection lost")));
    keepPicture(window(), QStringLiteral("browser-lost"));

    // The row only stays because it is held; the enumeration has long told that the camera is gone.
    QTest::qWait(2500);
    QVERIFY(row(kConveyor));
    Q_EMIT tree()->sigRightBtnClicked(id, false);
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), 3000);
}

void TestBrowserConnecting::vanishedCardLeavesWhenItsHeldCameraIsLetGo()
{
    const auto bringBack = qScopeGuard([] {
        steeredcameras::run({"ip", "address", "add", "10.20.30.1/24", "brd", "+", "dev", "cam1"});
    });
    QTRY_VERIFY_WITH_TIMEOUT(row(kInlet), kAppearsWithinMs);
    connectCamera(kInlet);
    const long id = idOf(kInlet);
    const auto card = rows::recordOf<KELA_NETWORK>(row(kInlet)->parent());
    QVERIFY(card.has_value());

    QVERIFY(steeredcameras::run({"ip", "address", "delete", "10.20.30.1/24", "dev", "cam1"}));
    QTRY_COMPARE_WITH_TIMEOUT(window()->connections()->session(id).state, SessionState::Lost, 15000);
    QTest::qWait(2500);
    QVERIFY(rows::cardRow(*tree(), *card));

    Q_EMIT tree()->sigRightBtnClicked(id, false);
    QTRY_VERIFY_WITH_TIMEOUT(!rows::cardRow(*tree(), *card), 4000);
    QVERIFY(!row(kInlet));
}

void TestBrowserConnecting::newTreeKnowsWhatIsConnected()
{
    connectCamera(kEntrance);

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance), kAppearsWithinMs);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    Q_EMIT tree()->sigRightBtnClicked(idOf(kEntrance), false);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
}

void TestBrowserConnecting::closingGivesCamerasBack()
{
    connectCamera(kEntrance);

    window()->close();
    QVERIFY(!window()->isVisible());
    QTRY_VERIFY(window()->connections()->ids().isEmpty());

    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
}

QTEST_MAIN(TestBrowserConnecting)
#include "tst_browserconnecting.moc"
