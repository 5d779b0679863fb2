// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "DetailsPanel.h"
#include "MainWindow.h"
#include "Preferences.h"
#include "SteeredCameras.h"

#include <QAction>
#include <QMenuBar>
#include <QTest>

using namespace browser;

namespace
{

constexpr int kAppearsWithinMs = 5000;

const QString kLight = QStringLiteral("OS-8-0044");

} // namespace

/// What the user chooses for the window and the tree.
class TestBrowserPreferences : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void languageChangesInTheRunningWindow();
    void cameraStaysOnTopOverARestart();
    void frozenTreeCatchesUpWhenItIsResumed();
    void everythingIsReachableFromTheMenuBar();
    void hiddenKindsLeaveAndComeBack();
    void refreshingByHandWorksWithoutAutomatic();
};

void TestBrowserPreferences::languageChangesInTheRunningWindow()
{
    const auto all = [this] { return tree()->findItem(KelDeviceTree::ItemAll, -1)->text(0); };
    const auto firstMenu = [this] {
        return window()->menuBar()->actions().first()->text().remove(QLatin1Char('&'));
    };
    window()->preferences()->setLanguage(QStringLiteral("en"));
    QTRY_COMPARE(all(), QStringLiteral("All"));
    QCOMPARE(firstMenu(), QStringLiteral("Devices"));

    window()->preferences()->setLanguage(QStringLiteral("de"));
    QTRY_COMPARE(all(), QStringLiteral("Alle"));
    QTRY_COMPARE(firstMenu(), QStringLiteral("Geräte"));
    tree()->setCurrentItem(row(kLabels));
    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("Kamera")));
    keepPicture(window(), QStringLiteral("browser-de"));

    window()->preferences()->setLanguage(QStringLiteral("zh_CN"));
    QTRY_VERIFY(firstMenu().startsWith(QStringLiteral("设备")));
    QTRY_VERIFY(all() != QStringLiteral("All"));
    keepPicture(window(), QStringLiteral("browser-zh"));

    window()->preferences()->setLanguage(QStringLiteral("en"));
    QTRY_COMPARE(all(), QStringLiteral("All"));
}

void TestBrowserPreferences::cameraStaysOnTopOverARestart()
{
    tree()->setCurrentItem(row(kLabels));
    trigger(QStringLiteral("Keep on top"));
    QTRY_COMPARE(row(kLabels)->parent()->indexOfChild(row(kLabels)), 0);

    closeWindow();
    openWindow();

    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance) && row(kInlet) && row(kStranger), kAppearsWithinMs);
    QTRY_VERIFY(row(kLabels));
    QCOMPARE(row(kLabels)->parent()->indexOfChild(row(kLabels)), 0);
    QCOMPARE(row(kLabels)->data(0, KelDeviceTree::StayTopItemRole).toInt(), 1);
}

void TestBrowserPreferences::frozenTreeCatchesUpWhenItIsResumed()
{
    trigger(QStringLiteral("Freeze the tree"));
    steeredcameras::tell({"unplug", "conveyor"});
    QTest::qWait(kLeavesWithinMs);
    QVERIFY(row(kConveyor));

    trigger(QStringLiteral("Freeze the tree"));

    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
    QVERIFY(row(kEntrance));
}

void TestBrowserPreferences::everythingIsReachableFromTheMenuBar()
{
    for (const char *text : {"Refresh all",
                             "Freeze the tree",
                             "Add camera by address…",
                             "Filters…",
                             "Connect",
                             "Show live values",
                             "Keep on top",
                             "Assign temporary address…",
                             "Take out",
                             "Refresh this group",
                             "Choose producers…",
                             "Remove imported producer",
                             "Refresh automatically",
                             "GigE",
                             "GenTL",
                             "Allow virtual ports of producers",
                             "Buttons in rows",
                             "Dark",
                             "Light",
                             "Deutsch",
                             "GB18030",
                             "Virtual devices"})
        QVERIFY2(action(QString::fromUtf8(text)), text);

    tree()->setCurrentItem(tree()->findItem(KelDeviceTree::ItemGigERoot, -1));
    trigger(QStringLiteral("Refresh this group"));
    QVERIFY(!row(kEntrance)->data(0, Qt::AccessibleTextRole).toString().isEmpty());
}

void TestBrowserPreferences::hiddenKindsLeaveAndComeBack()
{
    QTreeWidgetItem *other = row(kLight)->parent();
    window()->preferences()->setKindVisible(QStringLiteral("other"), false);
    QVERIFY(other->isHidden());
    QVERIFY(!row(kEntrance)->isHidden());

    window()->preferences()->setKindVisible(QStringLiteral("other"), true);
    QVERIFY(!other->isHidden());
}

void TestBrowserPreferences::refreshingByHandWorksWithoutAutomatic()
{
    window()->preferences()->setAutomaticRefresh(false);
    QTRY_COMPARE(window()->scheduler()->running(), 0U);
    steeredcameras::tell({"unplug", "conveyor"});
    QTest::qWait(kLeavesWithinMs);
    QVERIFY(row(kConveyor));

    trigger(QStringLiteral("Refresh all"));

    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
}

QTEST_MAIN(TestBrowserPreferences)
#include "tst_browserpreferences.moc"
