// SPDX-License-Identifier: Apache-2.0
#include "CameraSockets.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstring>
#include <utility>

namespace kelsim
{

Descriptor::~Descriptor()
{
    if (m_number >= 0) {
        close(m_number);
    }
}

Descriptor::Descriptor(Descriptor &&other) noexcept
    : m_number(std::exchange(other.m_number, -1))
{
}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

static sockaddr_in socketAddress(const Endpoint &endpoint)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(endpoint.address);
    address.sin_port = htons(endpoint.port);
    return address;
}

Descriptor openCameraSocket(uint32_t address, uint16_t port)
{
    Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const int on = 1;
    const int receiveBuffer = 1 << 20;
    // Other simulators may play further cameras on the same card.
    setsockopt(socket.number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    setsockopt(socket.number(), SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    setsockopt(socket.number(), SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    setsockopt(socket.number(), IPPROTO_IP, IP_PKTINFO, &on, sizeof on);
    const sockaddr_in local = socketAddress({address, port});
    if (bind(socket.number(), reinterpret_cast<const sockaddr *>(&local), sizeof local) != 0) {
        return Descriptor();
    }
    return socket;
}

static void readArrivalInfo(msghdr &message, Arrival &arrival)
{
    for (cmsghdr *entry = CMSG_FIRSTHDR(&message); entry != nullptr; entry = CMSG_NXTHDR(&message, entry)) {
        if (entry->cmsg_level == IPPROTO_IP && entry->cmsg_type == IP_PKTINFO) {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(entry), sizeof info);
            arrival.destination = ntohl(info.ipi_addr.s_addr);
            arrival.card = static_cast<unsigned int>(info.ipi_ifindex);
        }
    }
}

bool receiveArrival(const Descriptor &socket, Arrival &arrival)
{
    sockaddr_in from{};
    iovec part{arrival.bytes.data(), arrival.bytes.size()};
    alignas(cmsghdr) std::array<uint8_t, CMSG_SPACE(sizeof(in_pktinfo))> control{};
    msghdr message{};
    message.msg_name = &from;
    message.msg_namelen = sizeof from;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();

    const ssize_t size = recvmsg(socket.number(), &message, 0);
    if (size < 0) {
        return false;
    }
    arrival.size = static_cast<std::size_t>(size);
    arrival.from = {ntohl(from.sin_addr.s_addr), ntohs(from.sin_port)};
    arrival.destination = 0;
    arrival.card = 0;
    readArrivalInfo(message, arrival);
    return true;
}

void sendAnswer(const Descriptor &socket, const Answer &answer, uint32_t source, unsigned int card)
{
    sockaddr_in to = socketAddress(answer.to);
    iovec part{const_cast<uint8_t *>(answer.bytes.data()), answer.bytes.size()};
    alignas(cmsghdr) std::array<uint8_t, CMSG_SPACE(sizeof(in_pktinfo))> control{};
    msghdr message{};
    message.msg_name = &to;
    message.msg_namelen = sizeof to;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();

    cmsghdr *const entry = CMSG_FIRSTHDR(&message);
    entry->cmsg_level = IPPROTO_IP;
    entry->cmsg_type = IP_PKTINFO;
    entry->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
    in_pktinfo info{};
    info.ipi_ifindex = static_cast<int>(card);
    info.ipi_spec_dst.s_addr = htonl(source);
    std::memcpy(CMSG_DATA(entry), &info, sizeof info);
    sendmsg(socket.number(), &message, MSG_NOSIGNAL);
}

} // namespace kelsim
