// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <chrono>
#include <optional>

/// What the command line asks for.
struct Options {
    enum class Command { List, Watch, Help, Version };

    Command command = Command::List;
    QVector<KELA_INTERFACE_TYPE> transports;
    QStringList producers; ///< absolute paths of .cti files
    bool isJson = false;
    bool isEveryEvent = false;
    bool isVerbose = false;
    std::optional<std::chrono::milliseconds> timeout;
    std::optional<std::chrono::milliseconds> interval;
};

/// @param arguments  the program's name first
/// @param error      receives one line when nothing is returned
std::optional<Options> readOptions(const QStringList &arguments, QString &error);

/// What --help prints.
QString helpText();
