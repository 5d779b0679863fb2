// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTextCodec>
#include <QTranslator>
#include <QTreeWidgetItem>

namespace
{

const std::string kGreek = "\xCE\xB1"; // alpha in UTF-8
const std::string kHan = "\xD6\xD0";   // a Han character in GB18030
const QString kHanShown = QString::fromUtf8("\xE4\xB8\xAD");

/// Translates the captions of the tree into something that no language has.
class OddLanguage : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char * /*disambiguation*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "KelDeviceTree") == 0 ? QStringLiteral("odd ") + QString::fromUtf8(sourceText)
                                                      : QString();
    }
    bool isEmpty() const override { return false; }
};

KELA_STRUCT_DEVICE_INFO namedGige(int id, const std::string &name, const std::string &cardKey = "card-a")
{
    KELA_STRUCT_DEVICE_INFO record = gigeRecord(id, "S1", KELA_DEV_STATE_GIGE_FREE, cardKey);
    setField(record.deviceInfo.special.gige.userDefinedName, name);
    setField(record.deviceInfo.modelName, "M");
    return record;
}

QString label(KelDeviceTree &tree, int id)
{
    return tree.findCameraItem(id)->text(0);
}

} // namespace

class TestEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void choiceCountsForTheWholeProcess();
    void nameIsShownInTheNewEncoding();
    void modelAndSerialAreReadInTheLocalesEncoding();
    void nameFillsItsWholeField();
    void usbCameraIsLabelledAgain();
    void genTLDeviceIsLabelledAgain();
    void cameraLinkCameraShowsItsPortAsItStands();
    void cameraInTheVirtualGroupIsLabelledAgain();
    void cameraDirectlyUnderItsTransportKeepsItsLabel();
    void nothingButTheLabelChanges();
    void rowsOfTheHostKeepTheirTexts();
    void sameEncodingTellsNoChange();
    void treeMayBeDestroyedByANewLabel();
    void rowsMayBeRemovedByANewLabel();
    void hostileBytesAreShownAsTextInEveryEncoding_data();
    void hostileBytesAreShownAsTextInEveryEncoding();

    void languageChangeTranslatesTheGroups();
    void languageChangeWithoutGroupsTranslatesAll();
    void languageChangeRenamesTheButtons();
    void menuButtonHasANameInEveryLanguage();
    void languageChangeKeepsTheNamesOfTheHost();
    void compiledTranslationsSwitchInARunningWindow_data();
    void compiledTranslationsSwitchInARunningWindow();
    void otherChangesAreNotPassedOn();

private:
    QTextCodec *m_localeCodec = nullptr;
};

void TestEncoding::init()
{
    m_localeCodec = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
}

void TestEncoding::cleanup()
{
    QTextCodec::setCodecForLocale(m_localeCodec);
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
}

void TestEncoding::choiceCountsForTheWholeProcess()
{
    KelDeviceTree tree;

    tree.refreshEncodeType(KelInterface::EncodingBig5);

    QCOMPARE(KelInterface::GetEncodingType(), static_cast<int>(KelInterface::EncodingBig5));
}

void TestEncoding::nameIsShownInTheNewEncoding()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    addDevice(tree, namedGige(1, kHan));
    QVERIFY(!label(tree, 1).contains(kHanShown));

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(label(tree, 1), kHanShown + QStringLiteral(" (S1)"));
    QCOMPARE(tree.findCameraItem(1)->toolTip(0), label(tree, 1));
}

void TestEncoding::modelAndSerialAreReadInTheLocalesEncoding()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    KELA_STRUCT_DEVICE_INFO record = namedGige(1, std::string());
    setField(record.deviceInfo.modelName, "M\xE4");
    setField(record.deviceInfo.serialNumber, "S\xFC");
    addDevice(tree, record);

    tree.refreshEncodeType(KelInterface::EncodingUtf8);

    QCOMPARE(label(tree, 1), QString::fromUtf8("Mä (Sü)"));
}

void TestEncoding::nameFillsItsWholeField()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    addDevice(tree, namedGige(1, std::string(64, 'n')));
    QCOMPARE(label(tree, 1), QString(16, QLatin1Char('n')) + QStringLiteral(" (S1)"));

    tree.refreshEncodeType(KelInterface::EncodingUtf8);

    QCOMPARE(label(tree, 1), QString(64, QLatin1Char('n')) + QStringLiteral(" (S1)"));
}

void TestEncoding::usbCameraIsLabelledAgain()
{
    KelDeviceTree tree;
    KELA_USBCONTROLLER_INFO controller = {};
    controller.id = 40;
    setField(controller.identifier, "controller");
    tree.onNewUSBController(QVariant::fromValue(controller));
    KELA_STRUCT_DEVICE_INFO record = deviceRecord(1, usbCamera("U1"), KELA_DEV_STATE_USB3_FREE);
    setField(record.deviceInfo.special.usb.userDefinedName, kHan);
    record.usbController = controller;
    QTreeWidgetItem *item = addDevice(tree, record);
    QCOMPARE(item->parent(), tree.findItem(KelDeviceTree::ItemUSBController, 40));

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(label(tree, 1), kHanShown + QStringLiteral(" (U1)"));
}

void TestEncoding::genTLDeviceIsLabelledAgain()
{
    KelDeviceTree tree;
    addGenTLInterface(tree, 7000, "if-1");
    KELA_STRUCT_DEVICE_INFO record = deviceRecord(1, genTLDevice("G1", "if-1"), KELA_DEV_STATE_GENTL_FREE);
    record.genTLInterface = interfaceRecord(7000, "if-1");
    setField(record.deviceInfo.special.genTL.userDefinedName, kHan);
    addDevice(tree, record);

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(label(tree, 1), kHanShown + QStringLiteral(" (G1)"));
}

void TestEncoding::cameraLinkCameraShowsItsPortAsItStands()
{
    KelDeviceTree tree;
    auto *group = new QTreeWidgetItem(&tree, {QStringLiteral("Camera Link")});
    group->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::ItemCamLinkRoot);
    group->setData(0, KelDeviceTree::ItemIdRole, -1);
    auto *board = new QTreeWidgetItem(group, {QStringLiteral("board")});
    KELA_STRUCT_DEVICE_INFO record =
        deviceRecord(1, cameraLinkCamera("C1", "COM1"), KELA_DEV_STATE_CAMERALINK_FREE);
    setField(record.deviceInfo.special.cameraLink.portName, kGreek);
    setField(record.deviceInfo.modelName, "M\xE4");
    QTreeWidgetItem *item = addDevice(tree, record);
    group->removeChild(item);
    board->addChild(item);

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(item->text(0), QString::fromUtf8("α Mä (C1)"));
}

void TestEncoding::cameraInTheVirtualGroupIsLabelledAgain()
{
    KelDeviceTree tree;
    KELA_STRUCT_DEVICE_INFO record = namedGige(1, kHan);
    record.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;
    addDevice(tree, record);

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(label(tree, 1), kHanShown + QStringLiteral(" (S1)"));
}

void TestEncoding::cameraDirectlyUnderItsTransportKeepsItsLabel()
{
    KelDeviceTree tree;
    QTreeWidgetItem *item = addDevice(tree, namedGige(1, kHan, "unknown card"));
    QCOMPARE(item->parent(), tree.findItem(KelDeviceTree::ItemGigERoot, -1));
    const QString before = label(tree, 1);

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(label(tree, 1), before);
}

void TestEncoding::nothingButTheLabelChanges()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    QTreeWidgetItem *item = addDevice(tree, namedGige(1, kHan));
    const QIcon icon = item->icon(0);
    const QVariant button = item->data(0, KelDeviceTree::ItemRightBtnRole);
    QVector<int> roles;
    connect(
        tree.model(), &QAbstractItemModel::dataChanged, &tree,
        [&roles](const QModelIndex &, const QModelIndex &, const QVector<int> &changed) { roles += changed; });

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(item->icon(0).cacheKey(), icon.cacheKey());
    QCOMPARE(item->data(0, KelDeviceTree::ItemRightBtnRole), button);
    for (const int role : qAsConst(roles)) {
        QVERIFY(role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ToolTipRole);
    }
}

void TestEncoding::rowsOfTheHostKeepTheirTexts()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCard(tree, 500, "card-a");
    auto *note = new QTreeWidgetItem(card, {QStringLiteral("a note")});

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QCOMPARE(note->text(0), QStringLiteral("a note"));
}

void TestEncoding::sameEncodingTellsNoChange()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    tree.refreshEncodeType(KelInterface::EncodingGb18030);
    QSignalSpy changed(tree.model(), &QAbstractItemModel::dataChanged);

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QVERIFY(changed.isEmpty());
}

void TestEncoding::treeMayBeDestroyedByANewLabel()
{
    QPointer<KelDeviceTree> tree = new KelDeviceTree;
    addCard(*tree, 500, "card-a");
    addDevice(*tree, namedGige(1, kHan));
    addDevice(*tree, namedGige(2, kHan));
    connect(tree, &QTreeWidget::itemChanged, tree, [tree] { delete tree; });

    tree->refreshEncodeType(KelInterface::EncodingGb18030);

    QVERIFY(!tree);
}

void TestEncoding::rowsMayBeRemovedByANewLabel()
{
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    for (int id = 1; id <= 3; ++id) {
        addDevice(tree, namedGige(id, kHan));
    }
    connect(&tree, &QTreeWidget::itemChanged, &tree, [&tree](QTreeWidgetItem *item) {
        if (item == tree.findCameraItem(1)) {
            tree.deleteCameraItem(tree.findCameraItem(2));
        }
    });

    tree.refreshEncodeType(KelInterface::EncodingGb18030);

    QVERIFY(!tree.findCameraItem(2));
    QCOMPARE(label(tree, 3), kHanShown + QStringLiteral(" (S1)"));
}

void TestEncoding::hostileBytesAreShownAsTextInEveryEncoding_data()
{
    QTest::addColumn<int>("encoding");
    for (int encoding = 0; encoding <= 6; ++encoding) {
        QTest::newRow(QByteArray::number(encoding).constData()) << encoding;
    }
}

void TestEncoding::hostileBytesAreShownAsTextInEveryEncoding()
{
    QFETCH(int, encoding);
    KelDeviceTree tree;
    addCard(tree, 500, "card-a");
    const std::string names[] = {
        std::string(64, '\xff'), std::string(63, 'a') + '\xe4', "\x80\x81\x82", "<b>\xf0\x9f</b>", "%1%2%3",
        "\x01\x02\x1b[2J"};
    int id = 0;
    for (const std::string &name : names) {
        addDevice(tree, namedGige(++id, name));
    }

    tree.refreshEncodeType(encoding);
    showTree(tree);

    for (int camera = 1; camera <= id; ++camera) {
        QVERIFY(label(tree, camera).endsWith(QStringLiteral(" (S1)")));
        QCOMPARE(tree.findCameraItem(camera)->toolTip(0), label(tree, camera));
    }
    QCOMPARE(label(tree, 5), QStringLiteral("%1%2%3 (S1)"));
}

void TestEncoding::languageChangeTranslatesTheGroups()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);
    for (const int type : {KelDeviceTree::ItemGigEVirtualGroup, KelDeviceTree::ItemUSBVirtualGroup,
                           KelDeviceTree::ItemOtherGroup}) {
        QVERIFY(d.GetVirtualGroupItem(type, true));
    }
    OddLanguage language;
    QCoreApplication::installTranslator(&language);
    QEvent change(QEvent::LanguageChange);

    QCoreApplication::sendEvent(&tree, &change);

    QCOMPARE(tree.findItem(KelDeviceTree::ItemAll, -1)->text(0), QStringLiteral("odd All"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemGigEVirtualGroup, -1)->text(0),
             QStringLiteral("odd Virtual Device"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemUSBVirtualGroup, -1)->text(0),
             QStringLiteral("odd Virtual Device"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemOtherGroup, -1)->text(0), QStringLiteral("odd Other Device"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemGigERoot, -1)->text(0), QStringLiteral("GigE"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemUSBRoot, -1)->text(0), QStringLiteral("USB"));
    QCOMPARE(tree.findItem(KelDeviceTree::ItemGenTLRoot, -1)->text(0), QStringLiteral("GenTL"));
    QCoreApplication::removeTranslator(&language);
}

void TestEncoding::languageChangeWithoutGroupsTranslatesAll()
{
    KelDeviceTree tree;
    OddLanguage language;
    QCoreApplication::installTranslator(&language);
    QSignalSpy inserted(tree.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(tree.model(), &QAbstractItemModel::dataChanged);
    QEvent change(QEvent::LanguageChange);

    QCoreApplication::sendEvent(&tree, &change);

    QCOMPARE(tree.findItem(KelDeviceTree::ItemAll, -1)->text(0), QStringLiteral("odd All"));
    QVERIFY(inserted.isEmpty());
    QCOMPARE(changed.size(), 1);
    QCoreApplication::removeTranslator(&language);
}

void TestEncoding::languageChangeRenamesTheButtons()
{
    KelDeviceTree tree;
    CustomPushButton *camera = privateOf(tree).getItemRightBtn(7, false);
    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnDisconnect);
    OddLanguage language;
    QCoreApplication::installTranslator(&language);
    QEvent change(QEvent::LanguageChange);

    QCoreApplication::sendEvent(&tree, &change);

    QCOMPARE(camera->accessibleName(), QStringLiteral("odd Disconnect"));
    QCoreApplication::removeTranslator(&language);
}

void TestEncoding::menuButtonHasANameInEveryLanguage()
{
    KelDeviceTree tree;
    const CustomPushButton *menuButton = privateOf(tree).m_configBtn;
    QCOMPARE(menuButton->accessibleName(), QStringLiteral("Choose producers"));
    OddLanguage language;
    QCoreApplication::installTranslator(&language);
    QEvent change(QEvent::LanguageChange);

    QCoreApplication::sendEvent(&tree, &change);

    QCOMPARE(menuButton->accessibleName(), QStringLiteral("odd Choose producers"));
    QCoreApplication::removeTranslator(&language);
}

void TestEncoding::languageChangeKeepsTheNamesOfTheHost()
{
    KelDeviceTree tree;
    CustomPushButton *named = privateOf(tree).getItemRightBtn(7, false);
    const CustomPushButton *other = privateOf(tree).getItemRightBtn(8, false);
    named->setAccessibleName(QStringLiteral("Connect the camera at the door"));
    OddLanguage language;
    QCoreApplication::installTranslator(&language);
    QEvent change(QEvent::LanguageChange);

    QCoreApplication::sendEvent(&tree, &change);

    QCOMPARE(named->accessibleName(), QStringLiteral("Connect the camera at the door"));
    QCOMPARE(other->accessibleName(), QStringLiteral("odd Connect"));
    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnDisconnect);
    QCOMPARE(named->accessibleName(), QStringLiteral("odd Disconnect"));
    QCoreApplication::removeTranslator(&language);
}

void TestEncoding::compiledTranslationsSwitchInARunningWindow_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("all");
    QTest::addColumn<QString>("connect");
    QTest::newRow("German") << QStringLiteral("de") << QStringLiteral("Alle") << QStringLiteral("Verbinden");
    QTest::newRow("Chinese") << QStringLiteral("zh_CN") << QString::fromUtf8("全部")
                             << QString::fromUtf8("连接");
}

void TestEncoding::compiledTranslationsSwitchInARunningWindow()
{
    QFETCH(QString, locale);
    QFETCH(QString, all);
    QFETCH(QString, connect);
    KelDeviceTree tree;
    showTree(tree);
    CustomPushButton *camera = privateOf(tree).getItemRightBtn(7, false);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/translations/DeviceEnumMng_%1.qm").arg(locale)));

    QCoreApplication::installTranslator(&translator);
    QVERIFY(soon([&] { return tree.findItem(KelDeviceTree::ItemAll, -1)->text(0) == all; }));
    QCOMPARE(camera->accessibleName(), connect);

    QCoreApplication::removeTranslator(&translator);
    QVERIFY(soon([&] { return tree.findItem(KelDeviceTree::ItemAll, -1)->text(0) == QStringLiteral("All"); }));
    QCOMPARE(camera->accessibleName(), QStringLiteral("Connect"));
}

void TestEncoding::otherChangesAreNotPassedOn()
{
    KelDeviceTree tree;
    showTree(tree);
    QCoreApplication::processEvents();
    EventCounter paints(&tree, QEvent::UpdateRequest);
    EventCounter viewportPaints(tree.viewport(), QEvent::Paint);

    // The base class would lay out and repaint.
    for (const QEvent::Type type : {QEvent::EnabledChange, QEvent::LayoutDirectionChange, QEvent::FontChange}) {
        QEvent change(type);
        tree.changeEvent(&change);
    }
    QCoreApplication::processEvents();

    QCOMPARE(paints.count(), 0);
    QCOMPARE(viewportPaints.count(), 0);
}

QTEST_MAIN(TestEncoding)
#include "tst_keldevicetree_encoding.moc"
