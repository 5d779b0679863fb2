// SPDX-License-Identifier: Apache-2.0
#include "RemoteCameras.h"

#include "EventLog.h"
#include "Ipv4.h"
#include "TreeHost.h"
#include "TreeRows.h"

#include <utility>

namespace browser
{

RemoteCameras::RemoteCameras(TreeHost *host, EventLog *log, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_log(log)
{
    connect(host, &TreeHost::aboutToReplace, this, &RemoteCameras::keepAddresses);
    // Once everybody listens to the new tree.
    connect(host, &TreeHost::replaced, this, &RemoteCameras::addKept, Qt::QueuedConnection);
}

bool RemoteCameras::add(quint32 address)
{
    KELA_STRUCT_DEVICE_INFO device{};
    device.deviceInfo.transport = KELA_INTERFACE_TYPE_GIGE;
    device.deviceInfo.special.gige.currentIp = address;
    const bool isThere = m_host->tree()->addRemoteDevice(device) >= 0;
    if (isThere) {
        m_log->add(EventLog::Kind::Note, tr("Added the camera at %1.").arg(ipv4::text(address)));
    } else {
        m_log->add(EventLog::Kind::Problem, tr("No camera answers at %1.").arg(ipv4::text(address)));
    }
    return isThere;
}

void RemoteCameras::takeOut(long id)
{
    KelDeviceTree *tree = m_host->tree();
    auto device = rows::deviceOf(*tree, id);
    if (device && device->remote != 0)
        tree->removeRemoteDevice(*device);
}

void RemoteCameras::keepAddresses()
{
    const QVector<KELA_STRUCT_DEVICE_INFO> devices = rows::allDevices(*m_host->tree());
    for (const KELA_STRUCT_DEVICE_INFO &device : devices) {
        if (device.remote != 0)
            m_kept.append(device.deviceInfo.special.gige.currentIp);
    }
}

void RemoteCameras::addKept()
{
    const QVector<quint32> kept = std::exchange(m_kept, {});
    for (const quint32 address : kept)
        add(address);
}

} // namespace browser
