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

namespace
{

// A row whose name a device, a card, a controller or a producer chose.
QTreeWidgetItem *addNamed(KelDeviceTree &tree, int itemType, const std::string &name)
{
    if (itemType == KelDeviceTree::ItemNetWork) {
        KELA_NETWORK card = cardRecord(500, "card-a");
        setField(card.name, name);
        tree.onNewNetWork(QVariant::fromValue(card));
    } else if (itemType == KelDeviceTree::ItemUSBController) {
        addController(tree, 500, name);
    } else if (itemType == KelDeviceTree::ItemGenTLInterface) {
        KELA_GENTL_IF_INFO interface = interfaceRecord(500, "if-a");
        setField(interface.displayName, name);
        tree.onNewGenTLInterface(QVariant::fromValue(interface));
    } else {
        addCard(tree, 500, "card-a");
        KELA_STRUCT_DEVICE_INFO record = gigeRecord(500, "S1");
        setField(record.deviceInfo.special.gige.userDefinedName, name);
        return addDevice(tree, record);
    }
    return tree.findItem(static_cast<KelDeviceTree::ItemType>(itemType), 500);
}

} // namespace

class TestNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void namesAreDrawnAsTheyAre_data();
    void namesAreDrawnAsTheyAre();
    void lineBreaksKeepTheRowOneLineHigh_data();
    void lineBreaksKeepTheRowOneLineHigh();
    void toolTipShowsMarkupAsWritten_data();
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
    QTest::newRow("invalid bytes") << QByteArray("a\xff\xfe\xc3") << QStringLiteral("a\uFFFD\uFFFD\uFFFD");
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
    QCOMPARE(camera->text(0), shown + QStringLiteral(" (S1)"));
    hoverRow(tree, camera);
    QVERIFY(buttonOf(camera)->isVisible());
}

void TestNames::lineBreaksKeepTheRowOneLineHigh_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("line feed") << QByteArray("a\nFake (S2)");
    QTest::newRow("carriage return") << QByteArray("a\r\nb");
    QTest::newRow("line separator") << QByteArray("a\xE2\x80\xA8"
                                                  "b");
    QTest::newRow("paragraph separator") << QByteArray("a\xE2\x80\xA9"
                                                       "b");
    QTest::newRow("nothing else") << QByteArray(64, '\n');
}

void TestNames::lineBreaksKeepTheRowOneLineHigh()
{
    QFETCH(QByteArray, name);
    WatchedTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    KELA_STRUCT_DEVICE_INFO record = gigeRecord(2, "B");
    setField(record.deviceInfo.special.gige.userDefinedName, name.toStdString());
    tree.onUpdateDeviceInfo(QVariant::fromValue(record));
    const QTreeWidgetItem *plain = tree.findCameraItem(1);
    QTreeWidgetItem *broken = tree.findCameraItem(2);
    showTree(tree);

    QCOMPARE(tree.visualItemRect(broken).height(), tree.visualItemRect(plain).height());
    QCOMPARE(broken->text(0), QString::fromUtf8(name) + QStringLiteral(" (B)"));
    const QString drawn = tree.lastDrawn(broken).text;
    QCOMPARE(drawn.size(), broken->text(0).size());
    for (const QChar lineBreak :
         {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
        QVERIFY(!drawn.contains(lineBreak));
    }
}

void TestNames::toolTipShowsMarkupAsWritten_data()
{
    QTest::addColumn<int>("itemType");
    QTest::newRow("camera") << int(KelDeviceTree::ItemGigECamera);
    QTest::newRow("network card") << int(KelDeviceTree::ItemNetWork);
    QTest::newRow("USB controller") << int(KelDeviceTree::ItemUSBController);
    QTest::newRow("GenTL interface") << int(KelDeviceTree::ItemGenTLInterface);
}

void TestNames::toolTipShowsMarkupAsWritten()
{
    QFETCH(int, itemType);
    KelDeviceTree tree;
    QTreeWidgetItem *row = addNamed(tree, itemType, "<b>x</b>  &amp;");
    showTree(tree);
    const QPoint place = tree.visualItemRect(row).center();
    hoverRow(tree, row);

    QHelpEvent help(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree.viewport(), &help);

    QVERIFY(row->toolTip(0).contains(QStringLiteral("<b>x</b>  &amp;")));
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText(), row->toolTip(0));
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
