// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <CustomCtr/CustomLoadingDialog.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QApplication>
#include <QLabel>
#include <QtTest>

namespace
{

bool hasVisibleText(const QString &text)
{
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        for (const QLabel *label : widget->findChildren<QLabel *>()) {
            if (label->isVisible() && label->text() == text) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

/// What a pass is asked for, what it finds and which transports have run.
class tst_KelDeviceTree_bridge_passes : public BridgeTest
{
    Q_OBJECT

private Q_SLOTS:
    void foundCameraBecomesARow();
    void removedDeviceReturnsWithItsEarlierId();
    void enumeratorsAreMadeInTheOrderGigeUsbCameraLink();
    void onlyTheGenTLPassTakesTheCallersFlags();
    void shownSearchNamesGenTL();
    void unshownTransportsStartNothing();
    void switchedOffEnumerationStartsNothing();
    void removalReportedWhileOffIsNotRepeated();
    void everyTransportHasOneEnumerator();
    void genTLInterfaceIsListedAfterItsHandleCame();
    void cameraThatWasSetOffIsReportedAgain();

    void hasEnumOnceWaitsForEveryTransport_data();
    void hasEnumOnceWaitsForEveryTransport();
    void hasEnumOnceIsTrueForTransportsThatNeverRun();
    void finishedTransportIsKeptOnce();
};

void tst_KelDeviceTree_bridge_passes::foundCameraBecomesARow()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    runPass(1);

    QCOMPARE(made.count(), 1);
    auto *item = made.at(0).at(0).value<QTreeWidgetItem *>();
    QCOMPARE(m_tree->getCameraSerial(item), QStringLiteral("S1"));
    QCOMPARE(m_tree->findCameraItem(item->data(0, KelDeviceTree::ItemIdRole).toInt()), item);
}

void tst_KelDeviceTree_bridge_passes::removedDeviceReturnsWithItsEarlierId()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    runPass(1);
    const int id = made.at(0).at(0).value<QTreeWidgetItem *>()->data(0, KelDeviceTree::ItemIdRole).toInt();

    scriptedAccess().unplug("S1");
    runPass(1);
    QCOMPARE(m_tree->findCameraItem(id), nullptr);

    scriptedAccess().plug(gigeCamera("S1"));
    runPass(1);
    QVERIFY(m_tree->findCameraItem(id));
    QCOMPARE(made.count(), 2);
}

void tst_KelDeviceTree_bridge_passes::enumeratorsAreMadeInTheOrderGigeUsbCameraLink()
{
    m_tree->updateDeviceTypes(kAll, false, false, true);

    // The GenTL enumerator is there since construction, idle.
    QList<unsigned int> order;
    for (const EnumEventUserData *user : inside().m_userData) {
        order.append(user->deviceType);
    }
    QCOMPARE(order, QList<unsigned int>({16, 1, 4, 8}));
    QTRY_VERIFY(m_tree->hasEnumOnce(kAll));
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(3));
}

void tst_KelDeviceTree_bridge_passes::onlyTheGenTLPassTakesTheCallersFlags()
{
    openInterface();
    scriptedAccess().plug(gigeCamera("S1"));
    runPass(1);
    runPass(16);
    QSignalSpy gone(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    scriptedAccess().forgetCalls();

    m_tree->updateDeviceTypes(1 | 16, false, false, true);
    QTRY_COMPARE(finished.count(), 2);

    // GigE reports what it finds; GenTL reports nothing, so its device goes, and asks no interface again.
    QCOMPARE(updated.count(), 1);
    QCOMPARE(gone.count(), 1);
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(0));

    m_tree->updateDeviceTypes(16, true, true, false);
    QTRY_COMPARE(finished.count(), 3);
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(1));
}

void tst_KelDeviceTree_bridge_passes::shownSearchNamesGenTL()
{
    scriptedAccess().addProducer("/opt/a.cti");
    char path[] = "/opt/a.cti";
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL);

    m_tree->updateDeviceTypes(kAll, true, true, true);

    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
    QVERIFY(hasVisibleText(QStringLiteral("Searching for GenTL devices with the computer...")));
    scriptedAccess().release();
    QTRY_VERIFY(m_tree->hasEnumOnce(16));
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge_passes::unshownTransportsStartNothing()
{
    m_tree->updateDeviceTypes(2 | 32 | 64 | 128 | 256, true, true, true);

    QCOMPARE(inside().m_enumerators.keys(), QList<unsigned int>({16}));
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge_passes::switchedOffEnumerationStartsNothing()
{
    m_tree->setEnableEnumDevices(false);
    m_tree->updateDeviceTypes(kAll, true, true, true);

    QCOMPARE(inside().m_enumerators.keys(), QList<unsigned int>({16}));
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));

    m_tree->setEnableEnumDevices(true);
    runPass(1);
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(1));
}

void tst_KelDeviceTree_bridge_passes::removalReportedWhileOffIsNotRepeated()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    runPass(1);
    const int id = made.at(0).at(0).value<QTreeWidgetItem *>()->data(0, KelDeviceTree::ItemIdRole).toInt();
    scriptedAccess().unplug("S1");
    startPass(1);
    m_tree->setEnableEnumDevices(false);
    QTRY_COMPARE(finished.count(), 2);

    m_tree->setEnableEnumDevices(true);
    runPass(1);

    QVERIFY(m_tree->findCameraItem(id));
}

void tst_KelDeviceTree_bridge_passes::everyTransportHasOneEnumerator()
{
    CDevicesEnum *first = inside().getThread(KELA_INTERFACE_TYPE_GIGE);

    QCOMPARE(inside().getThread(KELA_INTERFACE_TYPE_GIGE), first);
    QVERIFY(inside().getThread(KELA_INTERFACE_TYPE_USB) != first);
    QCOMPARE(inside().m_userData.size(), 3);
}

void tst_KelDeviceTree_bridge_passes::genTLInterfaceIsListedAfterItsHandleCame()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    openInterface();
    QCOMPARE(made.count(), 0);

    runPass(16);
    QCOMPARE(made.count(), 1);
    const auto *item = made.at(0).at(0).value<QTreeWidgetItem *>();
    QCOMPARE(item->parent()->data(0, KelDeviceTree::ItemTypeRole), QVariant(15));
}

void tst_KelDeviceTree_bridge_passes::cameraThatWasSetOffIsReportedAgain()
{
    openInterface();
    runPass(16);
    QTreeWidgetItem *interface = m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1)->child(0);
    const int id = interface->child(0)->data(0, KelDeviceTree::ItemIdRole).toInt();
    QList<int> kinds;
    // Told on this thread: a spy would be written to by the worker.
    connect(m_tree.get(), &KelDeviceTree::sigEventSink, this,
            [id, &kinds](const QVariant &, const QVariant &device, int kind) {
                if (device.value<KELA_STRUCT_DEVICE_INFO>().deviceId == id) {
                    kinds.append(kind);
                }
            });

    m_tree->SetOffCameraID(id);
    runPass(16);

    QCOMPARE(kinds, QList<int>({3}));
}

void tst_KelDeviceTree_bridge_passes::hasEnumOnceWaitsForEveryTransport_data()
{
    QTest::addColumn<unsigned int>("first");
    QTest::addColumn<unsigned int>("second");
    QTest::newRow("GigE first") << 1U << 16U;
    QTest::newRow("GenTL first") << 16U << 1U;
}

void tst_KelDeviceTree_bridge_passes::hasEnumOnceWaitsForEveryTransport()
{
    QFETCH(const unsigned int, first);
    QFETCH(const unsigned int, second);
    QVERIFY(!m_tree->hasEnumOnce(1 | 16));

    runPass(first);
    QVERIFY(m_tree->hasEnumOnce(first));
    QVERIFY(!m_tree->hasEnumOnce(1 | 16));

    runPass(second);
    QVERIFY(m_tree->hasEnumOnce(1 | 16));
    QVERIFY(!m_tree->hasEnumOnce(kAll));
}

void tst_KelDeviceTree_bridge_passes::hasEnumOnceIsTrueForTransportsThatNeverRun()
{
    QVERIFY(m_tree->hasEnumOnce(0));
    QVERIFY(m_tree->hasEnumOnce(2));
    QVERIFY(m_tree->hasEnumOnce(32));
    QVERIFY(!m_tree->hasEnumOnce(2 | 8));
}

void tst_KelDeviceTree_bridge_passes::finishedTransportIsKeptOnce()
{
    m_tree->onEndThread(1, 0);
    m_tree->onEndThread(1, 5);
    m_tree->onEndThread(32, 0);

    QCOMPARE(inside().m_finishedTypes, QList<unsigned int>({1, 32}));
}

QTEST_MAIN(tst_KelDeviceTree_bridge_passes)
#include "tst_keldevicetree_bridge_passes.moc"
