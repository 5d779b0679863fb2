// SPDX-License-Identifier: Apache-2.0
// The device access, played from the script.

#include <KelAIndustryControl/KelAIndustryControl.h>

#include "Script.h"

#include <algorithm>

struct KelAIndustryControl::Impl {
    ScriptedObject object;
};

namespace
{

std::string_view serialOf(const KELA_DEVICE_INFO_EX *device)
{
    return device == nullptr ? std::string_view() : fixedText(device->serialNumber);
}

std::string_view pathOf(const char *path)
{
    return path == nullptr ? std::string_view() : std::string_view(path);
}

template <typename Record>
bool isZero(const Record &record)
{
    const auto *bytes = static_cast<const unsigned char *>(static_cast<const void *>(&record));
    return std::all_of(bytes, bytes + sizeof(record), [](unsigned char byte) { return byte == 0; });
}

} // namespace

KelAIndustryControl::KelAIndustryControl()
    : m_impl(std::make_unique<Impl>())
{
    Script::instance().objectMade();
}

KelAIndustryControl::~KelAIndustryControl()
{
    Script::instance().objectGone(m_impl->object);
}

unsigned int KelAIndustryControl::EnumDevices(unsigned int nInterfaceType, KELA_DEVICE_INFO_LIST *pList,
                                              bool bLibraryFlag)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::EnumDevices, std::string_view(),
                                        nInterfaceType, bLibraryFlag, isZero(*pList));
    return fault != KELA_OK ? fault : script.devicesOf(m_impl->object, nInterfaceType, *pList);
}

unsigned int KelAIndustryControl::EnumInterfacesByGenTL(KELA_GENTL_IF_INFO_LIST *pList, const char *strCtiPath)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::EnumInterfacesByGenTL, pathOf(strCtiPath), 0,
                                        false, isZero(*pList));
    return fault != KELA_OK ? fault
                            : script.interfacesOf(m_impl->object, std::string(pathOf(strCtiPath)), *pList);
}

unsigned int KelAIndustryControl::EnumDevicesByGenTL(KELA_GENTL_IF_INFO *pInterface,
                                                     KELA_DEVICE_INFO_LIST *pList)
{
    Script &script = Script::instance();
    const std::string_view identifier = fixedText(pInterface->identifier);
    const uint32_t fault = script.enter(m_impl->object, Operation::EnumDevicesByGenTL, identifier,
                                        pInterface->number, false, isZero(*pList));
    return fault != KELA_OK ? fault
                            : script.devicesOfInterface(m_impl->object, identifier, pInterface->number, *pList);
}

unsigned int KelAIndustryControl::EnumDevicesByGenTLEx(void *hInterface, KELA_DEVICE_INFO_LIST *pList)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::EnumDevicesByGenTLEx, std::string_view(), 0,
                                        false, isZero(*pList));
    return fault != KELA_OK ? fault : script.devicesOfHandle(m_impl->object, hInterface, *pList);
}

unsigned int KelAIndustryControl::UnloadGenTLLibrary(const char *strCtiPath)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::UnloadGenTLLibrary, pathOf(strCtiPath));
    const uint32_t result = script.unload(m_impl->object, std::string(pathOf(strCtiPath)));
    return fault != KELA_OK ? fault : result;
}

unsigned int KelAIndustryControl::Init(KELA_DEVICE_INFO_EX *pInfo, bool bReserved)
{
    Script &script = Script::instance();
    m_impl->object.chosenSerial = serialOf(pInfo);
    return script.enter(m_impl->object, Operation::Init, serialOf(pInfo), 0, bReserved);
}

unsigned int KelAIndustryControl::GetDeviceInfo(KELA_DEVICE_INFO_EX *pInfo)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::GetDeviceInfo, serialOf(pInfo));
    return fault != KELA_OK ? fault : script.askDevice(*pInfo);
}

unsigned int KelAIndustryControl::IsDeviceAccessible(KELA_DEVICE_INFO_EX *pInfo, unsigned int nAccessMode,
                                                     bool *pbAccessible)
{
    Script &script = Script::instance();
    *pbAccessible = false;
    const uint32_t fault =
        script.enter(m_impl->object, Operation::IsDeviceAccessible, serialOf(pInfo), nAccessMode);
    return fault != KELA_OK ? fault : script.isAccessible(*pInfo, nAccessMode, *pbAccessible);
}

unsigned int KelAIndustryControl::GetMulticastStatus(KELA_DEVICE_INFO_EX *pInfo, bool *pbOn)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::GetMulticastStatus, serialOf(pInfo));
    // A caller that does not look at the result is to meet the wrong status.
    const uint32_t result = script.multicastStatus(*pInfo, *pbOn);
    return fault != KELA_OK ? fault : result;
}

unsigned int KelAIndustryControl::Connect(unsigned int nAccessMode)
{
    Script &script = Script::instance();
    const uint32_t fault =
        script.enter(m_impl->object, Operation::Connect, m_impl->object.chosenSerial, nAccessMode);
    return fault != KELA_OK ? fault : script.connect(m_impl->object, nAccessMode);
}

unsigned int KelAIndustryControl::DisConnect(bool bReserved)
{
    Script &script = Script::instance();
    const uint32_t fault =
        script.enter(m_impl->object, Operation::DisConnect, m_impl->object.chosenSerial, 0, bReserved);
    const uint32_t result = script.disconnect(m_impl->object);
    return fault != KELA_OK ? fault : result;
}

unsigned int KelAIndustryControl::GetIntegerNodeValue(const char *strNode, KELCC_INTVALUE_EX_T *pValue,
                                                      bool bReserved)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::GetIntegerNodeValue, pathOf(strNode), 0,
                                        bReserved, isZero(*pValue));
    if (fault != KELA_OK) {
        return fault;
    }
    return m_impl->object.isConnected ? script.nodeValue(m_impl->object.chosenSerial, strNode, pValue->current)
                                      : static_cast<uint32_t>(KELA_ERROR_CALL_ORDER);
}

unsigned int KelAIndustryControl::SetEnumAckMode(int nMode)
{
    return Script::instance().enter(m_impl->object, Operation::SetEnumAckMode, std::string_view(), nMode);
}

unsigned int KelAIndustryControl::CancelEnum()
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::CancelEnum, std::string_view());
    script.cancel(m_impl->object);
    return fault;
}

unsigned int KelAIndustryControl::OpenGenTLInterface(const KELA_GENTL_IF_INFO *pInterface, void **phInterface)
{
    Script &script = Script::instance();
    *phInterface = nullptr;
    const std::string identifier(fixedText(pInterface->identifier));
    const uint32_t fault =
        script.enter(m_impl->object, Operation::OpenGenTLInterface, identifier, pInterface->number);
    if (fault != KELA_OK) {
        return fault;
    }
    *phInterface = script.openInterface(identifier, pInterface->number);
    return *phInterface != nullptr ? KELA_OK : KELA_ERROR_HANDLE;
}

unsigned int KelAIndustryControl::CloseGenTLInterface(void *hInterface)
{
    Script &script = Script::instance();
    const uint32_t fault = script.enter(m_impl->object, Operation::CloseGenTLInterface, std::string_view());
    return fault != KELA_OK ? fault : script.closeInterface(hInterface) ? KELA_OK : KELA_ERROR_HANDLE;
}

unsigned int KelAIndustryControl::GetGenTLProducerInfo(const char *strCtiPath, KELA_GENTL_PRODUCER_INFO *pInfo)
{
    Script &script = Script::instance();
    *pInfo = {};
    const uint32_t fault = script.enter(m_impl->object, Operation::GetGenTLProducerInfo, pathOf(strCtiPath));
    return fault != KELA_OK ? fault : script.producerInfo(std::string(pathOf(strCtiPath)), *pInfo);
}

unsigned int KelAIndustryControl::ForceIp(const KELA_DEVICE_INFO_EX *pInfo, uint32_t address, uint32_t mask,
                                          uint32_t gateway)
{
    static_cast<void>(mask);
    static_cast<void>(gateway);
    return Script::instance().enter(m_impl->object, Operation::ForceIp, serialOf(pInfo), address);
}

unsigned int KelAIndustryControl::SetLogSink(KELA_LOG_SINK sink, void *user)
{
    static_cast<void>(sink);
    static_cast<void>(user);
    return KELA_OK;
}
