// SPDX-License-Identifier: Apache-2.0
#include "CameraTest.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>

#include <ScriptedRecords.h>

#include <QtTest>

#include <cstring>
#include <functional>

using namespace TreeRecords;

Q_DECLARE_METATYPE(std::function<void(KelDeviceTree *, QTreeWidgetItem *, CustomPushButton *)>)

/// What an update writes into a row, and what it leaves.
class tst_KelDeviceTree_cameras_updates : public CameraTest
{
    Q_OBJECT

private Q_SLOTS:
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
    void receiverOfAChangeMayRemoveItsRow();
    void newEncodingChangesTheLabelWithTheNextUpdate();
    void firstOfTwoRowsWithOneIdentifierIsUpdated();
    void cameraThatChangesTheContainerKeepsItsPlace();

    void connectedCameraKeepsStateAndIconInUpdates_data();
    void connectedCameraKeepsStateAndIconInUpdates();
    void freedCameraFollowsUpdatesAgain();

private:
    void cleanup() override;
};

void tst_KelDeviceTree_cameras_updates::cleanup()
{
    CameraTest::cleanup();
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
}

void tst_KelDeviceTree_cameras_updates::usbUpdateIsLoggedAndOthersAreNot()
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

void tst_KelDeviceTree_cameras_updates::newOfAKnownCameraUpdatesIt()
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

void tst_KelDeviceTree_cameras_updates::updateOfAnUnknownCameraCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "AA")));

    QVERIFY(m_tree->findCameraItem(1));
    QCOMPARE(made.count(), 1);
    QCOMPARE(updated.count(), 0);
}

void tst_KelDeviceTree_cameras_updates::updateOfAnotherTransportOnlySignals()
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

void tst_KelDeviceTree_cameras_updates::updateStoresTheNewRecord()
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

void tst_KelDeviceTree_cameras_updates::unchangedUpdateChangesNothing()
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

void tst_KelDeviceTree_cameras_updates::unchangedUpdateStillSignals()
{
    add(gigeDevice(1, "S1", "AA"));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "AA")));

    QCOMPARE(updated.count(), 1);
}

void tst_KelDeviceTree_cameras_updates::whatTheHostChangedIsWrittenAgain_data()
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

void tst_KelDeviceTree_cameras_updates::whatTheHostChangedIsWrittenAgain()
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

void tst_KelDeviceTree_cameras_updates::rowThatWasMovedIsStillUpdated()
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

void tst_KelDeviceTree_cameras_updates::receiverOfAChangeMayRemoveItsRow()
{
    const KELA_STRUCT_DEVICE_INFO other = gigeDevice(2, "S2", "AA");
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));
    QTreeWidgetItem *neighbour = add(other);
    bool isRemoved = false;
    connect(m_tree.get(), &QTreeWidget::itemChanged, this, [&](const QTreeWidgetItem *changed) {
        if (changed == item && !isRemoved) {
            isRemoved = true;
            m_tree->deleteCameraItem(item);
            // Leaves a camera that is known to be up to date.
            m_tree->onUpdateDeviceInfo(variantOf(other));
            m_tree->onUpdateDeviceInfo(variantOf(other));
        }
    });

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "new serial", "AA")));

    QVERIFY(isRemoved);
    QVERIFY(!m_tree->findCameraItem(1));
    QCOMPARE(m_tree->findCameraItem(2), neighbour);
}

void tst_KelDeviceTree_cameras_updates::newEncodingChangesTheLabelWithTheNextUpdate()
{
    const KELA_STRUCT_DEVICE_INFO info = withGigeName(gigeDevice(1, "S1", "AA"), "\xD6\xD0");
    QTreeWidgetItem *item = add(info);
    m_tree->onUpdateDeviceInfo(variantOf(info));

    KelInterface::SetEncodingType(KelInterface::EncodingGb18030);
    m_tree->onUpdateDeviceInfo(variantOf(info));

    QCOMPARE(item->text(0), QString(QChar(0x4E2D)) + QStringLiteral(" (S1)"));
}

void tst_KelDeviceTree_cameras_updates::firstOfTwoRowsWithOneIdentifierIsUpdated()
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

// A camera stays where it is when the card that sees it changes.
void tst_KelDeviceTree_cameras_updates::cameraThatChangesTheContainerKeepsItsPlace()
{
    m_tree->onNewNetWork(variantOf(networkCard(80002, "BB")));
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));

    m_tree->onUpdateDeviceInfo(variantOf(gigeDevice(1, "S1", "BB")));

    QCOMPARE(item->parent(), gige()->child(0));
}

void tst_KelDeviceTree_cameras_updates::connectedCameraKeepsStateAndIconInUpdates_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {4, 5, 7, 10, 11, 15, 16, 19, 22, 23}) {
        QTest::addRow("state %d", state) << state;
    }
}

void tst_KelDeviceTree_cameras_updates::connectedCameraKeepsStateAndIconInUpdates()
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

void tst_KelDeviceTree_cameras_updates::freedCameraFollowsUpdatesAgain()
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

QTEST_MAIN(tst_KelDeviceTree_cameras_updates)
#include "tst_keldevicetree_cameras_updates.moc"
