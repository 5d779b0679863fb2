// SPDX-License-Identifier: Apache-2.0
// The interfaces of a producer as modules of their own: opened once per process, whoever needs them, and
// asked for their devices.
#include <KelAIndustryControl/gentl/ProducerSession.h>

#include <utility>

namespace kela::gentl
{
namespace
{

constexpr std::uint64_t kUpdateTimeoutMs = 1000;

/// The interface vanished under its handle; opened anew it may be there again.
bool isStale(GC_ERROR code)
{
    return code == GC_ERR_INVALID_HANDLE || code == GC_ERR_IO;
}

} // namespace

ProducerSession::Result ProducerSession::useInterface(const std::string &interfaceId, IF_HANDLE &handle)
{
    const auto known = m_interfaces.find(interfaceId);
    if (known != m_interfaces.end()) {
        ++known->second.users;
        handle = known->second.handle;
        return {};
    }
    step("TLOpenInterface");
    const ProducerFunctions &producer = m_library->functions();
    GC_ERROR code = call(producer.TLOpenInterface, m_layer, interfaceId.c_str(), &handle);
    if (code == GC_ERR_INVALID_ID) {
        // Some know an interface only after they looked for it.
        bool8_t changed = 1;
        call(producer.TLUpdateInterfaceList, m_layer, &changed, kUpdateTimeoutMs);
        code = call(producer.TLOpenInterface, m_layer, interfaceId.c_str(), &handle);
    }
    if (code == GC_ERR_SUCCESS && !handle)
        code = GC_ERR_INVALID_HANDLE;
    if (code == GC_ERR_SUCCESS)
        m_interfaces[interfaceId] = {handle, 1};
    return checked(code, "TLOpenInterface");
}

void ProducerSession::closeInterface(const std::string &interfaceId)
{
    const auto known = m_interfaces.find(interfaceId);
    if (known == m_interfaces.end())
        return;
    step("IFClose");
    call(m_library->functions().IFClose, known->second.handle);
    m_interfaces.erase(known);
}

ProducerSession::Result ProducerSession::holdInterface(const std::string &interfaceId)
{
    IF_HANDLE handle = nullptr;
    return useInterface(interfaceId, handle);
}

void ProducerSession::releaseInterface(const std::string &interfaceId)
{
    const auto known = m_interfaces.find(interfaceId);
    if (known != m_interfaces.end() && --known->second.users == 0)
        closeInterface(interfaceId);
}

ProducerSession::Result ProducerSession::listDevices(const std::string &interfaceId,
                                                     std::vector<DeviceFacts> &found)
{
    IF_HANDLE handle = nullptr;
    Result result = useInterface(interfaceId, handle);
    if (!result)
        return result;
    result = readDevices(handle, found);
    if (isStale(result.code) && reopenInterface(interfaceId, handle)) {
        found.clear();
        result = readDevices(handle, found);
    }
    releaseInterface(interfaceId);
    return result;
}

bool ProducerSession::reopenInterface(const std::string &interfaceId, IF_HANDLE &handle)
{
    const int users = m_interfaces[interfaceId].users;
    closeInterface(interfaceId);
    if (!useInterface(interfaceId, handle))
        return false;
    m_interfaces[interfaceId].users = users;
    return true;
}

ProducerSession::Result ProducerSession::readDevices(IF_HANDLE handle, std::vector<DeviceFacts> &found)
{
    const ProducerFunctions &producer = m_library->functions();
    step("IFUpdateDeviceList");
    bool8_t changed = 1;
    const GC_ERROR updated = call(producer.IFUpdateDeviceList, handle, &changed, kUpdateTimeoutMs);
    if (updated != GC_ERR_SUCCESS && updated != GC_ERR_TIMEOUT)
        return checked(updated, "IFUpdateDeviceList");

    const ListCalls calls{
        "IFGetNumDevices",
        [&](std::uint32_t *count) { return call(producer.IFGetNumDevices, handle, count); },
        "IFGetDeviceID",
        [&](std::uint32_t index, INFO_DATATYPE *, void *buffer, std::size_t *size) {
            return call(producer.IFGetDeviceID, handle, index, static_cast<char *>(buffer), size);
        },
    };
    std::vector<std::string> identifiers;
    Result result = readIdentifiers(calls, identifiers);
    step("IFGetDeviceInfo");
    for (std::string &id : identifiers)
        found.push_back(readDevice(handle, std::move(id)));
    return result;
}

DeviceFacts ProducerSession::readDevice(IF_HANDLE handle, std::string identifier)
{
    const auto info = [this, handle, &identifier](std::int32_t command) -> InfoReader::Call {
        return [this, handle, command, id = identifier.c_str()](INFO_DATATYPE *type, void *buffer,
                                                                std::size_t *size) {
            return call(m_library->functions().IFGetDeviceInfo, handle, id, command, type, buffer, size);
        };
    };
    // A value that a producer has not is empty, whatever code it gives for it.
    GC_ERROR ignored = GC_ERR_SUCCESS;
    DeviceFacts device;
    device.vendor = m_reader.text(info(DEVICE_INFO_VENDOR), ignored);
    device.model = m_reader.text(info(DEVICE_INFO_MODEL), ignored);
    device.displayName = m_reader.text(info(DEVICE_INFO_DISPLAYNAME), ignored);
    device.userDefinedName = m_reader.text(info(DEVICE_INFO_USER_DEFINED_NAME), ignored);
    device.serialNumber = m_reader.text(info(DEVICE_INFO_SERIAL_NUMBER), ignored);
    device.version = m_reader.text(info(DEVICE_INFO_VERSION), ignored);
    device.accessStatus =
        m_reader.number(info(DEVICE_INFO_ACCESS_STATUS)).value_or(DEVICE_ACCESS_STATUS_UNKNOWN);
    device.identifier = std::move(identifier);
    return device;
}

} // namespace kela::gentl
