// SPDX-License-Identifier: Apache-2.0
// Every write into a row tells whoever listens, who may take the row or the whole tree away.
#include "TreeTest.h"

#include <QPointer>
#include <QtTest>

#include <functional>

using namespace TreeRecords;

namespace
{

using Action = std::function<void(KelDeviceTree &)>;

constexpr int kCamera = 21;
/// More changes than any row gets.
constexpr int kChanges = 12;

KELA_STRUCT_DEVICE_INFO renamed(KELA_STRUCT_DEVICE_INFO info)
{
    info.deviceInfo.modelName[0] = 'Z';
    info.deviceState = info.deviceInfo.transport == KELA_INTERFACE_TYPE_GIGE ? KELA_DEV_STATE_GIGE_IN_USE
                                                                             : KELA_DEV_STATE_GENTL_IN_USE;
    return info;
}

void addKnownRows(KelDeviceTree &tree)
{
    tree.onNewNetWork(variantOf(networkCard(80001, "AA")));
    tree.onNewGenTLInterface(variantOf(genTLInterface(70001, "IF", 1)));
    tree.onNewDevice(variantOf(gigeDevice(kCamera, "S1", "AA")));
    tree.onNewDevice(variantOf(usbDevice(kCamera + 1, "U1")));
    tree.onNewDevice(variantOf(genTLDevice(kCamera + 2, "G1", "IF", 1)));
}

KELA_STRUCT_DEVICE_INFO virtualCamera(int id)
{
    KELA_STRUCT_DEVICE_INFO info = gigeDevice(id, "V1");
    info.deviceInfo.placement = KELA_PLACEMENT_VIRTUAL;
    return info;
}

} // namespace

Q_DECLARE_METATYPE(Action)

class tst_KelDeviceTree_changedrows : public TreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void treeMayBeDestroyedByAChangedRow_data() { actions(); }
    void treeMayBeDestroyedByAChangedRow();
    void rowMayBeRemovedByAChangedRow_data() { actions(); }
    void rowMayBeRemovedByAChangedRow();
    void treeMayBeDestroyedByAnUnfoldedContainer_data() { actions(); }
    void treeMayBeDestroyedByAnUnfoldedContainer();
    void treeMayBeDestroyedByTheNextCurrentRow_data() { deletions(); }
    void treeMayBeDestroyedByTheNextCurrentRow();
    void everyChildIsToldOfWhenASlotAddsOne();

private:
    static void actions();
    static void deletions();
};

void tst_KelDeviceTree_changedrows::actions()
{
    QTest::addColumn<Action>("act");
    const auto row = [](const char *name, Action act) { QTest::newRow(name) << std::move(act); };

    row("new GigE camera", [](auto &tree) { tree.onNewDevice(variantOf(gigeDevice(90, "S9", "AA"))); });
    row("new virtual camera", [](auto &tree) { tree.onNewDevice(variantOf(virtualCamera(90))); });
    row("new USB camera", [](auto &tree) { tree.onNewDevice(variantOf(usbDevice(90, "U9"))); });
    row("new GenTL device", [](auto &tree) { tree.onNewDevice(variantOf(genTLDevice(90, "G9", "IF", 1))); });
    row("updated GigE camera",
        [](auto &tree) { tree.onUpdateDeviceInfo(variantOf(renamed(gigeDevice(kCamera, "S1", "AA")))); });
    row("updated USB camera",
        [](auto &tree) { tree.onUpdateDeviceInfo(variantOf(renamed(usbDevice(kCamera + 1, "U1")))); });
    row("updated GenTL device", [](auto &tree) {
        tree.onUpdateDeviceInfo(variantOf(renamed(genTLDevice(kCamera + 2, "G1", "IF", 1))));
    });
    row("state of the host", [](auto &tree) {
        tree.setCameraItemIcon(tree.findCameraItem(kCamera), KELA_DEV_STATE_GIGE_CONNECTED);
    });
    row("new card", [](auto &tree) { tree.onNewNetWork(variantOf(networkCard(80009, "BB"))); });
    row("updated card",
        [](auto &tree) { tree.onUpdateNetWorkInfo(variantOf(networkCard(80007, "AA", "eth7"))); });
    row("new controller", [](auto &tree) { tree.onNewUSBController(variantOf(usbController(3, "C"))); });
    row("new interface", [](auto &tree) { tree.onNewGenTLInterface(variantOf(genTLInterface(70009, "I9"))); });
    row("updated interface",
        [](auto &tree) { tree.onUpdateGenTLInterface(variantOf(genTLInterface(70001, "IF", 1, "Renamed"))); });
}

void tst_KelDeviceTree_changedrows::treeMayBeDestroyedByAChangedRow()
{
    QFETCH(Action, act);
    for (int last = 1; last <= kChanges; ++last) {
        auto *tree = new KelDeviceTree;
        addKnownRows(*tree);
        int changes = 0;
        connect(tree, &QTreeWidget::itemChanged, tree, [&changes, last, tree] {
            if (++changes == last)
                delete tree;
        });
        const QPointer<KelDeviceTree> isAlive(tree);

        act(*tree);

        QCOMPARE(isAlive.isNull(), changes >= last);
        delete isAlive.data();
    }
}

void tst_KelDeviceTree_changedrows::rowMayBeRemovedByAChangedRow()
{
    QFETCH(Action, act);
    for (int last = 1; last <= kChanges; ++last) {
        KelDeviceTree tree;
        addKnownRows(tree);
        int changes = 0;
        connect(&tree, &QTreeWidget::itemChanged, &tree, [&changes, last](QTreeWidgetItem *item) {
            if (++changes == last)
                delete item;
        });

        act(tree);

        QCOMPARE(tree.topLevelItemCount(), 4);
    }
}

void tst_KelDeviceTree_changedrows::treeMayBeDestroyedByAnUnfoldedContainer()
{
    QFETCH(Action, act);
    auto *tree = new KelDeviceTree;
    addKnownRows(*tree);
    bool isUnfolded = false;
    connect(tree, &QTreeWidget::itemExpanded, tree, [&isUnfolded, tree] {
        isUnfolded = true;
        delete tree;
    });
    const QPointer<KelDeviceTree> isAlive(tree);

    act(*tree);

    QCOMPARE(isAlive.isNull(), isUnfolded);
    delete isAlive.data();
}

void tst_KelDeviceTree_changedrows::deletions()
{
    QTest::addColumn<Action>("act");
    const auto row = [](const char *name, Action act) { QTest::newRow(name) << std::move(act); };

    row("camera", [](auto &tree) {
        tree.setCurrentItem(tree.findCameraItem(kCamera));
        tree.onDeleteDevice(variantOf(gigeDevice(kCamera, "S1", "AA")));
    });
    row("card", [](auto &tree) {
        tree.setCurrentItem(tree.findItem(KelDeviceTree::ItemNetWork, 80001));
        tree.onDeleteNetWork(variantOf(networkCard(80001, "AA")));
    });
    row("controller", [](auto &tree) {
        tree.onNewUSBController(variantOf(usbController(3, "C")));
        tree.setCurrentItem(tree.findItem(KelDeviceTree::ItemUSBController, 3));
        tree.onDeleteUSBController(variantOf(usbController(3, "C")));
    });
    row("interface", [](auto &tree) {
        tree.setCurrentItem(tree.findItem(KelDeviceTree::ItemGenTLInterface, 70001));
        tree.onDeleteGenTLInterface(variantOf(genTLInterface(70001, "IF", 1)));
    });
}

void tst_KelDeviceTree_changedrows::treeMayBeDestroyedByTheNextCurrentRow()
{
    QFETCH(Action, act);
    auto *tree = new KelDeviceTree;
    addKnownRows(*tree);
    const QPointer<KelDeviceTree> isAlive(tree);
    // The first change makes the row current that is deleted then.
    int changes = 0;
    connect(tree, &QTreeWidget::currentItemChanged, tree, [&changes, tree] {
        if (++changes == 2)
            delete tree;
    });

    act(*tree);

    QVERIFY(isAlive.isNull());
}

void tst_KelDeviceTree_changedrows::everyChildIsToldOfWhenASlotAddsOne()
{
    m_tree->onNewNetWork(variantOf(networkCard(80001, "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(1, "S1", "AA")));
    m_tree->onNewDevice(variantOf(gigeDevice(2, "S2", "AA")));
    QStringList gone;
    connect(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem, this, [&](QTreeWidgetItem *item) {
        gone.append(m_tree->getCameraSerial(item));
        if (gone.size() == 1)
            m_tree->onNewDevice(variantOf(gigeDevice(3, "S3", "AA")));
    });

    m_tree->onDeleteNetWork(variantOf(networkCard(80001, "AA")));

    gone.sort();
    QCOMPARE(gone, (QStringList{QStringLiteral("S1"), QStringLiteral("S2"), QStringLiteral("S3")}));
}

QTEST_MAIN(tst_KelDeviceTree_changedrows)
#include "tst_keldevicetree_changedrows.moc"
