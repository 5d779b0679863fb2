// SPDX-License-Identifier: Apache-2.0
// What a camera is, and how it is steered; SimulatedCamera_commands.cpp answers the wire.
#include "SimulatedCamera.h"

namespace kelsim
{

SimulatedCamera::SimulatedCamera(const CameraSettings &settings)
    : m_settings(settings)
    , m_registers(settings)
    , m_isPlugged(settings.plugged)
    , m_random(settings.place.address)
{
    applyStartState();
}

void SimulatedCamera::applyStartState()
{
    if (m_settings.heldBy) {
        hold(*m_settings.heldBy, m_settings.heldExclusively);
    }
    if (m_settings.multicastPort != 0) {
        openMulticast(m_settings.multicastGroup, m_settings.multicastPort);
    }
}

void SimulatedCamera::plug()
{
    if (m_isPlugged) {
        return;
    }
    m_registers = CameraRegisters(m_settings);
    m_holder = {};
    m_isHeldForGood = false;
    m_isPlugged = true;
}

void SimulatedCamera::hold(uint32_t address, bool isExclusive)
{
    grant(isExclusive ? kPrivilegeExclusive : kPrivilegeControl, {address, 50000});
    m_isHeldForGood = true;
}

void SimulatedCamera::release()
{
    closeControl();
}

void SimulatedCamera::openMulticast(uint32_t group, uint16_t port)
{
    m_registers.setValue(reg::kStreamDestination, port == 0 ? 0 : group);
    m_registers.setValue(reg::kStreamPort, port);
}

void SimulatedCamera::moveTo(const CameraPlace &place)
{
    m_settings.place = place;
    m_registers.setPlace(place);
}

void SimulatedCamera::rename(const std::string &name)
{
    m_settings.name = name;
    m_registers.setText(reg::kUserName, 16, name);
}

void SimulatedCamera::setPending(uint32_t milliseconds)
{
    m_settings.pendingMs = milliseconds;
    m_registers.setValue(reg::kConfiguration, milliseconds != 0 ? kConfigurationPending : 0);
}

std::optional<CameraPlace> SimulatedCamera::takeForcedPlace()
{
    const auto place = m_forcedPlace;
    m_forcedPlace.reset();
    return place;
}

uint32_t SimulatedCamera::privilege(Clock::time_point now)
{
    const uint32_t current = m_registers.value(reg::kControlPrivilege);
    const bool beats = (m_registers.value(reg::kConfiguration) & kConfigurationHeartbeatOff) == 0;
    const auto timeout = std::chrono::milliseconds(m_registers.value(reg::kHeartbeatTimeout));
    if (current == 0 || m_isHeldForGood || !beats || now - m_holderHeard <= timeout) {
        return current;
    }
    closeControl();
    return 0;
}

void SimulatedCamera::grant(uint32_t privilege, const Endpoint &to)
{
    m_holder = to;
    m_isHeldForGood = false;
    m_registers.setValue(reg::kControlPrivilege, privilege);
    m_registers.setValue(reg::kPrimaryIp, to.address);
    m_registers.setValue(reg::kPrimaryPort, to.port);
}

// A device whose controller is gone stops and resets its channels.
void SimulatedCamera::closeControl()
{
    grant(0, {});
    m_registers.setValue(reg::kStreamPort, 0);
    m_registers.setValue(reg::kStreamDestination, 0);
    m_registers.setValue(reg::kMessagePort, 0);
}

} // namespace kelsim
