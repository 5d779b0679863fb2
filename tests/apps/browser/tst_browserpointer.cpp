// SPDX-License-Identifier: Apache-2.0
#include "SteeredCameras.h"

#include "MainWindow.h"
#include "Preferences.h"
#include "TreeHost.h"
#include "TreeRows.h"
#include "WorkArea.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>

#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace browser;

namespace
{

const QString kEntrance = QStringLiteral("HO-20117");
const QString kLabels = QStringLiteral("7714-0031");

/// Moves the display's own pointer, so that everything between it and the tree takes part.
void pointer(const QStringList &steps)
{
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), steps);
    QVERIFY(tool.waitForFinished(10000));
    QCOMPARE(tool.exitCode(), 0);
}

QStringList moveTo(const QPoint &place)
{
    return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())};
}

} // namespace

/// The browser under a real mouse pointer.
class TestBrowserPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void hoverShowsTheButtonOfThatRowAlone();
    void leavingTheTreeHidesTheButton();
    void rowsShowNoButtonsWhereTheUserWantsNone();
    void clickConnectsAndDisconnects();
    void clickOnAHeldCameraDoesNothing();
    void clickRefreshesAGroup();
    void connectedCameraIsDraggedIntoTheWorkArea();
    void freeCameraIsNotDragged();

private:
    KelDeviceTree *tree() const { return m_window->treeHost()->tree(); }
    QTreeWidgetItem *row(const QString &serial) const { return rows::rowOfSerial(*tree(), serial); }
    long idOf(const QString &serial) const { return rows::idOf(row(serial)); }
    QPoint placeOf(const QTreeWidgetItem *item) const;
    CustomPushButton *hover(const QTreeWidgetItem *item);
    void clickButton(const QTreeWidgetItem *item);
    int visibleButtons() const;
    SessionState session(const QString &serial) const;
    void drag(const QPoint &from, const QPoint &to);

    std::unique_ptr<MainWindow> m_window;
};

void TestBrowserPointer::initTestCase()
{
    if (!steeredcameras::areThere())
        QSKIP("no private network here");
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
        QSKIP("xdotool is not installed");
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        QSKIP("there is no X server here");
}

void TestBrowserPointer::init()
{
    QDir(KelInterface::programDataPath()).removeRecursively();
    CommandLine line;
    line.language = QStringLiteral("en");
    m_window = std::make_unique<MainWindow>(line);
    m_window->move(40, 40);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance) && row(kLabels), 5000);
    pointer({"mousemove", "1590", "1190"});
}

void TestBrowserPointer::cleanup()
{
    m_window.reset();
}

QPoint TestBrowserPointer::placeOf(const QTreeWidgetItem *item) const
{
    const QPoint middle = tree()->visualItemRect(item).center();
    return tree()->viewport()->mapToGlobal(QPoint(80, middle.y()));
}

CustomPushButton *TestBrowserPointer::hover(const QTreeWidgetItem *item)
{
    pointer(moveTo(placeOf(item)));
    CustomPushButton *button = rows::buttonOf(*tree(), item);
    [&] { QTRY_VERIFY(button && button->isVisible()); }();
    return button;
}

void TestBrowserPointer::clickButton(const QTreeWidgetItem *item)
{
    const CustomPushButton *button = hover(item);
    QVERIFY(button);
    pointer(moveTo(button->mapToGlobal(button->rect().center())) + QStringList{"sleep", "0.05", "click", "1"});
}

int TestBrowserPointer::visibleButtons() const
{
    int count = 0;
    const QList<CustomPushButton *> buttons = tree()->findChildren<CustomPushButton *>();
    for (const CustomPushButton *button : buttons)
        count += button->isVisible() ? 1 : 0;
    return count;
}

SessionState TestBrowserPointer::session(const QString &serial) const
{
    return m_window->connections()->session(idOf(serial)).state;
}

void TestBrowserPointer::drag(const QPoint &from, const QPoint &to)
{
    const QPoint between = (from + to) / 2;
    const QStringList pause{"sleep", "0.1"};
    // The drag has an event loop of its own, so the pointer is moved by somebody who does not wait.
    QVERIFY(QProcess::startDetached(QStringLiteral("xdotool"),
                                    moveTo(from) + pause + QStringList{"mousedown", "1"} + pause +
                                        moveTo(from + QPoint(25, 2)) + pause + moveTo(between) + pause +
                                        moveTo(to) + pause + moveTo(to + QPoint(3, 3)) + pause +
                                        QStringList{"mouseup", "1"}));
}

void TestBrowserPointer::hoverShowsTheButtonOfThatRowAlone()
{
    hover(row(kEntrance));
    QCOMPARE(visibleButtons(), 1);

    const CustomPushButton *other = hover(row(kLabels));
    QTRY_COMPARE(visibleButtons(), 1);
    QVERIFY(other->isVisible());
}

void TestBrowserPointer::leavingTheTreeHidesTheButton()
{
    hover(row(kEntrance));

    pointer(moveTo(m_window->workArea()->mapToGlobal(m_window->workArea()->rect().center())));

    QTRY_COMPARE(visibleButtons(), 0);
}

void TestBrowserPointer::rowsShowNoButtonsWhereTheUserWantsNone()
{
    m_window->preferences()->setRowButtonsShown(false);
    pointer(moveTo(placeOf(row(kEntrance))));
    QTest::qWait(300);
    pointer(moveTo(placeOf(row(kLabels))));
    QTest::qWait(300);
    QCOMPARE(visibleButtons(), 0);

    m_window->preferences()->setRowButtonsShown(true);
    hover(row(kEntrance));
    QCOMPARE(visibleButtons(), 1);
}

void TestBrowserPointer::clickConnectsAndDisconnects()
{
    clickButton(row(kEntrance));
    QTRY_COMPARE(session(kEntrance), SessionState::Open);
    QVERIFY(steeredcameras::describe("entrance").contains(QStringLiteral("held")));

    clickButton(row(kEntrance));
    QTRY_COMPARE(session(kEntrance), SessionState::None);
    QVERIFY(!steeredcameras::describe("entrance").contains(QStringLiteral("held")));
}

void TestBrowserPointer::clickOnAHeldCameraDoesNothing()
{
    clickButton(row(kLabels));

    QTest::qWait(300);
    QCOMPARE(session(kLabels), SessionState::None);
}

void TestBrowserPointer::clickRefreshesAGroup()
{
    QSignalSpy refreshed(tree(), &KelDeviceTree::sigBeforeRefreshBtnClicked);

    clickButton(tree()->findItem(KelDeviceTree::ItemGigERoot, -1));

    QTRY_COMPARE(refreshed.size(), 1);
    QCOMPARE(refreshed.first().first().toInt(), int(KELA_INTERFACE_TYPE_GIGE));
}

void TestBrowserPointer::connectedCameraIsDraggedIntoTheWorkArea()
{
    clickButton(row(kEntrance));
    QTRY_COMPARE(session(kEntrance), SessionState::Open);
    QSignalSpy ended(tree(), &KelDeviceTree::sigEndDrag);
    const QWidget *area = m_window->workArea();

    drag(placeOf(row(kEntrance)), area->mapToGlobal(area->rect().center()));

    QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 1, 8000);
    QCOMPARE(m_window->workArea()->liveViewCount(), 1);
}

void TestBrowserPointer::freeCameraIsNotDragged()
{
    QSignalSpy ended(tree(), &KelDeviceTree::sigEndDrag);
    const QWidget *area = m_window->workArea();

    drag(placeOf(row(kEntrance)), area->mapToGlobal(area->rect().center()));

    QTRY_VERIFY_WITH_TIMEOUT(!ended.isEmpty(), 8000);
    QCOMPARE(m_window->workArea()->liveViewCount(), 0);
}

QTEST_MAIN(TestBrowserPointer)
#include "tst_browserpointer.moc"
