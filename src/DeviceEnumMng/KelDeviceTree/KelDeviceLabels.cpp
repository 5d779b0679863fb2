// SPDX-License-Identifier: Apache-2.0
#include "KelDeviceLabels.h"

#include <CommonTools/KelInterface.h>

#include <algorithm>
#include <cstddef>

namespace
{

template <std::size_t Size>
const unsigned char *bytesOf(const char (&field)[Size])
{
    return reinterpret_cast<const unsigned char *>(field);
}

// In the encoding that the user chose.
template <std::size_t Size>
QString encoded(const char (&field)[Size], int length = static_cast<int>(Size))
{
    return KelInterface::GetEncodeQStringFromUnChar(bytesOf(field), std::min(length, static_cast<int>(Size)));
}

// Keys and port names are taken as they stand.
template <std::size_t Size>
QString plain(const char (&field)[Size])
{
    const std::string_view text = fixedText(field);
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

template <std::size_t Size>
QString local(const char (&field)[Size])
{
    return KelInterface::char2QStringLocale(field, static_cast<int>(Size));
}

} // namespace

namespace KelDeviceLabels
{

QString camera(const QString &userName, const QString &model, const QString &serial)
{
    return QStringLiteral("%1 (%2)").arg(userName.isEmpty() ? model : userName, serial);
}

QString cameraLinkCamera(const QString &port, const QString &model, const QString &serial)
{
    return QStringLiteral("%1 %2 (%3)").arg(port, model, serial);
}

QString gigeCamera(const KELA_DEVICE_INFO_EX &info, int nameLength)
{
    return camera(encoded(info.special.gige.userDefinedName, nameLength), encoded(info.modelName),
                  encoded(info.serialNumber));
}

QString usbCamera(const KELA_DEVICE_INFO_EX &info)
{
    return camera(usbUserName(info), encoded(info.modelName), encoded(info.serialNumber));
}

QString cameraLinkCamera(const KELA_DEVICE_INFO_EX &info)
{
    return cameraLinkCamera(plain(info.special.cameraLink.portName), encoded(info.modelName),
                            encoded(info.serialNumber));
}

QString genTLDevice(const KELA_DEVICE_INFO_EX &info)
{
    return camera(encoded(info.special.genTL.userDefinedName), encoded(info.modelName),
                  encoded(info.serialNumber));
}

QString gigeUserName(const KELA_DEVICE_INFO_EX &info)
{
    return encoded(info.special.gige.userDefinedName);
}

QString usbUserName(const KELA_DEVICE_INFO_EX &info)
{
    return encoded(info.special.usb.userDefinedName);
}

QString serial(const KELA_STRUCT_DEVICE_INFO &info)
{
    switch (info.deviceInfo.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_USB:
    case KELA_INTERFACE_TYPE_CAMERALINK:
    case KELA_INTERFACE_TYPE_GENTL:
        return KelInterface::uchar2QStringLocale(bytesOf(info.deviceInfo.serialNumber),
                                                 sizeof info.deviceInfo.serialNumber);
    default:
        return QString();
    }
}

QString network(const KELA_NETWORK &card)
{
    return local(card.name);
}

QString controller(const KELA_USBCONTROLLER_INFO &controller)
{
    return local(controller.name);
}

QString interfaceName(const KELA_GENTL_IF_INFO &interface)
{
    return KelInterface::GetEncodeQStringFromUnChar(interface.displayName, sizeof interface.displayName);
}

QString interfaceLabel(const KELA_GENTL_IF_INFO &interface)
{
    if (interface.hasBracketText != 0) {
        const QString alternative =
            KelInterface::GetEncodeQStringFromChar(interface.alternativeName, sizeof interface.alternativeName);
        if (!alternative.isEmpty()) {
            return alternative + QStringLiteral(" (%1)").arg(plain(interface.bracketText));
        }
    }
    return interfaceName(interface);
}

QString networkKey(const KELA_NETWORK &card)
{
    return plain(card.hardwareAddress);
}

QString networkKey(const KELA_STRUCT_DEVICE_INFO &info)
{
    return plain(info.network.hardwareAddress);
}

QString controllerKey(const KELA_USBCONTROLLER_INFO &controller)
{
    return plain(controller.identifier);
}

QString interfaceKey(const KELA_GENTL_IF_INFO &interface)
{
    return plain(interface.identifier);
}

} // namespace KelDeviceLabels
