// SPDX-License-Identifier: Apache-2.0
#include "PassScheduler.h"

#include <utility>

namespace browser
{

struct PassScheduler::Transport {
    QTimer due;
    bool isRunning = false;
    bool isWantedAgain = false;
    bool isWantedByUser = false;
    bool hasFailed = false;
};

PassScheduler::PassScheduler(std::chrono::milliseconds pause, QObject *parent)
    : QObject(parent)
    , m_pause(pause)
{
}

PassScheduler::~PassScheduler() = default;

void PassScheduler::setTransports(uint transports)
{
    const uint added = transports & ~m_transports;
    m_transports = transports;
    for (auto &entry : m_states) {
        if ((transports & entry.first) == 0)
            entry.second->due.stop();
    }
    requestNow(added);
    Q_EMIT changed();
}

void PassScheduler::setAutomatic(bool automatic)
{
    if (m_automatic == automatic)
        return;
    m_automatic = automatic;
    for (auto &entry : m_states) {
        if (automatic) {
            startWhenDue(entry.first);
        } else {
            entry.second->due.stop();
        }
    }
    Q_EMIT changed();
}

void PassScheduler::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    if (!isHeld)
        requestNow(m_transports);
    Q_EMIT changed();
}

void PassScheduler::requestNow(uint transports)
{
    request(transports, true);
}

void PassScheduler::requestForChange(uint transports)
{
    if (m_automatic)
        request(transports, false);
}

void PassScheduler::request(uint transports, bool byUser)
{
    for (uint type = 1; type != 0; type <<= 1) {
        if ((transports & m_transports & type) == 0)
            continue;
        Transport &transport = transportOf(type);
        transport.hasFailed = false;
        if (transport.isRunning) {
            transport.isWantedAgain = true;
            transport.isWantedByUser |= byUser;
        } else {
            start(type, byUser);
        }
    }
}

uint PassScheduler::running() const
{
    uint types = 0;
    for (const auto &entry : m_states)
        types |= entry.second->isRunning ? entry.first : 0;
    return types;
}

uint PassScheduler::paused() const
{
    uint types = 0;
    for (const auto &entry : m_states)
        types |= entry.second->hasFailed ? entry.first : 0;
    return types & m_transports;
}

void PassScheduler::reset()
{
    m_states.clear();
    Q_EMIT changed();
}

void PassScheduler::noteResult(int transport, int errorCode)
{
    const uint type = static_cast<uint>(transport);
    Transport &state = transportOf(type);
    const bool hadFailed = state.hasFailed;
    state.hasFailed = errorCode != 0;
    if (state.hasFailed) {
        state.due.stop();
    } else if (hadFailed) {
        startWhenDue(type);
    }
    if (state.hasFailed != hadFailed)
        Q_EMIT changed();
}

void PassScheduler::noteFinished(int transport)
{
    const uint type = static_cast<uint>(transport);
    Transport &state = transportOf(type);
    state.isRunning = false;
    if (state.isWantedAgain) {
        state.isWantedAgain = false;
        start(type, std::exchange(state.isWantedByUser, false));
    } else {
        startWhenDue(type);
    }
    Q_EMIT changed();
}

PassScheduler::Transport &PassScheduler::transportOf(uint type)
{
    std::unique_ptr<Transport> &transport = m_states[type];
    if (!transport) {
        transport = std::make_unique<Transport>();
        transport->due.setSingleShot(true);
        connect(&transport->due, &QTimer::timeout, this, [this, type] { start(type, false); });
    }
    return *transport;
}

void PassScheduler::start(uint type, bool byUser)
{
    Transport &transport = transportOf(type);
    if (m_isHeld || transport.isRunning || (m_transports & type) == 0)
        return;
    transport.due.stop();
    transport.isRunning = true;
    Q_EMIT passWanted(type, byUser);
    Q_EMIT changed();
}

void PassScheduler::startWhenDue(uint type)
{
    const Transport &transport = transportOf(type);
    if (m_automatic && !transport.isRunning && !transport.hasFailed && (m_transports & type) != 0)
        transportOf(type).due.start(m_pause);
}

} // namespace browser
