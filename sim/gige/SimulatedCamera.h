// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraFaults.h"
#include "CameraRegisters.h"
#include "CameraSettings.h"
#include "GvcpFormat.h"

#include <chrono>
#include <map>
#include <optional>
#include <random>
#include <vector>

namespace kelsim
{

using Clock = std::chrono::steady_clock;

/// A datagram that reached a camera.
struct Datagram {
    const uint8_t *data = nullptr;
    std::size_t size = 0;
    Endpoint from;
    bool isBroadcast = false;
};

/// One GigE Vision camera without its wire: datagrams in, answers out. Time comes with each call.
class SimulatedCamera
{
public:
    explicit SimulatedCamera(const CameraSettings &settings);

    const CameraSettings &settings() const { return m_settings; }
    const CameraPlace &place() const { return m_settings.place; }
    bool isPlugged() const { return m_isPlugged; }
    CameraFaults &faults() { return m_faults; }

    /// What the camera answers; nothing while it is unplugged.
    std::vector<Answer> receive(const Datagram &datagram, Clock::time_point now);

    /// Plugging switches the camera on: nobody holds it, registers are as at the start.
    void plug();
    void unplug() { m_isPlugged = false; }

    /// Another host takes the camera, and keeps it until release().
    void hold(uint32_t address, bool isExclusive);
    void release();

    /// The holder streams to a group; port 0 closes the stream.
    void openMulticast(uint32_t group, uint16_t port);

    void moveTo(const CameraPlace &place);
    void rename(const std::string &name);
    void setPending(uint32_t milliseconds);

    /// The place that a FORCEIP command has asked for since the last call.
    std::optional<CameraPlace> takeForcedPlace();

    /// The control privilege as it stands now, and who has it. Ends it when the heartbeat has run out.
    uint32_t privilege(Clock::time_point now);
    Endpoint holder() const { return m_holder; }

    uint32_t registerValue(uint32_t address) const { return m_registers.value(address); }

    /// Commands received, by code.
    const std::map<uint16_t, unsigned int> &received() const { return m_received; }

private:
    struct Reply {
        Status status = Status::Success;
        std::vector<uint8_t> payload;
    };

    std::vector<Answer> answer(const CommandView &command, const Datagram &datagram, Clock::time_point now);
    std::vector<Answer> answerDiscovery(const CommandView &command, const Datagram &datagram);
    std::vector<Answer> answerForceIp(const CommandView &command, const Datagram &datagram,
                                      Clock::time_point now);
    std::vector<Answer> answerRegisters(const CommandView &command, const Datagram &datagram,
                                        Clock::time_point now);
    std::optional<Answer> addressed(std::vector<uint8_t> bytes, const CommandView &command,
                                    const Endpoint &to) const;

    Reply execute(const CommandView &command, const Endpoint &from, Clock::time_point now);
    Reply readRegisters(const CommandView &command) const;
    Reply writeRegisters(const CommandView &command, const Endpoint &from, Clock::time_point now);
    Reply readMemory(const CommandView &command) const;
    Reply writeMemory(const CommandView &command, const Endpoint &from, Clock::time_point now);

    Status writeRegister(uint32_t address, uint32_t value, const Endpoint &from, Clock::time_point now);
    Status writePrivilege(uint32_t value, const Endpoint &from, Clock::time_point now);
    bool isHolder(const Endpoint &from) const;
    bool mayTakeOver(uint32_t value) const;
    void grant(uint32_t privilege, const Endpoint &to);
    void closeControl();
    void applyStartState();

    CameraSettings m_settings;
    CameraRegisters m_registers;
    CameraFaults m_faults;
    bool m_isPlugged;
    Endpoint m_holder;
    bool m_isHeldForGood = false; ///< by hold(): no heartbeat ends it
    Clock::time_point m_holderHeard;
    std::optional<CameraPlace> m_forcedPlace;
    std::map<uint16_t, unsigned int> m_received;
    std::minstd_rand m_random; ///< for the discovery delay
};

} // namespace kelsim
