// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProducerExplanation.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

class KelDeviceTree;

namespace browser
{

/// Looks up the GenTL producers of a tree and what is known of them. Never waits for one. Thread: GUI.
class ProducerLookUp
{
public:
    /// Every producer that the tree's menu lists.
    QVector<Producer> all(const KelDeviceTree &tree);
    /// One of them by its path; without path when it is not listed.
    Producer one(const KelDeviceTree &tree, const QString &path);

private:
    KelAIndustryControl m_access;
};

} // namespace browser
