// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>

#include <mutex>

/// Gives network cards identifiers that stay the same for the life of the process, and keeps which of
/// them are present and the latest record of each. The identifiers are shared by all registries of the process.
///
/// Thread: every operation may be called from any thread; lists and records are returned as copies.
class KelANetWorkIdMng
{
public:
    /// Identifier of a card by its hardware address text, made on first sight.
    long getNetWorkID(const KELA_NETWORK &stNetWork);

    /// Marks a card as present.
    /// @return true when it was not present before
    bool addNetWorkID(long lNetWorkID);

    /// Marks a card as gone. Its record and its identifier stay.
    void deleteNetWorkID(long lNetWorkID);

    /// Identifiers of the present cards, in no particular order.
    QVector<long> NetWorkIdList() const;

    /// Keeps a copy of the record under the identifier.
    void updateNetWorkInfo(long lNetWorkID, const KELA_NETWORK &stNetWork);

    /// The record kept under the identifier, all zero when there is none.
    KELA_NETWORK getNetWorkInfo(long lNetWorkID) const;

    /// Forgets who is present and all records. Identifiers stay.
    void Clear();

private:
    mutable std::recursive_mutex m_mutex; // guards the two members below
    QSet<long> m_presentIds;
    QMap<long, KELA_NETWORK> m_records;

    static std::mutex s_tableMutex; // guards s_NetWork2IDMap; taken inside m_mutex, never the other way round
    // Never destroyed: a worker may still be in a pass when the process takes its globals down.
    static QMap<QString, long> &s_NetWork2IDMap;
};
