// SPDX-License-Identifier: Apache-2.0
#include "UsbScene.h"

#include <cctype>
#include <cstdio>
#include <fstream>
#include <set>
#include <sstream>

namespace kelsim
{
namespace
{

constexpr int kFirstDeviceNumber = 5;

/// Words of a line; quotes keep blanks together.
std::vector<std::string> wordsOf(const std::string &line)
{
    std::vector<std::string> words;
    std::string word;
    bool isQuoted = false;
    bool isWord = false;
    for (const char c : line) {
        if (c == '#' && !isQuoted && !isWord)
            break;
        const bool isBlank = std::isspace(static_cast<unsigned char>(c)) != 0 && !isQuoted;
        if (c == '"') {
            isQuoted = !isQuoted;
            isWord = true;
        } else if (!isBlank) {
            word += c;
            isWord = true;
        } else if (isWord) {
            words.push_back(word);
            word.clear();
            isWord = false;
        }
    }
    if (isWord)
        words.push_back(word);
    return words;
}

bool isKind(const std::string &word)
{
    return word == "camera" || word == "webcam" || word == "storage";
}

bool parseDevice(const std::vector<std::string> &words, int deviceNumber, UsbDevice &device)
{
    if (words.size() < 2 || !isKind(words[0]))
        return false;
    device.kind = words[0];
    device.port = words[1];
    device.deviceNumber = deviceNumber;
    if (std::sscanf(device.port.c_str(), "%d-", &device.busNumber) != 1 ||
        device.port.find('-') == std::string::npos)
        return false;
    for (std::size_t i = 2; i < words.size(); ++i) {
        const std::size_t equals = words[i].find('=');
        const std::string key = words[i].substr(0, equals);
        device.words[key] = equals == std::string::npos ? std::string() : words[i].substr(equals + 1);
    }
    return true;
}

using Bytes = std::vector<std::uint8_t>;

void append(Bytes &bytes, std::initializer_list<int> values)
{
    for (const int value : values)
        bytes.push_back(static_cast<std::uint8_t>(value));
}

void appendWord(Bytes &bytes, int value)
{
    append(bytes, {value & 0xFF, value >> 8 & 0xFF});
}

/// "3.20" as 0x0320.
int codedDecimal(const std::string &text)
{
    unsigned int major = 0;
    unsigned int minor = 0;
    std::sscanf(text.c_str(), "%x.%x", &major, &minor);
    return static_cast<int>(major << 8 | minor);
}

enum StringIndex { kManufacturer = 1, kModel, kSerial, kGuid = 5, kFamily, kVersion, kInfo, kUserName };

int indexIfSet(const UsbDevice &device, const std::string &key, int index)
{
    return device.has(key) ? index : 0;
}

Bytes deviceDescriptor(const UsbDevice &device)
{
    const bool isStorage = device.kind == "storage";
    Bytes bytes;
    append(bytes, {18, 1});
    appendWord(bytes, codedDecimal(device.text("descriptor-version", device.text("version", "3.20"))));
    append(bytes, {isStorage ? 0x00 : 0xEF, isStorage ? 0x00 : 0x02, isStorage ? 0x00 : 0x01, 9});
    appendWord(bytes, 0x1209);
    appendWord(bytes, 0x0001);
    appendWord(bytes, 0x0100);
    append(bytes, {indexIfSet(device, "vendor", kManufacturer), indexIfSet(device, "model", kModel),
                   indexIfSet(device, "serial", kSerial), 1});
    return bytes;
}

void appendInterface(Bytes &bytes, int number, int endpoints, int subClass, int protocol,
                     int interfaceClass = 0xEF)
{
    append(bytes, {9, 4, number, 0, endpoints, interfaceClass, subClass, protocol, 0});
}

void appendEndpoint(Bytes &bytes, int address)
{
    append(bytes, {7, 5, address, 2, 0x00, 0x04, 0, 6, 0x30, 0, 0, 0, 0});
}

void appendDeviceInfo(Bytes &bytes, const UsbDevice &device)
{
    const int length = std::stoi(device.text("length", "20"));
    append(bytes, {length, 0x24, 0x01});
    append(bytes, {1, 0, 1, 0, 1, 0, 1, 0}); // GenCP and USB3 Vision, 1.1 each
    append(bytes, {indexIfSet(device, "guid", kGuid), indexIfSet(device, "vendor", kManufacturer),
                   indexIfSet(device, "model", kModel), indexIfSet(device, "family", kFamily),
                   indexIfSet(device, "device-version", kVersion), indexIfSet(device, "info", kInfo),
                   indexIfSet(device, "serial", kSerial), indexIfSet(device, "user", kUserName), 0x1E});
}

Bytes configurationBody(const UsbDevice &device)
{
    Bytes bytes;
    if (device.kind == "storage") {
        appendInterface(bytes, 0, 2, 0x06, 0x50, 0x08);
        appendEndpoint(bytes, 0x81);
        appendEndpoint(bytes, 0x02);
    } else if (device.kind == "webcam") {
        append(bytes, {8, 0x0B, 0, 2, 0x0E, 0x03, 0, 0});
        appendInterface(bytes, 0, 0, 0x01, 0x00, 0x0E);
        appendInterface(bytes, 1, 0, 0x02, 0x00, 0x0E);
    } else {
        append(bytes, {8, 0x0B, 0, 3, 0xEF, 0x05, 0, 0});
        appendInterface(bytes, 0, 2, 0x05, 0x00);
        appendDeviceInfo(bytes, device);
        appendEndpoint(bytes, 0x81);
        appendEndpoint(bytes, 0x01);
        appendInterface(bytes, 1, 1, 0x05, 0x01);
        appendEndpoint(bytes, 0x82);
        appendInterface(bytes, 2, 1, 0x05, 0x02);
        appendEndpoint(bytes, 0x83);
    }
    return bytes;
}

Bytes descriptorsOf(const UsbDevice &device)
{
    const Bytes body = configurationBody(device);
    Bytes bytes = deviceDescriptor(device);
    append(bytes, {9, 2});
    appendWord(bytes, static_cast<int>(body.size()) + 9);
    append(bytes, {device.kind == "camera" ? 3 : 1, 1, 0, 0x80, 8});
    bytes.insert(bytes.end(), body.begin(), body.end());
    if (device.has("cut"))
        bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(std::stoul(device.text("cut")))));
    return bytes;
}

std::string hexOf(const Bytes &bytes)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex;
    for (const std::uint8_t byte : bytes) {
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 0xF];
    }
    return hex;
}

std::string threeDigits(int number)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%03d", number);
    return text;
}

int minorOf(int bus, int device)
{
    return (bus - 1) * 128 + device - 1;
}

void describeNode(std::ostringstream &out, int bus, int device, const std::string &hex, bool isThere = true)
{
    const std::string path = "bus/usb/" + threeDigits(bus) + '/' + threeDigits(device);
    if (isThere)
        out << "N: " << path << '=' << hex << '\n';
    out << "E: BUSNUM=" << threeDigits(bus) << "\nE: DEVNAME=/dev/" << path
        << "\nE: DEVNUM=" << threeDigits(device)
        << "\nE: DEVTYPE=usb_device\nE: MAJOR=189\nE: MINOR=" << minorOf(bus, device) << "\nE: SUBSYSTEM=usb\n"
        << "A: busnum=" << bus << "\\n\nA: devnum=" << device << "\\n\nH: descriptors=" << hex << '\n'
        << "A: dev=189:" << minorOf(bus, device) << "\\n\n";
}

constexpr char kController[] = "/devices/pci0000:00/0000:00:14.0";

void describeRootHub(std::ostringstream &out, int bus)
{
    static constexpr char kDescriptors[] =
        "12010003090003096B1D030001060302010109021F00010100E0000904000001090000000705810304000C063000000200";
    out << "P: " << kController << "/usb" << bus << '\n';
    describeNode(out, bus, 1, kDescriptors);
    out << "A: bConfigurationValue=1\\n\nA: bDeviceClass=09\\n\nA: devpath=0\\n\nA: idProduct=0003\\n\n"
           "A: idVendor=1d6b\\n\nA: speed=5000\\n\nA: version= 3.00\\n\n\n";
}

void describeInterface(std::ostringstream &out, const UsbDevice &device, int number, const std::string &folder)
{
    const bool isCamera = device.kind == "camera";
    out << "P: " << folder << '/' << device.port << ":1." << number << "\nE: DEVTYPE=usb_interface\n"
        << "E: SUBSYSTEM=usb\nA: bInterfaceNumber=0" << number
        << "\\n\nA: bInterfaceClass=" << (isCamera ? "ef" : "08") << "\\n\n";
    if (isCamera && number == 0 && device.has("claimed"))
        out << "E: DRIVER=usbfs\nL: driver=../../../../../../bus/usb/drivers/usbfs\n";
    out << '\n';
}

std::string devicePath(const UsbDevice &device)
{
    return std::string(kController) + "/usb" + std::to_string(device.busNumber) + '/' + device.port;
}

void describeDevice(std::ostringstream &out, const UsbDevice &device)
{
    const std::string folder = devicePath(device);
    const auto attribute = [&](const std::string &name, const std::string &value) {
        if (!value.empty())
            out << "A: " << name << '=' << value << "\\n\n";
    };
    out << "P: " << folder << '\n';
    describeNode(out, device.busNumber, device.deviceNumber, hexOf(descriptorsOf(device)),
                 !device.has("nodeless"));
    attribute("bConfigurationValue", "1");
    attribute("bDeviceClass", device.kind == "storage" ? "00" : "ef");
    attribute("devpath", device.port.substr(device.port.find('-') + 1));
    attribute("idVendor", "1209");
    attribute("idProduct", "0001");
    attribute("manufacturer", device.text("manufacturer", device.text("vendor")));
    attribute("product", device.text("product", device.text("model")));
    attribute("serial", device.text("sysfs-serial", device.text("serial")));
    attribute("speed", device.text("speed", "5000"));
    attribute("version", " " + device.text("version", "3.20"));
    out << "L: driver=../../../../../bus/usb/drivers/usb\n\n";
    const int interfaces = device.kind == "camera" ? 3 : 1;
    for (int number = 0; number < interfaces; ++number)
        describeInterface(out, device, number, folder);
}

} // namespace

std::string UsbDevice::text(const std::string &key, const std::string &otherwise) const
{
    const auto word = words.find(key);
    return word == words.end() ? otherwise : word->second;
}

std::string UsbDevice::node() const
{
    return "/dev/bus/usb/" + threeDigits(busNumber) + '/' + threeDigits(deviceNumber);
}

std::string UsbDevice::folder() const
{
    return "/sys" + devicePath(*this);
}

std::vector<UsbDevice> readUsbScene(const std::string &path, std::string &error)
{
    std::vector<UsbDevice> devices;
    std::ifstream file(path);
    if (!file)
        error = path + ": cannot be read";
    int lineNumber = 0;
    for (std::string line; error.empty() && std::getline(file, line);) {
        ++lineNumber;
        const std::vector<std::string> words = wordsOf(line);
        UsbDevice device;
        if (words.empty())
            continue;
        if (!parseDevice(words, kFirstDeviceNumber + static_cast<int>(devices.size()), device)) {
            error =
                path + ":" + std::to_string(lineNumber) + ": not a device of the form KIND PORT [KEY=TEXT]…";
            break;
        }
        devices.push_back(device);
    }
    return error.empty() ? devices : std::vector<UsbDevice>();
}

std::map<int, std::string> cameraStrings(const UsbDevice &device)
{
    std::map<int, std::string> strings;
    for (const auto &[key, index] : std::map<std::string, int>{{"vendor", kManufacturer},
                                                               {"model", kModel},
                                                               {"serial", kSerial},
                                                               {"guid", kGuid},
                                                               {"family", kFamily},
                                                               {"device-version", kVersion},
                                                               {"info", kInfo},
                                                               {"user", kUserName}}) {
        if (device.has(key))
            strings[index] = device.text(key);
    }
    return strings;
}

std::string describeUsbScene(const std::vector<UsbDevice> &devices)
{
    std::ostringstream out;
    out << "P: " << kController
        << "\nE: DRIVER=xhci_hcd\nE: PCI_SLOT_NAME=0000:00:14.0\nE: SUBSYSTEM=pci\nA: class=0x0c0330\\n\n\n";
    std::set<int> buses;
    for (const UsbDevice &device : devices)
        buses.insert(device.busNumber);
    for (const int bus : buses)
        describeRootHub(out, bus);
    for (const UsbDevice &device : devices)
        describeDevice(out, device);
    return out.str();
}

} // namespace kelsim
