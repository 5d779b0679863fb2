// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceExplanation.h"

namespace browser
{

/// Says why a GigE Vision camera cannot be talked to: addresses that do not fit, and what the host does
/// with the camera's packets.
QStringList gigeObstacles(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host);
/// Says who holds a GigE Vision camera, as far as the camera tells.
QStringList gigeHolder(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host);
/// Adds the camera's network, its card's and its stream's figures.
void addGigEFacts(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host);
/// What the reverse-path filter of a card does, in words; empty when it is not known.
QString reversePathFilterText(ReversePathFilter filter);

} // namespace browser
