// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QElapsedTimer>
#include <QHash>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QVector>

class KelDeviceTree;

namespace browser
{

/// Listens to a tree's enumeration events for what the rows do not show: how long passes take, how they
/// end, and which devices, cards and interfaces have gone although their row stays: because a device is held,
/// or because the tree stood still.
///
/// Thread: GUI.
class EnumerationMonitor : public QObject
{
    Q_OBJECT

public:
    explicit EnumerationMonitor(QObject *parent = nullptr);

    /// Listens to this tree from now on and forgets what was heard of another.
    void listenTo(KelDeviceTree *tree);

    /// True for a device that was reported gone and not seen again.
    bool isGone(long id) const { return m_goneDevices.contains(id); }
    QList<long> goneDevices() const { return m_goneDevices.values(); }
    /// The cards that were reported gone and not seen again.
    QVector<KELA_NETWORK> goneCards() const;
    /// The GenTL interfaces that were reported gone and not seen again.
    QVector<KELA_GENTL_IF_INFO> goneInterfaces() const;
    /// How long the last pass of a transport took, in ms; -1 before the first one has ended.
    int lastPassMs(uint transport) const { return m_lastPassMs.value(transport, -1); }

Q_SIGNALS:
    void passBegan(int transport);
    void passEnded(int transport, int milliseconds, int errorCode);
    /// A device was reported gone, whether its row left or not.
    void deviceGone(long id, int transport);

private:
    void noteEvent(const QVariant &container, const QVariant &device, int kind, int errorCode, int transport);
    void noteGone(const KELA_STRUCT_DEVICE_INFO &device);
    void noteContainer(const QVariant &container, bool isGone);
    void noteCard(const KELA_NETWORK &card, bool isGone);

    QSet<long> m_goneDevices;
    QHash<QByteArray, KELA_NETWORK> m_goneCards;
    QHash<uint, KELA_GENTL_IF_INFO> m_goneInterfaces;
    QMap<uint, QElapsedTimer> m_begun;
    QMap<uint, int> m_lastPassMs;
};

} // namespace browser
