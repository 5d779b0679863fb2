// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HostFacts.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QSet>
#include <QString>

#include <optional>

namespace browser
{

/// An address to assign to a camera until it is switched off.
struct TemporaryAddress {
    uint32_t address = 0;
    uint32_t mask = 0;
    uint32_t gateway = 0; ///< 0 = none
};

/// What is known when an address is chosen.
struct AddressNeighbourhood {
    HostAddress card;     ///< of the card that sees the camera
    QSet<uint32_t> inUse; ///< addresses known to be taken: of this computer and of other cameras
};

/// The card that sees a camera and the addresses in use around it.
/// @param cameras  all cameras known
AddressNeighbourhood neighbourhoodOf(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host,
                                     const QVector<KELA_STRUCT_DEVICE_INFO> &cameras);

/// A free address in the card's subnet; none when the card has no subnet or no address is left.
std::optional<TemporaryAddress> suggestAddress(const AddressNeighbourhood &around);

/// Why an address is not a good choice, translated; empty when it is.
QString objectionTo(const TemporaryAddress &choice, const AddressNeighbourhood &around);

/// True for a camera that may be given an address: a GigE Vision camera that nobody holds.
bool mayAssignAddress(const KELA_STRUCT_DEVICE_INFO &device);

} // namespace browser
