// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QSettings>

// The user's vendor and model filters, in an INI file of their own so that people can read and mend it.

namespace
{

QString filterFile()
{
    return KelInterface::programDataPath() + QStringLiteral("/DeviceFilter.ini");
}

QVariant stored(const char *key)
{
    QSettings settings(filterFile(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    return settings.value(QLatin1String(key));
}

// A number that nobody knows is handed on: whoever filters must not take it for "off".
int storedState(const char *key)
{
    bool isNumber = false;
    const int state = stored(key).toString().toInt(&isNumber);
    return isNumber ? state : KelInterface::FilterOff;
}

// A comma that somebody wrote by hand without quotation marks makes a list of the value.
QString storedText(const char *key)
{
    return stored(key).toStringList().join(QStringLiteral(", "));
}

bool store(const QString &group, int state, const QString &include, const QString &exclude)
{
    QSettings settings(filterFile(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    settings.beginGroup(group);
    settings.setValue(QStringLiteral("State"), state);
    settings.setValue(QStringLiteral("Include"), include);
    settings.setValue(QStringLiteral("Exclude"), exclude);
    settings.endGroup();
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace

namespace KelInterface
{

int vendorFilterState()
{
    return storedState("Vendor/State");
}

QString vendorFilterInclude()
{
    return storedText("Vendor/Include");
}

QString vendorFilterExclude()
{
    return storedText("Vendor/Exclude");
}

int modelFilterState()
{
    return storedState("Model/State");
}

QString modelFilterInclude()
{
    return storedText("Model/Include");
}

QString modelFilterExclude()
{
    return storedText("Model/Exclude");
}

bool setVendorFilter(int nState, const QString &strInclude, const QString &strExclude)
{
    return store(QStringLiteral("Vendor"), nState, strInclude, strExclude);
}

bool setModelFilter(int nState, const QString &strInclude, const QString &strExclude)
{
    return store(QStringLiteral("Model"), nState, strInclude, strExclude);
}

} // namespace KelInterface
