// SPDX-License-Identifier: Apache-2.0
#include "SmallCamera.h"

#include <KelAIndustryControl/gige/GvcpSocket.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

using namespace kela;
using namespace kela::gige;

namespace kelatest
{
namespace
{

constexpr std::uint32_t kPrivilege = 0x0A00;

sockaddr_in endpoint(std::uint32_t address, std::uint16_t port)
{
    sockaddr_in result = {};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    result.sin_addr.s_addr = htonl(address);
    return result;
}

template <std::size_t Size>
void putText(char (&field)[Size], const std::string &text)
{
    text.copy(field, Size);
}

Datagram acknowledge(std::uint16_t status, std::uint16_t code, std::uint16_t id, const void *payload,
                     std::size_t size)
{
    AckHeader header;
    header.status = Be16(status);
    header.acknowledge = Be16(code);
    header.length = Be16(static_cast<std::uint16_t>(size));
    header.requestId = Be16(id);
    Datagram bytes(sizeof header + size);
    std::memcpy(bytes.data(), &header, sizeof header);
    if (size > 0)
        std::memcpy(bytes.data() + sizeof header, payload, size);
    return bytes;
}

DiscoveryPayload imageOf(const SmallCamera &camera)
{
    DiscoveryPayload image = {};
    image.version = Be32(0x00020000);
    image.deviceMode = Be32(camera.deviceMode);
    for (std::size_t i = 0; i < 6; ++i)
        image.hardwareAddress[i] = static_cast<std::uint8_t>(camera.hardwareAddress >> (40 - 8 * i));
    image.ipConfigOptions = Be32(7);
    image.ipConfigCurrent = Be32(5);
    image.currentIp = Be32(camera.address);
    image.subnetMask = Be32(camera.mask);
    putText(image.manufacturerName, camera.vendor);
    putText(image.modelName, camera.model);
    putText(image.deviceVersion, "1.0");
    putText(image.serialNumber, camera.serial);
    putText(image.userDefinedName, camera.userName);
    return image;
}

} // namespace

SmallCamera smallCamera(unsigned int number)
{
    SmallCamera camera;
    camera.hardwareAddress = 0x020000000000 + number;
    camera.address = 0xC0A83200 + number;
    camera.serial = "SN" + std::to_string(number);
    return camera;
}

SmallCameras::SmallCameras(WireNamespace *wire)
    : m_wire(wire)
{
    runThere([this] {
        m_socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        const int yes = 1;
        ::setsockopt(m_socket, SOL_SOCKET, SO_BROADCAST, &yes, sizeof yes);
        ::setsockopt(m_socket, IPPROTO_IP, IP_PKTINFO, &yes, sizeof yes);
        const sockaddr_in any = endpoint(INADDR_ANY, kGvcpPort);
        if (::bind(m_socket, reinterpret_cast<const sockaddr *>(&any), sizeof any) != 0)
            throw std::runtime_error("port 3956 is taken");
        m_thread = std::thread([this] { live(); });
    });
}

void SmallCameras::runThere(const std::function<void()> &function)
{
    if (m_wire) {
        m_wire->run(function);
    } else {
        function();
    }
}

SmallCameras::~SmallCameras()
{
    m_end.set();
    m_thread.join();
    ::close(m_socket);
}

void SmallCameras::add(const SmallCamera &camera, const std::string &card)
{
    const int prefix = __builtin_popcount(camera.mask);
    const std::string address = dotted(camera.address) + "/" + std::to_string(prefix ? prefix : 24);
    runThere([&] { hostShell("ip addr add " + address + " brd + dev " + card); });
    addBeside(camera, card);
}

void SmallCameras::addBeside(const SmallCamera &camera, const std::string &card)
{
    unsigned int index = 0;
    runThere([&] { index = ::if_nametoindex(card.c_str()); });
    const std::lock_guard lock(m_mutex);
    m_cameras.push_back({camera, index, 0, 0});
}

void SmallCameras::edit(const std::string &serial, const std::function<void(SmallCamera &)> &change)
{
    const std::lock_guard lock(m_mutex);
    for (Played &played : m_cameras) {
        if (played.camera.serial == serial)
            change(played.camera);
    }
}

SmallCamera SmallCameras::look(const std::string &serial)
{
    SmallCamera seen;
    edit(serial, [&](SmallCamera &camera) { seen = camera; });
    return seen;
}

bool SmallCameras::waitFor(const std::string &serial, const std::function<bool(const SmallCamera &)> &fact)
{
    const CancelSignal never;
    const TimePoint deadline = Clock::now() + Milliseconds{3000};
    while (!fact(look(serial))) {
        if (Clock::now() > deadline)
            return false;
        never.waitUntil(Clock::now() + Milliseconds{5});
    }
    return true;
}

std::uint16_t SmallCameras::lastClientPort()
{
    const std::lock_guard lock(m_mutex);
    return m_lastClientPort;
}

void SmallCameras::throwAt(const std::string &card, std::uint32_t from, std::uint32_t to, std::uint16_t port,
                           const Datagram &bytes)
{
    runThere([&] { send({{}, bytes, from, kGvcpPort, to, port, ::if_nametoindex(card.c_str())}); });
}

void SmallCameras::live()
{
    Request request;
    while (!m_end.isSet()) {
        pollfd events[] = {{m_socket, POLLIN, 0}, {m_end.fd(), POLLIN, 0}};
        ::poll(events, 2, pollTimeout(nextDue(), Clock::now()));
        while (receive(request))
            handle(request);
        sendDue(Clock::now());
    }
}

bool SmallCameras::receive(Request &request) const
{
    request.bytes.resize(kLargestDatagram);
    sockaddr_in peer = {};
    iovec content{request.bytes.data(), request.bytes.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))];
    msghdr message = {};
    message.msg_name = &peer;
    message.msg_namelen = sizeof peer;
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    const ssize_t size = ::recvmsg(m_socket, &message, 0);
    if (size < static_cast<ssize_t>(sizeof(CommandHeader)))
        return false;
    request.bytes.resize(static_cast<std::size_t>(size));
    request.sender = ntohl(peer.sin_addr.s_addr);
    request.senderPort = ntohs(peer.sin_port);
    in_pktinfo info = {};
    const cmsghdr *head = CMSG_FIRSTHDR(&message);
    if (!head)
        return false;
    std::memcpy(&info, CMSG_DATA(head), sizeof info);
    request.destination = ntohl(info.ipi_addr.s_addr);
    request.cardIndex = static_cast<unsigned int>(info.ipi_ifindex);
    return true;
}

void SmallCameras::handle(const Request &request)
{
    const std::lock_guard lock(m_mutex);
    const bool isDiscovery = commandOf(request.bytes) == kDiscoveryCommand;
    if (isDiscovery)
        m_lastClientPort = request.senderPort;
    const bool isForOne = std::any_of(m_cameras.begin(), m_cameras.end(), [&](const Played &played) {
        return played.camera.address == request.destination;
    });
    for (Played &played : m_cameras) {
        if (!played.camera.isPlugged || (isForOne && played.camera.address != request.destination) ||
            (!isForOne && played.cardIndex != request.cardIndex))
            continue;
        if (commandOf(request.bytes) == kForceIpCommand) {
            moveTo(played.camera, request);
        } else if (isDiscovery) {
            discover(played, request);
        } else if (isForOne) {
            access(played, request);
        }
    }
}

void SmallCameras::discover(Played &played, const Request &request)
{
    SmallCamera &camera = played.camera;
    ++camera.discoveries;
    camera.wasBroadcastAllowed = (request.bytes[1] & kFlagBroadcastAnswer) != 0;
    if (request.destination == camera.address)
        ++camera.unicastDiscoveries;
    if (!camera.answersDiscovery || camera.discoveriesToLose-- > 0)
        return;
    camera.discoveriesToLose = 0;
    const DiscoveryPayload image = imageOf(camera);
    Datagram bytes = acknowledge(0, 0x0003, requestIdOf(request.bytes), &image, sizeof image);
    if (camera.spoil)
        camera.spoil(bytes);
    const std::uint32_t to = camera.answersByBroadcast ? INADDR_BROADCAST : request.sender;
    for (int i = 0; i < camera.copies; ++i) {
        m_outgoing.push_back({Clock::now() + camera.discoveryDelay, bytes, camera.address, camera.sourcePort,
                              to, request.senderPort, request.cardIndex});
    }
}

void SmallCameras::moveTo(SmallCamera &camera, const Request &request)
{
    const auto forced = readLayout<ForceIpPayload>(
        ByteView{request.bytes.data(), request.bytes.size()}.from(sizeof(CommandHeader)));
    const DiscoveryPayload image = imageOf(camera);
    if (forced &&
        std::memcmp(forced->hardwareAddress, image.hardwareAddress, sizeof image.hardwareAddress) == 0)
        camera.address = forced->address.value();
}

void SmallCameras::access(Played &played, const Request &request)
{
    SmallCamera &camera = played.camera;
    const std::uint16_t command = commandOf(request.bytes);
    const std::uint16_t id = requestIdOf(request.bytes);
    const auto payload = ByteView{request.bytes.data(), request.bytes.size()}.from(sizeof(CommandHeader));
    const auto asked = readLayout<ReadRegisterPayload>(payload);
    ++camera.registerReads;
    if (!camera.answersRegisters || !asked)
        return;
    if (camera.registerReadsToLose > 0) {
        --camera.registerReadsToLose;
        return;
    }
    const std::uint32_t address = asked->address.value();
    Datagram answer;
    if (camera.registerStatus != 0) {
        answer = acknowledge(camera.registerStatus, acknowledgeOf(command), id, nullptr, 0);
    } else if (command == kReadRegisterCommand && camera.registers.count(address) != 0) {
        const ReadRegisterAckPayload value{Be32(camera.registers[address])};
        answer = acknowledge(0, acknowledgeOf(command), id, &value, sizeof value);
    } else if (const auto written = readLayout<WriteRegisterPayload>(payload);
               command == kWriteRegisterCommand && written) {
        answer = write(played, request, address, written->value.value());
    } else {
        answer = acknowledge(kStatusInvalidAddress, acknowledgeOf(command), id, nullptr, 0);
    }
    m_outgoing.push_back({Clock::now(), answer, camera.address, kGvcpPort, request.sender, request.senderPort,
                          request.cardIndex});
}

Datagram SmallCameras::write(Played &played, const Request &request, std::uint32_t address, std::uint32_t value)
{
    const std::uint16_t id = requestIdOf(request.bytes);
    const bool isHeld = played.camera.registers[kPrivilege] != 0;
    const bool isController =
        request.sender == played.controller && request.senderPort == played.controllerPort;
    if (isHeld && !isController)
        return acknowledge(kStatusAccessDenied, acknowledgeOf(kWriteRegisterCommand), id, nullptr, 0);
    played.camera.registers[address] = value;
    if (address == kPrivilege) {
        played.camera.writes.push_back(value);
        played.controller = request.sender;
        played.controllerPort = request.senderPort;
    }
    const WriteRegisterPayload done{Be32(1), Be32(0)};
    return acknowledge(0, acknowledgeOf(kWriteRegisterCommand), id, &done, sizeof(Be32));
}

TimePoint SmallCameras::nextDue()
{
    const std::lock_guard lock(m_mutex);
    TimePoint due = Clock::now() + Milliseconds{1000};
    for (const Outgoing &outgoing : m_outgoing)
        due = std::min(due, outgoing.due);
    return due;
}

void SmallCameras::sendDue(TimePoint now)
{
    std::vector<Outgoing> due;
    {
        const std::lock_guard lock(m_mutex);
        const auto later =
            std::stable_partition(m_outgoing.begin(), m_outgoing.end(),
                                  [now](const Outgoing &outgoing) { return outgoing.due <= now; });
        due.assign(m_outgoing.begin(), later);
        m_outgoing.erase(m_outgoing.begin(), later);
    }
    for (const Outgoing &outgoing : due)
        send(outgoing);
}

void SmallCameras::send(const Outgoing &outgoing) const
{
    const bool isFromOtherPort = outgoing.fromPort != kGvcpPort;
    const int other = isFromOtherPort ? ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0) : -1;
    const sockaddr_in source = endpoint(outgoing.from, outgoing.fromPort);
    if (isFromOtherPort) {
        EXPECT_EQ(::bind(other, reinterpret_cast<const sockaddr *>(&source), sizeof source), 0);
    }
    sockaddr_in peer = endpoint(outgoing.to, outgoing.toPort);
    iovec content{const_cast<std::uint8_t *>(outgoing.bytes.data()), outgoing.bytes.size()};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))] = {};
    msghdr message = {};
    message.msg_name = &peer;
    message.msg_namelen = sizeof peer;
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    in_pktinfo info = {};
    info.ipi_ifindex = static_cast<int>(outgoing.cardIndex);
    info.ipi_spec_dst.s_addr = htonl(outgoing.from);
    cmsghdr *head = CMSG_FIRSTHDR(&message);
    head->cmsg_level = IPPROTO_IP;
    head->cmsg_type = IP_PKTINFO;
    head->cmsg_len = CMSG_LEN(sizeof info);
    std::memcpy(CMSG_DATA(head), &info, sizeof info);
    ::sendmsg(isFromOtherPort ? other : m_socket, &message, 0);
    if (isFromOtherPort)
        ::close(other);
}

} // namespace kelatest
