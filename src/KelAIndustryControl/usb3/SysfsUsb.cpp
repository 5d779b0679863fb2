// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/SysfsUsb.h>

#include <KelAIndustryControl/core/UniqueFd.h>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <tuple>

namespace kela::usb3
{
namespace
{

constexpr char kDevices[] = "/sys/bus/usb/devices/";
// What the kernel gives is shorter; more than this is not a USB device.
constexpr std::size_t kLongestAttribute = 65536;

std::optional<std::string> readFile(const std::string &path)
{
    const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        return std::nullopt;
    std::string content;
    char buffer[4096];
    while (content.size() < kLongestAttribute) {
        const ssize_t count = ::read(file.get(), buffer, sizeof(buffer));
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        content.append(buffer, static_cast<std::size_t>(count));
    }
    return content;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::string readText(const std::string &path)
{
    return std::string(trimmed(readFile(path).value_or(std::string())));
}

unsigned int toNumber(std::string_view text)
{
    unsigned int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// "3.20" as 0x0320; 0 for anything else.
std::uint16_t binaryCodedVersion(std::string_view text)
{
    const char *const end = text.data() + text.size();
    std::uint8_t major = 0;
    std::uint8_t minor = 0;
    const auto [dot, error] = std::from_chars(text.data(), end, major, 16);
    if (error != std::errc() || dot == end || *dot != '.')
        return 0;
    const auto [rest, minorError] = std::from_chars(dot + 1, end, minor, 16);
    if (minorError != std::errc() || rest != end || rest - dot != sizeof(".20") - 1)
        return 0;
    return static_cast<std::uint16_t>(major << 8 | minor);
}

/// "1.4.3" as {1, 4, 3}.
std::vector<std::uint8_t> portPath(std::string_view text)
{
    std::vector<std::uint8_t> ports;
    while (!text.empty()) {
        const std::size_t dot = text.find('.');
        ports.push_back(static_cast<std::uint8_t>(toNumber(text.substr(0, dot))));
        text = dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    }
    return ports;
}

/// A driver is bound to an interface while somebody uses it: usbfs for a program, else the kernel's own.
bool hasDriver(const std::string &interfaceFolder)
{
    char target[PATH_MAX];
    return ::readlink((interfaceFolder + "/driver").c_str(), target, sizeof(target)) > 0;
}

bool isDeviceFolder(const char *name)
{
    return name[0] != '.' && std::strchr(name, ':') == nullptr && std::strchr(name, '-') != nullptr;
}

struct CloseDirectory {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

ByteView viewOf(const std::string &content)
{
    return {static_cast<const std::uint8_t *>(static_cast<const void *>(content.data())), content.size()};
}

} // namespace

std::optional<SysfsCamera> readSysfsCamera(const std::string &name)
{
    const std::string folder = kDevices + name + '/';
    const auto content = readFile(folder + "descriptors");
    const unsigned int configuration = toNumber(readText(folder + "bConfigurationValue"));
    if (!content || configuration == 0)
        return std::nullopt;
    const auto descriptors = parseCameraDescriptors(viewOf(*content), static_cast<std::uint8_t>(configuration));
    if (!descriptors)
        return std::nullopt;

    SysfsCamera camera;
    camera.name = name;
    camera.descriptors = *descriptors;
    camera.busNumber = toNumber(readText(folder + "busnum"));
    camera.deviceNumber = toNumber(readText(folder + "devnum"));
    camera.ports = portPath(readText(folder + "devpath"));
    camera.linkSpeed = toNumber(readText(folder + "speed"));
    camera.usbVersion = binaryCodedVersion(readText(folder + "version"));
    camera.manufacturer = readText(folder + "manufacturer");
    camera.product = readText(folder + "product");
    camera.serial = readText(folder + "serial");
    camera.isClaimed = hasDriver(folder + name + ':' + std::to_string(configuration) + '.' +
                                 std::to_string(descriptors->controlInterface));
    const bool isPulledMeanwhile = camera.busNumber == 0 || camera.deviceNumber == 0;
    return isPulledMeanwhile ? std::nullopt : std::optional(std::move(camera));
}

bool isStillThere(const SysfsCamera &camera)
{
    return toNumber(readText(kDevices + camera.name + "/devnum")) == camera.deviceNumber;
}

std::vector<SysfsCamera> listSysfsCameras()
{
    std::vector<SysfsCamera> cameras;
    const std::unique_ptr<DIR, CloseDirectory> directory(::opendir(kDevices));
    if (!directory)
        return cameras;
    while (const dirent *entry =
               ::readdir(directory.get())) { // NOLINT(concurrency-mt-unsafe): a stream of our own
        if (!isDeviceFolder(entry->d_name))
            continue;
        if (auto camera = readSysfsCamera(entry->d_name))
            cameras.push_back(std::move(*camera));
    }
    std::sort(cameras.begin(), cameras.end(), [](const SysfsCamera &a, const SysfsCamera &b) {
        return std::tie(a.busNumber, a.ports) < std::tie(b.busNumber, b.ports);
    });
    return cameras;
}

std::string deviceNode(unsigned int busNumber, unsigned int deviceNumber)
{
    char path[sizeof("/dev/bus/usb/4294967295/4294967295")];
    std::snprintf(path, sizeof(path), "/dev/bus/usb/%03u/%03u", busNumber, deviceNumber);
    return path;
}

} // namespace kela::usb3
