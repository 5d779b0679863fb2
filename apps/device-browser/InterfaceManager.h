// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QMap>
#include <QObject>
#include <QSet>
#include <QThread>

namespace browser
{

class InterfaceWorker;

/// The GenTL interfaces that this program has open, by their identifiers. Producers are other people's
/// code and may take long, so they are called in a thread of their own. Thread: GUI.
class InterfaceManager : public QObject
{
    Q_OBJECT

public:
    explicit InterfaceManager(QObject *parent = nullptr);
    /// Closes what is open.
    ~InterfaceManager() override;

    /// Opens an interface; does nothing while it is open or being opened.
    void open(const KELA_GENTL_IF_INFO &genTLInterface);
    /// Closes an interface; its handle is not valid any more when this returns.
    void close(long id);
    bool isOpen(long id) const { return m_handles.contains(id); }
    QList<long> openIds() const { return m_handles.keys(); }
    /// Those that are open and those that are being opened.
    QList<long> ids() const { return m_handles.keys() + m_opening.values(); }

Q_SIGNALS:
    void opened(long id, void *handle);
    void openFailed(long id, uint errorCode);
    void closed(long id);

private:
    void noteOpened(long id, void *handle);

    QThread m_thread;
    InterfaceWorker *m_worker; ///< deletes itself when its thread ends
    QMap<long, void *> m_handles;
    QSet<long> m_opening;
};

} // namespace browser
