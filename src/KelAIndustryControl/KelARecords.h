// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// @file
/// The fixed-layout records that cross between the device access, the enumerators and the tree.
/// Their layout is an interface: hosts and companion libraries read them in memory. Records are
/// aligned naturally, zeroed whole before they are filled and copied whole. Text fields are 8-bit
/// strings that end at their first NUL or at the end of the field: read them with fixedText().
/// IPv4 addresses are numbers with the first octet in the highest byte.

/// Transport of a device or an enumerator. Single bits, so that a set of them fits one word.
enum KELA_INTERFACE_TYPE : uint32_t {
    KELA_INTERFACE_TYPE_NONE = 0,             ///< not told
    KELA_INTERFACE_TYPE_GIGE = 1,             ///< GigE Vision
    KELA_INTERFACE_TYPE_1394 = 2,             ///< IEEE 1394
    KELA_INTERFACE_TYPE_USB = 4,              ///< USB3 Vision
    KELA_INTERFACE_TYPE_CAMERALINK = 8,       ///< Camera Link
    KELA_INTERFACE_TYPE_GENTL = 16,           ///< GenTL, devices listed per opened interface handle
    KELA_INTERFACE_TYPE_GENTL_INTERFACE = 32, ///< GenTL, devices listed per interface record
    KELA_INTERFACE_TYPE_FURTHER = 64,         ///< further transport, known by its identifier range only
    KELA_INTERFACE_TYPE_NETWORK = 128,        ///< network-attached transport with states of its own
    KELA_INTERFACE_TYPE_GIGE_VARIANT = 256,   ///< GigE variant, compared and keyed like GigE
};

/// Kind of an enumeration event.
enum KELA_INTERFACE_STATE : uint32_t {
    KELA_INTERFACE_STATE_INTERFACE_NEW = 0,     ///< a network card or GenTL interface appeared
    KELA_INTERFACE_STATE_INTERFACE_UPDATED = 1, ///< a known one was seen again
    KELA_INTERFACE_STATE_INTERFACE_REMOVED = 2, ///< a known one vanished
    KELA_INTERFACE_STATE_DEVICE_NEW = 3,        ///< a device appeared
    KELA_INTERFACE_STATE_DEVICE_UPDATED = 4,    ///< a known device was seen again
    KELA_INTERFACE_STATE_DEVICE_REMOVED = 5,    ///< a known device vanished
    KELA_INTERFACE_STATE_PASS_BEGIN = 6,        ///< an enumeration pass begins
    KELA_INTERFACE_STATE_PASS_END = 7,          ///< a pass ended; the event carries its result code
};

/// State of a device. The connected and grabbing states and the GenTL interface states are set by
/// the host for its own connections; an enumerator never reports them.
enum KELA_DEV_STATE : uint32_t {
    KELA_DEV_STATE_UNKNOWN = 0,
    KELA_DEV_STATE_GIGE_FREE = 1,
    KELA_DEV_STATE_GIGE_IN_USE = 2,
    KELA_DEV_STATE_GIGE_UNREACHABLE = 3,
    KELA_DEV_STATE_GIGE_CONNECTED = 4,
    KELA_DEV_STATE_GIGE_GRABBING = 5,
    KELA_DEV_STATE_GIGE_MULTICAST = 6, ///< opened by another host, which streams to a multicast group
    KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED = 7,
    KELA_DEV_STATE_USB3_FREE = 8,
    KELA_DEV_STATE_USB3_IN_USE = 9,
    KELA_DEV_STATE_USB3_CONNECTED = 10,
    KELA_DEV_STATE_USB3_GRABBING = 11,
    KELA_DEV_STATE_USB3_UNUSABLE = 12,
    KELA_DEV_STATE_USB2_FREE = 13,
    KELA_DEV_STATE_USB2_IN_USE = 14,
    KELA_DEV_STATE_USB2_CONNECTED = 15,
    KELA_DEV_STATE_USB2_GRABBING = 16,
    KELA_DEV_STATE_USB2_UNUSABLE = 17,
    KELA_DEV_STATE_CAMERALINK_FREE = 18,
    KELA_DEV_STATE_CAMERALINK_CONNECTED = 19,
    KELA_DEV_STATE_CAMERALINK_UNREACHABLE = 20,
    KELA_DEV_STATE_GENTL_FREE = 21,
    KELA_DEV_STATE_GENTL_CONNECTED = 22,
    KELA_DEV_STATE_GENTL_GRABBING = 23,
    KELA_DEV_STATE_GENTL_IN_USE = 24,
    KELA_DEV_STATE_GENTL_INTERFACE_FREE = 25,
    KELA_DEV_STATE_GENTL_INTERFACE_OPEN = 26,
    KELA_DEV_STATE_GENTL_INTERFACE_IN_USE = 27,
    KELA_DEV_STATE_NETWORK_FREE = 28,
    KELA_DEV_STATE_NETWORK_IN_USE = 29,
    KELA_DEV_STATE_NETWORK_UNREACHABLE = 30,
};

/// Where a device belongs: under its card or controller, or in one of the groups.
enum KELA_PLACEMENT : uint32_t {
    KELA_PLACEMENT_REAL = 0,    ///< a device of its own
    KELA_PLACEMENT_VIRTUAL = 1, ///< simulated on this host
    KELA_PLACEMENT_OTHER = 2,   ///< a device whose class is not a plain transmitter
};

/// Access mode of Connect and IsDeviceAccessible.
enum KELA_ACCESS_MODE : uint32_t {
    KELA_ACCESS_EXCLUSIVE = 1, ///< nobody else may even read
    KELA_ACCESS_CONTROL = 3,   ///< others may read
    KELA_ACCESS_MONITOR = 7,   ///< read only; never takes the device from anybody
};

/// Region of a GigE Vision device (transports 1 and 256), from offset 196 of the device record.
typedef struct _KELA_GIGE_DEVICE_INFO_ {
    uint32_t macHigh;              ///< first two octets of the hardware address
    uint32_t macLow;               ///< last four octets of the hardware address
    uint32_t ipConfigOptions;      ///< IP configurations that the device supports (register 0x0010)
    uint32_t ipConfigCurrent;      ///< IP configurations in use (register 0x0014)
    uint32_t currentIp;            ///< IPv4 address
    uint32_t subnetMask;           ///< subnet mask
    uint32_t gateway;              ///< default gateway, 0 = none
    char manufacturerName[128];    ///< vendor
    char userDefinedName[64];      ///< name that the user gave the device
    uint32_t hostIp;               ///< address of the card that saw the device
    uint32_t streamDestination;    ///< where stream channel 0 goes, as the multicast test read it
    uint32_t streamHostPort;       ///< UDP port of that destination
    uint32_t primaryApplicationIp; ///< address of the program that holds the device, 0 = not told
    uint8_t reserved432[156];
} KELA_GIGE_DEVICE_INFO;

/// Region of a USB3 Vision device (transport 4).
typedef struct _KELA_USB_DEVICE_INFO_ {
    uint8_t portLocator[4]; ///< bus number, then the path of ports; all zero while the boot loader runs
    uint32_t reserved200;
    uint32_t usable;           ///< 0 = present but cannot be used
    uint32_t genCpVersion;     ///< major number in the high half
    uint32_t u3vVersion;       ///< major number in the high half
    char deviceGuid[64];       ///< 12 hexadecimal digits
    char familyName[64];       ///< may be empty
    char manufacturerInfo[56]; ///< may be empty
    char manufacturerName[64]; ///< vendor
    char userDefinedName[64];  ///< name that the user gave the device
    uint32_t usbVersion;       ///< binary coded decimal, 0x0300 or more = USB 3
    uint32_t linkSpeed;        ///< of the present link, Mbit/s
    uint32_t speedSupport;     ///< speeds that the device supports, bits as in its descriptor
    uint16_t vendorId;         ///< of the USB device descriptor
    uint16_t productId;        ///< of the USB device descriptor
    uint32_t busNumber;        ///< with deviceNumber the device node
    uint32_t deviceNumber;     ///< with busNumber the device node
    uint8_t reserved552[36];
} KELA_USB_DEVICE_INFO;

/// Region of a Camera Link device (transport 8).
typedef struct _KELA_CAMERALINK_DEVICE_INFO_ {
    char portName[128];         ///< the serial port's own name
    char manufacturerName[192]; ///< vendor
    char userDefinedName[64];   ///< name that the user gave the device
    uint8_t reserved580[8];
} KELA_CAMERALINK_DEVICE_INFO;

/// Region of a GenTL device (transports 16 and 32).
typedef struct _KELA_GENTL_DEVICE_INFO_ {
    char interfaceId[64];     ///< identifier text of its interface
    char deviceId[64];        ///< the producer's identifier text of the device
    char vendorName[192];     ///< vendor
    char userDefinedName[64]; ///< name that the user gave the device
    uint32_t interfaceNumber; ///< with interfaceId the interface
    uint32_t accessStatus;    ///< as the producer reports it, 0 = unknown
} KELA_GENTL_DEVICE_INFO;

/// A device as the device access found it.
typedef struct _KELA_DEVICE_INFO_EX_ {
    uint32_t transport;    ///< KELA_INTERFACE_TYPE
    char modelName[64];    ///< model
    char secondName[64];   ///< device version
    char serialNumber[64]; ///< serial number
    union {
        KELA_GIGE_DEVICE_INFO gige;
        KELA_USB_DEVICE_INFO usb;
        KELA_CAMERALINK_DEVICE_INFO cameraLink;
        KELA_GENTL_DEVICE_INFO genTL;
        uint8_t bytes[392];
    } special;          ///< read the member that the transport names
    uint32_t placement; ///< KELA_PLACEMENT
    uint8_t reserved592[8];
} KELA_DEVICE_INFO_EX;

/// The network card of a device, as it stands in the device's record. All zero when it is never
/// filled; when no card matches, only cardValue is set.
typedef struct _KELA_DEVICE_NETWORK_ {
    uint8_t found;            ///< 1 when a card matched
    char name[64];            ///< the card's display name
    char routeText[64];       ///< the card's route text
    char hardwareAddress[64]; ///< the card's hardware address, its key
    uint8_t reserved193[3];
    uint32_t cardValue; ///< 1000 unless the card gives another
    uint32_t address;   ///< the card's matching address
    uint32_t mask;      ///< its mask
    uint32_t gateway;   ///< its gateway, 0xFFFFFFFF = none known
} KELA_DEVICE_NETWORK;

/// One address of a network card.
typedef struct _KELA_NETWORK_ADDRESS_ {
    uint32_t address;
    uint32_t mask;
    uint32_t gateway; ///< 0xFFFFFFFF = none known
} KELA_NETWORK_ADDRESS;

/// A network card of the host.
typedef struct _KELA_NETWORK_ {
    uint32_t id;              ///< stable identifier
    char name[64];            ///< "card[address]"
    char routeText[64];       ///< empty
    char hardwareAddress[64]; ///< the card's key
    int32_t cardValue;        ///< 1000
    uint32_t addressCount;    ///< entries in use
    KELA_NETWORK_ADDRESS addresses[256];
} KELA_NETWORK;

/// A USB controller of the host.
typedef struct _KELA_USBCONTROLLER_INFO_ {
    int32_t id;                  ///< identifier
    char name[192];              ///< display name
    char identifier[192];        ///< equal for equal controllers; the tree's key
    uint8_t portLocators[16][4]; ///< ports, matched against a device's locator bytes 0, 1, 3, 2
} KELA_USBCONTROLLER_INFO;

/// A GenTL interface.
typedef struct _KELA_GENTL_IF_INFO_ {
    char identifier[128];          ///< the producer's identifier text, 63 bytes at most; the tree's key
    unsigned char displayName[64]; ///< in the encoding that the user chose
    uint32_t number;               ///< the interface's own for life; with identifier its key
    uint32_t id;                   ///< stable identifier, written by the enumerator
    uint32_t state;                ///< KELA_DEV_STATE of an interface
    uint8_t hasBracketText;        ///< non-zero: show the alternative name and bracketText
    char bracketText[256];         ///< shown in brackets
    char alternativeName[64];      ///< in the encoding that the user chose
    uint8_t reserved525[3];
    uint32_t producerToken; ///< of the producer, unique in the process
    uint8_t reserved532[28];
} KELA_GENTL_IF_INFO;

/// A device as an enumerator keeps and reports it.
typedef struct _KELA_STRUCT_DEVICE_INFO_ {
    int32_t deviceId;                      ///< stable identifier
    int32_t deviceState;                   ///< KELA_DEV_STATE
    KELA_DEVICE_INFO_EX deviceInfo;        ///< as the device access found it
    KELA_DEVICE_NETWORK network;           ///< its card (transports 1, 128, 256)
    KELA_USBCONTROLLER_INFO usbController; ///< its controller (transport 4)
    KELA_GENTL_IF_INFO genTLInterface;     ///< its interface (transports 16, 32)
    uint8_t reserved1832[448];
    uint8_t remote; ///< 1 for a device that was added by its address
    uint8_t reserved2281[19];
} KELA_STRUCT_DEVICE_INFO;

/// A container of devices, as it travels with an interface event.
typedef struct _KELA_INTERFACE_INFO_ {
    uint32_t interfaceType; ///< 4 USB controller, 16 GenTL interface, else the network card's enumerator
    union {
        uint8_t bytes[3288]; ///< first, since "= {}" is sure to zero the first member only
        KELA_NETWORK network;
        KELA_USBCONTROLLER_INFO usbController;
        KELA_GENTL_IF_INFO genTLInterface;
    } special; ///< read the member that interfaceType names
} KELA_INTERFACE_INFO;

/// Devices found. The records belong to the object that filled the list.
typedef struct _KELA_DEVICE_INFO_LIST_ {
    uint32_t count; ///< a value above 256 counts as 256
    KELA_DEVICE_INFO_EX *devices[256];
} KELA_DEVICE_INFO_LIST;

/// GenTL interfaces found. The records belong to the object that filled the list.
typedef struct _KELA_GENTL_IF_INFO_LIST_ {
    uint32_t count; ///< a value above 256 counts as 256
    KELA_GENTL_IF_INFO *interfaces[256];
} KELA_GENTL_IF_INFO_LIST;

/// Value of an integer node with its limits.
typedef struct _KELCC_INTVALUE_EX_T_ {
    int64_t current;
    int64_t maximum;
    int64_t minimum;
    int64_t increment;
    int64_t reserved32[2];
} KELCC_INTVALUE_EX_T;

/// Vendor and model filter of an enumerator. Modes: 0 no filter, 1 include list, 2 exclude list.
typedef struct _DEVICE_FILTER_ {
    int32_t vendorMode;
    char vendorInclude[64];
    char vendorExclude[64];
    int32_t modelMode;
    char modelInclude[64];
    char modelExclude[64];
} DEVICE_FILTER;

/// Text of a fixed field: up to its first NUL, or the whole field when it holds none.
/// The result points into the field.
template <std::size_t Size>
inline std::string_view fixedText(const char (&field)[Size]) noexcept
{
    const void *end = std::memchr(field, 0, Size);
    return {field, end ? static_cast<std::size_t>(static_cast<const char *>(end) - field) : Size};
}

/// @overload
template <std::size_t Size>
inline std::string_view fixedText(const unsigned char (&field)[Size]) noexcept
{
    const void *end = std::memchr(field, 0, Size);
    const auto *text = static_cast<const char *>(static_cast<const void *>(field));
    return {text, end ? static_cast<std::size_t>(static_cast<const char *>(end) - text) : Size};
}

// The layout, checked by every user's compiler.
static_assert(std::is_standard_layout_v<KELA_GIGE_DEVICE_INFO> &&
              std::is_trivially_copyable_v<KELA_GIGE_DEVICE_INFO>);
static_assert(sizeof(KELA_GIGE_DEVICE_INFO) == 392);
static_assert(std::is_standard_layout_v<KELA_USB_DEVICE_INFO> &&
              std::is_trivially_copyable_v<KELA_USB_DEVICE_INFO>);
static_assert(sizeof(KELA_USB_DEVICE_INFO) == 392);
static_assert(std::is_standard_layout_v<KELA_CAMERALINK_DEVICE_INFO> &&
              std::is_trivially_copyable_v<KELA_CAMERALINK_DEVICE_INFO>);
static_assert(sizeof(KELA_CAMERALINK_DEVICE_INFO) == 392);
static_assert(std::is_standard_layout_v<KELA_GENTL_DEVICE_INFO> &&
              std::is_trivially_copyable_v<KELA_GENTL_DEVICE_INFO>);
static_assert(sizeof(KELA_GENTL_DEVICE_INFO) == 392);
static_assert(std::is_standard_layout_v<KELA_DEVICE_INFO_EX> &&
              std::is_trivially_copyable_v<KELA_DEVICE_INFO_EX>);
static_assert(sizeof(KELA_DEVICE_INFO_EX) == 600);
static_assert(offsetof(KELA_DEVICE_INFO_EX, transport) == 0);
static_assert(offsetof(KELA_DEVICE_INFO_EX, modelName) == 4);
static_assert(offsetof(KELA_DEVICE_INFO_EX, secondName) == 68);
static_assert(offsetof(KELA_DEVICE_INFO_EX, serialNumber) == 132);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special) == 196);
static_assert(offsetof(KELA_DEVICE_INFO_EX, placement) == 588);
static_assert(offsetof(KELA_DEVICE_INFO_EX, reserved592) == 592);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.macHigh) == 196);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.macLow) == 200);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.ipConfigOptions) == 204);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.ipConfigCurrent) == 208);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.currentIp) == 212);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.subnetMask) == 216);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.gateway) == 220);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.manufacturerName) == 224);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.userDefinedName) == 352);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.hostIp) == 416);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.streamDestination) == 420);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.streamHostPort) == 424);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.gige.primaryApplicationIp) == 428);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.usb.portLocator) == 196);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.usb.usable) == 204);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.usb.manufacturerName) == 400);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.usb.userDefinedName) == 464);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.usb.usbVersion) == 528);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.cameraLink.portName) == 196);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.cameraLink.manufacturerName) == 324);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.cameraLink.userDefinedName) == 516);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.interfaceId) == 196);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.deviceId) == 260);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.vendorName) == 324);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.userDefinedName) == 516);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.interfaceNumber) == 580);
static_assert(offsetof(KELA_DEVICE_INFO_EX, special.genTL.accessStatus) == 584);
static_assert(std::is_standard_layout_v<KELA_DEVICE_NETWORK> &&
              std::is_trivially_copyable_v<KELA_DEVICE_NETWORK>);
static_assert(sizeof(KELA_DEVICE_NETWORK) == 212);
static_assert(offsetof(KELA_DEVICE_NETWORK, found) == 0);
static_assert(offsetof(KELA_DEVICE_NETWORK, name) == 1);
static_assert(offsetof(KELA_DEVICE_NETWORK, routeText) == 65);
static_assert(offsetof(KELA_DEVICE_NETWORK, hardwareAddress) == 129);
static_assert(offsetof(KELA_DEVICE_NETWORK, cardValue) == 196);
static_assert(offsetof(KELA_DEVICE_NETWORK, address) == 200);
static_assert(offsetof(KELA_DEVICE_NETWORK, mask) == 204);
static_assert(offsetof(KELA_DEVICE_NETWORK, gateway) == 208);
static_assert(std::is_standard_layout_v<KELA_NETWORK_ADDRESS> &&
              std::is_trivially_copyable_v<KELA_NETWORK_ADDRESS>);
static_assert(sizeof(KELA_NETWORK_ADDRESS) == 12);
static_assert(offsetof(KELA_NETWORK_ADDRESS, address) == 0);
static_assert(offsetof(KELA_NETWORK_ADDRESS, mask) == 4);
static_assert(offsetof(KELA_NETWORK_ADDRESS, gateway) == 8);
static_assert(std::is_standard_layout_v<KELA_NETWORK> && std::is_trivially_copyable_v<KELA_NETWORK>);
static_assert(sizeof(KELA_NETWORK) == 3276);
static_assert(offsetof(KELA_NETWORK, id) == 0);
static_assert(offsetof(KELA_NETWORK, name) == 4);
static_assert(offsetof(KELA_NETWORK, routeText) == 68);
static_assert(offsetof(KELA_NETWORK, hardwareAddress) == 132);
static_assert(offsetof(KELA_NETWORK, cardValue) == 196);
static_assert(offsetof(KELA_NETWORK, addressCount) == 200);
static_assert(offsetof(KELA_NETWORK, addresses) == 204);
static_assert(std::is_standard_layout_v<KELA_USBCONTROLLER_INFO> &&
              std::is_trivially_copyable_v<KELA_USBCONTROLLER_INFO>);
static_assert(sizeof(KELA_USBCONTROLLER_INFO) == 452);
static_assert(offsetof(KELA_USBCONTROLLER_INFO, id) == 0);
static_assert(offsetof(KELA_USBCONTROLLER_INFO, name) == 4);
static_assert(offsetof(KELA_USBCONTROLLER_INFO, identifier) == 196);
static_assert(offsetof(KELA_USBCONTROLLER_INFO, portLocators) == 388);
static_assert(std::is_standard_layout_v<KELA_GENTL_IF_INFO> &&
              std::is_trivially_copyable_v<KELA_GENTL_IF_INFO>);
static_assert(sizeof(KELA_GENTL_IF_INFO) == 560);
static_assert(offsetof(KELA_GENTL_IF_INFO, identifier) == 0);
static_assert(offsetof(KELA_GENTL_IF_INFO, displayName) == 128);
static_assert(offsetof(KELA_GENTL_IF_INFO, number) == 192);
static_assert(offsetof(KELA_GENTL_IF_INFO, id) == 196);
static_assert(offsetof(KELA_GENTL_IF_INFO, state) == 200);
static_assert(offsetof(KELA_GENTL_IF_INFO, hasBracketText) == 204);
static_assert(offsetof(KELA_GENTL_IF_INFO, bracketText) == 205);
static_assert(offsetof(KELA_GENTL_IF_INFO, alternativeName) == 461);
static_assert(offsetof(KELA_GENTL_IF_INFO, producerToken) == 528);
static_assert(std::is_standard_layout_v<KELA_STRUCT_DEVICE_INFO> &&
              std::is_trivially_copyable_v<KELA_STRUCT_DEVICE_INFO>);
static_assert(sizeof(KELA_STRUCT_DEVICE_INFO) == 2300);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, deviceId) == 0);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, deviceState) == 4);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, deviceInfo) == 8);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, network) == 608);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, usbController) == 820);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, genTLInterface) == 1272);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, reserved1832) == 1832);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, remote) == 2280);
static_assert(offsetof(KELA_STRUCT_DEVICE_INFO, reserved2281) == 2281);
static_assert(std::is_standard_layout_v<KELA_INTERFACE_INFO> &&
              std::is_trivially_copyable_v<KELA_INTERFACE_INFO>);
static_assert(sizeof(KELA_INTERFACE_INFO) == 3292);
static_assert(offsetof(KELA_INTERFACE_INFO, interfaceType) == 0);
static_assert(offsetof(KELA_INTERFACE_INFO, special) == 4);
static_assert(std::is_standard_layout_v<KELA_DEVICE_INFO_LIST> &&
              std::is_trivially_copyable_v<KELA_DEVICE_INFO_LIST>);
static_assert(sizeof(KELA_DEVICE_INFO_LIST) == 2056);
static_assert(offsetof(KELA_DEVICE_INFO_LIST, count) == 0);
static_assert(offsetof(KELA_DEVICE_INFO_LIST, devices) == 8);
static_assert(std::is_standard_layout_v<KELA_GENTL_IF_INFO_LIST> &&
              std::is_trivially_copyable_v<KELA_GENTL_IF_INFO_LIST>);
static_assert(sizeof(KELA_GENTL_IF_INFO_LIST) == 2056);
static_assert(offsetof(KELA_GENTL_IF_INFO_LIST, count) == 0);
static_assert(offsetof(KELA_GENTL_IF_INFO_LIST, interfaces) == 8);
static_assert(std::is_standard_layout_v<KELCC_INTVALUE_EX_T> &&
              std::is_trivially_copyable_v<KELCC_INTVALUE_EX_T>);
static_assert(sizeof(KELCC_INTVALUE_EX_T) == 48);
static_assert(offsetof(KELCC_INTVALUE_EX_T, current) == 0);
static_assert(offsetof(KELCC_INTVALUE_EX_T, maximum) == 8);
static_assert(offsetof(KELCC_INTVALUE_EX_T, minimum) == 16);
static_assert(offsetof(KELCC_INTVALUE_EX_T, increment) == 24);
static_assert(std::is_standard_layout_v<DEVICE_FILTER> && std::is_trivially_copyable_v<DEVICE_FILTER>);
static_assert(sizeof(DEVICE_FILTER) == 264);
static_assert(offsetof(DEVICE_FILTER, vendorMode) == 0);
static_assert(offsetof(DEVICE_FILTER, vendorInclude) == 4);
static_assert(offsetof(DEVICE_FILTER, vendorExclude) == 68);
static_assert(offsetof(DEVICE_FILTER, modelMode) == 132);
static_assert(offsetof(DEVICE_FILTER, modelInclude) == 136);
static_assert(offsetof(DEVICE_FILTER, modelExclude) == 200);
