// SPDX-License-Identifier: Apache-2.0
#include "CameraTest.h"

#include <CustomCtr/CustomPushButton.h>

#include <ScriptedRecords.h>

#include <QtTest>

#include <cstring>

using namespace TreeRecords;

/// Which events make a row of a camera, and what the new row is.
class tst_KelDeviceTree_cameras_creation : public CameraTest
{
    Q_OBJECT

private Q_SLOTS:
    void newGigeCameraHasLabelRolesButtonAndIcon();
    void onlyNewGigeCamerasHaveAConnectedRole();
    void gigeLabelShowsModelWithoutAName();
    void gigeNameIsCutAtCreationAndWholeAfterTheFirstUpdate();
    void usbAndGenTLCamerasAreMadeWithTheirWholeName();
    void cameraLinkDeviceGetsNoItemWithoutAGroup();
    void cameraLinkDeviceUnderTheHostsGroupKeepsItsLabel();
    void unshownTransportGetsNoItem();
    void creationIsLogged();
    void serialIsReadFromCameraItemsOnly();

    void hiddenGroupDropsNewCameras();
    void hiddenGroupDropsUpdatesOfUnknownCamerasOnly();
    void bootLoaderIsNeverShown();
    void switchedOffEnumerationIgnoresAllDeviceEvents();
    void recordOfAnotherKindMakesNoItem();
};

void tst_KelDeviceTree_cameras_creation::newGigeCameraHasLabelRolesButtonAndIcon()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    m_tree->onNewDevice(variantOf(withGigeName(gigeDevice(7, "S1", "AA"), "Left")));

    QTreeWidgetItem *item = m_tree->findCameraItem(7);
    QVERIFY(item);
    QCOMPARE(made.count(), 1);
    QCOMPARE(made.at(0).at(0).value<QTreeWidgetItem *>(), item);
    QCOMPARE(item->parent(), gige()->child(0));
    QCOMPARE(item->text(0), QStringLiteral("Left (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("Left (S1)"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(11));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(7));
    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceId, 7);
    QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole), QVariant(false));
    QCOMPARE(item->data(0, KelDeviceTree::StayTopItemRole), QVariant(0));
    QCOMPARE(buttonOf(item), inside().m_rightBtns.value(7));
    QCOMPARE(buttonOf(item)->cUserData(), QVariant(false));
    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_FREE));
}

void tst_KelDeviceTree_cameras_creation::onlyNewGigeCamerasHaveAConnectedRole()
{
    addCameraLinkGroup();

    QVERIFY(!add(usbDevice(30001, "U1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QVERIFY(!add(cameraLinkDevice(40001, "C1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QVERIFY(!add(TreeRecords::genTLDevice(50001, "G1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QCOMPARE(
        add(withState(gigeDevice(1, "S1"), KELA_DEV_STATE_UNKNOWN))->data(0, KelDeviceTree::ItemConnectedRole),
        QVariant(false));
}

void tst_KelDeviceTree_cameras_creation::gigeLabelShowsModelWithoutAName()
{
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    setField(info.deviceInfo.modelName, "Model X");

    QCOMPARE(add(withGigeName(info, ""))->text(0), QStringLiteral("Model X (S1)"));

    m_tree->onUpdateDeviceInfo(variantOf(withGigeName(info, "Name")));
    QCOMPARE(m_tree->findCameraItem(1)->text(0), QStringLiteral("Name (S1)"));
}

void tst_KelDeviceTree_cameras_creation::gigeNameIsCutAtCreationAndWholeAfterTheFirstUpdate()
{
    const KELA_STRUCT_DEVICE_INFO info = withGigeName(gigeDevice(1, "S1", "AA"), "0123456789abcdefghij");

    QTreeWidgetItem *item = add(info);
    QCOMPARE(item->text(0), QStringLiteral("0123456789abcdef (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("0123456789abcdef (S1)"));

    m_tree->onUpdateDeviceInfo(variantOf(info));
    QCOMPARE(item->text(0), QStringLiteral("0123456789abcdefghij (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("0123456789abcdefghij (S1)"));
}

void tst_KelDeviceTree_cameras_creation::usbAndGenTLCamerasAreMadeWithTheirWholeName()
{
    KELA_STRUCT_DEVICE_INFO usb = usbDevice(30001, "U1");
    setField(usb.deviceInfo.special.usb.userDefinedName, "0123456789abcdefghij");
    KELA_STRUCT_DEVICE_INFO genTL = TreeRecords::genTLDevice(50001, "G1");
    setField(genTL.deviceInfo.special.genTL.userDefinedName, "0123456789abcdefghij");

    QCOMPARE(add(usb)->text(0), QStringLiteral("0123456789abcdefghij (U1)"));
    QCOMPARE(add(genTL)->text(0), QStringLiteral("0123456789abcdefghij (G1)"));
    QCOMPARE(m_tree->findCameraItem(30001)->data(0, KelDeviceTree::ItemTypeRole), QVariant(12));
    QCOMPARE(m_tree->findCameraItem(50001)->data(0, KelDeviceTree::ItemTypeRole), QVariant(14));
}

void tst_KelDeviceTree_cameras_creation::cameraLinkDeviceGetsNoItemWithoutAGroup()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    QCOMPARE(add(cameraLinkDevice(40001, "C1")), nullptr);
    QCOMPARE(inside().onNewCamLinkCamera(cameraLinkDevice(40001, "C1"), nullptr), nullptr);
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_cameras_creation::cameraLinkDeviceUnderTheHostsGroupKeepsItsLabel()
{
    QTreeWidgetItem *group = addCameraLinkGroup();
    KELA_STRUCT_DEVICE_INFO info = cameraLinkDevice(40001, "C1", "COM3");
    setField(info.deviceInfo.modelName, "Area");

    QTreeWidgetItem *item = add(info);
    QCOMPARE(item->parent(), group);
    QCOMPARE(item->text(0), QStringLiteral("COM3 Area (C1)"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(13));

    setField(info.deviceInfo.modelName, "Line");
    m_tree->onUpdateDeviceInfo(variantOf(info));
    QCOMPARE(item->text(0), QStringLiteral("COM3 Area (C1)"));
    QCOMPARE(QByteArray(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceInfo.modelName), QByteArray("Line"));
}

void tst_KelDeviceTree_cameras_creation::unshownTransportGetsNoItem()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    for (const unsigned int transport : {0U, 2U, 32U, 128U, 256U}) {
        KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
        info.deviceInfo.transport = transport;
        QCOMPARE(add(info), nullptr);
    }
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_cameras_creation::creationIsLogged()
{
    const InfoLog log;

    add(withGigeName(gigeDevice(7, "S1", "AA"), "100%d"));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("CameraName:100%d (S1)   To   CameraID:7")}));
    QCOMPARE(log.lines().at(0).category, QStringLiteral("default"));
    QCOMPARE(log.lines().at(0).file, QStringLiteral("src/DeviceEnumMng/KelDeviceTree"));
    QVERIFY(log.lines().at(0).function.contains(QStringLiteral("KelDeviceTreePrivate::onNewGigeCamera(")));
}

void tst_KelDeviceTree_cameras_creation::serialIsReadFromCameraItemsOnly()
{
    QTreeWidgetItem *camera = add(gigeDevice(1, "S1", "AA"));

    QCOMPARE(m_tree->getCameraSerial(camera), QStringLiteral("S1"));
    QCOMPARE(m_tree->getCameraSerial(gige()->child(0)), QString());
    QCOMPARE(m_tree->getCameraSerial(nullptr), QString());
}

void tst_KelDeviceTree_cameras_creation::hiddenGroupDropsNewCameras()
{
    m_tree->setVisibleItemTypes({3, 5});

    QCOMPARE(add(usbDevice(30001, "U1")), nullptr);
    QTreeWidgetItem *camera = add(gigeDevice(1, "S1", "AA"));
    QVERIFY(camera);
    QVERIFY(camera->isHidden());
}

void tst_KelDeviceTree_cameras_creation::hiddenGroupDropsUpdatesOfUnknownCamerasOnly()
{
    QTreeWidgetItem *known = add(usbDevice(30001, "U1"));
    m_tree->setVisibleItemTypes({3});
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    setField(info.deviceInfo.special.usb.userDefinedName, "New");

    m_tree->onUpdateDeviceInfo(variantOf(info));
    m_tree->onUpdateDeviceInfo(variantOf(usbDevice(30002, "U2")));

    QCOMPARE(known->text(0), QStringLiteral("New (U1)"));
    QCOMPARE(m_tree->findCameraItem(30002), nullptr);
}

void tst_KelDeviceTree_cameras_creation::bootLoaderIsNeverShown()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    std::memset(info.deviceInfo.special.usb.portLocator, 0, sizeof info.deviceInfo.special.usb.portLocator);

    QCOMPARE(add(info), nullptr);
}

void tst_KelDeviceTree_cameras_creation::switchedOffEnumerationIgnoresAllDeviceEvents()
{
    QTreeWidgetItem *known = add(gigeDevice(1, "S1", "AA"));
    const QString label = known->text(0);
    m_tree->setEnableEnumDevices(false);
    const InfoLog log;

    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    m_tree->onUpdateDeviceInfo(variantOf(withGigeName(gigeDevice(1, "S1", "AA"), "New")));
    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(2), nullptr);
    QCOMPARE(m_tree->findCameraItem(1), known);
    QCOMPARE(known->text(0), label);
    QCOMPARE(log.texts(), QStringList());
}

void tst_KelDeviceTree_cameras_creation::recordOfAnotherKindMakesNoItem()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    m_tree->onNewDevice(QVariant(5));
    m_tree->onUpdateDeviceInfo(QVariant());
    m_tree->onDeleteDevice(variantOf(networkCard(1, "AA")));

    QCOMPARE(made.count(), 0);
    QCOMPARE(gige()->child(0)->childCount(), 0);
}

QTEST_MAIN(tst_KelDeviceTree_cameras_creation)
#include "tst_keldevicetree_cameras_creation.moc"
