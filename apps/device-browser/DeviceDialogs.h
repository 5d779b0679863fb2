// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>

class QDialog;
class QWidget;

namespace browser
{

class DeviceTasks;
class EventLog;
class RemoteCameras;
class TreeHost;

/// The dialogs about single cameras and the tree as a whole, and what they lead to. None of them starts
/// an event loop of its own. Thread: GUI.
class DeviceDialogs : public QObject
{
    Q_OBJECT

public:
    /// What the dialogs work with; all must outlive them.
    struct Parts {
        TreeHost *host;
        DeviceTasks *tasks;
        RemoteCameras *remoteCameras;
        EventLog *log;
    };

    DeviceDialogs(const Parts &parts, QWidget *window);

    /// Asks for a temporary address for a camera, and assigns it.
    void askAddress(long id);
    /// Asks for the address of a camera that is not seen by itself, and adds it.
    void askRemoteCamera();
    /// Edits the vendor and model filters, which take effect in a new tree.
    void editFilters();
    /// Tells how to work without a mouse.
    void showHelp();

Q_SIGNALS:
    /// The user wants a new tree.
    void rebuildWanted();
    /// Devices have changed; a pass shows how.
    void refreshWanted();

private:
    void open(QDialog *dialog);
    void addRemote(const QString &address);

    Parts m_parts;
    QWidget *m_window;
};

} // namespace browser
