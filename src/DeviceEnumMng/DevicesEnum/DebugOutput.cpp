// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>

#include <QDebug>
#include <QLoggingCategory>
#include <QMessageLogger>

namespace
{

// Log viewers filter the engine's lines by this source place, so it stays as it is wherever the code moves.
constexpr const char *kSourceFile = "src/DeviceEnumMng/DevicesEnum";
constexpr int kSourceLine = 58;
constexpr const char *kSourceFunction = "void CrossPlatOutputDebugInfo(const char*)";

} // namespace

bool isDebugOutputOn()
{
    const QLoggingCategory *category = QLoggingCategory::defaultCategory();
    return category == nullptr || category->isInfoEnabled();
}

void CrossPlatOutputDebugInfo(const char *strMessage)
{
    if (isDebugOutputOn()) {
        QMessageLogger(kSourceFile, kSourceLine, kSourceFunction).info().noquote().nospace()
            << QString::fromUtf8(strMessage);
    }
}
