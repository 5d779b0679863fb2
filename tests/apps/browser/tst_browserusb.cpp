// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "DetailsPanel.h"
#include "MainWindow.h"

#include <QIcon>
#include <QTest>

using namespace browser;

/// Rows of USB3 Vision cameras on a mocked bus: where they stand, what they are called, how they look.
class TestBrowserUsb : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void rowHasTheIconOfItsState_data();
    void rowHasTheIconOfItsState();
    void rowsStandBelowTheirGroupAndNothingElseDoes();
    void tooSlowALinkIsExplained();
};

void TestBrowserUsb::initTestCase()
{
    BrowserTest::initTestCase();
    if (qEnvironmentVariableIsEmpty("UMOCKDEV_DIR"))
        QSKIP("runs on mocked devices only");
}

void TestBrowserUsb::rowHasTheIconOfItsState_data()
{
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("icon");
    const auto add = [](const char *serial, const char *label, KELA_DEV_STATE state, const char *icon) {
        QTest::newRow(serial) << QString::fromLatin1(serial) << QString::fromLatin1(label) << int(state)
                              << QStringLiteral(":/Kel/tree/%1.png").arg(QLatin1String(icon));
    };
    add("FREE3", "Free (FREE3)", KELA_DEV_STATE_USB3_FREE, "USBDisConnect");
    add("USED3", "EX-1000 (USED3)", KELA_DEV_STATE_USB3_IN_USE, "USBInUse");
    add("SLOW3", "EX-1000 (SLOW3)", KELA_DEV_STATE_USB3_UNUSABLE, "USBNoReachable");
    add("FREE2", "EX-200 (FREE2)", KELA_DEV_STATE_USB2_FREE, "USB2DisConnect");
    add("USED2", "EX-200 (USED2)", KELA_DEV_STATE_USB2_IN_USE, "USB2InUse");
    add("SLOW2", "EX-200 (SLOW2)", KELA_DEV_STATE_USB2_UNUSABLE, "USB2NoReachable");
}

void TestBrowserUsb::rowHasTheIconOfItsState()
{
    QFETCH(QString, serial);
    QFETCH(QString, label);
    QFETCH(int, state);
    QFETCH(QString, icon);
    QTRY_VERIFY_WITH_TIMEOUT(row(serial), 5000);

    QCOMPARE(row(serial)->text(0), label);
    QCOMPARE(stateOf(serial), state);
    const QIcon expected(icon);
    QVERIFY(!expected.isNull());
    QCOMPARE(row(serial)->icon(0).pixmap(24, 24).toImage(), expected.pixmap(24, 24).toImage());
}

void TestBrowserUsb::rowsStandBelowTheirGroupAndNothingElseDoes()
{
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("SHUT2")), 5000);
    const QTreeWidgetItem *group = tree()->findItem(KelDeviceTree::ItemUSBRoot, -1);

    // Root may open the two that are closed to others, so their state depends on who runs this.
    QCOMPARE(rows::devicesBelow(group).size(), 8);
    for (const char *stranger : {"W1", "S1", "CUT", "LIES"})
        QVERIFY2(!row(QLatin1String(stranger)), stranger);
    keepPicture(window(), QStringLiteral("usb-rows"));
}

void TestBrowserUsb::tooSlowALinkIsExplained()
{
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("SLOW3")), 5000);
    tree()->setCurrentItem(row(QStringLiteral("SLOW3")));

    QTRY_VERIFY(window()->details()->asText().contains(QStringLiteral("12 Mbit/s")));
}

QTEST_MAIN(TestBrowserUsb)
#include "tst_browserusb.moc"
