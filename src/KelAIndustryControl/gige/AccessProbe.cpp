// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/AccessProbe.h>

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/gige/BootstrapRegisters.h>
#include <KelAIndustryControl/gige/GvcpWire.h>

namespace kela::gige
{

bool AccessValue::isHeld() const
{
    return kind == Kind::Denied || (kind == Kind::Read && (privilege & kPrivilegeMask) != 0);
}

unsigned int AccessValue::allows(unsigned int accessMode, bool &isAllowed) const
{
    isAllowed = false;
    switch (kind) {
    case Kind::NotRead:
        return KELA_ERROR_UNREACHABLE;
    case Kind::NoAnswer:
        return KELA_ERROR_TIMEOUT;
    case Kind::Denied:
        return KELA_OK;
    case Kind::Read:
        break;
    }
    if (accessMode == KELA_ACCESS_MONITOR) {
        isAllowed = (privilege & kPrivilegeExclusive) == 0;
    } else {
        isAllowed = (privilege & kPrivilegeMask) == 0;
    }
    return KELA_OK;
}

std::optional<std::uint32_t> AccessProbe::nextRegister() const
{
    switch (m_step) {
    case Step::Privilege:
        return kRegisterControlPrivilege;
    case Step::Capability:
        return kRegisterGvcpCapability;
    case Step::Holder:
        return kRegisterPrimaryApplicationIp;
    case Step::StreamPort:
        return kRegisterStreamPort;
    case Step::Done:
        break;
    }
    return std::nullopt;
}

void AccessProbe::onValue(std::uint32_t value)
{
    m_hasAnswered = true;
    switch (m_step) {
    case Step::Privilege:
        m_value.kind = AccessValue::Kind::Read;
        m_value.privilege = value;
        break;
    case Step::Capability:
        m_capability = value;
        break;
    case Step::Holder:
        m_value.holder = value;
        break;
    case Step::StreamPort:
        m_value.isStreamPortRead = true;
        m_value.streamHostPort = value & kStreamPortMask;
        break;
    case Step::Done:
        break;
    }
    advance();
}

void AccessProbe::onRefused(std::uint16_t status)
{
    m_hasAnswered = true;
    if (m_step == Step::Privilege)
        m_value.kind = status == kStatusAccessDenied ? AccessValue::Kind::Denied : AccessValue::Kind::NoAnswer;
    // A camera without its capability register tells nothing of the optional ones; one that is busy may later.
    if (m_step == Step::Capability && status != kStatusBusy)
        m_capability = 0;
    advance();
}

void AccessProbe::onSilence()
{
    if (m_step == Step::Privilege)
        m_value.kind = AccessValue::Kind::NoAnswer;
    m_step = Step::Done;
}

void AccessProbe::advance()
{
    const bool tellsHolder = m_capability && (*m_capability >> kCapabilityBitPrimaryApplication & 1U) != 0;
    switch (m_step) {
    case Step::Privilege:
        if (m_value.kind != AccessValue::Kind::Read || !m_value.isHeld()) {
            m_step = Step::Done;
        } else if (!m_capability) {
            m_step = Step::Capability;
        } else {
            m_step = tellsHolder ? Step::Holder : Step::StreamPort;
        }
        break;
    case Step::Capability:
        m_step = tellsHolder ? Step::Holder : Step::StreamPort;
        break;
    case Step::Holder:
        m_step = Step::StreamPort;
        break;
    case Step::StreamPort:
    case Step::Done:
        m_step = Step::Done;
        break;
    }
}

} // namespace kela::gige
