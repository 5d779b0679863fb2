// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QString>

#include <cstddef>

/// Text of a fixed field, read as UTF-8 up to its first NUL or its end.
template <std::size_t Size>
QString textOf(const char (&field)[Size])
{
    const std::string_view text = fixedText(field);
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// Copies a whole string with its NUL. The size is not enforced: the destination must be long enough.
/// @return the destination
char *CrossPlatstrcpy_s(char *strDestination, unsigned long nSize, const char *strSource);

/// Zeroes @p nSize bytes of a buffer and copies the text's UTF-8 bytes into it, at most @p nSize - 1.
void QString2Char(const QString &strText, char *pBuffer, int nSize);
