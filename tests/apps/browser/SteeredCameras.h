// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// The simulated cameras around the test, steered through their simulator. Where there is none, because the
/// kernel gives no network of one's own, there is nothing to test.
namespace steeredcameras
{

/// True when the simulator runs.
bool areThere();
/// Carries out a steering command, for example {"unplug", "entrance"}; fails the test when that fails.
QString tell(const QStringList &command);
/// Runs a system command of the private network, for example {"ip", "link", "set", "cam1", "down"}.
bool run(const QStringList &command);
/// What the simulator says of a camera: "entrance plugged 192.168.50.11/24 wire-cam0 …".
QString describe(const QString &camera);

} // namespace steeredcameras
