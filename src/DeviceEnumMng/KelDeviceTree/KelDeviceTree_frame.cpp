// SPDX-License-Identifier: Apache-2.0
// The frame: construction and destruction, the fixed top-level items, look-ups over the tree.
//
// The fixed items are siblings at top level and stay for the life of the tree. Look-ups give what a walk in
// the order of the rows would give; the index beside the tree finds it without walking.
#include "KelDeviceTree_p.h"

#include "KelDeviceTreeDelegate.h"
#include "KelDeviceTreeGuard.h"
#include "KelDeviceTreeIndex.h"
#include "KelSettledCameras.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QHeaderView>
#include <QTreeWidgetItem>

#include <utility>

namespace
{

void setUpView(KelDeviceTree *tree)
{
    QSizePolicy policy = tree->sizePolicy();
    policy.setControlType(QSizePolicy::DefaultType);
    tree->setSizePolicy(policy);
    tree->setFrameStyle(QFrame::NoFrame);
    tree->setHeaderHidden(true);
    tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->setColumnCount(1);
    tree->resizeColumnToContents(0);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree->header()->setStretchLastSection(true);
    tree->setIconSize(QSize(24, 24));
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    tree->setItemDelegate(new KelDeviceTreeDelegate(tree));
    tree->setIndentation(10);
}

quint64 buttonValue(CustomPushButton *button)
{
    return reinterpret_cast<quintptr>(button);
}

// Who has no header of the records makes and reads their variants by name.
void registerRecords()
{
    qRegisterMetaType<KELA_INTERFACE_INFO>("KELA_INTERFACE_INFO");
    qRegisterMetaType<KELA_STRUCT_DEVICE_INFO>("KELA_STRUCT_DEVICE_INFO");
    qRegisterMetaType<KELA_NETWORK>("KELA_NETWORK");
    qRegisterMetaType<KELA_GENTL_IF_INFO>("KELA_GENTL_IF_INFO");
    qRegisterMetaType<KELA_USBCONTROLLER_INFO>("KELA_USBCONTROLLER_INFO");
}

} // namespace

KelDeviceTreePrivate::KelDeviceTreePrivate(KelDeviceTree *tree)
    : q(tree)
    , m_settled(std::make_unique<KelSettledCameras>(tree))
    , m_index(std::make_unique<KelDeviceTreeIndex>(tree))
{
    registerRecords();
    initDeviceInfo();
    refreshFilterInfo();
}

KelDeviceTreePrivate::~KelDeviceTreePrivate()
{
    stopEnumerators();
    letGoOfMenu();
}

// A change of the producers begins while the menu hides. Who destroys the tree then must not take the menu away
// from Qt, which is not done with it.
void KelDeviceTreePrivate::letGoOfMenu()
{
    if (m_ctiChange.runs && m_genTLMenu) {
        m_genTLMenu->disconnect(q);
        m_genTLMenu->setParent(nullptr);
        m_genTLMenu->deleteLater();
    }
}

void KelDeviceTreePrivate::initDeviceInfo()
{
    fillIconMap();
    setUpView(q);
    initFixedItems();

    m_configBtn = new CustomPushButton(q);
    m_configBtn->cSetBackgroundImage(QStringLiteral(":/CustomCtr/tree/conf.png"), Custom::StatusNormal, {});
    m_configBtn->cSetBackgroundImage(QStringLiteral(":/CustomCtr/tree/conf_sel.png"), Custom::StatusHover, {});
    m_configBtn->cSetBackgroundImage(QStringLiteral(":/CustomCtr/tree/conf_sel.png"), Custom::StatusPressed,
                                     {});
    m_configBtn->hide();
    m_configBtn->cSetControlClickEvent(true);
    m_genTLMenu = new KelGenTLMenu(q);
    m_configBtn->setMenu(m_genTLMenu);

    DoChangedCtiFile();
    q->setCurrentItem(findItem(KelDeviceTree::ItemGigERoot, -1));
    connectEvents();
    QObject::connect(m_genTLMenu, &KelGenTLMenu::SigCtiChanged, q, &KelDeviceTree::OnCtiFileChanged);
    initButtonWatch();
}

void KelDeviceTreePrivate::initFixedItems()
{
    QFont bold = q->font();
    bold.setWeight(QFont::Bold);
    const auto addFixedItem = [this, &bold](int itemType, const QString &text) {
        QTreeWidgetItem *item = newTreeItem(q->invisibleRootItem(), itemType, -1);
        item->setData(0, KelDeviceTree::ItemIdRole, -1);
        item->setText(0, text);
        item->setExpanded(true);
        item->setFont(0, bold);
        return item;
    };
    const auto addGroup = [this, &addFixedItem](int itemType, const QString &text, long buttonId) {
        setItemRightBtn(addFixedItem(itemType, text), getItemRightBtn(buttonId, false));
        updateItemRightBtn(buttonId, KelDeviceTree::BtnConnect);
    };
    addFixedItem(KelDeviceTree::ItemAll, KelDeviceTree::tr("All"));
    addGroup(KelDeviceTree::ItemGigERoot, QStringLiteral("GigE"), kGigEBtnId);
    addGroup(KelDeviceTree::ItemUSBRoot, QStringLiteral("USB"), kUSBBtnId);
    addGroup(KelDeviceTree::ItemGenTLRoot, QStringLiteral("GenTL"), kGenTLBtnId);
}

QTreeWidgetItem *KelDeviceTreePrivate::newTreeItem(QTreeWidgetItem *parent, int itemType, int index)
{
    auto *item = new QTreeWidgetItem;
    // Before it stands in the tree, so that who watches the tree meets it with its type.
    item->setData(0, KelDeviceTree::ItemTypeRole, itemType);
    item->setData(0, KelDeviceTree::StayTopItemRole, index < 0 ? 0 : 1);
    if (index < 0) {
        parent->addChild(item);
    } else {
        parent->insertChild(index, item);
    }
    if (!isItemTypeVisible(itemType)) {
        item->setHidden(true);
    }
    if (!q->itemsExpandable()) {
        q->expandAll();
    }
    return item;
}

void KelDeviceTreePrivate::setItemRightBtn(QTreeWidgetItem *item, CustomPushButton *button)
{
    item->setData(0, KelDeviceTree::ItemRightBtnRole, buttonValue(button));
}

bool KelDeviceTreePrivate::writeRightBtn(const KelDeviceTreeGuard &guard, CustomPushButton *button)
{
    return guard.write(KelDeviceTree::ItemRightBtnRole, buttonValue(button));
}

QModelIndex KelDeviceTreePrivate::indexOf(const KelDeviceTree *tree, const QTreeWidgetItem *item)
{
    return item && item->treeWidget() == tree ? tree->indexFromItem(item) : QModelIndex();
}

QTreeWidgetItem *KelDeviceTreePrivate::itemAt(const KelDeviceTree *tree, const QModelIndex &index)
{
    return tree->itemFromIndex(index);
}

QTreeWidgetItem *KelDeviceTreePrivate::findChildItem(QTreeWidgetItem *parent, int itemType, long id)
{
    return m_index->findBelow(parent, itemType, static_cast<int>(id));
}

QTreeWidgetItem *KelDeviceTreePrivate::findItem(int itemType, long id)
{
    return findChildItem(q->invisibleRootItem(), itemType, id);
}

QTreeWidgetItem *KelDeviceTreePrivate::findCameraItem(long cameraId)
{
    return m_index->findCamera(static_cast<int>(cameraId));
}

// What is about to go must not stay current.
void KelDeviceTreePrivate::makeGroupCurrentInsteadOf(QTreeWidgetItem *item)
{
    if (q->currentItem() == item) {
        q->setCurrentItem(findItem(KelDeviceTree::ItemGigERoot, -1));
    }
}
