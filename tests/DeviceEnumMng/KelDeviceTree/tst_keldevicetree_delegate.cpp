// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomDefine.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTreeDelegate.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QCursor>
#include <QImage>
#include <QPainter>
#include <QStyleFactory>
#include <QTest>
#include <QTreeWidgetItem>

namespace
{

const QString kLongSerial = QStringLiteral("0123456789-0123456789-0123456789-0123456789-0123456789-012345");

QString shortened(const QStyleOptionViewItem &drawn, const QString &text, const QRect &rowRect, int iconRoom)
{
    const int width = rowRect.right() - rowRect.left() - iconRoom - 34;
    return drawn.fontMetrics.elidedText(text, Qt::ElideRight, width);
}

QRect place(KelDeviceTree &tree, const QTreeWidgetItem *item)
{
    return tree.visualItemRect(item);
}

} // namespace

class TestDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nothingIsPaintedWithoutAWidget();
    void nothingIsPaintedForAnotherView();
    void ownSizeHintWins();
    void invalidSizeHintGivesTheStylesSize();

    void buttonStandsAtTheRightEdgeOfItsRow_data();
    void buttonStandsAtTheRightEdgeOfItsRow();
    void hoveredRowShowsItsButtonAlone();
    void genTLGroupShowsTheMenuButtonToo();
    void rowWithoutButtonHidesAll();
    void pointerOutsideTheTreeShowsNoButton();
    void pointerOnTheButtonKeepsTheRowHovered();
    void pointerOnTheMenuButtonKeepsTheGenTLRowHovered();
    void buttonIsHiddenWhenThePointerLeavesTheRow();
    void switchedOffButtonsStayHiddenUnderThePointer();
    void sharedButtonStaysWithTheHoveredRow();
    void pointerInARoleIsNeverFollowedBlindly();
    void paintingComesToAnEnd();
    void hoverNeedsNoHelpOfTheStyle();

    void onlyTheHoveredRowIsShortened();
    void roomForTheTextDependsOnTheIcon();
    void cameraRowsAreDrawnTwentyPixelsFurtherLeft();
    void noRowIsDrawnBeyondTheLeftEdge();
    void tintCoversTheRowFromTheVeryLeft();
    void rowsWithoutMarkAreNotTinted();
};

void TestDelegate::init()
{
    QCursor::setPos(0, 0);
}

void TestDelegate::nothingIsPaintedWithoutAWidget()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    QImage image(200, 30, QImage::Format_ARGB32);
    image.fill(Qt::white);
    const QImage before = image;
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();

    tree.itemDelegate()->paint(&painter, option, KelDeviceTreePrivate::indexOf(&tree, card));
    painter.end();

    QCOMPARE(image, before);
}

void TestDelegate::nothingIsPaintedForAnotherView()
{
    QTreeWidget other;
    QTreeWidgetItem item(&other, {QStringLiteral("text")});
    QImage image(200, 30, QImage::Format_ARGB32);
    image.fill(Qt::white);
    const QImage before = image;
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.widget = &other;

    KelDeviceTreeDelegate().paint(&painter, option, other.model()->index(0, 0));
    painter.end();

    QCOMPARE(image, before);
}

void TestDelegate::ownSizeHintWins()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    card->setSizeHint(0, QSize(11, 77));

    QCOMPARE(tree.itemDelegate()->sizeHint(QStyleOptionViewItem(), KelDeviceTreePrivate::indexOf(&tree, card)),
             QSize(11, 77));
    card->setSizeHint(0, QSize(0, 0));
    QCOMPARE(tree.itemDelegate()->sizeHint(QStyleOptionViewItem(), KelDeviceTreePrivate::indexOf(&tree, card)),
             QSize(0, 0));
}

void TestDelegate::invalidSizeHintGivesTheStylesSize()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    const QModelIndex index = KelDeviceTreePrivate::indexOf(&tree, card);
    QStyleOptionViewItem option;
    option.initFrom(&tree);
    option.widget = &tree;
    const QSize fromStyle = tree.itemDelegate()->sizeHint(option, index);
    QVERIFY(fromStyle.height() > 0);

    card->setSizeHint(0, QSize(-1, 77));

    QCOMPARE(tree.itemDelegate()->sizeHint(option, index), fromStyle);
}

void TestDelegate::buttonStandsAtTheRightEdgeOfItsRow_data()
{
    QTest::addColumn<int>("rowHeight");
    QTest::addColumn<int>("buttonHeight");
    QTest::addColumn<int>("offset");
    QTest::newRow("low row") << 20 << 20 << 7;
    QTest::newRow("as high as the button") << 32 << 32 << 7;
    QTest::newRow("odd difference is rounded toward zero") << 35 << 32 << 8;
    QTest::newRow("high row") << 40 << 32 << 11;
}

void TestDelegate::buttonStandsAtTheRightEdgeOfItsRow()
{
    QFETCH(int, rowHeight);
    QFETCH(int, buttonHeight);
    QFETCH(int, offset);
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    QTreeWidgetItem *camera = tree.findCameraItem(2);
    camera->setSizeHint(0, QSize(50, rowHeight));
    showTree(tree);
    QCOMPARE(place(tree, camera).height(), rowHeight);

    hoverRow(tree, camera);

    const QRect rowRect = place(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());
    QCOMPARE(buttonOf(camera)->geometry(),
             QRect(rowRect.right() - 32, rowRect.top() + offset, 35, buttonHeight));
}

void TestDelegate::hoveredRowShowsItsButtonAlone()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);

    for (const int id : {1, 2, 1}) {
        hoverRow(tree, tree.findCameraItem(id));

        QVERIFY(buttonOf(tree.findCameraItem(id))->isVisible());
        QVERIFY(!buttonOf(tree.findCameraItem(3 - id))->isVisible());
        QVERIFY(!privateOf(tree).m_configBtn->isVisible());
    }
}

void TestDelegate::genTLGroupShowsTheMenuButtonToo()
{
    KelDeviceTree tree;
    showTree(tree);
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);

    hoverRow(tree, group);

    QVERIFY(buttonOf(group)->isVisible());
    QVERIFY(privateOf(tree).m_configBtn->isVisible());
    QCOMPARE(privateOf(tree).m_configBtn->pos(), buttonOf(group)->pos() - QPoint(35, 0));

    hoverRow(tree, tree.findItem(KelDeviceTree::ItemGigERoot, -1));
    QVERIFY(!buttonOf(group)->isVisible());
    QVERIFY(!privateOf(tree).m_configBtn->isVisible());
}

void TestDelegate::rowWithoutButtonHidesAll()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(buttonOf(tree.findCameraItem(1))->isVisible());

    hoverRow(tree, card);

    QVERIFY(!buttonOf(tree.findCameraItem(1))->isVisible());
}

void TestDelegate::pointerOutsideTheTreeShowsNoButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QCursor::setPos(0, 0);

    tree.viewport()->repaint();

    QVERIFY(!buttonOf(tree.findCameraItem(1))->isVisible());
}

void TestDelegate::pointerOnTheButtonKeepsTheRowHovered()
{
    WatchedTree tree;
    addCameras(tree, {kLongSerial});
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    showTree(tree);
    hoverRow(tree, camera);
    CustomPushButton *button = buttonOf(camera);
    const QPoint onButton = button->geometry().center();

    QCursor::setPos(tree.mapToGlobal(onButton));
    QTest::mouseMove(button, button->rect().center());
    settle();
    tree.viewport()->repaint();

    QVERIFY(button->isVisible());
    QVERIFY(tree.lastDrawn(camera).state.testFlag(QStyle::State_MouseOver));
    QVERIFY(tree.lastDrawn(camera).text != camera->text(0));
}

void TestDelegate::pointerOnTheMenuButtonKeepsTheGenTLRowHovered()
{
    WatchedTree tree;
    showTree(tree);
    QTreeWidgetItem *group = tree.findItem(KelDeviceTree::ItemGenTLRoot, -1);
    hoverRow(tree, group);
    CustomPushButton *menuButton = privateOf(tree).m_configBtn;

    QCursor::setPos(menuButton->mapToGlobal(menuButton->rect().center()));
    QTest::mouseMove(menuButton, menuButton->rect().center());
    settle();
    tree.viewport()->repaint();

    QVERIFY(menuButton->isVisible());
    QVERIFY(buttonOf(group)->isVisible());
    QVERIFY(tree.lastDrawn(group).state.testFlag(QStyle::State_MouseOver));
}

void TestDelegate::buttonIsHiddenWhenThePointerLeavesTheRow()
{
    WatchedTree tree;
    addCameras(tree, {kLongSerial});
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    showTree(tree);
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());

    hover(tree, QPoint(50, tree.viewport()->height() - 5));

    QVERIFY(!buttonOf(camera)->isVisible());
    QCOMPARE(tree.lastDrawn(camera).text, camera->text(0));
}

void TestDelegate::switchedOffButtonsStayHiddenUnderThePointer()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    tree.setRightBtnVisible(false);

    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(!buttonOf(tree.findCameraItem(1))->isVisible());

    EventCounter paints(tree.viewport(), QEvent::Paint);
    settle();
    QCOMPARE(paints.count(), 0);
}

void TestDelegate::sharedButtonStaysWithTheHoveredRow()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 1, "if-1");
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    QCOMPARE(buttonOf(interfaceItem), buttonOf(camera));
    showTree(tree);

    for (QTreeWidgetItem *item : {camera, interfaceItem}) {
        hoverRow(tree, item);
        settle();
        EventCounter paints(tree.viewport(), QEvent::Paint);
        settle();
        tree.viewport()->repaint();
        settle();

        QCOMPARE(paints.count(), 1);
        QVERIFY(buttonOf(item)->isVisible());
        QVERIFY(place(tree, item).contains(QPoint(100, buttonOf(item)->geometry().top())));
    }
}

void TestDelegate::pointerInARoleIsNeverFollowedBlindly()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    showTree(tree);

    for (const QVariant &value : {QVariant(quint64(0x1)), QVariant(quint64(0xdeadbeef)), QVariant(),
                                  QVariant(-1), QVariant(QStringLiteral("text"))}) {
        camera->setData(0, KelDeviceTree::ItemRightBtnRole, value);
        hover(tree, QPoint(50, tree.viewport()->height() - 5));
        hoverRow(tree, camera);
        QVERIFY(privateOf(tree).m_rightBtns.value(1)->isHidden());
    }

    // A row that outlives its button.
    QTreeWidgetItem *other = addDevice(tree, gigeRecord(2, "B"));
    hoverRow(tree, other);
    privateOf(tree).removeItemRightBtn(2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    hoverRow(tree, other);
    tree.viewport()->repaint();
}

void TestDelegate::paintingComesToAnEnd()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);

    for (QTreeWidgetItem *item : {tree.findCameraItem(1), tree.findItem(KelDeviceTree::ItemGenTLRoot, -1),
                                  tree.findItem(KelDeviceTree::ItemGigERoot, -1)}) {
        hoverRow(tree, item);
        settle();
        EventCounter paints(tree.viewport(), QEvent::Paint);
        settle();

        QCOMPARE(paints.count(), 0);
    }
}

void TestDelegate::hoverNeedsNoHelpOfTheStyle()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    tree.viewport()->setAttribute(Qt::WA_Hover, false);
    QStyle *windows = QStyleFactory::create(QStringLiteral("Windows"));
    windows->setParent(&tree);

    tree.viewport()->setStyle(windows);

    QVERIFY(tree.viewport()->testAttribute(Qt::WA_Hover));
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(buttonOf(tree.findCameraItem(1))->isVisible());
}

void TestDelegate::onlyTheHoveredRowIsShortened()
{
    WatchedTree tree;
    addCameras(tree, {kLongSerial, kLongSerial + QStringLiteral("2")});
    showTree(tree);
    QTreeWidgetItem *first = tree.findCameraItem(1);
    QTreeWidgetItem *second = tree.findCameraItem(2);

    hoverRow(tree, first);

    QCOMPARE(tree.lastDrawn(first).text,
             shortened(tree.lastDrawn(first), first->text(0), place(tree, first), 40));
    QVERIFY(tree.lastDrawn(first).text != first->text(0));
    QCOMPARE(tree.lastDrawn(second).text, second->text(0));

    hoverRow(tree, second);
    QCOMPARE(tree.lastDrawn(first).text, first->text(0));
}

void TestDelegate::roomForTheTextDependsOnTheIcon()
{
    WatchedTree tree;
    addCameras(tree, {kLongSerial});
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    camera->setIcon(0, QIcon());

    hoverRow(tree, camera);

    QCOMPARE(tree.lastDrawn(camera).text,
             shortened(tree.lastDrawn(camera), camera->text(0), place(tree, camera), 30));
}

void TestDelegate::cameraRowsAreDrawnTwentyPixelsFurtherLeft()
{
    WatchedTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A")});
    tree.setIndentation(15);
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);

    QCOMPARE(place(tree, camera).left(), 45);
    QCOMPARE(tree.lastDrawn(camera).rect.left(), 25);
    QCOMPARE(tree.lastDrawn(camera).rect.right(), place(tree, camera).right());
    QCOMPARE(tree.lastDrawn(card).rect, place(tree, card));
}

void TestDelegate::noRowIsDrawnBeyondTheLeftEdge()
{
    WatchedTree tree;
    addCameras(tree, {QStringLiteral("A")});
    tree.setIndentation(5);
    showTree(tree);

    QCOMPARE(place(tree, tree.findCameraItem(1)).left(), 15);
    QCOMPARE(tree.lastDrawn(tree.findCameraItem(1)).rect.left(), 0);
}

void TestDelegate::tintCoversTheRowFromTheVeryLeft()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    showTree(tree);
    QTreeWidgetItem *card = tree.findItem(KelDeviceTree::ItemNetWork, 500);
    const QImage before = tree.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);

    card->setData(0, KelDeviceTree::StayTopItemRole, 1);
    const QImage after = tree.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);

    QImage expected = before;
    QPainter painter(&expected);
    QRect row = place(tree, card);
    row.setLeft(0);
    painter.fillRect(row,
                     Custom::getDataBaseColor(
                         QStringLiteral("DeviceEnumMngColor_KelDeviceTreeDelegate_StayTopItemRole"), QRect()));
    painter.end();
    QCOMPARE(after, expected);
    QVERIFY(after != before);
}

void TestDelegate::rowsWithoutMarkAreNotTinted()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    const QImage before = tree.viewport()->grab().toImage();

    camera->setData(0, KelDeviceTree::StayTopItemRole, QVariant());

    QCOMPARE(tree.viewport()->grab().toImage(), before);
}

QTEST_MAIN(TestDelegate)
#include "tst_keldevicetree_delegate.moc"
