// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include <CustomCtr/CustomLoadingDialog.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QThread>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>

using namespace TreeRecords;

namespace
{

constexpr int kLoadingId = 4097;
constexpr unsigned int kAll = 1 | 4 | 8 | 16;

// Boxes that report a failed pass.
QList<QDialog *> failureBoxes()
{
    QList<QDialog *> boxes;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QDialog *>(widget);
        if (dialog && dialog->isVisible() && dialog->windowTitle() == QStringLiteral("Enumeration failed.")) {
            boxes.append(dialog);
        }
    }
    return boxes;
}

QString allTexts(const QDialog *dialog)
{
    QString texts;
    for (const QLabel *label : dialog->findChildren<QLabel *>()) {
        texts += label->text();
    }
    return texts;
}

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

QByteArray bytesOf(const void *record, int size)
{
    return QByteArray(static_cast<const char *>(record), size);
}

KELA_DEVICE_INFO_EX numberedCamera(int number)
{
    KELA_DEVICE_INFO_EX info = gigeCamera("S" + std::to_string(1000 + number), 2);
    info.special.gige.macLow = static_cast<uint32_t>(number);
    return info;
}

} // namespace

class tst_KelDeviceTree_bridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void foundCameraBecomesARow();
    void removedDeviceReturnsWithItsEarlierId();
    void passesStartInTheOrderGigeUsbCameraLinkGenTL();
    void onlyTheGenTLPassTakesTheCallersFlags();
    void shownSearchNamesGenTL();
    void unshownTransportsStartNothing();
    void switchedOffEnumerationStartsNothing();
    void endOfAPassRunsWhileEnumerationIsOff();
    void removalReportedWhileOffIsNotRepeated();
    void everyTransportHasOneEnumerator();

    void hasEnumOnceWaitsForEveryTransport();
    void hasEnumOnceIsTrueForTransportsThatNeverRun();
    void finishedTransportIsKeptOnce();

    void succeededGenTLPassHidesTheSearchAndShowsNoBox();
    void failedPassIsShownForTheTransportsThatShowOne_data();
    void failedPassIsShownForTheTransportsThatShowOne();
    void failedPassKeepsTheRows();
    void endWithoutErrorCodeCountsAsSucceeded();
    void passIsAcknowledgedAfterItsSignal();
    void searchGoesWithItsTree();
    void treeThatShowedNoSearchLeavesOthersAlone();

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

    void remoteDeviceIsShownBeforeTheCallReturns();
    void silentRemoteDeviceGivesMinus1();
    void removedRemoteDeviceIsGoneBeforeTheCallReturns();
    void treeDestroyedWhenARemoteDeviceAppears();
    void treeDestroyedWhenARemoteDeviceGoes();
    void secondRemoteDeviceFromASlotIsAdded();
    void genTLInterfaceIsListedAfterItsHandleCame();
    void cameraThatWasSetOffIsReportedAgain();

    void treeDestroyedWhileAPassHangsReturnsAtOnce();
    void treeDestroyedInASlotOfARunningPass_data();
    void treeDestroyedInASlotOfARunningPass();
    void treeDestroyedWithBlockedSignalsAndQueuedEvents();
    void queuedEventsOfADestroyedTreeGoNowhere();
    void twoTreesShowTheSameCamera();
    void burstOf256CamerasIsShownInOrder();
    void passesWhileAddingAndRemovingTrees();

private:
    void startPass(unsigned int types) { m_tree->updateDeviceTypes(types, true, true, false); }
    void runPass(unsigned int types)
    {
        QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
        startPass(types);
        QTRY_COMPARE(finished.count(), 1);
    }
    QTreeWidgetItem *gige() { return m_tree->findItem(KelDeviceTree::ItemGigERoot, -1); }
    KelDeviceTreePrivate &inside() { return *KelDeviceTreePrivate::of(m_tree.get()); }
    // Beside the cameras, the cards of this machine stand under "GigE".
    int cameraCount()
    {
        int count = 0;
        for (QTreeWidgetItemIterator item(m_tree.get()); *item; ++item) {
            count += m_tree->isCameraItem(*item) ? 1 : 0;
        }
        return count;
    }
    void openInterface();

    std::unique_ptr<KelDeviceTree> m_tree;
};

void tst_KelDeviceTree_bridge::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
}

void tst_KelDeviceTree_bridge::cleanup()
{
    scriptedAccess().release();
    m_tree.reset();
    CustomLoadingDialog::hideLoading(kLoadingId);
    for (QDialog *box : failureBoxes()) {
        delete box;
    }
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

// A producer with one interface that the host has opened and one device.
void tst_KelDeviceTree_bridge::openInterface()
{
    char path[] = "/opt/a.cti";
    scriptedAccess().plugInterface(path, ::genTLInterface("IF", 1));
    scriptedAccess().plug(::genTLDevice("G1", "IF", 1));
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    runPass(16);
    QTreeWidgetItem *interface = m_tree->findItem(KelDeviceTree::ItemGenTLRoot, -1)->child(0);
    QVERIFY(interface);
    m_tree->setGenTLInterfaceHandle(interface->data(0, KelDeviceTree::ItemIdRole).toInt(),
                                    scriptedAccess().openInterface("IF", 1));
}

void tst_KelDeviceTree_bridge::foundCameraBecomesARow()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    runPass(1);

    QCOMPARE(made.count(), 1);
    auto *item = made.at(0).at(0).value<QTreeWidgetItem *>();
    QCOMPARE(m_tree->getCameraSerial(item), QStringLiteral("S1"));
    QCOMPARE(m_tree->findCameraItem(item->data(0, KelDeviceTree::ItemIdRole).toInt()), item);
}

void tst_KelDeviceTree_bridge::removedDeviceReturnsWithItsEarlierId()
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

void tst_KelDeviceTree_bridge::passesStartInTheOrderGigeUsbCameraLinkGenTL()
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

void tst_KelDeviceTree_bridge::onlyTheGenTLPassTakesTheCallersFlags()
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

void tst_KelDeviceTree_bridge::shownSearchNamesGenTL()
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

void tst_KelDeviceTree_bridge::unshownTransportsStartNothing()
{
    m_tree->updateDeviceTypes(2 | 32 | 64 | 128 | 256, true, true, true);

    QCOMPARE(inside().m_enumerators.keys(), QList<unsigned int>({16}));
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge::switchedOffEnumerationStartsNothing()
{
    m_tree->setEnableEnumDevices(false);
    m_tree->updateDeviceTypes(kAll, true, true, true);

    QCOMPARE(inside().m_enumerators.keys(), QList<unsigned int>({16}));
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));

    m_tree->setEnableEnumDevices(true);
    runPass(1);
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(1));
}

void tst_KelDeviceTree_bridge::endOfAPassRunsWhileEnumerationIsOff()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    startPass(1);
    startPass(1);

    m_tree->setEnableEnumDevices(false);

    // The second pass shows that the first was acknowledged.
    QTRY_COMPARE(finished.count(), 2);
    QVERIFY(m_tree->hasEnumOnce(1));
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_bridge::removalReportedWhileOffIsNotRepeated()
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

void tst_KelDeviceTree_bridge::everyTransportHasOneEnumerator()
{
    CDevicesEnum *first = inside().getThread(KELA_INTERFACE_TYPE_GIGE);

    QCOMPARE(inside().getThread(KELA_INTERFACE_TYPE_GIGE), first);
    QVERIFY(inside().getThread(KELA_INTERFACE_TYPE_USB) != first);
    QCOMPARE(inside().m_userData.size(), 3);
}

void tst_KelDeviceTree_bridge::hasEnumOnceWaitsForEveryTransport()
{
    QVERIFY(!m_tree->hasEnumOnce(1 | 16));

    runPass(16);
    QVERIFY(m_tree->hasEnumOnce(16));
    QVERIFY(!m_tree->hasEnumOnce(1 | 16));

    runPass(1);
    QVERIFY(m_tree->hasEnumOnce(1 | 16));
    QVERIFY(!m_tree->hasEnumOnce(kAll));
}

void tst_KelDeviceTree_bridge::hasEnumOnceIsTrueForTransportsThatNeverRun()
{
    QVERIFY(m_tree->hasEnumOnce(0));
    QVERIFY(m_tree->hasEnumOnce(2));
    QVERIFY(m_tree->hasEnumOnce(32));
    QVERIFY(!m_tree->hasEnumOnce(2 | 8));
}

void tst_KelDeviceTree_bridge::finishedTransportIsKeptOnce()
{
    m_tree->onEndThread(1, 0);
    m_tree->onEndThread(1, 5);
    m_tree->onEndThread(32, 0);

    QCOMPARE(inside().m_finishedTypes, QList<unsigned int>({1, 32}));
}

void tst_KelDeviceTree_bridge::succeededGenTLPassHidesTheSearchAndShowsNoBox()
{
    CustomLoadingDialog::showLoading(QStringLiteral("searching"), kLoadingId);

    m_tree->onEventSink(QVariant(), QVariant(), 7, 0, 16);

    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
    QCOMPARE(failureBoxes().size(), 0);
}

void tst_KelDeviceTree_bridge::failedPassIsShownForTheTransportsThatShowOne_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("GigE") << 1 << false;
    QTest::newRow("USB") << 4 << false;
    QTest::newRow("Camera Link") << 8 << true;
    QTest::newRow("GenTL") << 16 << true;
    QTest::newRow("GenTL by interface") << 32 << true;
}

void tst_KelDeviceTree_bridge::failedPassIsShownForTheTransportsThatShowOne()
{
    QFETCH(int, transport);
    QFETCH(bool, isShown);
    CustomLoadingDialog::showLoading(QStringLiteral("searching"), kLoadingId);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);

    m_tree->onEventSink(QVariant(), QVariant(), 7, static_cast<int>(KELA_ERROR_TIMEOUT), transport);

    QCOMPARE(failureBoxes().size(), isShown ? 1 : 0);
    QCOMPARE(CustomLoadingDialog::isLoading(kLoadingId), !isShown);
    QCOMPARE(finished.count(), 1);
    if (isShown) {
        QVERIFY(allTexts(failureBoxes().first()).contains(QStringLiteral("90000005")));
    }
}

void tst_KelDeviceTree_bridge::failedPassKeepsTheRows()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy gone(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);
    runPass(1);

    scriptedAccess().failNext(KELA_ERROR_TIMEOUT);
    runPass(1);

    QCOMPARE(gone.count(), 0);
    QCOMPARE(failureBoxes().size(), 0);
}

void tst_KelDeviceTree_bridge::endWithoutErrorCodeCountsAsSucceeded()
{
    QVERIFY(QMetaObject::invokeMethod(m_tree.get(), "onEndThread", Q_ARG(int, 16)));

    QCOMPARE(failureBoxes().size(), 0);
    QVERIFY(m_tree->hasEnumOnce(16));
}

void tst_KelDeviceTree_bridge::passIsAcknowledgedAfterItsSignal()
{
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    std::size_t passesInSlot = 0;
    connect(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce, this, [&passesInSlot] {
        if (passesInSlot == 0) {
            // The worker looks every 10 ms; the second pass must not begin while this slot runs.
            QThread::msleep(100);
            passesInSlot = scriptedAccess().count(Operation::EnumDevices);
        }
    });

    startPass(1);
    startPass(1);
    QTRY_COMPARE(finished.count(), 2);

    QCOMPARE(passesInSlot, std::size_t(1));
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(2));
}

void tst_KelDeviceTree_bridge::searchGoesWithItsTree()
{
    char path[] = "/opt/a.cti";
    scriptedAccess().addProducer(path);
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL);
    m_tree->updateDeviceTypes(16, true, true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    m_tree.reset();

    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge::treeThatShowedNoSearchLeavesOthersAlone()
{
    CustomLoadingDialog::showLoading(QStringLiteral("another tree's"), kLoadingId);
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, true);

    m_tree.reset();

    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge::missingRecordsArriveZeroed()
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

void tst_KelDeviceTree_bridge::recordsCrossByValue()
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

void tst_KelDeviceTree_bridge::eventWithoutUserOrTreeIsDropped()
{
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);
    EnumEventUserData user{1, nullptr};

    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, nullptr);
    EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &user);

    QCOMPARE(events.count(), 0);
    QVERIFY(!m_tree->hasEnumOnce(1));
}

void tst_KelDeviceTree_bridge::eventsAreEmittedOnTheWorkersThread()
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

void tst_KelDeviceTree_bridge::controllerUpdateChangesNothing()
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

void tst_KelDeviceTree_bridge::unknownKindsAreDropped_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("pass begins") << 6;
    QTest::newRow("first beyond") << 8;
    QTest::newRow("far beyond") << 100000;
    QTest::newRow("negative") << -1;
}

void tst_KelDeviceTree_bridge::unknownKindsAreDropped()
{
    QFETCH(int, kind);

    m_tree->onEventSink(variantOf(containerEvent(networkCard(80001, "AA"))), variantOf(gigeDevice(1, "S1")),
                        kind, 0, 1);

    QCOMPARE(gige()->childCount(), 0);
    QVERIFY(!m_tree->hasEnumOnce(1));
}

void tst_KelDeviceTree_bridge::unknownContainersAreDropped()
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

void tst_KelDeviceTree_bridge::containerEventsReachTheirHandlers()
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

void tst_KelDeviceTree_bridge::eventsOfWrongVariantsAreIgnored()
{
    for (int kind = 0; kind <= 5; ++kind) {
        m_tree->onEventSink(QVariant(QStringLiteral("text")), QVariant(QStringLiteral("text")), kind, 0, 1);
    }

    QCOMPARE(gige()->childCount(), 0);
}

void tst_KelDeviceTree_bridge::blockedSignalsLoseNoEvent()
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

void tst_KelDeviceTree_bridge::takenApartConnectionsLoseNoEvent()
{
    scriptedAccess().plug(gigeCamera("S1"));

    m_tree->disconnect();
    startPass(1);

    QTRY_VERIFY(m_tree->hasEnumOnce(1));
    QCOMPARE(cameraCount(), 1);
    runPass(1);
}

void tst_KelDeviceTree_bridge::signalsBlockedInsideASlotLoseNoEvent()
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

void tst_KelDeviceTree_bridge::remoteDeviceIsShownBeforeTheCallReturns()
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

void tst_KelDeviceTree_bridge::silentRemoteDeviceGivesMinus1()
{
    KELA_STRUCT_DEVICE_INFO info = {};
    info.deviceInfo = gigeCamera("R1");
    QSignalSpy events(m_tree.get(), &KelDeviceTree::sigEventSink);

    QCOMPARE(m_tree->addRemoteDevice(info), -1);

    QCOMPARE(events.count(), 0);
}

void tst_KelDeviceTree_bridge::removedRemoteDeviceIsGoneBeforeTheCallReturns()
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

void tst_KelDeviceTree_bridge::treeDestroyedWhenARemoteDeviceAppears()
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

void tst_KelDeviceTree_bridge::treeDestroyedWhenARemoteDeviceGoes()
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

void tst_KelDeviceTree_bridge::secondRemoteDeviceFromASlotIsAdded()
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

void tst_KelDeviceTree_bridge::genTLInterfaceIsListedAfterItsHandleCame()
{
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    openInterface();
    QCOMPARE(made.count(), 0);

    runPass(16);
    QCOMPARE(made.count(), 1);
    const auto *item = made.at(0).at(0).value<QTreeWidgetItem *>();
    QCOMPARE(item->parent()->data(0, KelDeviceTree::ItemTypeRole), QVariant(15));
}

void tst_KelDeviceTree_bridge::cameraThatWasSetOffIsReportedAgain()
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

void tst_KelDeviceTree_bridge::treeDestroyedWhileAPassHangsReturnsAtOnce()
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

void tst_KelDeviceTree_bridge::treeDestroyedInASlotOfARunningPass_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("new") << QByteArray("sigNewDeviceItem");
    QTest::newRow("updated") << QByteArray("sigUpdateDeviceItem");
    QTest::newRow("deleted") << QByteArray("sigDeleteDeviceItem");
    QTest::newRow("finished") << QByteArray("sigFinishEnumOnce(int)");
}

void tst_KelDeviceTree_bridge::treeDestroyedInASlotOfARunningPass()
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

void tst_KelDeviceTree_bridge::treeDestroyedWithBlockedSignalsAndQueuedEvents()
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

void tst_KelDeviceTree_bridge::queuedEventsOfADestroyedTreeGoNowhere()
{
    EnumEventUserData user{1, m_tree.get()};
    std::thread worker([&user] {
        KELA_STRUCT_DEVICE_INFO device = gigeDevice(1, "S1");
        EnumEventSink(nullptr, &device, KELA_INTERFACE_STATE_DEVICE_NEW, 0, &user);
        EnumEventSink(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, 0, &user);
    });
    worker.join();
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);

    m_tree.reset();
    QCoreApplication::processEvents();

    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_bridge::twoTreesShowTheSameCamera()
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

void tst_KelDeviceTree_bridge::burstOf256CamerasIsShownInOrder()
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

void tst_KelDeviceTree_bridge::passesWhileAddingAndRemovingTrees()
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

QTEST_MAIN(tst_KelDeviceTree_bridge)
#include "tst_keldevicetree_bridge.moc"
