// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GigeBackend.h>

#include <KelAIndustryControl/gige/AccessBook.h>
#include <KelAIndustryControl/gige/CameraAccess.h>
#include <KelAIndustryControl/gige/ControlSession.h>
#include <KelAIndustryControl/gige/Discovery.h>

namespace kela::gige
{
namespace
{

class GigeBackend final : public TransportBackend
{
public:
    explicit GigeBackend(const BackendContext &context)
        : m_cancel(context.cancel)
        , m_discovery(m_cancel, m_book)
    {
    }

    unsigned int enumerate(std::vector<KELA_DEVICE_INFO_EX> &devices) override
    {
        return m_discovery.run(devices);
    }

    unsigned int refresh(KELA_DEVICE_INFO_EX &info) override { return askDevice(m_cancel, info); }

    unsigned int isAccessible(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                              bool &isAccessible) override
    {
        AccessValue value;
        if (const auto fresh = m_book.fresh(info, Clock::now())) {
            value = *fresh;
        } else if (const unsigned int error = askAccess(m_cancel, info, false, value); error != KELA_OK) {
            return error;
        }
        return value.allows(accessMode, isAccessible);
    }

    unsigned int multicastStatus(const KELA_DEVICE_INFO_EX &info, bool &isOn) override
    {
        const auto fresh = m_book.fresh(info, Clock::now());
        AccessValue value = fresh.value_or(AccessValue{});
        if (fresh && value.kind == AccessValue::Kind::NotRead)
            return KELA_ERROR_UNREACHABLE;
        if (value.kind == AccessValue::Kind::NoAnswer)
            return KELA_ERROR_TIMEOUT;
        if (!value.isStreamPortRead && value.kind != AccessValue::Kind::Denied) {
            if (const unsigned int error = askAccess(m_cancel, info, true, value); error != KELA_OK)
                return error;
        }
        if (value.kind == AccessValue::Kind::Denied)
            return KELA_ERROR_IN_USE;
        isOn = value.streamHostPort != 0;
        return KELA_OK;
    }

    unsigned int open(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode,
                      std::unique_ptr<DeviceSession> &session) override
    {
        auto opened = std::make_unique<ControlSession>(m_cancel);
        const unsigned int result = opened->open(info, accessMode);
        if (result == KELA_OK)
            session = std::move(opened);
        return result;
    }

    unsigned int forceIp(const KELA_DEVICE_INFO_EX &info, std::uint32_t address, std::uint32_t mask,
                         std::uint32_t gateway) override;

private:
    const CancelSignal &m_cancel;
    AccessBook m_book;
    Discovery m_discovery;
};

// A mask has its ones in front.
bool isMask(std::uint32_t mask)
{
    const std::uint32_t host = ~mask;
    return mask != 0 && (host & (host + 1)) == 0;
}

// Address 0 asks the camera to start over with its configured method.
bool isForcible(std::uint32_t address, std::uint32_t mask)
{
    constexpr std::uint32_t kFirstMulticast = 0xE0000000;
    constexpr std::uint32_t kLoopbackNet = 127;
    if (address == 0)
        return true;
    const std::uint32_t host = address & ~mask;
    const bool isHostPart = mask >= 0xFFFFFFFE || (host != 0 && host != ~mask);
    return address < kFirstMulticast && address >> 24 != kLoopbackNet && isMask(mask) && isHostPart;
}

unsigned int GigeBackend::forceIp(const KELA_DEVICE_INFO_EX &info, std::uint32_t address, std::uint32_t mask,
                                  std::uint32_t gateway)
{
    const std::uint64_t hardwareAddress = keyOf(info).hardwareAddress;
    if (hardwareAddress == 0 || !isForcible(address, mask))
        return KELA_ERROR_PARAMETER;
    return sendForcedAddress(m_cancel, info, {hardwareAddress, address, mask, gateway});
}

} // namespace

std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context)
{
    return std::make_unique<GigeBackend>(context);
}

} // namespace kela::gige
