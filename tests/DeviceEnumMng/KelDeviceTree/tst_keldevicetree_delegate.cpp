// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomDefine.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTreeDelegate.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>
#include <DeviceEnumMng/KelDeviceTree/KelPlainToolTips.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QCursor>
#include <QHash>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeWidgetItem>

namespace
{

/// Remembers how each row was last drawn.
class RecordingStyle : public QProxyStyle
{
public:
    RecordingStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        if (element == CE_ItemViewItem) {
            const auto *row = qstyleoption_cast<const QStyleOptionViewItem *>(option);
            drawn.insert(row->index, *row);
            ++count;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    mutable QHash<QModelIndex, QStyleOptionViewItem> drawn;
    mutable int count = 0;
};

/// A tree that tells how its rows are drawn.
struct WatchedTree : KelDeviceTree {
    WatchedTree()
    {
        style.setParent(this);
        setStyle(&style);
        viewport()->setStyle(&style);
    }
    ~WatchedTree() override { style.setParent(nullptr); }

    QStyleOptionViewItem lastDrawn(const QTreeWidgetItem *item)
    {
        return style.drawn.value(KelDeviceTreePrivate::indexOf(this, item));
    }

    RecordingStyle style;
};

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

void settle()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::processEvents();
    }
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

    void scrollingHidesTheButton();
    void foldingHidesTheButtonOfARowBelow();
    void hidingARowHidesItsButton();
    void removingARowHidesItsButton();
    void removingAContainerHidesAButtonBelow();
    void buttonFollowsARowThatIsPushedDown();
    void rowAddedBelowLeavesTheButtonAlone();
    void clearingTheTreeHidesTheButton();
    void closingTheMenuHidesWhatThePointerLeft();

    void namesAreDrawnAsTheyAre_data();
    void namesAreDrawnAsTheyAre();
    void toolTipShowsMarkupAsWritten();
    void plainToolTipIsLeftAsItIs();
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

void TestDelegate::scrollingHidesTheButton()
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

void TestDelegate::foldingHidesTheButtonOfARowBelow()
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

void TestDelegate::hidingARowHidesItsButton()
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

void TestDelegate::removingARowHidesItsButton()
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

void TestDelegate::removingAContainerHidesAButtonBelow()
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

void TestDelegate::buttonFollowsARowThatIsPushedDown()
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

void TestDelegate::rowAddedBelowLeavesTheButtonAlone()
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

void TestDelegate::clearingTheTreeHidesTheButton()
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

void TestDelegate::closingTheMenuHidesWhatThePointerLeft()
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

void TestDelegate::namesAreDrawnAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup") << QByteArray("<b>bold</b><br>") << QStringLiteral("<b>bold</b><br>");
    QTest::newRow("placeholders") << QByteArray("%1 %2 %s %n") << QStringLiteral("%1 %2 %s %n");
    QTest::newRow("without NUL") << QByteArray(64, 'x') << QString(64, QLatin1Char('x'));
    QTest::newRow("emoji") << QByteArray("\xF0\x9F\x93\xB7 cam") << QString::fromUtf8("\xF0\x9F\x93\xB7 cam");
    QTest::newRow("right to left") << QByteArray("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D")
                                   << QString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D");
    QTest::newRow("invalid bytes") << QByteArray("a\xff\xfe\xc3") << QString();
    QTest::newRow("control characters")
        << QByteArray("a\x01\x1b[31m\x7f\tb") << QStringLiteral("a\x01\x1b[31m\x7f\tb");
    QTest::newRow("overrides of direction") << QByteArray("\xE2\x80\xAE"
                                                          "evil")
                                            << QString::fromUtf8("\xE2\x80\xAE"
                                                                 "evil");
}

void TestDelegate::namesAreDrawnAsTheyAre()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, shown);
    WatchedTree tree;
    addCard(tree, 500, "card-a");
    KELA_STRUCT_DEVICE_INFO record = gigeRecord(1, "S1");
    setField(record.deviceInfo.special.gige.userDefinedName, name.toStdString());
    addDevice(tree, record);
    tree.onUpdateDeviceInfo(QVariant::fromValue(record));
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    showTree(tree);

    QCOMPARE(tree.lastDrawn(camera).text, camera->text(0));
    QCOMPARE(camera->toolTip(0), camera->text(0));
    if (!shown.isEmpty()) {
        QCOMPARE(camera->text(0), shown + QStringLiteral(" (S1)"));
    }
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());
}

void TestDelegate::toolTipShowsMarkupAsWritten()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    KELA_STRUCT_DEVICE_INFO record = gigeRecord(1, "S1");
    setField(record.deviceInfo.special.gige.userDefinedName, "<b>x</b>  &amp;");
    QTreeWidgetItem *camera = addDevice(tree, record);
    showTree(tree);
    const QPoint place = tree.visualItemRect(camera).center();
    hoverRow(tree, camera);

    QHelpEvent help(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree.viewport(), &help);

    QCOMPARE(camera->toolTip(0), QStringLiteral("<b>x</b>  &amp; (S1)"));
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText(), camera->toolTip(0));
    QVERIFY(QToolTip::isVisible());
    QToolTip::hideText();
}

void TestDelegate::plainToolTipIsLeftAsItIs()
{
    QCOMPARE(KelPlainToolTips::escaped(QStringLiteral("a < b & c")), QStringLiteral("a < b & c"));

    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *camera = tree.findCameraItem(1);
    showTree(tree);
    const QPoint place = tree.visualItemRect(camera).center();
    hoverRow(tree, camera);

    QHelpEvent help(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree.viewport(), &help);

    QCOMPARE(QToolTip::text(), camera->toolTip(0));
    QToolTip::hideText();
}

QTEST_MAIN(TestDelegate)
#include "tst_keldevicetree_delegate.moc"
