// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/KelDeviceTree.h>
#include <KelAIndustryControl/KelARecords.h>

#include <ScriptedRecords.h>

#include <QEvent>
#include <QHash>
#include <QModelIndex>
#include <QObject>
#include <QProxyStyle>
#include <QString>
#include <QStyleOptionViewItem>

#include <functional>
#include <string>

class CustomPushButton;
class KelDeviceTreePrivate;
class QTreeWidgetItem;

/// A device's record as an enumerator would report it.
KELA_STRUCT_DEVICE_INFO deviceRecord(int id, const KELA_DEVICE_INFO_EX &device, KELA_DEV_STATE state);
/// A GigE camera that was seen by the card "card-a".
KELA_STRUCT_DEVICE_INFO gigeRecord(int id, const std::string &serial,
                                   KELA_DEV_STATE state = KELA_DEV_STATE_GIGE_FREE,
                                   const std::string &cardKey = "card-a");
/// A network card.
KELA_NETWORK cardRecord(uint32_t id, const std::string &key);
/// A GenTL interface.
KELA_GENTL_IF_INFO interfaceRecord(uint32_t id, const std::string &identifier);

/// Hands the tree an event's record as its slots take it.
QTreeWidgetItem *addCard(KelDeviceTree &tree, uint32_t id, const std::string &key);
QTreeWidgetItem *addDevice(KelDeviceTree &tree, const KELA_STRUCT_DEVICE_INFO &record);
QTreeWidgetItem *addController(KelDeviceTree &tree, int id, const std::string &name);
QTreeWidgetItem *addGenTLInterface(KelDeviceTree &tree, uint32_t id, const std::string &identifier);
/// Adds the card "card-a" and cameras with these serial numbers under it, identifiers from 1 on.
QTreeWidgetItem *addCameras(KelDeviceTree &tree, const QStringList &serials);

/// The private part of a tree.
KelDeviceTreePrivate &privateOf(KelDeviceTree &tree);
/// The button that a row's role points to.
CustomPushButton *buttonOf(const QTreeWidgetItem *item);
/// Serial numbers or, for other rows, texts of the rows below an item, from the top.
QStringList rowsBelow(KelDeviceTree &tree, const QTreeWidgetItem *parent);

/// Shows a tree at a fixed place and size and waits until it is painted.
void showTree(KelDeviceTree &tree);
/// Moves the pointer to a place of the viewport and lets the tree react.
void hover(KelDeviceTree &tree, const QPoint &place);
/// Moves the pointer into the middle of a row.
void hoverRow(KelDeviceTree &tree, const QTreeWidgetItem *item);

/// Lets everything happen that waits for the event loop.
void settle();

/// Waits until a fact comes true.
/// @return false when it did not within five seconds
bool soon(const std::function<bool()> &fact);

/// Remembers how each row was last drawn.
class RecordingStyle : public QProxyStyle
{
public:
    RecordingStyle();
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;

    mutable QHash<QModelIndex, QStyleOptionViewItem> drawn;
};

/// A tree that tells how its rows are drawn.
struct WatchedTree : KelDeviceTree {
    WatchedTree();
    ~WatchedTree() override;
    QStyleOptionViewItem lastDrawn(const QTreeWidgetItem *item);

    RecordingStyle style;
};

/// Counts the events of one kind that a widget receives.
class EventCounter : public QObject
{
    Q_OBJECT

public:
    EventCounter(QWidget *widget, QEvent::Type type);
    int count() const { return m_count; }
    void reset() { m_count = 0; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QEvent::Type m_type;
    int m_count = 0;
};
