// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Fields.h"
#include "Options.h"

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <QObject>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// An event of an enumerator, in the command line's words.
struct EnumerationEvent {
    KELA_INTERFACE_STATE kind = KELA_INTERFACE_STATE_PASS_BEGIN;
    KELA_INTERFACE_TYPE transport = KELA_INTERFACE_TYPE_NONE; ///< of the enumerator
    quint32 code = 0;                                         ///< of a pass that ended
    qint64 id = 0;                                            ///< of the device, card or interface
    bool isCard = false; ///< else, among the interface events, a GenTL interface
    Fields fields;
};

/// The enumerators of the transports asked for. Their events arrive on this object's thread.
class Enumerations : public QObject
{
    Q_OBJECT

public:
    explicit Enumerations(const Options &options);

    /// Stops all passes at once and waits for their ends.
    ~Enumerations() override;

    /// Requests the first pass of every transport.
    /// @param isOnlyPass  nothing is asked of the enumerators afterwards: each ends with its pass
    void start(bool isOnlyPass);

    /// Requests a pass of every transport that is not inside one.
    void requestPasses();

Q_SIGNALS:
    void happened(const EnumerationEvent &event);

private:
    struct Enumeration {
        Enumerations *owner = nullptr;
        KELA_INTERFACE_TYPE transport = KELA_INTERFACE_TYPE_NONE;
        bool isBusy = false; ///< a pass is requested and has not ended
        std::unique_ptr<CDevicesEnum> engine;
    };

    static void onEvent(KELA_INTERFACE_INFO *container, KELA_STRUCT_DEVICE_INFO *device,
                        KELA_INTERFACE_STATE kind, int code, void *user);
    EnumerationEvent describe(const Enumeration &enumeration, const KELA_INTERFACE_INFO *container,
                              const KELA_STRUCT_DEVICE_INFO *device) const;
    QString producerOf(const Enumeration &enumeration, const KELA_GENTL_IF_INFO &interface) const;
    void queue(const EnumerationEvent &event);
    void deliver();
    void finishPass(KELA_INTERFACE_TYPE transport);

    QStringList m_producers;
    bool m_isOnlyPass = false;
    std::vector<std::unique_ptr<Enumeration>> m_enumerations;

    std::mutex m_mutex; ///< guards m_queue, which the workers fill
    QVector<EnumerationEvent> m_queue;
};
