// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/KelAIndustryControl.h>
#include <KelAIndustryControl/KelARecords.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Operations of the device access, as the script names them.
enum class Operation {
    EnumDevices,
    EnumInterfacesByGenTL,
    EnumDevicesByGenTL,
    EnumDevicesByGenTLEx,
    UnloadGenTLLibrary,
    Init,
    GetDeviceInfo,
    IsDeviceAccessible,
    GetMulticastStatus,
    Connect,
    DisConnect,
    GetIntegerNodeValue,
    SetEnumAckMode,
    CancelEnum,
    OpenGenTLInterface,
    CloseGenTLInterface,
    GetGenTLProducerInfo,
    ForceIp,
};

/// One call that the device access received.
struct ScriptedCall {
    Operation operation;
    std::string subject; ///< serial number, producer path, interface identifier or node name
    int64_t argument;    ///< transports, access mode, acknowledge mode or address
    bool flag;           ///< the call's bool argument
    bool wasZeroed;      ///< the record to be filled came zeroed; true for calls that fill none
};

/// The script that the scripted device access plays: which cameras and producers there are, who holds
/// them, what fails and what hangs. One per process, shared by all KelAIndustryControl objects.
///
/// Get it from scriptedAccess(). A test calls reset() first.
///
/// Thread: any.
class ScriptedAccess
{
public:
    /// Back to a world without devices; forgets failures, stalls and recorded calls.
    virtual void reset() = 0;

    // Devices. A GenTL device (transport 16 or 32) hangs on the interface that its record names.

    /// Appends a device to what the enumerations give. The same serial number may be plugged twice.
    virtual void plug(const KELA_DEVICE_INFO_EX &device) = 0;
    /// Replaces the first device with the same serial number, in its place.
    virtual void replug(const KELA_DEVICE_INFO_EX &device) = 0;
    /// Removes every device with this serial number.
    virtual void unplug(const std::string &serial) = 0;
    /// A device that no discovery finds but that answers when it is asked by its address.
    virtual void plugBehindRouter(const KELA_DEVICE_INFO_EX &device) = 0;
    /// Another program holds the device: it is not accessible in modes 1 and 3.
    virtual void hold(const std::string &serial) = 0;
    virtual void letGo(const std::string &serial) = 0;
    /// Another program holds the device and streams: the multicast status is on, the nodes "GevSCDA" and
    /// "GevSCPHostPort" have these values.
    virtual void holdAndStream(const std::string &serial, uint32_t destination, uint32_t port) = 0;
    virtual void setNode(const std::string &serial, const std::string &node, int64_t value) = 0;
    /// Lets EnumDevices, EnumDevicesByGenTL and EnumInterfacesByGenTL tell this count; 0 = the true one.
    virtual void claimCount(uint32_t count) = 0;

    // GenTL. A path that was never given an interface or added is missing.

    virtual void addProducer(const std::string &path) = 0;
    /// What is known of a producer; one that nothing is said of answers as it should.
    virtual void describeProducer(const std::string &path, const KELA_GENTL_PRODUCER_INFO &info) = 0;
    virtual void plugInterface(const std::string &path, const KELA_GENTL_IF_INFO &interface) = 0;
    virtual void unplugInterface(const std::string &path, const std::string &identifier) = 0;
    /// A handle as a host gets it from OpenGenTLInterface; null when there is no such interface.
    virtual void *openInterface(const std::string &identifier, uint32_t number) = 0;

    // Failures. An empty subject means any.

    /// The next calls of an operation fail with this code.
    virtual void failNext(uint32_t code, Operation operation = Operation::EnumDevices, int times = 1) = 0;
    /// Every call of an operation on this subject fails with this code, until code 0 is given.
    virtual void fail(uint32_t code, Operation operation, const std::string &subject) = 0;

    /// The next calls of an operation hang until release(), or until their object is cancelled: then they
    /// give KELA_ERROR_CANCELLED.
    virtual void stall(Operation operation, const std::string &subject = std::string()) = 0;
    /// Waits until this many calls hang at the same time.
    /// @return false when they did not in time
    virtual bool waitUntilStalled(int calls = 1, int milliseconds = 10000) = 0;
    /// Lets all hanging calls go on and ends stall().
    virtual void release() = 0;

    // What happened.

    virtual std::vector<ScriptedCall> calls() const = 0;
    virtual std::vector<ScriptedCall> calls(Operation operation) const = 0;
    virtual std::size_t count(Operation operation) const = 0;
    virtual void forgetCalls() = 0;
    /// Benchmarks do without the record of calls.
    virtual void recordCalls(bool on) = 0;
    /// KelAIndustryControl objects that exist at the moment.
    virtual int objectCount() const = 0;

protected:
    ~ScriptedAccess() = default;
};

/// The script. In a program that links the shipped libraries it is found in the scripted
/// libKelAIndustryControl.so.1; the program ends with a message when the real one was loaded.
ScriptedAccess &scriptedAccess();
