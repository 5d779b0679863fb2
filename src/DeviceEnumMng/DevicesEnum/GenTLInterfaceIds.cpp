// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>

#include <QMap>
#include <QString>

#include <mutex>

namespace
{

constexpr unsigned int kFirstInterfaceId = 70001;

std::mutex s_idMapMutex; // guards s_IDMap

QMap<QString, unsigned int> &idMap()
{
    // Never destroyed: a worker may still be in a pass when the process takes its globals down.
    static auto *const s_IDMap = new QMap<QString, unsigned int>;
    return *s_IDMap;
}

} // namespace

unsigned int genTLInterfaceId(std::string_view text, unsigned int number)
{
    // Byte by byte, since producers write these texts in any encoding: a decoder's replacement
    // character would make one interface of two.
    const QString key =
        QString::fromLatin1(text.data(), static_cast<int>(text.size())) + QString::number(number);
    const std::lock_guard<std::mutex> lock(s_idMapMutex);
    QMap<QString, unsigned int> &ids = idMap();
    const auto known = ids.constFind(key);
    if (known != ids.constEnd()) {
        return known.value();
    }
    const unsigned int id = kFirstInterfaceId + static_cast<unsigned int>(ids.size());
    ids.insert(key, id);
    return id;
}

unsigned int GetGenTLInterfaceID(unsigned char *strInterfaceID, unsigned int nNumber)
{
    const auto *text = static_cast<const char *>(static_cast<const void *>(strInterfaceID));
    return genTLInterfaceId(text == nullptr ? std::string_view() : std::string_view(text), nNumber);
}
