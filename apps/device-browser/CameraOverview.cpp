// SPDX-License-Identifier: Apache-2.0
#include "CameraOverview.h"

#include "DeviceState.h"
#include "DeviceText.h"
#include "Ipv4.h"

#include <QCoreApplication>

#include <algorithm>

namespace browser
{

namespace
{

struct Overview {
    Q_DECLARE_TR_FUNCTIONS(CameraOverview)
};

/// A longer list would not be read; the tree shows it.
constexpr int kMostLines = 48;

QString addressText(const KELA_DEVICE_INFO_EX &device)
{
    return device.transport == KELA_INTERFACE_TYPE_GIGE ? ipv4::text(device.special.gige.currentIp) : QString();
}

} // namespace

void DeviceCount::add(int32_t deviceState)
{
    ++total;
    switch (conditionOf(deviceState)) {
    case Condition::Free:
        ++free;
        break;
    case Condition::InUse:
    case Condition::Multicast:
        ++busy;
        break;
    case Condition::Connected:
    case Condition::Grabbing:
        ++own;
        break;
    case Condition::Unusable:
        ++unusable;
        break;
    case Condition::Unknown:
        break;
    }
}

DeviceCount countOf(const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    DeviceCount count;
    for (const KELA_STRUCT_DEVICE_INFO &device : devices)
        count.add(device.deviceState);
    return count;
}

QString countText(const DeviceCount &count)
{
    if (count.total == 0)
        return Overview::tr("No cameras");
    QStringList parts;
    if (count.own > 0)
        parts << Overview::tr("%1 connected").arg(count.own);
    if (count.free > 0)
        parts << Overview::tr("%1 free").arg(count.free);
    if (count.busy > 0)
        parts << Overview::tr("%1 in use").arg(count.busy);
    if (count.unusable > 0)
        parts << Overview::tr("%1 not usable").arg(count.unusable);
    QString total = Overview::tr("Cameras: %1").arg(count.total);
    if (parts.isEmpty())
        return total;
    return QStringLiteral("%1 (%2)").arg(total, parts.join(QStringLiteral(", ")));
}

FactGroup cameraOverview(const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    FactGroup group{Overview::tr("Cameras"), {}};
    const int shown = std::min(devices.size(), kMostLines);
    for (int i = 0; i < shown; ++i) {
        const KELA_STRUCT_DEVICE_INFO &device = devices.at(i);
        group.add(displayName(device.deviceInfo), conditionText(conditionOf(device.deviceState)),
                  addressText(device.deviceInfo));
    }
    if (devices.size() > shown)
        group.add(Overview::tr("and more"), QString::number(devices.size() - shown));
    return group;
}

} // namespace browser
