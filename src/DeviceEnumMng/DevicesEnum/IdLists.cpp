// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/IdLists.h>

bool CrossPlatContainInVec(const QVector<long> &vecValues, long lValue)
{
    return vecValues.contains(lValue);
}
