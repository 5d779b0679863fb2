// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/Backends.h>

#include <KelAIndustryControl/cameralink/CameraLinkBackend.h>
#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/gentl/GenTLProducers.h>
#include <KelAIndustryControl/gige/GigeBackend.h>
#include <KelAIndustryControl/usb3/Usb3Backend.h>

#include <string>

namespace kela
{
namespace
{

std::unique_ptr<TransportBackend> makeBackend(unsigned int transport, const BackendContext &context)
{
    switch (transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return gige::makeBackend(context);
    case KELA_INTERFACE_TYPE_USB:
        return usb3::makeBackend(context);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return cameralink::makeBackend(context);
    default:
        return nullptr;
    }
}

std::unique_ptr<GenTLBackend> makeGenTLBackend(const BackendContext &context)
{
    return gentl::makeBackend(context);
}

bool isGenTLTransport(unsigned int transport)
{
    return transport == KELA_INTERFACE_TYPE_GENTL || transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
}

std::size_t bitIndex(unsigned int transport)
{
    std::size_t index = 0;
    while (transport >>= 1)
        ++index;
    return index;
}

} // namespace

TransportBackend *Backends::find(unsigned int transport)
{
    if (isGenTLTransport(transport))
        return genTL();
    bool isFirstTime = false;
    TransportBackend *backend = findLocked(transport, isFirstTime);
    if (!backend && isFirstTime)
        logLine(KELA_LOG_WARNING, "no device access for transport " + std::to_string(transport));
    return backend;
}

TransportBackend *Backends::findLocked(unsigned int transport, bool &isFirstTime)
{
    const std::lock_guard lock(m_mutex);
    Slot &slot = m_slots[bitIndex(transport)];
    isFirstTime = !slot.isTried;
    if (isFirstTime)
        slot.backend = makeBackend(transport, m_context);
    slot.isTried = true;
    return slot.backend.get();
}

GenTLBackend *Backends::genTL()
{
    bool isFirstTime = false;
    GenTLBackend *backend = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        isFirstTime = !m_isGenTLTried;
        if (isFirstTime)
            m_genTL = makeGenTLBackend(m_context);
        m_isGenTLTried = true;
        backend = m_genTL.get();
    }
    if (!backend && isFirstTime)
        logLine(KELA_LOG_WARNING, "no device access for GenTL producers");
    return backend;
}

void setAcknowledgeMode(int mode)
{
    gige::setBroadcastAnswers(mode == 1);
}

} // namespace kela
