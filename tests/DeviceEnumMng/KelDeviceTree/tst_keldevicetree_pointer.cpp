// SPDX-License-Identifier: Apache-2.0
// A real pointer on a real display: the X server moves it and tells the window, as for a person's mouse.
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <ScriptedAccess.h>

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QProcess>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidgetItem>

#include <memory>

namespace
{

constexpr int kTreeWidth = 320;

/// Takes what is dragged out of a tree.
class WorkArea : public QWidget
{
public:
    explicit WorkArea(QWidget *parent)
        : QWidget(parent)
    {
        setAcceptDrops(true);
    }

    QList<QByteArray> dropped;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent *event) override
    {
        dropped.append(event->mimeData()->data(QStringLiteral("KelDragTreeWidgetFormat")));
        event->acceptProposedAction();
    }
};

/// A host's window: the tree at the left, a work area at the right.
struct Window : QWidget {
    Window()
    {
        auto *layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        tree = new KelDeviceTree(this);
        tree->setFixedWidth(kTreeWidth);
        tree->setDragEnabled(true);
        area = new WorkArea(this);
        layout->addWidget(tree);
        layout->addWidget(area);
        setGeometry(100, 100, 800, 500);
    }

    KelDeviceTree *tree = nullptr;
    WorkArea *area = nullptr;
};

QStringList number(const QPoint &place)
{
    return {QString::number(place.x()), QString::number(place.y())};
}

int visibleButtons(KelDeviceTree &tree)
{
    int visible = 0;
    for (const CustomPushButton *button : qAsConst(privateOf(tree).m_rightBtns)) {
        visible += button->isVisible() ? 1 : 0;
    }
    return visible;
}

} // namespace

class TestPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void pointerOnARowShowsItsButton();
    void buttonStaysWhileThePointerGoesToIt();
    void clickConnectsTheCameraUnderThePointer();
    void clickOnAConnectedCameraDisconnects();
    void disabledButtonTellsNothing();
    void clickOnAGroupRefreshesIt();
    void everyRowOnTheWayShowsOneButton();
    void leavingTheTreeHidesTheButton();
    void leavingTheTreeFromTheButtonHidesIt();
    void leavingTheButtonForTheEmptyAreaHidesIt();
    void wheelOverTheButtonNeverLeavesItOnAnotherRow();
    void vanishedCameraTakesItsButtonFromUnderThePointer();
    void producerMenuOpensBesideTheRefresh();
    void connectedCameraIsDraggedIntoTheWorkArea();
    void freeCameraIsNotDragged();
    void windowIsQuietUnderARestingPointer();

private:
    void point(const QStringList &commands);
    void moveTo(const QPoint &globalPlace);
    void moveToRow(int cameraId);
    void moveToButton(const CustomPushButton *button);
    void click();
    void drag(const QPoint &from, const QPoint &to);

    std::unique_ptr<Window> m_window;
    KelDeviceTree *m_tree = nullptr;
};

void TestPointer::initTestCase()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        QSKIP("there is no X display");
    }
    if (QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("version")}) != 0) {
        QSKIP("xdotool is not installed");
    }
}

void TestPointer::init()
{
    scriptedAccess().reset();
    m_window = std::make_unique<Window>();
    m_tree = m_window->tree;
    addCard(*m_tree, 500, "card-a");
    for (int id = 1; id <= 3; ++id) {
        addDevice(*m_tree, gigeRecord(id, "S" + std::to_string(id)));
    }
    moveTo(QPoint(0, 0));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestPointer::cleanup()
{
    m_window.reset();
}

// Waits for the program, not for its effect: tests wait for what they expect.
void TestPointer::point(const QStringList &commands)
{
    QProcess xdotool;
    xdotool.start(QStringLiteral("xdotool"), commands);
    QVERIFY(soon([&] { return xdotool.state() == QProcess::NotRunning; }));
    QCOMPARE(xdotool.exitCode(), 0);
    QCoreApplication::processEvents();
}

void TestPointer::moveTo(const QPoint &globalPlace)
{
    point(QStringList{QStringLiteral("mousemove"), QStringLiteral("--sync")} + number(globalPlace));
    QVERIFY(soon([&] { return QCursor::pos() == globalPlace; }));
    QCoreApplication::processEvents();
}

void TestPointer::moveToRow(int cameraId)
{
    const QRect row = m_tree->visualItemRect(m_tree->findCameraItem(cameraId));
    moveTo(m_tree->viewport()->mapToGlobal(QPoint(100, row.center().y())));
}

void TestPointer::moveToButton(const CustomPushButton *button)
{
    moveTo(button->mapToGlobal(QPoint(button->width() / 2, 8)));
}

void TestPointer::click()
{
    point({QStringLiteral("click"), QStringLiteral("1")});
}

void TestPointer::drag(const QPoint &from, const QPoint &to)
{
    // Small steps, as a hand makes them: a drag begins after some way only.
    QStringList commands = QStringList{QStringLiteral("mousemove")} + number(from);
    commands += {QStringLiteral("mousedown"), QStringLiteral("1")};
    constexpr int kSteps = 20;
    for (int step = 1; step <= kSteps; ++step) {
        commands += QStringList{QStringLiteral("sleep"), QStringLiteral("0.02"), QStringLiteral("mousemove")} +
                    number(from + (to - from) * step / kSteps);
    }
    commands +=
        {QStringLiteral("sleep"), QStringLiteral("0.1"), QStringLiteral("mouseup"), QStringLiteral("1")};
    point(commands);
}

void TestPointer::pointerOnARowShowsItsButton()
{
    moveToRow(2);

    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(2))->isVisible(); }));
    QCOMPARE(visibleButtons(*m_tree), 1);
}

void TestPointer::buttonStaysWhileThePointerGoesToIt()
{
    CustomPushButton *button = buttonOf(m_tree->findCameraItem(2));
    moveToRow(2);
    QVERIFY(soon([&] { return button->isVisible(); }));
    EventCounter hides(button, QEvent::Hide);

    for (int turn = 0; turn < 3; ++turn) {
        moveToButton(button);
        QVERIFY(soon([&] { return button->underMouse(); }));
        QVERIFY(button->isVisible());
        moveToRow(2);
        QVERIFY(soon([&] { return !button->underMouse(); }));
        QVERIFY(button->isVisible());
    }

    QCOMPARE(hides.count(), 0);
}

void TestPointer::clickConnectsTheCameraUnderThePointer()
{
    QSignalSpy clicked(m_tree, &KelDeviceTree::sigRightBtnClicked);
    QTreeWidgetItem *current = m_tree->currentItem();
    moveToRow(3);
    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(3))->isVisible(); }));
    moveToButton(buttonOf(m_tree->findCameraItem(3)));

    click();

    QVERIFY(soon([&] { return clicked.size() == 1; }));
    QCOMPARE(clicked.first(), (QVariantList{QVariant::fromValue(3L), false}));
    QCOMPARE(m_tree->currentItem(), current);
}

void TestPointer::clickOnAConnectedCameraDisconnects()
{
    QTreeWidgetItem *camera = m_tree->findCameraItem(1);
    connect(m_tree, &KelDeviceTree::sigRightBtnClicked, m_tree, [this](long id, bool) {
        QTreeWidgetItem *item = m_tree->findCameraItem(id);
        const bool isConnected = item->data(0, KelDeviceTree::ItemConnectedRole).toBool();
        m_tree->setCameraItemIcon(item, isConnected ? KELA_DEV_STATE_GIGE_FREE : KELA_DEV_STATE_GIGE_CONNECTED);
    });
    moveToRow(1);
    QVERIFY(soon([&] { return buttonOf(camera)->isVisible(); }));
    moveToButton(buttonOf(camera));

    click();
    QVERIFY(soon([&] { return camera->data(0, KelDeviceTree::ItemConnectedRole).toBool(); }));
    QCOMPARE(buttonOf(camera)->cBackgroundImage(Custom::StatusNormal),
             QStringLiteral(":/KelToolBarBtn/item_disconnet.png"));
    QVERIFY(buttonOf(camera)->isVisible());

    click();
    QVERIFY(soon([&] { return !camera->data(0, KelDeviceTree::ItemConnectedRole).toBool(); }));
    QCOMPARE(buttonOf(camera)->cBackgroundImage(Custom::StatusNormal),
             QStringLiteral(":/KelToolBarBtn/item_connect.png"));
}

void TestPointer::disabledButtonTellsNothing()
{
    QTreeWidgetItem *camera = m_tree->findCameraItem(1);
    m_tree->setCameraItemIcon(camera, KELA_DEV_STATE_GIGE_IN_USE);
    QSignalSpy clicked(m_tree, &KelDeviceTree::sigRightBtnClicked);
    moveToRow(1);
    QVERIFY(soon([&] { return buttonOf(camera)->isVisible(); }));
    moveToButton(buttonOf(camera));

    click();
    moveToRow(2);

    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(2))->isVisible(); }));
    QVERIFY(clicked.isEmpty());
}

void TestPointer::clickOnAGroupRefreshesIt()
{
    QTreeWidgetItem *group = m_tree->findItem(KelDeviceTree::ItemGigERoot, -1);
    QSignalSpy before(m_tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QSignalSpy finished(m_tree, &KelDeviceTree::sigFinishEnumOnce);
    moveTo(m_tree->viewport()->mapToGlobal(m_tree->visualItemRect(group).center()));
    QVERIFY(soon([&] { return buttonOf(group)->isVisible(); }));
    moveToButton(buttonOf(group));

    click();

    QVERIFY(soon([&] { return before.size() == 1; }));
    QCOMPARE(before.first(), QVariantList{1});
    QVERIFY(soon([&] { return finished.size() == 1; }));
}

void TestPointer::everyRowOnTheWayShowsOneButton()
{
    for (const int id : {1, 2, 3, 2, 1, 3}) {
        moveToRow(id);

        QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(id))->isVisible(); }));
        QCOMPARE(visibleButtons(*m_tree), 1);
    }
}

void TestPointer::leavingTheTreeHidesTheButton()
{
    moveToRow(2);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));

    moveTo(m_window->mapToGlobal(QPoint(kTreeWidth + 100, 50)));

    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 0; }));
}

void TestPointer::leavingTheTreeFromTheButtonHidesIt()
{
    moveToRow(2);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));
    moveToButton(buttonOf(m_tree->findCameraItem(2)));
    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(2))->underMouse(); }));

    moveTo(m_window->mapToGlobal(QPoint(kTreeWidth + 100, 50)));

    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 0; }));
}

void TestPointer::leavingTheButtonForTheEmptyAreaHidesIt()
{
    moveToRow(2);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));
    moveToButton(buttonOf(m_tree->findCameraItem(2)));
    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(2))->underMouse(); }));

    moveTo(m_tree->mapToGlobal(QPoint(100, m_tree->height() - 10)));

    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 0; }));
}

void TestPointer::wheelOverTheButtonNeverLeavesItOnAnotherRow()
{
    for (int id = 10; id < 80; ++id) {
        addDevice(*m_tree, gigeRecord(id, "T" + std::to_string(id)));
    }
    QCoreApplication::processEvents();
    moveToRow(12);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));
    moveToButton(buttonOf(m_tree->findCameraItem(12)));
    QSignalSpy clicked(m_tree, &KelDeviceTree::sigRightBtnClicked);

    point({QStringLiteral("click"), QStringLiteral("5")});
    QVERIFY(soon([&] { return m_tree->verticalScrollBar()->value() > 0; }));
    const QTreeWidgetItem *under = m_tree->itemAt(m_tree->viewport()->mapFromGlobal(QCursor::pos()));
    QVERIFY(under && under != m_tree->findCameraItem(12));
    QVERIFY(soon([&] { return buttonOf(under)->isVisible(); }));
    click();

    QVERIFY(soon([&] { return clicked.size() == 1; }));
    QCOMPARE(clicked.first().first().toInt(), under->data(0, KelDeviceTree::ItemIdRole).toInt());
}

void TestPointer::vanishedCameraTakesItsButtonFromUnderThePointer()
{
    moveToRow(1);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));
    moveToButton(buttonOf(m_tree->findCameraItem(1)));
    QSignalSpy clicked(m_tree, &KelDeviceTree::sigRightBtnClicked);

    // What comes up there is another camera, which a click that was on its way must not meet.
    m_tree->onDeleteDevice(QVariant::fromValue(gigeRecord(1, "S1")));
    click();
    QCOMPARE(visibleButtons(*m_tree), 0);
    QVERIFY(clicked.isEmpty());

    moveToRow(2);
    QVERIFY(soon([&] { return buttonOf(m_tree->findCameraItem(2))->isVisible(); }));
}

void TestPointer::producerMenuOpensBesideTheRefresh()
{
    QTreeWidgetItem *group = m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1);
    CustomPushButton *menuButton = privateOf(*m_tree).m_configBtn;
    moveTo(m_tree->viewport()->mapToGlobal(m_tree->visualItemRect(group).center()));
    QVERIFY(soon([&] { return menuButton->isVisible(); }));
    moveToButton(menuButton);
    QVERIFY(menuButton->isVisible());

    // The menu holds the event loop until it is closed, so all of this is one go of the pointer.
    int timesOpen = 0;
    int timesOpenWithButtons = 0;
    QTimer look;
    const QPoint away = m_window->mapToGlobal(QPoint(kTreeWidth + 300, 400));
    connect(&look, &QTimer::timeout, this, [&] {
        if (privateOf(*m_tree).m_genTLMenu->isVisible() && QCursor::pos() == away) {
            ++timesOpen;
            timesOpenWithButtons += menuButton->isVisible() && buttonOf(group)->isVisible() ? 1 : 0;
        }
    });
    look.start(20);
    point(QStringList{QStringLiteral("click"), QStringLiteral("1"), QStringLiteral("sleep"),
                      QStringLiteral("0.3"), QStringLiteral("mousemove")} +
          number(away) +
          QStringList{QStringLiteral("sleep"), QStringLiteral("0.3"), QStringLiteral("click"),
                      QStringLiteral("1")});

    QVERIFY(soon([&] { return !privateOf(*m_tree).m_genTLMenu->isVisible(); }));
    QVERIFY(soon([&] { return !menuButton->isVisible(); }));
    QVERIFY(!buttonOf(group)->isVisible());
    QVERIFY(timesOpen > 0);
    QCOMPARE(timesOpenWithButtons, timesOpen);
}

void TestPointer::connectedCameraIsDraggedIntoTheWorkArea()
{
    m_tree->onUpdateDeviceInfo(QVariant::fromValue(gigeRecord(2, "S2", KELA_DEV_STATE_GIGE_CONNECTED)));
    QSignalSpy ended(m_tree, &KelDeviceTree::sigEndDrag);
    const QRect row = m_tree->visualItemRect(m_tree->findCameraItem(2));

    drag(m_tree->viewport()->mapToGlobal(QPoint(100, row.center().y())),
         m_window->area->mapToGlobal(QPoint(200, 200)));

    QVERIFY(soon([&] { return ended.size() == 1; }));
    QCOMPARE(m_window->area->dropped, QList<QByteArray>{QByteArray("\x00\x00\x00\x02", 4)});
    QVERIFY(m_tree->findCameraItem(2));
}

void TestPointer::freeCameraIsNotDragged()
{
    QSignalSpy ended(m_tree, &KelDeviceTree::sigEndDrag);
    const QRect row = m_tree->visualItemRect(m_tree->findCameraItem(2));

    drag(m_tree->viewport()->mapToGlobal(QPoint(100, row.center().y())),
         m_window->area->mapToGlobal(QPoint(200, 200)));

    QVERIFY(soon([&] { return ended.size() == 1; }));
    QVERIFY(m_window->area->dropped.isEmpty());
}

void TestPointer::windowIsQuietUnderARestingPointer()
{
    moveToRow(2);
    QVERIFY(soon([&] { return visibleButtons(*m_tree) == 1; }));
    QTest::qWait(50);
    EventCounter paints(m_tree->viewport(), QEvent::Paint);

    // What an update without news does: nothing.
    for (int pass = 0; pass < 5; ++pass) {
        m_tree->onUpdateDeviceInfo(QVariant::fromValue(gigeRecord(2, "S2")));
        QTest::qWait(20);
    }

    QCOMPARE(paints.count(), 0);
}

QTEST_MAIN(TestPointer)
#include "tst_keldevicetree_pointer.moc"
