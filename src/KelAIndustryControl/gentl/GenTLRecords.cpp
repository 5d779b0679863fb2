// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/GenTLRecords.h>

#include <KelAIndustryControl/core/FieldText.h>
#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/gentl/Identifiers.h>

#include <cstring>

namespace kela::gentl
{
namespace
{

template <std::size_t Size>
void setDisplayText(char (&field)[Size], std::string_view text)
{
    setFieldText(field, displayText(text, Size - 1));
}

/// The first of the texts that says anything.
std::string_view firstOf(std::string_view text, std::string_view other)
{
    return displayText(text, text.size()).empty() ? other : text;
}

} // namespace

KELA_GENTL_IF_INFO interfaceRecord(const Producer &producer, const InterfaceFacts &facts)
{
    KELA_GENTL_IF_INFO record;
    std::memset(&record, 0, sizeof record);
    setFieldText(record.identifier, recordIdentifier(facts.identifier));
    char displayName[sizeof record.displayName];
    setDisplayText(displayName, firstOf(facts.displayName, facts.identifier));
    std::memcpy(record.displayName, displayName, sizeof displayName);
    record.number = InterfaceNumbers::numberOf(producer.file(), facts.identifier);
    record.state = KELA_DEV_STATE_GENTL_INTERFACE_FREE;
    record.producerToken = producer.token();
    return record;
}

KELA_DEVICE_INFO_EX deviceRecord(const Producer &producer, const std::string &interfaceId,
                                 unsigned int transport, const DeviceFacts &facts)
{
    KELA_DEVICE_INFO_EX record;
    std::memset(&record, 0, sizeof record);
    record.transport = transport;
    record.placement = KELA_PLACEMENT_REAL;
    setDisplayText(record.modelName, firstOf(facts.model, firstOf(facts.displayName, facts.identifier)));
    setDisplayText(record.secondName, facts.version);
    setDisplayText(record.serialNumber, facts.serialNumber);
    KELA_GENTL_DEVICE_INFO &region = record.special.genTL;
    setFieldText(region.interfaceId, recordIdentifier(interfaceId));
    // Serial number and identifier make the key of a device.
    const bool hasSerialNumber = record.serialNumber[0] != '\0';
    setFieldText(region.deviceId, hasSerialNumber
                                      ? recordIdentifier(facts.identifier)
                                      : PlacedIdentifiers::of(producer.file(), interfaceId, facts.identifier));
    setDisplayText(region.vendorName, facts.vendor);
    setDisplayText(region.userDefinedName, facts.userDefinedName);
    region.interfaceNumber = InterfaceNumbers::numberOf(producer.file(), interfaceId);
    region.accessStatus = facts.accessStatus;
    return record;
}

void fillProducerInfo(const std::optional<Verdict> &verdict, const Producer::Condition &condition,
                      KELA_GENTL_PRODUCER_INFO &info)
{
    const bool isRefused = !condition.isLoaded && verdict && verdict->code != KELA_OK;
    if (isRefused) {
        info.state = KELA_PRODUCER_REFUSED;
        info.errorCode = verdict->code;
    } else if (!condition.isResponding) {
        info.state = KELA_PRODUCER_NOT_RESPONDING;
    } else if (!condition.trouble.empty()) {
        info.state = KELA_PRODUCER_FAILING;
    } else if (condition.isLoaded || verdict) {
        info.state = KELA_PRODUCER_READY;
    }
    setFieldText(info.trouble, isRefused ? printable(verdict->text) : printable(condition.trouble));
    setDisplayText(info.vendor, condition.facts.vendor);
    setDisplayText(info.model, condition.facts.model);
    setDisplayText(info.version, condition.facts.version);
    setDisplayText(info.transportType, condition.facts.transportType);
    setDisplayText(info.displayName, condition.facts.displayName);
}

} // namespace kela::gentl
