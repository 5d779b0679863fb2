// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QCursor>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidgetItem>
#include <QWheelEvent>

#include <functional>

using RowChange = std::function<void(KelDeviceTree &, QTreeWidgetItem *)>;
Q_DECLARE_METATYPE(RowChange)

namespace
{

QRect place(KelDeviceTree &tree, const QTreeWidgetItem *item)
{
    return tree.visualItemRect(item);
}

} // namespace

class TestStrayButtons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void scrollingHidesTheButton();
    void foldingHidesTheButtonOfARowBelow();
    void hidingARowHidesItsButton();
    void removingARowHidesItsButton();
    void removingAContainerHidesAButtonBelow();
    void buttonFollowsARowThatIsPushedDown();
    void rowAddedBelowLeavesTheButtonAlone();
    void rowRemovedElsewhereLeavesTheButtonAlone();
    void clearingTheTreeHidesTheButton();
    void closingTheMenuHidesWhatThePointerLeft();
    void menuButtonAloneLeavesWhenItsRowMoves();
    void wheelOverTheMenuButtonScrolls();
    void buttonThatTheHostShowedLeavesWithItsRow_data();
    void buttonThatTheHostShowedLeavesWithItsRow();
    void buttonThatTheHostShowedBearsChangesElsewhere();
};

void TestStrayButtons::init()
{
    QCursor::setPos(0, 0);
}

void TestStrayButtons::buttonThatTheHostShowedLeavesWithItsRow_data()
{
    QTest::addColumn<RowChange>("change");
    QTest::newRow("folded") << RowChange(
        [](KelDeviceTree &, QTreeWidgetItem *card) { card->setExpanded(false); });
    QTest::newRow("hidden") << RowChange([](KelDeviceTree &, QTreeWidgetItem *card) {
        card->child(0)->setHidden(true);
        settle();
    });
    QTest::newRow("filtered out") << RowChange([](KelDeviceTree &tree, QTreeWidgetItem *) {
        tree.setVisibleItemTypes({KelDeviceTree::ItemGigERoot, KelDeviceTree::ItemNetWork});
    });
    QTest::newRow("removed") << RowChange(
        [](KelDeviceTree &, QTreeWidgetItem *card) { delete card->child(0); });
    QTest::newRow("removed with its container")
        << RowChange([](KelDeviceTree &, QTreeWidgetItem *card) { delete card; });
}

void TestStrayButtons::buttonThatTheHostShowedLeavesWithItsRow()
{
    QFETCH(const RowChange, change);
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);
    const QPointer<CustomPushButton> button = buttonOf(tree.findCameraItem(1));
    tree.setCurRightBtn(button, false);
    QVERIFY(button->isVisible());

    change(tree, card);

    QVERIFY(!button || !button->isVisible());
}

void TestStrayButtons::buttonThatTheHostShowedBearsChangesElsewhere()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    CustomPushButton *button = buttonOf(tree.findCameraItem(1));
    tree.setCurRightBtn(button, false);
    QVERIFY(!button->isHidden());

    delete tree.findCameraItem(2);
    tree.findItem(KelDeviceTree::ItemUSBRoot, -1)->setExpanded(false);

    QVERIFY(!button->isHidden());
}

void TestStrayButtons::scrollingHidesTheButton()
{
    KelDeviceTree tree;
    QStringList serials;
    for (int index = 0; index < 100; ++index) {
        serials.append(QString::number(index));
    }
    addCameras(tree, serials);
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(5);
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());
    // The pointer on the button itself: nothing but the scrolling can tell.
    QCursor::setPos(tree.mapToGlobal(buttonOf(camera)->geometry().center()));

    tree.verticalScrollBar()->setValue(20);

    QVERIFY(!buttonOf(camera)->isVisible());
}

void TestStrayButtons::foldingHidesTheButtonOfARowBelow()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());

    card->setExpanded(false);

    QVERIFY(!buttonOf(camera)->isVisible());
}

void TestStrayButtons::hidingARowHidesItsButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());
    QCursor::setPos(tree.mapToGlobal(buttonOf(camera)->geometry().center()));

    camera->setHidden(true);
    settle();

    QVERIFY(!buttonOf(camera)->isVisible());
}

void TestStrayButtons::removingARowHidesItsButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QPointer<CustomPushButton> button = buttonOf(tree.findCameraItem(1));
    QVERIFY(button->isVisible());

    delete tree.findCameraItem(1);

    QVERIFY(!button->isVisible());
}

void TestStrayButtons::removingAContainerHidesAButtonBelow()
{
    KelDeviceTree tree;
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 7000, "if-1");
    KELA_STRUCT_DEVICE_INFO record = deviceRecord(9, genTLDevice("G", "if-1"), KELA_DEV_STATE_GENTL_FREE);
    record.genTLInterface = interfaceRecord(7000, "if-1");
    QTreeWidgetItem *device = addDevice(tree, record);
    QCOMPARE(device->parent(), interfaceItem);
    showTree(tree);
    hoverRow(tree, device);
    CustomPushButton *button = buttonOf(device);
    QVERIFY(button->isVisible());

    tree.onDeleteGenTLInterface(QVariant::fromValue(interfaceRecord(7000, "if-1")));

    QCOMPARE(privateOf(tree).m_rightBtns.value(9), button);
    QVERIFY(!button->isVisible());
}

void TestStrayButtons::buttonFollowsARowThatIsPushedDown()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());

    tree.setStayTopList({QStringLiteral("B")});
    addDevice(tree, gigeRecord(2, "B"));
    QCOMPARE(card->indexOfChild(camera), 1);
    settle();

    const QRect rowRect = place(tree, camera);
    QVERIFY(!buttonOf(camera)->isVisible() ||
            buttonOf(camera)->geometry().top() ==
                rowRect.top() + 7 + (rowRect.height() > 32 ? (rowRect.height() - 32) / 2 : 0));
}

void TestStrayButtons::rowAddedBelowLeavesTheButtonAlone()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    CustomPushButton *button = buttonOf(tree.findCameraItem(1));
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(button->isVisible());
    settle();
    EventCounter hides(button, QEvent::Hide);

    addDevice(tree, gigeRecord(2, "B"));
    settle();

    QVERIFY(button->isVisible());
    QCOMPARE(hides.count(), 0);
}

void TestStrayButtons::rowRemovedElsewhereLeavesTheButtonAlone()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);
    CustomPushButton *button = buttonOf(tree.findCameraItem(1));
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(button->isVisible());
    settle();
    EventCounter hides(button, QEvent::Hide);

    tree.deleteCameraItem(tree.findCameraItem(2));
    settle();

    QVERIFY(button->isVisible());
    QCOMPARE(hides.count(), 0);
}

void TestStrayButtons::clearingTheTreeHidesTheButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    CustomPushButton *button = buttonOf(tree.findCameraItem(1));
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(button->isVisible());

    tree.clear();

    QVERIFY(!button->isVisible());
}

void TestStrayButtons::closingTheMenuHidesWhatThePointerLeft()
{
    KelDeviceTree tree;
    showTree(tree);
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    hoverRow(tree, group);
    KelGenTLMenu *menu = privateOf(tree).m_genTLMenu;
    menu->popup(tree.mapToGlobal(QPoint(10, 10)));
    QCursor::setPos(0, 0);
    tree.leaveEvent(nullptr);
    QVERIFY(buttonOf(group)->isVisible());

    menu->close();
    settle();

    QVERIFY(!buttonOf(group)->isVisible());
    QVERIFY(!privateOf(tree).m_configBtn->isVisible());
}

void TestStrayButtons::menuButtonAloneLeavesWhenItsRowMoves()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    tree.setRightBtnVisible(false);
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    hoverRow(tree, group);
    CustomPushButton *menuButton = privateOf(tree).m_configBtn;
    QVERIFY(menuButton->isVisible());
    // The pointer on the button itself: nothing but the row can tell.
    QCursor::setPos(menuButton->mapToGlobal(menuButton->rect().center()));
    const int before = place(tree, group).top();

    addDevice(tree, gigeRecord(2, "B"));
    settle();

    QVERIFY(place(tree, group).top() > before);
    QVERIFY(!menuButton->isVisible());
    hoverRow(tree, group);
    QVERIFY(menuButton->isVisible());
    QVERIFY(!buttonOf(group)->isVisible());
}

void TestStrayButtons::wheelOverTheMenuButtonScrolls()
{
    KelDeviceTree tree;
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 7000, "if-1");
    for (int id = 1; id < 60; ++id) {
        KELA_STRUCT_DEVICE_INFO record =
            deviceRecord(id, genTLDevice(std::to_string(id), "if-1"), KELA_DEV_STATE_GENTL_FREE);
        record.genTLInterface = interfaceRecord(7000, "if-1");
        addDevice(tree, record);
    }
    interfaceItem->setExpanded(true);
    showTree(tree);
    hoverRow(tree, tree.findItem(KelDeviceTree::ItemGenTLRoot, -1));
    CustomPushButton *menuButton = privateOf(tree).m_configBtn;
    QVERIFY(menuButton->isVisible());
    const QPoint middle = menuButton->rect().center();

    QWheelEvent wheel(middle, menuButton->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(menuButton, &wheel);

    QVERIFY(tree.verticalScrollBar()->value() > 0);
    QVERIFY(!menuButton->isVisible());
}

QTEST_MAIN(TestStrayButtons)
#include "tst_keldevicetree_straybuttons.moc"
