// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/KelAExport.h>
#include <KelAIndustryControl/KelARecords.h>

#include <cstdint>
#include <memory>

/// Severity of a log line of the device access.
enum KELA_LOG_LEVEL : int32_t {
    KELA_LOG_DEBUG = 0,
    KELA_LOG_INFO = 1,
    KELA_LOG_WARNING = 2,
    KELA_LOG_ERROR = 3,
};

/// Receives the log lines of the device access, from any of its threads.
/// @param level  a KELA_LOG_LEVEL
/// @param text   one line without its end, valid during the call only
/// @param user   as it was given to SetLogSink
using KELA_LOG_SINK = void (*)(KELA_LOG_LEVEL level, const char *text, void *user);

/// How a GenTL producer stands.
enum KELA_PRODUCER_STATE : uint32_t {
    KELA_PRODUCER_UNKNOWN = 0,        ///< not met by this process yet
    KELA_PRODUCER_READY = 1,          ///< tried or loaded, and answers as it should
    KELA_PRODUCER_REFUSED = 2,        ///< not loaded: it is no producer, or its trial went wrong
    KELA_PRODUCER_FAILING = 3,        ///< loaded or tried, but its last answers were errors
    KELA_PRODUCER_NOT_RESPONDING = 4, ///< a call into it has not come back in time
};

/// What is known of a GenTL producer. Texts are as the producer gives them, cut to their room and ended by
/// a NUL; empty when it has not told them.
struct KELA_GENTL_PRODUCER_INFO {
    uint32_t state;         ///< a KELA_PRODUCER_STATE
    uint32_t errorCode;     ///< of a refused one, the KELA_ERROR that its enumeration gives; else 0
    char trouble[512];      ///< why it is refused or what failed, in English, for people
    char vendor[128];       ///< its maker
    char model[128];        ///< its name
    char version[64];       ///< its own version
    char transportType[64]; ///< the standard's word for what it reaches, such as "GEV" or "Mixed"
    char displayName[128];  ///< how it wants to be called
};

/// Finds and opens cameras over the public machine-vision standards.
///
/// Objects are independent of each other. Every operation returns 0 or a KELA_ERROR.
///
/// Thread: one thread at a time enumerates on an object; meanwhile any thread may call
/// UnloadGenTLLibrary, IsDeviceAccessible, GetMulticastStatus and CancelEnum on it. They never wait
/// for the enumeration and never invalidate a list that was given before.
class KELA_EXPORT KelAIndustryControl
{
public:
    KelAIndustryControl();

    /// Gives back what Connect took, cancels what still waits and frees every record given out.
    ~KelAIndustryControl();

    KelAIndustryControl(const KelAIndustryControl &) = delete;
    KelAIndustryControl &operator=(const KelAIndustryControl &) = delete;

    /// Finds the devices of a set of transports.
    /// @param nInterfaceType  KELA_INTERFACE_TYPE bits; a transport without a backend adds nothing
    /// @param pList           receives at most 256 records in a stable order. The records belong to this
    ///                        object and live until its next EnumDevices or its destruction.
    /// @param bLibraryFlag    changes nothing here
    unsigned int EnumDevices(unsigned int nInterfaceType, KELA_DEVICE_INFO_LIST *pList, bool bLibraryFlag);

    /// Finds the interfaces of a GenTL producer, which is loaded on first use and counted per object.
    /// @param pList       receives at most 256 records, living until this object's next call with the same
    ///                    producer or its destruction
    /// @param strCtiPath  path of the producer's file in the local 8-bit encoding
    unsigned int EnumInterfacesByGenTL(KELA_GENTL_IF_INFO_LIST *pList, const char *strCtiPath);

    /// Finds the devices of a GenTL interface, given by its record.
    unsigned int EnumDevicesByGenTL(KELA_GENTL_IF_INFO *pInterface, KELA_DEVICE_INFO_LIST *pList);

    /// Finds the devices of a GenTL interface that a host opened.
    /// @param hInterface  from OpenGenTLInterface; checked at every use: one that is unknown, closed, or
    ///                    of an unloaded producer gives KELA_ERROR_HANDLE
    unsigned int EnumDevicesByGenTLEx(void *hInterface, KELA_DEVICE_INFO_LIST *pList);

    /// Gives up this object's use of a producer. Its file is let go when the last user has left it.
    unsigned int UnloadGenTLLibrary(const char *strCtiPath);

    /// Chooses the device that the operations below work on. Nothing is sent.
    /// @param pInfo      the device's record; copied
    /// @param bReserved  not used
    unsigned int Init(KELA_DEVICE_INFO_EX *pInfo, bool bReserved);

    /// Asks the device that @p pInfo names once more, by its address, and refreshes the record.
    /// Takes 750 ms at most.
    unsigned int GetDeviceInfo(KELA_DEVICE_INFO_EX *pInfo);

    /// Tells whether a device could be opened now in the given mode, without disturbing anybody.
    /// Answers from the enumeration that has just ended where that is fresh enough.
    /// @param nAccessMode   a KELA_ACCESS_MODE
    /// @param pbAccessible  receives the answer; false on every error
    unsigned int IsDeviceAccessible(KELA_DEVICE_INFO_EX *pInfo, unsigned int nAccessMode, bool *pbAccessible);

    /// Tells whether stream channel 0 of a GigE Vision device is open.
    unsigned int GetMulticastStatus(KELA_DEVICE_INFO_EX *pInfo, bool *pbOn);

    /// Opens the device that Init chose. Control and exclusive access are kept until DisConnect.
    /// @param nAccessMode  a KELA_ACCESS_MODE
    /// @return KELA_ERROR_CALL_ORDER without Init or when already connected, KELA_ERROR_IN_USE when another
    ///         client holds the device
    unsigned int Connect(unsigned int nAccessMode);

    /// Gives the device back. KELA_ERROR_CALL_ORDER when nothing is connected.
    /// @param bReserved  not used
    unsigned int DisConnect(bool bReserved);

    /// Reads an integer node of the connected device by its standard feature name.
    /// @param strNode    for example "GevSCDA"; an unknown name is KELA_ERROR_PARAMETER
    /// @param pValue     receives the value and its limits
    /// @param bReserved  not used
    unsigned int GetIntegerNodeValue(const char *strNode, KELCC_INTVALUE_EX_T *pValue, bool bReserved);

    /// Chooses how cameras answer the discovery, for the whole process.
    /// @param nMode  1 = they may answer by broadcast (the default; finds cameras of foreign subnets),
    ///               0 = to the asking address only
    unsigned int SetEnumAckMode(int nMode);

    /// Ends what this object is waiting for, now and later: the object is about to be destroyed.
    unsigned int CancelEnum();

    /// Opens a GenTL interface for a host.
    /// @param phInterface  receives a handle for EnumDevicesByGenTLEx; close it with CloseGenTLInterface
    unsigned int OpenGenTLInterface(const KELA_GENTL_IF_INFO *pInterface, void **phInterface);

    /// Closes a handle of OpenGenTLInterface.
    unsigned int CloseGenTLInterface(void *hInterface);

    /// Tells what is known of a GenTL producer without asking it: never waits for one.
    /// Thread: any, also during an enumeration.
    /// @param strCtiPath  path of the producer's file in the local 8-bit encoding
    /// @param pInfo       receives the facts
    /// @return KELA_ERROR_PRODUCER_MISSING when there is no such file
    unsigned int GetGenTLProducerInfo(const char *strCtiPath, KELA_GENTL_PRODUCER_INFO *pInfo);

    /// Assigns a GigE Vision device an address until it is switched off. The device obeys only while
    /// nobody holds it; whether it did shows in a later enumeration.
    unsigned int ForceIp(const KELA_DEVICE_INFO_EX *pInfo, uint32_t address, uint32_t mask, uint32_t gateway);

    /// Sends the log lines of the device access to a function, for the whole process.
    /// By default warnings and errors go to stderr.
    /// @param sink  null restores the default
    /// @param user  passed to every call of @p sink
    static unsigned int SetLogSink(KELA_LOG_SINK sink, void *user);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
