// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QString>

/// What a row shows and what it is found by: pure functions over records.
namespace KelDeviceLabels
{

/// How much of a GigE device's name is decoded when its row is made. A later update decodes it whole.
constexpr int kGigeNameLengthAtCreation = 16;

/// "name (serial)", with the model in the place of an empty name.
QString camera(const QString &userName, const QString &model, const QString &serial);
/// "port model (serial)".
QString cameraLinkCamera(const QString &port, const QString &model, const QString &serial);

/// Label of a GigE device.
/// @param nameLength  bytes of the user-defined name that are decoded, 64 at most
QString gigeCamera(const KELA_DEVICE_INFO_EX &info, int nameLength);
/// Label of a USB device.
QString usbCamera(const KELA_DEVICE_INFO_EX &info);
/// Label of a Camera Link device.
QString cameraLinkCamera(const KELA_DEVICE_INFO_EX &info);
/// Label of a GenTL device.
QString genTLDevice(const KELA_DEVICE_INFO_EX &info);

/// User-defined name of a GigE device, whole.
QString gigeUserName(const KELA_DEVICE_INFO_EX &info);
/// User-defined name of a USB device.
QString usbUserName(const KELA_DEVICE_INFO_EX &info);

/// Serial number by which devices are kept on top; empty for a transport that is not shown.
QString serial(const KELA_STRUCT_DEVICE_INFO &info);

/// Display name of a network card.
QString network(const KELA_NETWORK &card);
/// Display name of a USB controller.
QString controller(const KELA_USBCONTROLLER_INFO &controller);
/// Display name of a GenTL interface: its tool tip.
QString interfaceName(const KELA_GENTL_IF_INFO &interface);
/// Label of a GenTL interface: the alternative name with a text in brackets where the record has both.
QString interfaceLabel(const KELA_GENTL_IF_INFO &interface);

/// Key of a network card: its hardware address.
QString networkKey(const KELA_NETWORK &card);
/// Key of the network card that a device was seen through.
QString networkKey(const KELA_STRUCT_DEVICE_INFO &info);
/// Key of a USB controller.
QString controllerKey(const KELA_USBCONTROLLER_INFO &controller);
/// Key of a GenTL interface, with its number.
QString interfaceKey(const KELA_GENTL_IF_INFO &interface);

} // namespace KelDeviceLabels
