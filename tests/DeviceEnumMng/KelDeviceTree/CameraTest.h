// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TreeTest.h"

#include <string>

/// A tree with the network card "AA" and what tests do to cameras in it.
class CameraTest : public TreeTest
{
    Q_OBJECT

protected:
    void init() override;

    /// Reports a camera as new.
    /// @return its row; null when there is none
    QTreeWidgetItem *add(const KELA_STRUCT_DEVICE_INFO &info);
    QTreeWidgetItem *addCameraLinkGroup() { return addHostsGroup(KelDeviceTree::ItemCamLinkRoot); }

    /// Writes the state into the record, as a host that connects does first.
    static void setRecordState(QTreeWidgetItem *item, KELA_DEV_STATE state);
    static KELA_STRUCT_DEVICE_INFO withState(KELA_STRUCT_DEVICE_INFO info, KELA_DEV_STATE state);
    static KELA_STRUCT_DEVICE_INFO withGigeName(KELA_STRUCT_DEVICE_INFO info, const std::string &name);
    /// Tells icons apart.
    static qint64 iconKey(KELA_DEV_STATE state);
};
