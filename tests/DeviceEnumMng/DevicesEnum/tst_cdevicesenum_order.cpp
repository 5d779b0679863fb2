// SPDX-License-Identifier: Apache-2.0
// An event comes before what is kept about it: whoever asks from inside the callback finds the world as it was.
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"

#include <QtTest>

class tst_CDevicesEnum_order : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void foundDeviceIsRegisteredAfterItIsReported();
    void addedDeviceIsRegisteredAfterItIsReported();
    void vanishedDeviceIsUnregisteredAfterItIsReported();
    void vanishedRemoteDeviceIsUnregisteredAfterItIsReported();
    void takenBackDeviceIsUnregisteredAfterItIsReported();

private:
    // Sets a device off from inside the report that it is new.
    static void setOffWhenNew(CDevicesEnum &enumerator, EventRecorder &recorder)
    {
        recorder.listenTo(enumerator, [&enumerator](const RecordedEvent &event) {
            if (event.kind == KELA_INTERFACE_STATE_DEVICE_NEW) {
                enumerator.SetOffCameraID(event.device.deviceId);
            }
        });
    }

    // Adds the device by its address from inside the report that it is gone.
    void addWhenGone(CDevicesEnum &enumerator, EventRecorder &recorder)
    {
        m_addedId = 0;
        recorder.listenTo(enumerator, [this, &enumerator](const RecordedEvent &event) {
            if (event.kind == KELA_INTERFACE_STATE_DEVICE_REMOVED && m_addedId == 0) {
                KELA_STRUCT_DEVICE_INFO record = event.device;
                m_addedId = enumerator.AddRemoteDevice(&record);
            }
        });
    }

    static KELA_STRUCT_DEVICE_INFO addRemote(CDevicesEnum &enumerator)
    {
        scriptedAccess().plugBehindRouter(gigeCamera("R1", 91));
        KELA_STRUCT_DEVICE_INFO record = {};
        record.deviceInfo = gigeCamera("R1", 91);
        enumerator.AddRemoteDevice(&record);
        return record;
    }

    long m_addedId = 0;
};

void tst_CDevicesEnum_order::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_order::foundDeviceIsRegisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    setOffWhenNew(enumerator, recorder);
    enumerator.Init(KELA_INTERFACE_TYPE_USB, false);
    scriptedAccess().plug(usbCamera("U1"));

    QCOMPARE(passOf(enumerator, recorder), QStringList("new U1"));

    // It was set off before it was present, which has no effect.
    QCOMPARE(passOf(enumerator, recorder), QStringList("updated U1"));
}

void tst_CDevicesEnum_order::addedDeviceIsRegisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    setOffWhenNew(enumerator, recorder);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);

    addRemote(enumerator);

    QCOMPARE(recorder.take(), QStringList("new R1"));
    QCOMPARE(passOf(enumerator, recorder), QStringList("updated R1"));
}

void tst_CDevicesEnum_order::vanishedDeviceIsUnregisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    addWhenGone(enumerator, recorder);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    scriptedAccess().plug(gigeCamera("A1", 21));
    enumerator.EnumDevices();
    const long id = recorder.takeEvents().first().device.deviceId;
    scriptedAccess().unplug("A1");

    QCOMPARE(passOf(enumerator, recorder), QStringList("removed A1"));

    // Present still, so it was not asked.
    QCOMPARE(m_addedId, id);
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(0));
}

void tst_CDevicesEnum_order::vanishedRemoteDeviceIsUnregisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    addWhenGone(enumerator, recorder);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    const long id = addRemote(enumerator).deviceId;
    scriptedAccess().unplug("R1");
    scriptedAccess().forgetCalls();

    QCOMPARE(passOf(enumerator, recorder), QStringList("removed R1"));

    QCOMPARE(m_addedId, id);
    QCOMPARE(scriptedAccess().count(Operation::GetDeviceInfo), std::size_t(1));
}

void tst_CDevicesEnum_order::takenBackDeviceIsUnregisteredAfterItIsReported()
{
    EventRecorder recorder;
    CDevicesEnum enumerator;
    addWhenGone(enumerator, recorder);
    enumerator.Init(KELA_INTERFACE_TYPE_GIGE, false);
    KELA_STRUCT_DEVICE_INFO record = addRemote(enumerator);
    recorder.takeEvents();

    enumerator.RemoveRemoteDevice(&record);

    QCOMPARE(recorder.take(), QStringList("removed R1"));
    QCOMPARE(m_addedId, long(record.deviceId));
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_order)
#include "tst_cdevicesenum_order.moc"
