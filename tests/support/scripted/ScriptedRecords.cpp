// SPDX-License-Identifier: Apache-2.0
#include "ScriptedRecords.h"

namespace
{

// A hardware address of its own for every serial number, the same in every run.
uint32_t macLowOf(const std::string &serial)
{
    uint32_t hash = 2166136261U;
    for (const char character : serial) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return hash;
}

KELA_DEVICE_INFO_EX camera(KELA_INTERFACE_TYPE transport, const std::string &serial)
{
    KELA_DEVICE_INFO_EX device = {};
    device.transport = transport;
    setField(device.modelName, "SX-100");
    setField(device.secondName, "1.0.0");
    setField(device.serialNumber, serial);
    return device;
}

} // namespace

KELA_DEVICE_INFO_EX gigeCamera(const std::string &serial, uint32_t lastOctet)
{
    KELA_DEVICE_INFO_EX device = camera(KELA_INTERFACE_TYPE_GIGE, serial);
    KELA_GIGE_DEVICE_INFO &gige = device.special.gige;
    gige.macHigh = 0x0200;
    gige.macLow = macLowOf(serial);
    gige.currentIp = ipv4(192, 168, 10, lastOctet);
    gige.subnetMask = ipv4(255, 255, 255, 0);
    gige.hostIp = ipv4(192, 168, 10, 1);
    setField(gige.manufacturerName, "Scripted Vision");
    return device;
}

KELA_DEVICE_INFO_EX usbCamera(const std::string &serial)
{
    KELA_DEVICE_INFO_EX device = camera(KELA_INTERFACE_TYPE_USB, serial);
    KELA_USB_DEVICE_INFO &usb = device.special.usb;
    usb.portLocator[0] = 2;
    usb.portLocator[1] = 1;
    usb.usable = 1;
    usb.usbVersion = 0x0320;
    setField(usb.manufacturerName, "Scripted Vision");
    return device;
}

KELA_DEVICE_INFO_EX cameraLinkCamera(const std::string &serial, const std::string &port)
{
    KELA_DEVICE_INFO_EX device = camera(KELA_INTERFACE_TYPE_CAMERALINK, serial);
    setField(device.special.cameraLink.portName, port);
    setField(device.special.cameraLink.manufacturerName, "Scripted Vision");
    return device;
}

KELA_DEVICE_INFO_EX genTLDevice(const std::string &serial, const std::string &interfaceId,
                                uint32_t interfaceNumber)
{
    KELA_DEVICE_INFO_EX device = camera(KELA_INTERFACE_TYPE_GENTL, serial);
    KELA_GENTL_DEVICE_INFO &genTL = device.special.genTL;
    setField(genTL.interfaceId, interfaceId);
    setField(genTL.deviceId, "device " + serial);
    setField(genTL.vendorName, "Scripted Vision");
    genTL.interfaceNumber = interfaceNumber;
    return device;
}

KELA_GENTL_IF_INFO genTLInterface(const std::string &identifier, uint32_t number)
{
    KELA_GENTL_IF_INFO interface = {};
    setField(interface.identifier, identifier);
    setField(interface.displayName, identifier);
    interface.number = number;
    interface.state = KELA_DEV_STATE_GENTL_INTERFACE_FREE;
    return interface;
}
