// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include "../KelGenTLMenu/importdialog.h"
#include "../KelGenTLMenu/producerfolder.h"

#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomLoadingDialog.h>
#include <CustomCtr/CustomRadioButton.h>
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>
#include <DeviceEnumMng/KelGenTLMenu.h>
#include <ScriptedAccess.h>

#include <QSignalSpy>
#include <QTreeWidgetItem>
#include <QtTest>

#include <memory>

namespace
{

constexpr int kLoadingId = 4097;

QString defaultPath(const QString &name)
{
    return ProducerFolder::kFolder + name;
}

} // namespace

class TestKelDeviceTreeProducers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void constructionRegistersWhatIsSwitchedOnAndEnumeratesNothing();
    void switchingOffWarnsThenRemovesThenEnumeratesOnce();
    void switchingOnAddsTheProducer();
    void virtualPortTouchesTheEnumeratorNotAtAll();
    void importAddsAndDeletingItsInterfaceRemovesWithoutAWarning();
    void interfaceOfADefaultProducerIsNeverDeleted();
    void closingThePanelUnchangedEnumeratesOnce();
    void unknownInterfaceAnswersForTheLastOne();
    void interfaceListIsClearedAndFilledUnchecked();
    void producerOfAnInterfaceIsKnownWithoutItsRow();
    void producerThatIsOffIsNobodysProducer();
    void unknownStateCountsAsLoaded();
    void producerThatIsOffIsRemovedWithoutAWarningWhenItLeavesTheMenu();
    void warningIsAnsweredFromTheStatesBefore();
    void changeDuringTheWarningIsAppliedAfterIt();
    void receiverMayDestroyTheTree();
    void receiverMayDestroyTheTreeWhileTheMenuHides();
    void removalDoesNotWaitForAPassInsideTheProducer();
    void virtualPortSwitchIsForwarded();

private:
    static bool addDefault(const QString &name, const std::string &interface, uint32_t number);
    QString addImported(const std::string &interface, uint32_t number);
    void makeTree();
    void enumerate();
    void closePanel();
    QCheckBox *box(const QString &text) const;
    QTreeWidgetItem *interfaceItem(const QString &text) const;
    static std::size_t unloads(const QString &path);
    static bool wasEnumerated(const QString &path);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KelDeviceTree> m_tree;
    std::unique_ptr<QSignalSpy> m_finished;
    std::unique_ptr<QSignalSpy> m_warned;
};

bool TestKelDeviceTreeProducers::addDefault(const QString &name, const std::string &interface, uint32_t number)
{
    scriptedAccess().plugInterface(defaultPath(name).toStdString(), genTLInterface(interface, number));
    return ProducerFolder::add(name);
}

QString TestKelDeviceTreeProducers::addImported(const std::string &interface, uint32_t number)
{
    const QString path = m_folder->filePath(QStringLiteral("imported.cti"));
    scriptedAccess().plugInterface(path.toStdString(), genTLInterface(interface, number));
    return QFile(path).open(QIODevice::WriteOnly) ? path : QString();
}

void TestKelDeviceTreeProducers::makeTree()
{
    m_tree = std::make_unique<KelDeviceTree>(nullptr);
    m_finished = std::make_unique<QSignalSpy>(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    m_warned = std::make_unique<QSignalSpy>(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti);
}

void TestKelDeviceTreeProducers::enumerate()
{
    const int before = m_finished->count();
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GENTL, true, true, false);
    QTRY_COMPARE(m_finished->count(), before + 1);
}

void TestKelDeviceTreeProducers::closePanel()
{
    QWidget *menu = m_tree->findChild<CDefaultCtiSelWidget *>()->parentWidget();
    menu->show();
    menu->hide();
}

QCheckBox *TestKelDeviceTreeProducers::box(const QString &text) const
{
    const auto boxes = m_tree->findChildren<CustomCheckBox *>();
    for (CustomCheckBox *one : boxes) {
        if (one->text() == text) {
            return one;
        }
    }
    return nullptr;
}

QTreeWidgetItem *TestKelDeviceTreeProducers::interfaceItem(const QString &text) const
{
    QTreeWidgetItem *group = m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1);
    for (int row = 0; row < group->childCount(); ++row) {
        const auto record = group->child(row)->data(0, KelDeviceTree::ItemInfoRole).value<KELA_GENTL_IF_INFO>();
        if (QString::fromLatin1(record.identifier) == text) {
            return group->child(row);
        }
    }
    return nullptr;
}

std::size_t TestKelDeviceTreeProducers::unloads(const QString &path)
{
    std::size_t count = 0;
    for (const ScriptedCall &call : scriptedAccess().calls(Operation::UnloadGenTLLibrary)) {
        count += call.subject == path.toStdString() ? 1U : 0U;
    }
    return count;
}

bool TestKelDeviceTreeProducers::wasEnumerated(const QString &path)
{
    const auto calls = scriptedAccess().calls(Operation::EnumInterfacesByGenTL);
    return std::any_of(calls.begin(), calls.end(),
                       [&](const ScriptedCall &call) { return call.subject == path.toStdString(); });
}

void TestKelDeviceTreeProducers::init()
{
    scriptedAccess().reset();
    QVERIFY(ProducerFolder::reset());
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestKelDeviceTreeProducers::cleanup()
{
    scriptedAccess().release();
    m_finished.reset();
    m_warned.reset();
    m_tree.reset();
    CustomLoadingDialog::hideLoading(kLoadingId);
}

void TestKelDeviceTreeProducers::constructionRegistersWhatIsSwitchedOnAndEnumeratesNothing()
{
    QVERIFY(addDefault(QStringLiteral("KelFGon.cti"), "if-on", 1));
    QVERIFY(addDefault(QStringLiteral("off.cti"), "if-off", 2));
    makeTree();
    QTest::qWait(50);
    QCOMPARE(scriptedAccess().count(Operation::EnumInterfacesByGenTL), std::size_t{0});

    enumerate();

    QVERIFY(wasEnumerated(defaultPath(QStringLiteral("KelFGon.cti"))));
    QVERIFY(!wasEnumerated(defaultPath(QStringLiteral("off.cti"))));
    QVERIFY(interfaceItem(QStringLiteral("if-on")));
}

void TestKelDeviceTreeProducers::switchingOffWarnsThenRemovesThenEnumeratesOnce()
{
    const QString path = defaultPath(QStringLiteral("KelFGa.cti"));
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    enumerate();
    std::size_t unloadsAtWarning = 99;
    connect(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti, this,
            [&](const QString &warned) { unloadsAtWarning = unloads(warned); });
    const int passes = m_finished->count();

    box(QStringLiteral("KelFGa"))->setChecked(false);
    closePanel();

    QCOMPARE(m_warned->count(), 1);
    QCOMPARE(m_warned->at(0).at(0).toString(), path);
    QCOMPARE(unloadsAtWarning, std::size_t{0});
    QCOMPARE(unloads(path), std::size_t{1});
    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
    QTRY_COMPARE(m_finished->count(), passes + 1);
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
    QVERIFY(!interfaceItem(QStringLiteral("if-a")));
    QTest::qWait(50);
    QCOMPARE(m_finished->count(), passes + 1);
}

void TestKelDeviceTreeProducers::switchingOnAddsTheProducer()
{
    QVERIFY(addDefault(QStringLiteral("a.cti"), "if-a", 1));
    makeTree();
    box(QStringLiteral("a"))->setChecked(true);
    closePanel();

    QTRY_VERIFY(interfaceItem(QStringLiteral("if-a")));
    QCOMPARE(m_warned->count(), 0);
    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("a.cti:1;"));
}

void TestKelDeviceTreeProducers::virtualPortTouchesTheEnumeratorNotAtAll()
{
    const QString path = defaultPath(QStringLiteral("KelFGCML.cti"));
    QVERIFY(addDefault(QStringLiteral("KelFGCML.cti"), "port-0", 1));
    makeTree();
    enumerate();
    QTreeWidgetItem *item = interfaceItem(QStringLiteral("port-0"));
    QVERIFY(item);
    const long id = item->data(0, KelDeviceTree::ItemIdRole).toInt();
    QVERIFY(!m_tree->IsOpenByVirtualPort(id));
    const int passes = m_finished->count();

    const auto radios = m_tree->findChildren<CustomRadioButton *>();
    for (CustomRadioButton *radio : radios) {
        radio->setChecked(radio->text() == QLatin1String("Virtual Port"));
    }
    closePanel();
    QTRY_COMPARE(m_finished->count(), passes + 1);

    QVERIFY(m_tree->IsOpenByVirtualPort(id));
    QCOMPARE(unloads(path), std::size_t{0});
    QCOMPARE(m_warned->count(), 0);
    QCOMPARE(interfaceItem(QStringLiteral("port-0")), item);
}

void TestKelDeviceTreeProducers::importAddsAndDeletingItsInterfaceRemovesWithoutAWarning()
{
    makeTree();
    const QString path = addImported("if-own", 5);
    ImportDialog::choose(path);
    m_tree->findChild<KelGenTLMenu *>()->OnAddCtiFile();
    QTRY_VERIFY(interfaceItem(QStringLiteral("if-own")));
    QVERIFY(m_tree->Is3rdCtiInterface(interfaceItem(QStringLiteral("if-own"))));
    const int passes = m_finished->count();

    m_tree->DeleteCtiFile(interfaceItem(QStringLiteral("if-own")));

    QCOMPARE(unloads(path), std::size_t{1});
    QCOMPARE(m_warned->count(), 0);
    QTRY_VERIFY(m_finished->count() > passes);
    QVERIFY(!interfaceItem(QStringLiteral("if-own")));
}

void TestKelDeviceTreeProducers::interfaceOfADefaultProducerIsNeverDeleted()
{
    const QString path = defaultPath(QStringLiteral("KelFGa.cti"));
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    enumerate();
    QTreeWidgetItem *item = interfaceItem(QStringLiteral("if-a"));
    QVERIFY(!m_tree->Is3rdCtiInterface(item));

    m_tree->DeleteCtiFile(item);
    m_tree->DeleteCtiFile(m_tree->findItem(KelDeviceTree::ItemGigERoot, -1));
    m_tree->DeleteCtiFile(nullptr);

    QCOMPARE(unloads(path), std::size_t{0});
    QCOMPARE(interfaceItem(QStringLiteral("if-a")), item);
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void TestKelDeviceTreeProducers::closingThePanelUnchangedEnumeratesOnce()
{
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    closePanel();

    QTRY_COMPARE(m_finished->count(), 1);
    QTest::qWait(50);
    QCOMPARE(m_finished->count(), 1);
    QCOMPARE(m_warned->count(), 0);
}

void TestKelDeviceTreeProducers::unknownInterfaceAnswersForTheLastOne()
{
    QVERIFY(addDefault(QStringLiteral("KelFGCML.cti"), "port-0", 1));
    ProducerFolder::store(QStringLiteral("KelFGCML.cti:2;"));
    makeTree();
    QVERIFY(!m_tree->IsOpenByVirtualPort(123456));
    enumerate();

    QVERIFY(m_tree->IsOpenByVirtualPort(123456));
}

void TestKelDeviceTreeProducers::interfaceListIsClearedAndFilledUnchecked()
{
    const QString path = defaultPath(QStringLiteral("KelFGa.cti"));
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-b", 2));
    makeTree();
    enumerate();
    QTreeWidgetItem *first = interfaceItem(QStringLiteral("if-a"));
    QTreeWidgetItem *second = interfaceItem(QStringLiteral("if-b"));
    QList<QTreeWidgetItem *> items{m_tree->findItem(KelDeviceTree::ItemAll, -1)};
    m_tree->GetInterfaceItemList(path, items);
    QCOMPARE(items, (QList<QTreeWidgetItem *>{first, second}));
    m_tree->GetInterfaceItemList(QStringLiteral("/no/such.cti"), items);
    QVERIFY(items.isEmpty());

    // An identifier whose row is gone gives the last row, and none at all when there are no rows.
    m_tree->onDeleteGenTLInterface(first->data(0, KelDeviceTree::ItemInfoRole));
    m_tree->GetInterfaceItemList(path, items);
    QCOMPARE(items, (QList<QTreeWidgetItem *>{second, second}));
    m_tree->onDeleteGenTLInterface(second->data(0, KelDeviceTree::ItemInfoRole));
    m_tree->GetInterfaceItemList(path, items);
    QCOMPARE(items, (QList<QTreeWidgetItem *>{nullptr, nullptr}));
    QVERIFY(!m_tree->Is3rdCtiInterface(nullptr));
}

void TestKelDeviceTreeProducers::producerOfAnInterfaceIsKnownWithoutItsRow()
{
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    QVERIFY(addDefault(QStringLiteral("KelFGb.cti"), "if-b", 2));
    makeTree();
    enumerate();
    QTreeWidgetItem *row = interfaceItem(QStringLiteral("if-a"));
    const long id = row->data(0, KelDeviceTree::ItemIdRole).toInt();
    QCOMPARE(m_tree->producerOfInterface(id), defaultPath(QStringLiteral("KelFGa.cti")));

    m_tree->onDeleteGenTLInterface(row->data(0, KelDeviceTree::ItemInfoRole));
    QCOMPARE(m_tree->producerOfInterface(id), defaultPath(QStringLiteral("KelFGa.cti")));
    QVERIFY(m_tree->producerOfInterface(123456).isEmpty());
}

void TestKelDeviceTreeProducers::producerThatIsOffIsNobodysProducer()
{
    // Two links to one file list the same interface.
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    QVERIFY(addDefault(QStringLiteral("KelFGb.cti"), "if-a", 1));
    makeTree();
    enumerate();
    const long id = interfaceItem(QStringLiteral("if-a"))->data(0, KelDeviceTree::ItemIdRole).toInt();
    QCOMPARE(m_tree->producerOfInterface(id), defaultPath(QStringLiteral("KelFGa.cti")));

    box(QStringLiteral("KelFGa"))->setChecked(false);
    closePanel();

    QCOMPARE(m_tree->producerOfInterface(id), defaultPath(QStringLiteral("KelFGb.cti")));
}

void TestKelDeviceTreeProducers::unknownStateCountsAsLoaded()
{
    QVERIFY(addDefault(QStringLiteral("a.cti"), "if-a", 1));
    ProducerFolder::store(QStringLiteral("a.cti:17;"));
    makeTree();
    enumerate();

    QVERIFY(interfaceItem(QStringLiteral("if-a")));
}

void TestKelDeviceTreeProducers::producerThatIsOffIsRemovedWithoutAWarningWhenItLeavesTheMenu()
{
    QVERIFY(addDefault(QStringLiteral("a.cti"), "if-a", 1));
    makeTree();
    auto *panel = m_tree->findChild<CDefaultCtiSelWidget *>();
    panel->GetCtiStates().clear();
    m_tree->OnCtiFileChanged();

    QCOMPARE(m_warned->count(), 0);
    QCOMPARE(unloads(defaultPath(QStringLiteral("a.cti"))), std::size_t{0});
    QTRY_COMPARE(m_finished->count(), 1);
}

void TestKelDeviceTreeProducers::warningIsAnsweredFromTheStatesBefore()
{
    QVERIFY(addDefault(QStringLiteral("KelFGCML.cti"), "port-0", 1));
    ProducerFolder::store(QStringLiteral("KelFGCML.cti:2;"));
    makeTree();
    enumerate();
    const long id = interfaceItem(QStringLiteral("port-0"))->data(0, KelDeviceTree::ItemIdRole).toInt();
    bool wasOpen = false;
    QList<QTreeWidgetItem *> items;
    connect(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti, this, [&](const QString &path) {
        wasOpen = m_tree->IsOpenByVirtualPort(id);
        m_tree->GetInterfaceItemList(path, items);
    });

    box(QStringLiteral("KelFGCML"))->setChecked(false);
    closePanel();

    QVERIFY(wasOpen);
    QCOMPARE(items.size(), 1);
    QVERIFY(!m_tree->IsOpenByVirtualPort(id));
}

void TestKelDeviceTreeProducers::changeDuringTheWarningIsAppliedAfterIt()
{
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    const QString path = addImported("if-own", 5);
    ImportDialog::choose(path);
    m_tree->findChild<KelGenTLMenu *>()->OnAddCtiFile();
    QTRY_VERIFY(interfaceItem(QStringLiteral("if-own")));
    connect(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti, this,
            [&] { m_tree->DeleteCtiFile(interfaceItem(QStringLiteral("if-own"))); });

    box(QStringLiteral("KelFGa"))->setChecked(false);
    closePanel();

    QCOMPARE(m_warned->count(), 1);
    QCOMPARE(unloads(defaultPath(QStringLiteral("KelFGa.cti"))), std::size_t{1});
    QCOMPARE(unloads(path), std::size_t{1});
    QTRY_VERIFY(!interfaceItem(QStringLiteral("if-own")));
    QVERIFY(!interfaceItem(QStringLiteral("if-a")));
}

void TestKelDeviceTreeProducers::receiverMayDestroyTheTree()
{
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    enumerate();
    auto *panel = m_tree->findChild<CDefaultCtiSelWidget *>();
    panel->GetCtiStates()[QStringLiteral("KelFGa.cti")] = 0;
    connect(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti, this, [this] { m_tree.reset(); });
    m_tree->OnCtiFileChanged();

    QVERIFY(!m_tree);
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void TestKelDeviceTreeProducers::receiverMayDestroyTheTreeWhileTheMenuHides()
{
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    const QPointer<KelGenTLMenu> menu = m_tree->findChild<KelGenTLMenu *>();
    QMenu *panelMenu = menu->actions().constFirst()->menu();
    menu->popup(QPoint(10, 10));
    panelMenu->popup(QPoint(40, 10));
    connect(m_tree.get(), &KelDeviceTree::sigBeforeDeleteCti, this, [this] { m_tree.reset(); });
    box(QStringLiteral("KelFGa"))->setChecked(false);

    QTest::keyClick(panelMenu, Qt::Key_Escape);

    QVERIFY(!m_tree);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!menu);
}

void TestKelDeviceTreeProducers::removalDoesNotWaitForAPassInsideTheProducer()
{
    const QString path = defaultPath(QStringLiteral("KelFGa.cti"));
    QVERIFY(addDefault(QStringLiteral("KelFGa.cti"), "if-a", 1));
    makeTree();
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL);
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GENTL, true, true, false);
    QVERIFY(scriptedAccess().waitUntilStalled());

    box(QStringLiteral("KelFGa"))->setChecked(false);
    closePanel();

    QCOMPARE(unloads(path), std::size_t{1});
    scriptedAccess().release();
    QTRY_COMPARE(m_finished->count(), 2);
    QVERIFY(!interfaceItem(QStringLiteral("if-a")));
}

void TestKelDeviceTreeProducers::virtualPortSwitchIsForwarded()
{
    QVERIFY(addDefault(QStringLiteral("CML.cti"), "port-0", 1));
    makeTree();
    m_tree->SetEnableVirtualPort(false);

    const auto radios = m_tree->findChildren<CustomRadioButton *>();
    QCOMPARE(radios.size(), 2);
    QVERIFY(!radios.at(0)->isEnabled() && !radios.at(1)->isEnabled());
}

QTEST_MAIN(TestKelDeviceTreeProducers)
#include "tst_keldevicetree_producers.moc"
