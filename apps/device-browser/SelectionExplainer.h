// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"
#include "ProducerLookUp.h"

#include <QObject>
#include <QTimer>

class KelDeviceTree;
class QTreeWidgetItem;

namespace browser
{

class ConnectionManager;
class DetailsPanel;
class InterfaceManager;
class TreeHost;

/// Keeps the details panel at the selected row: after a change of the row, the device or the connection
/// it explains anew, a burst of changes once. Thread: GUI.
class SelectionExplainer : public QObject
{
    Q_OBJECT

public:
    /// What is looked at; all must outlive this.
    struct Parts {
        TreeHost *host;
        ConnectionManager *connections;
        InterfaceManager *interfaces;
        DetailsPanel *panel;
    };

    explicit SelectionExplainer(const Parts &parts, QObject *parent = nullptr);

    /// Explains again soon.
    void refresh();

Q_SIGNALS:
    /// The panel shows the selected row as it is now.
    void explained();

private:
    void listenTo(KelDeviceTree *tree);
    void explain();
    Explanation explanationOf(QTreeWidgetItem *row);
    Explanation explainContainer(QTreeWidgetItem *row);

    Parts m_parts;
    ProducerLookUp m_producers;
    QTimer m_soon;
};

} // namespace browser
