// SPDX-License-Identifier: Apache-2.0
#include "VirtualCards.h"

#include <QDeadlineTimer>
#include <QNetworkInterface>
#include <QProcess>
#include <QThread>

bool ip(const QStringList &arguments)
{
    return QProcess::execute("ip", arguments) == 0;
}

bool makeCard(const QString &name, const QString &hardwareAddress)
{
    static int s_peers = 0;
    const QString made = QString("made%1").arg(++s_peers);
    const QString peer = QString("peer%1").arg(s_peers);
    return ip({"link", "add", "name", made, "address", hardwareAddress, "type", "veth", "peer", "name",
               peer}) &&
           ip({"link", "set", "dev", made, "name", name}) && ip({"link", "set", "dev", peer, "up"}) &&
           bringUp(name);
}

bool bringUp(const QString &name)
{
    if (!ip({"link", "set", "dev", name, "up"})) {
        return false;
    }
    const QDeadlineTimer deadline(10000);
    while (!QNetworkInterface::interfaceFromName(name).flags().testFlag(QNetworkInterface::IsRunning)) {
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(1);
    }
    return true;
}

bool addAddress(const QString &name, const QString &address)
{
    return ip({"address", "add", address, "dev", name});
}

void removeAllCards()
{
    QProcess list;
    list.start("ip", {"-o", "link", "show", "type", "veth"});
    list.waitForFinished();
    const QStringList lines = QString::fromUtf8(list.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        // "7: name@peer: <FLAGS> ..."
        const QString name = line.section(": ", 1, 1).section('@', 0, 0);
        if (name.startsWith("peer")) {
            ip({"link", "delete", "dev", name});
        }
    }
}
