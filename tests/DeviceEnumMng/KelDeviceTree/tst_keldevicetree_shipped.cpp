// SPDX-License-Identifier: Apache-2.0
// The tree as a host gets it: the shared libraries, their exported classes alone, and a scripted
// libKelAIndustryControl.so.1 that the loader finds first.
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>
#include <DeviceEnumMng/KelDeviceTree.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTranslator>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(QTreeWidgetItem *)

class tst_KelDeviceTree_shipped : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<QTreeWidgetItem *>("QTreeWidgetItem*"); }
    void init();
    void cleanup();

    void cameraComesGoesAndReturnsWithItsIdentifier();
    void connectedCameraOutlivesItsRemoval();
    void iconsAreCompiledIn();
    void translationsAreCompiledIn();
    void remoteDeviceIsAddedAndRemoved();
    void twoTreesLiveSideBySide();
    void treeGoesInTheMiddleOfAPass();
    void treeDestroyedByAHostInASlot();
    void allExportedClassesCanBeMade();

private:
    void runPass()
    {
        QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
        m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);
        QTRY_COMPARE(finished.count(), 1);
    }
    QTreeWidgetItem *findSerial(const QString &serial)
    {
        for (QTreeWidgetItemIterator item(m_tree.get()); *item; ++item) {
            if (m_tree->getCameraSerial(*item) == serial) {
                return *item;
            }
        }
        return nullptr;
    }

    std::unique_ptr<KelDeviceTree> m_tree;
};

void tst_KelDeviceTree_shipped::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
}

void tst_KelDeviceTree_shipped::cleanup()
{
    m_tree.reset();
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_shipped::cameraComesGoesAndReturnsWithItsIdentifier()
{
    const QString serial = QStringLiteral("S1");
    scriptedAccess().plug(gigeCamera("S1"));
    runPass();
    QVERIFY(findSerial(serial));
    const QVariant id = findSerial(serial)->data(0, KelDeviceTree::ItemIdRole);

    scriptedAccess().unplug("S1");
    runPass();
    QVERIFY(!findSerial(serial));

    scriptedAccess().plug(gigeCamera("S1"));
    runPass();
    QVERIFY(findSerial(serial));
    QCOMPARE(findSerial(serial)->data(0, KelDeviceTree::ItemIdRole), id);
}

void tst_KelDeviceTree_shipped::connectedCameraOutlivesItsRemoval()
{
    scriptedAccess().plug(gigeCamera("S1"));
    runPass();
    QTreeWidgetItem *item = findSerial(QStringLiteral("S1"));
    auto record = item->data(0, KelDeviceTree::ItemInfoRole).value<KELA_STRUCT_DEVICE_INFO>();
    record.deviceState = KELA_DEV_STATE_GIGE_CONNECTED;
    item->setData(0, KelDeviceTree::ItemInfoRole, QVariant::fromValue(record));
    m_tree->setCameraItemIcon(item, KELA_DEV_STATE_GIGE_CONNECTED);

    scriptedAccess().unplug("S1");
    runPass();

    QCOMPARE(findSerial(QStringLiteral("S1")), item);
    QCOMPARE(item->data(0, KelDeviceTree::ItemConnectedRole), QVariant(true));
}

void tst_KelDeviceTree_shipped::iconsAreCompiledIn()
{
    scriptedAccess().plug(gigeCamera("S1"));
    runPass();

    QVERIFY(!findSerial(QStringLiteral("S1"))->icon(0).pixmap(24, 24).isNull());
    QVERIFY(!QPixmap(QStringLiteral(":/KelToolBarBtn/item_connect.png")).isNull());
    QVERIFY(!QPixmap(QStringLiteral(":/CustomCtr/tree/Gray_refresh.png")).isNull());
}

void tst_KelDeviceTree_shipped::translationsAreCompiledIn()
{
    for (const QString &locale : {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("zh_CN")}) {
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/translations/DeviceEnumMng_%1.qm").arg(locale)));
        QVERIFY(!translator.translate("KelDeviceTree", "Other Device").isEmpty());
    }
}

void tst_KelDeviceTree_shipped::remoteDeviceIsAddedAndRemoved()
{
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");

    const int id = m_tree->addRemoteDevice(info);
    QVERIFY(m_tree->findCameraItem(id));

    QCOMPARE(m_tree->removeRemoteDevice(info), 0);
    QVERIFY(!m_tree->findCameraItem(id));
}

void tst_KelDeviceTree_shipped::twoTreesLiveSideBySide()
{
    scriptedAccess().plug(gigeCamera("S1"));
    KelDeviceTree other;
    QSignalSpy made(&other, &KelDeviceTree::sigNewDeviceItem);

    other.updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);
    runPass();
    QTRY_COMPARE(made.count(), 1);

    QCOMPARE(made.at(0).at(0).value<QTreeWidgetItem *>()->data(0, KelDeviceTree::ItemIdRole),
             findSerial(QStringLiteral("S1"))->data(0, KelDeviceTree::ItemIdRole));
}

void tst_KelDeviceTree_shipped::treeGoesInTheMiddleOfAPass()
{
    scriptedAccess().stall(Operation::EnumDevices);
    m_tree->updateDeviceTypes(1 | 4 | 8 | 16, true, true, false);
    QVERIFY(scriptedAccess().waitUntilStalled());

    m_tree.reset();

    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_KelDeviceTree_shipped::treeDestroyedByAHostInASlot()
{
    scriptedAccess().plug(gigeCamera("S1"));
    const QPointer<KelDeviceTree> tree = m_tree.release();
    connect(tree.data(), &KelDeviceTree::sigNewDeviceItem, this, [tree] { delete tree.data(); });

    tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);

    QTRY_VERIFY(!tree);
}

void tst_KelDeviceTree_shipped::allExportedClassesCanBeMade()
{
    KelGenTLMenu menu(nullptr);
    CDefaultCtiSelWidget panel(nullptr);

    QCOMPARE(panel.GetCtiDir(), QStringLiteral("/opt/KELS/lib/64/"));
    QVERIFY(!menu.actions().isEmpty());
}

QTEST_MAIN(tst_KelDeviceTree_shipped)
#include "tst_keldevicetree_shipped.moc"
