// SPDX-License-Identifier: Apache-2.0
// Dragging a connected camera out of the tree, and the pointer leaving it. What travels is the camera's
// identifier alone, in a format of the tree's own. The host decides where drags begin (setDragEnabled).
#include "KelDeviceTree_p.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QPointer>
#include <QTreeWidgetItem>

#include <memory>

const QString g_strDragFormat = QStringLiteral("KelDragTreeWidgetFormat");

QMimeData *KelDeviceTreePrivate::mimeData(const QList<QTreeWidgetItem *> &items)
{
    if (items.size() != 1 || !q->isCameraItem(items.first())) {
        return nullptr;
    }
    const QTreeWidgetItem *item = items.first();
    const qint32 cameraId = item->data(0, KelDeviceTree::ItemIdRole).toInt();
    const auto record = item->data(0, KelDeviceTree::ItemInfoRole).value<KELA_STRUCT_DEVICE_INFO>();
    if (!isCameraConnet(record.deviceState)) {
        return nullptr;
    }
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    stream << cameraId;
    auto mime = std::make_unique<QMimeData>();
    mime->setData(g_strDragFormat, payload);
    return mime.release();
}

void KelDeviceTree::startDrag(Qt::DropActions supportedActions)
{
    const QPointer<KelDeviceTree> tree(this);
    CustomTreeWidget::startDrag(supportedActions);
    // The drag lets other things happen, and ends also when none took place.
    if (tree) {
        Q_EMIT sigEndDrag();
    }
}

void KelDeviceTree::leaveEvent(QEvent *event)
{
    if (d) {
        d->setCurRightBtn(nullptr, false);
    }
    QWidget::leaveEvent(event);
}
