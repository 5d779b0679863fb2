// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidgetItem>

#include <functional>
#include <memory>
#include <utility>

namespace
{

const QString kFormat = QStringLiteral("KelDragTreeWidgetFormat");

/// Tells when an object gets a child.
class ChildWatch : public QObject
{
public:
    ChildWatch(QObject *parent, std::function<void()> tell)
        : m_tell(std::move(tell))
    {
        parent->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded) {
            m_tell();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_tell;
};

std::unique_ptr<QMimeData> mimeOf(const KelDeviceTree &tree, const QList<QTreeWidgetItem *> &items)
{
    return std::unique_ptr<QMimeData>(tree.mimeData(items));
}

} // namespace

class TestDrag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void payloadIsTheIdentifierInFourBytes_data();
    void payloadIsTheIdentifierInFourBytes();
    void payloadHasOneFormatOnly();
    void everyConnectedStateCanBeDragged_data();
    void everyConnectedStateCanBeDragged();
    void recordDecidesNotTheRole();
    void oneRowAtATimeIsDragged();
    void onlyCamerasAreDragged();
    void cameraWithoutARecordIsNotDragged();

    void refusedDragTellsItsEnd();
    void dragOfTwoRowsTellsItsEnd();
    void finishedDragTellsItsEnd();
    void treeDragsNothingUntilTheHostAsks();

    void leavingHidesTheButton();
    void leavingKeepsTheButtonsWhileTheMenuIsOpen();
    void treeMayBeDestroyedWithTheMenuOpen();
};

void TestDrag::payloadIsTheIdentifierInFourBytes_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("7") << 7 << QByteArray("\x00\x00\x00\x07", 4);
    QTest::newRow("-1") << -1 << QByteArray("\xFF\xFF\xFF\xFF", 4);
    QTest::newRow("all bytes") << 0x01020304 << QByteArray("\x01\x02\x03\x04", 4);
}

void TestDrag::payloadIsTheIdentifierInFourBytes()
{
    QFETCH(int, id);
    QFETCH(QByteArray, payload);
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *camera = addDevice(tree, gigeRecord(id, "S", KELA_DEV_STATE_GIGE_CONNECTED));

    const auto mime = mimeOf(tree, {camera});

    QVERIFY(mime);
    QCOMPARE(mime->data(kFormat), payload);
}

void TestDrag::payloadHasOneFormatOnly()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *camera = addDevice(tree, gigeRecord(1, "S", KELA_DEV_STATE_GIGE_CONNECTED));

    QCOMPARE(mimeOf(tree, {camera})->formats(), QStringList{kFormat});
}

void TestDrag::everyConnectedStateCanBeDragged_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isDragged");
    const QList<int> connected = {4, 5, 7, 10, 11, 15, 16, 19, 22, 23};
    for (int state = 0; state <= 30; ++state) {
        QTest::newRow(QByteArray::number(state).constData()) << state << connected.contains(state);
    }
}

void TestDrag::everyConnectedStateCanBeDragged()
{
    QFETCH(int, state);
    QFETCH(bool, isDragged);
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *camera = addDevice(tree, gigeRecord(1, "S", static_cast<KELA_DEV_STATE>(state)));

    QCOMPARE(mimeOf(tree, {camera}) != nullptr, isDragged);
}

void TestDrag::recordDecidesNotTheRole()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *camera = addDevice(tree, gigeRecord(1, "S"));
    camera->setData(0, KelDeviceTree::ItemConnectedRole, true);
    QVERIFY(!mimeOf(tree, {camera}));

    camera->setData(0, KelDeviceTree::ItemConnectedRole, false);
    camera->setData(0, KelDeviceTree::ItemInfoRole,
                    QVariant::fromValue(gigeRecord(1, "S", KELA_DEV_STATE_GIGE_GRABBING)));
    QVERIFY(mimeOf(tree, {camera}));
}

void TestDrag::oneRowAtATimeIsDragged()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *first = addDevice(tree, gigeRecord(1, "S", KELA_DEV_STATE_GIGE_CONNECTED));
    QTreeWidgetItem *second = addDevice(tree, gigeRecord(2, "T", KELA_DEV_STATE_GIGE_CONNECTED));

    QVERIFY(!mimeOf(tree, {}));
    QVERIFY(!mimeOf(tree, {first, second}));
    QVERIFY(!mimeOf(tree, {nullptr}));
    QVERIFY(mimeOf(tree, {second}));
}

void TestDrag::onlyCamerasAreDragged()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCard(tree, 500, "card-a");
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 7000, "if-1");
    const QVariant connected = QVariant::fromValue(gigeRecord(1, "S", KELA_DEV_STATE_GIGE_CONNECTED));

    for (QTreeWidgetItem *item : {card, interfaceItem, tree.findItem(KelDeviceTree::ItemGigERoot, -1),
                                  tree.findItem(KelDeviceTree::ItemAll, -1)}) {
        item->setData(0, KelDeviceTree::ItemInfoRole, connected);
        QVERIFY(!mimeOf(tree, {item}));
    }
}

void TestDrag::cameraWithoutARecordIsNotDragged()
{
    KelDeviceTree tree;
    auto *item = new QTreeWidgetItem(&tree);
    item->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::ItemUSBCamera);

    QVERIFY(!mimeOf(tree, {item}));
}

void TestDrag::refusedDragTellsItsEnd()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 7000, "if-1");
    QSignalSpy ended(&tree, &KelDeviceTree::sigEndDrag);

    int drags = 0;
    ChildWatch watch(&tree, [&drags] { ++drags; });

    for (QTreeWidgetItem *item :
         {tree.findCameraItem(1), interfaceItem, tree.findItem(KelDeviceTree::ItemNetWork, 500),
          tree.findItem(KelDeviceTree::ItemGenTLRoot, -1)}) {
        tree.setCurrentItem(item);
        ended.clear();
        tree.startDrag(Qt::CopyAction);

        QCOMPARE(drags, 0);
        QCOMPARE(ended.size(), 1);
    }
}

void TestDrag::dragOfTwoRowsTellsItsEnd()
{
    KelDeviceTree tree;
    tree.setSelectionMode(QAbstractItemView::MultiSelection);
    addCard(tree, 500, "card-a");
    addDevice(tree, gigeRecord(1, "S", KELA_DEV_STATE_GIGE_CONNECTED))->setSelected(true);
    addDevice(tree, gigeRecord(2, "T", KELA_DEV_STATE_GIGE_CONNECTED))->setSelected(true);
    QSignalSpy ended(&tree, &KelDeviceTree::sigEndDrag);

    int drags = 0;
    ChildWatch watch(&tree, [&drags] { ++drags; });

    tree.startDrag(Qt::CopyAction);

    QCOMPARE(drags, 0);
    QCOMPARE(ended.size(), 1);
}

void TestDrag::finishedDragTellsItsEnd()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    tree.setCurrentItem(addDevice(tree, gigeRecord(1, "S", KELA_DEV_STATE_GIGE_CONNECTED)));
    showTree(tree);
    QSignalSpy ended(&tree, &KelDeviceTree::sigEndDrag);
    int endsBefore = -1;
    int drags = 0;
    // The drag begins with a child of the tree.
    ChildWatch watch(&tree, [&] {
        ++drags;
        endsBefore = ended.size();
    });

    tree.startDrag(Qt::CopyAction);

    QCOMPARE(drags, 1);
    QCOMPARE(endsBefore, 0);
    QCOMPARE(ended.size(), 1);
}

void TestDrag::treeDragsNothingUntilTheHostAsks()
{
    KelDeviceTree tree;

    QVERIFY(!tree.dragEnabled());
}

void TestDrag::leavingHidesTheButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(buttonOf(tree.findCameraItem(1))->isVisible());

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&tree, &leave);

    QVERIFY(!buttonOf(tree.findCameraItem(1))->isVisible());
}

void TestDrag::leavingKeepsTheButtonsWhileTheMenuIsOpen()
{
    KelDeviceTree tree;
    showTree(tree);
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    hoverRow(tree, group);
    privateOf(tree).m_genTLMenu->popup(tree.mapToGlobal(QPoint(10, 10)));

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&tree, &leave);

    QVERIFY(buttonOf(group)->isVisible());
    QVERIFY(privateOf(tree).m_configBtn->isVisible());
    privateOf(tree).m_genTLMenu->close();
}

void TestDrag::treeMayBeDestroyedWithTheMenuOpen()
{
    auto tree = std::make_unique<KelDeviceTree>();
    showTree(*tree);
    QPointer<KelGenTLMenu> menu = privateOf(*tree).m_genTLMenu;
    int changes = 0;
    connect(menu.data(), &KelGenTLMenu::SigCtiChanged, this, [&changes] { ++changes; });
    menu->popup(tree->mapToGlobal(QPoint(10, 10)));
    for (QAction *action : menu->actions()) {
        if (action->menu())
            action->menu()->popup(tree->mapToGlobal(QPoint(40, 40)));
    }
    QVERIFY(menu->isVisible());

    tree.reset();
    QCoreApplication::processEvents();

    QVERIFY(menu.isNull());
    QCOMPARE(changes, 0);
}

QTEST_MAIN(TestDrag)
#include "tst_keldevicetree_drag.moc"
