// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "KelRightButtons.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree.h>
#include <DeviceEnumMng/KelGenTLMenu.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QIcon>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>

class CDevicesEnum;
class KelDeviceTreeGuard;
class KelDeviceTreeIndex;
class KelSettledCameras;
class QMimeData;
class QModelIndex;
class QTreeWidgetItem;
struct StayTopRows;

/// What an enumerator hands back with every event. One per enumerator, owned by the private part.
struct EnumEventUserData {
    unsigned int deviceType = 0;   ///< KELA_INTERFACE_TYPE of the enumerator
    KelDeviceTree *tree = nullptr; ///< where to emit
};

/// Receives the events of every enumerator, on its worker's thread, and sends them to the tree.
void EnumEventSink(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                   KELA_INTERFACE_STATE state, int nErrorCode, void *pUser);

/// Keys of the groups' refresh buttons in the button map.
constexpr long kGigEBtnId = -1;
constexpr long kUSBBtnId = -2;
constexpr long kCameraLinkBtnId = -3; ///< restyled only: there is no such row
constexpr long kGenTLBtnId = -4;

/// Name of the drag format.
extern const QString g_strDragFormat;

/// Everything that the tree does. One class over several files; each group below names the file that
/// defines it. Functions that emit a signal may return with the tree, and so this object, gone.
///
/// Thread: GUI.
class KelDeviceTreePrivate
{
public:
    explicit KelDeviceTreePrivate(KelDeviceTree *tree);
    ~KelDeviceTreePrivate();

    KelDeviceTreePrivate(const KelDeviceTreePrivate &) = delete;
    KelDeviceTreePrivate &operator=(const KelDeviceTreePrivate &) = delete;

    /// The private part of a tree; null when the tree has none any more.
    static KelDeviceTreePrivate *of(const KelDeviceTree *tree) { return tree ? tree->d.get() : nullptr; }

    // KelDeviceTree_frame.cpp: construction, fixed items, look-ups
    void initDeviceInfo();
    void initFixedItems();
    void letGoOfMenu();
    QTreeWidgetItem *newTreeItem(QTreeWidgetItem *parent, int itemType, int index);
    QTreeWidgetItem *findChildItem(QTreeWidgetItem *parent, int itemType, long id);
    QTreeWidgetItem *findItem(int itemType, long id);
    QTreeWidgetItem *findCameraItem(long cameraId);
    void makeGroupCurrentInsteadOf(QTreeWidgetItem *item);
    static void setItemRightBtn(QTreeWidgetItem *item, CustomPushButton *button);
    static bool writeRightBtn(const KelDeviceTreeGuard &guard, CustomPushButton *button);
    /// Place of an item in a tree; invalid for null and for an item of no or another tree.
    static QModelIndex indexOf(const KelDeviceTree *tree, const QTreeWidgetItem *item);
    static QTreeWidgetItem *itemAt(const KelDeviceTree *tree, const QModelIndex &index);

    // KelDeviceTree_bridge.cpp: enumerators, events, end of a pass
    void connectEvents();
    void stopEnumerators();
    CDevicesEnum *getThread(KELA_INTERFACE_TYPE type);
    void refreshThread(unsigned int types, bool bParam1, bool bParam2, bool bShowLoading);
    void showLoading(const QString &text);
    void hideLoading();
    bool hasEnumOnce(unsigned int types);
    int addRemoteDevice(KELA_STRUCT_DEVICE_INFO &info);
    int removeRemoteDevice(KELA_STRUCT_DEVICE_INFO &info);
    void onEventSink(const QVariant &stNetCardInfo, const QVariant &stDeviceInfo, int nKelAIntefaceState,
                     int nErrorCode, int nDeviceType);
    bool isLateUpdate(const QVariant &device, int kind);
    void onInterfaceEvent(const KELA_INTERFACE_INFO &interface, int kind);
    void onEndThread(int nDeviceType, int nErrorCode);

    // KelDeviceTree_cameras.cpp: camera items, icons
    void onNewDevice(const QVariant &dataVar);
    void onUpdateDeviceInfo(const QVariant &dataVar);
    void onDeleteDevice(const QVariant &dataVar);
    QTreeWidgetItem *onNewGigeCamera(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent);
    QTreeWidgetItem *onNewUSBCamera(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent);
    QTreeWidgetItem *onNewCamLinkCamera(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent);
    QTreeWidgetItem *onNewGenTLDevice(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent);
    void onUpdateGigeCamera(const KELA_STRUCT_DEVICE_INFO &info);
    void onUpdateUSBCamera(const KELA_STRUCT_DEVICE_INFO &info);
    void onUpdateCamLinkCamera(const KELA_STRUCT_DEVICE_INFO &info);
    void onUpdateGenTLDevice(const KELA_STRUCT_DEVICE_INFO &info);
    QTreeWidgetItem *newCamera(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent, int itemType,
                               const QString &label, const char *creator);
    void updateCamera(const KelDeviceTreeGuard &guard, const KELA_STRUCT_DEVICE_INFO &info);
    void deleteCameraItem(QTreeWidgetItem *item);
    void setItemIcon(QTreeWidgetItem *item, KELA_DEV_STATE state);
    /// @return true when the row is still there afterwards
    bool showState(const KelDeviceTreeGuard &guard, KELA_DEV_STATE state);
    QString getSerialByInfo(const KELA_STRUCT_DEVICE_INFO &info);
    QString getCameraSerial(QTreeWidgetItem *item);
    static void fillIconMap();
    static const QMap<KELA_DEV_STATE, QIcon> &iconMap();

    // KelDeviceTree_containers.cpp: network cards, USB controllers, GenTL interfaces, groups
    void onNewNetWork(const QVariant &dataVar);
    void onUpdateNetWorkInfo(const QVariant &dataVar);
    void onDeleteNetWork(const QVariant &dataVar);
    void onNewUSBController(const QVariant &dataVar);
    void onDeleteUSBController(const QVariant &dataVar);
    void onNewGenTLInterface(const QVariant &dataVar);
    void onUpdateGenTLInterface(const QVariant &dataVar);
    void onDeleteGenTLInterface(const QVariant &dataVar);
    QTreeWidgetItem *findNetWorkItem(const QString &key);
    QTreeWidgetItem *findUSBControlItem(const QString &key);
    QTreeWidgetItem *findGenTLInterfaceItem(int id);
    QTreeWidgetItem *findGenTLInterfaceItem(const QString &key, unsigned int index);
    QTreeWidgetItem *GetVirtualGroupItem(int type, bool create);
    QTreeWidgetItem *findParentItem(const KELA_STRUCT_DEVICE_INFO &info);
    QTreeWidgetItem *findGigeParent(const KELA_STRUCT_DEVICE_INFO &info);
    QTreeWidgetItem *findUSBParent(const KELA_STRUCT_DEVICE_INFO &info);
    QTreeWidgetItem *newContainer(int groupType, int itemType);
    bool setNetWork(const KelDeviceTreeGuard &guard, const KELA_NETWORK &card, const QVariant &record);
    static void deleteCameras(const KelDeviceTreeGuard &guard);
    static void deleteContainer(const KelDeviceTreeGuard &guard);

    // KelDeviceTree_encoding.cpp: labels in another encoding, texts in another language
    // (there too: KelDeviceTree::changeEvent)
    void refreshEncodeType(int nEncodeType);
    /// Labels rows of a transport's group; false when a receiver destroyed the tree meanwhile.
    bool relabel(int groupType, const QVector<QPersistentModelIndex> &rows);
    void retranslate();

    // KelDeviceTree_actions.cpp: the buttons of the rows
    CustomPushButton *getItemRightBtn(long id, bool bIsGenTLInterface);
    void updateItemRightBtn(long id, KelDeviceTree::BtnState state);
    void removeItemRightBtn(long id);
    bool isCameraConnet(int state);
    void deleteThreadInfo(long id);
    void onRightBtnClicked(QObject *sender);
    void setCurRightBtn(CustomPushButton *btn, bool showMenuButton);
    void setRightBtnVisible(bool visible);
    bool isNetWorkCameraConnected(QTreeWidgetItem *netItem);
    /// The button that a value of ItemRightBtnRole points to; null unless it is alive.
    CustomPushButton *livingButton(const QVariant &roleValue) const;
    /// Called once by initDeviceInfo, behind everything else: hides buttons when rows move under them.
    void initButtonWatch();
    /// Which buttons live and which is shown; made with the first button.
    KelRightButtons &rightButtons();
    /// The row that carries a button; invalid when none does. For the host's calls: it looks at every row.
    QModelIndex rowOf(const CustomPushButton *btn) const;
    /// Makes a button the only one that is shown; false when it changed nothing, because the menu is open.
    bool showButton(CustomPushButton *btn, bool showMenuButton);
    /// setCurRightBtn for a row that is being painted.
    void showRowButton(CustomPushButton *btn, bool showMenuButton, const QModelIndex &row);
    /// True when the visible button was shown for a row other than this one, which shares it.
    bool isShownForAnotherRow(const QModelIndex &row) const;
    /// Sets the names that a screen reader speaks, in the language of the moment.
    void renameButtons();

    // KelDeviceTree_staytop.cpp: rows that stay on top
    int getStayTopIndex(const KELA_STRUCT_DEVICE_INFO &info, QTreeWidgetItem *parent);
    void updateStatTopList(const QStringList &serials);
    /// Orders the rows below one parent; false when a receiver destroyed the tree meanwhile.
    bool putOnTop(const StayTopRows &rows);

    // KelDeviceTree_visibility.cpp: filters and visible types
    bool isItemTypeVisible(int type);
    void setVisibleItemTypes(const QList<int> &types);
    void updateAllItemVisible(QTreeWidgetItem *item);
    void refreshFilterInfo();
    bool filterVendor(const QString &vendor);
    bool filterModel(const QString &model);
    bool filterDevice(const KELA_DEVICE_INFO_EX &info);
    bool IsUbootDevice(const KELA_DEVICE_INFO_EX &info);
    bool isValidDevice(const KELA_DEVICE_INFO_EX &info);

    // KelDeviceTree_producers.cpp: GenTL producers
    void DoChangedCtiFile();
    /// Tells the enumerator what changed in the menu; false when a receiver destroyed the tree meanwhile.
    bool applyCtiStates();
    /// The first applied producer in a state that has this interface item; a null text when there is none.
    QString ctiPathOf(QTreeWidgetItem *item, int state);
    void OnCtiFileChanged();
    void GetInterfaceItemList(const QString &ctiPath, QList<QTreeWidgetItem *> &items);
    bool Is3rdCtiInterface(QTreeWidgetItem *item);
    void DeleteCtiFile(QTreeWidgetItem *item);
    bool IsOpenByVirtualPort(long interfaceId);
    QString producerOfInterface(long interfaceId);

    // KelDeviceTree_drag.cpp (there too: KelDeviceTree::startDrag, ::leaveEvent)
    QMimeData *mimeData(const QList<QTreeWidgetItem *> &items);

    // State, in the order of the concerns that came first.
    bool m_enumEnabled = true;                        ///< bridge: setEnableEnumDevices
    bool m_rightBtnVisible = true;                    ///< actions: setRightBtnVisible
    KelDeviceTree *q = nullptr;                       ///< the public widget
    QMap<unsigned int, CDevicesEnum *> m_enumerators; ///< bridge: by KELA_INTERFACE_TYPE; owned
    QMap<long, CustomPushButton *> m_rightBtns;       ///< actions: by item identifier; children of q
    QPointer<CustomPushButton> m_configBtn;           ///< frame: opens the producer menu; child of q
    QList<unsigned int> m_finishedTypes;              ///< bridge: transports that ended a pass
    QList<int> m_visibleTypes;                        ///< visibility: empty = all
    int m_vendorFilterState = 0;                      ///< visibility: KelInterface::FilterState
    int m_modelFilterState = 0;                       ///< visibility: KelInterface::FilterState
    QStringList m_vendorInclude;                      ///< visibility
    QStringList m_vendorExclude;                      ///< visibility
    QStringList m_modelInclude;                       ///< visibility
    QStringList m_modelExclude;                       ///< visibility
    QStringList m_stayTopList;                        ///< staytop: serial numbers
    QPointer<KelGenTLMenu> m_genTLMenu;               ///< producers: child of q
    QMap<QString, int> m_appliedCtiStates;            ///< producers: states by path, as applied last
    struct {
        bool runs = false;                        ///< a change is being applied
        bool again = false;                       ///< another one came meanwhile
    } m_ctiChange;                                ///< producers
    QSet<int> m_takenBack;                        ///< bridge: remote devices whose late updates are dropped
    bool m_isLoading = false;                     ///< bridge: a search is shown on this tree's behalf
    QList<EnumEventUserData *> m_userData;        ///< bridge: one per enumerator; owned
    std::unique_ptr<KelRightButtons> m_buttons;   ///< actions: which of m_rightBtns live and are shown
    std::unique_ptr<KelSettledCameras> m_settled; ///< cameras: rows that need no update
    std::unique_ptr<KelDeviceTreeIndex> m_index;  ///< frame: look-ups
};
