// SPDX-License-Identifier: Apache-2.0
// The functions of the standard that a producer exports and that browsing does not call: opening devices,
// streaming, events. A sample has none of it and says so.
#include <KelAIndustryControl/gentl/GenTLStandard.h>

using kela::gentl::GC_ERR_NOT_IMPLEMENTED;
using kela::gentl::GC_ERROR;

// The arguments are the caller's to clean up, so that a function without any can stand for each.
#define SAMPLE_NOT_IMPLEMENTED(name)                                                                           \
    extern "C" __attribute__((visibility("default"))) GC_ERROR name()                                          \
    {                                                                                                          \
        return GC_ERR_NOT_IMPLEMENTED;                                                                         \
    }

SAMPLE_NOT_IMPLEMENTED(GCReadPort)
SAMPLE_NOT_IMPLEMENTED(GCWritePort)
SAMPLE_NOT_IMPLEMENTED(GCGetPortInfo)
SAMPLE_NOT_IMPLEMENTED(GCGetPortURL)
SAMPLE_NOT_IMPLEMENTED(GCGetNumPortURLs)
SAMPLE_NOT_IMPLEMENTED(GCGetPortURLInfo)
SAMPLE_NOT_IMPLEMENTED(GCReadPortStacked)
SAMPLE_NOT_IMPLEMENTED(GCWritePortStacked)
SAMPLE_NOT_IMPLEMENTED(GCRegisterEvent)
SAMPLE_NOT_IMPLEMENTED(GCUnregisterEvent)
SAMPLE_NOT_IMPLEMENTED(EventGetData)
SAMPLE_NOT_IMPLEMENTED(EventGetDataInfo)
SAMPLE_NOT_IMPLEMENTED(EventGetInfo)
SAMPLE_NOT_IMPLEMENTED(EventFlush)
SAMPLE_NOT_IMPLEMENTED(EventKill)
SAMPLE_NOT_IMPLEMENTED(IFGetInfo)
SAMPLE_NOT_IMPLEMENTED(IFGetParentTL)
SAMPLE_NOT_IMPLEMENTED(IFOpenDevice)
SAMPLE_NOT_IMPLEMENTED(DevClose)
SAMPLE_NOT_IMPLEMENTED(DevGetInfo)
SAMPLE_NOT_IMPLEMENTED(DevGetPort)
SAMPLE_NOT_IMPLEMENTED(DevGetNumDataStreams)
SAMPLE_NOT_IMPLEMENTED(DevGetDataStreamID)
SAMPLE_NOT_IMPLEMENTED(DevOpenDataStream)
SAMPLE_NOT_IMPLEMENTED(DevGetParentIF)
SAMPLE_NOT_IMPLEMENTED(DSAnnounceBuffer)
SAMPLE_NOT_IMPLEMENTED(DSAllocAndAnnounceBuffer)
SAMPLE_NOT_IMPLEMENTED(DSFlushQueue)
SAMPLE_NOT_IMPLEMENTED(DSStartAcquisition)
SAMPLE_NOT_IMPLEMENTED(DSStopAcquisition)
SAMPLE_NOT_IMPLEMENTED(DSGetInfo)
SAMPLE_NOT_IMPLEMENTED(DSGetBufferID)
SAMPLE_NOT_IMPLEMENTED(DSClose)
SAMPLE_NOT_IMPLEMENTED(DSRevokeBuffer)
SAMPLE_NOT_IMPLEMENTED(DSQueueBuffer)
SAMPLE_NOT_IMPLEMENTED(DSGetBufferInfo)
SAMPLE_NOT_IMPLEMENTED(DSGetBufferChunkData)
SAMPLE_NOT_IMPLEMENTED(DSGetParentDev)
SAMPLE_NOT_IMPLEMENTED(DSGetNumBufferParts)
SAMPLE_NOT_IMPLEMENTED(DSGetBufferPartInfo)
