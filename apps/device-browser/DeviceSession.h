// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceValues.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QObject>
#include <QTimer>

namespace browser
{

/// This program's hold on one device. Lives in a thread of its own, because every talk with a device may
/// take long; the device access keeps the connection alive by itself. While the device is held, its
/// values are read every second, which also tells when it is lost.
///
/// Thread: its own, except for cancel().
class DeviceSession : public QObject
{
    Q_OBJECT

public:
    DeviceSession(const KELA_DEVICE_INFO_EX &device, uint accessMode);

    /// Ends what the session waits for. Thread: any, while the session lives.
    void cancel() { m_access.CancelEnum(); }

public Q_SLOTS:
    void open();
    void close();

Q_SIGNALS:
    void opened();
    void openFailed(uint errorCode);
    /// The device does not answer any more or another program took it.
    void lost(uint errorCode);
    void closed();
    void valuesRead(const browser::ReadValues &values);

private:
    void readValues();
    ReadValue readValue(const WatchedNode &node, uint *errorCode);
    uint askWhetherOurs();
    void noteAnswer(uint errorCode);

    KELA_DEVICE_INFO_EX m_device;
    uint m_accessMode;
    KelAIndustryControl m_access;
    QTimer m_clock;
    int m_failuresInARow = 0;
    bool m_isOpen = false;
};

} // namespace browser
