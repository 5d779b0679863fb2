// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/TransportBackend.h>

#include <array>
#include <memory>
#include <mutex>

namespace kela
{

/// The backends of one object, made on first use. The one place that knows which transports there are.
/// Thread: any.
class Backends
{
public:
    explicit Backends(const CancelSignal &cancel)
        : m_context{cancel}
    {
    }

    /// @param transport  one KELA_INTERFACE_TYPE bit
    /// @return null, and one log line the first time, when the transport has no backend
    TransportBackend *find(unsigned int transport);

    /// Null when there is none.
    GenTLBackend *genTL();

private:
    static constexpr std::size_t kTransportBits = 32;
    struct Slot {
        bool isTried = false;
        std::unique_ptr<TransportBackend> backend;
    };

    TransportBackend *findLocked(unsigned int transport, bool &isFirstTime);

    const BackendContext m_context;
    std::mutex m_mutex; // guards m_slots and m_genTL; what the pointers point to has its own rules
    std::array<Slot, kTransportBits> m_slots;
    bool m_isGenTLTried = false;
    std::unique_ptr<GenTLBackend> m_genTL;
};

/// How cameras answer the discovery, for the whole process. 1 = they may answer by broadcast, 0 = to the
/// asking address only.
void setAcknowledgeMode(int mode);

} // namespace kela
