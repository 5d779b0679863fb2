// SPDX-License-Identifier: Apache-2.0
// Devices that no discovery finds because they are behind a router: the owner adds them by their address,
// and every pass asks each of them whether it is still there.
//
// The owner may remove a device while a pass is asking it. So the list is looked through again, by
// identifier, after every question.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/AnswerDeadline.h>
#include <DeviceEnumMng/DevicesEnum/TemporaryAccess.h>
#include <DeviceEnumMng/DevicesEnum/UnsharedCopy.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <algorithm>
#include <chrono>

namespace
{

constexpr uint32_t kRemoteCardValue = 1000;

// The owner, most often the thread that paints, waits for the device. So all that is asked of it ends by then.
constexpr std::chrono::milliseconds kLongestAdding{750};

template <typename Records>
auto findById(Records &records, long id)
{
    return std::find_if(records.begin(), records.end(),
                        [id](const KELA_STRUCT_DEVICE_INFO &record) { return record.deviceId == id; });
}

} // namespace

bool CDevicesEnum::GetRemoteDevice(KELA_STRUCT_DEVICE_INFO &stDeviceInfo)
{
    return askRemote(stDeviceInfo) == KELA_OK;
}

unsigned int CDevicesEnum::askRemote(KELA_STRUCT_DEVICE_INFO &record, AnswerDeadline *deadline)
{
    const TemporaryAccess access(*this, deadline);
    const unsigned int result = access->Init(&record.deviceInfo, false);
    return result == KELA_OK ? access->GetDeviceInfo(&record.deviceInfo) : result;
}

// By an object of its own: the enumerator's could not be cancelled without ending its passes for good. When
// the time is over, the device counts as one that does not answer, as in a pass.
void CDevicesEnum::setStateWithin(AnswerDeadline &deadline, KELA_STRUCT_DEVICE_INFO &record)
{
    const TemporaryAccess access(*this, &deadline);
    KelAIndustryControl *const asked = m_deviceAccess ? &*access : nullptr;
    record.deviceState = static_cast<int32_t>(stateOf(record, {asked, &deadline}));
}

long CDevicesEnum::AddRemoteDevice(KELA_STRUCT_DEVICE_INFO *pDeviceInfo)
{
    if (pDeviceInfo == nullptr) {
        return -1;
    }
    KELA_STRUCT_DEVICE_INFO known = {};
    if (m_cameraIds.findDeviceInfoByIP(pDeviceInfo->deviceInfo.special.gige.currentIp, known) &&
        m_cameraIds.isPresent(known.deviceId)) {
        return known.deviceId;
    }
    AnswerDeadline deadline(kLongestAdding);
    if (askRemote(*pDeviceInfo, &deadline) != KELA_OK) {
        return -1;
    }
    const long id = m_cameraIds.getDeviceID(*pDeviceInfo);
    pDeviceInfo->remote = 1;
    pDeviceInfo->deviceId = static_cast<int32_t>(id);
    setStateWithin(deadline, *pDeviceInfo);
    pDeviceInfo->network.cardValue = kRemoteCardValue;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_remoteDevices.append(*pDeviceInfo);
    }
    m_cameraIds.updateDeviceInfo(id, *pDeviceInfo);
    sendEvent(nullptr, pDeviceInfo, KELA_INTERFACE_STATE_DEVICE_NEW);
    m_cameraIds.addDeviceID(id);
    return id;
}

int CDevicesEnum::RemoveRemoteDevice(KELA_STRUCT_DEVICE_INFO *pDeviceInfo)
{
    if (pDeviceInfo == nullptr) {
        return 0;
    }
    const long id = m_cameraIds.getDeviceID(*pDeviceInfo);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto device = findById(m_remoteDevices, id);
        if (device != m_remoteDevices.end()) {
            m_remoteDevices.erase(device);
        }
        m_idsBeingTakenBack.append(id);
    }
    sendEvent(nullptr, pDeviceInfo, KELA_INTERFACE_STATE_DEVICE_REMOVED);
    m_cameraIds.deleteDeviceID(id);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_idsBeingTakenBack.removeOne(id);
    return 0;
}

// Its owner is inside RemoveRemoteDevice and reports it removed.
bool CDevicesEnum::isBeingTakenBack(long id) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_idsBeingTakenBack.contains(id);
}

unsigned int CDevicesEnum::refreshRemoteDevices(const QSet<long> &knownIds, QSet<long> &seenIds)
{
    QVector<KELA_STRUCT_DEVICE_INFO> devices;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        devices = unsharedCopy(m_remoteDevices);
    }
    for (int index = 0; index < devices.size(); ++index) {
        const KELA_STRUCT_DEVICE_INFO &device = devices.at(index);
        if (!knownIds.contains(device.deviceId)) {
            continue;
        }
        seenIds.insert(device.deviceId);
        const unsigned int result = refreshRemoteDevice(device);
        if (endsPass(result)) {
            return result;
        }
        if (result != KELA_OK) {
            // The device behind a vanished one is passed over in this pass, on purpose.
            ++index;
        }
    }
    return KELA_OK;
}

// 0 too when the owner took the device back meanwhile.
unsigned int CDevicesEnum::refreshRemoteDevice(const KELA_STRUCT_DEVICE_INFO &before)
{
    KELA_STRUCT_DEVICE_INFO record = before;
    const unsigned int result = askRemote(record);
    if (endsPass(result)) {
        return result;
    }
    const bool hasAnswered = result == KELA_OK;
    if (hasAnswered) {
        record.deviceState = static_cast<int32_t>(GetDevState(record));
    } else {
        record = before;
    }
    if (!keepRemoteDevice(record, hasAnswered)) {
        return KELA_OK;
    }
    if (hasAnswered) {
        m_cameraIds.updateDeviceInfo(record.deviceId, record);
        sendEvent(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_UPDATED);
    } else {
        sendEvent(nullptr, &record, KELA_INTERFACE_STATE_DEVICE_REMOVED);
        m_cameraIds.deleteDeviceID(record.deviceId);
    }
    return result;
}

// False when it is listed no more.
bool CDevicesEnum::keepRemoteDevice(const KELA_STRUCT_DEVICE_INFO &record, bool hasAnswered)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto listed = findById(m_remoteDevices, record.deviceId);
    if (listed == m_remoteDevices.end()) {
        return false;
    }
    if (hasAnswered) {
        *listed = record;
    } else {
        m_remoteDevices.erase(listed);
    }
    return true;
}
