// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QVector>

class KelDeviceTree;

namespace browser
{

class EventLog;
class TreeHost;

/// The GigE cameras that the user added by their addresses. A tree keeps them for its own life only, so
/// they are carried over from one tree into the next. Thread: GUI.
class RemoteCameras : public QObject
{
    Q_OBJECT

public:
    /// The host and the log must outlive this.
    RemoteCameras(TreeHost *host, EventLog *log, QObject *parent = nullptr);

    /// Adds the camera at an address; asks it first, which takes a moment.
    /// @return false when no camera answers there
    bool add(quint32 address);
    /// Takes out a camera that was added.
    void takeOut(long id);

private:
    void keepAddresses();
    void addKept();

    TreeHost *m_host;
    EventLog *m_log;
    QVector<quint32> m_kept; ///< not yet in the new tree
};

} // namespace browser
