// SPDX-License-Identifier: Apache-2.0
#include "ConnectionManager.h"

#include "DeviceSession.h"

#include <QThread>

namespace browser
{

struct ConnectionManager::Connection {
    KELA_STRUCT_DEVICE_INFO device{};
    OwnSession state;
    ReadValues values;
    QThread thread;
    DeviceSession *session = nullptr; ///< deletes itself when its thread ends

    ~Connection()
    {
        // The session gives the device back from its own thread; what it waits for ends at once.
        session->cancel();
        thread.quit();
        thread.wait();
    }
};

ConnectionManager::ConnectionManager(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<browser::ReadValues>();
}

ConnectionManager::~ConnectionManager()
{
    for (auto &entry : m_connections)
        entry.second->session->disconnect(this);
    for (auto &entry : m_connections)
        entry.second->session->cancel();
}

void ConnectionManager::open(const KELA_STRUCT_DEVICE_INFO &device)
{
    const long id = device.deviceId;
    if (find(id))
        return;
    const bool isMulticast = device.deviceState == KELA_DEV_STATE_GIGE_MULTICAST;
    auto connection = std::make_unique<Connection>();
    connection->device = device;
    connection->state = {SessionState::Opening, 0, isMulticast};
    auto *session =
        new DeviceSession(device.deviceInfo, isMulticast ? KELA_ACCESS_MONITOR : KELA_ACCESS_CONTROL);
    connection->session = session;
    session->moveToThread(&connection->thread);
    connect(&connection->thread, &QThread::finished, session, &QObject::deleteLater);
    connectSignals(id, session);
    connection->thread.start();
    m_connections[id] = std::move(connection);
    m_lastErrors.erase(id);
    QMetaObject::invokeMethod(session, &DeviceSession::open);
    Q_EMIT changed(id);
}

void ConnectionManager::close(long id)
{
    Connection *connection = find(id);
    if (!connection || connection->state.state == SessionState::Closing)
        return;
    if (connection->state.state == SessionState::Lost)
        connection->session->cancel();
    connection->state.state = SessionState::Closing;
    QMetaObject::invokeMethod(connection->session, &DeviceSession::close);
    Q_EMIT changed(id);
}

void ConnectionManager::noteGone(long id)
{
    if (session(id).state != SessionState::Open)
        return;
    note(id, SessionState::Lost, KELA_ERROR_UNREACHABLE);
    Q_EMIT lost(id, KELA_ERROR_UNREACHABLE);
}

OwnSession ConnectionManager::session(long id) const
{
    if (const Connection *connection = find(id))
        return connection->state;
    const auto error = m_lastErrors.find(id);
    return {SessionState::None, error == m_lastErrors.end() ? 0 : error->second, false};
}

ReadValues ConnectionManager::values(long id) const
{
    const Connection *connection = find(id);
    return connection ? connection->values : ReadValues();
}

const KELA_STRUCT_DEVICE_INFO *ConnectionManager::device(long id) const
{
    const Connection *connection = find(id);
    return connection ? &connection->device : nullptr;
}

QVector<long> ConnectionManager::ids() const
{
    QVector<long> ids;
    for (const auto &entry : m_connections)
        ids.append(entry.first);
    return ids;
}

void ConnectionManager::forget(long id)
{
    m_lastErrors.erase(id);
}

ConnectionManager::Connection *ConnectionManager::find(long id) const
{
    const auto found = m_connections.find(id);
    return found == m_connections.end() ? nullptr : found->second.get();
}

void ConnectionManager::connectSignals(long id, DeviceSession *session)
{
    connect(session, &DeviceSession::opened, this, [this, id] {
        // Given back before it was there.
        if (this->session(id).state != SessionState::Opening)
            return;
        note(id, SessionState::Open, 0);
        Q_EMIT opened(id);
    });
    connect(session, &DeviceSession::openFailed, this, [this, id](uint errorCode) {
        drop(id);
        m_lastErrors[id] = errorCode;
        Q_EMIT changed(id);
        Q_EMIT openFailed(id, errorCode);
    });
    connect(session, &DeviceSession::lost, this, [this, id](uint errorCode) {
        // Given back already, or told by the enumeration.
        if (this->session(id).state != SessionState::Open)
            return;
        note(id, SessionState::Lost, errorCode);
        Q_EMIT lost(id, errorCode);
    });
    connect(session, &DeviceSession::closed, this, [this, id] {
        drop(id);
        Q_EMIT changed(id);
        Q_EMIT closed(id);
    });
    connect(session, &DeviceSession::valuesRead, this, [this, id](const ReadValues &values) {
        Connection *connection = find(id);
        if (!connection)
            return;
        connection->values = values;
        Q_EMIT valuesRead(id, values);
    });
}

void ConnectionManager::note(long id, SessionState state, uint errorCode)
{
    Connection *connection = find(id);
    if (!connection || connection->state.state == SessionState::Closing)
        return;
    connection->state.state = state;
    connection->state.lastError = errorCode;
    Q_EMIT changed(id);
}

void ConnectionManager::drop(long id)
{
    m_connections.erase(id);
}

} // namespace browser
