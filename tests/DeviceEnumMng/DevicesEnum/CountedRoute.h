// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

/// Puts a program first on the PATH that notes each run and then runs the real route.
class CountedRoute
{
public:
    CountedRoute()
        : m_before(qgetenv("PATH"))
    {
        QString real = QStandardPaths::findExecutable("route");
        if (real.isEmpty()) {
            real = QStandardPaths::findExecutable("route", {"/usr/sbin", "/sbin"});
        }
        QFile program(m_folder.filePath("route"));
        if (program.open(QIODevice::WriteOnly)) {
            const QByteArray runs = QFile::encodeName(m_folder.filePath("runs"));
            program.write("#!/bin/sh\necho run >>'" + runs + "'\nexec '" + QFile::encodeName(real) +
                          "' \"$@\"\n");
            program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ":" + m_before);
    }

    ~CountedRoute() { qputenv("PATH", m_before); }

    CountedRoute(const CountedRoute &) = delete;
    CountedRoute &operator=(const CountedRoute &) = delete;

    int runs() const
    {
        QFile file(m_folder.filePath("runs"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_before;
};
