// SPDX-License-Identifier: Apache-2.0
// The life of an enumerator, its worker and the requests for passes.
//
// Owner and worker meet in atomics, in the registries and in what m_mutex guards. The mutex is never held
// while the callback or the device access runs: both may take long, and both may come back here.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>
#include <DeviceEnumMng/DevicesEnum/EnumeratorPool.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QThread>

namespace
{

constexpr unsigned long kPollMilliseconds = 10;

} // namespace

CDevicesEnum::CDevicesEnum() = default;

CDevicesEnum::~CDevicesEnum()
{
    Stop();
    m_worker.waitForFinished();
    // True by now. Read all the same: it makes what the worker wrote visible to this thread by a means that
    // thread checkers see, which Qt's own code is not.
    while (!m_workerEnded) {
        QThread::yieldCurrentThread();
    }
    if (m_deviceAccess) {
        for (const QString &path : qAsConst(m_producerPaths)) {
            m_deviceAccess->UnloadGenTLLibrary(path.toLocal8Bit().constData());
        }
    }
    m_producerPaths.clear();
    m_interfaceHandles.clear();
    m_deviceAccess.reset();
}

int CDevicesEnum::Init(KELA_INTERFACE_TYPE nInterfaceType, bool bLibraryEnumFlag)
{
    m_interfaceType = nInterfaceType;
    m_libraryEnumFlag = bLibraryEnumFlag;
    if (!m_deviceAccess) {
        m_deviceAccess = std::make_unique<KelAIndustryControl>();
    }
    // After what the worker uses: a pass may be requested already.
    m_running = true;
    if (!m_worker.isRunning()) {
        m_workerEnded = false;
        m_worker = runOnEnumeratorPool(&CDevicesEnum::startProc, this);
    }
    return 0;
}

int CDevicesEnum::RegisterEventSink(EnumEventCallback pCallback, void *pUser)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_callback = pCallback;
    m_user = pUser;
    return 0;
}

void CDevicesEnum::Stop()
{
    m_running = false;
    std::vector<std::shared_ptr<KelAIndustryControl>> temporaryAccesses;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopped = true;
        temporaryAccesses = m_temporaryAccesses;
    }
    if (m_deviceAccess) {
        m_deviceAccess->CancelEnum();
    }
    for (const std::shared_ptr<KelAIndustryControl> &access : temporaryAccesses) {
        access->CancelEnum();
    }
}

void CDevicesEnum::SetSleepTime(int nMilliseconds)
{
    m_sleepTime = nMilliseconds;
}

int CDevicesEnum::UpdateOnce(bool bReportDevices, bool bRequeueInterfaces)
{
    m_reportDevices = bReportDevices;
    if (bRequeueInterfaces) {
        requeueInterfaces();
    }
    // Last, so that the pass finds the flag and the queue as this call left them.
    ++m_pendingPasses;
    return 0;
}

void CDevicesEnum::requeueInterfaces()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const KELA_GENTL_IF_INFO &interface : qAsConst(m_interfaces)) {
        void *handle = m_interfaceHandles.value(interface.id, nullptr);
        if (handle != nullptr && !m_queuedInterfaces.contains(interface.id)) {
            m_queuedInterfaces.insert(interface.id, handle);
        }
    }
}

void CDevicesEnum::FinishOneEnum()
{
    m_acknowledged = true;
}

void CDevicesEnum::SetOffCameraID(long lCameraID)
{
    m_cameraIds.deleteDeviceID(lCameraID);
}

int CDevicesEnum::GetUSBControllersIDIndex()
{
    return ++m_usbControllerIdIndex;
}

void CDevicesEnum::EnumUSBControllers() {}

void CDevicesEnum::startProc(void *enumerator)
{
    static_cast<CDevicesEnum *>(enumerator)->EnumThreadProc();
}

void CDevicesEnum::EnumThreadProc()
{
    while (m_running) {
        if (m_pendingPasses < 1 || !m_acknowledged) {
            QThread::msleep(kPollMilliseconds);
            continue;
        }
        runRequestedPass();
    }
    m_workerEnded = true;
}

void CDevicesEnum::runRequestedPass()
{
    const uint32_t type = m_interfaceType;
    const int typeFlags = static_cast<int>(type);
    m_acknowledged = false;
    sendEvent(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_BEGIN);
    outputDebugLine([type] { return QStringLiteral("Begin Enum Devices; CameraType: %1").arg(type); });

    if (testFlag(KELA_INTERFACE_TYPE_GIGE, typeFlags) || testFlag(KELA_INTERFACE_TYPE_NETWORK, typeFlags) ||
        testFlag(KELA_INTERFACE_TYPE_GIGE_VARIANT, typeFlags)) {
        EnumNetWorks();
    }
    if (testFlag(KELA_INTERFACE_TYPE_USB, typeFlags)) {
        EnumUSBControllers();
    }
    const unsigned int result = EnumDevices();
    sendEvent(nullptr, nullptr, KELA_INTERFACE_STATE_PASS_END, static_cast<int>(result));
    --m_pendingPasses;
    outputDebugLine([type] { return QStringLiteral("End Enum Devices; CameraType: %1").arg(type); });
}

void CDevicesEnum::sendEvent(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                             KELA_INTERFACE_STATE nState, int nErrorCode) const
{
    EnumEventCallback callback = nullptr;
    void *user = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        callback = m_callback;
        user = m_user;
    }
    if (callback != nullptr) {
        callback(pInterface, pDevice, nState, nErrorCode, user);
    }
}
