// SPDX-License-Identifier: Apache-2.0
#include "TreeFixture.h"

#include <ScriptedRecords.h>

#include <QAbstractItemModel>
#include <QMutex>

namespace
{

QMutex g_mutex;
QList<InfoLog::Line> g_lines;
QtMessageHandler g_previous = nullptr;

void keepInfo(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtInfoMsg) {
        const QMutexLocker lock(&g_mutex);
        g_lines.append({text, QString::fromUtf8(context.file), QString::fromUtf8(context.function),
                        QString::fromUtf8(context.category)});
    } else if (g_previous) {
        g_previous(type, context, text);
    }
}

KELA_STRUCT_DEVICE_INFO device(int id, KELA_DEV_STATE state, const KELA_DEVICE_INFO_EX &info)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = id;
    record.deviceState = static_cast<int32_t>(state);
    record.deviceInfo = info;
    return record;
}

} // namespace

namespace TreeRecords
{

KELA_NETWORK networkCard(unsigned int id, const std::string &hardwareAddress, const std::string &name)
{
    KELA_NETWORK card = {};
    card.id = id;
    setField(card.name, name);
    setField(card.hardwareAddress, hardwareAddress);
    return card;
}

KELA_USBCONTROLLER_INFO usbController(int id, const std::string &identifier, const std::string &name)
{
    KELA_USBCONTROLLER_INFO controller = {};
    controller.id = id;
    setField(controller.identifier, identifier);
    setField(controller.name, name);
    return controller;
}

KELA_GENTL_IF_INFO genTLInterface(unsigned int id, const std::string &identifier, unsigned int number,
                                  const std::string &name)
{
    KELA_GENTL_IF_INFO interface = ::genTLInterface(identifier, number);
    interface.id = id;
    setField(interface.displayName, name);
    return interface;
}

KELA_STRUCT_DEVICE_INFO gigeDevice(int id, const std::string &serial, const std::string &cardAddress)
{
    KELA_STRUCT_DEVICE_INFO record = device(id, KELA_DEV_STATE_GIGE_FREE, gigeCamera(serial));
    setField(record.network.hardwareAddress, cardAddress);
    return record;
}

KELA_STRUCT_DEVICE_INFO usbDevice(int id, const std::string &serial, const std::string &controller)
{
    KELA_STRUCT_DEVICE_INFO record = device(id, KELA_DEV_STATE_USB3_FREE, usbCamera(serial));
    setField(record.usbController.identifier, controller);
    return record;
}

KELA_STRUCT_DEVICE_INFO cameraLinkDevice(int id, const std::string &serial, const std::string &port)
{
    return device(id, KELA_DEV_STATE_CAMERALINK_FREE, cameraLinkCamera(serial, port));
}

KELA_STRUCT_DEVICE_INFO genTLDevice(int id, const std::string &serial, const std::string &interfaceKey,
                                    unsigned int number)
{
    KELA_STRUCT_DEVICE_INFO record =
        device(id, KELA_DEV_STATE_GENTL_FREE, ::genTLDevice(serial, interfaceKey, number));
    record.genTLInterface = ::genTLInterface(interfaceKey, number);
    return record;
}

KELA_INTERFACE_INFO containerEvent(const KELA_NETWORK &card)
{
    KELA_INTERFACE_INFO event = {};
    event.interfaceType = KELA_INTERFACE_TYPE_GIGE;
    event.special.network = card;
    return event;
}

KELA_INTERFACE_INFO containerEvent(const KELA_USBCONTROLLER_INFO &controller)
{
    KELA_INTERFACE_INFO event = {};
    event.interfaceType = KELA_INTERFACE_TYPE_USB;
    event.special.usbController = controller;
    return event;
}

KELA_INTERFACE_INFO containerEvent(const KELA_GENTL_IF_INFO &interface)
{
    KELA_INTERFACE_INFO event = {};
    event.interfaceType = KELA_INTERFACE_TYPE_GENTL;
    event.special.genTLInterface = interface;
    return event;
}

} // namespace TreeRecords

ModelChanges::ModelChanges(const KelDeviceTree &tree)
{
    connect(tree.model(), &QAbstractItemModel::dataChanged, this, [this] { ++count; });
}

TreeKiller::TreeKiller(KelDeviceTree *tree, const QByteArray &signal)
    : m_tree(tree)
{
    const QByteArray signature = signal.contains('(') ? signal : signal + "(QTreeWidgetItem*)";
    const bool isConnected = connect(tree, QByteArray("2" + signature).constData(), this, SLOT(kill()));
    Q_ASSERT(isConnected);
    Q_UNUSED(isConnected);
}

void TreeKiller::kill()
{
    delete m_tree.data();
}

InfoLog::InfoLog()
{
    const QMutexLocker lock(&g_mutex);
    g_lines.clear();
    g_previous = qInstallMessageHandler(keepInfo);
}

InfoLog::~InfoLog()
{
    qInstallMessageHandler(g_previous);
}

QList<InfoLog::Line> InfoLog::lines() const
{
    const QMutexLocker lock(&g_mutex);
    return g_lines;
}

QStringList InfoLog::texts() const
{
    QStringList texts;
    for (const Line &line : lines()) {
        texts.append(line.text);
    }
    return texts;
}
