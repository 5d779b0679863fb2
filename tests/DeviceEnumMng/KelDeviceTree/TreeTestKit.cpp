// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QCursor>
#include <QEvent>
#include <QStyleFactory>
#include <QTest>
#include <QTreeWidgetItem>

KELA_STRUCT_DEVICE_INFO deviceRecord(int id, const KELA_DEVICE_INFO_EX &device, KELA_DEV_STATE state)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = id;
    record.deviceState = static_cast<int32_t>(state);
    record.deviceInfo = device;
    return record;
}

KELA_STRUCT_DEVICE_INFO gigeRecord(int id, const std::string &serial, KELA_DEV_STATE state,
                                   const std::string &cardKey)
{
    KELA_STRUCT_DEVICE_INFO record = deviceRecord(id, gigeCamera(serial), state);
    setField(record.network.hardwareAddress, cardKey);
    return record;
}

KELA_NETWORK cardRecord(uint32_t id, const std::string &key)
{
    KELA_NETWORK record = {};
    record.id = id;
    setField(record.name, key + "[192.168.10.1]");
    setField(record.hardwareAddress, key);
    return record;
}

KELA_GENTL_IF_INFO interfaceRecord(uint32_t id, const std::string &identifier)
{
    KELA_GENTL_IF_INFO record = genTLInterface(identifier);
    record.id = id;
    return record;
}

QTreeWidgetItem *addCard(KelDeviceTree &tree, uint32_t id, const std::string &key)
{
    tree.onNewNetWork(QVariant::fromValue(cardRecord(id, key)));
    return tree.findItem(KelDeviceTree::ItemNetWork, static_cast<long>(id));
}

QTreeWidgetItem *addDevice(KelDeviceTree &tree, const KELA_STRUCT_DEVICE_INFO &record)
{
    tree.onNewDevice(QVariant::fromValue(record));
    return tree.findCameraItem(record.deviceId);
}

QTreeWidgetItem *addController(KelDeviceTree &tree, int id, const std::string &name)
{
    KELA_USBCONTROLLER_INFO record = {};
    record.id = id;
    setField(record.identifier, name);
    setField(record.name, name);
    tree.onNewUSBController(QVariant::fromValue(record));
    return tree.findItem(KelDeviceTree::ItemUSBController, id);
}

QTreeWidgetItem *addGenTLInterface(KelDeviceTree &tree, uint32_t id, const std::string &identifier)
{
    tree.onNewGenTLInterface(QVariant::fromValue(interfaceRecord(id, identifier)));
    return tree.findItem(KelDeviceTree::ItemGenTLInterface, static_cast<long>(id));
}

QTreeWidgetItem *addCameras(KelDeviceTree &tree, const QStringList &serials)
{
    QTreeWidgetItem *card = addCard(tree, 500, "card-a");
    for (int index = 0; index < serials.size(); ++index) {
        addDevice(tree, gigeRecord(index + 1, serials.at(index).toStdString()));
    }
    return card;
}

KelDeviceTreePrivate &privateOf(KelDeviceTree &tree)
{
    return *KelDeviceTreePrivate::of(&tree);
}

CustomPushButton *buttonOf(const QTreeWidgetItem *item)
{
    const auto *tree = static_cast<const KelDeviceTree *>(item->treeWidget());
    return KelDeviceTreePrivate::of(tree)->livingButton(item->data(0, KelDeviceTree::ItemRightBtnRole));
}

QStringList rowsBelow(KelDeviceTree &tree, const QTreeWidgetItem *parent)
{
    QStringList rows;
    for (int row = 0; row < parent->childCount(); ++row) {
        QTreeWidgetItem *item = parent->child(row);
        rows.append(tree.isCameraItem(item) ? tree.getCameraSerial(item) : item->text(0));
    }
    return rows;
}

void showTree(KelDeviceTree &tree)
{
    tree.setGeometry(100, 100, 320, 400);
    QCursor::setPos(0, 0);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCoreApplication::processEvents();
}

void hover(KelDeviceTree &tree, const QPoint &place)
{
    QCursor::setPos(tree.viewport()->mapToGlobal(place));
    QTest::mouseMove(tree.viewport(), place);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void hoverRow(KelDeviceTree &tree, const QTreeWidgetItem *item)
{
    hover(tree, tree.visualItemRect(item).center());
}

void settle()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::processEvents();
    }
}

bool soon(const std::function<bool()> &fact)
{
    return QTest::qWaitFor(fact, 5000);
}

RecordingStyle::RecordingStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

void RecordingStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    if (element == CE_ItemViewItem) {
        const auto *row = qstyleoption_cast<const QStyleOptionViewItem *>(option);
        drawn.insert(row->index, *row);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

WatchedTree::WatchedTree()
{
    style.setParent(this);
    setStyle(&style);
    viewport()->setStyle(&style);
}

WatchedTree::~WatchedTree()
{
    style.setParent(nullptr);
}

QStyleOptionViewItem WatchedTree::lastDrawn(const QTreeWidgetItem *item)
{
    return style.drawn.value(KelDeviceTreePrivate::indexOf(this, item));
}

EventCounter::EventCounter(QWidget *widget, QEvent::Type type)
    : m_type(type)
{
    widget->installEventFilter(this);
}

bool EventCounter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == m_type) {
        ++m_count;
    }
    return QObject::eventFilter(watched, event);
}
