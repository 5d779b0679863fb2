// SPDX-License-Identifier: Apache-2.0
// Remote devices that are taken back while a pass reports them: the worker's events travel, the owner's do not.
#include "TreeFixture.h"

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QtTest>

#include <future>
#include <memory>

using namespace TreeRecords;

class tst_KelDeviceTree_takenback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void updateUnderWayMakesNoRowOfADeviceTakenBack();
    void updateReportedAfterTheRemovalMakesNoRow();
    void deviceTakenBackReturnsWhenAPassFindsIt();
    void deviceTakenBackReturnsWhenItIsAddedAgain();

private:
    void runPass()
    {
        QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
        m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);
        QTRY_COMPARE(finished.count(), 1);
    }

    std::unique_ptr<KelDeviceTree> m_tree;
    KELA_STRUCT_DEVICE_INFO m_record = {};
    int m_id = 0;
};

void tst_KelDeviceTree_takenback::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
    scriptedAccess().plugBehindRouter(gigeCamera("R1"));
    m_record = {};
    m_record.deviceInfo = gigeCamera("R1");
    m_id = m_tree->addRemoteDevice(m_record);
    QVERIFY(m_tree->findCameraItem(m_id));
}

void tst_KelDeviceTree_takenback::cleanup()
{
    m_tree.reset();
}

void tst_KelDeviceTree_takenback::updateUnderWayMakesNoRowOfADeviceTakenBack()
{
    std::promise<void> reported;
    connect(
        m_tree.get(), &KelDeviceTree::sigEventSink, m_tree.get(),
        [&reported](const QVariant &, const QVariant &, int kind) {
            if (kind == KELA_INTERFACE_STATE_DEVICE_UPDATED) {
                reported.set_value();
            }
        },
        Qt::DirectConnection);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, false);
    // No event is handled here, so the update stays under way.
    reported.get_future().wait();

    m_tree->removeRemoteDevice(m_record);
    QTRY_COMPARE(finished.count(), 1);

    QCOMPARE(m_tree->findCameraItem(m_id), nullptr);
}

void tst_KelDeviceTree_takenback::updateReportedAfterTheRemovalMakesNoRow()
{
    EnumEventUserData user{KELA_INTERFACE_TYPE_GIGE, m_tree.get()};
    m_tree->removeRemoteDevice(m_record);

    // As from a worker that looked the device up just before.
    EnumEventSink(nullptr, &m_record, KELA_INTERFACE_STATE_DEVICE_UPDATED, 0, &user);

    QCOMPARE(m_tree->findCameraItem(m_id), nullptr);
}

void tst_KelDeviceTree_takenback::deviceTakenBackReturnsWhenAPassFindsIt()
{
    m_tree->removeRemoteDevice(m_record);
    scriptedAccess().plug(gigeCamera("R1"));

    runPass();

    QVERIFY(m_tree->findCameraItem(m_id));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);
    runPass();
    QCOMPARE(updated.count(), 1);
}

void tst_KelDeviceTree_takenback::deviceTakenBackReturnsWhenItIsAddedAgain()
{
    m_tree->removeRemoteDevice(m_record);

    QCOMPARE(m_tree->addRemoteDevice(m_record), m_id);

    QVERIFY(m_tree->findCameraItem(m_id));
    QSignalSpy updated(m_tree.get(), &KelDeviceTree::sigUpdateDeviceItem);
    runPass();
    QCOMPARE(updated.count(), 1);
}

QTEST_MAIN(tst_KelDeviceTree_takenback)
#include "tst_keldevicetree_takenback.moc"
