// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

/// A device state without the transport that its number also tells.
enum class Condition {
    Unknown,
    Free,
    InUse,
    Multicast, ///< held by another host, which streams to a multicast group
    Connected,
    Grabbing,
    Unusable, ///< unreachable, or present but not usable
};

/// What a state number means.
Condition conditionOf(int32_t deviceState);
/// True for a device that this program holds: it has to give it back before the row may go.
bool isOwnState(int32_t deviceState);
/// The state that a row shows once this program holds its device.
KELA_DEV_STATE connectedState(const KELA_STRUCT_DEVICE_INFO &device);
/// The state that a row shows when this program has just given its device back.
KELA_DEV_STATE freeState(const KELA_DEVICE_INFO_EX &device);
/// How a condition stands to the user.
Standing standingOf(Condition condition);
/// A condition in a few words, translated.
QString conditionText(Condition condition);

} // namespace browser
