// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

/// Cameras counted by how they stand.
struct DeviceCount {
    int total = 0;
    int free = 0;
    int own = 0;  ///< connected by this program
    int busy = 0; ///< held by others
    int unusable = 0;

    /// Counts one more device in a state.
    void add(int32_t deviceState);
};

/// Counts devices.
DeviceCount countOf(const QVector<KELA_STRUCT_DEVICE_INFO> &devices);
/// "Cameras: 5 (3 free, 1 in use, 1 not usable)".
QString countText(const DeviceCount &count);
/// A line for each camera: its name, how it stands, and its address where it has one. Beyond some dozens
/// only the number of the rest.
FactGroup cameraOverview(const QVector<KELA_STRUCT_DEVICE_INFO> &devices);

} // namespace browser
