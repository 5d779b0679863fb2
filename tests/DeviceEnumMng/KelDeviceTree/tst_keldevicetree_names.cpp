// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelPlainToolTips.h>

#include <QCursor>
#include <QHelpEvent>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeWidgetItem>

class TestNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void namesAreDrawnAsTheyAre_data();
    void namesAreDrawnAsTheyAre();
    void toolTipShowsMarkupAsWritten();
    void plainToolTipIsLeftAsItIs();
};

void TestNames::init()
{
    QCursor::setPos(0, 0);
}

void TestNames::namesAreDrawnAsTheyAre_data()
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

void TestNames::namesAreDrawnAsTheyAre()
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

void TestNames::toolTipShowsMarkupAsWritten()
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

void TestNames::plainToolTipIsLeftAsItIs()
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

QTEST_MAIN(TestNames)
#include "tst_keldevicetree_names.moc"
