// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// An event as the callback received it, the records copied.
struct RecordedEvent {
    KELA_INTERFACE_STATE kind = KELA_INTERFACE_STATE_PASS_BEGIN;
    bool hasInterface = false;
    bool hasDevice = false;
    KELA_INTERFACE_INFO interface = {};
    KELA_STRUCT_DEVICE_INFO device = {};
    int errorCode = 0;
    std::thread::id thread;

    /// The event in words: "new A1", "interface removed if0", "end 90000005".
    QString text() const;
};

/// Receives the events of an enumerator and keeps them.
class EventRecorder
{
public:
    EventRecorder() = default;

    EventRecorder(const EventRecorder &) = delete;
    EventRecorder &operator=(const EventRecorder &) = delete;

    /// Becomes the receiver of an enumerator, which must be destroyed before the recorder.
    /// @param hook  called with every event on the thread that reports it, after it was kept
    void listenTo(CDevicesEnum &enumerator, std::function<void(const RecordedEvent &)> hook = {});

    /// The events since the last take, in words, without the network cards of the host.
    QStringList take();

    /// The events since the last take, whole.
    QVector<RecordedEvent> takeEvents();

    /// Waits until as many passes have ended since the recorder was made.
    bool waitForEnds(int passes, int milliseconds = 20000);

    /// Waits until as many passes have begun since the recorder was made.
    bool waitForBegins(int passes, int milliseconds = 20000);

private:
    static void callback(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                         KELA_INTERFACE_STATE nState, int nErrorCode, void *pUser);
    void keep(const RecordedEvent &event);

    std::function<void(const RecordedEvent &)> m_hook;
    std::mutex m_mutex; // guards everything below
    std::condition_variable m_changed;
    QVector<RecordedEvent> m_events;
    int m_begins = 0;
    int m_ends = 0;
};

/// Runs one pass of the devices on the calling thread and tells its events in words.
QStringList passOf(CDevicesEnum &enumerator, EventRecorder &recorder);
