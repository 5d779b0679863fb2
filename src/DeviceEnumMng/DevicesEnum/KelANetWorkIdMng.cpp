// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/KelANetWorkIdMng.h>

#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

std::mutex KelANetWorkIdMng::s_tableMutex;
QMap<QString, long> &KelANetWorkIdMng::s_NetWork2IDMap = *new QMap<QString, long>;

namespace
{

constexpr long kFirstCardId = 80001;

} // namespace

long KelANetWorkIdMng::getNetWorkID(const KELA_NETWORK &stNetWork)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const QString key = textOf(stNetWork.hardwareAddress);
    const std::lock_guard<std::mutex> tableLock(s_tableMutex);
    const auto known = s_NetWork2IDMap.constFind(key);
    if (known != s_NetWork2IDMap.constEnd()) {
        return known.value();
    }
    const long id = kFirstCardId + s_NetWork2IDMap.size();
    s_NetWork2IDMap.insert(key, id);
    return id;
}

bool KelANetWorkIdMng::addNetWorkID(long lNetWorkID)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    const int before = m_presentIds.size();
    m_presentIds.insert(lNetWorkID);
    return m_presentIds.size() > before;
}

void KelANetWorkIdMng::deleteNetWorkID(long lNetWorkID)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_presentIds.remove(lNetWorkID);
}

QVector<long> KelANetWorkIdMng::NetWorkIdList() const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return QVector<long>(m_presentIds.cbegin(), m_presentIds.cend());
}

void KelANetWorkIdMng::updateNetWorkInfo(long lNetWorkID, const KELA_NETWORK &stNetWork)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_records.insert(lNetWorkID, stNetWork);
}

KELA_NETWORK KelANetWorkIdMng::getNetWorkInfo(long lNetWorkID) const
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    return m_records.value(lNetWorkID, KELA_NETWORK{});
}

void KelANetWorkIdMng::Clear()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_presentIds.clear();
    m_records.clear();
}
