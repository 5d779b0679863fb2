// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/gentl/ProducerFile.h>

#include <optional>
#include <string>

namespace kela::gentl
{

/// What the trial of a producer file ended with.
struct Verdict {
    unsigned int code = 0; ///< KELA_OK when the producer may be loaded
    std::string text;      ///< what was wrong
};

/// Loads and lists a producer in a short-lived process of its own, kel-cti-probe, before this process
/// does: there it may crash, hang or end its process. The verdict on a file (path, size, time) is kept as
/// long as the process lives. A cancelled trial has no verdict.
/// @return KELA_OK or why the file must not be loaded; one log line the first time
/// Thread: any; a second caller for the same file waits for the first one's verdict.
unsigned int tryProducer(const ProducerFile &file, const CancelSignal &cancel);

/// The verdict on a file as far as there is one. Never waits.
std::optional<Verdict> knownVerdict(const ProducerFile &file);

} // namespace kela::gentl
