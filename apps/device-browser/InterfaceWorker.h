// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QObject>

namespace browser
{

/// Opens and closes GenTL interfaces. Thread: its own, except for cancel().
class InterfaceWorker : public QObject
{
    Q_OBJECT

public:
    void open(const KELA_GENTL_IF_INFO &genTLInterface)
    {
        void *handle = nullptr;
        const uint code = m_access.OpenGenTLInterface(&genTLInterface, &handle);
        if (code == KELA_OK) {
            Q_EMIT opened(genTLInterface.id, handle);
        } else {
            Q_EMIT openFailed(genTLInterface.id, code);
        }
    }

    void close(void *handle) { m_access.CloseGenTLInterface(handle); }

    /// Ends what the worker waits for. Thread: any.
    void cancel() { m_access.CancelEnum(); }

Q_SIGNALS:
    void opened(long id, void *handle);
    void openFailed(long id, uint errorCode);

private:
    KelAIndustryControl m_access;
};

} // namespace browser
