// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/Usb3Backend.h>

#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/usb3/LibUsb.h>
#include <KelAIndustryControl/usb3/UsbRecord.h>
#include <KelAIndustryControl/usb3/UsbStrings.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace kela::usb3
{
namespace
{

/// Whether a camera's device node can be opened.
enum class NodeAccess { Granted, Forbidden, Missing };

NodeAccess nodeAccess(const SysfsCamera &camera)
{
    const std::string node = deviceNode(camera.busNumber, camera.deviceNumber);
    if (::access(node.c_str(), R_OK | W_OK) == 0)
        return NodeAccess::Granted;
    return errno == ENOENT ? NodeAccess::Missing : NodeAccess::Forbidden;
}

bool hasPermission(const SysfsCamera &camera)
{
    return nodeAccess(camera) == NodeAccess::Granted;
}

/// The folders of the cameras found, so that one of them can be looked at again without walking the bus.
/// Thread: any.
class CameraFolders
{
public:
    void set(const std::vector<SysfsCamera> &cameras)
    {
        std::map<Place, std::string> names;
        for (const SysfsCamera &camera : cameras)
            names[{camera.busNumber, camera.deviceNumber}] = camera.name;
        const std::lock_guard lock(m_mutex);
        m_names = std::move(names);
    }

    /// Reads a camera anew. Its bus and device number, which no other camera gets while it is plugged, say
    /// whether it is still the one that the record describes.
    std::optional<SysfsCamera> read(const KELA_DEVICE_INFO_EX &info) const
    {
        const Place place{info.special.usb.busNumber, info.special.usb.deviceNumber};
        if (auto camera = readSysfsCamera(nameAt(place)); camera && placeOf(*camera) == place)
            return camera;
        std::vector<SysfsCamera> cameras = listSysfsCameras();
        const auto found = std::find_if(cameras.begin(), cameras.end(), [&place](const SysfsCamera &camera) {
            return placeOf(camera) == place;
        });
        return found == cameras.end() ? std::nullopt : std::optional(std::move(*found));
    }

private:
    using Place = std::pair<unsigned int, unsigned int>; // bus and device number

    static Place placeOf(const SysfsCamera &camera) { return {camera.busNumber, camera.deviceNumber}; }

    std::string nameAt(const Place &place) const
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_names.find(place);
        return known == m_names.end() ? std::string() : known->second;
    }

    mutable std::mutex m_mutex; // guards m_names
    std::map<Place, std::string> m_names;
};

/// Holds the control interface of a camera.
class Usb3Session : public DeviceSession
{
public:
    Usb3Session(LibUsbContext context, LibUsbHandle handle, int interfaceNumber)
        : m_context(std::move(context))
        , m_handle(std::move(handle))
        , m_interface(interfaceNumber)
    {
    }
    ~Usb3Session() override
    {
        if (m_interface >= 0)
            libusb_release_interface(m_handle.get(), m_interface);
    }
    Usb3Session(const Usb3Session &) = delete;
    Usb3Session &operator=(const Usb3Session &) = delete;

    unsigned int integerNode(std::string_view, KELCC_INTVALUE_EX_T &) override { return KELA_ERROR_PARAMETER; }

private:
    LibUsbContext m_context;
    LibUsbHandle m_handle;
    int m_interface; ///< -1: nothing is claimed
};

class Usb3Backend : public TransportBackend
{
public:
    explicit Usb3Backend(const BackendContext &context)
        : m_strings(context.cancel)
    {
    }

    unsigned int enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices) override
    {
        const std::vector<SysfsCamera> cameras = listSysfsCameras();
        m_folders.set(cameras);
        m_strings.update(cameras);
        std::map<std::string, NodeAccess> closed;
        for (const SysfsCamera &camera : cameras) {
            // Pulled while its texts were read.
            if (!isStillThere(camera))
                continue;
            const NodeAccess access = nodeAccess(camera);
            if (access != NodeAccess::Granted)
                closed[deviceNode(camera.busNumber, camera.deviceNumber)] = access;
            devices.push_back(recordOf(camera, m_strings.texts(camera), access == NodeAccess::Granted));
        }
        sortByIdentity(devices);
        logClosed(std::move(closed));
        return KELA_OK;
    }

    unsigned int refresh(KELA_DEVICE_INFO_EX &info) override
    {
        const auto camera = m_folders.read(info);
        if (!camera)
            return KELA_ERROR_UNREACHABLE;
        info.special.usb.usable = hasPermission(*camera) && camera->linkSpeed >= kSlowestLinkMbits ? 1 : 0;
        info.special.usb.linkSpeed = camera->linkSpeed;
        return KELA_OK;
    }

    unsigned int isAccessible(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                              bool &isAccessible) override
    {
        const auto camera = m_folders.read(info);
        if (!camera)
            return KELA_ERROR_UNREACHABLE;
        isAccessible = hasPermission(*camera) && (accessMode == KELA_ACCESS_MONITOR || !camera->isClaimed);
        return KELA_OK;
    }

    unsigned int open(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                      std::unique_ptr<DeviceSession> &session) override
    {
        const auto camera = m_folders.read(info);
        if (!camera)
            return KELA_ERROR_UNREACHABLE;
        const bool isClaimWanted = accessMode != KELA_ACCESS_MONITOR;
        if (isClaimWanted && camera->isClaimed)
            return KELA_ERROR_IN_USE;
        LibUsbContext context = openLibUsb();
        if (!context)
            return KELA_ERROR_RESOURCE;
        int result = LIBUSB_SUCCESS;
        LibUsbHandle handle = openCamera(context.get(), *camera, result);
        const int interfaceNumber = isClaimWanted ? camera->descriptors.controlInterface : -1;
        if (handle && isClaimWanted)
            result = libusb_claim_interface(handle.get(), interfaceNumber);
        if (result == LIBUSB_SUCCESS)
            session = std::make_unique<Usb3Session>(std::move(context), std::move(handle), interfaceNumber);
        return errorOfLibUsb(result);
    }

private:
    /// The serial number, then the place: the same cameras come in the same order wherever they are plugged.
    static void sortByIdentity(std::vector<KELA_DEVICE_INFO_EX> &devices)
    {
        std::stable_sort(devices.begin(), devices.end(),
                         [](const KELA_DEVICE_INFO_EX &a, const KELA_DEVICE_INFO_EX &b) {
                             return fixedText(a.serialNumber) < fixedText(b.serialNumber);
                         });
    }

    /// One line when a camera turns out to be closed to us, not one per pass.
    void logClosed(std::map<std::string, NodeAccess> closed)
    {
        for (const auto &[node, access] : closed) {
            const auto before = m_closed.find(node);
            if (before != m_closed.end() && before->second == access)
                continue;
            logLine(KELA_LOG_WARNING,
                    access == NodeAccess::Missing
                        ? "USB3 Vision: a camera has no device node " + node +
                              "; in a container, the USB devices must be handed in"
                        : "USB3 Vision: no permission to open " + node +
                              "; install the udev rule for the class and plug the camera again");
        }
        m_closed = std::move(closed);
    }

    CameraFolders m_folders;
    UsbStrings m_strings;                       // enumerate() only
    std::map<std::string, NodeAccess> m_closed; // by node; enumerate() only
};

} // namespace

std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context)
{
    return std::make_unique<Usb3Backend>(context);
}

} // namespace kela::usb3
