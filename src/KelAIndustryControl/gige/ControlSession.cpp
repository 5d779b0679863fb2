// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/ControlSession.h>

#include <KelAIndustryControl/core/Log.h>
#include <KelAIndustryControl/gige/BootstrapRegisters.h>
#include <KelAIndustryControl/gige/CameraAccess.h>

#include <algorithm>

namespace kela::gige
{
namespace
{

constexpr RetryPlan kSessionPlan{Milliseconds{250}, 3};
constexpr RetryPlan kReleasePlan{Milliseconds{100}, 3};
constexpr std::uint32_t kDefaultHeartbeatTimeout = 3000;

// A third of what the camera allows, so that one lost heartbeat does no harm.
Milliseconds heartbeatPeriod(std::uint32_t timeoutMilliseconds)
{
    return std::clamp(Milliseconds(timeoutMilliseconds / 3), Milliseconds{50}, Milliseconds{5000});
}

} // namespace

ControlSession::~ControlSession()
{
    m_stop.set();
    if (m_heartbeat.joinable())
        m_heartbeat.join();
    release();
}

unsigned int ControlSession::open(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode)
{
    if (info.special.gige.currentIp == 0)
        return KELA_ERROR_PARAMETER;
    const Cards cards = readCards().value_or(Cards{});
    m_name = printable(fixedText(info.serialNumber)) + " at " + dotted(info.special.gige.currentIp);
    unsigned int result = m_client.open(routeOf(cards, info));
    if (result != KELA_OK)
        return result;
    std::uint32_t privilege = 0;
    result = m_client.readRegister(kRegisterControlPrivilege, privilege, kSessionPlan);
    if (result != KELA_OK || accessMode == KELA_ACCESS_MONITOR)
        return result;
    if ((privilege & kPrivilegeMask) != 0)
        return KELA_ERROR_IN_USE;
    return takePrivilege(accessMode);
}

unsigned int ControlSession::takePrivilege(unsigned int accessMode)
{
    const std::uint32_t wanted = accessMode == KELA_ACCESS_EXCLUSIVE ? kPrivilegeExclusive : kPrivilegeControl;
    const unsigned int written = m_client.writeRegister(kRegisterControlPrivilege, wanted, kSessionPlan);
    std::uint32_t privilege = 0;
    const unsigned int read = m_client.readRegister(kRegisterControlPrivilege, privilege, kSessionPlan);
    if (written == KELA_ERROR_TIMEOUT && read == KELA_OK && (privilege & kPrivilegeMask) != 0) {
        // Some devices refuse by saying nothing. Or the answers were lost and the camera is ours: it is given
        // back then; from anybody else's hands it does not let this take it.
        m_client.writeAndForget(kRegisterControlPrivilege, 0);
        return KELA_ERROR_IN_USE;
    }
    if (written != KELA_OK)
        return written;
    m_privilege = wanted;
    if (read != KELA_OK)
        return read;
    if ((privilege & kPrivilegeMask) != wanted)
        return KELA_ERROR_IN_USE;

    std::uint32_t timeout = kDefaultHeartbeatTimeout;
    if (m_client.readRegister(kRegisterHeartbeatTimeout, timeout, kSessionPlan) != KELA_OK || timeout == 0)
        timeout = kDefaultHeartbeatTimeout;
    m_heartbeat = std::thread([this, period = heartbeatPeriod(timeout)] { keepAlive(period); });
    return KELA_OK;
}

void ControlSession::keepAlive(Milliseconds period)
{
    const RetryPlan plan{std::max(period / 3, Milliseconds{20}), 2};
    bool wasSilent = false;
    for (TimePoint next = Clock::now() + period; !m_stop.waitUntil(next); next += period) {
        std::uint32_t privilege = 0;
        const unsigned int result = m_client.readRegister(kRegisterControlPrivilege, privilege, plan, &m_stop);
        if (result == KELA_ERROR_CANCELLED)
            return;
        const bool isSilent = result == KELA_ERROR_TIMEOUT || result == KELA_ERROR_UNREACHABLE;
        if (isSilent && !wasSilent)
            logLine(KELA_LOG_WARNING, "gige: camera " + m_name + " does not answer its heartbeat");
        wasSilent = isSilent;
        if (result == KELA_ERROR_IN_USE || (result == KELA_OK && (privilege & kPrivilegeMask) != m_privilege)) {
            m_isLost.store(true);
            logLine(KELA_LOG_WARNING, "gige: control of camera " + m_name + " was lost");
            return;
        }
        // A silence has cost its time; heartbeats are not made up for.
        next = std::max(next, Clock::now() - period);
    }
}

void ControlSession::release()
{
    if (m_privilege == 0 || m_isLost.load())
        return;
    if (m_client.writeRegister(kRegisterControlPrivilege, 0, kReleasePlan) != KELA_ERROR_CANCELLED)
        return;
    // Nothing is waited for any more; the second one covers the loss of the first.
    m_client.writeAndForget(kRegisterControlPrivilege, 0);
    m_client.writeAndForget(kRegisterControlPrivilege, 0);
}

unsigned int ControlSession::integerNode(std::string_view name, KELCC_INTVALUE_EX_T &value)
{
    const IntegerNode *node = findIntegerNode(name);
    if (!node)
        return KELA_ERROR_PARAMETER;
    if (node->capabilityBit) {
        if (const unsigned int error = requireCapability(*node->capabilityBit); error != KELA_OK)
            return error;
    }
    std::uint64_t registers = 0;
    unsigned int result = KELA_OK;
    if (node->spansTwoRegisters()) {
        result = readTwoRegisters(node->address, registers);
    } else {
        std::uint32_t word = 0;
        result = m_client.readRegister(node->address, word, kSessionPlan);
        registers = word;
    }
    if (result != KELA_OK)
        return result;
    value.current = node->valueIn(registers);
    value.minimum = node->minimum;
    value.maximum = node->maximum();
    value.increment = node->increment;
    return KELA_OK;
}

// In one command, so that both halves are of the same moment.
unsigned int ControlSession::readTwoRegisters(std::uint32_t address, std::uint64_t &value)
{
    struct Pair {
        Be32 high;
        Be32 low;
    };
    Datagram data;
    const unsigned int result = m_client.readMemory(address, sizeof(Pair), data, kSessionPlan);
    if (result != KELA_OK)
        return result;
    const auto pair = readLayout<Pair>({data.data(), data.size()});
    if (!pair)
        return KELA_ERROR_PROTOCOL;
    value = static_cast<std::uint64_t>(pair->high.value()) << 32 | pair->low.value();
    return KELA_OK;
}

unsigned int ControlSession::requireCapability(unsigned int bit)
{
    if (!m_capability) {
        std::uint32_t capability = 0;
        const unsigned int result = m_client.readRegister(kRegisterGvcpCapability, capability, kSessionPlan);
        if (result != KELA_OK)
            return result;
        m_capability = capability;
    }
    return (*m_capability >> bit & 1U) != 0 ? KELA_OK : KELA_ERROR_NOT_SUPPORTED;
}

} // namespace kela::gige
