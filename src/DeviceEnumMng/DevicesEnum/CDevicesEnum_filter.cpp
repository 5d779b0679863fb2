// SPDX-License-Identifier: Apache-2.0
// The filter by vendor and model, which hides devices before they are made into records.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

namespace
{

enum class FilterMode : int32_t { Off = 0, Include = 1, Exclude = 2 };

bool passes(int32_t mode, const QVector<QString> &include, const QVector<QString> &exclude, const QString &name)
{
    switch (static_cast<FilterMode>(mode)) {
    case FilterMode::Off:
        return true;
    case FilterMode::Include:
        return include.isEmpty() || include.contains(name);
    case FilterMode::Exclude:
        return exclude.isEmpty() || !exclude.contains(name);
    }
    return false;
}

QString vendorOf(const KELA_DEVICE_INFO_EX &device)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
        return textOf(device.special.gige.manufacturerName);
    case KELA_INTERFACE_TYPE_USB:
        return textOf(device.special.usb.manufacturerName);
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return textOf(device.special.cameraLink.manufacturerName);
    default:
        return QString();
    }
}

// Devices of a transport that carries no vendor are filtered by empty texts, the model's too.
QString modelOf(const KELA_DEVICE_INFO_EX &device)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
    case KELA_INTERFACE_TYPE_GIGE_VARIANT:
    case KELA_INTERFACE_TYPE_USB:
    case KELA_INTERFACE_TYPE_CAMERALINK:
        return textOf(device.modelName);
    default:
        return QString();
    }
}

} // namespace

void CDevicesEnum::SetFilter(DEVICE_FILTER *pFilter)
{
    if (pFilter == nullptr) {
        return;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_vendorMode = pFilter->vendorMode;
    m_modelMode = pFilter->modelMode;
    m_vendorInclude.append(textOf(pFilter->vendorInclude));
    m_vendorExclude.append(textOf(pFilter->vendorExclude));
    m_modelInclude.append(textOf(pFilter->modelInclude));
    m_modelExclude.append(textOf(pFilter->modelExclude));
}

bool CDevicesEnum::filterVendor(const QString &strVendor) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return passes(m_vendorMode, m_vendorInclude, m_vendorExclude, strVendor);
}

bool CDevicesEnum::filterModel(const QString &strModel) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return passes(m_modelMode, m_modelInclude, m_modelExclude, strModel);
}

bool CDevicesEnum::filterDevice(const KELA_DEVICE_INFO_EX &stDeviceInfo) const
{
    return filterVendor(vendorOf(stDeviceInfo)) && filterModel(modelOf(stDeviceInfo));
}

bool CDevicesEnum::filterGentlDevice(const KELA_DEVICE_INFO_EX &stDeviceInfo) const
{
    return filterVendor(textOf(stDeviceInfo.special.genTL.vendorName)) &&
           filterModel(textOf(stDeviceInfo.modelName));
}

bool CDevicesEnum::testFlag(int flag, int value)
{
    if ((flag & value) != flag) {
        return false;
    }
    return flag != 0 || value == 0;
}
