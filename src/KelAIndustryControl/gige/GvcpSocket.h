// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/ByteView.h>
#include <KelAIndustryControl/core/UniqueFd.h>
#include <KelAIndustryControl/gige/GvcpWire.h>
#include <KelAIndustryControl/gige/NetworkCards.h>

#include <array>
#include <cstdint>
#include <string>

namespace kela::gige
{

/// By which card and from which of its addresses a datagram leaves. Index 0 and address 0 leave it to the
/// routing table.
struct Path {
    unsigned int cardIndex = 0;
    std::uint32_t source = 0;
};

/// A datagram that arrived.
struct Arrival {
    std::array<std::uint8_t, kLargestDatagram> buffer;
    ByteView bytes; ///< in buffer
    std::uint32_t sender = 0;
    std::uint16_t senderPort = 0;
    std::uint32_t destination = 0; ///< the address it was sent to: ours, or a broadcast
};

/// A UDP socket for GVCP, non-blocking.
///
/// It is tied to a card where the system permits (kernels before 5.7 ask for a privilege), else each
/// datagram names its card. Cards that share a subnet are never tied: with two cards on one wire the
/// answer may come in by the other card.
class GvcpSocket
{
public:
    /// @param card    null for a socket that belongs to no card
    /// @param source  address to send from; 0 leaves it open and lets broadcast answers in
    /// @return 0 or an errno
    int open(const Card *card, std::uint32_t source = 0);

    /// Answers from anybody but this device no longer arrive, and its host tells when nobody listens.
    /// Where the routing table knows no way the socket stays as it is.
    void connectTo(std::uint32_t address);

    /// @return 0 or an errno
    int send(std::uint32_t address, const Path &path, ByteView datagram) const;

    /// @return 0, EAGAIN when nothing has arrived, or another errno
    int receive(Arrival &arrival) const;

    /// Where the system would send from; 0 when it does not tell. Meaningful after connectTo().
    std::uint32_t localAddress() const;

    int fd() const { return m_fd.get(); }
    bool isTied() const { return m_isTied; }

private:
    UniqueFd m_fd;
    bool m_isTied = false;
};

/// Where commands for one camera go, so that they leave by the card that saw it.
struct CameraRoute {
    std::uint32_t address = 0;
    Path path;
    const Card *card = nullptr; ///< borrowed from the cards it was made with
};

/// What is known of a camera's place.
struct CameraPlace {
    std::uint32_t address = 0;
    std::uint32_t mask = 0;
    std::uint32_t hostAddress = 0; ///< address of the card that saw it, 0 = not known
    unsigned int cardIndex = 0; ///< of that card; tells apart cards that have the same address. 0 = not known
};

/// By the card that saw the camera, else by the one whose subnet holds it, else by the routing table.
/// A camera on this host itself is left to the routing table. The result points into @p cards.
CameraRoute routeTo(const Cards &cards, const CameraPlace &place);

/// "192.168.1.2"
std::string dotted(std::uint32_t address);

} // namespace kela::gige
