// SPDX-License-Identifier: Apache-2.0
#include "ContainerExplanation.h"

#include "DeviceText.h"
#include "GigEExplanation.h"
#include "Ipv4.h"

#include <QCoreApplication>

#include <algorithm>

namespace browser
{

namespace
{

struct Container {
    Q_DECLARE_TR_FUNCTIONS(ContainerExplanation)
};

constexpr uint32_t kNoGateway = 0xFFFFFFFFU;
constexpr uint32_t kMostAddresses = 256;

QString foreignCameraNote(const HostCard &card)
{
    switch (card.reversePathFilter) {
    case ReversePathFilter::Strict:
        return Container::tr(
                   "Cameras of other subnets stay hidden here: the reverse-path filter of this card is "
                   "strict (rp_filter 1) and throws their answers away. An administrator can relax it: "
                   "set net.ipv4.conf.all.rp_filter and net.ipv4.conf.%1.rp_filter to 0.")
            .arg(card.name);
    case ReversePathFilter::Loose:
        return Container::tr(
            "Cameras of other subnets are seen here only where a route leads to their address, "
            "because the reverse-path filter is on (rp_filter 2).");
    case ReversePathFilter::Off:
    case ReversePathFilter::Unknown:
        break;
    }
    return {};
}

void addAddresses(FactGroup &group, const KELA_NETWORK &card)
{
    const uint32_t count = std::min(card.addressCount, kMostAddresses);
    for (uint32_t i = 0; i < count; ++i) {
        const KELA_NETWORK_ADDRESS &entry = card.addresses[i];
        group.add(Container::tr("Address"), ipv4::textWithMask(entry.address, entry.mask));
        if (entry.gateway != kNoGateway)
            group.add(Container::tr("Gateway"), ipv4::text(entry.gateway));
    }
}

QString groupText(Group group)
{
    switch (group) {
    case Group::All:
        return Container::tr("All devices that this computer can find.");
    case Group::GigE:
        return Container::tr("Cameras on the network, below the network card that sees them.");
    case Group::Usb:
        return Container::tr("Cameras on USB, below their controller where it is known.");
    case Group::CameraLink:
        return Container::tr("Cameras behind the serial ports of frame grabbers.");
    case Group::GenTL:
        return Container::tr(
            "Cameras that producers find for us. Choose the producers with the button beside the "
            "row's refresh button, then open an interface to see its cameras.");
    case Group::Virtual:
        return Container::tr("Cameras that are simulated on this computer.");
    case Group::Other:
        return Container::tr("Devices that speak the cameras' protocol but are of another class.");
    }
    return {};
}

bool isStrictSomewhere(const HostFacts &host)
{
    return std::any_of(host.cards.cbegin(), host.cards.cend(), [](const HostCard &card) {
        return card.isUp && !card.addresses.isEmpty() && card.reversePathFilter == ReversePathFilter::Strict;
    });
}

} // namespace

Explanation explainCard(const KELA_NETWORK &card, const HostFacts &host,
                        const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    const QString hardwareAddress =
        KelInterface::char2QStringLocale(card.hardwareAddress, sizeof(card.hardwareAddress));
    const uint32_t address = card.addressCount > 0 ? card.addresses[0].address : 0;
    const HostCard *own = host.cardOf(hardwareAddress, address);
    Explanation explanation;
    explanation.title = KelInterface::char2QStringLocale(card.name, sizeof(card.name));
    explanation.kind = Container::tr("Network card");
    explanation.state = countText(countOf(devices));
    FactGroup group{Container::tr("Card"), {}};
    if (own)
        group.add(Container::tr("Name"), own->name);
    addAddresses(group, card);
    group.add(Container::tr("Hardware address"), hardwareAddress);
    if (own) {
        if (own->mtu > 0)
            group.add(Container::tr("Largest packet"), Container::tr("%1 bytes").arg(own->mtu));
        group.add(Container::tr("Reverse-path filter"), reversePathFilterText(own->reversePathFilter));
        const QString note = foreignCameraNote(*own);
        if (!note.isEmpty())
            explanation.paragraphs << note;
    }
    explanation.add(group);
    explanation.add(cameraOverview(devices));
    return explanation;
}

Explanation explainController(const KELA_USBCONTROLLER_INFO &controller,
                              const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    Explanation explanation;
    explanation.title = KelInterface::char2QStringLocale(controller.name, sizeof(controller.name));
    explanation.kind = Container::tr("USB controller");
    explanation.state = countText(countOf(devices));
    FactGroup group{Container::tr("Controller"), {}};
    group.add(Container::tr("Identifier"), deviceText(controller.identifier));
    explanation.add(group);
    explanation.add(cameraOverview(devices));
    return explanation;
}

Explanation explainInterface(const KELA_GENTL_IF_INFO &genTLInterface, const InterfaceOrigin &origin,
                             const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    Explanation explanation;
    explanation.title = deviceText(genTLInterface.displayName);
    explanation.kind = Container::tr("Interface of a GenTL producer");
    explanation.standing = origin.isOpen ? Standing::Ours : Standing::Neutral;
    explanation.state = origin.isOpen ? Container::tr("Open") : Container::tr("Closed");
    if (origin.isOpen) {
        explanation.paragraphs << countText(countOf(devices));
    } else {
        explanation.paragraphs << Container::tr("Open it with its button to see its cameras.");
    }
    if (origin.producer.choice == Producer::Choice::VirtualPort)
        explanation.paragraphs << Container::tr("Its producer is opened by virtual port.");
    if (origin.producer.choice == Producer::Choice::Imported)
        explanation.paragraphs << Container::tr("Its producer was imported; the row's menu can remove it.");
    FactGroup group{Container::tr("Interface"), {}};
    group.add(Container::tr("Identifier"), deviceText(genTLInterface.identifier));
    group.add(Container::tr("Other name"), deviceText(genTLInterface.alternativeName));
    group.add(Container::tr("Number"), QString::number(genTLInterface.number));
    explanation.add(group);
    if (!origin.producer.path.isEmpty())
        explanation.add(explainProducer(origin.producer));
    explanation.add(cameraOverview(devices));
    return explanation;
}

Explanation explainProducers(const QString &title, const QVector<Producer> &producers,
                             const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    Explanation explanation = explainGroup(Group::GenTL, title, HostFacts(), devices);
    const QString trouble = producersInTrouble(producers);
    if (!trouble.isEmpty())
        explanation.paragraphs << trouble;
    for (const Producer &producer : producers)
        explanation.add(explainProducer(producer));
    return explanation;
}

Explanation explainGroup(Group group, const QString &title, const HostFacts &host,
                         const QVector<KELA_STRUCT_DEVICE_INFO> &devices)
{
    Explanation explanation;
    explanation.title = title;
    explanation.kind = Container::tr("Group");
    explanation.state = countText(countOf(devices));
    explanation.paragraphs << groupText(group);
    if (group == Group::GigE && isStrictSomewhere(host)) {
        explanation.paragraphs << Container::tr(
            "Some card of this computer has a strict reverse-path filter, so "
            "cameras of other subnets may stay hidden there.");
    }
    explanation.add(cameraOverview(devices));
    return explanation;
}

} // namespace browser
