// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidgetItem>

namespace
{

constexpr KELA_INTERFACE_TYPE kKnownTransports[] = {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                                    KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL};

KELA_DEVICE_INFO_EX deviceOf(KELA_INTERFACE_TYPE transport, const std::string &vendor, const std::string &model)
{
    KELA_DEVICE_INFO_EX info = {};
    info.transport = transport;
    setField(info.modelName, model);
    switch (transport) {
    case KELA_INTERFACE_TYPE_USB:
        info.special.usb.portLocator[0] = 2;
        setField(info.special.usb.manufacturerName, vendor);
        break;
    case KELA_INTERFACE_TYPE_CAMERALINK:
        setField(info.special.cameraLink.manufacturerName, vendor);
        break;
    case KELA_INTERFACE_TYPE_GENTL:
        setField(info.special.genTL.vendorName, vendor);
        break;
    default:
        setField(info.special.gige.manufacturerName, vendor);
        break;
    }
    return info;
}

KELA_STRUCT_DEVICE_INFO usbRecord(int id, const std::string &serial)
{
    return deviceRecord(id, usbCamera(serial), KELA_DEV_STATE_USB3_FREE);
}

} // namespace

class TestVisibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void vendorIsComparedWholeAndInAnyCase();
    void vendorFieldDependsOnTheTransport();
    void excludedVendorIsKeptOut();
    void emptyListsLetEverythingPass();
    void unknownStateKeepsEverythingOut_data();
    void unknownStateKeepsEverythingOut();
    void entriesAreNeitherTrimmedNorWildcards();
    void modelIsJudgedAfterTheVendor();
    void unknownTransportHasAnEmptyVendor();
    void textsAreUtf8AndMayFillTheirFields();
    void usbCameraInItsBootLoaderNeverGetsARow();
    void bootLoaderIsToldByTheWholeWord();
    void filtersAreReadOnceWhenTheTreeIsMade();
    void cameraThatIsInStaysInWhenItsNameStopsPassing();
    void cameraThatIsKeptOutTellsNobody();

    void freshTreeShowsEveryType();
    void camerasOfAVisibleGroupAreMadeHidden();
    void camerasOfAHiddenGroupAreNotMade();
    void groupOfADeviceDependsOnItsPlacement_data();
    void groupOfADeviceDependsOnItsPlacement();
    void updateOfAHiddenGroupMakesNoRowEither();
    void emptyListShowsEveryRowAgain();
    void cameraIsHiddenUnlessItsOwnTypeIsListed();
    void rowsOfTheHostAreJudgedByTheirType();
    void rowsThatStayAsTheyAreAreNotLaidOutAnew();
    void hidingAnItemOfNoTreeDoesNothing();
    void hiddenRowTakesItsButtonAlong();

private:
    QTemporaryDir m_programData;
};

void TestVisibility::init()
{
    QVERIFY(m_programData.isValid());
    qputenv("KELS_PROGRAM_DATA", m_programData.path().toLocal8Bit());
    QVERIFY(KelInterface::setVendorFilter(KelInterface::FilterOff, QString(), QString()));
    QVERIFY(KelInterface::setModelFilter(KelInterface::FilterOff, QString(), QString()));
}

void TestVisibility::cleanup()
{
    qunsetenv("KELS_PROGRAM_DATA");
}

void TestVisibility::vendorIsComparedWholeAndInAnyCase()
{
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("Acme/"), QString());
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);

    QVERIFY(d.filterVendor(QStringLiteral("ACME")));
    QVERIFY(!d.filterVendor(QStringLiteral("Acme Corp")));
    QVERIFY(!d.filterVendor(QString()));
}

void TestVisibility::vendorFieldDependsOnTheTransport()
{
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("Acme"), QString());
    KelDeviceTree tree;

    for (const KELA_INTERFACE_TYPE transport : kKnownTransports) {
        QVERIFY(privateOf(tree).isValidDevice(deviceOf(transport, "acme", "M")));
        QVERIFY(!privateOf(tree).isValidDevice(deviceOf(transport, "other", "M")));
    }
}

void TestVisibility::excludedVendorIsKeptOut()
{
    KelInterface::setVendorFilter(KelInterface::FilterExclude, QStringLiteral("Good"),
                                  QStringLiteral("/Bad//Worse"));
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);

    QVERIFY(!d.filterVendor(QStringLiteral("bad")));
    QVERIFY(!d.filterVendor(QStringLiteral("WORSE")));
    QVERIFY(d.filterVendor(QStringLiteral("Good")));
    QVERIFY(d.filterVendor(QString()));
}

void TestVisibility::emptyListsLetEverythingPass()
{
    for (const int state : {0, 1, 2}) {
        KelInterface::setVendorFilter(state, QString(), QString());
        KelInterface::setModelFilter(state, QStringLiteral("//"), QStringLiteral("/"));
        KelDeviceTree tree;

        QVERIFY(privateOf(tree).filterVendor(QStringLiteral("any")));
        QVERIFY(privateOf(tree).filterModel(QStringLiteral("any")));
    }
}

void TestVisibility::unknownStateKeepsEverythingOut_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("3") << 3;
    QTest::newRow("negative") << -1;
    QTest::newRow("large") << 4711;
}

void TestVisibility::unknownStateKeepsEverythingOut()
{
    QFETCH(int, state);
    for (const auto setFilter : {&KelInterface::setVendorFilter, &KelInterface::setModelFilter}) {
        QVERIFY(setFilter(state, QString(), QString()));
        KelDeviceTree tree;
        for (const KELA_INTERFACE_TYPE transport : kKnownTransports) {
            QVERIFY(!privateOf(tree).isValidDevice(deviceOf(transport, "any", "any")));
        }
        QVERIFY(!addDevice(tree, gigeRecord(1, "S")));

        QVERIFY(setFilter(KelInterface::FilterOff, QString(), QString()));
        KelDeviceTree open;
        QVERIFY(addDevice(open, gigeRecord(1, "S")));
    }
}

void TestVisibility::entriesAreNeitherTrimmedNorWildcards()
{
    KelInterface::setModelFilter(KelInterface::FilterInclude, QStringLiteral("SX*/ SX-200 /.*"), QString());
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);

    QVERIFY(!d.filterModel(QStringLiteral("SX-100")));
    QVERIFY(!d.filterModel(QStringLiteral("SX-200")));
    QVERIFY(d.filterModel(QStringLiteral("sx*")));
    QVERIFY(d.filterModel(QStringLiteral(" sx-200 ")));
}

void TestVisibility::modelIsJudgedAfterTheVendor()
{
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("Acme"), QString());
    KelInterface::setModelFilter(KelInterface::FilterExclude, QString(), QStringLiteral("Old"));
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);

    QVERIFY(d.filterDevice(deviceOf(KELA_INTERFACE_TYPE_GIGE, "Acme", "New")));
    QVERIFY(!d.filterDevice(deviceOf(KELA_INTERFACE_TYPE_GIGE, "Acme", "OLD")));
    QVERIFY(!d.filterDevice(deviceOf(KELA_INTERFACE_TYPE_GIGE, "Other", "New")));
}

void TestVisibility::unknownTransportHasAnEmptyVendor()
{
    KelInterface::setVendorFilter(KelInterface::FilterExclude, QString(), QStringLiteral("Acme"));
    KelDeviceTree excluding;
    QVERIFY(privateOf(excluding).filterDevice(deviceOf(KELA_INTERFACE_TYPE_1394, "Acme", "M")));

    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("Acme"), QString());
    KelDeviceTree including;
    QVERIFY(!privateOf(including).filterDevice(deviceOf(KELA_INTERFACE_TYPE_GENTL_INTERFACE, "Acme", "M")));
}

void TestVisibility::textsAreUtf8AndMayFillTheirFields()
{
    const QString model(64, QLatin1Char('m'));
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QString::fromUtf8("Kamera-Müller"), QString());
    KelInterface::setModelFilter(KelInterface::FilterInclude, model, QString());
    KelDeviceTree tree;

    QVERIFY(privateOf(tree).filterDevice(
        deviceOf(KELA_INTERFACE_TYPE_GIGE, "Kamera-M\xC3\xBCller", model.toStdString())));
    QVERIFY(!privateOf(tree).filterDevice(
        deviceOf(KELA_INTERFACE_TYPE_GIGE, "Kamera-M\xFCller", model.toStdString())));
}

void TestVisibility::usbCameraInItsBootLoaderNeverGetsARow()
{
    KelDeviceTree tree;
    KELA_STRUCT_DEVICE_INFO record = usbRecord(1, "U");
    setField(record.deviceInfo.special.usb.portLocator, std::string());
    QSignalSpy made(&tree, &KelDeviceTree::sigNewDeviceItem);

    tree.onNewDevice(QVariant::fromValue(record));
    tree.onUpdateDeviceInfo(QVariant::fromValue(record));

    QVERIFY(!tree.findCameraItem(1));
    QVERIFY(made.isEmpty());
}

void TestVisibility::bootLoaderIsToldByTheWholeWord()
{
    KelDeviceTree tree;
    for (int byte = 0; byte < 4; ++byte) {
        KELA_DEVICE_INFO_EX info = usbCamera("U");
        setField(info.special.usb.portLocator, std::string());
        QVERIFY(privateOf(tree).IsUbootDevice(info));
        info.special.usb.portLocator[byte] = 1;
        QVERIFY(!privateOf(tree).IsUbootDevice(info));
    }
    KELA_DEVICE_INFO_EX gige = {};
    gige.transport = KELA_INTERFACE_TYPE_GIGE;
    QVERIFY(!privateOf(tree).IsUbootDevice(gige));
}

void TestVisibility::filtersAreReadOnceWhenTheTreeIsMade()
{
    KelDeviceTree before;
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("nobody"), QString());
    KelDeviceTree after;

    QVERIFY(addDevice(before, usbRecord(1, "U")));
    QVERIFY(!addDevice(after, usbRecord(1, "U")));
}

void TestVisibility::cameraThatIsInStaysInWhenItsNameStopsPassing()
{
    KelInterface::setModelFilter(KelInterface::FilterExclude, QString(), QStringLiteral("Old"));
    KelDeviceTree tree;
    KELA_STRUCT_DEVICE_INFO record = usbRecord(1, "U");
    QVERIFY(addDevice(tree, record));

    setField(record.deviceInfo.modelName, "Old");
    tree.onNewDevice(QVariant::fromValue(record));

    QVERIFY(tree.findCameraItem(1));
    const auto shown = tree.findCameraItem(1)->data(0, KelDeviceTree::ItemInfoRole);
    QCOMPARE(QByteArray(shown.value<KELA_STRUCT_DEVICE_INFO>().deviceInfo.modelName), QByteArray("Old"));
}

void TestVisibility::cameraThatIsKeptOutTellsNobody()
{
    KelInterface::setVendorFilter(KelInterface::FilterInclude, QStringLiteral("nobody"), QString());
    KelDeviceTree tree;
    QSignalSpy made(&tree, &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy updated(&tree, &KelDeviceTree::sigUpdateDeviceItem);
    const int rows = tree.findItem(KelDeviceTree::ItemUSBRoot, -1)->childCount();

    tree.onNewDevice(QVariant::fromValue(usbRecord(1, "U")));
    tree.onUpdateDeviceInfo(QVariant::fromValue(usbRecord(1, "U")));

    QVERIFY(made.isEmpty());
    QVERIFY(updated.isEmpty());
    QCOMPARE(tree.findItem(KelDeviceTree::ItemUSBRoot, -1)->childCount(), rows);
}

void TestVisibility::freshTreeShowsEveryType()
{
    KelDeviceTree tree;
    for (int type = 0; type <= 20; ++type) {
        QVERIFY(privateOf(tree).isItemTypeVisible(type));
    }
}

void TestVisibility::camerasOfAVisibleGroupAreMadeHidden()
{
    KelDeviceTree tree;
    tree.setVisibleItemTypes({3, 5});

    addCameras(tree, {QStringLiteral("A")});

    QVERIFY(tree.findCameraItem(1));
    QVERIFY(tree.findCameraItem(1)->isHidden());
    QVERIFY(!tree.findItem(KelDeviceTree::ItemNetWork, 500)->isHidden());
    QVERIFY(!tree.findItem(KelDeviceTree::ItemGigERoot, -1)->isHidden());
    QVERIFY(tree.findItem(KelDeviceTree::ItemUSBRoot, -1)->isHidden());
    QVERIFY(tree.findItem(KelDeviceTree::ItemAll, -1)->isHidden());
}

void TestVisibility::camerasOfAHiddenGroupAreNotMade()
{
    KelDeviceTree tree;
    tree.setVisibleItemTypes({3, 5});
    QSignalSpy made(&tree, &KelDeviceTree::sigNewDeviceItem);

    QVERIFY(!addDevice(tree, usbRecord(1, "U")));
    QVERIFY(made.isEmpty());
}

void TestVisibility::groupOfADeviceDependsOnItsPlacement_data()
{
    QTest::addColumn<uint>("transport");
    QTest::addColumn<uint>("placement");
    QTest::addColumn<int>("group");
    QTest::newRow("GigE, real") << 1U << 0U << 3;
    QTest::newRow("GigE, virtual") << 1U << 1U << 6;
    QTest::newRow("GigE, other") << 1U << 2U << 8;
    QTest::newRow("GigE, unknown placement") << 1U << 9U << 3;
    QTest::newRow("USB, real") << 4U << 0U << 4;
    QTest::newRow("USB, virtual") << 4U << 1U << 7;
    QTest::newRow("USB, other") << 4U << 2U << 4;
    QTest::newRow("GenTL") << 16U << 1U << 2;
}

void TestVisibility::groupOfADeviceDependsOnItsPlacement()
{
    QFETCH(uint, transport);
    QFETCH(uint, placement);
    QFETCH(int, group);
    KELA_STRUCT_DEVICE_INFO record = usbRecord(1, "S");
    record.deviceInfo.transport = transport;
    record.deviceInfo.placement = placement;
    QList<int> allButTheGroup;
    for (int type = 0; type <= 17; ++type) {
        if (type != group) {
            allButTheGroup.append(type);
        }
    }

    KelDeviceTree hiding;
    hiding.setVisibleItemTypes(allButTheGroup);
    QVERIFY(!addDevice(hiding, record));

    KelDeviceTree showing;
    showing.setVisibleItemTypes({group});
    QVERIFY(addDevice(showing, record));
}

void TestVisibility::updateOfAHiddenGroupMakesNoRowEither()
{
    KelDeviceTree tree;
    tree.setVisibleItemTypes({3, 5});

    tree.onUpdateDeviceInfo(QVariant::fromValue(usbRecord(1, "U")));

    QVERIFY(!tree.findCameraItem(1));
}

void TestVisibility::emptyListShowsEveryRowAgain()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    tree.setVisibleItemTypes({4});
    QVERIFY(tree.findCameraItem(1)->isHidden());

    tree.setVisibleItemTypes({});

    for (QTreeWidgetItemIterator item(&tree); *item; ++item) {
        QVERIFY(!(*item)->isHidden());
    }
}

void TestVisibility::cameraIsHiddenUnlessItsOwnTypeIsListed()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});

    tree.setVisibleItemTypes({3, 5, 11});
    QVERIFY(!tree.findCameraItem(1)->isHidden());
    tree.setVisibleItemTypes({3, 5, 12});
    QVERIFY(tree.findCameraItem(1)->isHidden());
    tree.setVisibleItemTypes({11});
    QVERIFY(!tree.findCameraItem(1)->isHidden());
    QVERIFY(tree.findItem(KelDeviceTree::ItemGigERoot, -1)->isHidden());
}

void TestVisibility::rowsOfTheHostAreJudgedByTheirType()
{
    KelDeviceTree tree;
    auto *camLinkGroup = new QTreeWidgetItem(&tree, {QStringLiteral("Camera Link")});
    camLinkGroup->setData(0, KelDeviceTree::ItemTypeRole, KelDeviceTree::ItemCamLinkRoot);
    auto *untyped = new QTreeWidgetItem(&tree, {QStringLiteral("untyped")});

    tree.setVisibleItemTypes({KelDeviceTree::ItemCamLinkRoot});
    QVERIFY(!camLinkGroup->isHidden());
    QVERIFY(untyped->isHidden());
    tree.setVisibleItemTypes({KelDeviceTree::Item1394Root});
    QVERIFY(camLinkGroup->isHidden());
    QVERIFY(!untyped->isHidden());
}

void TestVisibility::rowsThatStayAsTheyAreAreNotLaidOutAnew()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    tree.setVisibleItemTypes({3, 5, 11});
    showTree(tree);
    settle();
    EventCounter paints(tree.viewport(), QEvent::Paint);

    tree.setVisibleItemTypes({3, 5, 11});
    settle();

    QCOMPARE(paints.count(), 0);
}

void TestVisibility::hidingAnItemOfNoTreeDoesNothing()
{
    KelDeviceTree tree;
    tree.setVisibleItemTypes({3});
    QTreeWidgetItem loose;

    privateOf(tree).updateAllItemVisible(nullptr);
    privateOf(tree).updateAllItemVisible(&loose);

    QVERIFY(!loose.isHidden());
}

void TestVisibility::hiddenRowTakesItsButtonAlong()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(1));
    QVERIFY(buttonOf(tree.findCameraItem(1))->isVisible());

    tree.setVisibleItemTypes({3, 5});

    QVERIFY(!buttonOf(tree.findCameraItem(1))->isVisible());
}

QTEST_MAIN(TestVisibility)
#include "tst_keldevicetree_visibility.moc"
