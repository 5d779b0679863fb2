// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/DevicesEnum/KelACameraIdMng.h>
#include <DeviceEnumMng/DevicesEnum/KelANetWorkIdMng.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QFuture>
#include <QMap>
#include <QString>
#include <QVector>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

class AnswerDeadline;
class FoundDevices;
class KelAIndustryControl;

/// Receives the events of an enumerator.
///
/// The records are the enumerator's own and valid during the call only: copy what you keep. Passes report on
/// the enumerator's worker thread; AddRemoteDevice and RemoveRemoteDevice report on their caller's thread.
/// The callback must not destroy the enumerator. It may call the enumerator's other operations.
///
/// @param pInterface  the container of an interface event (kinds 0 to 2), else null
/// @param pDevice     the device of a device event (kinds 3 to 5), else null
/// @param nState      kind of the event
/// @param nErrorCode  result of the pass with kind 7 (bits of a KELA_ERROR), else 0
/// @param pUser       as it was given to RegisterEventSink
using EnumEventCallback = void (*)(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                                   KELA_INTERFACE_STATE nState, int nErrorCode, void *pUser);

/// Finds the devices of one transport again and again, on a worker thread of its own, and reports what is
/// new, changed or gone.
///
/// Use: construct, RegisterEventSink and Init, SetFilter if wanted; UpdateOnce for every pass that is wanted,
/// FinishOneEnum after the end event (kind 7) of each pass. Who owns several enumerators calls Stop on all
/// of them before deleting the first, so that they end at the same time and not one after another.
///
/// Thread: any operation may be called from any thread while the worker is inside a pass, except Init and
/// the destructor, which belong to the owner. None waits for the pass, except the destructor.
class CDevicesEnum
{
public:
    CDevicesEnum();

    /// Stops the worker, waits until its pass is over, unloads the producers. No event comes afterwards.
    ~CDevicesEnum();

    CDevicesEnum(const CDevicesEnum &) = delete;
    CDevicesEnum &operator=(const CDevicesEnum &) = delete;

    // Life and requests: CDevicesEnum.cpp

    /// Chooses the transport and starts the worker, which then waits for requests. An enumerator whose
    /// worker runs already keeps it.
    /// @param bLibraryEnumFlag  handed to the device access; a device that names no transport is then GigE
    /// @return 0
    int Init(KELA_INTERFACE_TYPE nInterfaceType, bool bLibraryEnumFlag);

    /// Sets who receives the events; null for nobody.
    /// @return 0
    int RegisterEventSink(EnumEventCallback pCallback, void *pUser);

    /// Tells the worker to end after the pass under way and cancels what that pass waits for. Returns at
    /// once. For good: only the destructor is to follow.
    void Stop();

    /// Kept for its callers: the worker looks for requests every 10 ms whatever the value.
    void SetSleepTime(int nMilliseconds);

    /// Asks for one more pass. Passes never overlap and each waits for the acknowledgement of the one before.
    /// @param bReportDevices      false: devices found are not reported, so that all known ones but remote
    ///                            devices are reported removed. The latest call decides for all waiting passes.
    /// @param bRequeueInterfaces  true: the next pass of transport 16 asks every GenTL interface with a handle
    /// @return 0
    int UpdateOnce(bool bReportDevices, bool bRequeueInterfaces);

    /// Acknowledges the end event (kind 7) of a pass, so that the next one may begin.
    void FinishOneEnum();

    /// Forgets that a device is present, so that the next pass that finds it reports it as new.
    void SetOffCameraID(long lCameraID);

    /// A new number for a USB controller, from 1 on.
    int GetUSBControllersIDIndex();

    /// Hook for enumerating USB controllers; there are none.
    void EnumUSBControllers();

    // One pass: CDevicesEnum_pass.cpp

    /// Runs one pass on the calling thread and reports the devices. For the worker.
    /// @return 0, or the KELA_ERROR of the device access; then no device event is sent
    unsigned int EnumDevices();

    /// True when both records describe one device. Always false for GenTL enumerators.
    bool CompareDevice(const KELA_STRUCT_DEVICE_INFO &stLeft, const KELA_STRUCT_DEVICE_INFO &stRight) const;

    /// True when both records describe one controller.
    bool CompareUSBController(const KELA_USBCONTROLLER_INFO &stLeft,
                              const KELA_USBCONTROLLER_INFO &stRight) const;

    // What a device's state is: CDevicesEnum_state.cpp

    /// State of a device, asked from the device access where needed. Writes the stream destination of a
    /// GigE device that another host streams from.
    KELA_DEV_STATE GetDevState(KELA_STRUCT_DEVICE_INFO &stDeviceInfo);

    /// True when the device's address fits the card that saw it.
    bool IsReachable(const KELA_STRUCT_DEVICE_INFO &stDeviceInfo) const;

    /// True when another host holds the device and streams to a multicast group.
    bool IsMultiOpened(KELA_STRUCT_DEVICE_INFO &stDeviceInfo);

    /// True for 224.0.0.0 to 239.255.255.255.
    bool IsMultiIPAdder(unsigned int nIp) const;

    // Devices added by their address: CDevicesEnum_remote.cpp

    /// Adds a device that no discovery finds, by the address in its record. Asks the device, which takes
    /// 750 ms at most, and reports it as new before returning.
    /// @param pDeviceInfo  receives the device's description, identifier and state
    /// @return the identifier, also when the device was known already; -1 when it does not answer
    long AddRemoteDevice(KELA_STRUCT_DEVICE_INFO *pDeviceInfo);

    /// Takes back AddRemoteDevice and reports the device as removed before returning.
    /// @return 0
    int RemoveRemoteDevice(KELA_STRUCT_DEVICE_INFO *pDeviceInfo);

    /// Asks the device once more and refreshes its description.
    /// @return true when it answered
    bool GetRemoteDevice(KELA_STRUCT_DEVICE_INFO &stDeviceInfo);

    // Network cards: CDevicesEnum_networks.cpp

    /// Lists the host's cards anew and reports them. For the worker.
    void EnumNetWorks();

    /// The card through which a device was seen; only the card value is set when no card matches.
    KELA_DEVICE_NETWORK GetDeviceNetWorkInfo(const KELA_DEVICE_INFO_EX &stDeviceInfo) const;

    // GenTL producers and interfaces: CDevicesEnum_gentl.cpp

    /// Adds a producer by its path in the local 8-bit encoding, unless that very path is listed.
    void AddCtiPath(char *strCtiPath);

    /// Removes a producer, drops the handles of its interfaces and unloads it. Its interfaces are reported
    /// removed by the next pass.
    void RemoveCtiPath(char *strCtiPath);

    /// Enumerates the interfaces of all producers and reports them. For the worker.
    /// @return 0; KELA_ERROR_CANCELLED after Stop, when a producer was not waited for
    unsigned int EnumGenTLInterface();

    /// Enumerates the interfaces of one producer, reports them and appends them to @p vecInterfaces.
    /// @return 0 or a KELA_ERROR
    unsigned int EnumOneGenTLInterface(const QString &strCtiPath, QVector<KELA_GENTL_IF_INFO> &vecInterfaces);

    /// The known interface with the given identifier text and number, all zero when there is none.
    /// @param strInterfaceID  ends with a NUL
    /// @param pbFound         receives whether there is one; may be null
    KELA_GENTL_IF_INFO GetGENTLIFInfo(unsigned char *strInterfaceID, unsigned int nNumber, bool *pbFound) const;

    /// Number of interfaces that a producer had when it was last enumerated, 0 when it is unknown.
    void GetCtiInterfaceCount(char *strCtiPath, int *pCount) const;

    /// Identifier of a producer's interface, -1 when there is no such interface.
    void GetCtiInterfaceID(char *strCtiPath, int nIndex, int *pInterfaceID) const;

    /// Hands in the opened handle of an interface, whose devices the next pass of transport 16 then lists.
    /// Null when it was closed: the next pass then reports its devices as removed.
    void SetGenTLInterfaceHandle(int nInterfaceID, void *pHandle);

    /// The handle of an interface, null when it has none.
    void *GetGenTlInterfaceHandle(int nInterfaceID) const;

    // Filter: CDevicesEnum_filter.cpp

    /// Sets both modes and adds the four texts to their lists, empty ones too; nothing is ever taken off
    /// a list. Null changes nothing.
    void SetFilter(DEVICE_FILTER *pFilter);

    /// True when a vendor passes the filter.
    bool filterVendor(const QString &strVendor) const;

    /// True when a model passes the filter.
    bool filterModel(const QString &strModel) const;

    /// True when a device of a plain transport passes both filters.
    bool filterDevice(const KELA_DEVICE_INFO_EX &stDeviceInfo) const;

    /// True when a GenTL device passes both filters.
    bool filterGentlDevice(const KELA_DEVICE_INFO_EX &stDeviceInfo) const;

    /// True when @p value has every bit of @p flag; for flag 0, when value is 0.
    static bool testFlag(int flag, int value);

private:
    class TemporaryAccess;

    // Whom a state is asked from, null for nobody, and until when: null for as long as it takes.
    struct Asked {
        KelAIndustryControl *access = nullptr;
        AnswerDeadline *deadline = nullptr;
    };

    // CDevicesEnum.cpp
    static void startProc(void *enumerator);
    void EnumThreadProc();
    void runRequestedPass();
    void sendEvent(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                   KELA_INTERFACE_STATE nState, int nErrorCode = 0) const;
    void requeueInterfaces();

    // CDevicesEnum_pass.cpp
    bool endsPass(unsigned int result) const;
    unsigned int askForDevices();
    unsigned int GenerateDevicesInfo(FoundDevices &found);
    unsigned int generateFromHandles(FoundDevices &found);
    unsigned int generateFromInterfaces(FoundDevices &found);
    void generateFromDeviceList(FoundDevices &found);
    void mergeGenTLDevices(const KELA_DEVICE_INFO_LIST &list, FoundDevices &found) const;
    void mergeDevice(const KELA_DEVICE_INFO_EX &device, FoundDevices &found) const;
    void mergeGenTLDevice(const KELA_STRUCT_DEVICE_INFO &record, FoundDevices &found) const;
    void reportFoundDevices(FoundDevices &found, const QSet<long> &knownIds, QSet<long> &seenIds);
    void reportVanishedDevices(const QVector<long> &knownIds, const QSet<long> &seenIds);

    // CDevicesEnum_state.cpp
    KELA_DEV_STATE stateOf(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked);
    KELA_DEV_STATE gigeState(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked);
    KELA_DEV_STATE networkState(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked) const;
    bool isMultiOpened(KELA_STRUCT_DEVICE_INFO &device, const Asked &asked);

    // CDevicesEnum_remote.cpp
    unsigned int askRemote(KELA_STRUCT_DEVICE_INFO &record, AnswerDeadline *deadline = nullptr);
    void setStateWithin(AnswerDeadline &deadline, KELA_STRUCT_DEVICE_INFO &record);
    bool isBeingTakenBack(long id) const;
    unsigned int refreshRemoteDevices(const QSet<long> &knownIds, QSet<long> &seenIds);
    unsigned int refreshRemoteDevice(const KELA_STRUCT_DEVICE_INFO &before);
    bool keepRemoteDevice(const KELA_STRUCT_DEVICE_INFO &record, bool hasAnswered);

    // CDevicesEnum_networks.cpp
    void reportNetWorks(const QVector<KELA_NETWORK> &cards);
    void reportNetWork(const KELA_NETWORK &card, KELA_INTERFACE_STATE kind) const;

    // CDevicesEnum_gentl.cpp
    bool isProducerListed(const QString &path) const;
    unsigned int enumProducer(const QString &listedPath, QVector<KELA_GENTL_IF_INFO> &allInterfaces,
                              bool mustBeListed);
    QVector<KELA_GENTL_IF_INFO> replaceProducerInterfaces(const QString &path,
                                                          const QVector<KELA_GENTL_IF_INFO> &interfaces);
    void reportGenTLInterface(const KELA_GENTL_IF_INFO &interface, KELA_INTERFACE_STATE kind) const;
    KELA_GENTL_IF_INFO knownInterface(unsigned int id, bool &found) const;

    // Set before the worker starts and untouched until it has ended; the object itself is safe to be
    // cancelled and unloaded from any thread.
    std::unique_ptr<KelAIndustryControl> m_deviceAccess;
    QFuture<void> m_worker;
    // Filled and read by the worker alone.
    KELA_DEVICE_INFO_LIST m_deviceList = {};

    std::atomic<int32_t> m_sleepTime{30000};
    std::atomic<bool> m_running{false};
    std::atomic<bool> m_workerEnded{true};
    std::atomic<int32_t> m_usbControllerIdIndex{0};
    std::atomic<int32_t> m_pendingPasses{0};
    std::atomic<uint32_t> m_interfaceType{KELA_INTERFACE_TYPE_NONE};
    std::atomic<bool> m_libraryEnumFlag{false};
    std::atomic<bool> m_reportDevices{true};
    std::atomic<bool> m_acknowledged{true};

    // Guards everything below it. Never held while the callback or the device access runs.
    mutable std::mutex m_mutex;
    EnumEventCallback m_callback = nullptr;
    void *m_user = nullptr;
    QVector<KELA_NETWORK> m_netWorks;
    QVector<KELA_USBCONTROLLER_INFO> m_usbControllers;
    QMap<unsigned int, void *> m_interfaceHandles;
    QMap<unsigned int, void *> m_queuedInterfaces;
    QVector<KELA_GENTL_IF_INFO> m_interfaces;
    QVector<KELA_STRUCT_DEVICE_INFO> m_remoteDevices;
    QVector<long> m_idsBeingTakenBack;
    QVector<QString> m_producerPaths;
    QMap<QString, QVector<unsigned int>> m_producerInterfaceIds;
    // Shared: Stop may be cancelling one while its user is done with it.
    std::vector<std::shared_ptr<KelAIndustryControl>> m_temporaryAccesses;
    bool m_stopped = false;
    int32_t m_vendorMode = 0;
    int32_t m_modelMode = 0;
    QVector<QString> m_vendorInclude;
    QVector<QString> m_vendorExclude;
    QVector<QString> m_modelInclude;
    QVector<QString> m_modelExclude;

    // Guarded by locks of their own.
    KelANetWorkIdMng m_netWorkIds;
    KelACameraIdMng m_cameraIds;
};
