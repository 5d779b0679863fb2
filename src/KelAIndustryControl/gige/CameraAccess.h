// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/gige/AccessProbe.h>
#include <KelAIndustryControl/gige/NetworkCards.h>
#include <KelAIndustryControl/gige/RegisterClient.h>

/// @file
/// Asks one camera, which its record names, and waits for the answer. Operations return 0 or a KELA_ERROR.
/// Thread: any.

namespace kela::gige
{

/// Where commands for the camera of a record go. Points into @p cards.
CameraRoute routeOf(const Cards &cards, const KELA_DEVICE_INFO_EX &info);

/// Asks a camera by its address and fills its record anew. 750 ms at most.
unsigned int askDevice(const CancelSignal &cancel, KELA_DEVICE_INFO_EX &info);

/// Reads who holds a camera.
/// @param withStream  the port of stream channel 0 is read even when nobody holds the camera
unsigned int askAccess(const CancelSignal &cancel, const KELA_DEVICE_INFO_EX &info, bool withStream,
                       AccessValue &value);

/// Gives a camera an address until it is switched off.
unsigned int sendForcedAddress(const CancelSignal &cancel, const KELA_DEVICE_INFO_EX &info,
                               const ForcedAddress &forced);

} // namespace kela::gige
