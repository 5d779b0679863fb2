// SPDX-License-Identifier: Apache-2.0
// A GenTL producer on the standard's public interface that reaches no hardware: it shows what the file
// beside it describes. The functions that browsing needs.
#include "SampleModules.h"

#include <clocale>
#include <cstdlib>

#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))

using namespace sample;

namespace
{

/// What every function of an opened transport layer begins with.
GC_ERROR checkLayer(const Call &call, TL_HANDLE layer)
{
    if (call.ordered() != GC_ERR_SUCCESS)
        return call.ordered();
    if (!producer().isInitialised)
        return call.end(GC_ERR_NOT_INITIALIZED, "not initialised");
    if (layer != layerHandle() || !producer().isLayerOpen)
        return call.end(GC_ERR_INVALID_HANDLE, "no such layer");
    return GC_ERR_SUCCESS;
}

/// What every function of an opened interface begins with.
GC_ERROR checkInterface(const Call &call, IF_HANDLE handle, InterfaceModule *&module)
{
    if (call.ordered() != GC_ERR_SUCCESS)
        return call.ordered();
    if (!producer().isInitialised)
        return call.end(GC_ERR_NOT_INITIALIZED, "not initialised");
    module = producer().find(handle);
    return module ? GC_ERR_SUCCESS : call.end(GC_ERR_INVALID_HANDLE, "no such interface");
}

bool isSame(const std::vector<Interface> &one, const std::vector<Interface> &other)
{
    bool isEqual = one.size() == other.size();
    for (std::size_t i = 0; isEqual && i < one.size(); ++i)
        isEqual = one[i].id == other[i].id;
    return isEqual;
}

const Device *findDevice(const InterfaceModule &module, const char *id)
{
    for (const Device &device : module.published) {
        if (device.id == id)
            return &device;
    }
    return nullptr;
}

bool isNewInfo(std::int32_t command)
{
    return command >= DEVICE_INFO_USER_DEFINED_NAME;
}

GC_ERROR giveDeviceInfo(const Device &device, std::int32_t command, INFO_DATATYPE *type, void *buffer,
                        std::size_t *size)
{
    if (producer().description.has("no-new-info") && isNewInfo(command))
        return GC_ERR_NOT_IMPLEMENTED;
    switch (command) {
    case DEVICE_INFO_ID:
        return giveText(device.id, type, buffer, size);
    case DEVICE_INFO_VENDOR:
        return giveText(device.vendor, type, buffer, size);
    case DEVICE_INFO_MODEL:
        return giveText(device.model, type, buffer, size);
    case DEVICE_INFO_TLTYPE:
        return giveText("Custom", type, buffer, size);
    case DEVICE_INFO_DISPLAYNAME:
        return giveText(device.model + " (" + device.serial + ")", type, buffer, size);
    case DEVICE_INFO_ACCESS_STATUS:
        return giveNumber(device.accessStatus, type, buffer, size);
    case DEVICE_INFO_USER_DEFINED_NAME:
        return giveText(device.userName, type, buffer, size);
    case DEVICE_INFO_SERIAL_NUMBER:
        return giveText(device.serial, type, buffer, size);
    case DEVICE_INFO_VERSION:
        return giveText(device.version, type, buffer, size);
    default:
        return GC_ERR_NOT_IMPLEMENTED;
    }
}

GC_ERROR giveProducerInfo(std::int32_t command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const ProducerTexts &texts = producer().description.producer;
    switch (command) {
    case TL_INFO_VENDOR:
        return giveText(texts.vendor, type, buffer, size);
    case TL_INFO_MODEL:
        return giveText(texts.model, type, buffer, size);
    case TL_INFO_VERSION:
        return giveText(texts.version, type, buffer, size);
    case TL_INFO_TLTYPE:
        return giveText(texts.type, type, buffer, size);
    case TL_INFO_DISPLAYNAME:
        return giveText(texts.displayName, type, buffer, size);
    default:
        return GC_ERR_NOT_IMPLEMENTED;
    }
}

void changeLocaleIf(const char *fault)
{
    if (producer().description.has(fault))
        std::setlocale(LC_ALL, "C.UTF-8"); // NOLINT(concurrency-mt-unsafe): what a careless producer does
}

} // namespace

SAMPLE_EXPORT GC_ERROR GCInitLib()
{
    rereadDescription();
    const Call call("GCInitLib");
    if (producer().description.has("exit"))
        std::exit(3); // NOLINT(concurrency-mt-unsafe): what no producer should do
    if (producer().description.has("throw"))
        throw std::string("sample");
    changeLocaleIf("locale");
    const std::lock_guard lock(producer().mutex);
    if (producer().isInitialised)
        return call.end(GC_ERR_RESOURCE_IN_USE, "initialised already");
    if (call.ordered() != GC_ERR_SUCCESS) {
        forgetCaller();
        return call.ordered();
    }
    producer().isInitialised = true;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR GCCloseLib()
{
    const Call call("GCCloseLib");
    const std::lock_guard lock(producer().mutex);
    if (call.ordered() != GC_ERR_SUCCESS)
        return call.ordered();
    if (!producer().isInitialised)
        return call.end(GC_ERR_NOT_INITIALIZED, "not initialised");
    producer().open.clear();
    producer().published.clear();
    producer().isLayerOpen = false;
    producer().isInitialised = false;
    forgetCaller();
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR GCGetInfo(std::int32_t command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const Call call("GCGetInfo");
    const std::lock_guard lock(producer().mutex);
    if (call.ordered() != GC_ERR_SUCCESS)
        return call.ordered();
    if (!producer().isInitialised)
        return call.end(GC_ERR_NOT_INITIALIZED, "not initialised");
    return call.end(giveProducerInfo(command, type, buffer, size));
}

SAMPLE_EXPORT GC_ERROR TLGetInfo(TL_HANDLE layer, std::int32_t command, INFO_DATATYPE *type, void *buffer,
                                 std::size_t *size)
{
    const Call call("TLGetInfo");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    return call.end(giveProducerInfo(command, type, buffer, size));
}

SAMPLE_EXPORT GC_ERROR GCGetLastError(GC_ERROR *code, char *text, std::size_t *size)
{
    if (!producer().isInitialised)
        return GC_ERR_NOT_INITIALIZED;
    const std::lock_guard lock(producer().mutex);
    if (code)
        *code = lastError().code;
    return giveText(lastError().text, nullptr, text, size);
}

SAMPLE_EXPORT GC_ERROR TLOpen(TL_HANDLE *layer)
{
    const Call call("TLOpen");
    const std::lock_guard lock(producer().mutex);
    if (call.ordered() != GC_ERR_SUCCESS)
        return call.ordered();
    if (!producer().isInitialised)
        return call.end(GC_ERR_NOT_INITIALIZED, "not initialised");
    if (!layer)
        return call.end(GC_ERR_INVALID_PARAMETER, "no place for the handle");
    if (producer().isLayerOpen)
        return call.end(GC_ERR_RESOURCE_IN_USE, "open already");
    producer().isLayerOpen = true;
    *layer = layerHandle();
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR TLClose(TL_HANDLE layer)
{
    const Call call("TLClose");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    producer().open.clear();
    producer().published.clear();
    producer().isLayerOpen = false;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR TLUpdateInterfaceList(TL_HANDLE layer, bool8_t *changed, std::uint64_t)
{
    rereadDescription();
    const Call call("TLUpdateInterfaceList");
    changeLocaleIf("late-locale");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    if (changed)
        *changed = isSame(producer().published, producer().description.interfaces) ? 0 : 1;
    producer().published = producer().description.interfaces;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR TLGetNumInterfaces(TL_HANDLE layer, std::uint32_t *count)
{
    const Call call("TLGetNumInterfaces");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    if (!count)
        return call.end(GC_ERR_INVALID_PARAMETER, "no place for the number");
    *count = static_cast<std::uint32_t>(producer().published.size());
    if (producer().description.has("wrong-count"))
        *count = 0xFFFFFFFFU;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR TLGetInterfaceID(TL_HANDLE layer, std::uint32_t index, char *id, std::size_t *size)
{
    const Call call("TLGetInterfaceID");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    if (index >= producer().published.size())
        return call.end(GC_ERR_INVALID_INDEX, "no such interface");
    return call.end(giveText(producer().published[index].id, nullptr, id, size));
}

SAMPLE_EXPORT GC_ERROR TLGetInterfaceInfo(TL_HANDLE layer, const char *id, std::int32_t command,
                                          INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const Call call("TLGetInterfaceInfo");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    const Interface *const interface = id ? producer().findPublished(id) : nullptr;
    if (!interface)
        return call.end(GC_ERR_INVALID_ID, "no such interface");
    if (command != INTERFACE_INFO_ID && command != INTERFACE_INFO_DISPLAYNAME)
        return call.end(GC_ERR_NOT_IMPLEMENTED, "no such information");
    const std::string &text = command == INTERFACE_INFO_ID ? interface->id : interface->name;
    return call.end(giveText(text, type, buffer, size));
}

SAMPLE_EXPORT GC_ERROR TLOpenInterface(TL_HANDLE layer, const char *id, IF_HANDLE *handle)
{
    const Call call("TLOpenInterface");
    const std::lock_guard lock(producer().mutex);
    if (const GC_ERROR code = checkLayer(call, layer); code != GC_ERR_SUCCESS)
        return code;
    if (!id || !handle)
        return call.end(GC_ERR_INVALID_PARAMETER, "no identifier or no place for the handle");
    if (!producer().findPublished(id))
        return call.end(GC_ERR_INVALID_ID, "no such interface");
    for (const auto &module : producer().open) {
        if (module->id == id)
            return call.end(GC_ERR_RESOURCE_IN_USE, "open already");
    }
    producer().open.push_back(std::make_unique<InterfaceModule>());
    producer().open.back()->id = id;
    *handle = producer().open.back().get();
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR IFClose(IF_HANDLE handle)
{
    const Call call("IFClose");
    const std::lock_guard lock(producer().mutex);
    InterfaceModule *module = nullptr;
    if (const GC_ERROR code = checkInterface(call, handle, module); code != GC_ERR_SUCCESS)
        return code;
    auto &open = producer().open;
    for (auto known = open.begin(); known != open.end(); ++known) {
        if (known->get() == module) {
            open.erase(known);
            break;
        }
    }
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR IFUpdateDeviceList(IF_HANDLE handle, bool8_t *changed, std::uint64_t)
{
    rereadDescription();
    const Call call("IFUpdateDeviceList");
    const std::lock_guard lock(producer().mutex);
    InterfaceModule *module = nullptr;
    if (const GC_ERROR code = checkInterface(call, handle, module); code != GC_ERR_SUCCESS)
        return code;
    const Interface *const present = producer().findPresent(module->id);
    if (!present)
        return call.end(GC_ERR_IO, "the interface is gone");
    if (changed)
        *changed = module->published.size() != present->devices.size();
    module->published = present->devices;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR IFGetNumDevices(IF_HANDLE handle, std::uint32_t *count)
{
    const Call call("IFGetNumDevices");
    const std::lock_guard lock(producer().mutex);
    InterfaceModule *module = nullptr;
    if (const GC_ERROR code = checkInterface(call, handle, module); code != GC_ERR_SUCCESS)
        return code;
    if (!count)
        return call.end(GC_ERR_INVALID_PARAMETER, "no place for the number");
    *count = static_cast<std::uint32_t>(module->published.size());
    if (producer().description.has("wrong-count"))
        *count = 0xFFFFFFFFU;
    return GC_ERR_SUCCESS;
}

SAMPLE_EXPORT GC_ERROR IFGetDeviceID(IF_HANDLE handle, std::uint32_t index, char *id, std::size_t *size)
{
    const Call call("IFGetDeviceID");
    const std::lock_guard lock(producer().mutex);
    InterfaceModule *module = nullptr;
    if (const GC_ERROR code = checkInterface(call, handle, module); code != GC_ERR_SUCCESS)
        return code;
    if (index >= module->published.size())
        return call.end(GC_ERR_INVALID_INDEX, "no such device");
    return call.end(giveText(module->published[index].id, nullptr, id, size));
}

SAMPLE_EXPORT GC_ERROR IFGetDeviceInfo(IF_HANDLE handle, const char *id, std::int32_t command,
                                       INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    const Call call("IFGetDeviceInfo");
    const std::lock_guard lock(producer().mutex);
    InterfaceModule *module = nullptr;
    if (const GC_ERROR code = checkInterface(call, handle, module); code != GC_ERR_SUCCESS)
        return code;
    const Device *const device = id ? findDevice(*module, id) : nullptr;
    if (!device)
        return call.end(GC_ERR_INVALID_ID, "no such device");
    return call.end(giveDeviceInfo(*device, command, type, buffer, size));
}
