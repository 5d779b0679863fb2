// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/KelARecords.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

struct KELA_GENTL_PRODUCER_INFO;

/// @file
/// What a transport provides. A backend belongs to one KelAIndustryControl object, comes into being on
/// first use and is known to core/Backends.cpp alone. Every operation returns 0 or a KELA_ERROR; out
/// arguments are reset by the caller. What a transport has not, it leaves as it is here.

namespace kela
{

class CancelSignal;

/// What every backend gets from the object it belongs to.
struct BackendContext {
    const CancelSignal &cancel; ///< ends every wait with KELA_ERROR_CANCELLED; outlives the backend
};

/// A device that is open. Its destructor gives the device back, also after a cancel.
/// Thread: one at a time.
class DeviceSession
{
public:
    virtual ~DeviceSession() = default;

    /// @param name  standard feature name; unknown ones give KELA_ERROR_PARAMETER
    virtual unsigned int integerNode(std::string_view name, KELCC_INTVALUE_EX_T &value) = 0;
};

/// The devices of one transport.
/// Thread: enumerate() on one thread at a time; meanwhile any thread may call the other operations,
/// which never wait for it.
class TransportBackend
{
public:
    virtual ~TransportBackend() = default;

    /// Fills @p devices in a stable order (by identity), every record zeroed first. More than 256 may be
    /// given: the caller leaves out the rest and logs their number.
    virtual unsigned int enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices) = 0;

    /// Asks one device again and refreshes its record.
    virtual unsigned int refresh(KELA_DEVICE_INFO_EX &info);

    /// @param accessMode  a KELA_ACCESS_MODE, checked by the caller
    virtual unsigned int isAccessible(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                                      bool &isAccessible);

    virtual unsigned int multicastStatus(const KELA_DEVICE_INFO_EX &info, bool &isOn);

    virtual unsigned int open(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                              std::unique_ptr<DeviceSession> &session);

    virtual unsigned int forceIp(const KELA_DEVICE_INFO_EX &info, std::uint32_t address, std::uint32_t mask,
                                 std::uint32_t gateway);
};

/// What the producers of GenTL add. enumerate() gives nothing: their devices are listed per interface.
class GenTLBackend : public TransportBackend
{
public:
    unsigned int enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices) override;

    virtual unsigned int interfaces(const char *producerPath, std::vector<KELA_GENTL_IF_INFO> &found) = 0;
    virtual unsigned int devices(const KELA_GENTL_IF_INFO &interface,
                                 std::vector<KELA_DEVICE_INFO_EX> &found) = 0;
    virtual unsigned int devices(void *interfaceHandle, std::vector<KELA_DEVICE_INFO_EX> &found) = 0;

    /// Thread: any, also while another operation waits for the producer.
    virtual unsigned int unload(const char *producerPath) = 0;
    virtual unsigned int openInterface(const KELA_GENTL_IF_INFO &interface, void *&handle) = 0;
    virtual unsigned int closeInterface(void *handle) = 0;

    /// Tells what is known of a producer; never waits for one.
    virtual unsigned int producerInfo(const char *producerPath, KELA_GENTL_PRODUCER_INFO &info) = 0;
};

} // namespace kela
