// SPDX-License-Identifier: Apache-2.0
#include "SteeredCameras.h"

#include <QProcess>
#include <QTest>

namespace steeredcameras
{

bool areThere()
{
    return !qEnvironmentVariableIsEmpty("KEL_SIM_CONTROL");
}

QString tell(const QStringList &command)
{
    QProcess simulator;
    const QStringList arguments{QStringLiteral("--control"), qEnvironmentVariable("KEL_SIM_CONTROL"),
                                QStringLiteral("--tell")};
    simulator.start(qEnvironmentVariable("KEL_BIN") + QStringLiteral("/kel-sim-cameras"), arguments + command);
    if (!simulator.waitForFinished(5000) || simulator.exitCode() != 0)
        QTest::qFail(simulator.readAllStandardError().constData(), __FILE__, __LINE__);
    return QString::fromUtf8(simulator.readAllStandardOutput()).trimmed();
}

bool run(const QStringList &command)
{
    return QProcess::execute(command.first(), command.mid(1)) == 0;
}

QString describe(const QString &camera)
{
    return tell({QStringLiteral("list"), camera});
}

} // namespace steeredcameras
