// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>
#include <KelAIndustryControl/gentl/Producer.h>
#include <KelAIndustryControl/gentl/TrialLoad.h>

#include <optional>

namespace kela::gentl
{

/// The record of an interface.
KELA_GENTL_IF_INFO interfaceRecord(const Producer &producer, const InterfaceFacts &facts);

/// The record of a device.
/// @param transport  KELA_INTERFACE_TYPE_GENTL or KELA_INTERFACE_TYPE_GENTL_INTERFACE
KELA_DEVICE_INFO_EX deviceRecord(const Producer &producer, const std::string &interfaceId,
                                 unsigned int transport, const DeviceFacts &facts);

/// Fills in what is known of a producer.
/// @param verdict  of its trial, as far as there is one
/// @param info     zeroed
void fillProducerInfo(const std::optional<Verdict> &verdict, const Producer::Condition &condition,
                      KELA_GENTL_PRODUCER_INFO &info);

} // namespace kela::gentl
