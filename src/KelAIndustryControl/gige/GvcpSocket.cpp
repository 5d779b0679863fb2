// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpSocket.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

namespace kela::gige
{
namespace
{

constexpr int kReceiveBuffer = 1024 * 1024; // the kernel grants what it allows, some 400 KiB by default

sockaddr_in socketAddress(std::uint32_t address, std::uint16_t port)
{
    sockaddr_in result = {};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    result.sin_addr.s_addr = htonl(address);
    return result;
}

bool setOption(int fd, int level, int option, int value)
{
    return ::setsockopt(fd, level, option, &value, sizeof value) == 0;
}

// The storage of one IP_PKTINFO control message.
union PacketInfoStorage {
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(in_pktinfo))];
};

void attachPath(msghdr &message, PacketInfoStorage &storage, const Path &path)
{
    in_pktinfo info = {};
    info.ipi_ifindex = static_cast<int>(path.cardIndex);
    info.ipi_spec_dst.s_addr = htonl(path.source);
    std::memset(&storage, 0, sizeof storage);
    message.msg_control = storage.bytes;
    message.msg_controllen = sizeof storage.bytes;
    cmsghdr *control = CMSG_FIRSTHDR(&message);
    control->cmsg_level = IPPROTO_IP;
    control->cmsg_type = IP_PKTINFO;
    control->cmsg_len = CMSG_LEN(sizeof info);
    std::memcpy(CMSG_DATA(control), &info, sizeof info);
}

std::uint32_t destinationOf(msghdr &message)
{
    for (cmsghdr *control = CMSG_FIRSTHDR(&message); control; control = CMSG_NXTHDR(&message, control)) {
        if (control->cmsg_level != IPPROTO_IP || control->cmsg_type != IP_PKTINFO)
            continue;
        in_pktinfo info;
        std::memcpy(&info, CMSG_DATA(control), sizeof info);
        return ntohl(info.ipi_addr.s_addr);
    }
    return 0;
}

} // namespace

int GvcpSocket::open(const Card *card, std::uint32_t source)
{
    m_fd = UniqueFd(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    m_isTied = false;
    if (!m_fd)
        return errno;
    setOption(fd(), SOL_SOCKET, SO_BROADCAST, 1);
    setOption(fd(), SOL_SOCKET, SO_RCVBUF, kReceiveBuffer);
    setOption(fd(), IPPROTO_IP, IP_PKTINFO, 1);
    if (card && !card->sharesSubnet && !card->isLoopback) {
        m_isTied = ::setsockopt(fd(), SOL_SOCKET, SO_BINDTODEVICE, card->name.c_str(),
                                static_cast<socklen_t>(card->name.size())) == 0;
    }
    const sockaddr_in local = socketAddress(source, 0);
    return ::bind(fd(), reinterpret_cast<const sockaddr *>(&local), sizeof local) == 0 ? 0 : errno;
}

void GvcpSocket::connectTo(std::uint32_t address)
{
    const sockaddr_in peer = socketAddress(address, kGvcpPort);
    if (::connect(fd(), reinterpret_cast<const sockaddr *>(&peer), sizeof peer) != 0)
        return; // unreachable by the table; datagrams still name their card
}

int GvcpSocket::send(std::uint32_t address, const Path &path, ByteView datagram) const
{
    sockaddr_in peer = socketAddress(address, kGvcpPort);
    iovec content{const_cast<std::uint8_t *>(datagram.data), datagram.size};
    PacketInfoStorage storage;
    msghdr message = {};
    message.msg_name = &peer;
    message.msg_namelen = sizeof peer;
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    if (path.cardIndex != 0 || path.source != 0)
        attachPath(message, storage, path);
    return ::sendmsg(fd(), &message, MSG_NOSIGNAL) >= 0 ? 0 : errno;
}

int GvcpSocket::receive(Arrival &arrival) const
{
    sockaddr_in peer = {};
    iovec content{arrival.buffer.data(), arrival.buffer.size()};
    PacketInfoStorage storage;
    msghdr message = {};
    message.msg_name = &peer;
    message.msg_namelen = sizeof peer;
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = storage.bytes;
    message.msg_controllen = sizeof storage.bytes;
    const ssize_t received = ::recvmsg(fd(), &message, 0);
    if (received < 0)
        return errno;
    arrival.bytes = {arrival.buffer.data(), static_cast<std::size_t>(received)};
    arrival.sender = ntohl(peer.sin_addr.s_addr);
    arrival.senderPort = ntohs(peer.sin_port);
    arrival.destination = destinationOf(message);
    return 0;
}

std::uint32_t GvcpSocket::localAddress() const
{
    sockaddr_in local = {};
    socklen_t length = sizeof local;
    if (::getsockname(fd(), reinterpret_cast<sockaddr *>(&local), &length) != 0)
        return 0;
    return ntohl(local.sin_addr.s_addr);
}

CameraRoute routeTo(const Cards &cards, const CameraPlace &place)
{
    CameraRoute route;
    route.address = place.address;
    if (isOwnAddress(cards, place.address))
        return route;
    const Card *seenBy = findCard(cards, place.cardIndex);
    if (place.hostAddress != 0 && (!seenBy || !seenBy->owns(place.hostAddress)))
        seenBy = findCardByAddress(cards, place.hostAddress);
    if (seenBy && place.hostAddress != 0) {
        route.card = seenBy;
        route.path = {seenBy->index, place.hostAddress};
        return route;
    }
    for (const Card &card : cards) {
        const CardAddress *fitting = fittingAddress(card, place.address, place.mask);
        if (!fitting)
            continue;
        route.card = &card;
        route.path = {card.index, fitting->address};
        return route;
    }
    return route;
}

std::string dotted(std::uint32_t address)
{
    const in_addr raw{htonl(address)};
    char text[INET_ADDRSTRLEN] = "";
    ::inet_ntop(AF_INET, &raw, text, sizeof text);
    return text;
}

} // namespace kela::gige
