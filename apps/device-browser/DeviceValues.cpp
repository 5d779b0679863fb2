// SPDX-License-Identifier: Apache-2.0
#include "DeviceValues.h"

#include "Ipv4.h"

#include <QCoreApplication>

namespace browser
{

namespace
{

struct Values {
    Q_DECLARE_TR_FUNCTIONS(DeviceValues)
};

constexpr qint64 kExclusive = 1;
constexpr qint64 kControl = 2;

QString privilegeText(qint64 value)
{
    if (value & kExclusive)
        return Values::tr("exclusive access");
    if (value & kControl)
        return Values::tr("control");
    return Values::tr("nobody");
}

} // namespace

QVector<WatchedNode> watchedNodes(uint32_t transport)
{
    if (transport != KELA_INTERFACE_TYPE_GIGE && transport != KELA_INTERFACE_TYPE_GIGE_VARIANT)
        return {};
    return {{"GevCCP", ValueFormat::ControlPrivilege},
            {"GevPrimaryApplicationIPAddress", ValueFormat::Ipv4Address},
            {"GevPrimaryApplicationSocket", ValueFormat::Number},
            {"GevHeartbeatTimeout", ValueFormat::Milliseconds},
            {"GevCurrentIPAddress", ValueFormat::Ipv4Address},
            {"GevCurrentSubnetMask", ValueFormat::Ipv4Address},
            {"GevCurrentDefaultGateway", ValueFormat::Ipv4Address},
            {"GevLinkSpeed", ValueFormat::MegabitPerSecond},
            {"GevSCDA", ValueFormat::Ipv4Address},
            {"GevSCPHostPort", ValueFormat::Number},
            {"GevSCPSPacketSize", ValueFormat::Bytes}};
}

QString valueText(const ReadValue &value)
{
    if (!value.isKnown)
        return QStringLiteral("–");
    switch (value.format) {
    case ValueFormat::Ipv4Address:
        return value.value == 0 ? Values::tr("none") : ipv4::text(static_cast<uint32_t>(value.value));
    case ValueFormat::ControlPrivilege:
        return privilegeText(value.value);
    case ValueFormat::Milliseconds:
        return Values::tr("%1 ms").arg(value.value);
    case ValueFormat::MegabitPerSecond:
        return Values::tr("%1 Mbit/s").arg(value.value);
    case ValueFormat::Bytes:
        return Values::tr("%1 bytes").arg(value.value);
    case ValueFormat::Number:
        break;
    }
    return QString::number(value.value);
}

} // namespace browser
