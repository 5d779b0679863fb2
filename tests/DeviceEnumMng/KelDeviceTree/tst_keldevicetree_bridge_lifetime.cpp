// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QThread>
#include <QtTest>

#include <thread>

using namespace TreeRecords;

/// Trees that are destroyed while passes run, events wait or slots are called.
class tst_KelDeviceTree_bridge_lifetime : public BridgeTest
{
    Q_OBJECT

private Q_SLOTS:
    void treeDestroyedWhileAPassHangsReturnsAtOnce();
    void treeDestroyedInASlotOfARunningPass_data();
    void treeDestroyedInASlotOfARunningPass();
    void treeDestroyedWithBlockedSignalsAndQueuedEvents();
    void queuedEventsOfADestroyedTreeGoNowhere();
    void passesWhileAddingAndRemovingTrees();
};

void tst_KelDeviceTree_bridge_lifetime::treeDestroyedWhileAPassHangsReturnsAtOnce()
{
    char path[] = "/opt/a.cti";
    scriptedAccess().addProducer(path);
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    scriptedAccess().stall(Operation::EnumDevices);
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL);
    startPass(kAll);
    QVERIFY(scriptedAccess().waitUntilStalled());

    // Nobody releases the script: the enumerators' cancelling alone ends the passes.
    m_tree.reset();

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_bridge_lifetime::treeDestroyedInASlotOfARunningPass_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("new") << QByteArray("sigNewDeviceItem");
    QTest::newRow("updated") << QByteArray("sigUpdateDeviceItem");
    QTest::newRow("deleted") << QByteArray("sigDeleteDeviceItem");
    QTest::newRow("finished") << QByteArray("sigFinishEnumOnce(int)");
}

void tst_KelDeviceTree_bridge_lifetime::treeDestroyedInASlotOfARunningPass()
{
    QFETCH(QByteArray, signal);
    for (int number = 1; number <= 20; ++number) {
        scriptedAccess().plug(numberedCamera(number));
    }
    const QPointer<KelDeviceTree> tree = m_tree.release();
    const TreeKiller killer(tree, signal);
    for (int pass = 0; pass < 3; ++pass) {
        tree->updateDeviceTypes(1 | 4, true, true, false);
    }
    if (signal.contains("Delete")) {
        connect(tree.data(), &KelDeviceTree::sigFinishEnumOnce, this, [](int transport) {
            if (transport == KELA_INTERFACE_TYPE_GIGE) {
                scriptedAccess().unplug("S1001");
            }
        });
    }

    QTRY_VERIFY(!tree);

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_bridge_lifetime::treeDestroyedWithBlockedSignalsAndQueuedEvents()
{
    for (int number = 1; number <= 20; ++number) {
        scriptedAccess().plug(numberedCamera(number));
    }
    scriptedAccess().stall(Operation::EnumDevices);
    startPass(1);
    QVERIFY(scriptedAccess().waitUntilStalled());
    m_tree->blockSignals(true);
    scriptedAccess().release();
    // The pass ends unseen: its events wait in the queue.
    while (scriptedAccess().count(Operation::IsDeviceAccessible) < 20) {
        QThread::msleep(1);
    }

    m_tree.reset();
    QCoreApplication::processEvents();

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_bridge_lifetime::queuedEventsOfADestroyedTreeGoNowhere()
{
    EnumEventUserData user{1, m_tree.get()};
    std::thread worker([&user] {
        KELA_STRUCT_DEVICE_INFO device = gigeDevice(1, "S1");
        EnumEventSink(nullptr, &device, KELA_INTERFACE_STATE_DEVICE_NEW, 0, &user);
        EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &user);
    });
    worker.join();

    m_tree.reset();
    // It often stands where the other one stood.
    m_tree = std::make_unique<KelDeviceTree>();
    QCoreApplication::processEvents();

    QVERIFY(!m_tree->findCameraItem(1));
    QVERIFY(!m_tree->hasEnumOnce(1));
}

void tst_KelDeviceTree_bridge_lifetime::passesWhileAddingAndRemovingTrees()
{
    for (int number = 1; number <= 20; ++number) {
        scriptedAccess().plug(numberedCamera(number));
    }
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    for (int round = 0; round < 10; ++round) {
        KelDeviceTree passing;
        passing.updateDeviceTypes(kAll, true, true, false);
        startPass(1);
        QCoreApplication::processEvents();
        KELA_STRUCT_DEVICE_INFO info = {};
        info.deviceInfo = gigeCamera("R1", 99);
        QCOMPARE(passing.addRemoteDevice(info), -1);
    }

    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 10, 30000);
    QCOMPARE(cameraCount(), 20);
}

QTEST_MAIN(tst_KelDeviceTree_bridge_lifetime)
#include "tst_keldevicetree_bridge_lifetime.moc"
