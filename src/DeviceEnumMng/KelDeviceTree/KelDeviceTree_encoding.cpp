// SPDX-License-Identifier: Apache-2.0
// Names in another encoding, captions in another language. Cameras are labelled again from the records on
// their items, without a new enumeration. Only rows two levels below a transport are: a camera that stands
// directly under its transport keeps the label it has.
#include "KelDeviceTree_p.h"

#include "KelDeviceLabels.h"

#include <CommonTools/KelInterface.h>

#include <QEvent>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidgetItem>

#include <cstddef>
#include <string_view>

namespace
{

template <std::size_t Size>
const unsigned char *bytesOf(const char (&field)[Size])
{
    return reinterpret_cast<const unsigned char *>(field);
}

template <std::size_t Size>
QString encoded(const char (&field)[Size])
{
    return KelInterface::GetEncodeQStringFromUnChar(bytesOf(field), static_cast<int>(Size));
}

template <std::size_t Size>
QString local(const char (&field)[Size])
{
    return KelInterface::uchar2QStringLocale(bytesOf(field), static_cast<int>(Size));
}

// Unlike in the label of a new row, the chosen encoding counts for the user's name alone.
QString labelOf(int groupType, const KELA_DEVICE_INFO_EX &info)
{
    const QString model = local(info.modelName);
    const QString serial = local(info.serialNumber);
    switch (groupType) {
    case KelDeviceTree::ItemGigERoot:
        return KelDeviceLabels::camera(encoded(info.special.gige.userDefinedName), model, serial);
    case KelDeviceTree::ItemUSBRoot:
        return KelDeviceLabels::camera(encoded(info.special.usb.userDefinedName), model, serial);
    case KelDeviceTree::ItemGenTLRoot:
        return KelDeviceLabels::camera(encoded(info.special.genTL.userDefinedName), model, serial);
    default: {
        const std::string_view port = fixedText(info.special.cameraLink.portName);
        return KelDeviceLabels::cameraLinkCamera(QString::fromUtf8(port.data(), static_cast<int>(port.size())),
                                                 model, serial);
    }
    }
}

// The rows as indexes: a slot that hears of the first new label may remove the rest.
QVector<QPersistentModelIndex> grandchildren(const KelDeviceTree &tree, const QTreeWidgetItem &group)
{
    QVector<QPersistentModelIndex> rows;
    for (int container = 0; container < group.childCount(); ++container) {
        const QTreeWidgetItem *parent = group.child(container);
        for (int row = 0; row < parent->childCount(); ++row) {
            rows.append(KelDeviceTreePrivate::indexOf(&tree, parent->child(row)));
        }
    }
    return rows;
}

} // namespace

void KelDeviceTreePrivate::refreshEncodeType(int nEncodeType)
{
    KelInterface::SetEncodingType(nEncodeType);
    for (const int groupType : {KelDeviceTree::ItemGigERoot, KelDeviceTree::ItemUSBRoot,
                                KelDeviceTree::ItemCamLinkRoot, KelDeviceTree::ItemGenTLRoot}) {
        const QTreeWidgetItem *group = findItem(groupType, -1);
        if (group && !relabel(groupType, grandchildren(*q, *group))) {
            return;
        }
    }
}

bool KelDeviceTreePrivate::relabel(int groupType, const QVector<QPersistentModelIndex> &rows)
{
    const QPointer<KelDeviceTree> tree(q);
    for (const QPersistentModelIndex &row : rows) {
        const QVariant record = row.data(KelDeviceTree::ItemInfoRole);
        // A row that a host made for itself shows what the host wrote.
        if (record.userType() != qMetaTypeId<KELA_STRUCT_DEVICE_INFO>()) {
            continue;
        }
        const QString label = labelOf(groupType, record.value<KELA_STRUCT_DEVICE_INFO>().deviceInfo);
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole}) {
            q->model()->setData(row, label, role);
            if (!tree) {
                return false;
            }
        }
    }
    return true;
}

void KelDeviceTreePrivate::retranslate()
{
    const QPointer<KelDeviceTree> tree(q);
    const auto setCaption = [this, &tree](int itemType, const QString &caption) {
        QTreeWidgetItem *item = tree ? findItem(itemType, -1) : nullptr;
        if (item) {
            item->setText(0, caption);
        }
    };
    renameButtons();
    setCaption(KelDeviceTree::ItemAll, KelDeviceTree::tr("All"));
    setCaption(KelDeviceTree::ItemGigEVirtualGroup, KelDeviceTree::tr("Virtual Device"));
    setCaption(KelDeviceTree::ItemUSBVirtualGroup, KelDeviceTree::tr("Virtual Device"));
    setCaption(KelDeviceTree::ItemOtherGroup, KelDeviceTree::tr("Other Device"));
}

// Nothing is passed on to the base class, whatever the event: hosts build on the tree's standing still.
void KelDeviceTree::changeEvent(QEvent *event)
{
    if (event->type() != QEvent::LanguageChange || !d) {
        return;
    }
    CustomTreeWidget::cLanguageChange();
    d->retranslate();
}
