// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <string>
#include <string_view>

namespace kela
{

/// Gives one line to the sink of the process. By default warnings and errors go to stderr.
/// Never call it with a lock held: the sink is a host's function.
void logLine(KELA_LOG_LEVEL level, const std::string &line);

/// Null restores the default.
void setLogSink(KELA_LOG_SINK sink, void *user);

/// A text from outside as it may stand in a log line: control characters replaced, its length bounded.
std::string printable(std::string_view text);

} // namespace kela
