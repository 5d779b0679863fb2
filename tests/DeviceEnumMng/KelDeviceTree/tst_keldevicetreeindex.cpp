// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include "KelDeviceTreeIndex.h"

#include <QRandomGenerator>
#include <QTreeWidget>
#include <QtTest>

#include <memory>
#include <utility>

using namespace TreeRecords;

namespace
{

QTreeWidgetItem *addItem(QTreeWidgetItem *parent, int type, int id)
{
    auto *item = new QTreeWidgetItem(parent);
    item->setData(0, KelDeviceTree::ItemTypeRole, type);
    item->setData(0, KelDeviceTree::ItemIdRole, id);
    return item;
}

template <typename Record>
QTreeWidgetItem *addContainer(QTreeWidgetItem *parent, int type, const Record &record)
{
    QTreeWidgetItem *item = addItem(parent, type, static_cast<int>(record.id));
    item->setData(0, KelDeviceTree::ItemInfoRole, variantOf(record));
    return item;
}

// The walks that define the results.
QTreeWidgetItem *walk(const QTreeWidgetItem *parent, int type, int id)
{
    for (int row = 0; row < parent->childCount(); ++row) {
        QTreeWidgetItem *child = parent->child(row);
        if (child->data(0, KelDeviceTree::ItemTypeRole).toInt() == type &&
            child->data(0, KelDeviceTree::ItemIdRole).toInt() == id) {
            return child;
        }
        if (QTreeWidgetItem *found = walk(child, type, id)) {
            return found;
        }
    }
    return nullptr;
}

QTreeWidgetItem *walkToCamera(const QTreeWidgetItem *root, int id)
{
    for (int row = 0; row < root->childCount(); ++row) {
        const QTreeWidgetItem *top = root->child(row);
        int type = KelDeviceTree::ItemGigECamera;
        switch (top->data(0, KelDeviceTree::ItemTypeRole).toInt()) {
        case 1:
            type = 13;
            break;
        case 2:
            type = 14;
            break;
        case 4:
            type = 12;
            break;
        default:
            break;
        }
        if (QTreeWidgetItem *found = walk(top, type, id)) {
            return found;
        }
    }
    return nullptr;
}

QTreeWidgetItem *anyItem(QTreeWidgetItem *root, QRandomGenerator &random)
{
    QTreeWidgetItem *item = root;
    while (item->childCount() > 0 && (item == root || random.bounded(3) != 0)) {
        item = item->child(random.bounded(item->childCount()));
    }
    return item;
}

} // namespace

class tst_KelDeviceTreeIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void typeAndIdentifierAreBothMatched();
    void firstOfTwoEqualItemsWins();
    void parentIsMetBeforeItsChildren();
    void onlyRowsBelowTheParentAreFound();
    void nullParentFindsNothing();
    void itemsThatWereThereBeforeAreFound();
    void itemWithoutRolesCountsAsTypeAndIdentifierZero();
    void rolesThatAreSetLaterAreFound();
    void identifierThatIsTextCountsAsItsNumber();
    void removedItemIsForgotten();
    void itemThatGoesWithItsParentIsForgotten();
    void clearedTreeHoldsNothing();
    void movedItemChangesWhichIsFirst();
    void sortingChangesWhichIsFirst();
    void receiverOfAChangeMayRemoveTheRowAbove();
    void receiverOfAChangeMayRemoveTheRow();
    void subtreeThatIsInsertedWholeIsFound();
    void parentOutsideTheTreeIsWalked();
    void cameraTypeFollowsTheTopLevelItem();
    void topLevelCameraIsNotFoundAsCamera();
    void firstCameraOfTwoTransportsWins();
    void containerIsFoundByItsKeyAmongDirectChildrenOnly();
    void containerWithoutRecordHasTheEmptyKey();
    void containerWhoseRecordChangesIsFoundByItsNewKey();
    void firstContainerOfTwoWithOneKeyWins();
    void interfaceIsFoundByIdentifierAndByKeyWithNumber();
    void interfaceIdentifierComesFromTheRecord();
    void randomChangesGiveWhatTheWalksGive();

private:
    QTreeWidgetItem *root() { return m_tree->invisibleRootItem(); }

    std::unique_ptr<QTreeWidget> m_tree;
    std::unique_ptr<KelDeviceTreeIndex> m_index;
};

void tst_KelDeviceTreeIndex::init()
{
    m_tree = std::make_unique<QTreeWidget>();
    m_index = std::make_unique<KelDeviceTreeIndex>(m_tree.get());
}

void tst_KelDeviceTreeIndex::cleanup()
{
    m_index.reset();
    m_tree.reset();
}

void tst_KelDeviceTreeIndex::typeAndIdentifierAreBothMatched()
{
    addItem(root(), 5, 7);
    QTreeWidgetItem *camera = addItem(root(), 11, 7);

    QCOMPARE(m_index->findBelow(root(), 11, 7), camera);
    QCOMPARE(m_index->findBelow(root(), 12, 7), nullptr);
    QCOMPARE(m_index->findBelow(root(), 11, 8), nullptr);
}

void tst_KelDeviceTreeIndex::firstOfTwoEqualItemsWins()
{
    QTreeWidgetItem *group = addItem(root(), 3, -1);
    QTreeWidgetItem *second = addItem(group, 16, 1);
    auto *first = new QTreeWidgetItem;
    first->setData(0, KelDeviceTree::ItemTypeRole, 16);
    first->setData(0, KelDeviceTree::ItemIdRole, 1);
    group->insertChild(0, first);

    QCOMPARE(m_index->findBelow(root(), 16, 1), first);

    delete first;
    QCOMPARE(m_index->findBelow(root(), 16, 1), second);
}

void tst_KelDeviceTreeIndex::parentIsMetBeforeItsChildren()
{
    QTreeWidgetItem *parent = addItem(root(), 6, -1);
    addItem(parent, 6, -1);

    QCOMPARE(m_index->findBelow(root(), 6, -1), parent);
}

void tst_KelDeviceTreeIndex::onlyRowsBelowTheParentAreFound()
{
    QTreeWidgetItem *left = addItem(root(), 3, -1);
    QTreeWidgetItem *right = addItem(root(), 4, -1);
    addItem(left, 11, 1);
    QTreeWidgetItem *deep = addItem(addItem(right, 5, 2), 11, 1);

    QCOMPARE(m_index->findBelow(right, 11, 1), deep);
    QCOMPARE(m_index->findBelow(deep, 11, 1), nullptr);
}

void tst_KelDeviceTreeIndex::nullParentFindsNothing()
{
    addItem(root(), 0, 0);

    QCOMPARE(m_index->findBelow(nullptr, 0, 0), nullptr);
}

void tst_KelDeviceTreeIndex::itemsThatWereThereBeforeAreFound()
{
    QTreeWidgetItem *camera = addItem(addItem(root(), 3, -1), 11, 4);

    KelDeviceTreeIndex late(m_tree.get());

    QCOMPARE(late.findBelow(root(), 11, 4), camera);
}

void tst_KelDeviceTreeIndex::itemWithoutRolesCountsAsTypeAndIdentifierZero()
{
    auto *item = new QTreeWidgetItem(root());

    QCOMPARE(m_index->findBelow(root(), 0, 0), item);
}

void tst_KelDeviceTreeIndex::rolesThatAreSetLaterAreFound()
{
    auto *item = new QTreeWidgetItem(root());
    QCOMPARE(m_index->findBelow(root(), 1, -1), nullptr);

    item->setData(0, KelDeviceTree::ItemTypeRole, 1);
    item->setData(0, KelDeviceTree::ItemIdRole, -1);

    QCOMPARE(m_index->findBelow(root(), 1, -1), item);
    QCOMPARE(m_index->findBelow(root(), 0, 0), nullptr);
}

void tst_KelDeviceTreeIndex::identifierThatIsTextCountsAsItsNumber()
{
    QTreeWidgetItem *item = addItem(root(), 11, 1);
    item->setData(0, KelDeviceTree::ItemIdRole, QStringLiteral("12"));

    QCOMPARE(m_index->findBelow(root(), 11, 12), item);
}

void tst_KelDeviceTreeIndex::removedItemIsForgotten()
{
    QTreeWidgetItem *item = addItem(root(), 11, 1);
    const std::unique_ptr<QTreeWidgetItem> taken(root()->takeChild(root()->indexOfChild(item)));

    QCOMPARE(m_index->findBelow(root(), 11, 1), nullptr);

    taken->setData(0, KelDeviceTree::ItemIdRole, 2);
    QCOMPARE(m_index->findBelow(root(), 11, 2), nullptr);
}

void tst_KelDeviceTreeIndex::itemThatGoesWithItsParentIsForgotten()
{
    QTreeWidgetItem *parent = addItem(root(), 15, 1);
    addItem(addItem(parent, 14, 2), 14, 3);

    delete parent;

    QCOMPARE(m_index->findBelow(root(), 14, 2), nullptr);
    QCOMPARE(m_index->findBelow(root(), 14, 3), nullptr);
}

void tst_KelDeviceTreeIndex::clearedTreeHoldsNothing()
{
    addItem(addItem(root(), 3, -1), 11, 1);

    m_tree->clear();
    QCOMPARE(m_index->findBelow(root(), 11, 1), nullptr);

    QTreeWidgetItem *again = addItem(root(), 11, 1);
    QCOMPARE(m_index->findBelow(root(), 11, 1), again);
}

void tst_KelDeviceTreeIndex::movedItemChangesWhichIsFirst()
{
    QTreeWidgetItem *left = addItem(root(), 3, -1);
    QTreeWidgetItem *right = addItem(root(), 4, -1);
    QTreeWidgetItem *first = addItem(left, 11, 1);
    QTreeWidgetItem *second = addItem(right, 11, 1);
    QCOMPARE(m_index->findBelow(root(), 11, 1), first);

    root()->insertChild(0, root()->takeChild(1));

    QCOMPARE(m_index->findBelow(root(), 11, 1), second);
}

void tst_KelDeviceTreeIndex::sortingChangesWhichIsFirst()
{
    QTreeWidgetItem *first = addItem(root(), 11, 1);
    QTreeWidgetItem *second = addItem(root(), 11, 1);
    first->setText(0, QStringLiteral("b"));
    second->setText(0, QStringLiteral("a"));
    QCOMPARE(m_index->findBelow(root(), 11, 1), first);

    m_tree->sortItems(0, Qt::AscendingOrder);

    QCOMPARE(m_index->findBelow(root(), 11, 1), second);
}

void tst_KelDeviceTreeIndex::receiverOfAChangeMayRemoveTheRowAbove()
{
    QTreeWidgetItem *above = addItem(root(), 5, 1);
    QTreeWidgetItem *item = addItem(root(), 5, 2);
    addItem(root(), 5, 3);
    connect(m_tree.get(), &QTreeWidget::itemChanged, this, [&above] { delete std::exchange(above, nullptr); });

    item->setData(0, KelDeviceTree::ItemIdRole, 20);

    QCOMPARE(m_index->findBelow(root(), 5, 20), item);
    QCOMPARE(m_index->findBelow(root(), 5, 2), nullptr);
}

void tst_KelDeviceTreeIndex::receiverOfAChangeMayRemoveTheRow()
{
    addItem(root(), 5, 2);
    connect(m_tree.get(), &QTreeWidget::itemChanged, this, [](QTreeWidgetItem *changed) { delete changed; });

    m_tree->model()->setData(m_tree->model()->index(0, 0), 20, KelDeviceTree::ItemIdRole);

    QCOMPARE(root()->childCount(), 0);
    QCOMPARE(m_index->findBelow(root(), 5, 2), nullptr);
    QCOMPARE(m_index->findBelow(root(), 5, 20), nullptr);
}

void tst_KelDeviceTreeIndex::subtreeThatIsInsertedWholeIsFound()
{
    auto *group = new QTreeWidgetItem;
    QTreeWidgetItem *camera = addItem(addItem(group, 5, 1), 11, 9);

    m_tree->addTopLevelItem(group);

    QCOMPARE(m_index->findBelow(group, 11, 9), camera);
}

void tst_KelDeviceTreeIndex::parentOutsideTheTreeIsWalked()
{
    QTreeWidgetItem apart;
    QTreeWidgetItem *camera = addItem(addItem(&apart, 5, 1), 11, 9);
    addItem(root(), 11, 9);

    QCOMPARE(m_index->findBelow(&apart, 11, 9), camera);
}

void tst_KelDeviceTreeIndex::cameraTypeFollowsTheTopLevelItem()
{
    QTreeWidgetItem *usb = addItem(root(), 4, -1);
    addItem(usb, 11, 1);

    QCOMPARE(m_index->findCamera(1), nullptr);

    QTreeWidgetItem *camera = addItem(usb, 12, 1);
    QCOMPARE(m_index->findCamera(1), camera);
}

void tst_KelDeviceTreeIndex::topLevelCameraIsNotFoundAsCamera()
{
    addItem(root(), 11, 1);

    QCOMPARE(m_index->findCamera(1), nullptr);
}

void tst_KelDeviceTreeIndex::firstCameraOfTwoTransportsWins()
{
    QTreeWidgetItem *genTL = addItem(root(), 2, -1);
    QTreeWidgetItem *gige = addItem(root(), 3, -1);
    QTreeWidgetItem *genTLDevice = addItem(genTL, 14, 1);
    addItem(gige, 11, 1);

    QCOMPARE(m_index->findCamera(1), genTLDevice);
}

void tst_KelDeviceTreeIndex::containerIsFoundByItsKeyAmongDirectChildrenOnly()
{
    QTreeWidgetItem *gige = addItem(root(), 3, -1);
    QTreeWidgetItem *usb = addItem(root(), 4, -1);
    addContainer(usb, 5, networkCard(1, "AA"));
    addContainer(addItem(gige, 6, -1), 5, networkCard(2, "AA"));
    QCOMPARE(m_index->findContainer(gige, 5, QStringLiteral("AA")), nullptr);

    QTreeWidgetItem *card = addContainer(gige, 5, networkCard(3, "AA"));

    QCOMPARE(m_index->findContainer(gige, 5, QStringLiteral("AA")), card);
    QCOMPARE(m_index->findContainer(gige, 5, QStringLiteral("aa")), nullptr);
    QCOMPARE(m_index->findContainer(gige, 16, QStringLiteral("AA")), nullptr);
}

void tst_KelDeviceTreeIndex::containerWithoutRecordHasTheEmptyKey()
{
    QTreeWidgetItem *gige = addItem(root(), 3, -1);
    QTreeWidgetItem *card = addItem(gige, 5, 1);

    QCOMPARE(m_index->findContainer(gige, 5, QString()), card);
}

void tst_KelDeviceTreeIndex::containerWhoseRecordChangesIsFoundByItsNewKey()
{
    QTreeWidgetItem *usb = addItem(root(), 4, -1);
    QTreeWidgetItem *controller = addContainer(usb, 16, usbController(1, "old"));

    controller->setData(0, KelDeviceTree::ItemInfoRole, variantOf(usbController(1, "new")));

    QCOMPARE(m_index->findContainer(usb, 16, QStringLiteral("old")), nullptr);
    QCOMPARE(m_index->findContainer(usb, 16, QStringLiteral("new")), controller);
}

void tst_KelDeviceTreeIndex::firstContainerOfTwoWithOneKeyWins()
{
    QTreeWidgetItem *usb = addItem(root(), 4, -1);
    QTreeWidgetItem *first = addContainer(usb, 16, usbController(1, "key"));
    addContainer(usb, 16, usbController(2, "key"));

    QCOMPARE(m_index->findContainer(usb, 16, QStringLiteral("key")), first);
}

void tst_KelDeviceTreeIndex::interfaceIsFoundByIdentifierAndByKeyWithNumber()
{
    QTreeWidgetItem *genTL = addItem(root(), 2, -1);
    QTreeWidgetItem *first = addContainer(genTL, 15, genTLInterface(70001, "IF", 1));
    QTreeWidgetItem *second = addContainer(genTL, 15, genTLInterface(70002, "IF", 2));

    QCOMPARE(m_index->findInterface(genTL, 70001), first);
    QCOMPARE(m_index->findInterface(genTL, QStringLiteral("IF"), 2), second);
    QCOMPARE(m_index->findInterface(genTL, 70003), nullptr);
    QCOMPARE(m_index->findInterface(genTL, QStringLiteral("IF"), 3), nullptr);
}

void tst_KelDeviceTreeIndex::interfaceIdentifierComesFromTheRecord()
{
    QTreeWidgetItem *genTL = addItem(root(), 2, -1);
    QTreeWidgetItem *item = addContainer(genTL, 15, genTLInterface(70001, "IF"));
    item->setData(0, KelDeviceTree::ItemIdRole, 70009);

    QCOMPARE(m_index->findInterface(genTL, 70001), item);
    QCOMPARE(m_index->findInterface(genTL, 70009), nullptr);
}

void tst_KelDeviceTreeIndex::randomChangesGiveWhatTheWalksGive()
{
    QRandomGenerator random(20261121);
    for (const int type : {17, 3, 4, 2, 1}) {
        addItem(root(), type, -1);
    }

    for (int step = 0; step < 4000; ++step) {
        QTreeWidgetItem *item = anyItem(root(), random);
        switch (random.bounded(6)) {
        case 0:
            item->setData(0, KelDeviceTree::ItemIdRole, random.bounded(6));
            break;
        case 1:
            item->setData(0, KelDeviceTree::ItemTypeRole, random.bounded(11, 15));
            break;
        case 2:
            if (item->parent() && random.bounded(2) == 0) {
                delete item;
            }
            break;
        case 3:
            if (QTreeWidgetItem *parent = item->parent()) {
                parent->insertChild(0, parent->takeChild(parent->indexOfChild(item)));
            }
            break;
        default:
            addItem(item, random.bounded(11, 15), random.bounded(6));
            break;
        }

        const int type = random.bounded(11, 15);
        const int id = random.bounded(6);
        QCOMPARE(m_index->findBelow(root(), type, id), walk(root(), type, id));
        QTreeWidgetItem *parent = anyItem(root(), random);
        QCOMPARE(m_index->findBelow(parent, type, id), walk(parent, type, id));
        QCOMPARE(m_index->findCamera(id), walkToCamera(root(), id));
    }
}

QTEST_MAIN(tst_KelDeviceTreeIndex)
#include "tst_keldevicetreeindex.moc"
