// SPDX-License-Identifier: Apache-2.0
#include "KelSettledCameras.h"

#include "KelRecordDigest.h"

#include <CommonTools/KelInterface.h>
#include <DeviceEnumMng/KelDeviceTree.h>

#include <QAbstractItemModel>
#include <QEvent>
#include <QTreeWidget>
#include <QWidget>

KelSettledCameras::KelSettledCameras(QTreeWidget *tree)
{
    const QAbstractItemModel *model = tree->model();
    connect(model, &QAbstractItemModel::dataChanged, this, &KelSettledCameras::onDataChanged);
    // A row that comes, goes or moves may be the one that its identifier is found by from now on.
    connect(model, &QAbstractItemModel::rowsInserted, this, &KelSettledCameras::forgetAll);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &KelSettledCameras::forgetAll);
    connect(model, &QAbstractItemModel::rowsMoved, this, &KelSettledCameras::forgetAll);
    connect(model, &QAbstractItemModel::layoutChanged, this, &KelSettledCameras::forgetAll);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &KelSettledCameras::forgetAll);
}

QTreeWidgetItem *KelSettledCameras::find(const KELA_STRUCT_DEVICE_INFO &info)
{
    if (m_encoding != KelInterface::GetEncodingType()) {
        forgetAll();
        m_encoding = KelInterface::GetEncodingType();
    }
    const auto row = m_rows.constFind(info.deviceId);
    return row != m_rows.constEnd() && row->recordDigest == digestOf(info) ? row->item : nullptr;
}

void KelSettledCameras::settle(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *item, QWidget *button)
{
    if (button) {
        watch(button, info.deviceId);
        m_rows.insert(info.deviceId, {item, digestOf(info)});
        m_ids.insert(item, info.deviceId);
    }
}

void KelSettledCameras::watch(QWidget *button, int cameraId)
{
    if (m_buttons.contains(button)) {
        return;
    }
    m_buttons.insert(button, cameraId);
    button->installEventFilter(this);
    connect(button, &QObject::destroyed, this, [this, button, cameraId] {
        m_buttons.remove(button);
        forget(cameraId);
    });
}

bool KelSettledCameras::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::EnabledChange) {
        forget(m_buttons.value(watched));
    }
    return QObject::eventFilter(watched, event);
}

void KelSettledCameras::onDataChanged(const QModelIndex &topLeft, const QModelIndex & /*bottomRight*/,
                                      const QVector<int> &roles)
{
    if (m_rows.isEmpty()) {
        return;
    }
    const bool keepsIdentity = !roles.isEmpty() && !roles.contains(KelDeviceTree::ItemTypeRole) &&
                               !roles.contains(KelDeviceTree::ItemIdRole);
    if (!keepsIdentity) {
        forgetAll();
        return;
    }
    // By its address: a receiver of itemChanged hears of the change first and may have removed the row.
    const auto id = m_ids.constFind(topLeft.internalPointer());
    if (id != m_ids.constEnd()) {
        forget(*id);
    }
}

void KelSettledCameras::forget(int cameraId)
{
    m_rows.remove(cameraId);
}

void KelSettledCameras::forgetAll()
{
    m_rows.clear();
    m_ids.clear();
}
