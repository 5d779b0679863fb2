// SPDX-License-Identifier: Apache-2.0
// What the second edition of the interface added.
#include "SerialInterface.h"

using namespace kelsim;

extern "C" {

SIM_EXPORT std::int32_t clGetNumBytesAvail(void *reference, std::uint32_t *count)
{
    if (!reference)
        return kInvalidReference;
    if (portOf(reference)->description().is("uncounted"))
        return kFunctionNotFound;
    *count = static_cast<std::uint32_t>(portOf(reference)->available());
    return kNoError;
}

SIM_EXPORT std::int32_t clFlushPort(void *reference)
{
    if (!reference)
        return kInvalidReference;
    portOf(reference)->flush();
    return kNoError;
}

SIM_EXPORT std::int32_t clGetSupportedBaudRates(void *, std::uint32_t *rates)
{
    *rates = 1;
    return kNoError;
}

SIM_EXPORT std::int32_t clSetBaudRate(void *, std::uint32_t)
{
    return kNoError;
}
}
