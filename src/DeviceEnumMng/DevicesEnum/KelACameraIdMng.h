// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>

#include <mutex>

/// Gives devices identifiers that stay the same for the life of the process, and keeps which of them
/// are present and the latest record of each. The identifiers are shared by all registries of the process.
///
/// Thread: every operation may be called from any thread; lists and records are returned as copies.
class KelACameraIdMng
{
public:
    /// Identifier of a device, made on first sight: the base of its transport plus a running number that
    /// counts the devices of every transport. Devices without an identity share one identifier.
    long getDeviceID(const KELA_STRUCT_DEVICE_INFO &stDeviceInfo);

    /// Marks a device as present.
    void addDeviceID(long lDeviceID);

    /// Marks a device as gone. Its record and its identifier stay.
    void deleteDeviceID(long lDeviceID);

    /// Identifiers of the present devices, in no particular order.
    QVector<long> DeviceIdList() const;

    /// True when the device is present.
    bool isPresent(long lDeviceID) const;

    /// Keeps a copy of the record under the identifier.
    void updateDeviceInfo(long lDeviceID, const KELA_STRUCT_DEVICE_INFO &stDeviceInfo);

    /// The record kept under the identifier, all zero when there is none.
    KELA_STRUCT_DEVICE_INFO getDeviceInfo(long lDeviceID) const;

    /// Finds the kept GigE record (transport 1 or 256) with the given address and the lowest identifier.
    /// @param stDeviceInfo  receives the record; untouched when there is none
    bool findDeviceInfoByIP(unsigned int nIp, KELA_STRUCT_DEVICE_INFO &stDeviceInfo) const;

    /// The text with "0" before it until it is at least @p nWidth characters long.
    static QString stringFormat(const QString &strText, int nWidth);

    /// Forgets who is present and all records. Identifiers stay.
    void Clear();

private:
    mutable std::recursive_mutex m_mutex; // guards the two members below
    QSet<long> m_presentIds;
    QMap<long, KELA_STRUCT_DEVICE_INFO> m_records;

    static std::mutex s_tableMutex; // guards s_Device2IDMap; taken inside m_mutex, never the other way round
    // Never destroyed: a worker may still be in a pass when the process takes its globals down.
    static QMap<QString, long> &s_Device2IDMap;
};
