// SPDX-License-Identifier: Apache-2.0
#include "EventRecorder.h"

#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

#include <chrono>
#include <utility>

namespace
{

QString interfaceName(const KELA_INTERFACE_INFO &interface)
{
    return interface.interfaceType == KELA_INTERFACE_TYPE_GENTL
               ? textOf(interface.special.genTLInterface.identifier)
               : textOf(interface.special.network.name);
}

} // namespace

QString RecordedEvent::text() const
{
    switch (kind) {
    case KELA_INTERFACE_STATE_INTERFACE_NEW:
        return "interface new " + interfaceName(interface);
    case KELA_INTERFACE_STATE_INTERFACE_UPDATED:
        return "interface updated " + interfaceName(interface);
    case KELA_INTERFACE_STATE_INTERFACE_REMOVED:
        return "interface removed " + interfaceName(interface);
    case KELA_INTERFACE_STATE_DEVICE_NEW:
        return "new " + textOf(device.deviceInfo.serialNumber);
    case KELA_INTERFACE_STATE_DEVICE_UPDATED:
        return "updated " + textOf(device.deviceInfo.serialNumber);
    case KELA_INTERFACE_STATE_DEVICE_REMOVED:
        return "removed " + textOf(device.deviceInfo.serialNumber);
    case KELA_INTERFACE_STATE_PASS_BEGIN:
        return "begin";
    case KELA_INTERFACE_STATE_PASS_END:
        return "end " + QString::number(static_cast<unsigned int>(errorCode), 16);
    }
    return "unknown kind";
}

void EventRecorder::listenTo(CDevicesEnum &enumerator, std::function<void(const RecordedEvent &)> hook)
{
    m_hook = std::move(hook);
    enumerator.RegisterEventSink(callback, this);
}

QVector<RecordedEvent> EventRecorder::takeEvents()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_events, {});
}

QStringList EventRecorder::take()
{
    QStringList texts;
    const QVector<RecordedEvent> events = takeEvents();
    for (const RecordedEvent &event : events) {
        if (!event.hasInterface || event.interface.interfaceType == KELA_INTERFACE_TYPE_GENTL) {
            texts.append(event.text());
        }
    }
    return texts;
}

bool EventRecorder::waitForEnds(int passes, int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this, passes] { return m_ends >= passes; });
}

bool EventRecorder::waitForBegins(int passes, int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this, passes] { return m_begins >= passes; });
}

void EventRecorder::callback(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                             KELA_INTERFACE_STATE nState, int nErrorCode, void *pUser)
{
    RecordedEvent event;
    event.kind = nState;
    event.hasInterface = pInterface != nullptr;
    event.hasDevice = pDevice != nullptr;
    if (pInterface != nullptr) {
        event.interface = *pInterface;
    }
    if (pDevice != nullptr) {
        event.device = *pDevice;
    }
    event.errorCode = nErrorCode;
    event.thread = std::this_thread::get_id();
    static_cast<EventRecorder *>(pUser)->keep(event);
}

void EventRecorder::keep(const RecordedEvent &event)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_events.append(event);
        m_begins += event.kind == KELA_INTERFACE_STATE_PASS_BEGIN ? 1 : 0;
        m_ends += event.kind == KELA_INTERFACE_STATE_PASS_END ? 1 : 0;
        m_changed.notify_all();
    }
    if (m_hook) {
        m_hook(event);
    }
}

QStringList passOf(CDevicesEnum &enumerator, EventRecorder &recorder)
{
    recorder.takeEvents();
    enumerator.EnumDevices();
    return recorder.take();
}
