// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/Clock.h>
#include <KelAIndustryControl/gige/AccessProbe.h>
#include <KelAIndustryControl/gige/CameraTable.h>

#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace kela::gige
{

/// Who holds which camera and which card saw it, as the last pass found it. Replaced whole at the end of a
/// pass and read by any thread, which never waits for a pass.
class AccessBook
{
public:
    struct Entry {
        AccessValue access;
        std::uint32_t address = 0;
        unsigned int cardIndex = 0;
    };
    using Entries = std::map<CameraKey, Entry>;

    void replace(Entries &&entries, TimePoint now);

    /// The value of the pass that has just ended. Nothing when that is too long ago, or when the camera was
    /// not in it or has another address now.
    std::optional<AccessValue> fresh(const KELA_DEVICE_INFO_EX &info, TimePoint now) const;

private:
    struct Page {
        Entries entries;
        TimePoint read;
    };

    mutable std::mutex m_mutex; // guards m_page, held for a pointer's copy only
    std::shared_ptr<const Page> m_page;
};

/// The card that saw a camera last, for the whole process: 0 when not known. Two cards may have the same
/// address, and then a record does not tell which of them saw the camera; an object that never enumerated
/// still has to ask by the right one.
unsigned int cardThatSaw(const CameraKey &key);

/// @param entries  of one pass
void rememberCards(const AccessBook::Entries &entries);

} // namespace kela::gige
