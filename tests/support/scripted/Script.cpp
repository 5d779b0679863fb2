// SPDX-License-Identifier: Apache-2.0
#include "Script.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace
{

constexpr std::size_t kListLength = 256;

std::string serialOf(const KELA_DEVICE_INFO_EX &device)
{
    return std::string(fixedText(device.serialNumber));
}

template <typename List, typename Record>
void fillList(List &list, Record *(&entries)[kListLength], std::vector<Record> &records)
{
    const std::size_t count = std::min(records.size(), kListLength);
    for (std::size_t index = 0; index < count; ++index) {
        entries[index] = &records[index];
    }
    list.count = static_cast<uint32_t>(count);
}

// Operations that wait for a device or a producer. A cancelled object waits for nothing any more.
bool isWaiting(Operation operation)
{
    switch (operation) {
    case Operation::EnumDevices:
    case Operation::EnumInterfacesByGenTL:
    case Operation::EnumDevicesByGenTL:
    case Operation::EnumDevicesByGenTLEx:
    case Operation::GetDeviceInfo:
    case Operation::IsDeviceAccessible:
    case Operation::GetMulticastStatus:
    case Operation::Connect:
    case Operation::GetIntegerNodeValue:
        return true;
    default:
        return false;
    }
}

} // namespace

Script &Script::instance()
{
    // Never destroyed: objects of the test's static life may still call it.
    static auto *const s_script = new Script;
    return *s_script;
}

void Script::reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devices.clear();
    m_pluggedSerials.clear();
    m_devicesBehindRouter.clear();
    m_held.clear();
    m_streaming.clear();
    m_nodes.clear();
    m_claimedCount = 0;
    m_producers.clear();
    m_producerInfos.clear();
    m_handles.clear();
    m_nextFaults.clear();
    m_faults.clear();
    m_stalls.clear();
    m_calls.clear();
    m_isRecording = true;
    m_changed.notify_all();
}

void Script::plug(const KELA_DEVICE_INFO_EX &device)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devices.push_back(device);
    ++m_pluggedSerials[serialOf(device)];
}

void Script::replug(const KELA_DEVICE_INFO_EX &device)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto place =
        std::find_if(m_devices.begin(), m_devices.end(), [&device](const KELA_DEVICE_INFO_EX &other) {
            return serialOf(other) == serialOf(device);
        });
    if (place != m_devices.end()) {
        *place = device;
    }
}

void Script::unplug(const std::string &serial)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto isGone = [&serial](const KELA_DEVICE_INFO_EX &device) { return serialOf(device) == serial; };
    m_devices.erase(std::remove_if(m_devices.begin(), m_devices.end(), isGone), m_devices.end());
    m_devicesBehindRouter.erase(
        std::remove_if(m_devicesBehindRouter.begin(), m_devicesBehindRouter.end(), isGone),
        m_devicesBehindRouter.end());
    m_pluggedSerials.erase(serial);
}

void Script::plugBehindRouter(const KELA_DEVICE_INFO_EX &device)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devicesBehindRouter.push_back(device);
    ++m_pluggedSerials[serialOf(device)];
}

void Script::hold(const std::string &serial)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_held.insert(serial);
}

void Script::letGo(const std::string &serial)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_held.erase(serial);
    m_streaming.erase(serial);
}

void Script::holdAndStream(const std::string &serial, uint32_t destination, uint32_t port)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_held.insert(serial);
    m_streaming.insert(serial);
    m_nodes[{serial, "GevSCDA"}] = destination;
    m_nodes[{serial, "GevSCPHostPort"}] = port;
}

void Script::setNode(const std::string &serial, const std::string &node, int64_t value)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nodes[{serial, node}] = value;
}

void Script::claimCount(uint32_t count)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_claimedCount = count;
}

void Script::failNext(uint32_t code, Operation operation, int times)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nextFaults[operation] = {code, times};
}

void Script::fail(uint32_t code, Operation operation, const std::string &subject)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (code == KELA_OK) {
        m_faults.erase({operation, subject});
    } else {
        m_faults[{operation, subject}] = code;
    }
}

void Script::stall(Operation operation, const std::string &subject)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stalls.insert({operation, subject});
}

bool Script::waitUntilStalled(int calls, int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                              [this, calls] { return m_stalledCalls >= calls; });
}

void Script::release()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stalls.clear();
    m_changed.notify_all();
}

std::vector<ScriptedCall> Script::calls() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_calls;
}

std::vector<ScriptedCall> Script::calls(Operation operation) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<ScriptedCall> matching;
    std::copy_if(m_calls.begin(), m_calls.end(), std::back_inserter(matching),
                 [operation](const ScriptedCall &call) { return call.operation == operation; });
    return matching;
}

std::size_t Script::count(Operation operation) const
{
    return calls(operation).size();
}

void Script::forgetCalls()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.clear();
}

void Script::recordCalls(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isRecording = on;
}

int Script::objectCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_objects;
}

void Script::objectMade()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_objects;
}

void Script::objectGone(ScriptedObject &object)
{
    disconnect(object);
    const std::lock_guard<std::mutex> lock(m_mutex);
    --m_objects;
}

bool Script::isStalled(const Subject &subject) const
{
    return m_stalls.count(subject) != 0 || m_stalls.count({subject.first, std::string()}) != 0;
}

uint32_t Script::takeFault(const Subject &subject)
{
    const auto next = m_nextFaults.find(subject.first);
    if (next != m_nextFaults.end() && next->second.times > 0) {
        --next->second.times;
        return next->second.code;
    }
    const auto named = m_faults.find(subject);
    const auto any = m_faults.find({subject.first, std::string()});
    return named != m_faults.end() ? named->second : any != m_faults.end() ? any->second : KELA_OK;
}

uint32_t Script::enter(ScriptedObject &object, Operation operation, std::string_view subject, int64_t argument,
                       bool flag, bool wasZeroed)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!object.isCancelled && !m_isRecording && m_stalls.empty() && m_faults.empty() && m_nextFaults.empty()) {
        return KELA_OK;
    }
    const Subject key(operation, subject);
    m_calls.push_back({operation, key.second, argument, flag, wasZeroed});
    if (isStalled(key)) {
        ++m_stalledCalls;
        m_changed.notify_all();
        m_changed.wait(lock, [this, &object, &key] { return object.isCancelled || !isStalled(key); });
        --m_stalledCalls;
    }
    return object.isCancelled && isWaiting(operation) ? static_cast<uint32_t>(KELA_ERROR_CANCELLED)
                                                      : takeFault(key);
}

uint32_t Script::claimed(std::size_t count) const
{
    return m_claimedCount != 0 ? m_claimedCount : static_cast<uint32_t>(count);
}

uint32_t Script::devicesOf(ScriptedObject &object, uint32_t transports, KELA_DEVICE_INFO_LIST &list)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    object.devices.clear();
    std::copy_if(m_devices.begin(), m_devices.end(), std::back_inserter(object.devices),
                 [transports](const KELA_DEVICE_INFO_EX &device) {
                     return device.transport == KELA_INTERFACE_TYPE_NONE ||
                            (device.transport & transports) != 0;
                 });
    fillList(list, list.devices, object.devices);
    list.count = claimed(list.count);
    return KELA_OK;
}

uint32_t Script::interfacesOf(ScriptedObject &object, const std::string &path, KELA_GENTL_IF_INFO_LIST &list)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto producer = m_producers.find(path);
    if (producer == m_producers.end()) {
        return KELA_ERROR_PRODUCER_MISSING;
    }
    object.unloadedProducers.erase(path);
    object.usedProducers.insert(path);
    std::vector<KELA_GENTL_IF_INFO> &interfaces = object.interfacesByProducer[path];
    interfaces = producer->second;
    fillList(list, list.interfaces, interfaces);
    list.count = claimed(list.count);
    return KELA_OK;
}

uint32_t Script::devicesOfInterface(ScriptedObject &object, std::string_view identifier, uint32_t number,
                                    KELA_DEVICE_INFO_LIST &list)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (isUnloaded(object, identifier, number)) {
        return KELA_ERROR_HANDLE;
    }
    std::vector<KELA_DEVICE_INFO_EX> &devices =
        object.devicesByInterface[std::string(identifier) + '#' + std::to_string(number)];
    devices.clear();
    std::copy_if(m_devices.begin(), m_devices.end(), std::back_inserter(devices),
                 [identifier, number](const KELA_DEVICE_INFO_EX &device) {
                     const bool isGenTL = device.transport == KELA_INTERFACE_TYPE_GENTL ||
                                          device.transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
                     return isGenTL && fixedText(device.special.genTL.interfaceId) == identifier &&
                            device.special.genTL.interfaceNumber == number;
                 });
    fillList(list, list.devices, devices);
    list.count = claimed(list.count);
    return KELA_OK;
}

// Producers may share an interface; it is there as long as one of them is.
bool Script::isUnloaded(const ScriptedObject &object, std::string_view identifier, uint32_t number) const
{
    bool isGone = false;
    for (const auto &producer : m_producers) {
        const bool hasInterface =
            std::any_of(producer.second.cbegin(), producer.second.cend(),
                        [identifier, number](const KELA_GENTL_IF_INFO &interface) {
                            return fixedText(interface.identifier) == identifier && interface.number == number;
                        });
        if (hasInterface && object.unloadedProducers.count(producer.first) == 0) {
            return false;
        }
        isGone = isGone || hasInterface;
    }
    return isGone;
}

uint32_t Script::devicesOfHandle(ScriptedObject &object, void *handle, KELA_DEVICE_INFO_LIST &list)
{
    Interface interface;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto known = m_handles.find(handle);
        if (known == m_handles.end() || object.unloadedProducers.count(known->second.producer) != 0) {
            return KELA_ERROR_HANDLE;
        }
        interface = known->second;
    }
    return devicesOfInterface(object, interface.identifier, interface.number, list);
}

uint32_t Script::unload(ScriptedObject &object, const std::string &path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    object.unloadedProducers.insert(path);
    return object.usedProducers.erase(path) != 0 ? KELA_OK : KELA_ERROR_CALL_ORDER;
}

void Script::cancel(ScriptedObject &object)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    object.isCancelled = true;
    m_changed.notify_all();
}

uint32_t Script::connect(ScriptedObject &object, uint32_t mode)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (object.chosenSerial.empty() || object.isConnected) {
        return KELA_ERROR_CALL_ORDER;
    }
    if (m_pluggedSerials.count(object.chosenSerial) == 0) {
        return KELA_ERROR_TIMEOUT;
    }
    if (mode != KELA_ACCESS_MONITOR && !m_held.insert(object.chosenSerial).second) {
        return KELA_ERROR_IN_USE;
    }
    object.isConnected = true;
    object.isHolder = mode != KELA_ACCESS_MONITOR;
    return KELA_OK;
}

uint32_t Script::disconnect(ScriptedObject &object)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!object.isConnected) {
        return KELA_ERROR_CALL_ORDER;
    }
    if (object.isHolder) {
        m_held.erase(object.chosenSerial);
    }
    object.isConnected = false;
    object.isHolder = false;
    return KELA_OK;
}

uint32_t Script::askDevice(KELA_DEVICE_INFO_EX &device) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto answers = [&device](const KELA_DEVICE_INFO_EX &other) {
        return other.special.gige.currentIp == device.special.gige.currentIp;
    };
    for (const std::vector<KELA_DEVICE_INFO_EX> *devices : {&m_devicesBehindRouter, &m_devices}) {
        const auto match = std::find_if(devices->begin(), devices->end(), answers);
        if (match != devices->end()) {
            device = *match;
            return KELA_OK;
        }
    }
    return KELA_ERROR_TIMEOUT;
}

uint32_t Script::isAccessible(const KELA_DEVICE_INFO_EX &device, uint32_t mode, bool &accessible) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    accessible = false;
    const std::string serial = serialOf(device);
    if (m_pluggedSerials.count(serial) == 0) {
        return KELA_ERROR_UNREACHABLE;
    }
    accessible = mode == KELA_ACCESS_MONITOR || m_held.count(serial) == 0;
    return KELA_OK;
}

uint32_t Script::multicastStatus(const KELA_DEVICE_INFO_EX &device, bool &on) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::string serial = serialOf(device);
    on = m_streaming.count(serial) != 0;
    return m_pluggedSerials.count(serial) != 0 ? KELA_OK : KELA_ERROR_TIMEOUT;
}

uint32_t Script::nodeValue(const std::string &serial, const std::string &node, int64_t &value) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto known = m_nodes.find({serial, node});
    if (known == m_nodes.end()) {
        return KELA_ERROR_PARAMETER;
    }
    value = known->second;
    return KELA_OK;
}
