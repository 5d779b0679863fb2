// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

#include <functional>
#include <memory>

using namespace TreeRecords;

namespace
{

// A host that connects writes the state into the record first.
void setRecordState(QTreeWidgetItem *item, KELA_DEV_STATE state)
{
    auto record = recordOf<KELA_STRUCT_DEVICE_INFO>(item);
    record.deviceState = static_cast<int32_t>(state);
    item->setData(0, KelDeviceTree::ItemInfoRole, variantOf(record));
}

KELA_STRUCT_DEVICE_INFO withState(KELA_STRUCT_DEVICE_INFO info, KELA_DEV_STATE state)
{
    info.deviceState = static_cast<int32_t>(state);
    return info;
}

KELA_STRUCT_DEVICE_INFO withGigeName(KELA_STRUCT_DEVICE_INFO info, const std::string &name)
{
    setField(info.deviceInfo.special.gige.userDefinedName, name);
    return info;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(KelDeviceTree *, QTreeWidgetItem *, CustomPushButton *)>)

class tst_KelDeviceTree_cameras : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void newGigeCameraHasLabelRolesButtonAndIcon();
    void onlyNewGigeCamerasHaveAConnectedRole();
    void gigeLabelShowsModelWithoutAName();
    void gigeNameIsCutAtCreationAndWholeAfterTheFirstUpdate();
    void usbAndGenTLCamerasAreMadeWithTheirWholeName();
    void cameraLinkDeviceGetsNoItemWithoutAGroup();
    void cameraLinkDeviceUnderTheHostsGroupKeepsItsLabel();
    void unshownTransportGetsNoItem();
    void creationIsLogged();
    void usbUpdateIsLoggedAndOthersAreNot();
    void newOfAKnownCameraUpdatesIt();
    void updateOfAnUnknownCameraCreatesIt();
    void updateOfAnotherTransportOnlySignals();
    void updateStoresTheNewRecord();
    void unchangedUpdateChangesNothing();
    void unchangedUpdateStillSignals();
    void whatTheHostChangedIsWrittenAgain_data();
    void whatTheHostChangedIsWrittenAgain();
    void rowThatWasMovedIsStillUpdated();
    void newEncodingChangesTheLabelWithTheNextUpdate();
    void firstOfTwoRowsWithOneIdentifierIsUpdated();

    void connectedCameraKeepsStateAndIconInUpdates_data();
    void connectedCameraKeepsStateAndIconInUpdates();
    void freedCameraFollowsUpdatesAgain();
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

    void stateDecidesConnectedRoleAndButton_data();
    void stateDecidesConnectedRoleAndButton();
    void everyStateOfTheTableHasItsIcon();
    void stateWithoutEntryHasAnEmptyIcon();
    void groupsGetNoIcon();
    void grabbingGenTLStateSetsItsIconOnAnyItem();
    void grabbingChangesTheIconOnly();
    void unreachableGigeCameraKeepsAUsableButton();
    void iconOfNullIsIgnored();
    void cameraThatChangesTheContainerKeepsItsPlace();

    void hiddenGroupDropsNewCameras();
    void hiddenGroupDropsUpdatesOfUnknownCamerasOnly();
    void bootLoaderIsNeverShown();
    void switchedOffEnumerationIgnoresAllDeviceEvents();
    void serialIsReadFromCameraItemsOnly();
    void recordOfAnotherKindMakesNoItem();
    void cameraRemovedByTheHostInTheDeleteSignalIsLeftAlone();

private:
    QTreeWidgetItem *gige() { return m_tree->findItem(KelDeviceTree::ItemGigERoot, -1); }
    KelDeviceTreePrivate &inside() { return *KelDeviceTreePrivate::of(m_tree.get()); }
    QTreeWidgetItem *add(const KELA_STRUCT_DEVICE_INFO &info)
    {
        m_tree->onNewDevice(variantOf(info));
        return m_tree->findCameraItem(info.deviceId);
    }
    CustomPushButton *buttonOf(QTreeWidgetItem *item)
    {
        return inside().livingButton(item->data(0, KelDeviceTree::ItemRightBtnRole));
    }
    static qint64 iconKey(KELA_DEV_STATE state)
    {
        return KelDeviceTreePrivate::iconMap().value(state).cacheKey();
    }
    QTreeWidgetItem *addCameraLinkGroup()
    {
        auto *group = new QTreeWidgetItem(m_tree.get());
        group->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::ItemCamLinkRoot);
        group->setData(0, KelDeviceTree::ItemIdRole, -1);
        return group;
    }

    std::unique_ptr<KelDeviceTree> m_tree;
};

void tst_KelDeviceTree_cameras::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
}

void tst_KelDeviceTree_cameras::cleanup()
{
    m_tree.reset();
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
}

void tst_KelDeviceTree_cameras::newGigeCameraHasLabelRolesButtonAndIcon()
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

void tst_KelDeviceTree_cameras::onlyNewGigeCamerasHaveAConnectedRole()
{
    addCameraLinkGroup();

    QVERIFY(!add(usbDevice(30001, "U1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QVERIFY(!add(cameraLinkDevice(40001, "C1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QVERIFY(!add(TreeRecords::genTLDevice(50001, "G1"))->data(0, KelDeviceTree::ItemConnectedRole).isValid());
    QCOMPARE(
        add(withState(gigeDevice(1, "S1"), KELA_DEV_STATE_UNKNOWN))->data(0, KelDeviceTree::ItemConnectedRole),
        QVariant(false));
}

void tst_KelDeviceTree_cameras::gigeLabelShowsModelWithoutAName()
{
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    setField(info.deviceInfo.modelName, "Model X");

    QCOMPARE(add(withGigeName(info, ""))->text(0), QStringLiteral("Model X (S1)"));

    m_tree->onUpdateDeviceInfo(variantOf(withGigeName(info, "Name")));
    QCOMPARE(m_tree->findCameraItem(1)->text(0), QStringLiteral("Name (S1)"));
}

void tst_KelDeviceTree_cameras::gigeNameIsCutAtCreationAndWholeAfterTheFirstUpdate()
{
    const KELA_STRUCT_DEVICE_INFO info = withGigeName(gigeDevice(1, "S1", "AA"), "0123456789abcdefghij");

    QTreeWidgetItem *item = add(info);
    QCOMPARE(item->text(0), QStringLiteral("0123456789abcdef (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("0123456789abcdef (S1)"));

    m_tree->onUpdateDeviceInfo(variantOf(info));
    QCOMPARE(item->text(0), QStringLiteral("0123456789abcdefghij (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("0123456789abcdefghij (S1)"));
}

void tst_KelDeviceTree_cameras::usbAndGenTLCamerasAreMadeWithTheirWholeName()
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

void tst_KelDeviceTree_cameras::cameraLinkDeviceGetsNoItemWithoutAGroup()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    QCOMPARE(add(cameraLinkDevice(40001, "C1")), nullptr);
    QCOMPARE(inside().onNewCamLinkCamera(cameraLinkDevice(40001, "C1"), nullptr), nullptr);
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_cameras::cameraLinkDeviceUnderTheHostsGroupKeepsItsLabel()
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

void tst_KelDeviceTree_cameras::unshownTransportGetsNoItem()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    for (const unsigned int transport : {0U, 2U, 32U, 128U, 256U}) {
        KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
        info.deviceInfo.transport = transport;
        QCOMPARE(add(info), nullptr);
    }
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_cameras::creationIsLogged()
{
    const InfoLog log;

    add(withGigeName(gigeDevice(7, "S1", "AA"), "100%d"));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("CameraName:100%d (S1)   To   CameraID:7")}));
    QCOMPARE(log.lines().at(0).category, QStringLiteral("default"));
    QCOMPARE(log.lines().at(0).file, QStringLiteral("src/DeviceEnumMng/KelDeviceTree"));
}

void tst_KelDeviceTree_cameras::usbUpdateIsLoggedAndOthersAreNot()
{
    addCameraLinkGroup();
    KELA_STRUCT_DEVICE_INFO usb = usbDevice(30001, "U1");
    setField(usb.deviceInfo.special.usb.userDefinedName, "Top");
    for (const auto &info : {usb, gigeDevice(1, "S1", "AA"), cameraLinkDevice(40001, "C1"),
                             TreeRecords::genTLDevice(50001, "G1")}) {
        add(info);
    }
    const InfoLog log;

    for (const auto &info : {usb, gigeDevice(1, "S1", "AA"), cameraLinkDevice(40001, "C1"),
                             TreeRecords::genTLDevice(50001, "G1")}) {
        m_tree->onUpdateDeviceInfo(variantOf(info));
    }

    QCOMPARE(log.texts(), QStringList({QStringLiteral("CameraName:Top (U1)   To   CameraID:30001")}));
}

void tst_KelDeviceTree_cameras::newOfAKnownCameraUpdatesIt()
{
    add(gigeDevice(1, "S1", "AA"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onNewDevice(variantOf(withGigeName(gigeDevice(1, "S1", "AA"), "New")));

    QCOMPARE(made.count(), 0);
    QCOMPARE(updated.count(), 1);
    QCOMPARE(gige()->child(0)->childCount(), 1);
    QCOMPARE(m_tree->findCameraItem(1)->text(0), QStringLiteral("New (S1)"));
}

void tst_KelDeviceTree_cameras::updateOfAnUnknownCameraCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "AA")));

    QVERIFY(m_tree->findCameraItem(1));
    QCOMPARE(made.count(), 1);
    QCOMPARE(updated.count(), 0);
}

void tst_KelDeviceTree_cameras::updateOfAnotherTransportOnlySignals()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);
    KELA_STRUCT_DEVICE_INFO other = withGigeName(gigeDevice(1, "S1", "AA"), "New");
    other.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE_VARIANT;
    const QString label = item->text(0);

    m_tree->onUpdateDeviceInfo(variantOf(other));

    QCOMPARE(updated.count(), 1);
    QCOMPARE(updated.at(0).at(0).value<QTreeWidgetItem *>(), item);
    QCOMPARE(item->text(0), label);
    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceInfo.transport, 1U);
}

void tst_KelDeviceTree_cameras::updateStoresTheNewRecord()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    KELA_STRUCT_DEVICE_INFO info = withState(gigeDevice(1, "S1", "AA"), KELA_DEV_STATE_GIGE_IN_USE);
    info.deviceInfo.special.gige.streamHostPort = 4711;

    m_tree->onUpdateDeviceInfo(variantOf(info));

    const auto stored = recordOf<KELA_STRUCT_DEVICE_INFO>(item);
    QCOMPARE(std::memcmp(&stored, &info, sizeof info), 0);
    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_IN_USE));
    QVERIFY(!buttonOf(item)->isEnabled());
}

void tst_KelDeviceTree_cameras::unchangedUpdateChangesNothing()
{
    addCameraLinkGroup();
    const QVector<KELA_STRUCT_DEVICE_INFO> infos = {gigeDevice(1, "S1", "AA"), usbDevice(30001, "U1"),
                                                    cameraLinkDevice(40001, "C1"),
                                                    TreeRecords::genTLDevice(50001, "G1")};
    for (const auto &info : infos) {
        add(info);
    }
    const ModelChanges changes(*m_tree);

    for (const auto &info : infos) {
        m_tree->onUpdateDeviceInfo(variantOf(info));
    }

    QCOMPARE(changes.count, 0);
}

void tst_KelDeviceTree_cameras::unchangedUpdateStillSignals()
{
    add(gigeDevice(1, "S1", "AA"));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(updated.count(), 1);
}

void tst_KelDeviceTree_cameras::whatTheHostChangedIsWrittenAgain_data()
{
    using Change = std::function<void(KelDeviceTree *, QTreeWidgetItem *, CustomPushButton *)>;
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("nothing", [](auto *, auto *, auto *) {});
    row("label", [](auto *, auto *item, auto *) { item->setText(0, QStringLiteral("mine")); });
    row("tool tip", [](auto *, auto *item, auto *) { item->setToolTip(0, QStringLiteral("mine")); });
    row("icon", [](auto *, auto *item, auto *) { item->setIcon(0, QIcon()); });
    row("connected role",
        [](auto *, auto *item, auto *) { item->setData(0, KelDeviceTree::ItemConnectedRole, true); });
    row("record",
        [](auto *, auto *item, auto *) { item->setData(0, KelDeviceTree::ItemInfoRole, QVariant()); });
    row("shown state", [](KelDeviceTree *tree, auto *item, auto *) {
        tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_CONNECTED);
    });
    row("button disabled", [](auto *, auto *, CustomPushButton *button) { button->setEnabled(false); });
    // An interface whose identifier equals a camera's shares its button.
    row("shared button", [](KelDeviceTree *tree, auto *, auto *) {
        tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(1, "IF")));
        tree->setCameraItemIcon(tree->findItem(KelDeviceTree::ItemGenTLInterface, 1),
                                KELA_DEV_STATE_GENTL_INTERFACE_OPEN);
    });
}

void tst_KelDeviceTree_cameras::whatTheHostChangedIsWrittenAgain()
{
    using Change = std::function<void(KelDeviceTree *, QTreeWidgetItem *, CustomPushButton *)>;
    QFETCH(Change, change);
    const KELA_STRUCT_DEVICE_INFO info = withGigeName(gigeDevice(1, "S1", "AA"), "Name");
    QTreeWidgetItem *item = add(info);
    m_tree->onUpdateDeviceInfo(variantOf(info));
    m_tree->onUpdateDeviceInfo(variantOf(info));
    change(m_tree.get(), item, buttonOf(item));

    m_tree->onUpdateDeviceInfo(variantOf(info));

    QCOMPARE(item->text(0), QStringLiteral("Name (S1)"));
    QCOMPARE(item->toolTip(0), QStringLiteral("Name (S1)"));
    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_FREE));
    QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole), QVariant(false));
    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceId, 1);
    QVERIFY(buttonOf(item)->isEnabled());
    QCOMPARE(buttonOf(item)->cBackgroundImage(Custom::StatusNormal),
             QStringLiteral(":/KelToolBarBtn/item_connect.png"));
}

void tst_KelDeviceTree_cameras::rowThatWasMovedIsStillUpdated()
{
    const KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    QTreeWidgetItem *item = add(info);
    m_tree->onUpdateDeviceInfo(variantOf(info));
    QTreeWidgetItem *card = item->parent();
    gige()->addChild(card->takeChild(0));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(info));

    QCOMPARE(updated.count(), 1);
    QCOMPARE(updated.at(0).at(0).value<QTreeWidgetItem *>(), item);
}

void tst_KelDeviceTree_cameras::newEncodingChangesTheLabelWithTheNextUpdate()
{
    const KELA_STRUCT_DEVICE_INFO info = withGigeName(gigeDevice(1, "S1", "AA"), "\xD6\xD0");
    QTreeWidgetItem *item = add(info);
    m_tree->onUpdateDeviceInfo(variantOf(info));

    KelInterface::SetEncodingType(KelInterface::EncodingGb18030);
    m_tree->onUpdateDeviceInfo(variantOf(info));

    QCOMPARE(item->text(0), QString(QChar(0x4E2D)) + QStringLiteral(" (S1)"));
}

void tst_KelDeviceTree_cameras::firstOfTwoRowsWithOneIdentifierIsUpdated()
{
    const KELA_STRUCT_DEVICE_INFO info = gigeDevice(1, "S1", "AA");
    QTreeWidgetItem *item = add(info);
    m_tree->onUpdateDeviceInfo(variantOf(info));
    QTreeWidgetItem *above = inside().newTreeItem(item->parent(), KelDeviceTree::ItemGigECamera, 0);
    above->setData(0, KelDeviceTree::ItemIdRole, 1);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(info));

    QCOMPARE(updated.at(0).at(0).value<QTreeWidgetItem *>(), above);
}

void tst_KelDeviceTree_cameras::connectedCameraKeepsStateAndIconInUpdates_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {4, 5, 7, 10, 11, 15, 16, 19, 22, 23}) {
        QTest::addRow("state %d", state) << state;
    }
}

void tst_KelDeviceTree_cameras::connectedCameraKeepsStateAndIconInUpdates()
{
    QFETCH(int, state);
    const auto connected = static_cast<KELA_DEV_STATE>(state);
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    setRecordState(item, connected);
    m_tree->setCameraItemIcon(item, connected);

    m_tree->onUpdateDeviceInfo(variantOf(withGigeName(gigeDevice(1, "S1", "AA"), "New")));

    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceState, state);
    QCOMPARE(item->icon(0).cacheKey(), iconKey(connected));
    QCOMPARE(item->text(0), QStringLiteral("New (S1)"));
}

void tst_KelDeviceTree_cameras::freedCameraFollowsUpdatesAgain()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    setRecordState(item, KELA_DEV_STATE_GIGE_CONNECTED);
    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_CONNECTED);
    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "AA")));

    setRecordState(item, KELA_DEV_STATE_GIGE_FREE);
    m_tree->onUpdateDeviceInfo(variantOf(withState(gigeDevice(1, "S1", "AA"), KELA_DEV_STATE_GIGE_IN_USE)));

    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceState, 2);
    QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole), QVariant(false));
    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_IN_USE));
}

void tst_KelDeviceTree_cameras::deletionOfAConnectedCameraLeavesItUntouched()
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

void tst_KelDeviceTree_cameras::iconAloneDoesNotKeepACamera()
{
    m_tree->setCameraItemIcon(add(gigeDevice(1, "S1", "AA")), KELA_DEV_STATE_GIGE_CONNECTED);

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(1), nullptr);
}

void tst_KelDeviceTree_cameras::deletionRemovesRowAndButton()
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

void tst_KelDeviceTree_cameras::deletionOfAnUnknownCameraIsOnlyLogged()
{
    const InfoLog log;
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteDevice(variantOf(gigeDevice(9, "S1", "AA")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("Enter onDeleteDevice,   CameraID:9")}));
    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras::deletionIsLoggedByTransport_data()
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
void tst_KelDeviceTree_cameras::deletionIsLoggedByTransport()
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

void tst_KelDeviceTree_cameras::deletingTheCurrentCameraMakesGigeCurrentBeforeTheSignal()
{
    m_tree->setCurrentItem(add(gigeDevice(1, "S1", "AA")));
    QTreeWidgetItem *current = nullptr;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [this, &current] { current = m_tree->currentItem(); });

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(current, gige());
}

void tst_KelDeviceTree_cameras::deleteSignalComesWhileTheItemStands()
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

void tst_KelDeviceTree_cameras::deletingNullDoesNothing()
{
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->deleteCameraItem(nullptr);

    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras::itemOfAnotherTreeIsNotDeleted()
{
    KelDeviceTree other;
    other.onNewDevice(variantOf(gigeDevice(1, "S1")));
    QSignalSpy deleted(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->deleteCameraItem(other.findCameraItem(1));

    QVERIFY(other.findCameraItem(1));
    QCOMPARE(deleted.count(), 0);
}

void tst_KelDeviceTree_cameras::buttonsOfDeletedCamerasGoThroughTheEventLoop()
{
    const QPointer<CustomPushButton> button = buttonOf(add(gigeDevice(1, "S1", "AA")));

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QVERIFY(button);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!button);
}

void tst_KelDeviceTree_cameras::stateDecidesConnectedRoleAndButton_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("connected"); // -1 unchanged
    QTest::addColumn<int>("button");    // -1 unchanged
    const auto rows = [](std::initializer_list<int> states, int connected, int button) {
        for (const int state : states) {
            QTest::addRow("state %d", state) << state << connected << button;
        }
    };
    rows({1, 3, 6}, 0, 0);
    rows({2}, 0, 2);
    rows({4, 7}, 1, 1);
    rows({5, 11, 16, 23}, -1, -1);
    rows({8, 13, 18, 21, 25}, -1, 0);
    rows({9, 12, 14, 17, 20, 24, 27}, -1, 2);
    rows({10, 15, 19, 22, 26}, -1, 1);
    rows({0, 28, 29, 30, 31, 1000}, -1, -1);
}

void tst_KelDeviceTree_cameras::stateDecidesConnectedRoleAndButton()
{
    QFETCH(int, state);
    QFETCH(int, connected);
    QFETCH(int, button);
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    const QString connect = QStringLiteral(":/KelToolBarBtn/item_connect.png");
    const QString disconnect = QStringLiteral(":/KelToolBarBtn/item_disconnet.png");

    for (const bool before : {false, true}) {
        // Every combination of what was there before tells a change from a value that was left alone.
        for (const auto buttonBefore : {KelDeviceTree::BtnDisconnect, KelDeviceTree::BtnDisable}) {
            item->setData(0, KelDeviceTree::ItemConnectedRole, before);
            inside().updateItemRightBtn(1, buttonBefore);
            const QString imageBefore = buttonOf(item)->cBackgroundImage(Custom::StatusNormal);

            m_tree->setCameraItemIcon(item, static_cast<KELA_DEV_STATE>(state));

            QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole).toBool(),
                     connected < 0 ? before : connected == 1);
            QCOMPARE(buttonOf(item)->isEnabled(), button < 0 ? buttonBefore != KelDeviceTree::BtnDisable
                                                             : button != KelDeviceTree::BtnDisable);
            QCOMPARE(buttonOf(item)->cBackgroundImage(Custom::StatusNormal),
                     button < 0 ? imageBefore
                                : (button == KelDeviceTree::BtnDisconnect ? disconnect : connect));
        }
    }
}

void tst_KelDeviceTree_cameras::everyStateOfTheTableHasItsIcon()
{
    const QStringList names = {QStringLiteral("CameraFree"),         QStringLiteral("CameraInUse"),
                               QStringLiteral("CameraNoReachable"),  QStringLiteral("CameraConnected"),
                               QStringLiteral("CameraGrabbing"),     QStringLiteral("MulticastDisConnect"),
                               QStringLiteral("MulticastConnected"), QStringLiteral("USBDisConnect"),
                               QStringLiteral("USBInUse"),           QStringLiteral("USBConnected"),
                               QStringLiteral("USBGrabbing"),        QStringLiteral("USBNoReachable"),
                               QStringLiteral("USB2DisConnect"),     QStringLiteral("USB2InUse"),
                               QStringLiteral("USB2Connected"),      QStringLiteral("USB2Grabbing"),
                               QStringLiteral("USB2NoReachable"),    QStringLiteral("CameraLinkFree"),
                               QStringLiteral("CameraLinkConnect"),  QStringLiteral("CameraLinkNoReach"),
                               QStringLiteral("CameraFree"),         QStringLiteral("CameraConnected"),
                               QStringLiteral("CameraGrabbing"),     QStringLiteral("CameraInUse"),
                               QStringLiteral("IntrefaceFree"),      QStringLiteral("IntrefaceOpen"),
                               QStringLiteral("IntrefaceInUse")};
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));

    QCOMPARE(KelDeviceTreePrivate::iconMap().size(), 27);
    for (int state = 1; state <= 27; ++state) {
        m_tree->setCameraItemIcon(item, static_cast<KELA_DEV_STATE>(state));
        const QPixmap drawn(QStringLiteral(":/Kel/tree/%1.png").arg(names.at(state - 1)));
        QVERIFY(!drawn.isNull());
        QCOMPARE(item->icon(0).pixmap(drawn.size()).toImage(), drawn.toImage());
        QCOMPARE(item->icon(0).cacheKey(), iconKey(static_cast<KELA_DEV_STATE>(state)));
    }
}

void tst_KelDeviceTree_cameras::stateWithoutEntryHasAnEmptyIcon()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));

    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_NETWORK_FREE);

    QVERIFY(item->icon(0).isNull());
}

void tst_KelDeviceTree_cameras::groupsGetNoIcon()
{
    m_tree->setCameraItemIcon(gige()->child(0), KELA_DEV_STATE_GIGE_FREE);
    m_tree->setCameraItemIcon(gige(), KELA_DEV_STATE_GIGE_FREE);

    QVERIFY(gige()->child(0)->icon(0).isNull());
    QVERIFY(gige()->icon(0).isNull());
}

void tst_KelDeviceTree_cameras::grabbingGenTLStateSetsItsIconOnAnyItem()
{
    m_tree->setCameraItemIcon(gige(), KELA_DEV_STATE_GENTL_GRABBING);

    QCOMPARE(gige()->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GENTL_GRABBING));
}

void tst_KelDeviceTree_cameras::grabbingChangesTheIconOnly()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_CONNECTED);
    const ModelChanges changes(*m_tree);

    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_GRABBING);

    QCOMPARE(item->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GIGE_GRABBING));
    QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole), QVariant(true));
    QCOMPARE(recordOf<KELA_STRUCT_DEVICE_INFO>(item).deviceState, 1);
    QCOMPARE(changes.count, 1);
}

void tst_KelDeviceTree_cameras::unreachableGigeCameraKeepsAUsableButton()
{
    QTreeWidgetItem *unreachable = add(withState(gigeDevice(1, "S1", "AA"), KELA_DEV_STATE_GIGE_UNREACHABLE));
    QTreeWidgetItem *unusable = add(withState(usbDevice(30001, "U1"), KELA_DEV_STATE_USB3_UNUSABLE));

    QVERIFY(buttonOf(unreachable)->isEnabled());
    QCOMPARE(unreachable->data(0, KelDeviceTree::ItemConnectedRole), QVariant(false));
    QVERIFY(!buttonOf(unusable)->isEnabled());
}

void tst_KelDeviceTree_cameras::iconOfNullIsIgnored()
{
    const ModelChanges changes(*m_tree);

    m_tree->setCameraItemIcon(nullptr, KELA_DEV_STATE_GIGE_FREE);

    QCOMPARE(changes.count, 0);
}

// A camera stays where it is when the card that sees it changes.
void tst_KelDeviceTree_cameras::cameraThatChangesTheContainerKeepsItsPlace()
{
    m_tree->onNewNetWork(variantOf(networkCard(80002, "BB")));
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "BB")));

    QCOMPARE(item->parent(), gige()->child(0));
}

void tst_KelDeviceTree_cameras::hiddenGroupDropsNewCameras()
{
    m_tree->setVisibleItemTypes({3, 5});

    QCOMPARE(add(usbDevice(30001, "U1")), nullptr);
    QTreeWidgetItem *camera = add(gigeDevice(1, "S1", "AA"));
    QVERIFY(camera);
    QVERIFY(camera->isHidden());
}

void tst_KelDeviceTree_cameras::hiddenGroupDropsUpdatesOfUnknownCamerasOnly()
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

void tst_KelDeviceTree_cameras::bootLoaderIsNeverShown()
{
    KELA_STRUCT_DEVICE_INFO info = usbDevice(30001, "U1");
    std::memset(info.deviceInfo.special.usb.portLocator, 0, sizeof info.deviceInfo.special.usb.portLocator);

    QCOMPARE(add(info), nullptr);
}

void tst_KelDeviceTree_cameras::switchedOffEnumerationIgnoresAllDeviceEvents()
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

void tst_KelDeviceTree_cameras::serialIsReadFromCameraItemsOnly()
{
    QTreeWidgetItem *camera = add(gigeDevice(1, "S1", "AA"));

    QCOMPARE(m_tree->getCameraSerial(camera), QStringLiteral("S1"));
    QCOMPARE(m_tree->getCameraSerial(gige()->child(0)), QString());
    QCOMPARE(m_tree->getCameraSerial(nullptr), QString());
}

void tst_KelDeviceTree_cameras::recordOfAnotherKindMakesNoItem()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    m_tree->onNewDevice(QVariant(5));
    m_tree->onUpdateDeviceInfo(QVariant());
    m_tree->onDeleteDevice(variantOf(networkCard(1, "AA")));

    QCOMPARE(made.count(), 0);
    QCOMPARE(gige()->child(0)->childCount(), 0);
}

void tst_KelDeviceTree_cameras::cameraRemovedByTheHostInTheDeleteSignalIsLeftAlone()
{
    add(gigeDevice(1, "S1", "AA"));
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [](QTreeWidgetItem *item) { delete item; });

    m_tree->onDeleteDevice(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(m_tree->findCameraItem(1), nullptr);
    QVERIFY(!inside().m_rightBtns.contains(1));
}

QTEST_MAIN(tst_KelDeviceTree_cameras)
#include "tst_keldevicetree_cameras.moc"
