// SPDX-License-Identifier: Apache-2.0
#include "ForceIpPlan.h"

#include "DeviceState.h"
#include "Ipv4.h"

#include <QCoreApplication>

namespace browser
{

namespace
{

struct Plan {
    Q_DECLARE_TR_FUNCTIONS(ForceIpPlan)
};

/// Addresses to try from the subnet's far end; hosts and routers usually stand at its beginning.
constexpr uint32_t kMostTries = 1024;

uint32_t maskOf(uint32_t address, const HostFacts &host)
{
    for (const HostCard &card : host.cards) {
        for (const HostAddress &own : card.addresses) {
            if (own.address == address)
                return own.mask;
        }
    }
    return 0;
}

} // namespace

AddressNeighbourhood neighbourhoodOf(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host,
                                     const QVector<KELA_STRUCT_DEVICE_INFO> &cameras)
{
    AddressNeighbourhood around;
    const KELA_DEVICE_NETWORK &network = device.network;
    around.card.address = network.found ? network.address : device.deviceInfo.special.gige.hostIp;
    around.card.mask = network.found ? network.mask : maskOf(around.card.address, host);
    for (const HostCard &card : host.cards) {
        for (const HostAddress &own : card.addresses)
            around.inUse.insert(own.address);
    }
    for (const KELA_STRUCT_DEVICE_INFO &camera : cameras) {
        if (camera.deviceId != device.deviceId && camera.deviceInfo.transport == KELA_INTERFACE_TYPE_GIGE)
            around.inUse.insert(camera.deviceInfo.special.gige.currentIp);
    }
    return around;
}

std::optional<TemporaryAddress> suggestAddress(const AddressNeighbourhood &around)
{
    const uint32_t mask = around.card.mask;
    if (around.card.address == 0 || mask == 0)
        return std::nullopt;
    const uint32_t network = around.card.address & mask;
    const uint32_t broadcast = network | ~mask;
    uint32_t candidate = broadcast - 1;
    for (uint32_t tries = 0; candidate > network && tries < kMostTries; --candidate, ++tries) {
        if (!around.inUse.contains(candidate))
            return TemporaryAddress{candidate, mask, 0};
    }
    return std::nullopt;
}

QString objectionTo(const TemporaryAddress &choice, const AddressNeighbourhood &around)
{
    if (choice.address == 0)
        return Plan::tr("This is no address.");
    if (ipv4::prefixLength(choice.mask) <= 0)
        return Plan::tr("The mask has to be ones followed by zeros, for example 255.255.255.0.");
    if (!ipv4::isSameSubnet(choice.address, around.card.address, around.card.mask) ||
        !ipv4::isSameSubnet(choice.address, around.card.address, choice.mask)) {
        return Plan::tr("The address is not in the subnet of the card, %1.")
            .arg(ipv4::textWithMask(around.card.address, around.card.mask));
    }
    const uint32_t host = choice.address & ~choice.mask;
    if (host == 0 || host == ~choice.mask)
        return Plan::tr("This address stands for the subnet or its broadcast, not for a device.");
    if (around.inUse.contains(choice.address))
        return Plan::tr("The address is in use already.");
    return {};
}

bool mayAssignAddress(const KELA_STRUCT_DEVICE_INFO &device)
{
    const Condition condition = conditionOf(device.deviceState);
    return device.deviceInfo.transport == KELA_INTERFACE_TYPE_GIGE && device.remote == 0 &&
           (condition == Condition::Unusable || condition == Condition::Free);
}

} // namespace browser
