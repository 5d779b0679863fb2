// SPDX-License-Identifier: Apache-2.0
#include "CameraTest.h"

#include <ScriptedRecords.h>

void CameraTest::init()
{
    TreeTest::init();
    m_tree->onNewNetWork(variantOf(TreeRecords::networkCard(80001, "AA")));
}

QTreeWidgetItem *CameraTest::add(const KELA_STRUCT_DEVICE_INFO &info)
{
    m_tree->onNewDevice(variantOf(info));
    return m_tree->findCameraItem(info.deviceId);
}

void CameraTest::setRecordState(QTreeWidgetItem *item, KELA_DEV_STATE state)
{
    auto record = recordOf<KELA_STRUCT_DEVICE_INFO>(item);
    record.deviceState = static_cast<int32_t>(state);
    item->setData(0, KelDeviceTree::ItemInfoRole, variantOf(record));
}

KELA_STRUCT_DEVICE_INFO CameraTest::withState(KELA_STRUCT_DEVICE_INFO info, KELA_DEV_STATE state)
{
    info.deviceState = static_cast<int32_t>(state);
    return info;
}

KELA_STRUCT_DEVICE_INFO CameraTest::withGigeName(KELA_STRUCT_DEVICE_INFO info, const std::string &name)
{
    setField(info.deviceInfo.special.gige.userDefinedName, name);
    return info;
}

qint64 CameraTest::iconKey(KELA_DEV_STATE state)
{
    return KelDeviceTreePrivate::iconMap().value(state).cacheKey();
}
