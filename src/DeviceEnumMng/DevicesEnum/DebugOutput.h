// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Writes one informational line to Qt's message log, category "default". Does nothing while that is
/// switched off.
void CrossPlatOutputDebugInfo(const char *strMessage);

/// True while such a line reaches anybody.
bool isDebugOutputOn();

/// Writes the line that @p buildLine returns as a QString. Lines come once per device and pass, so they are
/// built only when somebody reads them.
template <typename BuildLine>
void outputDebugLine(BuildLine buildLine)
{
    if (isDebugOutputOn()) {
        const QString line = buildLine();
        CrossPlatOutputDebugInfo(line.toLocal8Bit().constData());
    }
}
