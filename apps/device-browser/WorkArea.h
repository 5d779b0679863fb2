// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTabWidget>

class QMimeData;

namespace browser
{

class ConnectionManager;
class DetailsPanel;
class LiveView;

/// The window's middle: the details of the selected row, and beside them a live view of each connected
/// camera that was dropped here. Thread: GUI.
class WorkArea : public QTabWidget
{
    Q_OBJECT

public:
    /// @param manager  holds the cameras; must outlive this
    WorkArea(DetailsPanel *details, ConnectionManager *manager, QWidget *parent = nullptr);

    /// Shows the live view of a connected camera, once.
    void openLiveView(long id);
    int liveViewCount() const { return count() - 1; }

    /// The identifier that a drag from the tree carries; nothing for other drags.
    static bool readDrag(const QMimeData *data, long *id);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    static QString closeText(const LiveView &view);
    QWidget *makeCloseButton(LiveView *view);
    void retranslate();

    ConnectionManager *m_manager;
};

} // namespace browser
