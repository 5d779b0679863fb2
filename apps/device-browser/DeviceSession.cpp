// SPDX-License-Identifier: Apache-2.0
#include "DeviceSession.h"

namespace browser
{

namespace
{

constexpr int kReadEveryMs = 1000;
/// One lost datagram is no lost camera.
constexpr int kFailuresThatMeanLost = 2;
constexpr qint64 kHeldBits = 3; ///< exclusive or control in "GevCCP"

/// An answer that says that the device lacks the node, not that it is gone.
bool isAnswer(uint errorCode)
{
    return errorCode == KELA_OK || errorCode == KELA_ERROR_PARAMETER || errorCode == KELA_ERROR_NOT_SUPPORTED;
}

} // namespace

DeviceSession::DeviceSession(const KELA_DEVICE_INFO_EX &device, uint accessMode)
    : m_device(device)
    , m_accessMode(accessMode)
    , m_clock(this)
{
    m_clock.setInterval(kReadEveryMs);
    connect(&m_clock, &QTimer::timeout, this, &DeviceSession::readValues);
}

void DeviceSession::open()
{
    uint code = m_access.Init(&m_device, false);
    if (code == KELA_OK)
        code = m_access.Connect(m_accessMode);
    if (code != KELA_OK) {
        Q_EMIT openFailed(code);
        return;
    }
    m_isOpen = true;
    m_clock.start();
    Q_EMIT opened();
    readValues();
}

void DeviceSession::close()
{
    m_clock.stop();
    if (m_isOpen)
        m_access.DisConnect(false);
    m_isOpen = false;
    Q_EMIT closed();
}

void DeviceSession::readValues()
{
    const uint code = askWhetherOurs();
    noteAnswer(code);
    if (!isAnswer(code))
        return;
    ReadValues values;
    const QVector<WatchedNode> nodes = watchedNodes(m_device.transport);
    for (const WatchedNode &node : nodes) {
        uint ignored = 0;
        values.append(readValue(node, &ignored));
    }
    Q_EMIT valuesRead(values);
}

ReadValue DeviceSession::readValue(const WatchedNode &node, uint *errorCode)
{
    KELCC_INTVALUE_EX_T number{};
    *errorCode = m_access.GetIntegerNodeValue(node.name, &number, true);
    ReadValue result{QString::fromLatin1(node.name), node.format, false, 0};
    result.isKnown = *errorCode == KELA_OK;
    result.value = number.current;
    return result;
}

uint DeviceSession::askWhetherOurs()
{
    uint code = KELA_OK;
    const ReadValue privilege = readValue({"GevCCP", ValueFormat::ControlPrivilege}, &code);
    const bool isTaken =
        privilege.isKnown && m_accessMode != KELA_ACCESS_MONITOR && (privilege.value & kHeldBits) == 0;
    return isTaken ? KELA_ERROR_IN_USE : code;
}

void DeviceSession::noteAnswer(uint errorCode)
{
    m_failuresInARow = isAnswer(errorCode) ? 0 : m_failuresInARow + 1;
    const bool isLost =
        m_failuresInARow >= kFailuresThatMeanLost || (m_failuresInARow > 0 && errorCode == KELA_ERROR_IN_USE);
    if (!isLost)
        return;
    m_clock.stop();
    Q_EMIT lost(errorCode);
}

} // namespace browser
