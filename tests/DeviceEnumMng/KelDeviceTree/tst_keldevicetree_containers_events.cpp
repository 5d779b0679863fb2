// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <QtTest>

using namespace TreeRecords;

/// Container events of every kind: ignored, malformed, or the last that the tree sees.
class tst_KelDeviceTree_containers_events : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void switchedOffEnumerationIgnoresAllContainerEvents();
    void recordOfAnotherKindIsReadAsZero();
    void fullFieldsAreReadWithoutOverrun();
    void treeDestroyedInEachContainerSignalIsLeftAlone_data();
    void treeDestroyedInEachContainerSignalIsLeftAlone();
    void everyChildIsToldOfWhenASlotAddsOne();
};

void tst_KelDeviceTree_containers_events::switchedOffEnumerationIgnoresAllContainerEvents()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0")));
    m_tree->onNewUSBController(variantOf(usbController(1, "key")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "old")));
    m_tree->setEnableEnumDevices(false);

    m_tree->onNewNetWork(variantOf(networkCard(80002, "BB")));
    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA", "eth9")));
    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewUSBController(variantOf(usbController(2, "key2")));
    m_tree->onDeleteUSBController(variantOf(usbController(1, "key")));
    m_tree->onNewGenTLInterface(variantOf(TreeRecords::genTLInterface(70002, "IF2")));
    m_tree->onUpdateGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF", 0, "new")));
    m_tree->onDeleteGenTLInterface(variantOf(TreeRecords::genTLInterface(70001, "IF")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->text(0), QStringLiteral("eth0"));
    QCOMPARE(usb()->childCount(), 1);
    QCOMPARE(genTL()->childCount(), 1);
    QCOMPARE(genTL()->child(0)->text(0), QStringLiteral("old"));
}

void tst_KelDeviceTree_containers_events::recordOfAnotherKindIsReadAsZero()
{
    m_tree->onNewNetWork(QVariant(QStringLiteral("no record")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->text(0), QString());
    QCOMPARE(gige()->child(0)->data(0, KelDeviceTree::ItemIdRole), QVariant(0));
    QCOMPARE(inside().findNetWorkItem(QString()), gige()->child(0));
}

void tst_KelDeviceTree_containers_events::fullFieldsAreReadWithoutOverrun()
{
    KELA_NETWORK card = networkCard(80001, std::string(64, 'h'), std::string(64, 'n'));
    KELA_USBCONTROLLER_INFO controller = usbController(1, std::string(192, 'k'), std::string(192, 'n'));

    m_tree->onNewNetWork(variantOf(card));
    m_tree->onNewUSBController(variantOf(controller));

    QCOMPARE(gige()->child(0)->text(0), QString(64, QLatin1Char('n')));
    QCOMPARE(inside().findNetWorkItem(QString(64, QLatin1Char('h'))), gige()->child(0));
    QCOMPARE(usb()->child(0)->text(0), QString(192, QLatin1Char('n')));
    QCOMPARE(inside().findUSBControlItem(QString(192, QLatin1Char('k'))), usb()->child(0));
}

void tst_KelDeviceTree_containers_events::treeDestroyedInEachContainerSignalIsLeftAlone_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char *signal :
         {"sigNewNetWorkItem", "sigUpdateNetWorkItem", "sigDeleteNetWorkItem", "sigNewUSBControllerItem",
          "sigDeleteUSBCtrollerItem", "sigNewGenTLInterfaceItem", "sigUpdateGenTLInterfaceItem",
          "sigDeleteGenTLInterfaceItem", "sigNewDeviceItem", "sigUpdateDeviceItem", "sigDeleteDeviceItem"}) {
        QTest::newRow(signal) << QByteArray(signal);
    }
}

void tst_KelDeviceTree_containers_events::treeDestroyedInEachContainerSignalIsLeftAlone()
{
    QFETCH(QByteArray, signal);
    QPointer<KelDeviceTree> tree = m_tree.release();
    const TreeKiller killer(tree, signal);
    const auto send = [&tree](KELA_INTERFACE_STATE kind, const QVariant &interface, const QVariant &device) {
        if (tree) {
            tree->onEventSink(interface, device, int(kind), 0, 1);
        }
    };
    const QVariant none;
    for (const auto kind : {KELA_INTERFACE_STATE_INTERFACE_NEW, KELA_INTERFACE_STATE_INTERFACE_UPDATED}) {
        send(kind, variantOf(containerEvent(networkCard(80001, "AA"))), none);
        send(kind, variantOf(containerEvent(usbController(1, "key"))), none);
        send(kind, variantOf(containerEvent(TreeRecords::genTLInterface(70001, "IF"))), none);
    }
    for (const auto kind : {KELA_INTERFACE_STATE_DEVICE_NEW, KELA_INTERFACE_STATE_DEVICE_UPDATED}) {
        send(kind, none, variantOf(gigeDevice(1, "S1", "AA")));
        send(kind, none, variantOf(usbDevice(30001, "U1", "key")));
    }
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED, variantOf(containerEvent(networkCard(80001, "AA"))), none);
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED, variantOf(containerEvent(usbController(1, "key"))), none);
    send(KELA_INTERFACE_STATE_INTERFACE_REMOVED,
         variantOf(containerEvent(TreeRecords::genTLInterface(70001, "IF"))), none);

    QVERIFY(!tree);
}

void tst_KelDeviceTree_containers_events::everyChildIsToldOfWhenASlotAddsOne()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    QStringList gone;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this, [&](QTreeWidgetItem *item) {
        gone.append(m_tree->getCameraSerial(item));
        if (gone.size() == 1) {
            m_tree->onNewDevice(variantOf(gigeDevice(3, "S3", "AA")));
        }
    });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    gone.sort();
    QCOMPARE(gone, (QStringList{QStringLiteral("S1"), QStringLiteral("S2"), QStringLiteral("S3")}));
}

QTEST_MAIN(tst_KelDeviceTree_containers_events)
#include "tst_keldevicetree_containers_events.moc"
