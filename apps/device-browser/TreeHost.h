// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class KelDeviceTree;

namespace browser
{

/// The place of the device tree in the window, where a new tree may take the old one's place.
/// Thread: GUI.
class TreeHost : public QWidget
{
    Q_OBJECT

public:
    explicit TreeHost(QWidget *parent = nullptr);
    ~TreeHost() override;

    /// The tree in use; null before the first build().
    KelDeviceTree *tree() const { return m_tree; }
    /// Makes a tree, and takes the one in use away. Waits for the pass under way in the old tree.
    void build();

Q_SIGNALS:
    /// The tree in use is about to go.
    void aboutToReplace();
    void replaced(KelDeviceTree *tree);

private:
    KelDeviceTree *m_tree = nullptr;
};

} // namespace browser
