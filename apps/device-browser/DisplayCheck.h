// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace browser
{

/// Why no window can be shown here, in one line; empty when one can. Looks at QT_QPA_PLATFORM, DISPLAY and
/// WAYLAND_DISPLAY and knocks at what they name: the toolkit would end the program with a message of its own.
QString missingDisplay();

} // namespace browser
