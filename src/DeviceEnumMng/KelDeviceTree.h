// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomTreeWidget.h>
#include <DeviceEnumMng/DeviceEnumMngExport.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class CustomPushButton;
class KelDeviceTreePrivate;

/// The device browser of a camera client: a tree of every device that the host can reach, grouped by
/// transport and by network card, USB controller or GenTL interface.
///
/// A new tree enumerates nothing; the host asks for transports with updateDeviceTypes() and listens to
/// the signals. Items belong to the tree. An item that a signal hands over may be gone after any return
/// to the event loop: keep its identifier and find it again.
///
/// A tree may be destroyed in any slot that one of its signals calls. Its destructor waits for the
/// enumeration passes under way to end.
///
/// Thread: GUI, except for sigEventSink.
class DEVICEENUMMNG_EXPORT KelDeviceTree : public CustomTreeWidget
{
    Q_OBJECT

public:
    /// What an item stands for; kept in ItemTypeRole.
    enum ItemType {
        Item1394Root = 0,         ///< IEEE 1394 group; never made by the tree itself
        ItemCamLinkRoot = 1,      ///< Camera Link group; never made by the tree itself, a host may add it
        ItemGenTLRoot = 2,        ///< group "GenTL"
        ItemGigERoot = 3,         ///< group "GigE"
        ItemUSBRoot = 4,          ///< group "USB"
        ItemNetWork = 5,          ///< network card, under "GigE"
        ItemGigEVirtualGroup = 6, ///< "Virtual Device" under "GigE"
        ItemUSBVirtualGroup = 7,  ///< "Virtual Device" under "USB"
        ItemOtherGroup = 8,       ///< "Other Device" under "GigE"
        ItemGigECamera = 11,      ///< GigE camera
        ItemUSBCamera = 12,       ///< USB camera
        ItemCamLinkCamera = 13,   ///< Camera Link camera
        ItemGenTLDevice = 14,     ///< GenTL device
        ItemGenTLInterface = 15,  ///< GenTL interface, under "GenTL"
        ItemUSBController = 16,   ///< USB controller, under "USB"
        ItemAll = 17,             ///< "All"
    };

    /// Data roles of column 0. The numbers are fixed: hosts read them.
    enum ItemRole {
        ItemTypeRole = Qt::UserRole + 1, ///< int, an ItemType
        ItemIdRole = Qt::UserRole + 2,   ///< int, the identifier; -1 for groups
        /// The whole record: KELA_STRUCT_DEVICE_INFO, KELA_NETWORK, KELA_USBCONTROLLER_INFO or
        /// KELA_GENTL_IF_INFO. See setCameraItemIcon() for what a host writes into it.
        ItemInfoRole = Qt::UserRole + 3,
        ItemRightBtnRole = Qt::UserRole + 5,  ///< unsigned 64-bit integer, the row's CustomPushButton
        ItemConnectedRole = Qt::UserRole + 6, ///< bool, true while this client has the device connected
        StayTopItemRole = Qt::UserRole + 7,   ///< int, 1 when the row stands where the stay-top list put it
    };

    /// Look of a row's action button.
    enum BtnState {
        BtnConnect = 0,    ///< offers to connect
        BtnDisconnect = 1, ///< offers to disconnect
        BtnDisable = 2,    ///< the device cannot be connected
    };

    /// Builds the fixed groups. Reads "General/EunmAckMode" from "LocalConfig.ini" in the program's data
    /// folder and hands it to the device access, for the whole process.
    explicit KelDeviceTree(QWidget *parent = nullptr);

    /// Stops the enumerators and waits for the passes under way.
    ~KelDeviceTree() override;

    /// Starts one enumeration pass per transport. Passes of one transport run one after another.
    /// @param types        KELA_INTERFACE_TYPE bits; 1, 4, 8 and 16 are looked at
    /// @param bReport      GenTL only: report the devices found. False reports every known one removed.
    /// @param bRequeue     GenTL only: look through the interfaces that were opened before once more
    /// @param bShowLoading GenTL only: show that the search runs
    void updateDeviceTypes(unsigned int types, bool bReport, bool bRequeue, bool bShowLoading);

    /// Allows or forbids enumeration; allowed at first. While it is forbidden updateDeviceTypes() does
    /// nothing and all events of devices and containers are ignored; the end of a pass is still told.
    /// A removal that is reported meanwhile is not repeated later.
    void setEnableEnumDevices(bool bEnable);

    /// True when every one of the transports has ended a pass since the tree was made.
    /// @param types  KELA_INTERFACE_TYPE bits; 1, 4, 8 and 16 are looked at
    bool hasEnumOnce(unsigned int types);

    /// Tells the enumerator that the host opened a GenTL interface, so that its devices are listed in the
    /// next pass.
    /// @param nInterfaceId  identifier of the interface item
    /// @param hInterface    from KelAIndustryControl::OpenGenTLInterface; stays the host's
    void setGenTLInterfaceHandle(int nInterfaceId, void *hInterface);

    /// Adds a GigE device by its address, also one that the network cards do not see. Asks that device,
    /// which takes 750 ms at most.
    /// @param info  names the address; receives the device's record with its identifier and state
    /// @return the device's identifier, or -1 when it does not answer
    int addRemoteDevice(KELA_STRUCT_DEVICE_INFO &info);

    /// Removes a device that was added by its address. A device that this client has connected keeps
    /// its row.
    /// @param info  the device's record, as addRemoteDevice() gave it
    /// @return 0, or -1 without an enumerator
    int removeRemoteDevice(KELA_STRUCT_DEVICE_INFO &info);

    /// Makes the GenTL enumerator forget that a device is present: the next pass reports it as new.
    void SetOffCameraID(long lCameraID);

    /// The first item of a type with an identifier, in the order of the rows; null when there is none.
    QTreeWidgetItem *findItem(KelDeviceTree::ItemType type, long id);

    /// The item of a camera; null when there is none.
    QTreeWidgetItem *findCameraItem(long cameraId);

    /// The item under which a device belongs. Makes the group of virtual or of other devices when it is
    /// needed. Null for a transport that is not shown.
    QTreeWidgetItem *findActualParentItem(KELA_STRUCT_DEVICE_INFO &info);

    /// True for an item of a camera; false for null.
    bool isCameraItem(QTreeWidgetItem *item) const;

    /// The item type of a device: 11, 12, 13, 14 for the transports 1, 4, 8, 16, and 3 for any other.
    static int deviceType2ItemType(int deviceType);

    /// Removes a camera's row with its button, after sigDeleteDeviceItem; does nothing for null.
    void deleteCameraItem(QTreeWidgetItem *item);

    /// Shows a device state that the enumeration cannot see, such as this client's own connection: icon,
    /// button and, for GigE, ItemConnectedRole.
    ///
    /// The record is the host's to change besides: a host that connects writes the connected state into
    /// the record of ItemInfoRole before it calls this. While the record says so, updates keep the
    /// state and the row never disappears. On disconnecting, the host writes the free state back.
    void setCameraItemIcon(QTreeWidgetItem *item, KELA_DEV_STATE state);

    /// The serial number of a camera's item; empty for any other item.
    QString getCameraSerial(QTreeWidgetItem *item);

    /// True when a child of the item has a true ItemConnectedRole.
    bool isNetWorkCameraConnected(QTreeWidgetItem *netItem);

    /// Chooses the encoding of device texts for the whole process and labels the cameras again.
    /// @param nEncodeType  as KelInterface::SetEncodingType takes it
    void refreshEncodeType(int nEncodeType);

    /// Makes a button the only visible one of the rows' buttons.
    /// @param btn             the button; null hides all
    /// @param showMenuButton  shows the producer menu's button to its left
    void setCurRightBtn(CustomPushButton *btn, bool showMenuButton);

    /// Switches the rows' buttons on or off as a whole.
    void setRightBtnVisible(bool visible);

    /// Keeps devices at the top of their containers.
    /// @param serials  serial numbers; the last one stands topmost
    void setStayTopList(const QStringList &serials);

    /// Shows only items of the given types.
    /// @param types  ItemType values; empty shows all
    void setVisibleItemTypes(const QList<int> &types);

    /// Removes the imported GenTL producer to which an interface item belongs; does nothing for others.
    void DeleteCtiFile(QTreeWidgetItem *item);

    /// True for an interface item of an imported GenTL producer.
    bool Is3rdCtiInterface(QTreeWidgetItem *item);

    /// True when the interface's producer is to be opened by virtual port.
    /// @param interfaceId  an unknown one is answered for the last item of the group "GenTL"
    bool IsOpenByVirtualPort(long interfaceId);

    /// The interface items of a GenTL producer.
    /// @param ctiPath  the producer's full path
    /// @param items    receives the items
    void GetInterfaceItemList(const QString &ctiPath, QList<QTreeWidgetItem *> &items);

    /// The full path of the GenTL producer whose interface this is, also one that has no row at the moment;
    /// empty for an unknown interface.
    QString producerOfInterface(long interfaceId) const;

    /// Allows or forbids the choice of the virtual port in the producer menu.
    void SetEnableVirtualPort(bool enable);

    /// Chooses the rules of the style sheet; loads the images of the group buttons again.
    void cSetStyleSelector(const QString &strName) override;

    void changeEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;

    /// What a drag of rows carries: for one connected camera its identifier, four bytes in big-endian
    /// order, under "KelDragTreeWidgetFormat"; null for anything else. The caller owns the result.
    QMimeData *mimeData(const QList<QTreeWidgetItem *> items) const override;

    // The order of signals and slots is an interface: hosts may hold their numbers. Add nothing here but
    // slots behind the last one.
Q_SIGNALS:
    /// A drag that started in the tree has ended.
    void sigEndDrag();
    /// The button of a camera's or a GenTL interface's row was pressed.
    void sigRightBtnClicked(long lCameraID, bool bIsGenTLInterface);
    /// The refresh button of a group was pressed; the enumeration starts right after this.
    void sigBeforeRefreshBtnClicked(int nType);
    /// A network card's item was made.
    void sigNewNetWorkItem(QTreeWidgetItem *pNetWorkItem);
    /// A network card's item is about to be removed.
    void sigDeleteNetWorkItem(QTreeWidgetItem *pNetWorkItem);
    /// A network card's item was updated.
    void sigUpdateNetWorkItem(QTreeWidgetItem *pNetWorkItem);
    /// A device's item was made.
    void sigNewDeviceItem(QTreeWidgetItem *pDevItem);
    /// A device's item is about to be removed.
    void sigDeleteDeviceItem(QTreeWidgetItem *pDevItem);
    /// A device's item was updated.
    void sigUpdateDeviceItem(QTreeWidgetItem *pDevItem);
    /// A USB controller's item was made.
    void sigNewUSBControllerItem(QTreeWidgetItem *pUSBControlerItem);
    /// A USB controller's item is about to be removed.
    void sigDeleteUSBCtrollerItem(QTreeWidgetItem *pUSBControlerItem);
    /// A GenTL interface's item was made.
    void sigNewGenTLInterfaceItem(QTreeWidgetItem *pGenTLInterfaceItem);
    /// A GenTL interface's item is about to be removed.
    void sigDeleteGenTLInterfaceItem(QTreeWidgetItem *pGenTLInterfaceItem);
    /// A GenTL interface's item was updated.
    void sigUpdateGenTLInterfaceItem(QTreeWidgetItem *pGenTLInterfaceItem);
    /// A loaded GenTL producer is about to be unloaded.
    void sigBeforeDeleteCti(const QString &strCtiPath);
    /// A pass of a transport has ended.
    void sigFinishEnumOnce(int nDeviceType);
    /// An enumeration event. Thread: the enumerator's worker.
    void sigEventSink(const QVariant &stNetCardInfo, const QVariant &stDeviceInfo, int nKelAIntefaceState,
                      int nErrorCode, int nDeviceType);

public Q_SLOTS:
    /// Acts for the button that sent the signal.
    void onRightBtnClicked();
    /// Adds a network card, or updates it when its hardware address is known.
    void onNewNetWork(QVariant dataVar);
    /// Adds a GenTL interface.
    void onNewGenTLInterface(QVariant dataVar);
    /// Updates a GenTL interface.
    void onUpdateGenTLInterface(QVariant dataVar);
    /// Removes a GenTL interface with its devices.
    void onDeleteGenTLInterface(QVariant dataVar);
    /// Removes a network card with its cameras, unless one of them is connected.
    void onDeleteNetWork(QVariant dataVar);
    /// Updates a network card, or adds it when it is unknown.
    void onUpdateNetWorkInfo(QVariant dataVar);
    /// Adds a device, or updates it when it is known.
    void onNewDevice(QVariant dataVar);
    /// Removes a device, unless it is connected.
    void onDeleteDevice(QVariant dataVar);
    /// Updates a device, or adds it when it is unknown.
    void onUpdateDeviceInfo(QVariant dataVar);
    /// Adds a USB controller.
    void onNewUSBController(QVariant dataVar);
    /// Removes a USB controller with its cameras.
    void onDeleteUSBController(QVariant dataVar);
    /// Closes an enumeration pass.
    void onEndThread(int nDeviceType, int nErrorCode = 0);
    /// Applies the producer menu's choice to the enumeration.
    void OnCtiFileChanged();
    /// Handles an enumeration event.
    void onEventSink(const QVariant &stNetCardInfo, const QVariant &stDeviceInfo, int nKelAIntefaceState,
                     int nErrorCode, int nDeviceType);

private:
    friend class KelDeviceTreePrivate;
    std::unique_ptr<KelDeviceTreePrivate> d;
};

Q_DECLARE_METATYPE(KELA_INTERFACE_INFO)
Q_DECLARE_METATYPE(KELA_STRUCT_DEVICE_INFO)
Q_DECLARE_METATYPE(KELA_NETWORK)
Q_DECLARE_METATYPE(KELA_GENTL_IF_INFO)
Q_DECLARE_METATYPE(KELA_USBCONTROLLER_INFO)
