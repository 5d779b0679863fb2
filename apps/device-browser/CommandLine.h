// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace browser
{

/// What the program was started with.
struct CommandLine {
    bool isHelpWanted = false;
    QString error;      ///< one line; empty when the arguments are right
    QString screenshot; ///< file to write the window's picture to; empty = none
    std::chrono::milliseconds screenshotAfter{3000};
    QString select;                 ///< serial number of the camera to select; empty = none
    std::optional<uint> transports; ///< KELA_INTERFACE_TYPE bits
    std::optional<int> theme;       ///< a Custom::Theme
    QString language;               ///< "" = as chosen before
};

/// Reads the arguments, the program's name left out. Needs no application.
CommandLine parseCommandLine(const QStringList &arguments);

/// How the program is called, English, for the terminal.
QString usage();

/// Reads "gige,usb,cameralink,gentl".
std::optional<uint> parseTransports(const QString &text);

} // namespace browser
