// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <ScriptedRecords.h>

#include <QtTest>

using namespace TreeRecords;

/// Under which row or group a device sits.
class tst_KelDeviceTree_containers_parents : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void virtualCameraMakesItsGroupOnceAndReusesIt();
    void otherDeviceGroupStandsUnderGige();
    void virtualUsbCameraHasAGroupOfItsOwn();
    void groupIsMadeOnlyOnRequest();
    void groupsOfOtherTypesAreNeverMade();
    void groupThatWasMovedIsFoundWhereItStands();

    void gigeCameraWithoutCardSitsUnderGige();
    void gigeCameraOfAnUnknownKindSitsUnderGige();
    void usbCameraWithoutControllerSitsUnderUsb();
    void usbCameraOfKind2SitsUnderUsb();
    void genTLDeviceWithoutInterfacesSitsUnderGenTL();
    void genTLParentComesFromTheInterfaceBlock();
    void unshownTransportsHaveNoParent();
    void hostsCameraLinkGroupIsTheParent();
    void hosts1394GroupIsTheParent();
};

void tst_KelDeviceTree_containers_parents::virtualCameraMakesItsGroupOnceAndReusesIt()
{
    for (const int id : {1, 2}) {
        KELA_STRUCT_DEVICE_INFO info = gigeDevice(id, std::to_string(id));
        info.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;
        m_tree->onNewDevice(variantOf(info));
    }

    QCOMPARE(gige()->childCount(), 1);
    QTreeWidgetItem *group = gige()->child(0);
    QCOMPARE(group->text(0), QStringLiteral("Virtual Device"));
    QCOMPARE(group->data(0, KelDeviceTree::ItemTypeRole), QVariant(6));
    QCOMPARE(group->data(0, KelDeviceTree::ItemIdRole), QVariant(-1));
    QVERIFY(group->isExpanded());
    QCOMPARE(group->childCount(), 2);
}

void tst_KelDeviceTree_containers_parents::otherDeviceGroupStandsUnderGige()
{
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1");
    info.deviceInfo.placement = KELA_PLACEMENT_OTHER;

    QTreeWidgetItem *parent = m_tree->findActualParentItem(info);

    QCOMPARE(parent, gige()->child(0));
    QCOMPARE(parent->text(0), QStringLiteral("Other Device"));
    QCOMPARE(parent->data(0, KelDeviceTree::ItemTypeRole), QVariant(8));
}

void tst_KelDeviceTree_containers_parents::virtualUsbCameraHasAGroupOfItsOwn()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    info.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;

    QTreeWidgetItem *parent = m_tree->findActualParentItem(info);

    QCOMPARE(parent, usb()->child(0));
    QCOMPARE(parent->text(0), QStringLiteral("Virtual Device"));
    QCOMPARE(parent->data(0, KelDeviceTree::ItemTypeRole), QVariant(7));
}

void tst_KelDeviceTree_containers_parents::groupIsMadeOnlyOnRequest()
{
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemOtherGroup, false), nullptr);
    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_containers_parents::groupsOfOtherTypesAreNeverMade()
{
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemCamLinkRoot, true), nullptr);
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemNetWork, true), nullptr);
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemUSBRoot, true), usb());
}

void tst_KelDeviceTree_containers_parents::groupThatWasMovedIsFoundWhereItStands()
{
    QTreeWidgetItem *group = inside().GetVirtualGroupItem(KelDeviceTree::ItemGigEVirtualGroup, true);
    usb()->addChild(gige()->takeChild(0));

    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemGigEVirtualGroup, true), group);
    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_containers_parents::gigeCameraWithoutCardSitsUnderGige()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "BB");

    QCOMPARE(m_tree->findActualParentItem(info), gige());
}

void tst_KelDeviceTree_containers_parents::gigeCameraOfAnUnknownKindSitsUnderGige()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    info.deviceInfo.placement = 3;

    QCOMPARE(m_tree->findActualParentItem(info), gige());
}

void tst_KelDeviceTree_containers_parents::usbCameraWithoutControllerSitsUnderUsb()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1", "other");
    KELA_STRUCT_DEVICE_INFO matching = usbDevice(30002, "U2", "key");

    QCOMPARE(m_tree->findActualParentItem(info), usb());
    QCOMPARE(m_tree->findActualParentItem(matching), usb()->child(0));
}

void tst_KelDeviceTree_containers_parents::usbCameraOfKind2SitsUnderUsb()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    info.deviceInfo.placement = KELA_PLACEMENT_OTHER;

    QCOMPARE(m_tree->findActualParentItem(info), usb());
    QCOMPARE(usb()->childCount(), 0);
}

void tst_KelDeviceTree_containers_parents::genTLDeviceWithoutInterfacesSitsUnderGenTL()
{
    KELA_STRUCT_DEVICE_INFO info = TreeRecords::genTLDevice(50001, "G1", "IF");

    QCOMPARE(m_tree->findActualParentItem(info), genTL());
}

void tst_KelDeviceTree_containers_parents::genTLParentComesFromTheInterfaceBlock()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "A", 1)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "B", 1)));
    KELA_STRUCT_DEVICE_INFO info = TreeRecords::genTLDevice(50001, "G1", "A", 1);
    setField(info.deviceInfo.special.genTL.interfaceId, "B");

    QCOMPARE(m_tree->findActualParentItem(info), genTL()->child(0));
}

void tst_KelDeviceTree_containers_parents::unshownTransportsHaveNoParent()
{
    for (const unsigned int transport : {0U, 2U, 8U, 32U, 64U, 128U, 256U}) {
        KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1");
        info.deviceInfo.transport = transport;
        QCOMPARE(m_tree->findActualParentItem(info), nullptr);
    }
}

void tst_KelDeviceTree_containers_parents::hostsCameraLinkGroupIsTheParent()
{
    QTreeWidgetItem *group = addHostsGroup(KelDeviceTree::ItemCamLinkRoot);
    KELA_STRUCT_DEVICE_INFO info = cameraLinkDevice(40001, "C1");

    QCOMPARE(m_tree->findActualParentItem(info), group);
}

void tst_KelDeviceTree_containers_parents::hosts1394GroupIsTheParent()
{
    QTreeWidgetItem *group = addHostsGroup(KelDeviceTree::Item1394Root);
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(20001, "F1");
    info.deviceInfo.transport = KELA_INTERFACE_TYPE_1394;

    QCOMPARE(m_tree->findActualParentItem(info), group);
}

QTEST_MAIN(tst_KelDeviceTree_containers_parents)
#include "tst_keldevicetree_containers_parents.moc"
