// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/TransportBackend.h>
#include <KelAIndustryControl/gige/IntegerNodes.h>
#include <KelAIndustryControl/gige/RegisterClient.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>

namespace kela::gige
{

/// An open camera. With exclusive or control access it keeps the privilege by a heartbeat on a thread of its
/// own; with monitor access it only reads. The destructor gives the privilege back.
class ControlSession final : public DeviceSession
{
public:
    /// @param cancel  ends the waits of the caller; outlives the session
    explicit ControlSession(const CancelSignal &cancel)
        : m_client(cancel)
    {
    }
    ~ControlSession() override;

    unsigned int open(const KELA_DEVICE_INFO_EX &info, unsigned int accessMode);
    unsigned int integerNode(std::string_view name, KELCC_INTVALUE_EX_T &value) override;

private:
    unsigned int takePrivilege(unsigned int accessMode);
    unsigned int readTwoRegisters(std::uint32_t address, std::uint64_t &value);
    unsigned int requireCapability(unsigned int bit);
    void keepAlive(Milliseconds period);
    void release();

    CancelSignal m_stop; ///< ends the heartbeat
    RegisterClient m_client;
    std::string m_name;            ///< for log lines
    std::uint32_t m_privilege = 0; ///< what was taken; 0 = nothing
    std::optional<std::uint32_t> m_capability;
    std::atomic<bool> m_isLost{false};
    std::thread m_heartbeat;
};

} // namespace kela::gige
