// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidgetItem>

#include <algorithm>

namespace
{

QStringList list(const char *serials)
{
    return QString::fromLatin1(serials).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList markedBelow(KelDeviceTree &tree, const QTreeWidgetItem *parent)
{
    QStringList marked;
    for (int row = 0; row < parent->childCount(); ++row) {
        if (parent->child(row)->data(0, KelDeviceTree::StayTopItemRole).toBool()) {
            marked.append(rowsBelow(tree, parent).at(row));
        }
    }
    return marked;
}

/// The order as it is defined: entry by entry, each matching row goes to the top.
QStringList movedOneByOne(const QStringList &rows, const QStringList &serials)
{
    QVector<QPair<QString, int>> numbered;
    for (int row = 0; row < rows.size(); ++row) {
        numbered.append({rows.at(row), row});
    }
    for (const QString &serial : serials) {
        QVector<QPair<QString, int>> matching;
        std::copy_if(numbered.cbegin(), numbered.cend(), std::back_inserter(matching),
                     [&serial](const auto &row) { return row.first == serial; });
        for (const auto &row : qAsConst(matching)) {
            numbered.removeOne(row);
            numbered.prepend(row);
        }
    }
    QStringList result;
    for (const auto &row : qAsConst(numbered)) {
        result.append(QStringLiteral("%1#%2").arg(row.first).arg(row.second));
    }
    return result;
}

} // namespace

class TestStayTop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void camerasArriveInTheReverseOrderOfTheList();
    void lastEntryAlwaysArrivesOnTop();
    void cameraThatIsNotListedIsAppendedWithoutMark();
    void rowsElsewhereDoNotCount();
    void numberThatIsListedTwiceLosesNoRow();

    void settingTheListOrdersTheRows();
    void marksAreIntegers();
    void rowsThatLeaveTheListLoseTheirMarkAndKeepTheirPlace();
    void sameListAgainChangesNothing();
    void rowsWithOneNumberSwapOnEveryCall();
    void emptyNumberMovesTheContainers();
    void emptyNumberMovesEveryKindOfContainer();
    void emptyNumberMovesCamerasBelowMovedContainersToo();
    void topLevelRowsNeverMove();
    void devicesOfOtherTransportsHaveNoNumber();
    void updatedCameraKeepsPlaceAndMark();
    void anyListGivesTheOrderOfMovesOneByOne();

    void onlyRowsThatHaveToMoveAreMoved();
    void movedRowStaysCurrentAndSelected();
    void movedRowKeepsTheOthersUnselected();
    void movedContainerKeepsWhatIsUnfolded();
    void movedRowStaysHidden();
    void movedRowKeepsItsButton();
    void nobodyHearsThatTheCurrentRowChanged();
    void treeMayBeDestroyedByAMove();
    void rowsMayBeRemovedByAMove();
};

void TestStayTop::camerasArriveInTheReverseOrderOfTheList()
{
    KelDeviceTree tree;
    tree.setStayTopList(list("first second third"));

    QTreeWidgetItem *card = addCameras(tree, list("plain third first second other"));

    QCOMPARE(rowsBelow(tree, card), list("third second first plain other"));
    QCOMPARE(markedBelow(tree, card), list("third second first"));
}

void TestStayTop::lastEntryAlwaysArrivesOnTop()
{
    KelDeviceTree tree;
    tree.setStayTopList(list("a b last"));
    addCameras(tree, list("b a x"));

    QTreeWidgetItem *last = addDevice(tree, gigeRecord(9, "last"));

    QCOMPARE(last->parent()->indexOfChild(last), 0);
}

void TestStayTop::cameraThatIsNotListedIsAppendedWithoutMark()
{
    KelDeviceTree tree;
    tree.setStayTopList(list("A"));
    QTreeWidgetItem *card = addCameras(tree, list("B a C"));

    QCOMPARE(rowsBelow(tree, card), list("B a C"));
    QCOMPARE(markedBelow(tree, card), QStringList());
    QCOMPARE(privateOf(tree).getStayTopIndex(gigeRecord(9, "a"), card), -1);
    QCOMPARE(privateOf(tree).getStayTopIndex(gigeRecord(9, "A"), card), 0);
}

void TestStayTop::rowsElsewhereDoNotCount()
{
    KelDeviceTree tree;
    tree.setStayTopList(list("A B C"));
    QTreeWidgetItem *card = addCameras(tree, list("B"));
    addCard(tree, 501, "card-b");
    addDevice(tree, gigeRecord(7, "C", KELA_DEV_STATE_GIGE_FREE, "card-b"));

    QCOMPARE(privateOf(tree).getStayTopIndex(gigeRecord(9, "A"), card), 1);
}

void TestStayTop::numberThatIsListedTwiceLosesNoRow()
{
    KelDeviceTree tree;
    tree.setStayTopList(list("A B B"));

    QTreeWidgetItem *card = addCameras(tree, list("B A"));

    QCOMPARE(rowsBelow(tree, card), list("B A"));
    QCOMPARE(markedBelow(tree, card), list("B A"));
}

void TestStayTop::settingTheListOrdersTheRows()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C D E"));

    tree.setStayTopList(list("D B"));

    QCOMPARE(rowsBelow(tree, card), list("B D A C E"));
    QCOMPARE(markedBelow(tree, card), list("B D"));
}

void TestStayTop::marksAreIntegers()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B"));

    tree.setStayTopList(list("B"));

    QCOMPARE(card->child(0)->data(0, KelDeviceTree::StayTopItemRole), QVariant(1));
    QCOMPARE(card->child(1)->data(0, KelDeviceTree::StayTopItemRole), QVariant(0));
}

void TestStayTop::rowsThatLeaveTheListLoseTheirMarkAndKeepTheirPlace()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C"));
    tree.setStayTopList(list("C B"));

    tree.setStayTopList({});

    QCOMPARE(rowsBelow(tree, card), list("B C A"));
    QCOMPARE(markedBelow(tree, card), QStringList());
}

void TestStayTop::sameListAgainChangesNothing()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C D"));
    tree.setStayTopList(list("D B X"));
    QSignalSpy removed(tree.model(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(tree.model(), &QAbstractItemModel::dataChanged);

    tree.setStayTopList(list("D B X"));

    QCOMPARE(rowsBelow(tree, card), list("B D A C"));
    QCOMPARE(markedBelow(tree, card), list("B D"));
    QVERIFY(removed.isEmpty());
    QVERIFY(changed.isEmpty());
}

void TestStayTop::rowsWithOneNumberSwapOnEveryCall()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("X S S Y"));
    QTreeWidgetItem *first = tree.findCameraItem(2);

    tree.setStayTopList(list("S"));
    QCOMPARE(rowsBelow(tree, card), list("S S X Y"));
    QCOMPARE(card->indexOfChild(first), 1);

    tree.setStayTopList(list("S"));
    QCOMPARE(card->indexOfChild(first), 0);

    tree.setStayTopList(list("S S"));
    QCOMPARE(card->indexOfChild(first), 0);
}

void TestStayTop::emptyNumberMovesTheContainers()
{
    KelDeviceTree tree;
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGigERoot, -1);
    QTreeWidgetItem *cardA = addCameras(tree, list("A B"));
    QTreeWidgetItem *cardB = addCard(tree, 501, "card-b");
    addDevice(tree, gigeRecord(9, "direct", KELA_DEV_STATE_GIGE_FREE, "unknown card"));
    QCOMPARE(group->childCount(), 3);

    tree.setStayTopList({QString()});

    QCOMPARE(group->child(0), cardB);
    QCOMPARE(group->child(1), cardA);
    QCOMPARE(cardA->data(0, KelDeviceTree::StayTopItemRole), QVariant(1));
    QCOMPARE(group->child(2)->data(0, KelDeviceTree::StayTopItemRole), QVariant(0));
    QCOMPARE(rowsBelow(tree, cardA), list("A B"));
}

void TestStayTop::emptyNumberMovesEveryKindOfContainer()
{
    KelDeviceTree tree;
    addDevice(tree, gigeRecord(1, "gige", KELA_DEV_STATE_GIGE_FREE, "unknown card"));
    addDevice(tree, deviceRecord(2, usbCamera("usb"), KELA_DEV_STATE_USB3_FREE));
    addDevice(tree, deviceRecord(3, genTLDevice("gentl", "unknown"), KELA_DEV_STATE_GENTL_FREE));
    for (const int type : {KelDeviceTree::ItemGigEVirtualGroup, KelDeviceTree::ItemOtherGroup,
                           KelDeviceTree::ItemUSBVirtualGroup}) {
        QVERIFY(privateOf(tree).GetVirtualGroupItem(type, true));
    }
    addController(tree, 600, "controller");
    addGenTLInterface(tree, 7000, "if-1");
    QTreeWidgetItem *gige = tree.findItem(KelDeviceTree::ItemGigERoot, -1);
    QTreeWidgetItem *usb = tree.findItem(KelDeviceTree::ItemUSBRoot, -1);
    QTreeWidgetItem *genTL = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    const QString interfaceName = tree.findItem(KelDeviceTree::ItemGenTLInterface, 7000)->text(0);
    QCOMPARE(rowsBelow(tree, usb), QStringList({"usb", "Virtual Device", "controller"}));

    tree.setStayTopList({QString()});

    QCOMPARE(rowsBelow(tree, gige), QStringList({"Other Device", "Virtual Device", "gige"}));
    QCOMPARE(markedBelow(tree, gige), QStringList({"Other Device", "Virtual Device"}));
    QCOMPARE(rowsBelow(tree, usb), QStringList({"controller", "Virtual Device", "usb"}));
    QCOMPARE(markedBelow(tree, usb), QStringList({"controller", "Virtual Device"}));
    QCOMPARE(rowsBelow(tree, genTL), QStringList({interfaceName, "gentl"}));
    QCOMPARE(markedBelow(tree, genTL), QStringList({interfaceName}));
}

void TestStayTop::emptyNumberMovesCamerasBelowMovedContainersToo()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B"));
    QTreeWidgetItem *cardB = addCard(tree, 501, "card-b");

    tree.setStayTopList({QString(), QStringLiteral("B")});

    QCOMPARE(card->parent()->child(0), cardB);
    QCOMPARE(rowsBelow(tree, card), list("B A"));
    QCOMPARE(markedBelow(tree, card), list("B"));
}

void TestStayTop::topLevelRowsNeverMove()
{
    KelDeviceTree tree;
    const QStringList before = rowsBelow(tree, tree.invisibleRootItem());

    tree.setStayTopList({QString()});

    QCOMPARE(rowsBelow(tree, tree.invisibleRootItem()), before);
    QCOMPARE(markedBelow(tree, tree.invisibleRootItem()), QStringList());
}

void TestStayTop::devicesOfOtherTransportsHaveNoNumber()
{
    KelDeviceTree tree;
    KELA_STRUCT_DEVICE_INFO record = gigeRecord(1, "S");
    for (const KELA_INTERFACE_TYPE transport : {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                                KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL}) {
        record.deviceInfo.transport = transport;
        QCOMPARE(privateOf(tree).getSerialByInfo(record), QStringLiteral("S"));
    }
    for (const KELA_INTERFACE_TYPE transport :
         {KELA_INTERFACE_TYPE_NONE, KELA_INTERFACE_TYPE_1394, KELA_INTERFACE_TYPE_GENTL_INTERFACE,
          KELA_INTERFACE_TYPE_NETWORK, KELA_INTERFACE_TYPE_GIGE_VARIANT}) {
        record.deviceInfo.transport = transport;
        QCOMPARE(privateOf(tree).getSerialByInfo(record), QString());
    }
    QCOMPARE(tree.getCameraSerial(nullptr), QString());
    QCOMPARE(tree.getCameraSerial(tree.findItem(KelDeviceTree::ItemGigERoot, -1)), QString());
}

void TestStayTop::updatedCameraKeepsPlaceAndMark()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C"));
    tree.setStayTopList(list("C"));

    tree.onUpdateDeviceInfo(QVariant::fromValue(gigeRecord(3, "C", KELA_DEV_STATE_GIGE_IN_USE)));
    tree.onUpdateDeviceInfo(QVariant::fromValue(gigeRecord(1, "A", KELA_DEV_STATE_GIGE_IN_USE)));

    QCOMPARE(rowsBelow(tree, card), list("C A B"));
    QCOMPARE(markedBelow(tree, card), list("C"));
}

void TestStayTop::anyListGivesTheOrderOfMovesOneByOne()
{
    QRandomGenerator random(42);
    for (int round = 0; round < 100; ++round) {
        KelDeviceTree tree;
        QStringList serials;
        const int cameras = random.bounded(1, 9);
        for (int camera = 0; camera < cameras; ++camera) {
            serials.append(QString(QChar('a' + random.bounded(6))));
        }
        QTreeWidgetItem *card = addCameras(tree, serials);
        for (int call = 0; call < 3; ++call) {
            QStringList stayTop;
            const int entries = random.bounded(0, 6);
            for (int entry = 0; entry < entries; ++entry) {
                stayTop.append(QString(QChar('a' + random.bounded(8))));
            }
            const QStringList before = rowsBelow(tree, card);
            QVector<QTreeWidgetItem *> items;
            for (int row = 0; row < card->childCount(); ++row) {
                items.append(card->child(row));
            }

            tree.setStayTopList(stayTop);

            QStringList after;
            for (int row = 0; row < card->childCount(); ++row) {
                after.append(QStringLiteral("%1#%2")
                                 .arg(tree.getCameraSerial(card->child(row)))
                                 .arg(items.indexOf(card->child(row))));
                QCOMPARE(card->child(row)->data(0, KelDeviceTree::StayTopItemRole).toBool(),
                         stayTop.contains(tree.getCameraSerial(card->child(row))));
            }
            QCOMPARE(after, movedOneByOne(before, stayTop));
        }
    }
}

void TestStayTop::onlyRowsThatHaveToMoveAreMoved()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C D E"));
    tree.setStayTopList(list("A B C"));
    QSignalSpy removed(tree.model(), &QAbstractItemModel::rowsRemoved);

    tree.setStayTopList(list("A B C E"));
    QCOMPARE(rowsBelow(tree, card), list("E C B A D"));
    QCOMPARE(removed.size(), 1);

    tree.setStayTopList(list("A B C"));
    QCOMPARE(rowsBelow(tree, card), list("C B A E D"));
    QCOMPARE(removed.size(), 4);
}

void TestStayTop::movedRowStaysCurrentAndSelected()
{
    KelDeviceTree tree;
    addCameras(tree, list("A B C"));
    QTreeWidgetItem *current = tree.findCameraItem(3);
    tree.setCurrentItem(current);

    tree.setStayTopList(list("C"));

    QCOMPARE(tree.currentItem(), current);
    QCOMPARE(tree.selectedItems(), QList<QTreeWidgetItem *>{current});
}

void TestStayTop::movedRowKeepsTheOthersUnselected()
{
    KelDeviceTree tree;
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    addCameras(tree, list("A B C D"));
    tree.setCurrentItem(tree.findCameraItem(4), 0, QItemSelectionModel::NoUpdate);
    tree.clearSelection();
    tree.findCameraItem(1)->setSelected(true);
    tree.findCameraItem(3)->setSelected(true);

    tree.setStayTopList(list("D C"));

    QCOMPARE(tree.currentItem(), tree.findCameraItem(4));
    QVERIFY(tree.findCameraItem(1)->isSelected());
    QVERIFY(!tree.findCameraItem(2)->isSelected());
    QVERIFY(tree.findCameraItem(3)->isSelected());
    QVERIFY(!tree.findCameraItem(4)->isSelected());
}

void TestStayTop::movedContainerKeepsWhatIsUnfolded()
{
    KelDeviceTree tree;
    addCameras(tree, list("A"));
    QTreeWidgetItem *folded = addCard(tree, 501, "card-b");
    QTreeWidgetItem *unfolded = addCard(tree, 502, "card-c");
    addDevice(tree, gigeRecord(8, "B", KELA_DEV_STATE_GIGE_FREE, "card-b"));
    addDevice(tree, gigeRecord(9, "C", KELA_DEV_STATE_GIGE_FREE, "card-c"));
    addDevice(tree, gigeRecord(10, "D", KELA_DEV_STATE_GIGE_FREE, "card-c"))->setHidden(true);
    folded->setExpanded(false);
    tree.setCurrentItem(tree.findCameraItem(9));

    tree.setStayTopList({QString()});

    QCOMPARE(unfolded->parent()->indexOfChild(unfolded), 0);
    QCOMPARE(folded->parent()->indexOfChild(folded), 1);
    QVERIFY(unfolded->isExpanded());
    QVERIFY(!folded->isExpanded());
    QCOMPARE(tree.currentItem(), tree.findCameraItem(9));
    QVERIFY(tree.findCameraItem(9)->isSelected());
    QVERIFY(tree.findCameraItem(10)->isHidden());
    QVERIFY(!tree.findCameraItem(9)->isHidden());
}

void TestStayTop::movedRowStaysHidden()
{
    KelDeviceTree tree;
    addCameras(tree, list("A B C"));
    tree.findCameraItem(3)->setHidden(true);

    tree.setStayTopList(list("B C"));

    QVERIFY(tree.findCameraItem(3)->isHidden());
    QVERIFY(!tree.findCameraItem(2)->isHidden());
}

void TestStayTop::movedRowKeepsItsButton()
{
    KelDeviceTree tree;
    addCameras(tree, list("A B"));
    QPointer<CustomPushButton> button = buttonOf(tree.findCameraItem(2));

    tree.setStayTopList(list("B"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QVERIFY(button);
    QCOMPARE(buttonOf(tree.findCameraItem(2)), button.data());
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(2));
    QVERIFY(button->isVisible());
}

void TestStayTop::nobodyHearsThatTheCurrentRowChanged()
{
    KelDeviceTree tree;
    addCameras(tree, list("A B C"));
    tree.setCurrentItem(tree.findCameraItem(3));
    QSignalSpy current(&tree, &QTreeWidget::currentItemChanged);
    QSignalSpy selection(&tree, &QTreeWidget::itemSelectionChanged);

    tree.setStayTopList(list("C"));

    QVERIFY(current.isEmpty());
    QVERIFY(selection.isEmpty());
    tree.setCurrentItem(tree.findCameraItem(1));
    QCOMPARE(current.size(), 1);
}

void TestStayTop::treeMayBeDestroyedByAMove()
{
    QPointer<KelDeviceTree> tree = new KelDeviceTree;
    addCameras(*tree, list("A B C"));
    connect(tree, &QTreeWidget::itemChanged, tree, [tree] { delete tree; });

    tree->setStayTopList(list("C B"));

    QVERIFY(!tree);
}

void TestStayTop::rowsMayBeRemovedByAMove()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, list("A B C"));
    connect(&tree, &QTreeWidget::itemChanged, &tree,
            [&tree] { tree.deleteCameraItem(tree.findCameraItem(1)); });

    tree.setStayTopList(list("C A B"));

    QCOMPARE(rowsBelow(tree, card), list("B C"));
    QCOMPARE(markedBelow(tree, card), list("B C"));
}

QTEST_MAIN(TestStayTop)
#include "tst_keldevicetree_staytop.moc"
