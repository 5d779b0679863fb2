// SPDX-License-Identifier: Apache-2.0
// What is shown and what is let in. The host chooses the visible item types at any time; that hides rows
// and removes none. The user's vendor and model filters are read once, when the tree is made, and judge a
// camera when it is first reported: a camera that was let in stays until it vanishes.
#include "KelDeviceTree_p.h"

#include <CommonTools/KelInterface.h>

#include <QTreeWidgetItem>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace
{

QStringList entries(const QString &setting)
{
    return setting.split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

// Whole texts, in upper and lower case alike.
bool containsText(const QStringList &list, const QString &text)
{
    return std::any_of(list.cbegin(), list.cend(), [&text](const QString &entry) {
        return QString::compare(entry, text, Qt::CaseInsensitive) == 0;
    });
}

bool passes(int state, const QStringList &include, const QStringList &exclude, const QString &value)
{
    switch (state) {
    case KelInterface::FilterOff:
        return true;
    case KelInterface::FilterInclude:
        return include.isEmpty() || containsText(include, value);
    case KelInterface::FilterExclude:
        return !containsText(exclude, value);
    default:
        // A setting that nobody knows must not let in what it was meant to keep out.
        return false;
    }
}

template <std::size_t Size>
QString fromUtf8(const char (&field)[Size])
{
    const std::string_view text = fixedText(field);
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString vendorOf(const KELA_DEVICE_INFO_EX &info)
{
    switch (info.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        return fromUtf8(info.special.gige.manufacturerName);
    case KELA_INTERFACE_TYPE_USB:
        return fromUtf8(info.special.usb.manufacturerName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return fromUtf8(info.special.cameraLink.manufacturerName);
    case KELA_INTERFACE_TYPE_GENTL:
        return fromUtf8(info.special.genTL.vendorName);
    default:
        return QString();
    }
}

} // namespace

bool KelDeviceTreePrivate::isItemTypeVisible(int type)
{
    return m_visibleTypes.isEmpty() || m_visibleTypes.contains(type);
}

void KelDeviceTreePrivate::setVisibleItemTypes(const QList<int> &types)
{
    if (m_visibleTypes != types) {
        m_visibleTypes = types;
    }
    updateAllItemVisible(q->invisibleRootItem());
    rightButtons().hideStray();
}

void KelDeviceTreePrivate::updateAllItemVisible(QTreeWidgetItem *item)
{
    if (!item) {
        return;
    }
    for (int row = 0; row < item->childCount(); ++row) {
        updateAllItemVisible(item->child(row));
    }
    const bool isHidden = !isItemTypeVisible(item->data(0, KelDeviceTree::ItemTypeRole).toInt());
    // What stays as it is must not lay out the rows anew.
    if (item->treeWidget() && item->isHidden() != isHidden) {
        item->setHidden(isHidden);
    }
}

void KelDeviceTreePrivate::refreshFilterInfo()
{
    m_vendorFilterState = KelInterface::vendorFilterState();
    m_modelFilterState = KelInterface::modelFilterState();
    m_vendorInclude = entries(KelInterface::vendorFilterInclude());
    m_vendorExclude = entries(KelInterface::vendorFilterExclude());
    m_modelInclude = entries(KelInterface::modelFilterInclude());
    m_modelExclude = entries(KelInterface::modelFilterExclude());
}

bool KelDeviceTreePrivate::filterVendor(const QString &vendor)
{
    return passes(m_vendorFilterState, m_vendorInclude, m_vendorExclude, vendor);
}

bool KelDeviceTreePrivate::filterModel(const QString &model)
{
    return passes(m_modelFilterState, m_modelInclude, m_modelExclude, model);
}

bool KelDeviceTreePrivate::filterDevice(const KELA_DEVICE_INFO_EX &info)
{
    return filterVendor(vendorOf(info)) && filterModel(fromUtf8(info.modelName));
}

bool KelDeviceTreePrivate::IsUbootDevice(const KELA_DEVICE_INFO_EX &info)
{
    const auto &locator = info.special.usb.portLocator;
    return info.transport == KELA_INTERFACE_TYPE_USB &&
           std::all_of(std::begin(locator), std::end(locator), [](uint8_t byte) { return byte == 0; });
}

bool KelDeviceTreePrivate::isValidDevice(const KELA_DEVICE_INFO_EX &info)
{
    return !IsUbootDevice(info) && filterDevice(info);
}
