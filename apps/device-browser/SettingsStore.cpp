// SPDX-License-Identifier: Apache-2.0
#include "SettingsStore.h"

#include "Languages.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomDefine.h>
#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

namespace
{

constexpr uint kAllTransports = KELA_INTERFACE_TYPE_GIGE | KELA_INTERFACE_TYPE_USB |
                                KELA_INTERFACE_TYPE_CAMERALINK | KELA_INTERFACE_TYPE_GENTL;

/// A value of a file as a number, or its default where the file holds something else.
int number(const QVariant &held, int lowest, int highest, int standard)
{
    bool isNumber = false;
    const int value = held.toInt(&isNumber);
    return isNumber && value >= lowest && value <= highest ? value : standard;
}

int number(const QSettings &settings, const char *key, int lowest, int highest, int standard)
{
    return number(settings.value(QLatin1String(key)), lowest, highest, standard);
}

} // namespace

SettingsStore::SettingsStore(const QString &folder)
    : m_own(folder + QStringLiteral("/DeviceBrowser.ini"), QSettings::IniFormat)
    , m_library(folder + QStringLiteral("/LocalConfig.ini"), QSettings::IniFormat)
{
}

uint SettingsStore::transports() const
{
    return static_cast<uint>(number(m_own, "Search/Transports", 0, INT_MAX, kAllTransports)) & kAllTransports;
}

void SettingsStore::setTransports(uint transports)
{
    m_own.setValue(QStringLiteral("Search/Transports"), transports);
}

bool SettingsStore::isAutomaticRefresh() const
{
    return m_own.value(QStringLiteral("Search/Automatic"), true).toBool();
}

void SettingsStore::setAutomaticRefresh(bool on)
{
    m_own.setValue(QStringLiteral("Search/Automatic"), on);
}

QString SettingsStore::language() const
{
    const QString stored = m_own.value(QStringLiteral("View/Language")).toString();
    return isKnownLanguage(stored) ? stored : systemLanguage();
}

void SettingsStore::setLanguage(const QString &locale)
{
    m_own.setValue(QStringLiteral("View/Language"), locale);
}

int SettingsStore::theme() const
{
    return number(m_own, "View/Theme", Custom::ThemeDark, Custom::ThemeLight, Custom::ThemeDark);
}

void SettingsStore::setTheme(int theme)
{
    m_own.setValue(QStringLiteral("View/Theme"), theme);
}

int SettingsStore::encoding() const
{
    return number(m_own, "View/Encoding", KelInterface::EncodingUtf8, KelInterface::EncodingLatin1,
                  KelInterface::EncodingUtf8);
}

void SettingsStore::setEncoding(int encoding)
{
    m_own.setValue(QStringLiteral("View/Encoding"), encoding);
}

QStringList SettingsStore::hiddenKinds() const
{
    return m_own.value(QStringLiteral("View/HiddenKinds")).toStringList();
}

void SettingsStore::setHiddenKinds(const QStringList &kinds)
{
    m_own.setValue(QStringLiteral("View/HiddenKinds"), kinds);
}

QStringList SettingsStore::stayTop() const
{
    QStringList serials = m_own.value(QStringLiteral("View/StayTop")).toStringList();
    // An empty entry would match every row that is no camera.
    serials.removeAll(QString());
    serials.removeDuplicates();
    return serials;
}

void SettingsStore::setStayTop(const QStringList &serials)
{
    m_own.setValue(QStringLiteral("View/StayTop"), serials);
}

bool SettingsStore::isVirtualPortAllowed() const
{
    return m_own.value(QStringLiteral("Producers/VirtualPort"), true).toBool();
}

void SettingsStore::setVirtualPortAllowed(bool on)
{
    m_own.setValue(QStringLiteral("Producers/VirtualPort"), on);
}

bool SettingsStore::areRowButtonsShown() const
{
    return m_own.value(QStringLiteral("View/RowButtons"), true).toBool();
}

void SettingsStore::setRowButtonsShown(bool on)
{
    m_own.setValue(QStringLiteral("View/RowButtons"), on);
}

int SettingsStore::acknowledgeMode() const
{
    // A section that is written as [General] by hand holds keys without a group for QSettings; the device
    // library takes those too.
    const QVariant withoutGroup = m_library.value(QStringLiteral("EunmAckMode"));
    return number(m_library.value(QStringLiteral("General/EunmAckMode"), withoutGroup), 0, 1, 1);
}

void SettingsStore::setAcknowledgeMode(int mode)
{
    // The key is spelt as the device library reads it.
    m_library.setValue(QStringLiteral("General/EunmAckMode"), mode);
    m_library.sync();
}

QByteArray SettingsStore::geometry() const
{
    return m_own.value(QStringLiteral("Window/Geometry")).toByteArray();
}

QByteArray SettingsStore::layout() const
{
    return m_own.value(QStringLiteral("Window/Layout")).toByteArray();
}

void SettingsStore::setWindow(const QByteArray &geometry, const QByteArray &layout)
{
    m_own.setValue(QStringLiteral("Window/Geometry"), geometry);
    m_own.setValue(QStringLiteral("Window/Layout"), layout);
}

} // namespace browser
