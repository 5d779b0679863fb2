// SPDX-License-Identifier: Apache-2.0
// One pass: ask for the devices, make records of them, tell them apart from those of the pass before and
// report the differences. What it decides by stands in PassDecisions; this file calls out and reports.
//
// The owner may add, remove or set off devices while a pass runs. A device counts as known when it was
// present at the start of the telling apart and still is, as if the owner's call had come before.
//
// A pass that is cancelled in the middle ends there: what was not waited for may well be there still.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>
#include <DeviceEnumMng/DevicesEnum/FoundDevices.h>
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>
#include <DeviceEnumMng/DevicesEnum/UnsharedCopy.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

unsigned int CDevicesEnum::EnumDevices()
{
    FoundDevices found;
    unsigned int result = askForDevices();
    if (result == KELA_OK) {
        result = GenerateDevicesInfo(found);
    }
    if (result != KELA_OK) {
        return result;
    }

    const QVector<long> knownIds = m_cameraIds.DeviceIdList();
    const QSet<long> known(knownIds.cbegin(), knownIds.cend());
    QSet<long> seenIds;
    if (m_reportDevices) {
        reportFoundDevices(found, known, seenIds);
    }
    result = refreshRemoteDevices(known, seenIds);
    if (result == KELA_OK) {
        reportVanishedDevices(knownIds, seenIds);
    }
    return result;
}

// A device, an interface or a producer may call itself cancelled as it may fail in any other way.
bool CDevicesEnum::endsPass(unsigned int result) const
{
    if (result != KELA_ERROR_CANCELLED) {
        return false;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_stopped;
}

unsigned int CDevicesEnum::askForDevices()
{
    const uint32_t type = m_interfaceType;
    if (isGenTLTransport(type)) {
        return EnumGenTLInterface();
    }
    if (!m_deviceAccess) {
        return KELA_ERROR_HANDLE;
    }
    m_deviceList = {};
    return m_deviceAccess->EnumDevices(type, &m_deviceList, m_libraryEnumFlag);
}

void CDevicesEnum::reportFoundDevices(FoundDevices &found, const QSet<long> &knownIds, QSet<long> &seenIds)
{
    for (KELA_STRUCT_DEVICE_INFO &record : found) {
        const long id = m_cameraIds.getDeviceID(record);
        record.deviceId = static_cast<int32_t>(id);
        record.deviceState = static_cast<int32_t>(GetDevState(record));
        m_cameraIds.updateDeviceInfo(id, record);
        seenIds.insert(id);
        if (knownIds.contains(id) && m_cameraIds.isPresent(id)) {
            sendEvent(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_UPDATED);
        } else {
            sendEvent(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_NEW);
            m_cameraIds.addDeviceID(id);
        }
    }
}

void CDevicesEnum::reportVanishedDevices(const QVector<long> &knownIds, const QSet<long> &seenIds)
{
    const uint32_t type = m_interfaceType;
    const uint32_t removable = type == KELA_INTERFACE_TYPE_GIGE_VARIANT ? KELA_INTERFACE_TYPE_GIGE : type;
    for (const long id : knownIds) {
        // In this order: who takes a device back says so until it is present no more.
        if (seenIds.contains(id) || isBeingTakenBack(id) || !m_cameraIds.isPresent(id)) {
            continue;
        }
        KELA_STRUCT_DEVICE_INFO record = m_cameraIds.getDeviceInfo(id);
        if (testFlag(static_cast<int>(record.deviceInfo.transport), static_cast<int>(removable))) {
            sendEvent(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_REMOVED);
            m_cameraIds.deleteDeviceID(id);
        }
    }
}

unsigned int CDevicesEnum::GenerateDevicesInfo(FoundDevices &found)
{
    switch (m_interfaceType) {
    case KELA_INTERFACE_TYPE_GENTL:
        return generateFromHandles(found);
    case KELA_INTERFACE_TYPE_GENTL_INTERFACE:
        return generateFromInterfaces(found);
    default:
        generateFromDeviceList(found);
        return KELA_OK;
    }
}

unsigned int CDevicesEnum::generateFromHandles(FoundDevices &found)
{
    if (!m_deviceAccess) {
        return KELA_OK;
    }
    QMap<unsigned int, void *> queued;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        queued.swap(m_queuedInterfaces);
    }
    for (void *handle : qAsConst(queued)) {
        if (handle == nullptr) {
            continue;
        }
        outputDebugLine([] { return QStringLiteral("before EnumDevicesByGenTLEx"); });
        KELA_DEVICE_INFO_LIST list = {};
        const unsigned int result = m_deviceAccess->EnumDevicesByGenTLEx(handle, &list);
        outputDebugLine([&list, result] {
            return QStringLiteral("After EnumDevicesByGenTLEx count :%1   ; nRet : %2")
                .arg(list.count)
                .arg(result);
        });
        if (result == KELA_OK) {
            mergeGenTLDevices(list, found);
        } else if (endsPass(result)) {
            return result;
        }
    }
    // The devices of interfaces that were not asked this time stay as they are.
    const QVector<long> presentIds = m_cameraIds.DeviceIdList();
    for (const long id : presentIds) {
        const KELA_STRUCT_DEVICE_INFO record = m_cameraIds.getDeviceInfo(id);
        if (!queued.contains(record.genTLInterface.id)) {
            mergeGenTLDevice(record, found);
        }
    }
    return KELA_OK;
}

unsigned int CDevicesEnum::generateFromInterfaces(FoundDevices &found)
{
    if (!m_deviceAccess) {
        return KELA_OK;
    }
    QVector<KELA_GENTL_IF_INFO> interfaces;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        interfaces = unsharedCopy(m_interfaces);
    }
    for (KELA_GENTL_IF_INFO &interface : interfaces) {
        KELA_DEVICE_INFO_LIST list = {};
        const unsigned int result = m_deviceAccess->EnumDevicesByGenTL(&interface, &list);
        if (result == KELA_OK) {
            mergeGenTLDevices(list, found);
        } else if (endsPass(result)) {
            return result;
        }
    }
    return KELA_OK;
}

void CDevicesEnum::generateFromDeviceList(FoundDevices &found)
{
    const std::size_t count = readableCount(m_deviceList.count);
    found.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        const KELA_DEVICE_INFO_EX *device = m_deviceList.devices[index];
        if (device != nullptr && filterDevice(*device)) {
            mergeDevice(*device, found);
        }
    }
}

void CDevicesEnum::mergeGenTLDevices(const KELA_DEVICE_INFO_LIST &list, FoundDevices &found) const
{
    const std::size_t count = readableCount(list.count);
    found.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        const KELA_DEVICE_INFO_EX *device = list.devices[index];
        if (device != nullptr && filterGentlDevice(*device)) {
            KELA_STRUCT_DEVICE_INFO record = {};
            record.deviceInfo = *device;
            mergeGenTLDevice(record, found);
        }
    }
}

void CDevicesEnum::mergeDevice(const KELA_DEVICE_INFO_EX &device, FoundDevices &found) const
{
    if (found.contains(device)) {
        return;
    }
    const bool becomesGigE = device.transport == KELA_INTERFACE_TYPE_NONE && m_libraryEnumFlag;
    KELA_STRUCT_DEVICE_INFO &record =
        found.append(device, becomesGigE ? static_cast<uint32_t>(KELA_INTERFACE_TYPE_GIGE) : device.transport);
    // By the transport that the device named: one that named none gets no card.
    if (isNetworkTransport(device.transport)) {
        record.network = GetDeviceNetWorkInfo(device);
    } else if (device.transport == KELA_INTERFACE_TYPE_USB) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        record.usbController = controllerOf(device, m_usbControllers);
    }
}

void CDevicesEnum::mergeGenTLDevice(const KELA_STRUCT_DEVICE_INFO &record, FoundDevices &found) const
{
    const KELA_GENTL_DEVICE_INFO &device = record.deviceInfo.special.genTL;
    bool isKnown = false;
    const KELA_GENTL_IF_INFO interface =
        knownInterface(genTLInterfaceId(fixedText(device.interfaceId), device.interfaceNumber), isKnown);
    if (isKnown) {
        KELA_STRUCT_DEVICE_INFO complete = record;
        complete.genTLInterface = interface;
        found.append(complete);
    }
}

bool CDevicesEnum::CompareDevice(const KELA_STRUCT_DEVICE_INFO &stLeft,
                                 const KELA_STRUCT_DEVICE_INFO &stRight) const
{
    return !isGenTLTransport(m_interfaceType) && isSameDevice(stLeft.deviceInfo, stRight.deviceInfo);
}

bool CDevicesEnum::CompareUSBController(const KELA_USBCONTROLLER_INFO &stLeft,
                                        const KELA_USBCONTROLLER_INFO &stRight) const
{
    return fixedText(stLeft.identifier) == fixedText(stRight.identifier);
}
