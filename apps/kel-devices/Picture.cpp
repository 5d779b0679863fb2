// SPDX-License-Identifier: Apache-2.0
#include "Picture.h"

#include <algorithm>

bool Picture::apply(const EnumerationEvent &event)
{
    switch (event.kind) {
    case KELA_INTERFACE_STATE_INTERFACE_NEW:
    case KELA_INTERFACE_STATE_INTERFACE_UPDATED:
    case KELA_INTERFACE_STATE_INTERFACE_REMOVED:
        return keep(event.isCard ? m_cards : m_interfaces, event);
    case KELA_INTERFACE_STATE_DEVICE_NEW:
    case KELA_INTERFACE_STATE_DEVICE_UPDATED:
    case KELA_INTERFACE_STATE_DEVICE_REMOVED:
        return keep(m_devices, event);
    case KELA_INTERFACE_STATE_PASS_BEGIN:
        return false;
    case KELA_INTERFACE_STATE_PASS_END:
        return noteResult(event);
    }
    return false;
}

bool Picture::keep(QMap<qint64, Fields> &rows, const EnumerationEvent &event) const
{
    if (event.kind == KELA_INTERFACE_STATE_INTERFACE_REMOVED ||
        event.kind == KELA_INTERFACE_STATE_DEVICE_REMOVED) {
        return rows.remove(event.id) != 0;
    }
    const auto known = rows.constFind(event.id);
    const bool isNews = known == rows.constEnd() || !(*known == event.fields);
    rows.insert(event.id, event.fields);
    return isNews;
}

bool Picture::noteResult(const EnumerationEvent &event)
{
    const quint32 before = m_results.value(event.transport, 0);
    m_results.insert(event.transport, event.code);
    return before != event.code;
}

bool Picture::hasFailure() const
{
    return std::any_of(m_results.begin(), m_results.end(), [](quint32 code) { return code != 0; });
}
