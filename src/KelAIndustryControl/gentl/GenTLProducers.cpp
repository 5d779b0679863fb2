// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gentl/GenTLProducers.h>

#include <KelAIndustryControl/gentl/GenTLRecords.h>
#include <KelAIndustryControl/gentl/Identifiers.h>
#include <KelAIndustryControl/gentl/TrialLoad.h>

#include <algorithm>
#include <utility>

namespace kela::gentl
{
namespace
{

void closeAll(const std::vector<InterfaceHandles::Entry> &entries)
{
    for (const InterfaceHandles::Entry &entry : entries)
        entry.use->producer().releaseInterface(entry.interfaceId);
}

} // namespace

GenTLProducers::~GenTLProducers()
{
    closeAll(InterfaceHandles::removeAll(this, nullptr));
    m_uses.clear();
    // The object often goes just before its process: a producer that closes as it should gets the moment
    // that it needs for that, or the end of the process would meet it half closed.
    const TimePoint deadline = Clock::now() + Producer::kMoment;
    for (const std::uint32_t token : m_used)
        ProducerTable::find(token)->waitClosed(deadline);
}

unsigned int GenTLProducers::interfaces(const char *producerPath, std::vector<KELA_GENTL_IF_INFO> &found)
{
    if (m_context.cancel.isSet())
        return KELA_ERROR_CANCELLED;
    const auto file = ProducerFile::of(producerPath);
    if (!file)
        return KELA_ERROR_PRODUCER_MISSING;
    Producer &producer = ProducerTable::producerOf(*file);
    const UsePtr use = beginUse(producerPath, producer);
    unsigned int code = producer.isLoaded() ? KELA_OK : tryProducer(*file, m_context.cancel);
    if (code != KELA_OK)
        return code;
    // Given up meanwhile: then it must not be loaded, and what it told is of no use.
    if (!isCurrent(producerPath, use))
        return KELA_ERROR_HANDLE;
    std::vector<InterfaceFacts> interfaces;
    code = producer.listInterfaces(m_context.cancel, interfaces);
    if (code == KELA_OK && !isCurrent(producerPath, use))
        code = KELA_ERROR_HANDLE;
    if (code != KELA_OK)
        return code;
    for (const InterfaceFacts &facts : interfaces)
        found.push_back(interfaceRecord(producer, facts));
    return KELA_OK;
}

GenTLProducers::UsePtr GenTLProducers::beginUse(const std::string &path, Producer &producer)
{
    UsePtr replaced; // destroyed behind the lock
    const std::lock_guard lock(m_mutex);
    UsePtr &use = m_uses[path];
    if (!use || &use->producer() != &producer)
        replaced = std::exchange(use, std::make_shared<Producer::Use>(producer));
    m_used.insert(producer.token());
    m_givenUp.erase(producer.token());
    return use;
}

bool GenTLProducers::isCurrent(const std::string &path, const UsePtr &use)
{
    const std::lock_guard lock(m_mutex);
    const auto current = m_uses.find(path);
    return current != m_uses.end() && current->second == use;
}

bool GenTLProducers::isGivenUp(const Producer &producer)
{
    const std::lock_guard lock(m_mutex);
    return m_givenUp.count(producer.token()) != 0;
}

// Handles from before the producer was given up stay refused when it is taken into use again.
bool GenTLProducers::isStale(void *handle, const Producer &producer)
{
    const std::lock_guard lock(m_mutex);
    const auto below = m_staleBelow.find(producer.token());
    return below != m_staleBelow.end() && std::less<const void *>()(handle, below->second);
}

GenTLProducers::Target GenTLProducers::targetOf(const KELA_GENTL_IF_INFO &interface)
{
    Producer *const producer = ProducerTable::find(interface.producerToken);
    if (!producer || isGivenUp(*producer))
        return {};
    const auto known = InterfaceNumbers::interfaceOf(interface.number);
    const bool isMeant = known && known->producerFile == producer->file() &&
                         recordIdentifier(known->identifier) == fixedText(interface.identifier);
    if (!isMeant)
        return {};
    auto use = std::make_shared<Producer::Use>(*producer);
    // A record does not load what was unloaded.
    if (!producer->isLoaded())
        return {};
    return {std::move(use), known->identifier};
}

unsigned int GenTLProducers::devicesOf(const Target &target, unsigned int transport,
                                       std::vector<KELA_DEVICE_INFO_EX> &found)
{
    if (!target.use)
        return KELA_ERROR_HANDLE;
    Producer &producer = target.use->producer();
    std::vector<DeviceFacts> devices;
    const unsigned int code = producer.listDevices(m_context.cancel, target.interfaceId, devices);
    if (code != KELA_OK)
        return code;
    if (isGivenUp(producer))
        return KELA_ERROR_HANDLE;
    for (const DeviceFacts &facts : devices)
        found.push_back(deviceRecord(producer, target.interfaceId, transport, facts));
    return KELA_OK;
}

unsigned int GenTLProducers::devices(const KELA_GENTL_IF_INFO &interface,
                                     std::vector<KELA_DEVICE_INFO_EX> &found)
{
    return devicesOf(targetOf(interface), KELA_INTERFACE_TYPE_GENTL_INTERFACE, found);
}

unsigned int GenTLProducers::devices(void *interfaceHandle, std::vector<KELA_DEVICE_INFO_EX> &found)
{
    const InterfaceHandles::Entry entry = InterfaceHandles::find(interfaceHandle);
    if (!entry.use || isGivenUp(entry.use->producer()) || isStale(interfaceHandle, entry.use->producer()))
        return KELA_ERROR_HANDLE;
    const unsigned int code = devicesOf({entry.use, entry.interfaceId}, KELA_INTERFACE_TYPE_GENTL, found);
    // Given up meanwhile.
    if (code == KELA_OK && isStale(interfaceHandle, entry.use->producer())) {
        found.clear();
        return KELA_ERROR_HANDLE;
    }
    return code;
}

unsigned int GenTLProducers::unload(const char *producerPath)
{
    UsePtr use;
    {
        const std::lock_guard lock(m_mutex);
        const auto used = m_uses.find(producerPath);
        if (used == m_uses.end())
            return KELA_ERROR_CALL_ORDER;
        use = std::move(used->second);
        m_uses.erase(used);
        const bool isUsedByAnotherPath = std::any_of(m_uses.begin(), m_uses.end(), [&](const auto &other) {
            return &other.second->producer() == &use->producer();
        });
        if (isUsedByAnotherPath)
            return KELA_OK;
        m_givenUp.insert(use->producer().token());
        m_staleBelow[use->producer().token()] = InterfaceHandles::next();
    }
    closeAll(InterfaceHandles::removeAll(this, &use->producer()));
    return KELA_OK;
}

unsigned int GenTLProducers::openInterface(const KELA_GENTL_IF_INFO &interface, void *&handle)
{
    const Target target = targetOf(interface);
    if (!target.use)
        return KELA_ERROR_HANDLE;
    {
        const std::lock_guard lock(m_mutex);
        m_used.insert(target.use->producer().token());
    }
    const unsigned int code = target.use->producer().holdInterface(m_context.cancel, target.interfaceId);
    if (code == KELA_OK)
        handle = InterfaceHandles::add({target.use, target.interfaceId, this});
    return code;
}

unsigned int GenTLProducers::closeInterface(void *handle)
{
    const InterfaceHandles::Entry entry = InterfaceHandles::remove(handle);
    if (!entry.use)
        return KELA_ERROR_HANDLE;
    entry.use->producer().releaseInterface(entry.interfaceId);
    return KELA_OK;
}

unsigned int GenTLProducers::producerInfo(const char *producerPath, KELA_GENTL_PRODUCER_INFO &info)
{
    const auto file = ProducerFile::of(producerPath);
    if (!file)
        return KELA_ERROR_PRODUCER_MISSING;
    const Producer *const producer = ProducerTable::known(*file);
    fillProducerInfo(knownVerdict(*file), producer ? producer->condition() : Producer::Condition(), info);
    return KELA_OK;
}

unsigned int GenTLProducers::isAccessible(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                                          bool &isAccessible)
{
    const std::uint32_t status = info.special.genTL.accessStatus;
    if (status == DEVICE_ACCESS_STATUS_UNKNOWN)
        return KELA_ERROR_NOT_SUPPORTED;
    isAccessible = status == DEVICE_ACCESS_STATUS_READWRITE ||
                   (status == DEVICE_ACCESS_STATUS_READONLY && accessMode == KELA_ACCESS_MONITOR);
    return KELA_OK;
}

std::unique_ptr<GenTLBackend> makeBackend(const BackendContext &context)
{
    return std::make_unique<GenTLProducers>(context);
}

} // namespace kela::gentl
