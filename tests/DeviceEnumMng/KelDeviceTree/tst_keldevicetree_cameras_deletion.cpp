// SPDX-License-Identifier: Apache-2.0
#include "CameraTest.h"

#include <CustomCtr/CustomPushButton.h>

#include <ScriptedRecords.h>

#include <QtTest>

using namespace TreeRecords;

/// When a row of a camera goes, what goes with it and what is told.
class tst_KelDeviceTree_cameras_deletion : public CameraTest
{
    Q_OBJECT

private Q_SLOTS:
    void deletionOfAConnectedCameraLeavesItUntouched();
    void iconAloneDoesNotKeepACamera();
    void deletionRemovesRowAndButton();
    void deletionOfAnUnknownCameraIsOnlyLogged();
    void deletionIsLoggedByTransport_data();
    void deletionIsLoggedByTransport();
    void deletingTheCurrentCameraMakesGigeCurrentBeforeTheSignal();
    void deleteSignalComesWhileTheItemStands();
    void deletingNullDoesNothing();
    void itemOfAnotherTreeIsNotDeleted();
    void buttonsOfDeletedCamerasGoThroughTheEventLoop();
    void cameraRemovedByTheHostInTheDeleteSignalIsLeftAlone();
};

void tst_KelDeviceTree_cameras_deletion::deletionOfAConnectedCameraLeavesItUntouched()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    setRecordState(item, KELA_DEV_STATE_GIGE_CONNECTED);
    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_CONNECTED);
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(1), item);
    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_CONNECTED));
    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras_deletion::iconAloneDoesNotKeepACamera()
{
    m_tree->setCameraItemIcon(add(gigeDevice(1, "S1", "AA")), KELA_DEV_STATE_GIGE_CONNECTED);

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(1), nullptr);
}

void tst_KelDeviceTree_cameras_deletion::deletionRemovesRowAndButton()
{
    add(gigeDevice(1, "S1", "AA"));
    QTreeWidgetItem *kept = add(gigeDevice(2, "S2", "AA"));
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(deleted.count(), 1);
    QCOMPARE(gige()->child(0)->childCount(), 1);
    QCOMPARE(m_tree->findCameraItem(2), kept);
    QCOMPARE(inside().m_rightBtns.keys(), QList<long>({-4, -2, -1, 2}));
}

void tst_KelDeviceTree_cameras_deletion::deletionOfAnUnknownCameraIsOnlyLogged()
{
    const InfoLog log;
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteDevice(variantOf(gigeDevice(9, "S1", "AA")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("Enter onDeleteDevice,   CameraID:9")}));
    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras_deletion::deletionIsLoggedByTransport_data()
{
    QTest::addColumn<uint>("transport");
    QTest::addColumn<QString>("line");
    QTest::newRow("GigE") << 1U << QStringLiteral("CameraName:Name of GigE, seventeen+   To   CameraID:1");
    QTest::newRow("USB") << 4U << QStringLiteral("CameraName:Name of USB   To   CameraID:1");
    QTest::newRow("Camera Link") << 8U << QStringLiteral("Delete CameraLink,   CameraID:1");
    QTest::newRow("GenTL") << 16U << QStringLiteral("Delete Interface,   CameraID:1");
    QTest::newRow("other") << 0U << QStringLiteral("Delete Interface,   CameraID:1");
}

// The transport of the event's record decides.
void tst_KelDeviceTree_cameras_deletion::deletionIsLoggedByTransport()
{
    QFETCH(uint, transport);
    QFETCH(QString, line);
    add(gigeDevice(1, "S1", "AA"));
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    info.deviceInfo.transport = transport;
    if (transport == KELA_INTERFACE_TYPE_USB) {
        info.deviceInfo = usbCamera("U1");
        setField(info.deviceInfo.special.usb.userDefinedName, "Name of USB");
    } else {
        setField(info.deviceInfo.special.gige.userDefinedName, "Name of GigE, seventeen+");
    }
    const InfoLog log;

    m_tree->onDeleteDevice(variantOf(info));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("Enter onDeleteDevice,   CameraID:1"), line}));
}

void tst_KelDeviceTree_cameras_deletion::deletingTheCurrentCameraMakesGigeCurrentBeforeTheSignal()
{
    m_tree->setCurrentItem(add(gigeDevice(1, "S1", "AA")));
    QTreeWidgetItem *current = nullptr;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [this, &current] { current = m_tree->currentItem(); });

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(current, gige());
}

void tst_KelDeviceTree_cameras_deletion::deleteSignalComesWhileTheItemStands()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    bool stands = false;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [this, item, &stands](QTreeWidgetItem *told) {
                stands = told == item && m_tree->findCameraItem(1) == item && buttonOf(item);
            });

    m_tree->deleteCameraItem(item);

    QVERIFY(stands);
    QCOMPARE(m_tree->findCameraItem(1), nullptr);
}

void tst_KelDeviceTree_cameras_deletion::deletingNullDoesNothing()
{
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->deleteCameraItem(nullptr);

    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras_deletion::itemOfAnotherTreeIsNotDeleted()
{
    KelDeviceTree other;
    other.onNewDevice(variantOf(gigeDevice(1, "S1")));
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->deleteCameraItem(other.findCameraItem(1));

    QVERIFY(other.findCameraItem(1));
    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras_deletion::buttonsOfDeletedCamerasGoThroughTheEventLoop()
{
    const QPointer<CustomPushButton> button = buttonOf(add(gigeDevice(1, "S1", "AA")));

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QVERIFY(button);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!button);
}

void tst_KelDeviceTree_cameras_deletion::cameraRemovedByTheHostInTheDeleteSignalIsLeftAlone()
{
    add(gigeDevice(1, "S1", "AA"));
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [](QTreeWidgetItem *item) { delete item; });

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(1), nullptr);
    QVERIFY(!inside().m_rightBtns.contains(1));
}

QTEST_MAIN(tst_KelDeviceTree_cameras_deletion)
#include "tst_keldevicetree_cameras_deletion.moc"
