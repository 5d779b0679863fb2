// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <QtTest>

using namespace TreeRecords;

/// Rows of network cards.
class tst_KelDeviceTree_containers_cards : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void newNetworkCardIsAppendedExpandedUnderGige();
    void updateOfAnUnknownCardCreatesIt();
    void secondNewOfAKnownCardUpdatesIt();
    void cardUpdateChangesNameIdentifierAndRecord();
    void cardKeysAreCaseSensitive();
    void unchangedCardUpdateChangesNothing();
    void deletedCardTakesItsCamerasLastRowFirst();
    void cardWithAConnectedCameraStaysUntouched();
    void deletingTheCurrentCardMakesGigeCurrent();
    void deletionOfAnUnknownCardDoesNothing();
    void deletedCardIsLoggedByItsName();
    void deleteSignalComesWhileTheCardStands();
    void cardRemovedByTheHostMeanwhileIsLeftAlone();
};

void tst_KelDeviceTree_containers_cards::newNetworkCardIsAppendedExpandedUnderGige()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);

    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0[10.0.0.1]")));

    QTreeWidgetItem *item = gige()->child(0);
    QVERIFY(item);
    QCOMPARE(made.count(), 1);
    QCOMPARE(made.at(0).at(0).value<QTreeWidgetItem *>(), item);
    QCOMPARE(item->text(0), QStringLiteral("eth0[10.0.0.1]"));
    QCOMPARE(item->toolTip(0), QStringLiteral("eth0[10.0.0.1]"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemTypeRole), QVariant(5));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(80001));
    QCOMPARE(recordOf<KELA_NETWORK>(item).id, 80001U);
    QVERIFY(item->isExpanded());
    QVERIFY(!item->data(0, KelDeviceTree::ItemRightBtnRole).isValid());
}

void tst_KelDeviceTree_containers_cards::updateOfAnUnknownCardCreatesIt()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(made.count(), 1);
    QCOMPARE(updated.count(), 0);
}

void tst_KelDeviceTree_containers_cards::secondNewOfAKnownCardUpdatesIt()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewNetWorkItem);
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);

    m_tree->onNewNetWork(variantOf(networkCard(80002, "AA", "eth1")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(made.count(), 0);
    QCOMPARE(updated.count(), 1);
    QCOMPARE(gige()->child(0)->text(0), QStringLiteral("eth1"));
}

void tst_KelDeviceTree_containers_cards::cardUpdateChangesNameIdentifierAndRecord()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "old")));

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80009, "AA", "new")));

    const QTreeWidgetItem *item = gige()->child(0);
    QCOMPARE(item->text(0), QStringLiteral("new"));
    QCOMPARE(item->toolTip(0), QStringLiteral("new"));
    QCOMPARE(item->data(0, KelDeviceTree::ItemIdRole), QVariant(80009));
    QCOMPARE(recordOf<KELA_NETWORK>(item).id, 80009U);
}

void tst_KelDeviceTree_containers_cards::cardKeysAreCaseSensitive()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewNetWork(variantOf(networkCard(80002, "aa")));

    QCOMPARE(gige()->childCount(), 2);
    QCOMPARE(inside().findNetWorkItem(QStringLiteral("aa")), gige()->child(1));
    QCOMPARE(inside().findNetWorkItem(QStringLiteral("A")), nullptr);
}

void tst_KelDeviceTree_containers_cards::unchangedCardUpdateChangesNothing()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateNetWorkItem);
    const ModelChanges changes(*m_tree);

    m_tree->onUpdateNetWorkInfo(variantOf(networkCard(80001, "AA")));

    QCOMPARE(updated.count(), 1);
    QCOMPARE(changes.count, 0);
}

void tst_KelDeviceTree_containers_cards::deletedCardTakesItsCamerasLastRowFirst()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    for (const int id : {1, 2, 3}) {
        m_tree->onNewDevice(variantOf(gigeDevice(id, std::to_string(id), "AA")));
    }
    QStringList told;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this, [&told](QTreeWidgetItem *item) {
        told.append(item->data(0, KelDeviceTree::ItemIdRole).toString());
    });
    connect(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem, this,
            [&told](QTreeWidgetItem *item) { told.append(QString::number(item->childCount())); });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(told,
             QStringList({QStringLiteral("3"), QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("0")}));
    QCOMPARE(gige()->childCount(), 0);
    QCOMPARE(inside().m_rightBtns.keys(), QList<long>({-4, -2, -1}));
}

void tst_KelDeviceTree_containers_cards::cardWithAConnectedCameraStaysUntouched()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    m_tree->setCameraItemIcon(m_tree->findCameraItem(1), KELA_DEV_STATE_GIGE_CONNECTED);
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);
    QSignalSpy devices(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(gige()->child(0)->childCount(), 2);
    QCOMPARE(cards.count(), 0);
    QCOMPARE(devices.count(), 0);
}

void tst_KelDeviceTree_containers_cards::deletingTheCurrentCardMakesGigeCurrent()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->setCurrentItem(gige()->child(0));

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(m_tree->currentItem(), gige());
}

void tst_KelDeviceTree_containers_cards::deletionOfAnUnknownCardDoesNothing()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);

    m_tree->onDeleteNetWork(variantOf(networkCard(80002, "AA")));

    QCOMPARE(gige()->childCount(), 1);
    QCOMPARE(cards.count(), 0);
}

void tst_KelDeviceTree_containers_cards::deletedCardIsLoggedByItsName()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA", "eth0 100%s")));
    const InfoLog log;

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA", "eth0 100%s")));

    QCOMPARE(log.texts(), QStringList({QStringLiteral("eth0 100%s")}));
    QCOMPARE(log.lines().at(0).category, QStringLiteral("default"));
    QCOMPARE(log.lines().at(0).file, QStringLiteral("src/DeviceEnumMng/KelDeviceTree"));
    QCOMPARE(log.lines().at(0).function, QStringLiteral("void KelDeviceTree::onDeleteNetWork(QVariant)"));
}

void tst_KelDeviceTree_containers_cards::deleteSignalComesWhileTheCardStands()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    bool stands = false;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem, this, [this, &stands](QTreeWidgetItem *item) {
        stands = m_tree->findItem(KelDeviceTree::ItemNetWork, 80001) == item;
    });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QVERIFY(stands);
}

void tst_KelDeviceTree_containers_cards::cardRemovedByTheHostMeanwhileIsLeftAlone()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    QSignalSpy cards(m_tree.get(), &KelDeviceTree::sigDeleteNetWorkItem);
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this,
            [this] { delete m_tree->findItem(KelDeviceTree::ItemNetWork, 80001); });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    QCOMPARE(gige()->childCount(), 0);
    QCOMPARE(cards.count(), 0);
}

QTEST_MAIN(tst_KelDeviceTree_containers_cards)
#include "tst_keldevicetree_containers_cards.moc"
