// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

/// Devices that the host adds by their address, shown before the call returns.
class tst_KelDeviceTree_bridge_remote : public BridgeTest
{
    Q_OBJECT

private Q_SLOTS:
    void remoteDeviceIsShownBeforeTheCallReturns();
    void silentRemoteDeviceGivesMinus1();
    void removedRemoteDeviceIsGoneBeforeTheCallReturns();
    void treeDestroyedWhenARemoteDeviceAppears();
    void treeDestroyedWhenARemoteDeviceGoes();
    void secondRemoteDeviceFromASlotIsAdded();
};

void tst_KelDeviceTree_bridge_remote::remoteDeviceIsShownBeforeTheCallReturns()
{
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    const int id = m_tree->addRemoteDevice(info);

    QVERIFY(id > 0);
    QCOMPARE(made.count(), 1);
    QVERIFY(m_tree->findCameraItem(id));
    QCOMPARE(info.deviceId, id);
    QCOMPARE(m_tree->addRemoteDevice(info), id);
    QCOMPARE(made.count(), 1);
}

void tst_KelDeviceTree_bridge_remote::silentRemoteDeviceGivesMinus1()
{
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);

    QCOMPARE(m_tree->addRemoteDevice(info), -1);

    QCOMPARE(events.count(), 0);
}

void tst_KelDeviceTree_bridge_remote::removedRemoteDeviceIsGoneBeforeTheCallReturns()
{
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    const int id = m_tree->addRemoteDevice(info);
    QSignalSpy gone(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    QCOMPARE(m_tree->removeRemoteDevice(info), 0);

    QCOMPARE(gone.count(), 1);
    QCOMPARE(m_tree->findCameraItem(id), nullptr);
}

void tst_KelDeviceTree_bridge_remote::treeDestroyedWhenARemoteDeviceAppears()
{
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    const QPointer<KelDeviceTree> tree = m_tree.release();
    const TreeKiller killer(tree, "sigNewDeviceItem");

    const int id = tree->addRemoteDevice(info);

    QVERIFY(id > 0);
    QVERIFY(!tree);
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_bridge_remote::treeDestroyedWhenARemoteDeviceGoes()
{
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    m_tree->addRemoteDevice(info);
    const QPointer<KelDeviceTree> tree = m_tree.release();
    const TreeKiller killer(tree, "sigDeleteDeviceItem");

    QCOMPARE(tree->removeRemoteDevice(info), 0);

    QVERIFY(!tree);
}

void tst_KelDeviceTree_bridge_remote::secondRemoteDeviceFromASlotIsAdded()
{
    KELA_DEVICE_INFO_EX other = gigeCamera("R2", 30);
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    scriptedAccess().plugBehindRouter(other);
    KELA_STRUCT_DEVICE_INFO first = {};
    first.deviceInfo = gigeCamera("R1");
    KELA_STRUCT_DEVICE_INFO second = {};
    second.deviceInfo = other;
    int secondId = 0;
    connect(m_tree.get(), &KelDeviceTree::sigNewDeviceItem, this, [this, &second, &secondId] {
        if (secondId == 0) {
            secondId = -2;
            secondId = m_tree->addRemoteDevice(second);
        }
    });

    const int firstId = m_tree->addRemoteDevice(first);

    QVERIFY(m_tree->findCameraItem(firstId));
    QVERIFY(m_tree->findCameraItem(secondId));
    QVERIFY(firstId != secondId);
}

QTEST_MAIN(tst_KelDeviceTree_bridge_remote)
#include "tst_keldevicetree_bridge_remote.moc"
