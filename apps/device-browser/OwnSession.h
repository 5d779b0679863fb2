// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace browser
{

/// How far this program's connection to a device has come.
enum class SessionState {
    None,
    Opening,
    Open,
    Closing,
    Lost, ///< was open; the device no longer answers or was taken away
};

/// This program's connection to a device.
struct OwnSession {
    SessionState state = SessionState::None;
    uint32_t lastError = 0;  ///< why the last attempt failed or the device was lost; 0 = no error
    bool isReadOnly = false; ///< opened to watch, without control
};

} // namespace browser
