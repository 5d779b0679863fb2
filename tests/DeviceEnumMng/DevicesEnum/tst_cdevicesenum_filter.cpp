// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedRecords.h>

#include <QtTest>

namespace
{

DEVICE_FILTER vendorFilter(int mode, const std::string &include, const std::string &exclude)
{
    DEVICE_FILTER filter = {};
    filter.vendorMode = mode;
    setField(filter.vendorInclude, include);
    setField(filter.vendorExclude, exclude);
    return filter;
}

DEVICE_FILTER modelFilter(int mode, const std::string &include, const std::string &exclude)
{
    DEVICE_FILTER filter = {};
    filter.modelMode = mode;
    setField(filter.modelInclude, include);
    setField(filter.modelExclude, exclude);
    return filter;
}

} // namespace

class tst_CDevicesEnum_filter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingPassesWithoutAFilter();
    void nullFilterChangesNothing();
    void emptyVendorIncludeLetsOnlyEmptyVendorsPass();
    void twoFiltersLetBothVendorsPass();
    void excludedVendorIsRejected();
    void laterModeDecidesOverAllTexts();
    void modelsAreFilteredLikeVendors();
    void namesAreCaseSensitive();
    void unknownModeRejectsEverything();
    void vendorFieldFollowsTheTransport_data();
    void vendorFieldFollowsTheTransport();
    void otherTransportsAreFilteredByEmptyTexts();
    void genTLDevicesAreFilteredByTheirVendorField();
    void bothFiltersMustPass();
    void fullFilterTextIsReadWithoutOverrun();
    void flagTestTellsSubsets_data();
    void flagTestTellsSubsets();
};

void tst_CDevicesEnum_filter::everythingPassesWithoutAFilter()
{
    const CDevicesEnum enumerator;

    QVERIFY(enumerator.filterVendor("anything"));
    QVERIFY(enumerator.filterModel(""));
    QVERIFY(enumerator.filterDevice(gigeCamera("A1")));
    QVERIFY(enumerator.filterGentlDevice(genTLDevice("G1", "if0")));
}

void tst_CDevicesEnum_filter::nullFilterChangesNothing()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "A", "");
    enumerator.SetFilter(&filter);

    enumerator.SetFilter(nullptr);

    QVERIFY(enumerator.filterVendor("A"));
    QVERIFY(!enumerator.filterVendor(""));
}

void tst_CDevicesEnum_filter::emptyVendorIncludeLetsOnlyEmptyVendorsPass()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "", "");
    enumerator.SetFilter(&filter);

    QVERIFY(enumerator.filterVendor(""));
    QVERIFY(!enumerator.filterVendor("A"));
}

void tst_CDevicesEnum_filter::twoFiltersLetBothVendorsPass()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER first = vendorFilter(1, "A", "");
    DEVICE_FILTER second = vendorFilter(1, "B", "");
    enumerator.SetFilter(&first);
    enumerator.SetFilter(&second);

    QVERIFY(enumerator.filterVendor("A"));
    QVERIFY(enumerator.filterVendor("B"));
    QVERIFY(!enumerator.filterVendor("C"));
}

void tst_CDevicesEnum_filter::excludedVendorIsRejected()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(2, "A", "B");
    enumerator.SetFilter(&filter);

    QVERIFY(enumerator.filterVendor("A"));
    QVERIFY(enumerator.filterVendor("C"));
    QVERIFY(!enumerator.filterVendor("B"));
}

void tst_CDevicesEnum_filter::laterModeDecidesOverAllTexts()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER first = vendorFilter(1, "A", "B");
    DEVICE_FILTER second = vendorFilter(2, "C", "D");
    enumerator.SetFilter(&first);
    enumerator.SetFilter(&second);

    QVERIFY(!enumerator.filterVendor("B"));
    QVERIFY(!enumerator.filterVendor("D"));
    QVERIFY(enumerator.filterVendor("A"));
}

void tst_CDevicesEnum_filter::modelsAreFilteredLikeVendors()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = modelFilter(1, "SX-100", "");
    enumerator.SetFilter(&filter);
    QVERIFY(enumerator.filterModel("SX-100"));
    QVERIFY(!enumerator.filterModel("SX-200"));

    filter = modelFilter(2, "", "SX-300");
    enumerator.SetFilter(&filter);
    QVERIFY(!enumerator.filterModel("SX-300"));
    QVERIFY(enumerator.filterModel("SX-200"));
    // The empty exclude text of the first filter stays in the list.
    QVERIFY(!enumerator.filterModel(""));
}

void tst_CDevicesEnum_filter::namesAreCaseSensitive()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "Vendor", "");
    enumerator.SetFilter(&filter);

    QVERIFY(!enumerator.filterVendor("vendor"));
}

void tst_CDevicesEnum_filter::unknownModeRejectsEverything()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(3, "A", "");
    enumerator.SetFilter(&filter);
    QVERIFY(!enumerator.filterVendor("A"));

    filter = vendorFilter(-1, "A", "");
    enumerator.SetFilter(&filter);
    QVERIFY(!enumerator.filterVendor("A"));
}

void tst_CDevicesEnum_filter::vendorFieldFollowsTheTransport_data()
{
    QTest::addColumn<int>("transport");
    QTest::newRow("GigE") << int(KELA_INTERFACE_TYPE_GIGE);
    QTest::newRow("GigE variant") << int(KELA_INTERFACE_TYPE_GIGE_VARIANT);
    QTest::newRow("USB") << int(KELA_INTERFACE_TYPE_USB);
    QTest::newRow("Camera Link") << int(KELA_INTERFACE_TYPE_CAMERALINK);
}

void tst_CDevicesEnum_filter::vendorFieldFollowsTheTransport()
{
    QFETCH(int, transport);
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "wanted", "");
    enumerator.SetFilter(&filter);
    KELA_DEVICE_INFO_EX device = {};
    device.transport = static_cast<uint32_t>(transport);

    QVERIFY(!enumerator.filterDevice(device));
    if (transport == KELA_INTERFACE_TYPE_USB) {
        setField(device.special.usb.manufacturerName, "wanted");
    } else if (transport == KELA_INTERFACE_TYPE_CAMERALINK) {
        setField(device.special.cameraLink.manufacturerName, "wanted");
    } else {
        setField(device.special.gige.manufacturerName, "wanted");
    }
    QVERIFY(enumerator.filterDevice(device));
}

void tst_CDevicesEnum_filter::otherTransportsAreFilteredByEmptyTexts()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = modelFilter(1, "SX-100", "");
    enumerator.SetFilter(&filter);
    KELA_DEVICE_INFO_EX device = gigeCamera("A1");
    QVERIFY(enumerator.filterDevice(device));

    device.transport = KELA_INTERFACE_TYPE_NETWORK;
    QVERIFY(!enumerator.filterDevice(device));
}

void tst_CDevicesEnum_filter::genTLDevicesAreFilteredByTheirVendorField()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "Scripted Vision", "");
    enumerator.SetFilter(&filter);
    KELA_DEVICE_INFO_EX device = genTLDevice("G1", "if0");
    QVERIFY(enumerator.filterGentlDevice(device));

    setField(device.special.genTL.vendorName, "Another");
    QVERIFY(!enumerator.filterGentlDevice(device));
}

void tst_CDevicesEnum_filter::bothFiltersMustPass()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, "Scripted Vision", "");
    filter.modelMode = 2;
    setField(filter.modelExclude, "SX-100");
    enumerator.SetFilter(&filter);

    QVERIFY(!enumerator.filterDevice(gigeCamera("A1")));
    QVERIFY(!enumerator.filterGentlDevice(genTLDevice("G1", "if0")));
}

void tst_CDevicesEnum_filter::fullFilterTextIsReadWithoutOverrun()
{
    CDevicesEnum enumerator;
    DEVICE_FILTER filter = vendorFilter(1, std::string(64, 'i'), std::string(64, 'e'));
    enumerator.SetFilter(&filter);

    QVERIFY(enumerator.filterVendor(QString(64, 'i')));
    QVERIFY(!enumerator.filterVendor(QString(64, 'i') + QString(64, 'e')));
}

void tst_CDevicesEnum_filter::flagTestTellsSubsets_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isSet");
    QTest::newRow("nothing in nothing") << 0 << 0 << true;
    QTest::newRow("nothing in something") << 0 << 4 << false;
    QTest::newRow("one of two") << 4 << 5 << true;
    QTest::newRow("two in one") << 5 << 4 << false;
    QTest::newRow("same") << 16 << 16 << true;
    QTest::newRow("disjoint") << 1 << 2 << false;
    QTest::newRow("all bits") << 1 << -1 << true;
}

void tst_CDevicesEnum_filter::flagTestTellsSubsets()
{
    QFETCH(int, flag);
    QFETCH(int, value);
    QFETCH(bool, isSet);

    QCOMPARE(CDevicesEnum::testFlag(flag, value), isSet);
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_filter)
#include "tst_cdevicesenum_filter.moc"
