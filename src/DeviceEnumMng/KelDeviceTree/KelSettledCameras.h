// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/KelARecords.h>

#include <QHash>
#include <QObject>
#include <QVector>

#include <cstdint>

class QEvent;
class QModelIndex;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

/// Knows the cameras whose rows are as their last event left them.
///
/// Nearly every event of a pass says what the one before said. To find that out from the row itself touches
/// dozens of small objects and two records, which are out of the processor's caches in a tree of thousands of
/// rows. Here it is one look-up, as long as nobody changed the row, its button or the encoding meanwhile.
///
/// Thread: GUI.
class KelSettledCameras : public QObject
{
    Q_OBJECT

public:
    /// @param tree  outlives this object
    explicit KelSettledCameras(QTreeWidget *tree);

    /// The camera's item when an event with this record would change nothing; null when it might.
    QTreeWidgetItem *find(const KELA_STRUCT_DEVICE_INFO &info);

    /// Remembers a row that an update with this record has just written.
    /// @param button  the row's button
    void settle(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *item, QWidget *button);

    /// Forgets what is known of a camera, because its button is about to be changed.
    void forget(int cameraId);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Row {
        QTreeWidgetItem *item = nullptr;
        uint64_t recordDigest = 0;
    };

    void onDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void watch(QWidget *button, int cameraId);
    void forgetAll();

    QHash<int, Row> m_rows;                ///< by camera identifier
    QHash<const void *, int> m_ids;        ///< camera identifiers of the rows' items
    QHash<const QObject *, int> m_buttons; ///< camera identifiers of the buttons that are watched
    int m_encoding = 0;                    ///< in which all labels of the rows were made
};
