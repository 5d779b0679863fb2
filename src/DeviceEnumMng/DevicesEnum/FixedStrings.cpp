// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>

#include <QByteArray>

#include <cstring>

char *CrossPlatstrcpy_s(char *strDestination, unsigned long nSize, const char *strSource)
{
    static_cast<void>(nSize);
    std::memcpy(strDestination, strSource, std::strlen(strSource) + 1);
    return strDestination;
}

void QString2Char(const QString &strText, char *pBuffer, int nSize)
{
    if (pBuffer == nullptr || nSize <= 0) {
        return;
    }
    const QByteArray bytes = strText.toUtf8();
    const int copied = bytes.size() < nSize ? bytes.size() : nSize - 1;
    std::memset(pBuffer, 0, static_cast<std::size_t>(nSize));
    std::memcpy(pBuffer, bytes.constData(), static_cast<std::size_t>(copied));
}
