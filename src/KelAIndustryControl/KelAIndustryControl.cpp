// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <KelAIndustryControl/core/Backends.h>
#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/core/RecordStore.h>

#include <map>
#include <mutex>
#include <optional>
#include <string>

using namespace kela;

struct KelAIndustryControl::Impl {
    CancelSignal cancel;
    Backends backends{cancel};

    // What the lists given out point to, by kind of enumeration.
    RecordStore<KELA_DEVICE_INFO_EX> devices;
    RecordStore<KELA_DEVICE_INFO_EX> devicesByRecord;
    RecordStore<KELA_DEVICE_INFO_EX> devicesByHandle;
    std::mutex interfacesMutex; // guards the map; each store belongs to the thread that enumerates
    std::map<std::string, RecordStore<KELA_GENTL_IF_INFO>> interfaces;

    std::mutex sessionMutex; // guards chosen and session
    std::optional<KELA_DEVICE_INFO_EX> chosen;
    std::unique_ptr<DeviceSession> session;

    /// The store of a producer; it stays where it is while the object lives.
    RecordStore<KELA_GENTL_IF_INFO> &interfacesOf(const std::string &producer)
    {
        const std::lock_guard lock(interfacesMutex);
        return interfaces[producer];
    }

    /// A record whose transport is not told is met as a GigE Vision one.
    TransportBackend *backendOf(const KELA_DEVICE_INFO_EX &info)
    {
        return backends.find(info.transport ? info.transport : KELA_INTERFACE_TYPE_GIGE);
    }
};

namespace
{

// No exception leaves the library: what can still throw is memory and threads running out.
template <typename Operation>
unsigned int guarded(Operation operation)
{
    try {
        return operation();
    } catch (...) {
        return KELA_ERROR_RESOURCE;
    }
}

bool isAccessMode(unsigned int mode)
{
    return mode == KELA_ACCESS_EXCLUSIVE || mode == KELA_ACCESS_CONTROL || mode == KELA_ACCESS_MONITOR;
}

bool isSingleTransport(unsigned int transport)
{
    return (transport & (transport - 1)) == 0;
}

std::string numberOf(void *handle)
{
    return std::to_string(reinterpret_cast<std::uintptr_t>(handle));
}

void append(std::vector<KELA_DEVICE_INFO_EX> &all, const std::vector<KELA_DEVICE_INFO_EX> &more)
{
    all.insert(all.end(), more.begin(), more.end());
}

unsigned int enumerateAll(Backends &backends, unsigned int transports, std::vector<KELA_DEVICE_INFO_EX> &found)
{
    unsigned int result = KELA_OK;
    for (unsigned int bit = 1; bit != 0 && bit <= transports; bit <<= 1) {
        TransportBackend *backend = (transports & bit) ? backends.find(bit) : nullptr;
        std::vector<KELA_DEVICE_INFO_EX> devices;
        const unsigned int code = backend ? backend->enumerate(devices) : KELA_OK;
        if (code == KELA_OK) {
            append(found, devices);
        } else if (result == KELA_OK) {
            result = code;
        }
    }
    return result;
}

} // namespace

KelAIndustryControl::KelAIndustryControl()
    : m_impl(std::make_unique<Impl>())
{
}

KelAIndustryControl::~KelAIndustryControl()
{
    m_impl->cancel.set();
}

unsigned int KelAIndustryControl::EnumDevices(unsigned int nInterfaceType, KELA_DEVICE_INFO_LIST *pList, bool)
{
    if (!pList)
        return KELA_ERROR_PARAMETER;
    *pList = {};
    if (m_impl->cancel.isSet())
        return KELA_ERROR_CANCELLED;
    return guarded([&] {
        std::vector<KELA_DEVICE_INFO_EX> found;
        const unsigned int result = enumerateAll(m_impl->backends, nInterfaceType, found);
        m_impl->devices.give(std::move(found), pList->devices, pList->count, "devices");
        return result;
    });
}

unsigned int KelAIndustryControl::EnumInterfacesByGenTL(KELA_GENTL_IF_INFO_LIST *pList, const char *strCtiPath)
{
    if (!pList)
        return KELA_ERROR_PARAMETER;
    *pList = {};
    if (!strCtiPath)
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        if (!backend)
            return KELA_OK;
        std::vector<KELA_GENTL_IF_INFO> found;
        const unsigned int result = backend->interfaces(strCtiPath, found);
        if (result != KELA_OK)
            return result;
        m_impl->interfacesOf(strCtiPath)
            .give(std::move(found), pList->interfaces, pList->count, "GenTL interfaces");
        return KELA_OK;
    });
}

unsigned int KelAIndustryControl::EnumDevicesByGenTL(KELA_GENTL_IF_INFO *pInterface,
                                                     KELA_DEVICE_INFO_LIST *pList)
{
    if (!pList)
        return KELA_ERROR_PARAMETER;
    *pList = {};
    if (!pInterface)
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        if (!backend)
            return KELA_OK;
        std::vector<KELA_DEVICE_INFO_EX> found;
        const unsigned int result = backend->devices(*pInterface, found);
        if (result == KELA_OK) {
            m_impl->devicesByRecord.give(std::move(found), pList->devices, pList->count,
                                         "devices of GenTL interface " + std::to_string(pInterface->number));
        }
        return result;
    });
}

unsigned int KelAIndustryControl::EnumDevicesByGenTLEx(void *hInterface, KELA_DEVICE_INFO_LIST *pList)
{
    if (!pList)
        return KELA_ERROR_PARAMETER;
    *pList = {};
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        if (!backend)
            return KELA_ERROR_HANDLE;
        std::vector<KELA_DEVICE_INFO_EX> found;
        const unsigned int result = backend->devices(hInterface, found);
        if (result == KELA_OK) {
            m_impl->devicesByHandle.give(std::move(found), pList->devices, pList->count,
                                         "devices of opened GenTL interface " + numberOf(hInterface));
        }
        return result;
    });
}

unsigned int KelAIndustryControl::UnloadGenTLLibrary(const char *strCtiPath)
{
    if (!strCtiPath)
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        return backend ? backend->unload(strCtiPath) : KELA_OK;
    });
}

unsigned int KelAIndustryControl::Init(KELA_DEVICE_INFO_EX *pInfo, bool)
{
    if (!pInfo || !isSingleTransport(pInfo->transport))
        return KELA_ERROR_PARAMETER;
    const std::lock_guard lock(m_impl->sessionMutex);
    if (m_impl->session)
        return KELA_ERROR_CALL_ORDER;
    m_impl->chosen = *pInfo;
    return KELA_OK;
}

unsigned int KelAIndustryControl::GetDeviceInfo(KELA_DEVICE_INFO_EX *pInfo)
{
    if (!pInfo || !isSingleTransport(pInfo->transport))
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        TransportBackend *backend = m_impl->backendOf(*pInfo);
        return backend ? backend->refresh(*pInfo) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::IsDeviceAccessible(KELA_DEVICE_INFO_EX *pInfo, unsigned int nAccessMode,
                                                     bool *pbAccessible)
{
    if (!pbAccessible)
        return KELA_ERROR_PARAMETER;
    *pbAccessible = false;
    if (!pInfo || !isSingleTransport(pInfo->transport) || !isAccessMode(nAccessMode))
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        TransportBackend *backend = m_impl->backendOf(*pInfo);
        return backend ? backend->isAccessible(*pInfo, nAccessMode, *pbAccessible) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::GetMulticastStatus(KELA_DEVICE_INFO_EX *pInfo, bool *pbOn)
{
    if (!pbOn)
        return KELA_ERROR_PARAMETER;
    *pbOn = false;
    if (!pInfo || !isSingleTransport(pInfo->transport))
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        TransportBackend *backend = m_impl->backendOf(*pInfo);
        return backend ? backend->multicastStatus(*pInfo, *pbOn) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::Connect(unsigned int nAccessMode)
{
    if (!isAccessMode(nAccessMode))
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        const std::lock_guard lock(m_impl->sessionMutex);
        if (!m_impl->chosen || m_impl->session)
            return KELA_ERROR_CALL_ORDER;
        TransportBackend *backend = m_impl->backendOf(*m_impl->chosen);
        return backend ? backend->open(*m_impl->chosen, nAccessMode, m_impl->session)
                       : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::DisConnect(bool)
{
    const std::lock_guard lock(m_impl->sessionMutex);
    if (!m_impl->session)
        return KELA_ERROR_CALL_ORDER;
    m_impl->session.reset();
    return KELA_OK;
}

unsigned int KelAIndustryControl::GetIntegerNodeValue(const char *strNode, KELCC_INTVALUE_EX_T *pValue, bool)
{
    if (!strNode || !pValue)
        return KELA_ERROR_PARAMETER;
    *pValue = {};
    return guarded([&]() -> unsigned int {
        const std::lock_guard lock(m_impl->sessionMutex);
        return m_impl->session ? m_impl->session->integerNode(strNode, *pValue) : KELA_ERROR_CALL_ORDER;
    });
}

unsigned int KelAIndustryControl::SetEnumAckMode(int nMode)
{
    if (nMode != 0 && nMode != 1)
        return KELA_ERROR_PARAMETER;
    setAcknowledgeMode(nMode);
    return KELA_OK;
}

unsigned int KelAIndustryControl::CancelEnum()
{
    m_impl->cancel.set();
    return KELA_OK;
}

unsigned int KelAIndustryControl::OpenGenTLInterface(const KELA_GENTL_IF_INFO *pInterface, void **phInterface)
{
    if (!phInterface)
        return KELA_ERROR_PARAMETER;
    *phInterface = nullptr;
    if (!pInterface)
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        return backend ? backend->openInterface(*pInterface, *phInterface) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::CloseGenTLInterface(void *hInterface)
{
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        return backend ? backend->closeInterface(hInterface) : KELA_ERROR_HANDLE;
    });
}

unsigned int KelAIndustryControl::GetGenTLProducerInfo(const char *strCtiPath, KELA_GENTL_PRODUCER_INFO *pInfo)
{
    if (!pInfo)
        return KELA_ERROR_PARAMETER;
    *pInfo = {};
    if (!strCtiPath)
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        GenTLBackend *backend = m_impl->backends.genTL();
        return backend ? backend->producerInfo(strCtiPath, *pInfo) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::ForceIp(const KELA_DEVICE_INFO_EX *pInfo, uint32_t address, uint32_t mask,
                                          uint32_t gateway)
{
    if (!pInfo || !isSingleTransport(pInfo->transport))
        return KELA_ERROR_PARAMETER;
    return guarded([&]() -> unsigned int {
        TransportBackend *backend = m_impl->backendOf(*pInfo);
        return backend ? backend->forceIp(*pInfo, address, mask, gateway) : KELA_ERROR_NOT_SUPPORTED;
    });
}

unsigned int KelAIndustryControl::SetLogSink(KELA_LOG_SINK sink, void *user)
{
    setLogSink(sink, user);
    return KELA_OK;
}
