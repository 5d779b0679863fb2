// SPDX-License-Identifier: Apache-2.0
#include "DeviceText.h"

namespace browser
{

QString vendorName(const KELA_DEVICE_INFO_EX &device)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return deviceText(device.special.gige.manufacturerName);
    case KELA_INTERFACE_TYPE_USB:
        return deviceText(device.special.usb.manufacturerName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return deviceText(device.special.cameraLink.manufacturerName);
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return deviceText(device.special.genTL.vendorName);
    default:
        return {};
    }
}

QString userDefinedName(const KELA_DEVICE_INFO_EX &device)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return deviceText(device.special.gige.userDefinedName);
    case KELA_INTERFACE_TYPE_USB:
        return deviceText(device.special.usb.userDefinedName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return deviceText(device.special.cameraLink.userDefinedName);
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return deviceText(device.special.genTL.userDefinedName);
    default:
        return {};
    }
}

QString displayName(const KELA_DEVICE_INFO_EX &device)
{
    const QString own = userDefinedName(device);
    QString name = own.isEmpty() ? deviceText(device.modelName) : own;
    const QString serial = deviceText(device.serialNumber);
    if (serial.isEmpty())
        return name;
    return QStringLiteral("%1 (%2)").arg(name, serial);
}

} // namespace browser
