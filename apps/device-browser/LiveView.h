// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceValues.h"
#include "Explanation.h"
#include "OwnSession.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QTreeWidget;

namespace browser
{

class ConnectionManager;

/// What a connected camera says of itself, read again every second; of a transport without readable
/// values, what is known of the camera. Thread: GUI.
class LiveView : public QWidget
{
    Q_OBJECT

public:
    /// @param manager  holds the camera; must outlive the view
    LiveView(long id, ConnectionManager *manager, QWidget *parent = nullptr);

    long id() const { return m_id; }
    QString title() const { return m_name; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void showState();
    void showValues(const ReadValues &values);
    QVector<Fact> factsOfRecord() const;
    void retranslate();

    long m_id;
    ConnectionManager *m_manager;
    QString m_name;
    QLabel *m_title;
    QLabel *m_state;
    QTreeWidget *m_table;
    QElapsedTimer m_since;
};

} // namespace browser
