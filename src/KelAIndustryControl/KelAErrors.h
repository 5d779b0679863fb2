// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Result codes of the device access. Every operation returns 0 or one of these. They pass through
/// `int` unchanged in their bits and are shown as unsigned hexadecimal numbers.
enum KELA_ERROR : uint32_t {
    KELA_OK = 0,                                   ///< success
    KELA_ERROR_HANDLE = 0x90000000U,               ///< no object, or a handle that is unknown or closed
    KELA_ERROR_NOT_SUPPORTED = 0x90000001U,        ///< not supported by the device or the transport
    KELA_ERROR_PARAMETER = 0x90000002U,            ///< a parameter is null or out of range
    KELA_ERROR_CALL_ORDER = 0x90000003U,           ///< the operation needs another one first
    KELA_ERROR_RESOURCE = 0x90000004U,             ///< out of memory, sockets or threads
    KELA_ERROR_TIMEOUT = 0x90000005U,              ///< no answer in time
    KELA_ERROR_IN_USE = 0x90000006U,               ///< another client holds the device
    KELA_ERROR_UNREACHABLE = 0x90000007U,          ///< the device or its network cannot be reached
    KELA_ERROR_PERMISSION = 0x90000008U,           ///< the system or the device forbids it
    KELA_ERROR_PROTOCOL = 0x90000009U,             ///< the answer was not understood
    KELA_ERROR_CANCELLED = 0x9000000AU,            ///< ended by CancelEnum
    KELA_ERROR_PRODUCER_MISSING = 0x90002000U,     ///< the producer's file does not exist
    KELA_ERROR_NOT_A_PRODUCER = 0x90002001U,       ///< the file is not a loadable producer
    KELA_ERROR_PRODUCER_FAILED = 0x90002002U,      ///< the producer reported an error
    KELA_ERROR_GENTL_OBJECT_MISSING = 0x90002003U, ///< no object for the producer's enumeration
    KELA_ERROR_PRODUCER_REFUSED = 0x90002004U,     ///< the producer crashed or hung in its trial load
};
