// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Enumerations.h"

#include <QMap>

/// What is there now, kept from the events.
class Picture
{
public:
    /// @return true when the event tells something that the picture did not hold: new, changed, gone, or a
    ///         transport whose result changed
    bool apply(const EnumerationEvent &event);

    /// By number, so in the same order every time.
    const QMap<qint64, Fields> &cards() const { return m_cards; }
    const QMap<qint64, Fields> &interfaces() const { return m_interfaces; }
    const QMap<qint64, Fields> &devices() const { return m_devices; }

    /// Result of the latest pass of each transport that has ended one.
    const QMap<KELA_INTERFACE_TYPE, quint32> &results() const { return m_results; }

    bool hasFailure() const;

private:
    bool keep(QMap<qint64, Fields> &rows, const EnumerationEvent &event) const;
    bool noteResult(const EnumerationEvent &event);

    QMap<qint64, Fields> m_cards;
    QMap<qint64, Fields> m_interfaces;
    QMap<qint64, Fields> m_devices;
    QMap<KELA_INTERFACE_TYPE, quint32> m_results;
};
