// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/core/TransportBackend.h>

namespace kela
{

unsigned int TransportBackend::refresh(KELA_DEVICE_INFO_EX &)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int TransportBackend::isAccessible(const KELA_DEVICE_INFO_EX &, unsigned int, bool &)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int TransportBackend::multicastStatus(const KELA_DEVICE_INFO_EX &, bool &)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int TransportBackend::open(const KELA_DEVICE_INFO_EX &, unsigned int, std::unique_ptr<DeviceSession> &)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int TransportBackend::forceIp(const KELA_DEVICE_INFO_EX &, std::uint32_t, std::uint32_t, std::uint32_t)
{
    return KELA_ERROR_NOT_SUPPORTED;
}

unsigned int GenTLBackend::enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices)
{
    devices.clear();
    return KELA_OK;
}

} // namespace kela
