// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceValues.h"
#include "OwnSession.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QObject>
#include <QPointer>

#include <map>
#include <memory>

class QThread;

namespace browser
{

class DeviceSession;

/// The devices that this program holds, by their identifiers. Nothing here waits for a device: each
/// talks in a thread of its own and reports. Thread: GUI.
class ConnectionManager : public QObject
{
    Q_OBJECT

public:
    explicit ConnectionManager(QObject *parent = nullptr);
    /// Gives everything back; devices that do not answer are not waited for.
    ~ConnectionManager() override;

    /// Takes a device: control, or reading only where another host streams to a multicast group.
    /// Does nothing while the device is held or being taken.
    void open(const KELA_STRUCT_DEVICE_INFO &device);
    /// Gives a device back, a lost one too.
    void close(long id);

    /// To be called for a held device that is not there any more, where the device itself cannot be asked.
    void noteGone(long id);

    /// How far the connection to a device has come, with the last error where there is none.
    OwnSession session(long id) const;
    /// What was read last of a device; empty when it is not held.
    ReadValues values(long id) const;
    /// The record that a held device was opened with; null when it is not held.
    const KELA_STRUCT_DEVICE_INFO *device(long id) const;
    /// Identifiers of the devices held or being taken.
    QVector<long> ids() const;
    /// Forgets the last error of a device that is gone.
    void forget(long id);

Q_SIGNALS:
    /// The state of a device's connection changed.
    void changed(long id);
    void opened(long id);
    void openFailed(long id, uint errorCode);
    void lost(long id, uint errorCode);
    void closed(long id);
    void valuesRead(long id, const browser::ReadValues &values);

private:
    struct Connection;

    Connection *find(long id) const;
    void connectSignals(long id, DeviceSession *session);
    void note(long id, SessionState state, uint errorCode);
    void drop(long id);

    std::map<long, std::unique_ptr<Connection>> m_connections;
    std::map<long, uint> m_lastErrors;
};

} // namespace browser
