// SPDX-License-Identifier: Apache-2.0
// GenTL producers in the tree: what the menu switches on, off or removes reaches the GenTL enumerator as
// the difference to what it was told before (m_appliedCtiStates), and the host's questions about
// interface items are answered from that same map. Called on the GUI thread by the menu and the host.
//
// A change that comes while one is being applied, from a receiver of sigBeforeDeleteCti, waits for it:
// each difference is taken against a map that the enumerator has been told whole.
#include "KelDeviceTree_p.h"

#include "DeviceEnumMng/DevicesEnum/CDevicesEnum.h"

#include <DeviceEnumMng/KelGenTLMenu.h>

#include <algorithm>

namespace
{

constexpr int kStateOff = 0;
constexpr int kStateVirtualPort = 2;
constexpr int kStateImported = 3;

using CtiStates = QMap<QString, int>;

void addPath(CDevicesEnum *enumerator, const QString &path)
{
    QByteArray local = path.toLocal8Bit();
    enumerator->AddCtiPath(local.data());
}

void removePath(CDevicesEnum *enumerator, const QString &path)
{
    QByteArray local = path.toLocal8Bit();
    enumerator->RemoveCtiPath(local.data());
}

/// The interfaces that a producer listed last.
QVector<int> interfaceIdsOf(const CDevicesEnum &enumerator, const QString &producer)
{
    QByteArray path = producer.toLocal8Bit();
    int count = 0;
    enumerator.GetCtiInterfaceCount(path.data(), &count);
    QVector<int> ids;
    for (int index = 0; index < count; ++index) {
        int id = -1;
        enumerator.GetCtiInterfaceID(path.data(), index, &id);
        if (id >= 0) {
            ids.append(id);
        }
    }
    return ids;
}

} // namespace

void KelDeviceTreePrivate::DoChangedCtiFile()
{
    if (m_ctiChange.runs) {
        m_ctiChange.again = true;
        return;
    }
    m_ctiChange.runs = true;
    do {
        m_ctiChange.again = false;
        if (!applyCtiStates()) {
            return;
        }
    } while (m_ctiChange.again);
    m_ctiChange.runs = false;
}

bool KelDeviceTreePrivate::applyCtiStates()
{
    if (!m_genTLMenu || !getThread(KELA_INTERFACE_TYPE_GENTL)) {
        return true;
    }
    CtiStates states;
    m_genTLMenu->GetCtiStates(states);
    const CtiStates applied = m_appliedCtiStates;

    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        const int old = applied.value(state.key(), kStateOff);
        if (old == kStateOff && state.value() != kStateOff) {
            addPath(getThread(KELA_INTERFACE_TYPE_GENTL), state.key());
        } else if (old != kStateOff && state.value() == kStateOff) {
            const QPointer<KelDeviceTree> tree(q);
            Q_EMIT q->sigBeforeDeleteCti(state.key());
            if (!tree) {
                return false;
            }
            removePath(getThread(KELA_INTERFACE_TYPE_GENTL), state.key());
        }
    }
    for (auto old = applied.cbegin(); old != applied.cend(); ++old) {
        if (!states.contains(old.key())) {
            removePath(getThread(KELA_INTERFACE_TYPE_GENTL), old.key());
        }
    }
    m_appliedCtiStates = states;
    return true;
}

void KelDeviceTreePrivate::OnCtiFileChanged()
{
    const QPointer<KelDeviceTree> tree(q);
    DoChangedCtiFile();
    if (tree) {
        refreshThread(KELA_INTERFACE_TYPE_GENTL, true, true, true);
    }
}

void KelDeviceTreePrivate::GetInterfaceItemList(const QString &ctiPath, QList<QTreeWidgetItem *> &items)
{
    const CDevicesEnum *enumerator = getThread(KELA_INTERFACE_TYPE_GENTL);
    if (!enumerator) {
        return;
    }
    items.clear();
    const QVector<int> ids = interfaceIdsOf(*enumerator, ctiPath);
    for (const int id : ids) {
        // Whatever the look-up gives, the last interface for one that is not shown included.
        items.append(findGenTLInterfaceItem(id));
    }
}

QString KelDeviceTreePrivate::producerOfInterface(long interfaceId)
{
    const CDevicesEnum *enumerator = getThread(KELA_INTERFACE_TYPE_GENTL);
    for (auto applied = m_appliedCtiStates.cbegin(); enumerator && applied != m_appliedCtiStates.cend();
         ++applied) {
        // One that is off keeps its list, and may be another link to a file that is on.
        if (applied.value() == kStateOff) {
            continue;
        }
        const QVector<int> ids = interfaceIdsOf(*enumerator, applied.key());
        if (std::find(ids.cbegin(), ids.cend(), interfaceId) != ids.cend()) {
            return applied.key();
        }
    }
    return {};
}

QString KelDeviceTreePrivate::ctiPathOf(QTreeWidgetItem *item, int state)
{
    if (!item) {
        return {};
    }
    for (auto applied = m_appliedCtiStates.cbegin(); applied != m_appliedCtiStates.cend(); ++applied) {
        if (applied.value() != state) {
            continue;
        }
        QList<QTreeWidgetItem *> items;
        GetInterfaceItemList(applied.key(), items);
        if (items.contains(item)) {
            return applied.key();
        }
    }
    return {};
}

bool KelDeviceTreePrivate::Is3rdCtiInterface(QTreeWidgetItem *item)
{
    return !ctiPathOf(item, kStateImported).isNull();
}

void KelDeviceTreePrivate::DeleteCtiFile(QTreeWidgetItem *item)
{
    const QString path = ctiPathOf(item, kStateImported);
    if (!path.isNull() && m_genTLMenu) {
        m_genTLMenu->Delete3rdCti(path);
    }
}

bool KelDeviceTreePrivate::IsOpenByVirtualPort(long interfaceId)
{
    QTreeWidgetItem *item = findGenTLInterfaceItem(static_cast<int>(interfaceId));
    return !ctiPathOf(item, kStateVirtualPort).isNull();
}
