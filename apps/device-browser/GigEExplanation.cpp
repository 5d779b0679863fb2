// SPDX-License-Identifier: Apache-2.0
#include "GigEExplanation.h"

#include "DeviceText.h"
#include "Ipv4.h"

#include <QCoreApplication>

namespace browser
{

namespace
{

struct GigE {
    Q_DECLARE_TR_FUNCTIONS(GigEExplanation)
};

constexpr uint32_t kNoGateway = 0xFFFFFFFFU;

/// The card that sees the camera. The enumeration may not have found it; then the address through which
/// the camera's answer came still names it.
struct SeeingCard {
    QString name;
    QString hardwareAddress;
    uint32_t address = 0;
    uint32_t mask = 0;
    const HostCard *card = nullptr;
};

SeeingCard seeingCard(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host)
{
    const KELA_DEVICE_NETWORK &network = device.network;
    SeeingCard seen;
    seen.hardwareAddress = QString::fromLatin1(network.hardwareAddress,
                                               static_cast<int>(fixedText(network.hardwareAddress).size()));
    seen.address = network.found ? network.address : device.deviceInfo.special.gige.hostIp;
    seen.mask = network.found ? network.mask : 0;
    seen.card = host.cardOf(seen.hardwareAddress, seen.address);
    seen.name = seen.card ? seen.card->name : deviceText(network.name);
    if (!seen.card)
        return seen;
    if (seen.hardwareAddress.isEmpty())
        seen.hardwareAddress = seen.card->hardwareAddress;
    for (const HostAddress &own : seen.card->addresses) {
        if (own.address == seen.address && seen.mask == 0)
            seen.mask = own.mask;
    }
    return seen;
}

QString subnetObstacle(const KELA_GIGE_DEVICE_INFO &camera, const SeeingCard &seen)
{
    const QString own = ipv4::textWithMask(camera.currentIp, camera.subnetMask);
    const QString card = ipv4::textWithMask(seen.address, seen.mask);
    if (camera.currentIp == 0) {
        return GigE::tr("The camera has no address yet. A camera that was just switched on asks for one "
                        "for some seconds.");
    }
    if (seen.address == 0) {
        return GigE::tr("The camera has the address %1, and no network card of this computer fits it.")
            .arg(own);
    }
    if (ipv4::isSameSubnet(camera.currentIp, seen.address, seen.mask)) {
        return GigE::tr("The card \"%1\" (%2) could reach the camera, but by its own mask the camera (%3) does "
                        "not find this computer.")
            .arg(seen.name, card, own);
    }
    if (ipv4::isSameSubnet(camera.currentIp, seen.address, camera.subnetMask)) {
        return GigE::tr(
                   "By its own mask the camera (%3) would find this computer, but the card \"%1\" (%2) does "
                   "not count it to its subnet.")
            .arg(seen.name, card, own);
    }
    return GigE::tr("The card \"%1\" sees the camera, but they are not in one subnet: the card has the address "
                    "%2, the camera %3.")
        .arg(seen.name, card, own);
}

QString filterObstacle(const KELA_GIGE_DEVICE_INFO &camera, const SeeingCard &seen, const HostFacts &host)
{
    if (!seen.card || camera.currentIp == 0 || !host.dropsPacketsFrom(camera.currentIp, *seen.card))
        return {};
    if (seen.card->reversePathFilter == ReversePathFilter::Strict) {
        return GigE::tr(
                   "Besides, this computer's reverse-path filter is strict on that card (rp_filter 1): what "
                   "the camera sends is thrown away, because this computer would not answer %1 through "
                   "\"%2\".")
            .arg(ipv4::text(camera.currentIp), seen.name);
    }
    return GigE::tr(
               "Besides, this computer's reverse-path filter (rp_filter 2) throws away what the camera sends, "
               "because no route leads to %1.")
        .arg(ipv4::text(camera.currentIp));
}

QString ipConfiguration(uint32_t bits)
{
    QStringList ways;
    if (bits & 1U)
        ways << GigE::tr("persistent address");
    if (bits & 2U)
        ways << GigE::tr("DHCP");
    if (bits & 4U)
        ways << GigE::tr("link-local address");
    return ways.join(QStringLiteral(", "));
}

FactGroup cameraNetwork(const KELA_GIGE_DEVICE_INFO &camera)
{
    FactGroup group{GigE::tr("Camera's network"), {}};
    group.add(GigE::tr("Address"), ipv4::text(camera.currentIp));
    group.add(GigE::tr("Mask"), ipv4::text(camera.subnetMask));
    group.add(GigE::tr("Gateway"), ipv4::text(camera.gateway));
    group.add(GigE::tr("Hardware address"), ipv4::macText(camera.macHigh, camera.macLow));
    group.add(GigE::tr("Address comes from"), ipConfiguration(camera.ipConfigCurrent));
    group.add(GigE::tr("Could come from"), ipConfiguration(camera.ipConfigOptions));
    return group;
}

FactGroup cardNetwork(const KELA_DEVICE_NETWORK &network, const SeeingCard &seen)
{
    FactGroup group{GigE::tr("Seen by the card"), {}};
    group.add(GigE::tr("Card"), seen.name);
    group.add(GigE::tr("Address"), ipv4::text(seen.address));
    group.add(GigE::tr("Mask"), ipv4::text(seen.mask));
    if (network.gateway != kNoGateway)
        group.add(GigE::tr("Gateway"), ipv4::text(network.gateway));
    group.add(GigE::tr("Hardware address"), seen.hardwareAddress);
    if (seen.card) {
        if (seen.card->mtu > 0)
            group.add(GigE::tr("Largest packet"), GigE::tr("%1 bytes").arg(seen.card->mtu));
        group.add(GigE::tr("Reverse-path filter"), reversePathFilterText(seen.card->reversePathFilter));
    }
    return group;
}

FactGroup stream(const KELA_GIGE_DEVICE_INFO &camera)
{
    FactGroup group{GigE::tr("Use"), {}};
    group.add(GigE::tr("Held by"), ipv4::text(camera.primaryApplicationIp));
    if (camera.streamHostPort != 0) {
        group.add(GigE::tr("Images go to"), QStringLiteral("%1:%2")
                                                .arg(ipv4::text(camera.streamDestination))
                                                .arg(camera.streamHostPort & 0xFFFFU));
    }
    return group;
}

} // namespace

QStringList gigeObstacles(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host)
{
    const KELA_GIGE_DEVICE_INFO &camera = device.deviceInfo.special.gige;
    const SeeingCard seen = seeingCard(device, host);
    QStringList paragraphs{subnetObstacle(camera, seen)};
    if (ipv4::isLinkLocal(camera.currentIp)) {
        paragraphs << GigE::tr(
                          "%1 is an address that a camera gives itself when it gets none from the network.")
                          .arg(ipv4::text(camera.currentIp));
    }
    const QString filter = filterObstacle(camera, seen, host);
    if (!filter.isEmpty())
        paragraphs << filter;
    if (seen.address != 0) {
        paragraphs << GigE::tr("What helps: assign the camera a temporary address in the card's subnet (menu "
                               "\"Camera\"), or give the card an address in the camera's.");
    }
    return paragraphs;
}

QStringList gigeHolder(const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host)
{
    const KELA_GIGE_DEVICE_INFO &camera = device.deviceInfo.special.gige;
    const QString holder = ipv4::text(camera.primaryApplicationIp);
    QStringList paragraphs;
    if (holder.isEmpty()) {
        paragraphs << GigE::tr("Another program holds this camera. The camera does not tell which.");
    } else if (host.isOwnAddress(camera.primaryApplicationIp)) {
        paragraphs << GigE::tr("A program on this computer (%1) holds this camera.").arg(holder);
    } else {
        paragraphs << GigE::tr("A program on the computer %1 holds this camera.").arg(holder);
    }
    if (device.deviceState == KELA_DEV_STATE_GIGE_MULTICAST) {
        paragraphs << GigE::tr(
                          "It sends the images to the group %1, where others may watch. Connecting opens the "
                          "camera for reading only and disturbs nobody.")
                          .arg(ipv4::text(camera.streamDestination));
    } else {
        paragraphs << GigE::tr(
            "It can be connected as soon as that program gives it back, or some seconds after "
            "that program has died.");
    }
    return paragraphs;
}

void addGigEFacts(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device, const HostFacts &host)
{
    const KELA_GIGE_DEVICE_INFO &camera = device.deviceInfo.special.gige;
    explanation.add(cameraNetwork(camera));
    explanation.add(cardNetwork(device.network, seeingCard(device, host)));
    explanation.add(stream(camera));
}

QString reversePathFilterText(ReversePathFilter filter)
{
    switch (filter) {
    case ReversePathFilter::Off:
        return GigE::tr("off");
    case ReversePathFilter::Strict:
        return GigE::tr("strict (rp_filter 1)");
    case ReversePathFilter::Loose:
        return GigE::tr("loose (rp_filter 2)");
    case ReversePathFilter::Unknown:
        break;
    }
    return {};
}

} // namespace browser
