// SPDX-License-Identifier: Apache-2.0
#include "CameraTest.h"

#include <CustomCtr/CustomPushButton.h>

#include <QtTest>

using namespace TreeRecords;

/// How a camera's state shows in icon, button and role.
class tst_KelDeviceTree_cameras_states : public CameraTest
{
    Q_OBJECT

private Q_SLOTS:
    void stateDecidesConnectedRoleAndButton_data();
    void stateDecidesConnectedRoleAndButton();
    void everyStateOfTheTableHasItsIcon();
    void stateWithoutEntryHasAnEmptyIcon();
    void groupsGetNoIcon();
    void grabbingGenTLStateSetsItsIconOnAnyItem();
    void grabbingChangesTheIconOnly();
    void unreachableGigeCameraKeepsAUsableButton();
    void iconOfNullIsIgnored();
};

void tst_KelDeviceTree_cameras_states::stateDecidesConnectedRoleAndButton_data()
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

void tst_KelDeviceTree_cameras_states::stateDecidesConnectedRoleAndButton()
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

void tst_KelDeviceTree_cameras_states::everyStateOfTheTableHasItsIcon()
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

void tst_KelDeviceTree_cameras_states::stateWithoutEntryHasAnEmptyIcon()
{
    QTreeWidgetItem *item = add(gigeDevice(1, "S1", "AA"));

    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_NETWORK_FREE);

    QVERIFY(item->icon(0).isNull());
}

void tst_KelDeviceTree_cameras_states::groupsGetNoIcon()
{
    m_tree->setCameraItemIcon(gige()->child(0), KELA_DEV_STATE_GIGE_FREE);
    m_tree->setCameraItemIcon(gige(), KELA_DEV_STATE_GIGE_FREE);

    QVERIFY(gige()->child(0)->icon(0).isNull());
    QVERIFY(gige()->icon(0).isNull());
}

void tst_KelDeviceTree_cameras_states::grabbingGenTLStateSetsItsIconOnAnyItem()
{
    m_tree->setCameraItemIcon(gige(), KELA_DEV_STATE_GENTL_GRABBING);

    QCOMPARE(gige()->icon(0).cacheKey(), iconKey(KELA_DEV_STATE_GENTL_GRABBING));
}

void tst_KelDeviceTree_cameras_states::grabbingChangesTheIconOnly()
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

void tst_KelDeviceTree_cameras_states::unreachableGigeCameraKeepsAUsableButton()
{
    QTreeWidgetItem *unreachable = add(withState(gigeDevice(1, "S1", "AA"), KELA_DEV_STATE_GIGE_UNREACHABLE));
    QTreeWidgetItem *unusable = add(withState(usbDevice(30001, "U1"), KELA_DEV_STATE_USB3_UNUSABLE));

    QVERIFY(buttonOf(unreachable)->isEnabled());
    QCOMPARE(unreachable->data(0, KelDeviceTree::ItemConnectedRole), QVariant(false));
    QVERIFY(!buttonOf(unusable)->isEnabled());
}

void tst_KelDeviceTree_cameras_states::iconOfNullIsIgnored()
{
    const ModelChanges changes(*m_tree);

    m_tree->setCameraItemIcon(nullptr, KELA_DEV_STATE_GIGE_FREE);

    QCOMPARE(changes.count, 0);
}

QTEST_MAIN(tst_KelDeviceTree_cameras_states)
#include "tst_keldevicetree_cameras_states.moc"
