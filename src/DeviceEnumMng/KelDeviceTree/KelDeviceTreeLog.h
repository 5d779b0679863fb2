// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageLogger>
#include <QString>

/// Writes a line of the tree at information level under its own source place. Device texts are data of the
/// line, never its format.
/// @param function  signature of the slot or function that hosts know the line by
inline void logTreeInfo(int line, const char *function, const QString &text)
{
    QMessageLogger("src/DeviceEnumMng/KelDeviceTree", line, function).info("%s", qUtf8Printable(text));
}
