// SPDX-License-Identifier: Apache-2.0
#include "CtiConfigFile.h"

#include <CommonTools/KelInterface.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSettings>

static const QString s_strFGCtiHeader = QStringLiteral("KelFG");

namespace CtiConfigFile
{

QString path()
{
    return KelInterface::programDataPath() + QStringLiteral("/CtiConfig.ini");
}

QString readValue()
{
    const QSettings settings(path(), QSettings::IniFormat);
    return settings.value(QStringLiteral("Common/CtiDefault"), QVariant()).toString();
}

States parse(const QString &value)
{
    States states;
    const QStringList pieces = value.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString &entry : pieces) {
        const QStringList parts = entry.split(QLatin1Char(':'), Qt::SkipEmptyParts);
        if (parts.size() >= 2) {
            states[parts.at(0).trimmed()] = parts.at(1).trimmed().toInt();
        }
    }
    return states;
}

QString piece(const QString &name, int state)
{
    return name + QLatin1Char(':') + QString::number(state) + QLatin1Char(';');
}

QStringList producersIn(const QString &folder)
{
    QDir dir;
    dir.setPath(folder);
    dir.setNameFilters({QStringLiteral("*.cti")});

    QStringList names;
    QDirIterator entries(dir);
    while (entries.hasNext()) {
        entries.next();
        names.append(entries.fileInfo().fileName());
    }
    return names;
}

void merge(States &states, const QStringList &found)
{
    for (const QString &name : found) {
        if (!states.contains(name)) {
            states[name] = name.startsWith(s_strFGCtiHeader) ? 1 : 0;
        }
    }
    const QStringList stored = states.keys();
    for (const QString &name : stored) {
        if (!found.contains(name)) {
            states.remove(name);
        }
    }
}

} // namespace CtiConfigFile
