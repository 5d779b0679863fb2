// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGINT and SIGTERM into a signal on this object's thread. One per process.
class Interruption : public QObject
{
    Q_OBJECT

public:
    Interruption();
    ~Interruption() override;

Q_SIGNALS:
    void requested();

private:
    QSocketNotifier *m_notifier = nullptr;
};
