// SPDX-License-Identifier: Apache-2.0
// The buttons that float over the rows: one map from identifier to button, what a button looks like, what
// a click does, and which one is shown. Rows hold only a pointer value in ItemRightBtnRole, which is used
// when it points to a living button. Devices are connected by the host alone; it reports the new state
// back with setCameraItemIcon, and that changes the button.
#include "KelDeviceTree_p.h"
#include "KelPlainToolTips.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QCursor>
#include <QTreeWidgetItem>

#include <algorithm>
#include <array>

namespace
{

using Images = std::array<QString, 4>; // by Custom::ItemStatus

bool isGroup(long id)
{
    return id >= kGenTLBtnId && id <= kGigEBtnId;
}

const Images &groupImages()
{
    static const QString kBase = QStringLiteral(":/CustomCtr/tree/Gray_refresh");
    static const Images kImages = {kBase + QStringLiteral(".png"), kBase + QStringLiteral("_sel.png"),
                                   kBase + QStringLiteral("_sel.png"), kBase + QStringLiteral("_dis.png")};
    return kImages;
}

const Images &connectImages()
{
    static const Images kImages = {QStringLiteral(":/KelToolBarBtn/item_connect.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_connect_sel.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_connect_sel.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_connect_dis.png")};
    return kImages;
}

const Images &disconnectImages()
{
    static const Images kImages = {QStringLiteral(":/KelToolBarBtn/item_disconnet.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_disconnet_sel.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_disconnet_sel.png"),
                                   QStringLiteral(":/KelToolBarBtn/item_disconnet_dis.png")};
    return kImages;
}

QString spokenName(const CustomPushButton &button)
{
    const QString image = button.cBackgroundImage(Custom::StatusNormal);
    if (image == groupImages().front()) {
        return KelDeviceTree::tr("Refresh");
    }
    return image == disconnectImages().front() ? KelDeviceTree::tr("Disconnect") : KelDeviceTree::tr("Connect");
}

constexpr char kNameOfTheTree[] = "kelNameOfTheTree";

void setName(CustomPushButton &button, const QString &name)
{
    button.setProperty(kNameOfTheTree, name);
    button.setAccessibleName(name);
}

// A host may speak of a button in its own words, and keeps them as long as the button does the same.
void rename(CustomPushButton &button, const QString &name)
{
    if (button.accessibleName() == button.property(kNameOfTheTree).toString()) {
        setName(button, name);
    }
}

// Called with every update of every camera, so what is there already costs one comparison.
void setImages(CustomPushButton &button, const Images &images)
{
    if (button.cBackgroundImage(Custom::StatusNormal) == images.front()) {
        return;
    }
    for (const Custom::ItemStatus status :
         {Custom::StatusNormal, Custom::StatusHover, Custom::StatusPressed, Custom::StatusDisabled}) {
        button.cSetBackgroundImage(images.at(status), status, QStringList());
    }
    setName(button, spokenName(button));
}

} // namespace

CustomPushButton *KelDeviceTreePrivate::getItemRightBtn(long id, bool bIsGenTLInterface)
{
    if (CustomPushButton *known = m_rightBtns.value(id)) {
        return known;
    }
    auto *button = new CustomPushButton(q);
    button->cSetControlClickEvent(true);
    // A button that takes the focus would pass it on to some other widget when it is hidden.
    button->setFocusPolicy(Qt::NoFocus);
    m_rightBtns.insert(id, button);
    button->hide();
    button->cSetUserData(bIsGenTLInterface);
    rightButtons().add(button);
    QObject::connect(button, &QObject::destroyed, m_buttons.get(), [this, id, button] {
        if (m_rightBtns.value(id) == button) {
            m_rightBtns.remove(id);
        }
    });
    updateItemRightBtn(id, KelDeviceTree::BtnConnect);
    QObject::connect(button, &QPushButton::clicked, q, &KelDeviceTree::onRightBtnClicked);
    return button;
}

void KelDeviceTreePrivate::updateItemRightBtn(long id, KelDeviceTree::BtnState state)
{
    CustomPushButton *button = getItemRightBtn(id, false);
    if (isGroup(id)) {
        setImages(*button, groupImages());
        return;
    }
    setImages(*button, state == KelDeviceTree::BtnDisconnect ? disconnectImages() : connectImages());
    switch (state) {
    case KelDeviceTree::BtnConnect:
    case KelDeviceTree::BtnDisconnect:
        button->setEnabled(true);
        break;
    case KelDeviceTree::BtnDisable:
        button->setEnabled(false);
        break;
    default:
        break;
    }
}

void KelDeviceTreePrivate::removeItemRightBtn(long id)
{
    CustomPushButton *button = m_rightBtns.value(id);
    if (!button) {
        return;
    }
    button->hide();
    m_rightBtns.remove(id);
    m_buttons->remove(button);
    // Its own click may be what led here.
    button->deleteLater();
}

bool KelDeviceTreePrivate::isCameraConnet(int state)
{
    static constexpr std::array<int, 10> kConnected = {KELA_DEV_STATE_GIGE_CONNECTED,
                                                       KELA_DEV_STATE_GIGE_GRABBING,
                                                       KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED,
                                                       KELA_DEV_STATE_USB3_CONNECTED,
                                                       KELA_DEV_STATE_USB3_GRABBING,
                                                       KELA_DEV_STATE_USB2_CONNECTED,
                                                       KELA_DEV_STATE_USB2_GRABBING,
                                                       KELA_DEV_STATE_CAMERALINK_CONNECTED,
                                                       KELA_DEV_STATE_GENTL_CONNECTED,
                                                       KELA_DEV_STATE_GENTL_GRABBING};
    return std::find(kConnected.begin(), kConnected.end(), state) != kConnected.end();
}

// Kept for its callers: a camera leaves nothing else behind.
void KelDeviceTreePrivate::deleteThreadInfo(long /*id*/) {}

void KelDeviceTreePrivate::onRightBtnClicked(QObject *sender)
{
    auto *button = qobject_cast<CustomPushButton *>(sender);
    // Identifiers are told as 32 bits; whatever is not in the map refreshes GigE.
    const int id = static_cast<int>(m_rightBtns.key(button, kGigEBtnId));
    const bool isGenTLInterface = button && button->cUserData().toBool();
    const QPointer<KelDeviceTree> tree(q);
    switch (id) {
    case kGigEBtnId:
        Q_EMIT q->sigBeforeRefreshBtnClicked(KELA_INTERFACE_TYPE_GIGE);
        if (tree) {
            refreshThread(KELA_INTERFACE_TYPE_GIGE, false, true, true);
        }
        break;
    case kUSBBtnId:
        Q_EMIT q->sigBeforeRefreshBtnClicked(KELA_INTERFACE_TYPE_USB);
        if (tree) {
            refreshThread(KELA_INTERFACE_TYPE_USB, true, true, true);
        }
        break;
    case kCameraLinkBtnId:
        Q_EMIT q->sigBeforeRefreshBtnClicked(KELA_INTERFACE_TYPE_CAMERALINK);
        if (tree) {
            showLoading(KelDeviceTree::tr(
                "Searching for CameraLink camera(s) in the same subnet with the computer..."));
            refreshThread(KELA_INTERFACE_TYPE_CAMERALINK, false, true, true);
        }
        break;
    case kGenTLBtnId:
        // Hosts know the refresh of GenTL by the number of USB.
        Q_EMIT q->sigBeforeRefreshBtnClicked(KELA_INTERFACE_TYPE_USB);
        if (tree) {
            refreshThread(KELA_INTERFACE_TYPE_GENTL, true, true, true);
        }
        break;
    default:
        Q_EMIT q->sigRightBtnClicked(id, isGenTLInterface);
        break;
    }
}

void KelDeviceTreePrivate::setCurRightBtn(CustomPushButton *btn, bool showMenuButton)
{
    if (showButton(btn, showMenuButton) && btn && !btn->isHidden()) {
        rightButtons().setRow(rowOf(btn), KelRightButtons::Place::Unknown);
    }
}

QModelIndex KelDeviceTreePrivate::rowOf(const CustomPushButton *btn) const
{
    for (QTreeWidgetItemIterator item(q); *item; ++item) {
        if (livingButton((*item)->data(0, KelDeviceTree::ItemRightBtnRole)) == btn) {
            return indexOf(q, *item);
        }
    }
    return {};
}

bool KelDeviceTreePrivate::showButton(CustomPushButton *btn, bool showMenuButton)
{
    if (m_genTLMenu && m_genTLMenu->isVisible()) {
        return false;
    }
    const bool show = showMenuButton && btn;
    if (m_configBtn) {
        if (show) {
            m_configBtn->move(btn->x() - btn->width(), btn->y());
        }
        if (m_configBtn->isHidden() == show) {
            m_configBtn->setVisible(show);
            rightButtons().updateRowBelow(*m_configBtn);
        }
    }
    if (m_rightBtnVisible) {
        rightButtons().showOnly(btn);
    }
    return true;
}

void KelDeviceTreePrivate::showRowButton(CustomPushButton *btn, bool showMenuButton, const QModelIndex &row)
{
    showButton(btn, showMenuButton);
    const bool isAnyShown = !btn->isHidden() || (m_configBtn && !m_configBtn->isHidden());
    rightButtons().setRow(isAnyShown ? row : QModelIndex(), KelRightButtons::Place::InRow);
}

bool KelDeviceTreePrivate::isShownForAnotherRow(const QModelIndex &row) const
{
    return m_buttons && m_buttons->row().isValid() && m_buttons->row() != row;
}

void KelDeviceTreePrivate::setRightBtnVisible(bool visible)
{
    if (m_rightBtnVisible == visible) {
        return;
    }
    if (!visible) {
        setCurRightBtn(nullptr, false);
    }
    m_rightBtnVisible = visible;
}

bool KelDeviceTreePrivate::isNetWorkCameraConnected(QTreeWidgetItem *netItem)
{
    if (!netItem) {
        return false;
    }
    for (int row = netItem->childCount() - 1; row >= 0; --row) {
        if (netItem->child(row)->data(0, KelDeviceTree::ItemConnectedRole).toBool()) {
            return true;
        }
    }
    return false;
}

CustomPushButton *KelDeviceTreePrivate::livingButton(const QVariant &roleValue) const
{
    // Only looked up among what lives, never followed: the row may outlive its button.
    return m_buttons ? m_buttons->at(static_cast<quintptr>(roleValue.toULongLong())) : nullptr;
}

KelRightButtons &KelDeviceTreePrivate::rightButtons()
{
    if (!m_buttons) {
        m_buttons = std::make_unique<KelRightButtons>(q, [this] { setCurRightBtn(nullptr, false); });
    }
    return *m_buttons;
}

void KelDeviceTreePrivate::initButtonWatch()
{
    new KelPlainToolTips(q);
    rightButtons().watchRows();
    if (m_configBtn) {
        rightButtons().setMenuButton(m_configBtn);
    }
    renameButtons();
    if (!m_genTLMenu) {
        return;
    }
    // While the menu is open the buttons stay; the pointer may have left the tree in the meantime.
    QObject::connect(
        m_genTLMenu, &QMenu::aboutToHide, m_buttons.get(),
        [this] {
            if (q->rect().contains(q->mapFromGlobal(QCursor::pos()))) {
                m_buttons->hideStray();
            } else {
                setCurRightBtn(nullptr, false);
            }
        },
        Qt::QueuedConnection);
}

void KelDeviceTreePrivate::renameButtons()
{
    for (CustomPushButton *button : qAsConst(m_rightBtns)) {
        rename(*button, spokenName(*button));
    }
    if (m_configBtn) {
        rename(*m_configBtn, KelDeviceTree::tr("Choose producers"));
    }
}
