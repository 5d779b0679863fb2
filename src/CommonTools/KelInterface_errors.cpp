// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <KelAIndustryControl/KelAErrors.h>

#include <QCoreApplication>

#include <array>

namespace
{

struct ErrorText {
    uint32_t code;
    const char *text;
};

constexpr std::array kErrorTexts = {
    ErrorText{KELA_OK, QT_TRANSLATE_NOOP("KelInterface", "Success.")},
    ErrorText{KELA_ERROR_HANDLE, QT_TRANSLATE_NOOP("KelInterface", "The device or interface is not open.")},
    ErrorText{KELA_ERROR_NOT_SUPPORTED, QT_TRANSLATE_NOOP("KelInterface", "The device does not support this.")},
    ErrorText{KELA_ERROR_PARAMETER, QT_TRANSLATE_NOOP("KelInterface", "A parameter is not valid.")},
    ErrorText{KELA_ERROR_CALL_ORDER, QT_TRANSLATE_NOOP("KelInterface", "Another step is needed first.")},
    ErrorText{KELA_ERROR_RESOURCE,
              QT_TRANSLATE_NOOP("KelInterface", "The system is out of memory, sockets or threads.")},
    ErrorText{KELA_ERROR_TIMEOUT, QT_TRANSLATE_NOOP("KelInterface", "The device did not answer in time.")},
    ErrorText{KELA_ERROR_IN_USE, QT_TRANSLATE_NOOP("KelInterface", "Another program is using the device.")},
    ErrorText{KELA_ERROR_UNREACHABLE,
              QT_TRANSLATE_NOOP("KelInterface", "The device or its network cannot be reached.")},
    ErrorText{KELA_ERROR_PERMISSION,
              QT_TRANSLATE_NOOP("KelInterface", "The system or the device does not permit this.")},
    ErrorText{KELA_ERROR_PROTOCOL,
              QT_TRANSLATE_NOOP("KelInterface", "The answer of the device was not understood.")},
    ErrorText{KELA_ERROR_CANCELLED, QT_TRANSLATE_NOOP("KelInterface", "Cancelled.")},
    ErrorText{KELA_ERROR_PRODUCER_MISSING,
              QT_TRANSLATE_NOOP("KelInterface", "The file of the GenTL producer does not exist.")},
    ErrorText{KELA_ERROR_NOT_A_PRODUCER,
              QT_TRANSLATE_NOOP("KelInterface", "The file is not a GenTL producer that can be loaded.")},
    ErrorText{KELA_ERROR_PRODUCER_FAILED,
              QT_TRANSLATE_NOOP("KelInterface", "The GenTL producer reported an error.")},
    ErrorText{KELA_ERROR_GENTL_OBJECT_MISSING,
              QT_TRANSLATE_NOOP("KelInterface", "The GenTL producer is not open.")},
    ErrorText{KELA_ERROR_PRODUCER_REFUSED,
              QT_TRANSLATE_NOOP("KelInterface", "The GenTL producer crashed or hung when it was tried, "
                                                "so it is not loaded.")},
};

} // namespace

namespace KelInterface
{

QString GenerateErrorDesc(int nErrorCode)
{
    const auto code = static_cast<uint32_t>(nErrorCode);
    for (const ErrorText &entry : kErrorTexts) {
        if (entry.code == code) {
            return QCoreApplication::translate("KelInterface", entry.text);
        }
    }
    return QCoreApplication::translate("KelInterface", "Unknown error.");
}

QString IntCode2DisplayCode(int nErrorCode)
{
    const QString digits = QString::number(static_cast<uint32_t>(nErrorCode), 16).toUpper();
    return QStringLiteral("[0x%1]").arg(digits.rightJustified(8, QLatin1Char('0')));
}

} // namespace KelInterface
