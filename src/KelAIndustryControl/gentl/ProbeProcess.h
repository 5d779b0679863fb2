// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/gentl/TrialLoad.h>

#include <optional>
#include <string>

namespace kela::gentl
{

/// Longest time that a trial takes.
constexpr Milliseconds kTrialLimit{10000};

/// Where kel-cti-probe lies: beside this library as installed or built. Empty when it is not there.
std::string probePath();

/// Runs kel-cti-probe on a file and judges what it tells. None when the caller was cancelled.
std::optional<Verdict> runProbe(const std::string &file, const CancelSignal &cancel);

} // namespace kela::gentl
