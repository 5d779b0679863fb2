// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Fields.h"

#include <KelAIndustryControl/KelARecords.h>

/// @file
/// What the command line tells of the engine's records.

/// "gige", "usb", "cameralink" or "gentl".
const char *transportWord(uint32_t transport);

/// A state in words.
const char *stateText(int32_t state);

Fields deviceFields(const KELA_STRUCT_DEVICE_INFO &device);
Fields cardFields(const KELA_NETWORK &card);

/// @param producer  path of the producer's file
Fields interfaceFields(const KELA_GENTL_IF_INFO &interface, const QString &producer);
