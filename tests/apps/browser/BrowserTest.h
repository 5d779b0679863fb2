// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TreeRows.h"

#include <QObject>

#include <memory>

class QAction;

namespace browser
{
class MainWindow;
}

/// Gives every test a browser window of its own, with fresh settings, among the simulated cameras.
class BrowserTest : public QObject
{
    Q_OBJECT

public:
    BrowserTest();
    ~BrowserTest() override;

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    void openWindow();
    void closeWindow();
    browser::MainWindow *window() const { return m_window.get(); }
    KelDeviceTree *tree() const;
    QTreeWidgetItem *row(const QString &serial) const { return browser::rows::rowOfSerial(*tree(), serial); }
    long idOf(const QString &serial) const { return browser::rows::idOf(row(serial)); }
    int stateOf(const QString &serial) const;
    void connectCamera(const QString &serial);
    /// Makes a camera deaf for broadcasts, as behind a router: it is found by its address only. It hears them
    /// again after steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}).
    void putConveyorBehindARouter();
    /// The action with this English text; mnemonics do not count.
    QAction *action(const QString &text) const;
    void trigger(const QString &text);
    /// Keeps a picture for people, where the build wants pictures.
    static void keepPicture(QWidget *widget, const QString &name);

    /// A camera that was unplugged has left the tree.
    static constexpr int kLeavesWithinMs = 3000;

    static const QString kEntrance;
    static const QString kConveyor;
    static const QString kInlet;
    static const QString kLabels;
    static const QString kStranger;

private:
    std::unique_ptr<browser::MainWindow> m_window;
};
