// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/gige/GvcpSocket.h>
#include <KelAIndustryControl/gige/NetworkCards.h>

#include <functional>
#include <map>

namespace kela::gige
{

/// The sockets of the discovery: one per card, and one for cameras on this host itself. They stay open
/// between passes, so that the kernel keeps what arrives meanwhile.
/// Thread: the one that enumerates.
class DiscoverySockets
{
public:
    /// Null card: heard by the socket for this host's own cameras.
    using Receiver = std::function<void(const Arrival &arrival, const Card *card)>;

    /// Opens what is new and closes what is gone.
    /// @param cards  borrowed until the next call
    /// @return 0, or an errno when the system has no sockets left
    int refresh(const Cards &cards);

    /// To every address that every card can be asked by. False when nothing could be sent.
    bool broadcast(ByteView datagram);

    /// To one address by the card that stands in @p path; index 0 = the socket for this host's own cameras.
    bool send(std::uint32_t address, const Path &path, ByteView datagram);

    /// Waits until something arrives, @p cancel is set or @p deadline has passed.
    void wait(TimePoint deadline, const CancelSignal &cancel);

    /// Gives everything that has arrived to @p receiver, a bounded number per call.
    void receive(const Receiver &receiver);

private:
    struct CardSocket {
        GvcpSocket socket;
        std::string name;
        bool sharesSubnet = false;
        int lastError = 0;
        bool isBroken = false; ///< gives errors only: not waited for until the next refresh
    };

    int openFor(const Card &card);
    int openOwn();
    void closeGone(const Cards &cards);
    bool broadcastBy(const Card &card, CardSocket &entry, ByteView datagram);
    bool askOwnAddresses(ByteView datagram);
    static void receiveFrom(CardSocket &entry, const Card *card, const Receiver &receiver);
    static void logSendState(const std::string &name, CardSocket &entry, int error);

    const Cards *m_cards = nullptr;
    std::map<unsigned int, CardSocket> m_byCard;
    CardSocket m_own;
};

} // namespace kela::gige
