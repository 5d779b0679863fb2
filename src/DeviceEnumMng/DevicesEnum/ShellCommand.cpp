// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/ShellCommand.h>

#include <QByteArray>

#include <cstdio>

QString execCommand(const QString &strCommand)
{
    // "e": other threads start programs as well, and those must not inherit this pipe.
    FILE *output = popen(strCommand.toLocal8Bit().constData(), "re");
    if (output == nullptr) {
        return QString();
    }
    QByteArray result;
    char piece[256] = {};
    while (std::fgets(piece, sizeof(piece), output) != nullptr) {
        result.append(piece);
    }
    pclose(output);
    // Decoded as a whole: a piece may end in the middle of a character.
    return QString::fromLocal8Bit(result);
}
