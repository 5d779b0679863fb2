// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/KelACameraIdMng.h>

#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

std::mutex KelACameraIdMng::s_tableMutex;
QMap<QString, long> &KelACameraIdMng::s_Device2IDMap = *new QMap<QString, long>;

namespace
{

struct Identity {
    QString key;
    long base;
};

Identity identityOf(const KELA_DEVICE_INFO_EX &device)
{
    const QString serial = textOf(device.serialNumber);
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return {QLatin1String("GIGE:") + serial + QString::number(device.special.gige.macHigh) +
                    QString::number(device.special.gige.macLow),
                0};
    case KELA_INTERFACE_TYPE_USB:
        return {QLatin1String("USB:") + serial, 30000};
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return {QLatin1String("CAMERALINK:") + serial + textOf(device.special.cameraLink.portName), 40000};
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return {QLatin1String("GenTL:") + serial + textOf(device.special.genTL.deviceId), 50000};
    case KELA_INTERFACE_TYPE_1394:
        return {QString(), 20000};
    case KELA_INTERFACE_TYPE_FURTHER:
        return {QString(), 60000};
    default:
        return {QString(), 0};
    }
}

} // namespace

long KelACameraIdMng::getDeviceID(const KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const Identity identity = identityOf(stDeviceInfo.deviceInfo);
    const std::lock_guard<std::mutex> tableLock(s_tableMutex);
    const auto known = s_Device2IDMap.constFind(identity.key);
    if (known != s_Device2IDMap.constEnd()) {
        return known.value();
    }
    const long id = identity.base + s_Device2IDMap.size() + 1;
    s_Device2IDMap.insert(identity.key, id);
    return id;
}

void KelACameraIdMng::addDeviceID(long lDeviceID)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_presentIds.insert(lDeviceID);
}

void KelACameraIdMng::deleteDeviceID(long lDeviceID)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_presentIds.remove(lDeviceID);
}

QVector<long> KelACameraIdMng::DeviceIdList() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return QVector<long>(m_presentIds.cbegin(), m_presentIds.cend());
}

bool KelACameraIdMng::isPresent(long lDeviceID) const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return m_presentIds.contains(lDeviceID);
}

void KelACameraIdMng::updateDeviceInfo(long lDeviceID, const KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const auto kept = m_records.find(lDeviceID);
    if (kept == m_records.end()) {
        m_records.insert(lDeviceID, stDeviceInfo);
    } else {
        kept.value() = stDeviceInfo;
    }
}

KELA_STRUCT_DEVICE_INFO KelACameraIdMng::getDeviceInfo(long lDeviceID) const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return m_records.value(lDeviceID, KELA_STRUCT_DEVICE_INFO{});
}

bool KelACameraIdMng::findDeviceInfoByIP(unsigned int nIp, KELA_STRUCT_DEVICE_INFO &stDeviceInfo) const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    for (const KELA_STRUCT_DEVICE_INFO &record : m_records) {
        const KELA_DEVICE_INFO_EX &device = record.deviceInfo;
        const bool isGigE = device.transport == KELA_INTERFACE_TYPE_GIGE ||
                            device.transport == KELA_INTERFACE_TYPE_GIGE_VARIANT;
        if (isGigE && device.special.gige.currentIp == nIp) {
            stDeviceInfo = record;
            return true;
        }
    }
    return false;
}

QString KelACameraIdMng::stringFormat(const QString &strText, int nWidth)
{
    return strText.rightJustified(nWidth, QLatin1Char('0'));
}

void KelACameraIdMng::Clear()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_presentIds.clear();
    m_records.clear();
}
