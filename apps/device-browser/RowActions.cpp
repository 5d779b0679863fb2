// SPDX-License-Identifier: Apache-2.0
#include "RowActions.h"

#include "ConnectionController.h"
#include "ConnectionManager.h"
#include "DeviceDialogs.h"
#include "DeviceState.h"
#include "ForceIpPlan.h"
#include "InterfaceManager.h"
#include "Preferences.h"
#include "RemoteCameras.h"
#include "TreeHost.h"
#include "TreeRows.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QWidget>

namespace browser
{

RowActions::RowActions(const Parts &parts, QWidget *window)
    : QObject(window)
    , m_parts(parts)
    , m_connect(new QAction(this))
    , m_openLive(new QAction(this))
    , m_keepOnTop(new QAction(this))
    , m_assignAddress(new QAction(this))
    , m_takeOut(new QAction(this))
    , m_refreshGroup(new QAction(this))
    , m_producers(new QAction(this))
    , m_removeProducer(new QAction(this))
{
    m_keepOnTop->setCheckable(true);
    addTo(window, m_connect, QStringLiteral("Ctrl+Return"));
    addTo(window, m_openLive, QStringLiteral("Ctrl+L"));
    addTo(window, m_keepOnTop, QStringLiteral("Ctrl+T"));
    addTo(window, m_assignAddress, QStringLiteral("Ctrl+I"));
    addTo(window, m_takeOut, QKeySequence::Delete);
    addTo(window, m_refreshGroup, QStringLiteral("Shift+F5"));
    addTo(window, m_producers, QStringLiteral("Ctrl+P"));
    addTo(window, m_removeProducer, QKeySequence());
    connect(m_connect, &QAction::triggered, this, &RowActions::toggleConnection);
    connect(m_openLive, &QAction::triggered, this, [this] { Q_EMIT liveViewWanted(rows::idOf(row())); });
    connect(m_keepOnTop, &QAction::triggered, this, &RowActions::toggleKeptOnTop);
    connect(m_assignAddress, &QAction::triggered, this,
            [this] { m_parts.dialogs->askAddress(rows::idOf(row())); });
    connect(m_takeOut, &QAction::triggered, this,
            [this] { m_parts.remoteCameras->takeOut(rows::idOf(row())); });
    connect(m_refreshGroup, &QAction::triggered, this, &RowActions::refreshGroup);
    connect(m_producers, &QAction::triggered, this, &RowActions::showProducers);
    connect(m_removeProducer, &QAction::triggered, this, &RowActions::removeProducer);
    connect(parts.host, &TreeHost::replaced, this, &RowActions::listenTo);
}

void RowActions::update()
{
    const QTreeWidgetItem *selected = m_parts.host->tree() ? row() : nullptr;
    for (QAction *action : {m_connect, m_openLive, m_keepOnTop, m_assignAddress, m_takeOut, m_refreshGroup,
                            m_producers, m_removeProducer})
        action->setEnabled(false);
    m_keepOnTop->setChecked(false);
    m_connect->setText(tr("&Connect"));
    if (rows::isDevice(selected)) {
        updateForDevice(selected);
    } else if (rows::typeOf(selected) == KelDeviceTree::ItemGenTLInterface) {
        updateForInterface(selected);
    } else {
        updateForGroup(selected);
    }
}

void RowActions::retranslate()
{
    m_openLive->setText(tr("Show &live values"));
    m_keepOnTop->setText(tr("&Keep on top"));
    m_assignAddress->setText(tr("&Assign temporary address…"));
    m_takeOut->setText(tr("&Take out"));
    m_refreshGroup->setText(tr("&Refresh this group"));
    m_producers->setText(tr("Choose &producers…"));
    m_removeProducer->setText(tr("Remove imported pro&ducer"));
    update();
}

void RowActions::fill(QMenu *menu) const
{
    menu->addAction(m_connect);
    menu->addAction(m_openLive);
    menu->addSeparator();
    menu->addAction(m_keepOnTop);
    menu->addAction(m_assignAddress);
    menu->addAction(m_takeOut);
    menu->addSeparator();
    menu->addAction(m_refreshGroup);
    menu->addAction(m_producers);
    menu->addAction(m_removeProducer);
}

void RowActions::listenTo(KelDeviceTree *tree)
{
    connect(tree, &QWidget::customContextMenuRequested, this, &RowActions::showMenu);
    connect(tree, &QTreeWidget::currentItemChanged, this, &RowActions::update);
    connect(tree, &QTreeWidget::itemDoubleClicked, this, [this] { m_connect->trigger(); });
    tree->installEventFilter(this);
}

bool RowActions::eventFilter(QObject *watched, QEvent *event)
{
    // Of itself a view places the menu of the keyboard in its middle, over some other row.
    if (event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent *>(event)->reason() == QContextMenuEvent::Keyboard) {
        showMenuOfCurrentRow();
        return true;
    }
    // Not the view's own "activated": with some styles a single click sends that.
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_connect->isEnabled()) {
            m_connect->trigger();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void RowActions::showMenu(const QPoint &place)
{
    KelDeviceTree *tree = m_parts.host->tree();
    if (QTreeWidgetItem *under = tree->itemAt(place))
        tree->setCurrentItem(under);
    popUpMenu(tree->viewport()->mapToGlobal(place));
}

void RowActions::showMenuOfCurrentRow()
{
    KelDeviceTree *tree = m_parts.host->tree();
    if (QTreeWidgetItem *current = row()) {
        tree->scrollToItem(current);
        popUpMenu(tree->viewport()->mapToGlobal(tree->visualItemRect(current).bottomLeft()));
    }
}

void RowActions::popUpMenu(const QPoint &place)
{
    KelDeviceTree *tree = m_parts.host->tree();
    update();
    auto *menu = new QMenu(tree);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill(menu);
    // What the row does not offer would only be clutter here; the menu bar shows everything.
    const QList<QAction *> actions = menu->actions();
    for (QAction *action : actions) {
        if (!action->isEnabled() && !action->isSeparator())
            menu->removeAction(action);
    }
    if (menu->isEmpty()) {
        menu->deleteLater();
    } else {
        menu->popup(place);
    }
}

void RowActions::updateForDevice(const QTreeWidgetItem *selected)
{
    const auto device = rows::deviceOf(selected);
    if (!device)
        return;
    const SessionState state = m_parts.connections->session(device->deviceId).state;
    const Condition condition = conditionOf(device->deviceState);
    const bool isHeld = state != SessionState::None;
    m_connect->setText(isHeld ? tr("Dis&connect") : tr("&Connect"));
    m_connect->setEnabled(isHeld ? state != SessionState::Closing
                                 : condition == Condition::Free || condition == Condition::Multicast);
    m_openLive->setEnabled(state == SessionState::Open);
    const QString serial = m_parts.host->tree()->getCameraSerial(const_cast<QTreeWidgetItem *>(selected));
    m_keepOnTop->setEnabled(!serial.isEmpty());
    m_keepOnTop->setChecked(m_parts.preferences->isKeptOnTop(serial));
    m_assignAddress->setEnabled(!isHeld && mayAssignAddress(*device));
    m_takeOut->setEnabled(!isHeld && device->remote != 0);
}

void RowActions::updateForInterface(const QTreeWidgetItem *selected)
{
    const bool isOpen = m_parts.interfaces->isOpen(rows::idOf(selected));
    m_connect->setText(isOpen ? tr("&Close interface") : tr("&Open interface"));
    m_connect->setEnabled(true);
    m_removeProducer->setEnabled(
        m_parts.host->tree()->Is3rdCtiInterface(const_cast<QTreeWidgetItem *>(selected)));
}

void RowActions::updateForGroup(const QTreeWidgetItem *selected)
{
    const int type = rows::typeOf(selected);
    m_producers->setEnabled(type == KelDeviceTree::ItemGenTLRoot);
    m_refreshGroup->setEnabled(type == KelDeviceTree::ItemGigERoot || type == KelDeviceTree::ItemUSBRoot ||
                               type == KelDeviceTree::ItemCamLinkRoot || type == KelDeviceTree::ItemGenTLRoot ||
                               type == KelDeviceTree::ItemAll);
}

void RowActions::addTo(QWidget *window, QAction *action, const QKeySequence &shortcut)
{
    action->setShortcut(shortcut);
    window->addAction(action);
}

QTreeWidgetItem *RowActions::row() const
{
    return m_parts.host->tree()->currentItem();
}

void RowActions::toggleConnection()
{
    const QTreeWidgetItem *selected = row();
    if (rows::isDevice(selected)) {
        m_parts.controller->toggleDevice(rows::idOf(selected));
    } else if (rows::typeOf(selected) == KelDeviceTree::ItemGenTLInterface) {
        m_parts.controller->toggleInterface(rows::idOf(selected));
    }
}

void RowActions::toggleKeptOnTop()
{
    const QString serial = m_parts.host->tree()->getCameraSerial(row());
    m_parts.preferences->setKeptOnTop(serial, !m_parts.preferences->isKeptOnTop(serial));
    update();
}

void RowActions::refreshGroup()
{
    KelDeviceTree *tree = m_parts.host->tree();
    const QTreeWidgetItem *selected = row();
    if (CustomPushButton *button = rows::buttonOf(*tree, selected)) {
        button->click();
        return;
    }
    const bool isAll = rows::typeOf(selected) == KelDeviceTree::ItemAll;
    m_parts.controller->refresh(isAll ? ~0U : static_cast<uint>(KELA_INTERFACE_TYPE_CAMERALINK));
}

void RowActions::showProducers()
{
    KelDeviceTree *tree = m_parts.host->tree();
    auto *menu = tree->findChild<KelGenTLMenu *>();
    if (!menu)
        return;
    const QRect place = tree->visualItemRect(row());
    menu->popup(tree->viewport()->mapToGlobal(place.bottomLeft()));
}

void RowActions::removeProducer()
{
    KelDeviceTree *tree = m_parts.host->tree();
    // Of an imported producer nobody tells before it goes.
    m_parts.controller->closeInterfacesOf(tree->producerOfInterface(rows::idOf(row())));
    tree->DeleteCtiFile(row());
}

} // namespace browser
