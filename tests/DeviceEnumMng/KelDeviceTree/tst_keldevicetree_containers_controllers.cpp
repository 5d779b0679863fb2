// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <QtTest>

using namespace TreeRecords;

/// Rows of USB controllers.
class tst_KelDeviceTree_containers_controllers : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void twoControllersWithOneRecordAreTwoItems();
    void deletingTheCurrentControllerMakesGigeCurrent();
    void controllerGoesEvenWithAConnectedCamera();
    void deletedControllerIsLoggedByItsName();
};

void tst_KelDeviceTree_containers_controllers::twoControllersWithOneRecordAreTwoItems()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewUSBControllerItem);

    m_tree->onNewUSBController(variantOf(usbController(1, "key", "xHCI")));
    m_tree->onNewUSBController(variantOf(usbController(1, "key", "xHCI")));

    QCOMPARE(usb()->childCount(), 2);
    QCOMPARE(made.count(), 2);
    QCOMPARE(usb()->child(1)->text(0), QStringLiteral("xHCI"));
    QCOMPARE(usb()->child(1)->toolTip(0), QStringLiteral("xHCI"));
    QCOMPARE(usb()->child(1)->data(0, KelDeviceTree::ItemTypeRole), QVariant(16));
    QCOMPARE(usb()->child(1)->data(0, KelDeviceTree::ItemIdRole), QVariant(1));
    QVERIFY(usb()->child(1)->isExpanded());
    QCOMPARE(inside().findUSBControlItem(QStringLiteral("key")), usb()->child(0));
}

void tst_KelDeviceTree_containers_controllers::deletingTheCurrentControllerMakesGigeCurrent()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    m_tree->setCurrentItem(usb()->child(0));

    m_tree->onDeleteUSBController(variantOf(usbController(1, "key")));

    QCOMPARE(usb()->childCount(), 0);
    QCOMPARE(m_tree->currentItem(), gige());
}

void tst_KelDeviceTree_containers_controllers::controllerGoesEvenWithAConnectedCamera()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    m_tree->onNewDevice(variantOf(usbDevice(30001, "U1", "key")));
    QTreeWidgetItem *camera = m_tree->findCameraItem(30001);
    camera->setData(0, KelDeviceTree::ItemConnectedRole, true);
    QSignalSpy controllers(m_tree.get(), &KelDeviceTree::sigDeleteUSBCtrollerItem);
    QSignalSpy devices(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteUSBController(variantOf(usbController(1, "key")));

    QCOMPARE(usb()->childCount(), 0);
    QCOMPARE(controllers.count(), 1);
    QCOMPARE(devices.count(), 1);
}

void tst_KelDeviceTree_containers_controllers::deletedControllerIsLoggedByItsName()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key", "xHCI")));
    const InfoLog log;

    m_tree->onDeleteUSBController(variantOf(usbController(1, "key", "xHCI")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("xHCI")}));
}

QTEST_MAIN(tst_KelDeviceTree_containers_controllers)
#include "tst_keldevicetree_containers_controllers.moc"
