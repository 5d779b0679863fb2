// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/KelAIndustryControl.h>

struct KelAIndustryControl::Impl {
};

KelAIndustryControl::KelAIndustryControl() : m_impl(std::make_unique<Impl>()) {}

KelAIndustryControl::~KelAIndustryControl() = default;

unsigned int KelAIndustryControl::EnumDevices(unsigned int, KELA_DEVICE_INFO_LIST *pList, bool)
{
    if (!pList)
        return KELA_ERROR_PARAMETER;
    *pList = {};
    return KELA_OK;
}

unsigned int KelAIndustryControl::EnumInterfacesByGenTL(KELA_GENTL_IF_INFO_LIST *, const char *)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::EnumDevicesByGenTL(KELA_GENTL_IF_INFO *, KELA_DEVICE_INFO_LIST *)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::EnumDevicesByGenTLEx(void *, KELA_DEVICE_INFO_LIST *)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::UnloadGenTLLibrary(const char *) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::Init(KELA_DEVICE_INFO_EX *, bool) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::GetDeviceInfo(KELA_DEVICE_INFO_EX *) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::IsDeviceAccessible(KELA_DEVICE_INFO_EX *, unsigned int, bool *)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::GetMulticastStatus(KELA_DEVICE_INFO_EX *, bool *)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::Connect(unsigned int) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::DisConnect(bool) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::GetIntegerNodeValue(const char *, KELCC_INTVALUE_EX_T *, bool)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::SetEnumAckMode(int) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::CancelEnum() { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::OpenGenTLInterface(const KELA_GENTL_IF_INFO *, void **)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::CloseGenTLInterface(void *) { return KELA_ERROR_NOT_SUPPORTED; }

unsigned int KelAIndustryControl::ForceIp(const KELA_DEVICE_INFO_EX *, uint32_t, uint32_t, uint32_t)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int KelAIndustryControl::SetLogSink(KELA_LOG_SINK, void *) { return KELA_ERROR_NOT_SUPPORTED; }
