// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/TransportBackend.h>
#include <KelAIndustryControl/gentl/ProducerTable.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace kela::gentl
{

/// The producers that one object uses. What it used ends with it; nothing here waits for a producer but
/// the listing and opening operations, these not longer than Producer::kLimit (and the trial of a file
/// that is met for the first time), and the destructor, a quarter of a second at most.
/// Thread: any.
class GenTLProducers : public GenTLBackend
{
public:
    explicit GenTLProducers(const BackendContext &context)
        : m_context(context)
    {
    }
    ~GenTLProducers() override;

    unsigned int interfaces(const char *producerPath, std::vector<KELA_GENTL_IF_INFO> &found) override;
    unsigned int devices(const KELA_GENTL_IF_INFO &interface, std::vector<KELA_DEVICE_INFO_EX> &found) override;
    unsigned int devices(void *interfaceHandle, std::vector<KELA_DEVICE_INFO_EX> &found) override;
    unsigned int unload(const char *producerPath) override;
    unsigned int openInterface(const KELA_GENTL_IF_INFO &interface, void *&handle) override;
    unsigned int closeInterface(void *handle) override;
    unsigned int producerInfo(const char *producerPath, KELA_GENTL_PRODUCER_INFO &info) override;

    /// Answers from the status that the producer gave with the device.
    unsigned int isAccessible(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                              bool &isAccessible) override;

private:
    using UsePtr = std::shared_ptr<Producer::Use>;

    /// An interface that a record or a handle means; without use when there is none to ask.
    struct Target {
        UsePtr use;
        std::string interfaceId;
    };

    UsePtr beginUse(const std::string &path, Producer &producer);
    bool isCurrent(const std::string &path, const UsePtr &use);
    bool isStale(void *handle, const Producer &producer);
    bool isGivenUp(const Producer &producer);
    Target targetOf(const KELA_GENTL_IF_INFO &interface);
    unsigned int devicesOf(const Target &target, unsigned int transport,
                           std::vector<KELA_DEVICE_INFO_EX> &found);

    const BackendContext m_context;
    std::mutex m_mutex;                                 // guards the rest
    std::map<std::string, UsePtr> m_uses;               // by path as the caller gave it
    std::set<std::uint32_t> m_used;                     // tokens of producers that were asked anything here
    std::set<std::uint32_t> m_givenUp;                  // tokens of producers unloaded through this object
    std::map<std::uint32_t, const void *> m_staleBelow; // by token: the first handle after the last unloading
};

/// The backend of one object.
std::unique_ptr<GenTLBackend> makeBackend(const BackendContext &context);

} // namespace kela::gentl
