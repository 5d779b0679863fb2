// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ScriptedAccess.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <unordered_map>

/// What one KelAIndustryControl object knows. Guarded by the script's lock, but for the lists, which belong
/// to the thread that enumerates.
struct ScriptedObject {
    bool isCancelled = false;
    bool isConnected = false;
    bool isHolder = false; ///< of the chosen device
    std::string chosenSerial;
    std::set<std::string> usedProducers;
    std::set<std::string> unloadedProducers;
    std::vector<KELA_DEVICE_INFO_EX> devices;
    std::map<std::string, std::vector<KELA_DEVICE_INFO_EX>> devicesByInterface;
    std::map<std::string, std::vector<KELA_GENTL_IF_INFO>> interfacesByProducer;
};

/// The script's state and the answers of the device access to it.
class Script final : public ScriptedAccess
{
public:
    static Script &instance();

    void reset() override;
    void plug(const KELA_DEVICE_INFO_EX &device) override;
    void replug(const KELA_DEVICE_INFO_EX &device) override;
    void unplug(const std::string &serial) override;
    void plugBehindRouter(const KELA_DEVICE_INFO_EX &device) override;
    void hold(const std::string &serial) override;
    void letGo(const std::string &serial) override;
    void holdAndStream(const std::string &serial, uint32_t destination, uint32_t port) override;
    void setNode(const std::string &serial, const std::string &node, int64_t value) override;
    void claimCount(uint32_t count) override;
    void addProducer(const std::string &path) override;
    void describeProducer(const std::string &path, const KELA_GENTL_PRODUCER_INFO &info) override;
    void plugInterface(const std::string &path, const KELA_GENTL_IF_INFO &interface) override;
    void unplugInterface(const std::string &path, const std::string &identifier) override;
    void *openInterface(const std::string &identifier, uint32_t number) override;
    void failNext(uint32_t code, Operation operation, int times) override;
    void fail(uint32_t code, Operation operation, const std::string &subject) override;
    void stall(Operation operation, const std::string &subject) override;
    bool waitUntilStalled(int calls, int milliseconds) override;
    void release() override;
    std::vector<ScriptedCall> calls() const override;
    std::vector<ScriptedCall> calls(Operation operation) const override;
    std::size_t count(Operation operation) const override;
    void forgetCalls() override;
    void recordCalls(bool on) override;
    int objectCount() const override;

    void objectMade();
    void objectGone(ScriptedObject &object);

    /// Records a call, lets it hang and fail as the script says.
    /// @return 0 when it is to be answered
    uint32_t enter(ScriptedObject &object, Operation operation, std::string_view subject, int64_t argument = 0,
                   bool flag = false, bool wasZeroed = true);

    uint32_t devicesOf(ScriptedObject &object, uint32_t transports, KELA_DEVICE_INFO_LIST &list);
    uint32_t interfacesOf(ScriptedObject &object, const std::string &path, KELA_GENTL_IF_INFO_LIST &list);
    uint32_t devicesOfInterface(ScriptedObject &object, std::string_view identifier, uint32_t number,
                                KELA_DEVICE_INFO_LIST &list);
    uint32_t devicesOfHandle(ScriptedObject &object, void *handle, KELA_DEVICE_INFO_LIST &list);
    uint32_t unload(ScriptedObject &object, const std::string &path);
    void cancel(ScriptedObject &object);
    uint32_t connect(ScriptedObject &object, uint32_t mode);
    uint32_t disconnect(ScriptedObject &object);
    uint32_t askDevice(KELA_DEVICE_INFO_EX &device) const;
    uint32_t isAccessible(const KELA_DEVICE_INFO_EX &device, uint32_t mode, bool &accessible) const;
    uint32_t multicastStatus(const KELA_DEVICE_INFO_EX &device, bool &on) const;
    uint32_t nodeValue(const std::string &serial, const std::string &node, int64_t &value) const;
    bool closeInterface(void *handle);
    uint32_t producerInfo(const std::string &path, KELA_GENTL_PRODUCER_INFO &info) const;

private:
    struct Interface {
        std::string producer;
        std::string identifier;
        uint32_t number = 0;
    };

    struct Fault {
        uint32_t code = 0;
        int times = 0;
    };

    using Subject = std::pair<Operation, std::string>;

    bool isStalled(const Subject &subject) const;
    bool isUnloaded(const ScriptedObject &object, std::string_view identifier, uint32_t number) const;
    uint32_t takeFault(const Subject &subject);
    uint32_t claimed(std::size_t count) const;

    mutable std::mutex m_mutex; // guards everything below
    std::condition_variable m_changed;
    std::vector<KELA_DEVICE_INFO_EX> m_devices;
    std::unordered_map<std::string, int> m_pluggedSerials;
    std::vector<KELA_DEVICE_INFO_EX> m_devicesBehindRouter;
    std::set<std::string> m_held;
    std::set<std::string> m_streaming;
    std::map<std::pair<std::string, std::string>, int64_t> m_nodes;
    uint32_t m_claimedCount = 0;
    std::map<std::string, std::vector<KELA_GENTL_IF_INFO>> m_producers;
    std::map<std::string, KELA_GENTL_PRODUCER_INFO> m_producerInfos;
    std::map<const void *, Interface> m_handles;
    std::deque<char> m_handleCells; // their addresses are the handles; no handle is ever given twice
    std::map<Operation, Fault> m_nextFaults;
    std::map<Subject, uint32_t> m_faults;
    std::set<Subject> m_stalls;
    int m_stalledCalls = 0;
    std::vector<ScriptedCall> m_calls;
    bool m_isRecording = true;
    int m_objects = 0;
};
