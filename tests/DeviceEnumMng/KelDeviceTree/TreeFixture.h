// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "KelDeviceTree_p.h"

#include <DeviceEnumMng/KelDeviceTree.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QSignalSpy>
#include <QStringList>
#include <QTreeWidgetItem>

#include <string>

Q_DECLARE_METATYPE(QTreeWidgetItem *)
/// Lets a spy keep the items of the tree's signals.
inline const int kItemMetaType = qRegisterMetaType<QTreeWidgetItem *>("QTreeWidgetItem*");

/// Records as an enumerator reports them.
namespace TreeRecords
{

/// A network card with a hardware address.
KELA_NETWORK networkCard(unsigned int id, const std::string &hardwareAddress, const std::string &name = "eth0");
/// A USB controller.
KELA_USBCONTROLLER_INFO usbController(int id, const std::string &identifier, const std::string &name = "xHCI");
/// A GenTL interface with the stable identifier that an enumerator gave it.
KELA_GENTL_IF_INFO genTLInterface(unsigned int id, const std::string &identifier, unsigned int number = 0,
                                  const std::string &name = "Interface");

/// A GigE camera that a card sees; state free.
KELA_STRUCT_DEVICE_INFO gigeDevice(int id, const std::string &serial,
                                   const std::string &cardAddress = std::string());
/// A USB camera on a controller; state free.
KELA_STRUCT_DEVICE_INFO usbDevice(int id, const std::string &serial,
                                  const std::string &controller = std::string());
/// A Camera Link camera; state free.
KELA_STRUCT_DEVICE_INFO cameraLinkDevice(int id, const std::string &serial, const std::string &port = "COM1");
/// A GenTL device of an interface; state free.
KELA_STRUCT_DEVICE_INFO genTLDevice(int id, const std::string &serial,
                                    const std::string &interfaceKey = std::string(), unsigned int number = 0);

/// A container event's record.
KELA_INTERFACE_INFO containerEvent(const KELA_NETWORK &card);
KELA_INTERFACE_INFO containerEvent(const KELA_USBCONTROLLER_INFO &controller);
KELA_INTERFACE_INFO containerEvent(const KELA_GENTL_IF_INFO &interface);

} // namespace TreeRecords

template <typename Record>
QVariant variantOf(const Record &record)
{
    return QVariant::fromValue(record);
}

/// The record of an item.
template <typename Record>
Record recordOf(const QTreeWidgetItem *item)
{
    return item->data(0, KelDeviceTree::ItemInfoRole).value<Record>();
}

/// Counts how often the tree's model told a change.
class ModelChanges : public QObject
{
public:
    explicit ModelChanges(const KelDeviceTree &tree);
    int count = 0;
};

/// Destroys a tree in the middle of one of its signals.
class TreeKiller : public QObject
{
    Q_OBJECT

public:
    /// @param signal  name of a signal with an item, or a whole signature
    TreeKiller(KelDeviceTree *tree, const QByteArray &signal);

public Q_SLOTS:
    void kill();

private:
    QPointer<KelDeviceTree> m_tree;
};

/// Keeps what the process logs at information level.
class InfoLog
{
public:
    struct Line {
        QString text;
        QString file;
        QString function;
        QString category;
    };

    InfoLog();
    ~InfoLog();
    InfoLog(const InfoLog &) = delete;
    InfoLog &operator=(const InfoLog &) = delete;

    QList<Line> lines() const;
    QStringList texts() const;
};
