// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/gentl/Producer.h>

namespace kela::gentl
{

/// The record of an interface.
KELA_GENTL_IF_INFO interfaceRecord(const Producer &producer, const InterfaceFacts &facts);

/// The record of a device.
/// @param transport  KELA_INTERFACE_TYPE_GENTL or KELA_INTERFACE_TYPE_GENTL_INTERFACE
KELA_DEVICE_INFO_EX deviceRecord(const Producer &producer, const std::string &interfaceId,
                                 unsigned int transport, const DeviceFacts &facts);

} // namespace kela::gentl
