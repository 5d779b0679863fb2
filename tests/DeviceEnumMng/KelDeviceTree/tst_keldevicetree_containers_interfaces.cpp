// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <CustomCtr/CustomPushButton.h>

#include <ScriptedRecords.h>

#include <QtTest>

using namespace TreeRecords;

/// Rows of GenTL interfaces.
class tst_KelDeviceTree_containers_interfaces : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void newInterfaceGetsButtonIconAndTexts();
    void interfaceRecordKeepsTheStateItCameWith();
    void twoNewInterfacesWithOneRecordAreTwoItems();
    void interfaceUpdateLeavesIdentifierButtonAndIcon();
    void interfaceUpdateInAnEmptyGroupCreatesIt();
    void interfaceUpdateThatMissesWritesIntoTheLastChild();

    void missedInterfaceLookUpGivesTheLastChild();
    void missedInterfaceLookUpGivesADeviceThatIsLast();
    void interfaceLookUpInAnEmptyGroupGivesNull();
    void interfaceIsFoundByKeyAndNumber();

    void deletedInterfaceTakesItsDevicesWithoutSignals();
    void buttonsOfADeletedInterfaceStay();
    void deletedInterfaceIsLoggedByItsDisplayName();
};

void tst_KelDeviceTree_containers_interfaces::newInterfaceGetsButtonIconAndTexts()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF", 0, "Display");
    interface.hasBracketText = 1;
    setField(interface.bracketText, "eth0");
    setField(interface.alternativeName, "Other");
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewGenTLInterfaceItem);

    m_tree->onNewGenTLInterface(variantOf(interface));

    const QTreeWidgetItem *item = genTL()->child(0);
    QVERIFY(item);
    QCOMPARE(made.count(), 1);
    QCOMPARE(item->text(0), QStringLiteral("Other (eth0)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("Display"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(15));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(70001));
    QVERIFY(item->isExpanded());
    CustomPushButton *button = inside().livingButton(item->data(0, KelDeviceTree::ItemRightBtnRole));
    QCOMPARE(button, inside().m_rightBtns.value(70001));
    QCOMPARE(button->cUserData(), QVariant(true));
    QCOMPARE(item->icon(0).cacheKey(),
             KelDeviceTreePrivate::iconMap().value(KELA_DEV_STATE_GENTL_INTERFACE_FREE).cacheKey());
}

void tst_KelDeviceTree_containers_interfaces::interfaceRecordKeepsTheStateItCameWith()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF");
    interface.state = 3;

    m_tree->onNewGenTLInterface(variantOf(interface));

    QCOMPARE(recordOf<KELA_GENTL_IF_INFO>(genTL()->child(0)).state, 3U);
}

void tst_KelDeviceTree_containers_interfaces::twoNewInterfacesWithOneRecordAreTwoItems()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(genTL()->childCount(), 2);
    QCOMPARE(inside().findGenTLInterfaceItem(70001), genTL()->child(0));
}

void tst_KelDeviceTree_containers_interfaces::interfaceUpdateLeavesIdentifierButtonAndIcon()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "old")));
    QTreeWidgetItem *item = genTL()->child(0);
    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GENTL_INTERFACE_OPEN);
    const QVariant button = item->data(0, KelDeviceTree::ItemRightBtnRole);
    const qint64 icon = item->icon(0).cacheKey();
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateGenTLInterfaceItem);

    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "new")));

    QCOMPARE(updated.count(), 1);
    QCOMPARE(item->text(0), QStringLiteral("new"));
    QCOMPARE(item->toolTip(0), QStringLiteral("new"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(70001));
    QCOMPARE(item->data(0, KelDeviceTree::ItemRightBtnRole), button);
    QCOMPARE(item->icon(0).cacheKey(), icon);
}

void tst_KelDeviceTree_containers_interfaces::interfaceUpdateInAnEmptyGroupCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewGenTLInterfaceItem);

    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(genTL()->childCount(), 1);
    QCOMPARE(made.count(), 1);
}

void tst_KelDeviceTree_containers_interfaces::interfaceUpdateThatMissesWritesIntoTheLastChild()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "A", 0, "first")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "B", 0, "second")));

    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70003, "C", 0, "third")));

    QCOMPARE(genTL()->childCount(), 2);
    QCOMPARE(genTL()->child(1)->text(0), QStringLiteral("third"));
    QCOMPARE(genTL()->child(1)->data(0, KelDeviceTree::ItemIdRole), QVariant(70002));
    QCOMPARE(recordOf<KELA_GENTL_IF_INFO>(genTL()->child(1)).id, 70003U);
}

void tst_KelDeviceTree_containers_interfaces::missedInterfaceLookUpGivesTheLastChild()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(3, "IF")));

    QCOMPARE(inside().findGenTLInterfaceItem(5), genTL()->child(0));
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("other"), 9), genTL()->child(0));
}

void tst_KelDeviceTree_containers_interfaces::missedInterfaceLookUpGivesADeviceThatIsLast()
{
    m_tree->onNewDevice(variantOf(TreeRecords::genTLDevice(50001, "G1")));
    QCOMPARE(m_tree->findCameraItem(50001)->parent(), genTL());

    QCOMPARE(inside().findGenTLInterfaceItem(5), m_tree->findCameraItem(50001));
}

void tst_KelDeviceTree_containers_interfaces::interfaceLookUpInAnEmptyGroupGivesNull()
{
    QCOMPARE(inside().findGenTLInterfaceItem(70001), nullptr);
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 0), nullptr);
}

void tst_KelDeviceTree_containers_interfaces::interfaceIsFoundByKeyAndNumber()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 1)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "IF", 2)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70003, "if", 1)));

    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 1), genTL()->child(0));
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 2), genTL()->child(1));
}

void tst_KelDeviceTree_containers_interfaces::deletedInterfaceTakesItsDevicesWithoutSignals()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));
    m_tree->onNewDevice(variantOf(TreeRecords::genTLDevice(50001, "G1", "IF")));
    QCOMPARE(m_tree->findCameraItem(50001)->parent(), genTL()->child(0));
    m_tree->setCurrentItem(genTL()->child(0));
    QSignalSpy interfaces(m_tree.get(), &KelDeviceTree::sigDeleteGenTLInterfaceItem);
    QSignalSpy devices(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(genTL()->childCount(), 0);
    QCOMPARE(m_tree->findCameraItem(50001), nullptr);
    QCOMPARE(m_tree->currentItem(), gige());
    QCOMPARE(interfaces.count(), 1);
    QCOMPARE(devices.count(), 0);
}

void tst_KelDeviceTree_containers_interfaces::buttonsOfADeletedInterfaceStay()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));
    m_tree->onNewDevice(variantOf(TreeRecords::genTLDevice(50001, "G1", "IF")));

    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QVERIFY(inside().m_rightBtns.contains(70001));
    QVERIFY(inside().m_rightBtns.contains(50001));
}

void tst_KelDeviceTree_containers_interfaces::deletedInterfaceIsLoggedByItsDisplayName()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "Display")));
    const InfoLog log;

    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "Display")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("Display")}));
}

QTEST_MAIN(tst_KelDeviceTree_containers_interfaces)
#include "tst_keldevicetree_containers_interfaces.moc"
