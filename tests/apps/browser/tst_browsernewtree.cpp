// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "EventLog.h"
#include "MainWindow.h"
#include "SteeredCameras.h"
#include "TreeHost.h"

#include <CommonTools/KelInterface.h>

#include <QFile>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace browser;

namespace
{

constexpr int kAppearsWithinMs = 5000;
constexpr int kLostWithinMs = 15000;

} // namespace

/// What the browser holds and what it was told, over a new tree and over a tree that stood still.
class TestBrowserNewTree : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void addedCameraSurvivesANewTree();
    void addedCameraStaysConnectedOverANewTree();
    void addedCameraThatIsSilentIsToldByANewTree();
    void lostCameraIsLetGoByANewTree();
    void cameraThatANewTreeDoesNotFindIsLetGo();
    void cameraThatAFilterHidesIsLetGo();
    void cameraLostWithoutARowIsLetGo();
    void interfaceThatWentWhileTheTreeStoodStillLeaves();
    void connectionGivenBackAtOnceIsNotToldAsOpened();
    void lossIsToldOnce();

private:
    void addConveyor();
    bool isLogged(const QString &text) const;
    ConnectionManager *connections() const { return window()->connections(); }
};

void TestBrowserNewTree::addConveyor()
{
    putConveyorBehindARouter();
    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE;
    device.deviceInfo.special.gige.currentIp = 0xC0A8320C;
    QVERIFY(tree()->addRemoteDevice(device) >= 0);
    QTRY_VERIFY(row(kConveyor));
}

bool TestBrowserNewTree::isLogged(const QString &text) const
{
    const EventLog *log = window()->eventLog();
    for (int line = 0; line < log->rowCount(); ++line) {
        for (int column = 0; column < log->columnCount(); ++column) {
            if (log->index(line, column).data().toString().contains(text))
                return true;
        }
    }
    return false;
}

void TestBrowserNewTree::addedCameraSurvivesANewTree()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    addConveyor();

    // Twice at once, as an impatient user does.
    window()->treeHost()->build();
    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(row(kConveyor), kAppearsWithinMs);
    QCOMPARE(int(rows::deviceOf(row(kConveyor))->remote), 1);
    QTest::qWait(2500);
    QVERIFY(row(kConveyor));

    tree()->setCurrentItem(row(kConveyor));
    trigger(QStringLiteral("Take out"));
    QTRY_VERIFY(!row(kConveyor));
    window()->treeHost()->build();
    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance), kAppearsWithinMs);
    QTest::qWait(1500);
    QVERIFY(!row(kConveyor));
}

void TestBrowserNewTree::addedCameraStaysConnectedOverANewTree()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    addConveyor();
    connectCamera(kConveyor);

    window()->treeHost()->build();

    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kConveyor), int(KELA_DEV_STATE_GIGE_CONNECTED), kAppearsWithinMs);
    Q_EMIT tree()->sigRightBtnClicked(idOf(kConveyor), false);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kConveyor), int(KELA_DEV_STATE_GIGE_FREE), 3000);
    QVERIFY(!steeredcameras::describe("conveyor").contains(QStringLiteral("held")));
}

void TestBrowserNewTree::addedCameraThatIsSilentIsToldByANewTree()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    addConveyor();
    trigger(QStringLiteral("Freeze the tree"));
    steeredcameras::tell({"unplug", "conveyor"});

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(isLogged(QStringLiteral("No camera answers at 192.168.50.12.")), kAppearsWithinMs);
}

void TestBrowserNewTree::lostCameraIsLetGoByANewTree()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);
    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_COMPARE_WITH_TIMEOUT(connections()->session(id).state, SessionState::Lost, kLostWithinMs);

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(connections()->ids().isEmpty(), 3000);
    steeredcameras::tell({"plug", "conveyor"});
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(kConveyor), int(KELA_DEV_STATE_GIGE_FREE), kAppearsWithinMs);
}

void TestBrowserNewTree::cameraThatANewTreeDoesNotFindIsLetGo()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    connectCamera(kConveyor);
    // It still answers whoever knows its address, so the connection itself lives on.
    steeredcameras::tell({"lose", "conveyor", "all", "broadcast"});

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(connections()->ids().isEmpty(), kAppearsWithinMs);
    QVERIFY(!row(kConveyor));
    QVERIFY(!steeredcameras::describe("conveyor").contains(QStringLiteral("held")));
}

void TestBrowserNewTree::cameraThatAFilterHidesIsLetGo()
{
    connectCamera(kEntrance);
    QVERIFY(KelInterface::setVendorFilter(KelInterface::FilterExclude, QString(),
                                          QStringLiteral("Harbour Optics")));

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(connections()->ids().isEmpty(), kAppearsWithinMs);
    QVERIFY(!row(kEntrance));
}

void TestBrowserNewTree::cameraLostWithoutARowIsLetGo()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);
    window()->treeHost()->build();
    QTRY_VERIFY_WITH_TIMEOUT(row(kConveyor), kAppearsWithinMs);
    // No pass may bring the row again before the camera is gone.
    const auto go = qScopeGuard([this] { window()->scheduler()->setHeld(false); });
    window()->scheduler()->setHeld(true);
    QTRY_COMPARE_WITH_TIMEOUT(window()->scheduler()->running(), 0U, kAppearsWithinMs);
    QCoreApplication::processEvents();

    tree()->deleteCameraItem(row(kConveyor));
    steeredcameras::tell({"unplug", "conveyor"});

    QTRY_VERIFY_WITH_TIMEOUT(!connections()->ids().contains(id), kLostWithinMs);
}

void TestBrowserNewTree::interfaceThatWentWhileTheTreeStoodStillLeaves()
{
    const QString description = QStringLiteral("/opt/KELS/lib/64/KelFGSampleGEV.cti.txt");
    if (!QFile::exists(description))
        QSKIP("no private /opt here");
    const auto portOne = [this]() -> const QTreeWidgetItem * {
        const QTreeWidgetItem *group = tree()->findItem(KelDeviceTree::ItemGenTLRoot, -1);
        for (int i = 0; i < group->childCount(); ++i) {
            if (rows::textOf(group->child(i)).contains(QStringLiteral("Ethernet port 1")))
                return group->child(i);
        }
        return nullptr;
    };
    QTRY_VERIFY_WITH_TIMEOUT(portOne(), 10000);
    QFile file(description);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    const auto write = [&description](const QByteArray &text) {
        QFile written(description);
        return written.open(QIODevice::WriteOnly | QIODevice::Truncate) && written.write(text) == text.size();
    };
    const auto bringBack = qScopeGuard([&] { write(before); });

    trigger(QStringLiteral("Freeze the tree"));
    QTest::qWait(1500);
    QSignalSpy events(tree(), &KelDeviceTree::sigEventSink);
    QVERIFY(write(before.left(before.indexOf("interface gev-eth1"))));
    // A change of the producers asks for a pass, however the tree stands.
    tree()->OnCtiFileChanged();
    QTRY_VERIFY_WITH_TIMEOUT(std::any_of(events.cbegin(), events.cend(),
                                         [](const QList<QVariant> &event) {
                                             return event.at(2).toInt() ==
                                                    KELA_INTERFACE_STATE_INTERFACE_REMOVED;
                                         }),
                             kAppearsWithinMs);
    QVERIFY(portOne());

    trigger(QStringLiteral("Freeze the tree"));

    QTRY_VERIFY(!portOne());
}

void TestBrowserNewTree::connectionGivenBackAtOnceIsNotToldAsOpened()
{
    QSignalSpy opened(connections(), &ConnectionManager::opened);
    QSignalSpy closed(connections(), &ConnectionManager::closed);
    const auto device = rows::deviceOf(row(kEntrance));

    connections()->open(*device);
    connections()->close(device->deviceId);

    QTRY_COMPARE(closed.size(), 1);
    QCOMPARE(opened.size(), 0);
    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
}

void TestBrowserNewTree::lossIsToldOnce()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);
    QSignalSpy lost(connections(), &ConnectionManager::lost);
    connections()->noteGone(id);
    QCOMPARE(lost.size(), 1);

    // The session finds out by itself as well.
    steeredcameras::tell({"unplug", "conveyor"});
    QTest::qWait(9000);

    QCOMPARE(lost.size(), 1);
    QCOMPARE(connections()->session(id).state, SessionState::Lost);
}

QTEST_MAIN(TestBrowserNewTree)
#include "tst_browsernewtree.moc"
