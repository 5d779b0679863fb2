// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QThread>
#include <QtTest>

#include <atomic>
#include <cstring>

using namespace TreeRecords;

namespace
{

QByteArray bytesOf(const void *record, int size)
{
    return QByteArray(static_cast<const char *>(record), size);
}

} // namespace

/// How an enumerator's events cross to the tree's thread and reach their handlers.
class tst_KelDeviceTree_bridge_events : public BridgeTest
{
    Q_OBJECT

private Q_SLOTS:
    void missingRecordsArriveZeroed();
    void recordsCrossByValue();
    void eventWithoutUserOrTreeIsDropped();
    void eventsAreEmittedOnTheWorkersThread();
    void controllerUpdateChangesNothing();
    void unknownKindsAreDropped_data();
    void unknownKindsAreDropped();
    void unknownContainersAreDropped();
    void containerEventsReachTheirHandlers();
    void eventsOfWrongVariantsAreIgnored();

    void blockedSignalsLoseNoEvent();
    void takenApartConnectionsLoseNoEvent();
    void signalsBlockedInsideASlotLoseNoEvent();

    void twoTreesShowTheSameCamera();
    void burstOf256CamerasIsShownInOrder();
};

void tst_KelDeviceTree_bridge_events::missingRecordsArriveZeroed()
{
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);
    EnumEventUserData user{1, m_tree.get()};

    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_BEGIN, 0, &user);

    QCOMPARE(events.count(), 1);
    const auto interface = events.at(0).at(0).value<QVariant>();
    const auto device = events.at(0).at(1).value<QVariant>();
    QCOMPARE(interface.typeName(), "KELA_INTERFACE_INFO");
    QCOMPARE(device.typeName(), "KELA_STRUCT_DEVICE_INFO");
    QCOMPARE(bytesOf(interface.constData(), sizeof(KELA_INTERFACE_INFO)),
             QByteArray(sizeof(KELA_INTERFACE_INFO), '\0'));
    QCOMPARE(bytesOf(device.constData(), sizeof(KELA_STRUCT_DEVICE_INFO)),
             QByteArray(sizeof(KELA_STRUCT_DEVICE_INFO), '\0'));
}

void tst_KelDeviceTree_bridge_events::recordsCrossByValue()
{
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);
    EnumEventUserData user{4, m_tree.get()};
    KELA_INTERFACE_INFO interface = containerEvent(usbController(3, "key"));
    KELA_STRUCT_DEVICE_INFO device = gigeDevice(9, "S9");
    const KELA_STRUCT_DEVICE_INFO sent = device;

    EnumEventSink(&interface, &device, KELA_INTERFACE_STATE_PASS_BEGIN, -7, &user);
    std::memset(&interface, 0xFF, sizeof interface);
    std::memset(&device, 0xFF, sizeof device);

    const QList<QVariant> &event = events.at(0);
    QCOMPARE(event.at(0).value<QVariant>().value<KELA_INTERFACE_INFO>().special.usbController.id, 3);
    QCOMPARE(std::memcmp(event.at(1).value<QVariant>().constData(), &sent, sizeof sent), 0);
    QCOMPARE(event.at(2), QVariant(6));
    QCOMPARE(event.at(3), QVariant(-7));
    QCOMPARE(event.at(4), QVariant(4));
}

void tst_KelDeviceTree_bridge_events::eventWithoutUserOrTreeIsDropped()
{
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);
    EnumEventUserData user{1, nullptr};

    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, nullptr);
    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &user);

    QCOMPARE(events.count(), 0);
    QVERIFY(!m_tree->hasEnumOnce(1));
}

void tst_KelDeviceTree_bridge_events::eventsAreEmittedOnTheWorkersThread()
{
    std::atomic<bool> onWorker{false};
    bool handledHere = false;
    connect(
        m_tree.get(), &KelDeviceTree::sigEventSink, this,
        [this, &onWorker] { onWorker = QThread::currentThread() != thread(); }, Qt::DirectConnection);
    connect(
        m_tree.get(), &KelDeviceTree::sigFinishEnumOnce, this,
        [this, &handledHere] { handledHere = QThread::currentThread() == thread(); }, Qt::DirectConnection);

    runPass(1);

    QVERIFY(onWorker);
    QVERIFY(handledHere);
}

void tst_KelDeviceTree_bridge_events::controllerUpdateChangesNothing()
{
    m_tree->onEventSink(variantOf(containerEvent(usbController(1, "key", "old"))), QVariant(), 0, 0, 4);
    const ModelChanges changes(*m_tree);

    m_tree->onEventSink(variantOf(containerEvent(usbController(1, "key", "new"))), QVariant(), 1, 0, 4);
    m_tree->onEventSink(variantOf(containerEvent(usbController(2, "other", "new"))), QVariant(), 1, 0, 4);

    const QTreeWidgetItem *usb = m_tree->findItem(KelDeviceTree::ItemUSBRoot, -1);
    QCOMPARE(usb->childCount(), 1);
    QCOMPARE(usb->child(0)->text(0), QStringLiteral("old"));
    QCOMPARE(changes.count, 0);
}

void tst_KelDeviceTree_bridge_events::unknownKindsAreDropped_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("pass begins") << 6;
    QTest::newRow("first beyond") << 8;
    QTest::newRow("far beyond") << 100000;
    QTest::newRow("negative") << -1;
}

void tst_KelDeviceTree_bridge_events::unknownKindsAreDropped()
{
    QFETCH(int, kind);

    m_tree->onEventSink(variantOf(containerEvent(networkCard(80001, "AA"))), variantOf(gigeDevice(1, "S1")),
                        kind, 0, 1);

    QCOMPARE(gige()->childCount(), 0);
    QVERIFY(!m_tree->hasEnumOnce(1));
}

void tst_KelDeviceTree_bridge_events::unknownContainersAreDropped()
{
    for (const unsigned int type : {0U, 2U, 8U, 32U, 128U, 256U}) {
        KELA_INTERFACE_INFO event = containerEvent(networkCard(80001, "AA"));
        event.interfaceType = type;
        for (const int kind : {0, 1, 2}) {
            m_tree->onEventSink(variantOf(event), QVariant(), kind, 0, 1);
        }
    }

    QCOMPARE(m_tree->topLevelItemCount(), 4);
    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_bridge_events::containerEventsReachTheirHandlers()
{
    const QVariant card = variantOf(containerEvent(networkCard(80001, "AA")));
    const QVariant controller = variantOf(containerEvent(usbController(1, "key")));
    const QVariant interface = variantOf(containerEvent(TreeRecords::genTLInterface(70001, "IF")));
    QSignalSpy newCard(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);
    QSignalSpy updatedCard(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);
    QSignalSpy goneCard(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);
    QSignalSpy newController(m_tree.get(), &KelDeviceTree::sigNewUSBControllerItem);
    QSignalSpy goneController(m_tree.get(), &KelDeviceTree::sigDeleteUSBCtrollerItem);
    QSignalSpy newInterface(m_tree.get(), &KelDeviceTree::sigNewGenTLInterfaceItem);
    QSignalSpy updatedInterface(m_tree.get(), &KelDeviceTree::sigUpdateGenTLInterfaceItem);
    QSignalSpy goneInterface(m_tree.get(), &KelDeviceTree::sigDeleteGenTLInterfaceItem);

    for (const int kind : {0, 1, 2}) {
        for (const QVariant &event : {card, controller, interface}) {
            m_tree->onEventSink(event, QVariant(), kind, 0, 1);
        }
    }

    QCOMPARE(newCard.count(), 1);
    QCOMPARE(updatedCard.count(), 1);
    QCOMPARE(goneCard.count(), 1);
    QCOMPARE(newController.count(), 1);
    QCOMPARE(goneController.count(), 1);
    QCOMPARE(newInterface.count(), 1);
    QCOMPARE(updatedInterface.count(), 1);
    QCOMPARE(goneInterface.count(), 1);
}

void tst_KelDeviceTree_bridge_events::eventsOfWrongVariantsAreIgnored()
{
    for (int kind = 0; kind <= 5; ++kind) {
        m_tree->onEventSink(QVariant(QStringLiteral("text")), QVariant(QStringLiteral("text")), kind, 0, 1);
    }

    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_bridge_events::blockedSignalsLoseNoEvent()
{
    scriptedAccess().plug(gigeCamera("S1"));
    scriptedAccess().stall(Operation::EnumDevices);
    startPass(1);
    QVERIFY(scriptedAccess().waitUntilStalled());

    m_tree->blockSignals(true);
    scriptedAccess().release();
    QTRY_VERIFY(m_tree->hasEnumOnce(1));
    m_tree->blockSignals(false);

    // The row was made unheard, and the pass was acknowledged.
    QCOMPARE(cameraCount(), 1);
    runPass(1);
}

void tst_KelDeviceTree_bridge_events::takenApartConnectionsLoseNoEvent()
{
    scriptedAccess().plug(gigeCamera("S1"));

    m_tree->disconnect();
    startPass(1);

    QTRY_VERIFY(m_tree->hasEnumOnce(1));
    QCOMPARE(cameraCount(), 1);
    runPass(1);
}

void tst_KelDeviceTree_bridge_events::signalsBlockedInsideASlotLoseNoEvent()
{
    EnumEventUserData user{8, m_tree.get()};
    int rounds = 0;
    // An event that is sent by a slot of another one, while signals are blocked, is handled once.
    connect(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce, this, [this, &user, &rounds] {
        if (++rounds == 1) {
            const QSignalBlocker blocked(m_tree.get());
            EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &user);
        }
    });

    EnumEventUserData first{4, m_tree.get()};
    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &first);

    QCOMPARE(rounds, 1);
    QVERIFY(m_tree->hasEnumOnce(4 | 8));
}

void tst_KelDeviceTree_bridge_events::twoTreesShowTheSameCamera()
{
    scriptedAccess().plug(gigeCamera("S1"));
    KelDeviceTree other;
    QSignalSpy here(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy there(&other, &KelDeviceTree::sigNewDeviceItem);

    startPass(1);
    other.updateDeviceTypes(1, true, true, false);

    QTRY_COMPARE(here.count(), 1);
    QTRY_COMPARE(there.count(), 1);
    const auto *mine = here.at(0).at(0).value<QTreeWidgetItem *>();
    const auto *others = there.at(0).at(0).value<QTreeWidgetItem *>();
    QCOMPARE(mine->treeWidget(), m_tree.get());
    QCOMPARE(others->treeWidget(), &other);
    QCOMPARE(mine->data(0, KelDeviceTree::ItemIdRole), others->data(0, KelDeviceTree::ItemIdRole));
}

void tst_KelDeviceTree_bridge_events::burstOf256CamerasIsShownInOrder()
{
    for (int number = 1; number <= 256; ++number) {
        scriptedAccess().plug(numberedCamera(number));
    }
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    runPass(1);

    QCOMPARE(made.count(), 256);
    QTreeWidgetItem *parent = made.at(0).at(0).value<QTreeWidgetItem *>()->parent();
    QStringList serials;
    QStringList expected;
    for (int row = 0; row < parent->childCount(); ++row) {
        if (m_tree->isCameraItem(parent->child(row))) {
            serials.append(m_tree->getCameraSerial(parent->child(row)));
        }
    }
    for (int number = 1; number <= 256; ++number) {
        expected.append(QStringLiteral("S%1").arg(1000 + number));
    }
    QCOMPARE(serials, expected);
}

QTEST_MAIN(tst_KelDeviceTree_bridge_events)
#include "tst_keldevicetree_bridge_events.moc"
