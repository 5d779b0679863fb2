// SPDX-License-Identifier: Apache-2.0
#include "InterfaceManager.h"

#include "InterfaceWorker.h"

namespace browser
{

InterfaceManager::InterfaceManager(QObject *parent)
    : QObject(parent)
    , m_worker(new InterfaceWorker)
{
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    connect(m_worker, &InterfaceWorker::opened, this, &InterfaceManager::noteOpened);
    connect(m_worker, &InterfaceWorker::openFailed, this, [this](long id, uint errorCode) {
        m_opening.remove(id);
        Q_EMIT openFailed(id, errorCode);
    });
    m_thread.start();
}

InterfaceManager::~InterfaceManager()
{
    m_worker->cancel();
    m_thread.quit();
    m_thread.wait();
}

void InterfaceManager::open(const KELA_GENTL_IF_INFO &genTLInterface)
{
    const long id = genTLInterface.id;
    if (m_handles.contains(id) || m_opening.contains(id))
        return;
    m_opening.insert(id);
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, genTLInterface] { worker->open(genTLInterface); });
}

void InterfaceManager::close(long id)
{
    m_opening.remove(id);
    if (!m_handles.contains(id))
        return;
    void *handle = m_handles.take(id);
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, handle] { worker->close(handle); });
    Q_EMIT closed(id);
}

void InterfaceManager::noteOpened(long id, void *handle)
{
    if (!m_opening.remove(id)) {
        // It was closed while it was being opened.
        QMetaObject::invokeMethod(m_worker, [worker = m_worker, handle] { worker->close(handle); });
        return;
    }
    m_handles.insert(id, handle);
    Q_EMIT opened(id, handle);
}

} // namespace browser
