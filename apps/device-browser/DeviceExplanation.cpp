// SPDX-License-Identifier: Apache-2.0
#include "DeviceExplanation.h"

#include "DeviceState.h"
#include "DeviceText.h"
#include "GigEExplanation.h"
#include "UsbExplanation.h"

#include <QCoreApplication>

namespace browser
{

namespace
{

struct Device {
    Q_DECLARE_TR_FUNCTIONS(DeviceExplanation)
};

bool isGigE(const KELA_DEVICE_INFO_EX &device)
{
    return device.transport == KELA_INTERFACE_TYPE_GIGE || device.transport == KELA_INTERFACE_TYPE_GIGE_VARIANT;
}

bool isGenTL(const KELA_DEVICE_INFO_EX &device)
{
    return device.transport == KELA_INTERFACE_TYPE_GENTL ||
           device.transport == KELA_INTERFACE_TYPE_GENTL_INTERFACE;
}

QString kindOf(const KELA_DEVICE_INFO_EX &device)
{
    if (isGigE(device))
        return Device::tr("GigE Vision camera");
    if (device.transport == KELA_INTERFACE_TYPE_USB)
        return Device::tr("USB3 Vision camera");
    if (device.transport == KELA_INTERFACE_TYPE_CAMERALINK)
        return Device::tr("Camera Link camera");
    if (isGenTL(device))
        return Device::tr("Camera of a GenTL producer");
    return Device::tr("Device");
}

FactGroup identity(const KELA_STRUCT_DEVICE_INFO &device)
{
    const KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    FactGroup group{Device::tr("Identity"), {}};
    group.add(Device::tr("Name"), userDefinedName(info));
    group.add(Device::tr("Vendor"), vendorName(info));
    group.add(Device::tr("Model"), deviceText(info.modelName));
    group.add(Device::tr("Serial number"), deviceText(info.serialNumber));
    group.add(Device::tr("Version"), deviceText(info.secondName));
    group.add(Device::tr("Identifier"), QString::number(device.deviceId));
    return group;
}

QString genTLAccess(uint32_t status)
{
    switch (status) {
    case 1:
        return Device::tr("free");
    case 2:
        return Device::tr("reading only");
    case 3:
        return Device::tr("cannot be opened");
    case 4:
        return Device::tr("opened by another program");
    case 5:
    case 6:
        return Device::tr("opened by this program");
    default:
        return {};
    }
}

void addOtherFacts(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device)
{
    FactGroup group{Device::tr("Connection"), {}};
    if (device.deviceInfo.transport == KELA_INTERFACE_TYPE_CAMERALINK)
        group.add(Device::tr("Serial port"), deviceText(device.deviceInfo.special.cameraLink.portName));
    if (isGenTL(device.deviceInfo)) {
        const KELA_GENTL_DEVICE_INFO &camera = device.deviceInfo.special.genTL;
        group.add(Device::tr("Interface"), deviceText(device.genTLInterface.displayName));
        group.add(Device::tr("Device of the producer"), deviceText(camera.deviceId));
        group.add(Device::tr("The producer says"), genTLAccess(camera.accessStatus));
    }
    explanation.add(group);
}

QStringList placementNotes(const KELA_STRUCT_DEVICE_INFO &device)
{
    QStringList notes;
    if (device.deviceInfo.placement == KELA_PLACEMENT_VIRTUAL) {
        notes << Device::tr("It is simulated on this computer: it answers from one of the computer's own "
                            "addresses.");
    }
    if (device.deviceInfo.placement == KELA_PLACEMENT_OTHER)
        notes << Device::tr("It speaks the cameras' protocol, but its class is not that of a plain camera.");
    if (device.remote != 0)
        notes << Device::tr("You added it by its address, so it may stand in another network behind a router.");
    return notes;
}

QStringList sessionNotes(const OwnSession &session)
{
    switch (session.state) {
    case SessionState::Opening:
        return {Device::tr("It is being connected …")};
    case SessionState::Closing:
        return {Device::tr("It is being given back …")};
    case SessionState::Open:
        if (session.isReadOnly) {
            return {
                Device::tr("This program has it open for reading. It may be dragged into the work area, which "
                           "shows its live values.")};
        }
        return {
            Device::tr("This program holds it and keeps the connection alive. It may be dragged into the work "
                       "area, which shows its live values.")};
    case SessionState::Lost:
        return {Device::tr("This program held it, but the connection was lost: %1")
                    .arg(KelInterface::GenerateErrorDesc(static_cast<int>(session.lastError))),
                Device::tr("Disconnect to let it go; when it comes back it can be connected again.")};
    case SessionState::None:
        break;
    }
    if (session.lastError == 0)
        return {};
    return {Device::tr("The last attempt to connect failed: %1 %2")
                .arg(KelInterface::GenerateErrorDesc(static_cast<int>(session.lastError)),
                     KelInterface::IntCode2DisplayCode(static_cast<int>(session.lastError)))};
}

QStringList conditionNotes(const KELA_STRUCT_DEVICE_INFO &device, const DeviceContext &context)
{
    const KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    switch (conditionOf(device.deviceState)) {
    case Condition::Free:
        return {Device::tr("Nobody holds it. It can be connected.")};
    case Condition::InUse:
    case Condition::Multicast:
        if (isGigE(info))
            return gigeHolder(device, context.host);
        return {
            Device::tr("Another program holds it. It can be connected as soon as that program gives it back.")};
    case Condition::Unusable:
        if (isGigE(info))
            return gigeObstacles(device, context.host);
        if (info.transport == KELA_INTERFACE_TYPE_USB)
            return usbObstacles(info.special.usb, context.node);
        return {Device::tr("It was found, but it cannot be reached.")};
    case Condition::Connected:
    case Condition::Grabbing:
    case Condition::Unknown:
        break;
    }
    return {};
}

void explainState(Explanation &explanation, const KELA_STRUCT_DEVICE_INFO &device, const OwnSession &session)
{
    const Condition condition = conditionOf(device.deviceState);
    explanation.state = conditionText(condition);
    explanation.standing = standingOf(condition);
    if (session.state == SessionState::Lost) {
        explanation.state = Device::tr("Connection lost");
        explanation.standing = Standing::Blocked;
    } else if (session.state == SessionState::Opening) {
        explanation.state = Device::tr("Connecting …");
    } else if (session.state == SessionState::Closing) {
        explanation.state = Device::tr("Disconnecting …");
    }
}

} // namespace

Explanation explainDevice(const KELA_STRUCT_DEVICE_INFO &device, const DeviceContext &context)
{
    const KELA_DEVICE_INFO_EX &info = device.deviceInfo;
    Explanation explanation;
    explanation.title = displayName(info);
    explanation.kind = kindOf(info);
    explainState(explanation, device, context.session);
    explanation.paragraphs = sessionNotes(context.session);
    explanation.paragraphs += conditionNotes(device, context);
    explanation.paragraphs += placementNotes(device);
    explanation.add(identity(device));
    if (isGigE(info))
        addGigEFacts(explanation, device, context.host);
    if (info.transport == KELA_INTERFACE_TYPE_USB) {
        const QString hint = usbSpeedHint(info.special.usb);
        if (!hint.isEmpty())
            explanation.paragraphs << hint;
        addUsbFacts(explanation, device, context.node);
    }
    addOtherFacts(explanation, device);
    return explanation;
}

} // namespace browser
