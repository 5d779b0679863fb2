// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

/// True when the value is in the list.
bool CrossPlatContainInVec(const QVector<long> &vecValues, long lValue);
