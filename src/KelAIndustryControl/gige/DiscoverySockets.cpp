// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/DiscoverySockets.h>

#include <KelAIndustryControl/core/Log.h>

#include <netinet/in.h>
#include <poll.h>

#include <cerrno>
#include <system_error>
#include <vector>

namespace kela::gige
{
namespace
{

constexpr std::uint32_t kLimitedBroadcast = INADDR_BROADCAST;

std::string errorText(int error)
{
    return std::generic_category().message(error);
}

bool isOutOfSockets(int error)
{
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == ENOBUFS;
}

// A full send buffer is no fault of the card, and the burst is repeated.
bool isPassing(int error)
{
    return error == EAGAIN || error == ENOBUFS || error == EINTR;
}

} // namespace

int DiscoverySockets::refresh(const Cards &cards)
{
    m_cards = &cards;
    closeGone(cards);
    if (const int error = openOwn(); error != 0)
        return error;
    for (const Card &card : cards) {
        const int error = card.isLoopback ? 0 : openFor(card);
        if (isOutOfSockets(error))
            return error;
    }
    return 0;
}

int DiscoverySockets::openOwn()
{
    m_own.isBroken = false;
    return m_own.socket.fd() >= 0 ? 0 : m_own.socket.open(nullptr);
}

int DiscoverySockets::openFor(const Card &card)
{
    CardSocket &entry = m_byCard[card.index];
    entry.isBroken = false;
    // Whether a socket is tied to its card depends on the other cards: see GvcpSocket.
    if (entry.socket.fd() >= 0 && entry.sharesSubnet == card.sharesSubnet)
        return 0;
    entry.name = card.name;
    entry.sharesSubnet = card.sharesSubnet;
    GvcpSocket socket;
    const int error = socket.open(&card);
    entry.socket = std::move(socket);
    if (error != 0 && error != entry.lastError)
        logLine(KELA_LOG_WARNING, "gige: no socket for network card " + card.name + ": " + errorText(error));
    entry.lastError = error;
    return error;
}

void DiscoverySockets::closeGone(const Cards &cards)
{
    for (auto entry = m_byCard.begin(); entry != m_byCard.end();) {
        if (findCard(cards, entry->first)) {
            ++entry;
        } else {
            entry = m_byCard.erase(entry);
        }
    }
}

bool DiscoverySockets::broadcast(ByteView datagram)
{
    bool isSent = askOwnAddresses(datagram);
    for (const Card &card : *m_cards) {
        const auto entry = m_byCard.find(card.index);
        if (entry != m_byCard.end() && entry->second.socket.fd() >= 0)
            isSent = broadcastBy(card, entry->second, datagram) || isSent;
    }
    return isSent;
}

bool DiscoverySockets::broadcastBy(const Card &card, CardSocket &entry, ByteView datagram)
{
    int firstError = 0;
    bool isSent = false;
    const auto sendTo = [&](std::uint32_t address, std::uint32_t source) {
        const int error = entry.socket.send(address, {card.index, source}, datagram);
        isSent = isSent || error == 0;
        if (error != 0 && firstError == 0 && !isPassing(error))
            firstError = error;
    };
    for (const CardAddress &from : card.addresses) {
        // Some devices hear only one of the two broadcasts, and some networks have a wrong directed one.
        sendTo(kLimitedBroadcast, from.address);
        if (from.broadcast != 0 && from.broadcast != kLimitedBroadcast)
            sendTo(from.broadcast, from.address);
        if (from.peer != 0)
            sendTo(from.peer, from.address);
    }
    logSendState(card.name, entry, isSent ? 0 : firstError);
    return isSent;
}

// What a camera on this host answers goes over the loopback device, where a socket tied to a card does not
// hear it; and its own addresses are all that it can have.
bool DiscoverySockets::askOwnAddresses(ByteView datagram)
{
    bool isSent = false;
    for (const Card &card : *m_cards) {
        for (const CardAddress &own : card.addresses)
            isSent = m_own.socket.send(own.address, {}, datagram) == 0 || isSent;
        if (card.isLoopback && !card.addresses.empty())
            m_own.socket.send(kLimitedBroadcast, {card.index, card.addresses.front().address}, datagram);
    }
    return isSent;
}

void DiscoverySockets::logSendState(const std::string &name, CardSocket &entry, int error)
{
    if (error != 0 && error != entry.lastError) {
        logLine(KELA_LOG_WARNING, "gige: network card " + name + " cannot be asked: " + errorText(error));
    } else if (error == 0 && entry.lastError != 0) {
        logLine(KELA_LOG_INFO, "gige: network card " + name + " can be asked again");
    }
    entry.lastError = error;
}

bool DiscoverySockets::send(std::uint32_t address, const Path &path, ByteView datagram)
{
    if (path.cardIndex == 0)
        return m_own.socket.send(address, {}, datagram) == 0;
    const auto entry = m_byCard.find(path.cardIndex);
    return entry != m_byCard.end() && entry->second.socket.send(address, path, datagram) == 0;
}

void DiscoverySockets::wait(TimePoint deadline, const CancelSignal &cancel)
{
    std::vector<pollfd> events{{cancel.fd(), POLLIN, 0}, {m_own.isBroken ? -1 : m_own.socket.fd(), POLLIN, 0}};
    for (const auto &[index, entry] : m_byCard)
        events.push_back({entry.isBroken ? -1 : entry.socket.fd(), POLLIN, 0});
    ::poll(events.data(), events.size(), pollTimeout(deadline, Clock::now()));
}

void DiscoverySockets::receive(const Receiver &receiver)
{
    receiveFrom(m_own, nullptr, receiver);
    for (auto &[index, entry] : m_byCard) {
        if (const Card *card = findCard(*m_cards, index))
            receiveFrom(entry, card, receiver);
    }
}

void DiscoverySockets::receiveFrom(CardSocket &entry, const Card *card, const Receiver &receiver)
{
    constexpr int kBatch = 512;
    constexpr int kMostErrors = 8;
    if (entry.socket.fd() < 0 || entry.isBroken)
        return;
    Arrival arrival;
    int errors = 0;
    for (int i = 0; i < kBatch; ++i) {
        const int error = entry.socket.receive(arrival);
        if (error == EAGAIN)
            return;
        if (error == 0) {
            receiver(arrival, card);
        } else if (++errors == kMostErrors) {
            break; // a card that went down reports nothing else
        }
    }
    entry.isBroken = errors == kMostErrors;
}

} // namespace kela::gige
