// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CommonTools/KelInterface.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QString>

namespace browser
{

/// Text of a fixed field in the encoding that the user chose.
template <std::size_t Size>
QString deviceText(const char (&field)[Size])
{
    return KelInterface::GetEncodeQStringFromChar(field, static_cast<int>(Size));
}

/// @overload
template <std::size_t Size>
QString deviceText(const unsigned char (&field)[Size])
{
    return KelInterface::GetEncodeQStringFromUnChar(field, static_cast<int>(Size));
}

/// The vendor's name, wherever the device's transport keeps it.
QString vendorName(const KELA_DEVICE_INFO_EX &device);
/// The name that the user gave the device; empty where the transport has none.
QString userDefinedName(const KELA_DEVICE_INFO_EX &device);
/// What a device is called: its user-defined name, else its model, with its serial number.
QString displayName(const KELA_DEVICE_INFO_EX &device);

} // namespace browser
