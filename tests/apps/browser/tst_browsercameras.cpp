// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "DetailsPanel.h"
#include "MainWindow.h"
#include "SteeredCameras.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTest>

using namespace browser;

namespace
{

constexpr int kAppearsWithinMs = 5000;

const QString kShared = QStringLiteral("HO-18002");
const QString kLight = QStringLiteral("OS-8-0044");
const QString kOnThisHost = QStringLiteral("SIM-0001");

} // namespace

/// Which cameras the browser shows, and where.
class TestBrowserCameras : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void camerasOfEveryStateAreShown();
    void unpluggedCameraLeavesAndReturnsWithItsIdentifier();
    void cameraIsAddedByItsAddressAndTakenOut();
    void genTLInterfaceShowsItsCamerasWhileItIsOpen();
    void cameraLinkCamerasStandInTheGroupOfTheBrowser();
};

void TestBrowserCameras::camerasOfEveryStateAreShown()
{
    QTRY_VERIFY(row(kLight) && row(kOnThisHost) && row(kShared) && row(kInlet));

    QCOMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(stateOf(kLabels), int(KELA_DEV_STATE_GIGE_IN_USE));
    QCOMPARE(stateOf(kShared), int(KELA_DEV_STATE_GIGE_MULTICAST));
    QCOMPARE(stateOf(kStranger), int(KELA_DEV_STATE_GIGE_UNREACHABLE));
    QCOMPARE(rows::typeOf(row(kOnThisHost)->parent()), int(KelDeviceTree::ItemGigEVirtualGroup));
    QCOMPARE(rows::typeOf(row(kLight)->parent()), int(KelDeviceTree::ItemOtherGroup));
    QCOMPARE(rows::typeOf(row(kEntrance)->parent()), int(KelDeviceTree::ItemNetWork));
    QVERIFY(row(kEntrance)->parent() != row(kInlet)->parent());

    tree()->setCurrentItem(row(kStranger));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("192.168.60.21/24")));
    keepPicture(window(), QStringLiteral("browser-unreachable"));
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("192.168.50.77")));
    keepPicture(window(), QStringLiteral("browser-in-use"));
}

void TestBrowserCameras::unpluggedCameraLeavesAndReturnsWithItsIdentifier()
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

void TestBrowserCameras::cameraIsAddedByItsAddressAndTakenOut()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    putConveyorBehindARouter();

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

void TestBrowserCameras::genTLInterfaceShowsItsCamerasWhileItIsOpen()
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
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("Ethernet port 0")));
    tree()->scrollToBottom();
    keepPicture(window(), QStringLiteral("browser-gentl"));

    Q_EMIT tree()->sigRightBtnClicked(id, true);
    QTRY_VERIFY(!row(QStringLiteral("GT-0001")));
    QTest::qWait(2500);
    QVERIFY(!row(QStringLiteral("GT-0001")));

    Q_EMIT tree()->sigRightBtnClicked(id, true);
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("GT-0001")), 5000);
}

void TestBrowserCameras::cameraLinkCamerasStandInTheGroupOfTheBrowser()
{
    if (qEnvironmentVariableIsEmpty("KELS_CLSERIAL"))
        QSKIP("no simulated frame grabber here");
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("CL-0031")), 8000);

    QCOMPARE(rows::typeOf(row(QStringLiteral("CL-0031"))->parent()), int(KelDeviceTree::ItemCamLinkRoot));
    tree()->setCurrentItem(row(QStringLiteral("CL-0031")));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("Grabber_0/A")));
}

QTEST_MAIN(TestBrowserCameras)
#include "tst_browsercameras.moc"
