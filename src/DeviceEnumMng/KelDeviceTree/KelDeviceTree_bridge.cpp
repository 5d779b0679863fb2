// SPDX-License-Identifier: Apache-2.0
// The bridge to the enumeration engine: one enumerator per transport, made on first use; their events cross
// from the workers' threads to the GUI thread by value, in the queued sigEventSink, and are dispatched here.
//
// A pass is acknowledged (FinishOneEnum) only when its end was handled, so passes never pile up. Nothing
// but EnumEventSink runs on a worker's thread, and that touches nothing of the tree but a signal.
#include "KelDeviceTree_p.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomLoadingDialog.h>
#include <CustomCtr/CustomMessageBox.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <QMetaObject>

#include <array>
#include <atomic>
#include <utility>

namespace
{

constexpr int kLoadingId = 4097;
constexpr std::array<unsigned int, 4> kShownTransports = {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                                          KELA_INTERFACE_TYPE_CAMERALINK,
                                                          KELA_INTERFACE_TYPE_GENTL};

struct TreeEvent {
    QVariant interface;
    QVariant device;
    int kind = 0;
    int errorCode = 0;
    int deviceType = 0;
};

// Orders what a worker wrote into a record before what the GUI thread reads there. Qt's queue of events does
// so too; here the order is ours to see, and a thread checker's.
std::atomic<unsigned> g_sentEvents{0};

// Set by a connection that runs first, on the emitting thread: tells whether an emission reached anybody.
thread_local bool *t_reached = nullptr;

// Events of an enumerator's operation that was called on this thread. See OwnerCall.
thread_local QVector<TreeEvent> *t_held = nullptr;

// A host that blocks the tree's signals for a moment, or has taken the tree's connections apart, must not
// lose an event: the end of a pass that nobody acknowledges would be the transport's last.
void sendToTree(KelDeviceTree *tree, const TreeEvent &event)
{
    bool reached = false;
    bool *const outer = std::exchange(t_reached, &reached);
    g_sentEvents.fetch_add(1, std::memory_order_release);
    Q_EMIT tree->sigEventSink(event.interface, event.device, event.kind, event.errorCode, event.deviceType);
    t_reached = outer;
    if (!reached) {
        QMetaObject::invokeMethod(
            tree,
            [tree, event] {
                tree->onEventSink(event.interface, event.device, event.kind, event.errorCode, event.deviceType);
            },
            Qt::AutoConnection);
    }
}

// An operation of an enumerator that reports before it returns. Its events are told when it has returned:
// a slot may then destroy the tree, and with it the enumerator.
class OwnerCall
{
public:
    OwnerCall()
        : m_outer(std::exchange(t_held, &m_events))
    {
    }
    ~OwnerCall() { t_held = m_outer; }
    OwnerCall(const OwnerCall &) = delete;
    OwnerCall &operator=(const OwnerCall &) = delete;

    static void tell(const QVector<TreeEvent> &events, const QPointer<KelDeviceTree> &tree)
    {
        for (const TreeEvent &event : events) {
            if (!tree) {
                return;
            }
            sendToTree(tree, event);
        }
    }

    QVector<TreeEvent> takeEvents() { return std::exchange(m_events, {}); }

private:
    QVector<TreeEvent> m_events;
    QVector<TreeEvent> *m_outer;
};

// Most events carry one record only, and a zeroed one in the place of the other, which all of them share.
template <typename Record>
QVariant recordVariant(const Record *record)
{
    static const auto *const zeroed = new QVariant(QVariant::fromValue(Record{}));
    return record ? QVariant::fromValue(*record) : *zeroed;
}

bool showsFailures(int deviceType)
{
    return deviceType == KELA_INTERFACE_TYPE_CAMERALINK || deviceType == KELA_INTERFACE_TYPE_GENTL ||
           deviceType == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
}

} // namespace

void EnumEventSink(KELA_INTERFACE_INFO *pInterface, KELA_STRUCT_DEVICE_INFO *pDevice,
                   KELA_INTERFACE_STATE state, int nErrorCode, void *pUser)
{
    const auto *user = static_cast<const EnumEventUserData *>(pUser);
    if (!user || !user->tree) {
        return;
    }
    const TreeEvent event{recordVariant(pInterface), recordVariant(pDevice), static_cast<int>(state),
                          nErrorCode, static_cast<int>(user->deviceType)};
    if (t_held) {
        t_held->append(event);
    } else {
        sendToTree(user->tree, event);
    }
}

void KelDeviceTreePrivate::connectEvents()
{
    QObject::connect(
        q, &KelDeviceTree::sigEventSink, q,
        [] {
            if (t_reached) {
                *t_reached = true;
            }
        },
        Qt::DirectConnection);
    QObject::connect(q, &KelDeviceTree::sigEventSink, q, &KelDeviceTree::onEventSink);
}

CDevicesEnum *KelDeviceTreePrivate::getThread(KELA_INTERFACE_TYPE type)
{
    if (CDevicesEnum *known = m_enumerators.value(type)) {
        return known;
    }
    auto *enumerator = new CDevicesEnum;
    m_enumerators.insert(type, enumerator);
    m_userData.append(new EnumEventUserData{type, q});
    enumerator->RegisterEventSink(EnumEventSink, m_userData.last());
    enumerator->Init(type, false);
    return enumerator;
}

// All end at the same time, instead of each after the one before. The user data goes last: workers read it.
// A search that nobody will see the end of must not stay on the screen.
void KelDeviceTreePrivate::stopEnumerators()
{
    if (m_isLoading) {
        hideLoading();
    }
    for (CDevicesEnum *enumerator : std::as_const(m_enumerators)) {
        enumerator->Stop();
    }
    qDeleteAll(m_enumerators);
    m_enumerators.clear();
    qDeleteAll(m_userData);
    m_userData.clear();
}

void KelDeviceTreePrivate::refreshThread(unsigned int types, bool bParam1, bool bParam2, bool bShowLoading)
{
    const int wanted = static_cast<int>(types);
    for (const auto type :
         {KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB, KELA_INTERFACE_TYPE_CAMERALINK}) {
        if (KelInterface::testFlag(static_cast<int>(type), wanted)) {
            getThread(type)->UpdateOnce(true, true);
        }
    }
    if (KelInterface::testFlag(KELA_INTERFACE_TYPE_GENTL, wanted)) {
        CDevicesEnum *enumerator = getThread(KELA_INTERFACE_TYPE_GENTL);
        if (bShowLoading) {
            showLoading(KelDeviceTree::tr("Searching for GenTL devices with the computer..."));
        }
        enumerator->UpdateOnce(bParam1, bParam2);
    }
}

void KelDeviceTreePrivate::showLoading(const QString &text)
{
    m_isLoading = true;
    CustomLoadingDialog::showLoading(text, kLoadingId);
}

void KelDeviceTreePrivate::hideLoading()
{
    m_isLoading = false;
    CustomLoadingDialog::hideLoading(kLoadingId);
}

bool KelDeviceTreePrivate::hasEnumOnce(unsigned int types)
{
    for (const unsigned int type : kShownTransports) {
        if (KelInterface::testFlag(static_cast<int>(type), static_cast<int>(types)) &&
            !m_finishedTypes.contains(type)) {
            return false;
        }
    }
    return true;
}

int KelDeviceTreePrivate::addRemoteDevice(KELA_STRUCT_DEVICE_INFO &info)
{
    const QPointer<KelDeviceTree> tree(q);
    int id = -1;
    QVector<TreeEvent> events;
    {
        OwnerCall call;
        id = static_cast<int>(getThread(KELA_INTERFACE_TYPE_GIGE)->AddRemoteDevice(&info));
        events = call.takeEvents();
    }
    OwnerCall::tell(events, tree);
    return id;
}

int KelDeviceTreePrivate::removeRemoteDevice(KELA_STRUCT_DEVICE_INFO &info)
{
    const QPointer<KelDeviceTree> tree(q);
    int result = 0;
    QVector<TreeEvent> events;
    {
        OwnerCall call;
        result = getThread(KELA_INTERFACE_TYPE_GIGE)->RemoveRemoteDevice(&info);
        events = call.takeEvents();
    }
    for (const TreeEvent &event : qAsConst(events)) {
        m_takenBack.insert(event.device.value<KELA_STRUCT_DEVICE_INFO>().deviceId);
    }
    OwnerCall::tell(events, tree);
    return result;
}

// An update that a pass reported just before the device was taken back may arrive after its row has gone, and
// would make the row again for good. A device that really returns is reported as new first.
bool KelDeviceTreePrivate::isLateUpdate(const QVariant &device, int kind)
{
    if (m_takenBack.isEmpty()) {
        return false;
    }
    const int id = device.value<KELA_STRUCT_DEVICE_INFO>().deviceId;
    if (kind == KELA_INTERFACE_STATE_DEVICE_NEW) {
        m_takenBack.remove(id);
    }
    return kind == KELA_INTERFACE_STATE_DEVICE_UPDATED && m_takenBack.contains(id);
}

void KelDeviceTreePrivate::onEventSink(const QVariant &stNetCardInfo, const QVariant &stDeviceInfo,
                                       int nKelAIntefaceState, int nErrorCode, int nDeviceType)
{
    g_sentEvents.load(std::memory_order_acquire);
    if (isLateUpdate(stDeviceInfo, nKelAIntefaceState)) {
        return;
    }
    switch (nKelAIntefaceState) {
    case KELA_INTERFACE_STATE_INTERFACE_NEW:
    case KELA_INTERFACE_STATE_INTERFACE_UPDATED:
    case KELA_INTERFACE_STATE_INTERFACE_REMOVED:
        onInterfaceEvent(stNetCardInfo.value<KELA_INTERFACE_INFO>(), nKelAIntefaceState);
        break;
    case KELA_INTERFACE_STATE_DEVICE_NEW:
        q->onNewDevice(stDeviceInfo);
        break;
    case KELA_INTERFACE_STATE_DEVICE_UPDATED:
        q->onUpdateDeviceInfo(stDeviceInfo);
        break;
    case KELA_INTERFACE_STATE_DEVICE_REMOVED:
        q->onDeleteDevice(stDeviceInfo);
        break;
    case KELA_INTERFACE_STATE_PASS_END:
        q->onEndThread(nDeviceType, nErrorCode);
        break;
    default:
        break;
    }
}

// USB controllers are never updated.
void KelDeviceTreePrivate::onInterfaceEvent(const KELA_INTERFACE_INFO &interface, int kind)
{
    using Slot = void (KelDeviceTree::*)(QVariant);
    struct Slots {
        Slot appeared;
        Slot changed;
        Slot vanished;
    };
    const auto call = [this, kind](const Slots &slots, const QVariant &record) {
        const Slot slot = kind == KELA_INTERFACE_STATE_INTERFACE_NEW       ? slots.appeared
                          : kind == KELA_INTERFACE_STATE_INTERFACE_UPDATED ? slots.changed
                                                                           : slots.vanished;
        if (slot) {
            (q->*slot)(record);
        }
    };
    switch (interface.interfaceType) {
    case KELA_INTERFACE_TYPE_GIGE:
        call({&KelDeviceTree::onNewNetWork, &KelDeviceTree::onUpdateNetWorkInfo,
              &KelDeviceTree::onDeleteNetWork},
             QVariant::fromValue(interface.special.network));
        break;
    case KELA_INTERFACE_TYPE_USB:
        call({&KelDeviceTree::onNewUSBController, nullptr, &KelDeviceTree::onDeleteUSBController},
             QVariant::fromValue(interface.special.usbController));
        break;
    case KELA_INTERFACE_TYPE_GENTL:
        call({&KelDeviceTree::onNewGenTLInterface, &KelDeviceTree::onUpdateGenTLInterface,
              &KelDeviceTree::onDeleteGenTLInterface},
             QVariant::fromValue(interface.special.genTLInterface));
        break;
    default:
        break;
    }
}

void KelDeviceTreePrivate::onEndThread(int nDeviceType, int nErrorCode)
{
    const auto type = static_cast<KELA_INTERFACE_TYPE>(nDeviceType);
    if (!m_finishedTypes.contains(type)) {
        m_finishedTypes.append(type);
    }
    if (showsFailures(nDeviceType)) {
        hideLoading();
        if (nErrorCode != 0) {
            const QString text = KelInterface::GenerateErrorDesc(nErrorCode) + QStringLiteral("\r\n") +
                                 KelInterface::IntCode2DisplayCode(nErrorCode);
            CustomMessageBox::simple(nullptr, text, KelDeviceTree::tr("Enumeration failed."), QString(),
                                     Custom::IconHint, false);
        }
    }
    const QPointer<KelDeviceTree> tree(q);
    Q_EMIT q->sigFinishEnumOnce(nDeviceType);
    if (tree) {
        getThread(type)->FinishOneEnum();
    }
}
