// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include <CustomCtr/CustomPushButton.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

#include <memory>

using namespace TreeRecords;

class tst_KelDeviceTree_containers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void newNetworkCardIsAppendedExpandedUnderGige();
    void updateOfAnUnknownCardCreatesIt();
    void secondNewOfAKnownCardUpdatesIt();
    void cardUpdateChangesNameIdentifierAndRecord();
    void cardKeysAreCaseSensitive();
    void unchangedCardUpdateChangesNothing();
    void deletedCardTakesItsCamerasLastRowFirst();
    void cardWithAConnectedCameraStaysUntouched();
    void deletingTheCurrentCardMakesGigeCurrent();
    void deletionOfAnUnknownCardDoesNothing();
    void deletedCardIsLoggedByItsName();
    void deleteSignalComesWhileTheCardStands();

    void twoControllersWithOneRecordAreTwoItems();
    void deletingTheCurrentControllerMakesGigeCurrent();
    void controllerGoesEvenWithAConnectedCamera();
    void deletedControllerIsLoggedByItsName();

    void newInterfaceGetsButtonIconAndTexts();
    void interfaceRecordKeepsTheStateItCameWith();
    void twoNewInterfacesWithOneRecordAreTwoItems();
    void interfaceUpdateLeavesIdentifierButtonAndIcon();
    void interfaceUpdateInAnEmptyGroupCreatesIt();
    void missedInterfaceLookUpGivesTheLastChild();
    void missedInterfaceLookUpGivesADeviceThatIsLast();
    void interfaceUpdateThatMissesWritesIntoTheLastChild();
    void interfaceLookUpInAnEmptyGroupGivesNull();
    void interfaceIsFoundByKeyAndNumber();
    void deletedInterfaceTakesItsDevicesWithoutSignals();
    void buttonsOfADeletedInterfaceStay();
    void deletedInterfaceIsLoggedByItsDisplayName();

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

    void switchedOffEnumerationIgnoresAllContainerEvents();
    void recordOfAnotherKindIsReadAsZero();
    void fullFieldsAreReadWithoutOverrun();
    void treeDestroyedInEachContainerSignalIsLeftAlone_data();
    void treeDestroyedInEachContainerSignalIsLeftAlone();
    void cardRemovedByTheHostMeanwhileIsLeftAlone();

private:
    QTreeWidgetItem *gige() { return m_tree->findItem(KelDeviceTree::ItemGigERoot, -1); }
    QTreeWidgetItem *usb() { return m_tree->findItem(KelDeviceTree::ItemUSBRoot, -1); }
    QTreeWidgetItem *genTL() { return m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1); }
    KelDeviceTreePrivate &inside() { return *KelDeviceTreePrivate::of(m_tree.get()); }

    std::unique_ptr<KelDeviceTree> m_tree;
};

void tst_KelDeviceTree_containers::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
}

void tst_KelDeviceTree_containers::cleanup()
{
    m_tree.reset();
}

void tst_KelDeviceTree_containers::newNetworkCardIsAppendedExpandedUnderGige()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);

    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0[10.0.0.1]")));

    QTreeWidgetItem *item = gige()->child(0);
    QVERIFY(item);
    QCOMPARE(made.count(), 1);
    QCOMPARE(made.at(0).at(0).value<QTreeWidgetItem *>(), item);
    QCOMPARE(item->text(0), QStringLiteral("eth0[10.0.0.1]"));
    QCOMPARE(item->toolTip(0), QStringLiteral("eth0[10.0.0.1]"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(5));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(80001));
    QCOMPARE(recordOf<KELA_NETWORK>(item).id, 80001U);
    QVERIFY(item->isExpanded());
    QVERIFY(!item->data(0, KelDeviceTree::ItemRightBtnRole).isValid());
}

void tst_KelDeviceTree_containers::updateOfAnUnknownCardCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(made.count(), 1);
    QCOMPARE(updated.count(), 0);
}

void tst_KelDeviceTree_containers::secondNewOfAKnownCardUpdatesIt()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);

    m_tree->onNewNetWork(variantOf(networkCard(80002, "AA", "eth1")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(made.count(), 0);
    QCOMPARE(updated.count(), 1);
    QCOMPARE(gige()->child(0)->text(0), QStringLiteral("eth1"));
}

void tst_KelDeviceTree_containers::cardUpdateChangesNameIdentifierAndRecord()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "old")));

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80009, "AA", "new")));

    const QTreeWidgetItem *item = gige()->child(0);
    QCOMPARE(item->text(0), QStringLiteral("new"));
    QCOMPARE(item->toolTip(0), QStringLiteral("new"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(80009));
    QCOMPARE(recordOf<KELA_NETWORK>(item).id, 80009U);
}

void tst_KelDeviceTree_containers::cardKeysAreCaseSensitive()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewNetWork(variantOf(networkCard(80002, "aa")));

    QCOMPARE(gige()->childCount(), 2);
    QCOMPARE(inside().findNetWorkItem(QStringLiteral("aa")), gige()->child(1));
    QCOMPARE(inside().findNetWorkItem(QStringLiteral("A")), nullptr);
}

void tst_KelDeviceTree_containers::unchangedCardUpdateChangesNothing()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);
    const ModelChanges changes(*m_tree);

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA")));

    QCOMPARE(updated.count(), 1);
    QCOMPARE(changes.count, 0);
}

void tst_KelDeviceTree_containers::deletedCardTakesItsCamerasLastRowFirst()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    for (const int id : {1, 2, 3}) {
        m_tree->onNewDevice(variantOf(gigeDevice(id, std::to_string(id), "AA")));
    }
    QStringList told;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this, [&told](QTreeWidgetItem *item) {
        told.append(item->data(0, KelDeviceTree::ItemIdRole).toString());
    });
    connect(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem, this,
            [&told](QTreeWidgetItem *item) { told.append(QString::number(item->childCount())); });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(told,
             QStringList({QStringLiteral("3"), QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("0")}));
    QCOMPARE(gige()->childCount(), 0);
    QCOMPARE(inside().m_rightBtns.keys(), QList<long>({-4, -2, -1}));
}

void tst_KelDeviceTree_containers::cardWithAConnectedCameraStaysUntouched()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    m_tree->setCameraItemIcon(m_tree->findCameraItem(1), KELA_DEV_STATE_GIGE_CONNECTED);
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);
    QSignalSpy devices(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->childCount(), 2);
    QCOMPARE(cards.count(), 0);
    QCOMPARE(devices.count(), 0);
}

void tst_KelDeviceTree_containers::deletingTheCurrentCardMakesGigeCurrent()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->setCurrentItem(gige()->child(0));

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(m_tree->currentItem(), gige());
}

void tst_KelDeviceTree_containers::deletionOfAnUnknownCardDoesNothing()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);

    m_tree->onDeleteNetWork(variantOf(networkCard(80002, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(cards.count(), 0);
}

void tst_KelDeviceTree_containers::deletedCardIsLoggedByItsName()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0 100%s")));
    const InfoLog log;

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA", "eth0 100%s")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("eth0 100%s")}));
    QCOMPARE(log.lines().at(0).category, QStringLiteral("default"));
    QCOMPARE(log.lines().at(0).file, QStringLiteral("src/DeviceEnumMng/KelDeviceTree"));
    QVERIFY(log.lines().at(0).function.contains(QStringLiteral("onDeleteNetWork")));
}

void tst_KelDeviceTree_containers::deleteSignalComesWhileTheCardStands()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    bool stands = false;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem, this, [this, &stands](QTreeWidgetItem *item) {
        stands = m_tree->findItem(KelDeviceTree::ItemNetWork, 80001) == item;
    });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QVERIFY(stands);
}

void tst_KelDeviceTree_containers::twoControllersWithOneRecordAreTwoItems()
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

void tst_KelDeviceTree_containers::deletingTheCurrentControllerMakesGigeCurrent()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    m_tree->setCurrentItem(usb()->child(0));

    m_tree->onDeleteUSBController(variantOf(usbController(1, "key")));

    QCOMPARE(usb()->childCount(), 0);
    QCOMPARE(m_tree->currentItem(), gige());
}

void tst_KelDeviceTree_containers::controllerGoesEvenWithAConnectedCamera()
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

void tst_KelDeviceTree_containers::deletedControllerIsLoggedByItsName()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key", "xHCI")));
    const InfoLog log;

    m_tree->onDeleteUSBController(variantOf(usbController(1, "key", "xHCI")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("xHCI")}));
}

void tst_KelDeviceTree_containers::newInterfaceGetsButtonIconAndTexts()
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

void tst_KelDeviceTree_containers::interfaceRecordKeepsTheStateItCameWith()
{
    KELA_GENTL_IF_INFO interface = TreeRecords::genTLInterface(70001, "IF");
    interface.state = 3;

    m_tree->onNewGenTLInterface(variantOf(interface));

    QCOMPARE(recordOf<KELA_GENTL_IF_INFO>(genTL()->child(0)).state, 3U);
}

void tst_KelDeviceTree_containers::twoNewInterfacesWithOneRecordAreTwoItems()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(genTL()->childCount(), 2);
    QCOMPARE(inside().findGenTLInterfaceItem(70001), genTL()->child(0));
}

void tst_KelDeviceTree_containers::interfaceUpdateLeavesIdentifierButtonAndIcon()
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

void tst_KelDeviceTree_containers::interfaceUpdateInAnEmptyGroupCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewGenTLInterfaceItem);

    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(genTL()->childCount(), 1);
    QCOMPARE(made.count(), 1);
}

void tst_KelDeviceTree_containers::missedInterfaceLookUpGivesTheLastChild()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(3, "IF")));

    QCOMPARE(inside().findGenTLInterfaceItem(5), genTL()->child(0));
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("other"), 9), genTL()->child(0));
}

void tst_KelDeviceTree_containers::missedInterfaceLookUpGivesADeviceThatIsLast()
{
    m_tree->onNewDevice(variantOf(TreeRecords::genTLDevice(50001, "G1")));
    QCOMPARE(m_tree->findCameraItem(50001)->parent(), genTL());

    QCOMPARE(inside().findGenTLInterfaceItem(5), m_tree->findCameraItem(50001));
}

void tst_KelDeviceTree_containers::interfaceUpdateThatMissesWritesIntoTheLastChild()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "A", 0, "first")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "B", 0, "second")));

    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70003, "C", 0, "third")));

    QCOMPARE(genTL()->childCount(), 2);
    QCOMPARE(genTL()->child(1)->text(0), QStringLiteral("third"));
    QCOMPARE(genTL()->child(1)->data(0, KelDeviceTree::ItemIdRole), QVariant(70002));
    QCOMPARE(recordOf<KELA_GENTL_IF_INFO>(genTL()->child(1)).id, 70003U);
}

void tst_KelDeviceTree_containers::interfaceLookUpInAnEmptyGroupGivesNull()
{
    QCOMPARE(inside().findGenTLInterfaceItem(70001), nullptr);
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 0), nullptr);
}

void tst_KelDeviceTree_containers::interfaceIsFoundByKeyAndNumber()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 1)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "IF", 2)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70003, "if", 1)));

    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 1), genTL()->child(0));
    QCOMPARE(inside().findGenTLInterfaceItem(QStringLiteral("IF"), 2), genTL()->child(1));
}

void tst_KelDeviceTree_containers::deletedInterfaceTakesItsDevicesWithoutSignals()
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

void tst_KelDeviceTree_containers::buttonsOfADeletedInterfaceStay()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));
    m_tree->onNewDevice(variantOf(TreeRecords::genTLDevice(50001, "G1", "IF")));

    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QVERIFY(inside().m_rightBtns.contains(70001));
    QVERIFY(inside().m_rightBtns.contains(50001));
}

void tst_KelDeviceTree_containers::deletedInterfaceIsLoggedByItsDisplayName()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "Display")));
    const InfoLog log;

    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "Display")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("Display")}));
}

void tst_KelDeviceTree_containers::virtualCameraMakesItsGroupOnceAndReusesIt()
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

void tst_KelDeviceTree_containers::otherDeviceGroupStandsUnderGige()
{
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1");
    info.deviceInfo.placement = KELA_PLACEMENT_OTHER;

    QTreeWidgetItem *parent = m_tree->findActualParentItem(info);

    QCOMPARE(parent, gige()->child(0));
    QCOMPARE(parent->text(0), QStringLiteral("Other Device"));
    QCOMPARE(parent->data(0, KelDeviceTree::ItemTypeRole), QVariant(8));
}

void tst_KelDeviceTree_containers::virtualUsbCameraHasAGroupOfItsOwn()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    info.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;

    QTreeWidgetItem *parent = m_tree->findActualParentItem(info);

    QCOMPARE(parent, usb()->child(0));
    QCOMPARE(parent->text(0), QStringLiteral("Virtual Device"));
    QCOMPARE(parent->data(0, KelDeviceTree::ItemTypeRole), QVariant(7));
}

void tst_KelDeviceTree_containers::groupIsMadeOnlyOnRequest()
{
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemOtherGroup, false), nullptr);
    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_containers::groupsOfOtherTypesAreNeverMade()
{
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemCamLinkRoot, true), nullptr);
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemNetWork, true), nullptr);
    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemUSBRoot, true), usb());
}

void tst_KelDeviceTree_containers::groupThatWasMovedIsFoundWhereItStands()
{
    QTreeWidgetItem *group = inside().GetVirtualGroupItem(KelDeviceTree::ItemGigEVirtualGroup, true);
    usb()->addChild(gige()->takeChild(0));

    QCOMPARE(inside().GetVirtualGroupItem(KelDeviceTree::ItemGigEVirtualGroup, true), group);
    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_containers::gigeCameraWithoutCardSitsUnderGige()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "BB");

    QCOMPARE(m_tree->findActualParentItem(info), gige());
}

void tst_KelDeviceTree_containers::gigeCameraOfAnUnknownKindSitsUnderGige()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    info.deviceInfo.placement = 3;

    QCOMPARE(m_tree->findActualParentItem(info), gige());
}

void tst_KelDeviceTree_containers::usbCameraWithoutControllerSitsUnderUsb()
{
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1", "other");
    KELA_STRUCT_DEVICE_INFO matching = usbDevice(30002, "U2", "key");

    QCOMPARE(m_tree->findActualParentItem(info), usb());
    QCOMPARE(m_tree->findActualParentItem(matching), usb()->child(0));
}

void tst_KelDeviceTree_containers::usbCameraOfKind2SitsUnderUsb()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    info.deviceInfo.placement = KELA_PLACEMENT_OTHER;

    QCOMPARE(m_tree->findActualParentItem(info), usb());
    QCOMPARE(usb()->childCount(), 0);
}

void tst_KelDeviceTree_containers::genTLDeviceWithoutInterfacesSitsUnderGenTL()
{
    KELA_STRUCT_DEVICE_INFO info = TreeRecords::genTLDevice(50001, "G1", "IF");

    QCOMPARE(m_tree->findActualParentItem(info), genTL());
}

void tst_KelDeviceTree_containers::genTLParentComesFromTheInterfaceBlock()
{
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "A", 1)));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "B", 1)));
    KELA_STRUCT_DEVICE_INFO info = TreeRecords::genTLDevice(50001, "G1", "A", 1);
    setField(info.deviceInfo.special.genTL.interfaceId, "B");

    QCOMPARE(m_tree->findActualParentItem(info), genTL()->child(0));
}

void tst_KelDeviceTree_containers::unshownTransportsHaveNoParent()
{
    for (const unsigned int transport : {0U, 2U, 8U, 32U, 64U, 128U, 256U}) {
        KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1");
        info.deviceInfo.transport = transport;
        QCOMPARE(m_tree->findActualParentItem(info), nullptr);
    }
}

void tst_KelDeviceTree_containers::hostsCameraLinkGroupIsTheParent()
{
    auto *group = new QTreeWidgetItem(m_tree.get());
    group->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::ItemCamLinkRoot);
    group->setData(0, KelDeviceTree::ItemIdRole, -1);
    KELA_STRUCT_DEVICE_INFO info = cameraLinkDevice(40001, "C1");

    QCOMPARE(m_tree->findActualParentItem(info), group);
}

void tst_KelDeviceTree_containers::hosts1394GroupIsTheParent()
{
    auto *group = new QTreeWidgetItem(m_tree.get());
    group->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::Item1394Root);
    group->setData(0, KelDeviceTree::ItemIdRole, -1);
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(20001, "F1");
    info.deviceInfo.transport = KELA_INTERFACE_TYPE_1394;

    QCOMPARE(m_tree->findActualParentItem(info), group);
}

void tst_KelDeviceTree_containers::switchedOffEnumerationIgnoresAllContainerEvents()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0")));
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "old")));
    m_tree->setEnableEnumDevices(false);

    m_tree->onNewNetWork(variantOf(networkCard(80002, "BB")));
    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA", "eth9")));
    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewUSBController(variantOf(usbController(2, "key2")));
    m_tree->onDeleteUSBController(variantOf(usbController(1, "key")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "IF2")));
    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "new")));
    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->text(0), QStringLiteral("eth0"));
    QCOMPARE(usb()->childCount(), 1);
    QCOMPARE(genTL()->childCount(), 1);
    QCOMPARE(genTL()->child(0)->text(0), QStringLiteral("old"));
}

void tst_KelDeviceTree_containers::recordOfAnotherKindIsReadAsZero()
{
    m_tree->onNewNetWork(QVariant(QStringLiteral("no record")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->text(0), QString());
    QCOMPARE(gige()->child(0)->data(0, KelDeviceTree::ItemIdRole), QVariant(0));
    QCOMPARE(inside().findNetWorkItem(QString()), gige()->child(0));
}

void tst_KelDeviceTree_containers::fullFieldsAreReadWithoutOverrun()
{
    KELA_NETWORK card = networkCard(80001, std::string(64, 'h'), std::string(64, 'n'));
    KELA_USBCONTROLLER_INFO controller = usbController(1, std::string(192, 'k'), std::string(192, 'n'));

    m_tree->onNewNetWork(variantOf(card));
    m_tree->onNewUSBController(variantOf(controller));

    QCOMPARE(gige()->child(0)->text(0), QString(64, QLatin1Char('n')));
    QCOMPARE(inside().findNetWorkItem(QString(64, QLatin1Char('h'))), gige()->child(0));
    QCOMPARE(usb()->child(0)->text(0), QString(192, QLatin1Char('n')));
    QCOMPARE(inside().findUSBControlItem(QString(192, QLatin1Char('k'))), usb()->child(0));
}

void tst_KelDeviceTree_containers::treeDestroyedInEachContainerSignalIsLeftAlone_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char *signal :
         {"sigNewNetWorkItem", "sigUpdateNetWorkItem", "sigDeleteNetWorkItem", "sigNewUSBControllerItem",
          "sigDeleteUSBCtrollerItem", "sigNewGenTLInterfaceItem", "sigUpdateGenTLInterfaceItem",
          "sigDeleteGenTLInterfaceItem", "sigNewDeviceItem", "sigUpdateDeviceItem", "sigDeleteDeviceItem"}) {
        QTest::newRow(signal) << QByteArray(signal);
    }
}

void tst_KelDeviceTree_containers::treeDestroyedInEachContainerSignalIsLeftAlone()
{
    QFETCH(QByteArray, signal);
    QPointer<KelDeviceTree> tree = m_tree.release();
    const TreeKiller killer(tree, signal);
    const auto send = [&tree](KELA_INTERFACE_STATE kind, const QVariant &interface, const QVariant &device) {
        if (tree) {
            tree->onEventSink(interface, device, int(kind), 0, 1);
        }
    };
    const QVariant none;
    for (const auto kind : {KELA_INTERFACE_STATE_INTERFACE_NEW, KELA_INTERFACE_STATE_INTERFACE_UPDATED}) {
        send(kind, variantOf(containerEvent(networkCard(80001, "AA"))), none);
        send(kind, variantOf(containerEvent(usbController(1, "key"))), none);
        send(kind, variantOf(containerEvent(TreeRecords::genTLInterface(70001, "IF"))), none);
    }
    for (const auto kind : {KELA_INTERFACE_STATE_DEVICE_NEW, KELA_INTERFACE_STATE_DEVICE_UPDATED}) {
        send(kind, none, variantOf(gigeDevice(1, "S1", "AA")));
        send(kind, none, variantOf(usbDevice(30001, "U1", "key")));
    }
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED, variantOf(containerEvent(networkCard(80001, "AA"))), none);
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED, variantOf(containerEvent(usbController(1, "key"))), none);
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED,
         variantOf(containerEvent(TreeRecords::genTLInterface(70001, "IF"))), none);

    QVERIFY(!tree);
}

void tst_KelDeviceTree_containers::cardRemovedByTheHostMeanwhileIsLeftAlone()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [this] { delete m_tree->findItem(KelDeviceTree::ItemNetWork, 80001); });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 0);
    QCOMPARE(cards.count(), 0);
}

QTEST_MAIN(tst_KelDeviceTree_containers)
#include "tst_keldevicetree_containers.moc"
