// SPDX-License-Identifier: Apache-2.0
#include "HotplugMonitor.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <libudev.h>
#include <linux/if.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace browser
{

namespace
{

/// A hub that is plugged in, or a card that gets its address, tells of it in many small steps.
constexpr int kBurstMs = 150;
constexpr unsigned int kLinkFlags = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;

void unrefMonitor(udev_monitor *monitor)
{
    if (monitor)
        udev_monitor_unref(monitor);
}

/// The kernel's own words only: other programs may send to the same socket.
ssize_t receiveFromKernel(int socket, void *buffer, size_t size)
{
    sockaddr_nl sender = {};
    socklen_t length = sizeof sender;
    const ssize_t got =
        recvfrom(socket, buffer, size, MSG_DONTWAIT, reinterpret_cast<sockaddr *>(&sender), &length);
    return got > 0 && sender.nl_pid != 0 ? 0 : got;
}

} // namespace

HotplugMonitor::HotplugMonitor(QObject *parent)
    : QObject(parent)
    , m_udev(nullptr, unrefMonitor)
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(kBurstMs);
    connect(&m_burst, &QTimer::timeout, this, [this] { Q_EMIT changed(std::exchange(m_gathered, 0U)); });
    listenToUdev();
    listenToKernel();
}

HotplugMonitor::~HotplugMonitor()
{
    if (m_kernel >= 0)
        ::close(m_kernel);
}

void HotplugMonitor::listenToUdev()
{
    const std::unique_ptr<udev, udev *(*)(udev *)> library(udev_new(), udev_unref);
    if (!library)
        return;
    // The events of udev, not those of the kernel: a device's permissions are set by then.
    m_udev.reset(udev_monitor_new_from_netlink(library.get(), "udev"));
    if (!m_udev || udev_monitor_filter_add_match_subsystem_devtype(m_udev.get(), "usb", "usb_device") < 0 ||
        udev_monitor_enable_receiving(m_udev.get()) < 0)
        return;
    auto *news = new QSocketNotifier(udev_monitor_get_fd(m_udev.get()), QSocketNotifier::Read, this);
    connect(news, &QSocketNotifier::activated, this, &HotplugMonitor::readUdev);
}

void HotplugMonitor::listenToKernel()
{
    m_kernel = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR;
    if (m_kernel < 0 || bind(m_kernel, reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0)
        return;
    auto *news = new QSocketNotifier(m_kernel, QSocketNotifier::Read, this);
    connect(news, &QSocketNotifier::activated, this, &HotplugMonitor::readKernel);
}

void HotplugMonitor::readUdev()
{
    using Device = std::unique_ptr<udev_device, udev_device *(*)(udev_device *)>;
    while (const Device device{udev_monitor_receive_device(m_udev.get()), udev_device_unref}) {
        const char *action = udev_device_get_action(device.get());
        // A driver that binds or lets go changes nothing in what can be reached, and a probe does that itself.
        if (action && std::strcmp(action, "bind") != 0 && std::strcmp(action, "unbind") != 0)
            gather(KELA_INTERFACE_TYPE_USB);
    }
}

void HotplugMonitor::readKernel()
{
    std::array<char, 16384> buffer;
    ssize_t got = 0;
    while ((got = receiveFromKernel(m_kernel, buffer.data(), buffer.size())) >= 0) {
        if (bringsNews(buffer.data(), static_cast<size_t>(got)))
            gather(KELA_INTERFACE_TYPE_GIGE);
    }
    // More came than the socket holds: something changed, whatever it was.
    if (errno == ENOBUFS)
        gather(KELA_INTERFACE_TYPE_GIGE);
}

bool HotplugMonitor::bringsNews(const char *messages, size_t length)
{
    bool isNew = false;
    nlmsghdr header = {};
    while (length >= sizeof header) {
        std::memcpy(&header, messages, sizeof header);
        if (header.nlmsg_len < sizeof header || header.nlmsg_len > length)
            break;
        if (header.nlmsg_type == RTM_NEWLINK || header.nlmsg_type == RTM_DELLINK) {
            isNew |= isLinkNews(header, messages + NLMSG_HDRLEN);
        } else {
            isNew |= header.nlmsg_type == RTM_NEWADDR || header.nlmsg_type == RTM_DELADDR;
        }
        const size_t step = std::min<size_t>(NLMSG_ALIGN(header.nlmsg_len), length);
        messages += step;
        length -= step;
    }
    return isNew;
}

bool HotplugMonitor::isLinkNews(const nlmsghdr &header, const char *payload)
{
    ifinfomsg link = {};
    if (header.nlmsg_len < sizeof header + sizeof link)
        return false;
    std::memcpy(&link, payload, sizeof link);
    if (header.nlmsg_type == RTM_DELLINK) {
        m_links.erase(link.ifi_index);
        return true;
    }
    // Wireless cards tell of every scan; what matters is whether the link carries.
    const unsigned int flags = link.ifi_flags & kLinkFlags;
    const auto [known, isFirst] = m_links.try_emplace(link.ifi_index, flags);
    return std::exchange(known->second, flags) != flags || isFirst;
}

void HotplugMonitor::gather(uint transports)
{
    m_gathered |= transports;
    // Not started anew: a card that never comes to rest is told of all the same.
    if (!m_burst.isActive())
        m_burst.start();
}

} // namespace browser
