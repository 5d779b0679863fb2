// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include "KelDeviceTreeDelegate.h"

#include <ScriptedAccess.h>

#include <QHeaderView>
#include <QMetaMethod>
#include <QSettings>
#include <QtTest>

using namespace TreeRecords;

namespace
{

void writeConfig(const QByteArray &content)
{
    QFile file(KelInterface::programDataPath() + QStringLiteral("/LocalConfig.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

int64_t ackModeOfNewTree()
{
    scriptedAccess().forgetCalls();
    const KelDeviceTree tree;
    const auto calls = scriptedAccess().calls(Operation::SetEnumAckMode);
    return calls.size() == 1 ? calls.front().argument : -1;
}

QString imageOf(const CustomPushButton *button)
{
    return button ? button->cBackgroundImage(Custom::StatusNormal) : QString();
}

} // namespace

class tst_KelDeviceTree_frame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void freshTreeShowsFourTopLevelItemsInOrder();
    void fixedItemsAreExpandedAndBoldAndGigeIsCurrent();
    void fixedItemsHaveTheIdentifierOfGroups();
    void groupsHaveTheirRefreshButtons();
    void viewIsSetUpForRowsWithButtons();
    void configurationButtonIsHiddenAndOpensTheProducerMenu();
    void freshTreeEnumeratesNothing();
    void signalsAndSlotsStandInTheirDeclaredOrder();
    void parameterNamesAreKept();
    void recordsAreMetaTypesUnderTheirNames();
    void roleNumbersAreFixed();
    void itemTypeNumbersAreFixed();
    void fixedItemIsFoundAndMissingTypeIsNot();
    void networkCardIdentifierIsNoCamera();
    void itemAllIsSearchedForGigeCamerasOnly();
    void unknownTransportsGiveTheGigeGroupAsItemType_data();
    void unknownTransportsGiveTheGigeGroupAsItemType();
    void cameraItemsAreTypes11To14();
    void newItemAtIndex0StandsFirstAndIsMarked();
    void newItemWithoutIndexIsAppendedUnmarked();
    void newItemOfAHiddenTypeIsHidden();
    void allIsExpandedWhenItemsAreNotExpandable();
    void missingAckModeMeans1();
    void ackModeOfTheConfigurationReachesTheDeviceAccess();
    void ackModeWrittenByHandIsRead();
    void styleSelectorIsTheTreesOwn();
    void otherStyleKeepsTheRefreshImages();
    void constructionTouchesNoButtonMinus3();
    void styleChangeMakesButtonMinus3();
    void twoTreesShareTheIcons();
    void destructionLeavesNoDeviceAccessBehind();
};

void tst_KelDeviceTree_frame::init()
{
    scriptedAccess().reset();
    QFile::remove(KelInterface::programDataPath() + QStringLiteral("/LocalConfig.ini"));
}

void tst_KelDeviceTree_frame::freshTreeShowsFourTopLevelItemsInOrder()
{
    const KelDeviceTree tree;

    QCOMPARE(tree.topLevelItemCount(), 4);
    const QStringList texts = {QStringLiteral("All"), QStringLiteral("GigE"), QStringLiteral("USB"),
                               QStringLiteral("GenTL")};
    const QList<int> types = {17, 3, 4, 2};
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(tree.topLevelItem(row)->text(0), texts.at(row));
        QCOMPARE(tree.topLevelItem(row)->data(0, KelDeviceTree::ItemTypeRole).toInt(), types.at(row));
        QCOMPARE(tree.topLevelItem(row)->childCount(), 0);
    }
}

void tst_KelDeviceTree_frame::fixedItemsAreExpandedAndBoldAndGigeIsCurrent()
{
    KelDeviceTree tree;

    for (int row = 0; row < 4; ++row) {
        QVERIFY(tree.topLevelItem(row)->isExpanded());
        QCOMPARE(tree.topLevelItem(row)->font(0).weight(), 75);
    }
    QCOMPARE(tree.currentItem(), tree.topLevelItem(1));
}

void tst_KelDeviceTree_frame::fixedItemsHaveTheIdentifierOfGroups()
{
    const KelDeviceTree tree;

    for (int row = 0; row < 4; ++row) {
        QCOMPARE(tree.topLevelItem(row)->data(0, KelDeviceTree::ItemIdRole), QVariant(-1));
        QCOMPARE(tree.topLevelItem(row)->data(0, KelDeviceTree::StayTopItemRole), QVariant(0));
    }
}

void tst_KelDeviceTree_frame::groupsHaveTheirRefreshButtons()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    const QList<QPair<int, long>> groups = {{1, -1}, {2, -2}, {3, -4}};

    for (const auto &[row, id] : groups) {
        const QVariant value = tree.topLevelItem(row)->data(0, KelDeviceTree::ItemRightBtnRole);
        QCOMPARE(value.userType(), int(QMetaType::ULongLong));
        QVERIFY(inside.livingButton(value));
        QCOMPARE(inside.livingButton(value), inside.m_rightBtns.value(id));
        QCOMPARE(imageOf(inside.livingButton(value)), QStringLiteral(":/CustomCtr/tree/Gray_refresh.png"));
    }
    QVERIFY(!tree.topLevelItem(0)->data(0, KelDeviceTree::ItemRightBtnRole).isValid());
}

void tst_KelDeviceTree_frame::viewIsSetUpForRowsWithButtons()
{
    const KelDeviceTree tree;

    QCOMPARE(tree.sizePolicy().controlType(), QSizePolicy::DefaultType);
    QCOMPARE(tree.frameStyle(), 0);
    QVERIFY(tree.isHeaderHidden());
    QCOMPARE(tree.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(tree.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(tree.columnCount(), 1);
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(tree.header()->stretchLastSection());
    QCOMPARE(tree.iconSize(), QSize(24, 24));
    QCOMPARE(tree.contextMenuPolicy(), Qt::CustomContextMenu);
    QVERIFY(qobject_cast<KelDeviceTreeDelegate *>(tree.itemDelegate()));
    QCOMPARE(tree.indentation(), 10);
}

void tst_KelDeviceTree_frame::configurationButtonIsHiddenAndOpensTheProducerMenu()
{
    KelDeviceTree tree;
    const KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);

    QVERIFY(inside.m_configBtn->isHidden());
    QCOMPARE(inside.m_configBtn->parent(), static_cast<QObject *>(&tree));
    QCOMPARE(inside.m_configBtn->menu(), static_cast<QMenu *>(inside.m_genTLMenu));
    QCOMPARE(inside.m_configBtn->cBackgroundImage(Custom::StatusNormal),
             QStringLiteral(":/CustomCtr/tree/conf.png"));
    QCOMPARE(inside.m_configBtn->cBackgroundImage(Custom::StatusHover),
             QStringLiteral(":/CustomCtr/tree/conf_sel.png"));
    QCOMPARE(inside.m_configBtn->cBackgroundImage(Custom::StatusPressed),
             QStringLiteral(":/CustomCtr/tree/conf_sel.png"));
}

void tst_KelDeviceTree_frame::freshTreeEnumeratesNothing()
{
    const KelDeviceTree tree;

    QTest::qWait(100);

    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(0));
    QCOMPARE(scriptedAccess().count(Operation::EnumInterfacesByGenTL), std::size_t(0));
}

void tst_KelDeviceTree_frame::signalsAndSlotsStandInTheirDeclaredOrder()
{
    const QByteArrayList expected = {
        "sigEndDrag()",
        "sigRightBtnClicked(long,bool)",
        "sigBeforeRefreshBtnClicked(int)",
        "sigNewNetWorkItem(QTreeWidgetItem*)",
        "sigDeleteNetWorkItem(QTreeWidgetItem*)",
        "sigUpdateNetWorkItem(QTreeWidgetItem*)",
        "sigNewDeviceItem(QTreeWidgetItem*)",
        "sigDeleteDeviceItem(QTreeWidgetItem*)",
        "sigUpdateDeviceItem(QTreeWidgetItem*)",
        "sigNewUSBControllerItem(QTreeWidgetItem*)",
        "sigDeleteUSBCtrollerItem(QTreeWidgetItem*)",
        "sigNewGenTLInterfaceItem(QTreeWidgetItem*)",
        "sigDeleteGenTLInterfaceItem(QTreeWidgetItem*)",
        "sigUpdateGenTLInterfaceItem(QTreeWidgetItem*)",
        "sigBeforeDeleteCti(QString)",
        "sigFinishEnumOnce(int)",
        "sigEventSink(QVariant,QVariant,int,int,int)",
        "onRightBtnClicked()",
        "onNewNetWork(QVariant)",
        "onNewGenTLInterface(QVariant)",
        "onUpdateGenTLInterface(QVariant)",
        "onDeleteGenTLInterface(QVariant)",
        "onDeleteNetWork(QVariant)",
        "onUpdateNetWorkInfo(QVariant)",
        "onNewDevice(QVariant)",
        "onDeleteDevice(QVariant)",
        "onUpdateDeviceInfo(QVariant)",
        "onNewUSBController(QVariant)",
        "onDeleteUSBController(QVariant)",
        "onEndThread(int,int)",
        "onEndThread(int)",
        "OnCtiFileChanged()",
        "onEventSink(QVariant,QVariant,int,int,int)",
    };
    const QMetaObject &meta = KelDeviceTree::staticMetaObject;

    QCOMPARE(meta.methodCount() - meta.methodOffset(), expected.size());
    for (int number = 0; number < expected.size(); ++number) {
        const QMetaMethod method = meta.method(meta.methodOffset() + number);
        QCOMPARE(method.methodSignature(), expected.at(number));
        QCOMPARE(method.methodType(), number < 17 ? QMetaMethod::Signal : QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
    }
}

void tst_KelDeviceTree_frame::parameterNamesAreKept()
{
    const QMetaObject &meta = KelDeviceTree::staticMetaObject;
    const auto names = [&meta](int number) {
        return meta.method(meta.methodOffset() + number).parameterNames();
    };

    QCOMPARE(names(1), QByteArrayList({"lCameraID", "bIsGenTLInterface"}));
    QCOMPARE(names(2), QByteArrayList({"nType"}));
    QCOMPARE(names(3), QByteArrayList({"pNetWorkItem"}));
    QCOMPARE(names(6), QByteArrayList({"pDevItem"}));
    QCOMPARE(names(9), QByteArrayList({"pUSBControlerItem"}));
    QCOMPARE(names(11), QByteArrayList({"pGenTLInterfaceItem"}));
    QCOMPARE(names(14), QByteArrayList({"strCtiPath"}));
    QCOMPARE(names(15), QByteArrayList({"nDeviceType"}));
    const QByteArrayList event = {"stNetCardInfo", "stDeviceInfo", "nKelAIntefaceState", "nErrorCode",
                                  "nDeviceType"};
    QCOMPARE(names(16), event);
    QCOMPARE(names(18), QByteArrayList({"dataVar"}));
    QCOMPARE(names(29), QByteArrayList({"nDeviceType", "nErrorCode"}));
    QCOMPARE(names(32), event);
}

void tst_KelDeviceTree_frame::recordsAreMetaTypesUnderTheirNames()
{
    const auto name = [](const QVariant &value) { return QByteArray(value.typeName()); };

    QCOMPARE(name(variantOf(KELA_INTERFACE_INFO{})), QByteArray("KELA_INTERFACE_INFO"));
    QCOMPARE(name(variantOf(KELA_STRUCT_DEVICE_INFO{})), QByteArray("KELA_STRUCT_DEVICE_INFO"));
    QCOMPARE(name(variantOf(KELA_NETWORK{})), QByteArray("KELA_NETWORK"));
    QCOMPARE(name(variantOf(KELA_GENTL_IF_INFO{})), QByteArray("KELA_GENTL_IF_INFO"));
    QCOMPARE(name(variantOf(KELA_USBCONTROLLER_INFO{})), QByteArray("KELA_USBCONTROLLER_INFO"));
}

void tst_KelDeviceTree_frame::roleNumbersAreFixed()
{
    QCOMPARE(int(KelDeviceTree::ItemTypeRole), 257);
    QCOMPARE(int(KelDeviceTree::ItemIdRole), 258);
    QCOMPARE(int(KelDeviceTree::ItemInfoRole), 259);
    QCOMPARE(int(KelDeviceTree::ItemRightBtnRole), 261);
    QCOMPARE(int(KelDeviceTree::ItemConnectedRole), 262);
    QCOMPARE(int(KelDeviceTree::StayTopItemRole), 263);
}

void tst_KelDeviceTree_frame::itemTypeNumbersAreFixed()
{
    const QList<int> types = {KelDeviceTree::Item1394Root,         KelDeviceTree::ItemCamLinkRoot,
                              KelDeviceTree::ItemGenTLRoot,        KelDeviceTree::ItemGigERoot,
                              KelDeviceTree::ItemUSBRoot,          KelDeviceTree::ItemNetWork,
                              KelDeviceTree::ItemGigEVirtualGroup, KelDeviceTree::ItemUSBVirtualGroup,
                              KelDeviceTree::ItemOtherGroup,       KelDeviceTree::ItemGigECamera,
                              KelDeviceTree::ItemUSBCamera,        KelDeviceTree::ItemCamLinkCamera,
                              KelDeviceTree::ItemGenTLDevice,      KelDeviceTree::ItemGenTLInterface,
                              KelDeviceTree::ItemUSBController,    KelDeviceTree::ItemAll};

    QCOMPARE(types, QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17}));
}

void tst_KelDeviceTree_frame::fixedItemIsFoundAndMissingTypeIsNot()
{
    KelDeviceTree tree;

    QCOMPARE(tree.findItem(KelDeviceTree::ItemGigERoot, -1), tree.topLevelItem(1));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemNetWork, -1), nullptr);
}

void tst_KelDeviceTree_frame::networkCardIdentifierIsNoCamera()
{
    KelDeviceTree tree;
    tree.onNewNetWork(variantOf(networkCard(80001, "AA")));

    QVERIFY(tree.findItem(KelDeviceTree::ItemNetWork, 80001));
    QCOMPARE(tree.findCameraItem(80001), nullptr);
}

void tst_KelDeviceTree_frame::itemAllIsSearchedForGigeCamerasOnly()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    QTreeWidgetItem *all = tree.topLevelItem(0);

    QTreeWidgetItem *usb = inside.newTreeItem(all, KelDeviceTree::ItemUSBCamera, -1);
    usb->setData(0, KelDeviceTree::ItemIdRole, 5);
    QCOMPARE(tree.findCameraItem(5), nullptr);

    QTreeWidgetItem *gige = inside.newTreeItem(all, KelDeviceTree::ItemGigECamera, -1);
    gige->setData(0, KelDeviceTree::ItemIdRole, 5);
    QCOMPARE(tree.findCameraItem(5), gige);
}

void tst_KelDeviceTree_frame::unknownTransportsGiveTheGigeGroupAsItemType_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<int>("itemType");
    QTest::newRow("none") << 0 << 3;
    QTest::newRow("GigE") << 1 << 11;
    QTest::newRow("IEEE 1394") << 2 << 3;
    QTest::newRow("two at once") << 3 << 3;
    QTest::newRow("USB") << 4 << 12;
    QTest::newRow("Camera Link") << 8 << 13;
    QTest::newRow("GenTL") << 16 << 14;
    QTest::newRow("beyond") << 17 << 3;
    QTest::newRow("GenTL by interface") << 32 << 3;
    QTest::newRow("negative") << -1 << 3;
}

void tst_KelDeviceTree_frame::unknownTransportsGiveTheGigeGroupAsItemType()
{
    QFETCH(int, transport);
    QFETCH(int, itemType);

    QCOMPARE(KelDeviceTree::deviceType2ItemType(transport), itemType);
}

void tst_KelDeviceTree_frame::cameraItemsAreTypes11To14()
{
    const KelDeviceTree tree;
    QTreeWidgetItem item;

    QVERIFY(!tree.isCameraItem(nullptr));
    QVERIFY(!tree.isCameraItem(&item));
    for (int type = 0; type <= 17; ++type) {
        item.setData(0, KelDeviceTree::ItemTypeRole, type);
        QCOMPARE(tree.isCameraItem(&item), type >= 11 && type <= 14);
    }
}

void tst_KelDeviceTree_frame::newItemAtIndex0StandsFirstAndIsMarked()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    QTreeWidgetItem *gige = tree.topLevelItem(1);
    inside.newTreeItem(gige, KelDeviceTree::ItemGigECamera, -1);

    QTreeWidgetItem *item = inside.newTreeItem(gige, KelDeviceTree::ItemGigECamera, 0);

    QCOMPARE(gige->child(0), item);
    QCOMPARE(item->data(0, KelDeviceTree::StayTopItemRole), QVariant(1));
}

void tst_KelDeviceTree_frame::newItemWithoutIndexIsAppendedUnmarked()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    QTreeWidgetItem *gige = tree.topLevelItem(1);
    inside.newTreeItem(gige, KelDeviceTree::ItemGigECamera, -1);

    QTreeWidgetItem *item = inside.newTreeItem(gige, KelDeviceTree::ItemNetWork, -1);

    QCOMPARE(gige->indexOfChild(item), 1);
    QCOMPARE(item->data(0, KelDeviceTree::StayTopItemRole), QVariant(0));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(5));
}

void tst_KelDeviceTree_frame::newItemOfAHiddenTypeIsHidden()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    tree.setVisibleItemTypes({3, 5});

    QVERIFY(inside.newTreeItem(tree.topLevelItem(1), KelDeviceTree::ItemGigECamera, -1)->isHidden());
    QVERIFY(!inside.newTreeItem(tree.topLevelItem(1), KelDeviceTree::ItemNetWork, -1)->isHidden());
}

void tst_KelDeviceTree_frame::allIsExpandedWhenItemsAreNotExpandable()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);
    QTreeWidgetItem *gige = tree.topLevelItem(1);
    gige->setExpanded(false);
    tree.setItemsExpandable(false);

    inside.newTreeItem(gige, KelDeviceTree::ItemGigECamera, -1);

    QVERIFY(gige->isExpanded());
}

void tst_KelDeviceTree_frame::missingAckModeMeans1()
{
    QCOMPARE(ackModeOfNewTree(), int64_t(1));

    writeConfig("[Other]\nEunmAckMode=0\n");
    QCOMPARE(ackModeOfNewTree(), int64_t(1));
}

void tst_KelDeviceTree_frame::ackModeOfTheConfigurationReachesTheDeviceAccess()
{
    {
        QSettings settings(KelInterface::programDataPath() + QStringLiteral("/LocalConfig.ini"),
                           QSettings::IniFormat);
        settings.setValue(QStringLiteral("General/EunmAckMode"), 0);
    }

    QCOMPARE(ackModeOfNewTree(), int64_t(0));
}

void tst_KelDeviceTree_frame::ackModeWrittenByHandIsRead()
{
    writeConfig("[General]\nEunmAckMode=0\n");

    QCOMPARE(ackModeOfNewTree(), int64_t(0));
}

void tst_KelDeviceTree_frame::styleSelectorIsTheTreesOwn()
{
    const KelDeviceTree tree;

    QCOMPARE(tree.cStyleSelector(), QStringLiteral("DeviceTree"));
}

void tst_KelDeviceTree_frame::otherStyleKeepsTheRefreshImages()
{
    KelDeviceTree tree;
    const KelDeviceTreePrivate &inside = *KelDeviceTreePrivate::of(&tree);

    tree.cSetStyleSelector(QStringLiteral("devicetree"));

    QCOMPARE(tree.cStyleSelector(), QStringLiteral("devicetree"));
    for (const long id : {-1, -2, -3, -4}) {
        QCOMPARE(imageOf(inside.m_rightBtns.value(id)), QStringLiteral(":/CustomCtr/tree/Gray_refresh.png"));
    }
}

void tst_KelDeviceTree_frame::constructionTouchesNoButtonMinus3()
{
    KelDeviceTree tree;

    QCOMPARE(KelDeviceTreePrivate::of(&tree)->m_rightBtns.keys(), QList<long>({-4, -2, -1}));
}

void tst_KelDeviceTree_frame::styleChangeMakesButtonMinus3()
{
    KelDeviceTree tree;

    tree.cSetStyleSelector(QStringLiteral("DeviceTree"));

    QCOMPARE(KelDeviceTreePrivate::of(&tree)->m_rightBtns.keys(), QList<long>({-4, -3, -2, -1}));
}

void tst_KelDeviceTree_frame::twoTreesShareTheIcons()
{
    const KelDeviceTree first;
    const QIcon icon = KelDeviceTreePrivate::iconMap().value(KELA_DEV_STATE_GIGE_FREE);

    const KelDeviceTree second;

    QVERIFY(!icon.isNull());
    QCOMPARE(KelDeviceTreePrivate::iconMap().value(KELA_DEV_STATE_GIGE_FREE).cacheKey(), icon.cacheKey());
}

void tst_KelDeviceTree_frame::destructionLeavesNoDeviceAccessBehind()
{
    {
        KelDeviceTree tree;
        tree.updateDeviceTypes(1 | 4 | 8 | 16, true, true, false);
        QVERIFY(scriptedAccess().objectCount() > 0);
    }

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

QTEST_MAIN(tst_KelDeviceTree_frame)
#include "tst_keldevicetree_frame.moc"
