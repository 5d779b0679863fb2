// SPDX-License-Identifier: Apache-2.0
#include "UsbExplanation.h"

#include "DeviceText.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace browser
{

namespace
{

struct Usb {
    Q_DECLARE_TR_FUNCTIONS(UsbExplanation)
};

constexpr uint32_t kSuperSpeedBits = 0x18; ///< super and super-plus in the descriptor's speed bits
constexpr uint32_t kSlowestSuperSpeed = 5000;
/// The slowest link that the standard works over.
constexpr uint32_t kHighSpeed = 480;

QString hex4(uint value)
{
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0'));
}

QString udevRule(const KELA_USB_DEVICE_INFO &camera)
{
    return QStringLiteral("SUBSYSTEM==\"usb\", ATTR{idVendor}==\"%1\", MODE=\"0666\"")
        .arg(hex4(camera.vendorId));
}

QString usbVersionText(uint32_t version)
{
    if (version == 0)
        return {};
    return QStringLiteral("%1.%2").arg(version >> 8, 0, 16).arg((version >> 4) & 0xFU, 0, 16);
}

QString protocolVersionText(uint32_t version)
{
    if (version == 0)
        return {};
    return QStringLiteral("%1.%2").arg(version >> 16).arg(version & 0xFFFFU);
}

QString portText(const uint8_t (&locator)[4])
{
    if (locator[0] == 0)
        return {};
    QString text = Usb::tr("bus %1").arg(locator[0]);
    for (int i = 1; i < 4 && locator[i] != 0; ++i)
        text += (i == 1 ? Usb::tr(", port %1").arg(locator[i]) : QStringLiteral(".%1").arg(locator[i]));
    return text;
}

} // namespace

QStringList usbObstacles(const KELA_USB_DEVICE_INFO &camera, const DeviceNode &node)
{
    if (!node.path.isEmpty() && !node.exists) {
        return {Usb::tr("The camera is plugged in, but its device file %1 does not exist. In a container the "
                        "folder /dev/bus/usb has to be passed through.")
                    .arg(node.path)};
    }
    if (!node.path.isEmpty() && !node.isWritable) {
        return {
            Usb::tr("The camera is plugged in, but you have no permission to open it: %1 may not be written "
                    "by you.")
                .arg(node.path),
            Usb::tr("What helps: a rule for udev in /etc/udev/rules.d/70-cameras.rules, then plug the camera "
                    "in again:"),
            udevRule(camera)};
    }
    if (camera.linkSpeed != 0 && camera.linkSpeed < kHighSpeed) {
        return {Usb::tr("The camera is plugged in, but its link runs at %1 Mbit/s, which is too slow for USB3 "
                        "Vision. What helps: another port, cable or hub.")
                    .arg(camera.linkSpeed)};
    }
    return {Usb::tr("The camera is plugged in, but it cannot be used: another driver may have taken it, or it "
                    "reports itself as not ready.")};
}

QString usbSpeedHint(const KELA_USB_DEVICE_INFO &camera)
{
    if (camera.linkSpeed == 0 || camera.linkSpeed >= kSlowestSuperSpeed ||
        (camera.speedSupport & kSuperSpeedBits) == 0)
        return {};
    return Usb::tr("The camera could transfer %1 Mbit/s and more, but runs at %2: the port, a hub or the cable "
                   "is not for USB 3.")
        .arg(kSlowestSuperSpeed)
        .arg(camera.linkSpeed);
}

void addUsbFacts(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device, const DeviceNode &node)
{
    const KELA_USB_DEVICE_INFO &camera = device.deviceInfo.special.usb;
    FactGroup group{Usb::tr("Connection"), {}};
    group.add(Usb::tr("Controller"), deviceText(device.usbController.name));
    group.add(Usb::tr("Place"), portText(camera.portLocator));
    group.add(Usb::tr("Device file"), node.path);
    if (camera.linkSpeed != 0)
        group.add(Usb::tr("Speed"), Usb::tr("%1 Mbit/s").arg(camera.linkSpeed));
    group.add(Usb::tr("USB version"), usbVersionText(camera.usbVersion));
    if (camera.vendorId != 0) {
        group.add(Usb::tr("Vendor and product"),
                  QStringLiteral("%1:%2").arg(hex4(camera.vendorId), hex4(camera.productId)));
    }
    group.add(Usb::tr("USB3 Vision"), protocolVersionText(camera.u3vVersion));
    group.add(Usb::tr("GenCP"), protocolVersionText(camera.genCpVersion));
    group.add(Usb::tr("Device GUID"), deviceText(camera.deviceGuid));
    explanation.add(group);
}

DeviceNode readDeviceNode(const KELA_DEVICE_INFO_EX &device)
{
    const KELA_USB_DEVICE_INFO &camera = device.special.usb;
    if (device.transport != KELA_INTERFACE_TYPE_USB || camera.busNumber == 0)
        return {};
    const QString path = QStringLiteral("/dev/bus/usb/%1/%2")
                             .arg(camera.busNumber, 3, 10, QLatin1Char('0'))
                             .arg(camera.deviceNumber, 3, 10, QLatin1Char('0'));
    const QFileInfo node(path);
    return {path, node.exists(), node.isWritable()};
}

} // namespace browser
