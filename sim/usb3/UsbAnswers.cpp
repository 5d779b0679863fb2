// SPDX-License-Identifier: Apache-2.0
#include "UsbAnswers.h"

#include <sys/ioctl.h>

#include <linux/usbdevice_fs.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <set>

namespace kelsim
{
namespace
{

constexpr std::uint8_t kGetDescriptor = 6;
constexpr std::uint8_t kDeviceToHost = 0x80;
constexpr std::uint8_t kStringDescriptor = 3;
constexpr std::size_t kSetupSize = 8;
constexpr int kNever = -EINPROGRESS;

using Bytes = std::vector<std::uint8_t>;

/// ASCII texts as a string descriptor; index 0 lists the languages.
Bytes stringDescriptor(const std::map<int, std::string> &strings, int index)
{
    if (index == 0)
        return {4, kStringDescriptor, 0x09, 0x04};
    const auto text = strings.find(index);
    if (text == strings.end())
        return {};
    Bytes bytes = {0, kStringDescriptor};
    for (const char c : text->second) {
        bytes.push_back(static_cast<std::uint8_t>(c));
        bytes.push_back(0);
    }
    bytes[0] = static_cast<std::uint8_t>(bytes.size());
    return bytes;
}

usbdevfs_urb urbOf(const UMockdevIoctlData *data)
{
    usbdevfs_urb urb;
    std::memcpy(&urb, data->data, sizeof(urb));
    return urb;
}

void writeUrb(UMockdevIoctlData *data, usbdevfs_urb urb)
{
    umockdev_ioctl_data_update(data, 0, static_cast<guint8 *>(static_cast<void *>(&urb)), sizeof(urb));
}

} // namespace

struct UsbAnswers::State {
    UsbDevice device;
    std::map<int, std::string> strings;
    UMockdevIoctlBase *handler = nullptr;
    UMockdevTestbed *testbed = nullptr;
    int requests = 0;    // for strings
    std::set<int> asked; // strings that were asked for where each fails at first
    std::mutex mutex;    // guards the rest
    std::deque<UMockdevIoctlData *> done;
    std::deque<UMockdevIoctlData *> pending; // those that never come

    static gboolean onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, gpointer user)
    {
        return static_cast<State *>(user)->answer(client);
    }

    gboolean answer(UMockdevIoctlClient *client)
    {
        switch (umockdev_ioctl_client_get_request(client)) {
        case USBDEVFS_GET_CAPABILITIES:
            return capabilities(client);
        case USBDEVFS_CLAIMINTERFACE: {
            const bool isFree = !device.has("claimed") || device.text("claimed") == "unguarded";
            umockdev_ioctl_client_complete(client, isFree ? 0 : -1, isFree ? 0 : EBUSY);
            return TRUE;
        }
        case USBDEVFS_RELEASEINTERFACE:
        case USBDEVFS_CLEAR_HALT:
        case USBDEVFS_RESETEP:
            umockdev_ioctl_client_complete(client, 0, 0);
            return TRUE;
        case USBDEVFS_SUBMITURB:
            return submit(client);
        case USBDEVFS_REAPURB:
        case USBDEVFS_REAPURBNDELAY:
            return reap(client);
        case USBDEVFS_DISCARDURB:
            return discard(client);
        default:
            return FALSE;
        }
    }

    gboolean capabilities(UMockdevIoctlClient *client) const
    {
        UMockdevIoctlData *arg = umockdev_ioctl_client_get_arg(client);
        UMockdevIoctlData *word = umockdev_ioctl_data_resolve(arg, 0, sizeof(guint32), nullptr);
        guint32 bits =
            USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_BULK_CONTINUATION | USBDEVFS_CAP_NO_PACKET_SIZE_LIM;
        umockdev_ioctl_data_update(word, 0, static_cast<guint8 *>(static_cast<void *>(&bits)), sizeof(bits));
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }

    gboolean submit(UMockdevIoctlClient *client)
    {
        UMockdevIoctlData *arg = umockdev_ioctl_client_get_arg(client);
        UMockdevIoctlData *data = umockdev_ioctl_data_resolve(arg, 0, sizeof(usbdevfs_urb), nullptr);
        usbdevfs_urb urb = urbOf(data);
        UMockdevIoctlData *buffer = umockdev_ioctl_data_resolve(data, offsetof(usbdevfs_urb, buffer),
                                                                static_cast<gsize>(urb.buffer_length), nullptr);
        urb.status = -EPIPE; // what is not known stalls, as on a device
        urb.actual_length = 0;
        if (buffer && urb.type == USBDEVFS_URB_TYPE_CONTROL &&
            urb.buffer_length >= static_cast<int>(kSetupSize))
            control(urb, buffer);
        writeUrb(data, urb);
        {
            const std::lock_guard lock(mutex);
            (urb.status == kNever ? pending : done).push_back(data);
        }
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }

    bool isIndexOf(const char *word, int index) const
    {
        return device.has(word) && device.text(word) == std::to_string(index);
    }

    /// A request for a string descriptor; true when it went wrong as the scene wants it.
    bool failsAsWanted(usbdevfs_urb &urb, int index)
    {
        if (device.has("pulled")) {
            umockdev_testbed_remove_device(testbed, device.folder().c_str());
            urb.status = -ENODEV;
        } else if (isIndexOf("stuck", index) || ++requests <= std::atoi(device.text("booting", "0").c_str())) {
            urb.status = kNever;
        } else if (isIndexOf("broken", index) ||
                   (device.text("broken") == "all" && asked.insert(index).second)) {
            urb.status = -EPROTO;
        } else {
            return false;
        }
        return true;
    }

    void control(usbdevfs_urb &urb, UMockdevIoctlData *buffer)
    {
        const guint8 *setup = buffer->data;
        if (setup[0] != kDeviceToHost || setup[1] != kGetDescriptor || setup[3] != kStringDescriptor)
            return;
        if (failsAsWanted(urb, setup[2]))
            return;
        Bytes descriptor = stringDescriptor(strings, setup[2]);
        if (descriptor.empty())
            return;
        const auto room = static_cast<std::size_t>(urb.buffer_length) - kSetupSize;
        descriptor.resize(std::min(descriptor.size(), room));
        umockdev_ioctl_data_update(buffer, kSetupSize, descriptor.data(), static_cast<gint>(descriptor.size()));
        urb.status = 0;
        urb.actual_length = static_cast<int>(descriptor.size());
    }

    /// A transfer that never comes is called back by the client; every other one has ended already.
    gboolean discard(UMockdevIoctlClient *client)
    {
        const std::lock_guard lock(mutex);
        if (pending.empty()) {
            umockdev_ioctl_client_complete(client, -1, EINVAL);
            return TRUE;
        }
        UMockdevIoctlData *data = pending.front();
        pending.pop_front();
        usbdevfs_urb urb = urbOf(data);
        urb.status = -ENOENT;
        writeUrb(data, urb);
        done.push_back(data);
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }

    gboolean reap(UMockdevIoctlClient *client)
    {
        UMockdevIoctlData *urb = nullptr;
        {
            const std::lock_guard lock(mutex);
            if (!done.empty()) {
                urb = done.front();
                done.pop_front();
            }
        }
        if (!urb) {
            umockdev_ioctl_client_complete(client, -1, EAGAIN);
            return TRUE;
        }
        UMockdevIoctlData *arg = umockdev_ioctl_client_get_arg(client);
        UMockdevIoctlData *place = umockdev_ioctl_data_resolve(arg, 0, sizeof(void *), nullptr);
        umockdev_ioctl_data_set_ptr(place, 0, urb);
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }
};

UsbAnswers::UsbAnswers(const UsbDevice &device)
    : m_state(new State)
{
    m_state->device = device;
    m_state->strings = cameraStrings(device);
    m_state->handler = umockdev_ioctl_base_new();
    g_signal_connect(m_state->handler, "handle-ioctl", G_CALLBACK(&State::onIoctl), m_state);
}

UsbAnswers::~UsbAnswers()
{
    g_object_unref(m_state->handler);
    delete m_state;
}

bool UsbAnswers::attachTo(UMockdevTestbed *testbed)
{
    m_state->testbed = testbed;
    return umockdev_testbed_attach_ioctl(testbed, m_state->device.node().c_str(), m_state->handler, nullptr) !=
           FALSE;
}

} // namespace kelsim
