// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Runs a command through the shell and returns what it printed, empty when it could not be started.
/// Nothing that a device or a user named may be part of the command unchecked.
QString execCommand(const QString &strCommand);
