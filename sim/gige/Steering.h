// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraNetwork.h"

#include <string>
#include <vector>

namespace kelsim
{

/// What a command says back: lines, or an error.
struct SteeringResult {
    std::vector<std::string> lines;
    std::string error;
    bool isQuit = false;
};

/// One line per command, for the help text.
const char *steeringHelp();

/// Carries out one command line on the cameras.
SteeringResult steer(CameraNetwork &network, const std::string &line, Clock::time_point now);

} // namespace kelsim
