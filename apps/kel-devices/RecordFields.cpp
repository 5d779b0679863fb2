// SPDX-License-Identifier: Apache-2.0
#include "RecordFields.h"

#include <QHostAddress>

namespace
{

constexpr uint32_t kNoGateway = 0xFFFFFFFFU;

template <typename Character, std::size_t Size>
QString fieldText(const Character (&field)[Size])
{
    const std::string_view text = fixedText(field);
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString addressText(uint32_t address)
{
    return address == 0 ? QString() : QHostAddress(address).toString();
}

bool isGigE(uint32_t transport)
{
    return transport == KELA_INTERFACE_TYPE_GIGE || transport == KELA_INTERFACE_TYPE_GIGE_VARIANT;
}

bool isGenTL(uint32_t transport)
{
    return transport == KELA_INTERFACE_TYPE_GENTL || transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
}

QString vendorText(const KELA_DEVICE_INFO_EX &info)
{
    switch (info.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return fieldText(info.special.gige.manufacturerName);
    case KELA_INTERFACE_TYPE_USB:
        return fieldText(info.special.usb.manufacturerName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return fieldText(info.special.cameraLink.manufacturerName);
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return fieldText(info.special.genTL.vendorName);
    default:
        return {};
    }
}

QString userNameText(const KELA_DEVICE_INFO_EX &info)
{
    switch (info.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return fieldText(info.special.gige.userDefinedName);
    case KELA_INTERFACE_TYPE_USB:
        return fieldText(info.special.usb.userDefinedName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return fieldText(info.special.cameraLink.userDefinedName);
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return fieldText(info.special.genTL.userDefinedName);
    default:
        return {};
    }
}

} // namespace

const char *transportWord(uint32_t transport)
{
    switch (transport) {
    case KELA_INTERFACE_TYPE_USB:
        return "usb";
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return "cameralink";
    case KELA_INTERFACE_TYPE_GENTL:
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return "gentl";
    default:
        return "gige";
    }
}

const char *stateText(int32_t state)
{
    switch (static_cast<KELA_DEV_STATE>(state)) {
    case KELA_DEV_STATE_GIGE_FREE:
    case KELA_DEV_STATE_USB3_FREE:
    case KELA_DEV_STATE_USB2_FREE:
    case KELA_DEV_STATE_CAMERALINK_FREE:
    case KELA_DEV_STATE_GENTL_FREE:
    case KELA_DEV_STATE_NETWORK_FREE:
        return "free";
    case KELA_DEV_STATE_GIGE_IN_USE:
    case KELA_DEV_STATE_USB3_IN_USE:
    case KELA_DEV_STATE_USB2_IN_USE:
    case KELA_DEV_STATE_GENTL_IN_USE:
    case KELA_DEV_STATE_NETWORK_IN_USE:
        return "in use";
    case KELA_DEV_STATE_GIGE_UNREACHABLE:
    case KELA_DEV_STATE_CAMERALINK_UNREACHABLE:
    case KELA_DEV_STATE_NETWORK_UNREACHABLE:
        return "unreachable";
    case KELA_DEV_STATE_GIGE_MULTICAST:
        return "in use, multicast";
    case KELA_DEV_STATE_USB3_UNUSABLE:
    case KELA_DEV_STATE_USB2_UNUSABLE:
        return "not usable";
    default:
        return "unknown";
    }
}

Fields deviceFields(const KELA_STRUCT_DEVICE_INFO &device)
{
    const KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    const KELA_GIGE_DEVICE_INFO gige = isGigE(info.transport) ? info.special.gige : KELA_GIGE_DEVICE_INFO{};
    const uint32_t interfaceId = isGenTL(info.transport) ? device.genTLInterface.id : 0;

    Fields fields;
    fields.add("id", qint64{device.deviceId});
    fields.add("transport", QString::fromLatin1(transportWord(info.transport)));
    fields.add("vendor", vendorText(info));
    fields.add("model", fieldText(info.modelName));
    fields.add("serial", fieldText(info.serialNumber));
    fields.add("userName", userNameText(info));
    fields.add("state", qint64{device.deviceState});
    fields.add("stateText", QString::fromLatin1(stateText(device.deviceState)));
    fields.add("address", addressText(gige.currentIp));
    fields.add("mask", addressText(gige.subnetMask));
    fields.add("hostAddress", addressText(gige.hostIp));
    fields.add("cardMac", fieldText(device.network.hardwareAddress));
    fields.add("heldBy", addressText(gige.primaryApplicationIp));
    fields.add("placement", qint64{info.placement});
    fields.add("interfaceId", qint64{interfaceId});
    return fields;
}

Fields cardFields(const KELA_NETWORK &card)
{
    const KELA_NETWORK_ADDRESS &entry = card.addresses[0];
    Fields fields;
    fields.add("id", qint64{card.id});
    fields.add("name", fieldText(card.name));
    fields.add("address", addressText(entry.address));
    fields.add("mask", addressText(entry.mask));
    fields.add("gateway", addressText(entry.gateway == kNoGateway ? 0 : entry.gateway));
    fields.add("mac", fieldText(card.hardwareAddress));
    return fields;
}

Fields interfaceFields(const KELA_GENTL_IF_INFO &interface, const QString &producer)
{
    Fields fields;
    fields.add("id", qint64{interface.id});
    fields.add("identifier", fieldText(interface.identifier));
    fields.add("name", fieldText(interface.displayName));
    fields.add("producer", producer);
    return fields;
}
