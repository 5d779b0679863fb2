// SPDX-License-Identifier: Apache-2.0
#include "SelectionExplainer.h"

#include "ConnectionManager.h"
#include "ContainerExplanation.h"
#include "DetailsPanel.h"
#include "DeviceExplanation.h"
#include "InterfaceManager.h"
#include "TreeHost.h"
#include "TreeRows.h"

namespace browser
{

namespace
{

constexpr int kSoonMs = 100;

Group groupOf(int itemType)
{
    switch (itemType) {
    case KelDeviceTree::ItemGigERoot:
        return Group::GigE;
    case KelDeviceTree::ItemUSBRoot:
        return Group::Usb;
    case KelDeviceTree::ItemCamLinkRoot:
        return Group::CameraLink;
    case KelDeviceTree::ItemGenTLRoot:
        return Group::GenTL;
    case KelDeviceTree::ItemGigEVirtualGroup:
    case KelDeviceTree::ItemUSBVirtualGroup:
        return Group::Virtual;
    case KelDeviceTree::ItemOtherGroup:
        return Group::Other;
    default:
        return Group::All;
    }
}

} // namespace

SelectionExplainer::SelectionExplainer(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &SelectionExplainer::explain);
    connect(parts.host, &TreeHost::replaced, this, &SelectionExplainer::listenTo);
    connect(parts.connections, &ConnectionManager::changed, this, &SelectionExplainer::refresh);
    connect(parts.interfaces, &InterfaceManager::opened, this, &SelectionExplainer::refresh);
    connect(parts.interfaces, &InterfaceManager::closed, this, &SelectionExplainer::refresh);
}

void SelectionExplainer::refresh()
{
    if (!m_soon.isActive())
        m_soon.start(kSoonMs);
}

void SelectionExplainer::listenTo(KelDeviceTree *tree)
{
    // A choice is answered at once, but not while the tree is still telling of it.
    connect(tree, &QTreeWidget::currentItemChanged, this, [this] { m_soon.start(0); });
    connect(tree, &KelDeviceTree::sigFinishEnumOnce, this, &SelectionExplainer::refresh);
    connect(tree, &KelDeviceTree::sigDeleteDeviceItem, this, &SelectionExplainer::refresh);
    refresh();
}

void SelectionExplainer::explain()
{
    if (KelDeviceTree *tree = m_parts.host->tree())
        m_parts.panel->explain(explanationOf(tree->currentItem()));
    Q_EMIT explained();
}

Explanation SelectionExplainer::explanationOf(QTreeWidgetItem *row)
{
    const auto device = rows::deviceOf(row);
    if (!device)
        return explainContainer(row);
    DeviceContext context;
    context.host = readHostFacts();
    context.node = readDeviceNode(device->deviceInfo);
    context.session = m_parts.connections->session(device->deviceId);
    return explainDevice(*device, context);
}

Explanation SelectionExplainer::explainContainer(QTreeWidgetItem *row)
{
    KelDeviceTree &tree = *m_parts.host->tree();
    const int type = rows::typeOf(row);
    const bool isWholeTree = type == KelDeviceTree::ItemAll || type < 0;
    const auto devices = isWholeTree ? rows::allDevices(tree) : rows::devicesBelow(row);
    if (const auto card = rows::recordOf<KELA_NETWORK>(row); card && type == KelDeviceTree::ItemNetWork)
        return explainCard(*card, readHostFacts(), devices);
    if (const auto controller = rows::recordOf<KELA_USBCONTROLLER_INFO>(row);
        controller && type == KelDeviceTree::ItemUSBController)
        return explainController(*controller, devices);
    if (const auto entry = rows::recordOf<KELA_GENTL_IF_INFO>(row);
        entry && type == KelDeviceTree::ItemGenTLInterface) {
        const long id = rows::idOf(row);
        const InterfaceOrigin origin{m_producers.one(tree, tree.producerOfInterface(id)),
                                     m_parts.interfaces->isOpen(id)};
        return explainInterface(*entry, origin, devices);
    }
    if (type == KelDeviceTree::ItemGenTLRoot)
        return explainProducers(rows::textOf(row), m_producers.all(tree), devices);
    return explainGroup(groupOf(type), rows::textOf(row), readHostFacts(), devices);
}

} // namespace browser
