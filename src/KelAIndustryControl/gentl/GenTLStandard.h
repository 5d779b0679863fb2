// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// The part of the GenTL standard's C interface that browsing needs. Names and numbers are the
/// standard's (GenTL 1.6, EMVA); a producer exports the functions under these names.

namespace kela::gentl
{

using GC_ERROR = std::int32_t;
using TL_HANDLE = void *;
using IF_HANDLE = void *;
using DEV_HANDLE = void *;
using bool8_t = std::uint8_t;
using INFO_DATATYPE = std::int32_t;

constexpr GC_ERROR GC_ERR_SUCCESS = 0;
constexpr GC_ERROR GC_ERR_ERROR = -1001;
constexpr GC_ERROR GC_ERR_NOT_INITIALIZED = -1002;
constexpr GC_ERROR GC_ERR_NOT_IMPLEMENTED = -1003;
constexpr GC_ERROR GC_ERR_RESOURCE_IN_USE = -1004;
constexpr GC_ERROR GC_ERR_ACCESS_DENIED = -1005;
constexpr GC_ERROR GC_ERR_INVALID_HANDLE = -1006;
constexpr GC_ERROR GC_ERR_INVALID_ID = -1007;
constexpr GC_ERROR GC_ERR_INVALID_PARAMETER = -1009;
constexpr GC_ERROR GC_ERR_IO = -1010;
constexpr GC_ERROR GC_ERR_TIMEOUT = -1011;
constexpr GC_ERROR GC_ERR_BUFFER_TOO_SMALL = -1016;
constexpr GC_ERROR GC_ERR_INVALID_INDEX = -1017;

constexpr INFO_DATATYPE INFO_DATATYPE_UNKNOWN = 0;
constexpr INFO_DATATYPE INFO_DATATYPE_STRING = 1;
constexpr INFO_DATATYPE INFO_DATATYPE_INT32 = 5;
constexpr INFO_DATATYPE INFO_DATATYPE_UINT32 = 6;

constexpr std::int32_t TL_INFO_ID = 0;
constexpr std::int32_t TL_INFO_VENDOR = 1;
constexpr std::int32_t TL_INFO_MODEL = 2;
constexpr std::int32_t TL_INFO_VERSION = 3;
constexpr std::int32_t TL_INFO_TLTYPE = 4;
constexpr std::int32_t TL_INFO_NAME = 5;
constexpr std::int32_t TL_INFO_PATHNAME = 6;
constexpr std::int32_t TL_INFO_DISPLAYNAME = 7;

constexpr std::int32_t INTERFACE_INFO_ID = 0;
constexpr std::int32_t INTERFACE_INFO_DISPLAYNAME = 1;

constexpr std::int32_t DEVICE_INFO_ID = 0;
constexpr std::int32_t DEVICE_INFO_VENDOR = 1;
constexpr std::int32_t DEVICE_INFO_MODEL = 2;
constexpr std::int32_t DEVICE_INFO_TLTYPE = 3;
constexpr std::int32_t DEVICE_INFO_DISPLAYNAME = 4;
constexpr std::int32_t DEVICE_INFO_ACCESS_STATUS = 5;
constexpr std::int32_t DEVICE_INFO_USER_DEFINED_NAME = 6;
constexpr std::int32_t DEVICE_INFO_SERIAL_NUMBER = 7;
constexpr std::int32_t DEVICE_INFO_VERSION = 8;

constexpr std::uint32_t DEVICE_ACCESS_STATUS_UNKNOWN = 0;
constexpr std::uint32_t DEVICE_ACCESS_STATUS_READWRITE = 1;
constexpr std::uint32_t DEVICE_ACCESS_STATUS_READONLY = 2;

/// The functions of a producer that browsing calls. The last three may be missing.
struct ProducerFunctions {
    GC_ERROR (*GCInitLib)() = nullptr;
    GC_ERROR (*GCCloseLib)() = nullptr;
    GC_ERROR (*TLOpen)(TL_HANDLE *) = nullptr;
    GC_ERROR (*TLClose)(TL_HANDLE) = nullptr;
    GC_ERROR (*TLUpdateInterfaceList)(TL_HANDLE, bool8_t *, std::uint64_t) = nullptr;
    GC_ERROR (*TLGetNumInterfaces)(TL_HANDLE, std::uint32_t *) = nullptr;
    GC_ERROR (*TLGetInterfaceID)(TL_HANDLE, std::uint32_t, char *, std::size_t *) = nullptr;
    GC_ERROR(*TLGetInterfaceInfo)
    (TL_HANDLE, const char *, std::int32_t, INFO_DATATYPE *, void *, std::size_t *) = nullptr;
    GC_ERROR (*TLOpenInterface)(TL_HANDLE, const char *, IF_HANDLE *) = nullptr;
    GC_ERROR (*IFClose)(IF_HANDLE) = nullptr;
    GC_ERROR (*IFUpdateDeviceList)(IF_HANDLE, bool8_t *, std::uint64_t) = nullptr;
    GC_ERROR (*IFGetNumDevices)(IF_HANDLE, std::uint32_t *) = nullptr;
    GC_ERROR (*IFGetDeviceID)(IF_HANDLE, std::uint32_t, char *, std::size_t *) = nullptr;
    GC_ERROR(*IFGetDeviceInfo)
    (IF_HANDLE, const char *, std::int32_t, INFO_DATATYPE *, void *, std::size_t *) = nullptr;
    GC_ERROR (*GCGetInfo)(std::int32_t, INFO_DATATYPE *, void *, std::size_t *) = nullptr;
    GC_ERROR (*TLGetInfo)(TL_HANDLE, std::int32_t, INFO_DATATYPE *, void *, std::size_t *) = nullptr;
    GC_ERROR (*GCGetLastError)(GC_ERROR *, char *, std::size_t *) = nullptr;
};

} // namespace kela::gentl
