// SPDX-License-Identifier: Apache-2.0
// GenTL producers and their interfaces. A pass asks every producer for its interfaces; the owner opens those
// whose devices it wants and hands in the handles.
//
// The owner may add and remove producers while the worker is inside one of them. So the worker goes through a
// copy of the paths and looks each one up again before and after its call.

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <DeviceEnumMng/DevicesEnum/PassDecisions.h>
#include <DeviceEnumMng/DevicesEnum/UnsharedCopy.h>
#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QByteArray>

#include <algorithm>

namespace
{

constexpr int kUsualPathBuffer = 512;

bool containsInterface(const QVector<KELA_GENTL_IF_INFO> &interfaces, unsigned int id)
{
    return std::any_of(interfaces.cbegin(), interfaces.cend(),
                       [id](const KELA_GENTL_IF_INFO &interface) { return interface.id == id; });
}

QByteArray pathBuffer(const QString &path)
{
    const QByteArray local = path.toLocal8Bit();
    QByteArray buffer(std::max(kUsualPathBuffer, local.size() + 1), '\0');
    CrossPlatstrcpy_s(buffer.data(), static_cast<unsigned long>(buffer.size()), local.constData());
    return buffer;
}

QVector<KELA_GENTL_IF_INFO> interfacesOf(const KELA_GENTL_IF_INFO_LIST &list)
{
    QVector<KELA_GENTL_IF_INFO> interfaces;
    const std::size_t count = readableCount(list.count);
    for (std::size_t index = 0; index < count; ++index) {
        if (list.interfaces[index] != nullptr) {
            KELA_GENTL_IF_INFO interface = *list.interfaces[index];
            interface.id = genTLInterfaceId(fixedText(interface.identifier), interface.number);
            interfaces.append(interface);
        }
    }
    return interfaces;
}

} // namespace

void CDevicesEnum::AddCtiPath(char *strCtiPath)
{
    const QString path = QString::fromLocal8Bit(strCtiPath);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_producerPaths.contains(path)) {
        m_producerPaths.append(path);
    }
}

void CDevicesEnum::RemoveCtiPath(char *strCtiPath)
{
    const QString path = QString::fromLocal8Bit(strCtiPath);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_producerPaths.removeOne(path)) {
            return;
        }
        const QVector<unsigned int> ids = m_producerInterfaceIds.value(path);
        for (const unsigned int id : ids) {
            m_interfaceHandles.remove(id);
        }
    }
    if (m_deviceAccess) {
        m_deviceAccess->UnloadGenTLLibrary(strCtiPath);
    }
}

bool CDevicesEnum::isProducerListed(const QString &path) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_producerPaths.contains(path);
}

unsigned int CDevicesEnum::EnumGenTLInterface()
{
    QVector<QString> paths;
    QVector<KELA_GENTL_IF_INFO> before;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        paths = unsharedCopy(m_producerPaths);
        before = unsharedCopy(m_interfaces);
    }
    QVector<KELA_GENTL_IF_INFO> now;
    for (const QString &path : qAsConst(paths)) {
        if (endsPass(enumProducer(path, now, true))) {
            // Nobody knows what has gone.
            return KELA_ERROR_CANCELLED;
        }
    }
    for (const KELA_GENTL_IF_INFO &interface : qAsConst(before)) {
        if (!containsInterface(now, interface.id)) {
            reportGenTLInterface(interface, KELA_INTERFACE_STATE_INTERFACE_REMOVED);
        }
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_interfaces.swap(now);
    return KELA_OK;
}

unsigned int CDevicesEnum::EnumOneGenTLInterface(const QString &strCtiPath,
                                                 QVector<KELA_GENTL_IF_INFO> &vecInterfaces)
{
    return enumProducer(strCtiPath, vecInterfaces, isProducerListed(strCtiPath));
}

unsigned int CDevicesEnum::enumProducer(const QString &listedPath, QVector<KELA_GENTL_IF_INFO> &allInterfaces,
                                        bool mustBeListed)
{
    if (mustBeListed && !isProducerListed(listedPath)) {
        return KELA_ERROR_HANDLE;
    }
    const QByteArray path = pathBuffer(listedPath);
    KELA_GENTL_IF_INFO_LIST list = {};
    if (!m_deviceAccess) {
        return KELA_ERROR_GENTL_OBJECT_MISSING;
    }
    const unsigned int result = m_deviceAccess->EnumInterfacesByGenTL(&list, path.constData());
    if (mustBeListed && !isProducerListed(listedPath)) {
        // Removed meanwhile. The call may have loaded it again behind the owner's back.
        m_deviceAccess->UnloadGenTLLibrary(path.constData());
        return KELA_ERROR_HANDLE;
    }
    if (result != KELA_OK) {
        return result;
    }
    outputDebugLine([&list] { return QStringLiteral("EnumGenTLInterface count : %1").arg(list.count); });

    const QVector<KELA_GENTL_IF_INFO> interfaces = interfacesOf(list);
    const QVector<KELA_GENTL_IF_INFO> known = replaceProducerInterfaces(listedPath, interfaces);
    for (const KELA_GENTL_IF_INFO &interface : interfaces) {
        reportGenTLInterface(interface, containsInterface(known, interface.id)
                                            ? KELA_INTERFACE_STATE_INTERFACE_UPDATED
                                            : KELA_INTERFACE_STATE_INTERFACE_NEW);
    }
    allInterfaces += interfaces;
    return KELA_OK;
}

QVector<KELA_GENTL_IF_INFO>
CDevicesEnum::replaceProducerInterfaces(const QString &path, const QVector<KELA_GENTL_IF_INFO> &interfaces)
{
    QVector<unsigned int> ids;
    for (const KELA_GENTL_IF_INFO &interface : interfaces) {
        ids.append(interface.id);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_producerInterfaceIds.insert(path, ids);
    return unsharedCopy(m_interfaces);
}

void CDevicesEnum::reportGenTLInterface(const KELA_GENTL_IF_INFO &interface, KELA_INTERFACE_STATE kind) const
{
    KELA_INTERFACE_INFO event = {};
    // Both GenTL transports report their interfaces as 16.
    event.interfaceType = KELA_INTERFACE_TYPE_GENTL;
    event.special.genTLInterface = interface;
    sendEvent(&event, nullptr, kind);
}

KELA_GENTL_IF_INFO CDevicesEnum::knownInterface(unsigned int id, bool &found) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto match = std::find_if(m_interfaces.cbegin(), m_interfaces.cend(),
                                    [id](const KELA_GENTL_IF_INFO &interface) { return interface.id == id; });
    found = match != m_interfaces.cend();
    return found ? *match : KELA_GENTL_IF_INFO{};
}

KELA_GENTL_IF_INFO CDevicesEnum::GetGENTLIFInfo(unsigned char *strInterfaceID, unsigned int nNumber,
                                                bool *pbFound) const
{
    bool found = false;
    const KELA_GENTL_IF_INFO interface = knownInterface(GetGenTLInterfaceID(strInterfaceID, nNumber), found);
    if (pbFound != nullptr) {
        *pbFound = found;
    }
    return interface;
}

void CDevicesEnum::GetCtiInterfaceCount(char *strCtiPath, int *pCount) const
{
    if (pCount != nullptr) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        *pCount = m_producerInterfaceIds.value(QString::fromLocal8Bit(strCtiPath)).size();
    }
}

void CDevicesEnum::GetCtiInterfaceID(char *strCtiPath, int nIndex, int *pInterfaceID) const
{
    if (pInterfaceID == nullptr) {
        return;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QVector<unsigned int> ids = m_producerInterfaceIds.value(QString::fromLocal8Bit(strCtiPath));
    const bool isInRange = nIndex >= 0 && nIndex < ids.size();
    *pInterfaceID = isInRange ? static_cast<int>(ids.at(nIndex)) : -1;
}

void CDevicesEnum::SetGenTLInterfaceHandle(int nInterfaceID, void *pHandle)
{
    const auto id = static_cast<unsigned int>(nInterfaceID);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_interfaceHandles.insert(id, pHandle);
    if (!m_queuedInterfaces.contains(id)) {
        m_queuedInterfaces.insert(id, pHandle);
    }
}

void *CDevicesEnum::GetGenTlInterfaceHandle(int nInterfaceID) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_interfaceHandles.value(static_cast<unsigned int>(nInterfaceID), nullptr);
}
