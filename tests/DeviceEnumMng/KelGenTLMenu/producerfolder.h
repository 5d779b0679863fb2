// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CommonTools/KelInterface.h>

#include <QDir>
#include <QFile>
#include <QSettings>

/// The default folder of the producers and the stored configuration, as a test wants them.
namespace ProducerFolder
{

inline const QString kFolder = QStringLiteral("/opt/KELS/lib/64/");

/// Makes a file with the given name in the default folder.
inline bool add(const QString &name)
{
    QFile file(kFolder + name);
    return file.open(QIODevice::WriteOnly);
}

inline QString configPath()
{
    return KelInterface::programDataPath() + QStringLiteral("/CtiConfig.ini");
}

/// Empties the default folder and forgets the configuration.
inline bool reset()
{
    QFile::remove(configPath());
    QDir folder(kFolder);
    if (folder.exists() && !folder.removeRecursively()) {
        return false;
    }
    return QDir().mkpath(kFolder);
}

/// Stores a configuration value.
inline void store(const QString &value)
{
    QSettings settings(configPath(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Common/CtiDefault"), value);
}

/// The stored configuration value; invalid when there is none.
inline QVariant stored()
{
    return QSettings(configPath(), QSettings::IniFormat).value(QStringLiteral("Common/CtiDefault"));
}

} // namespace ProducerFolder
