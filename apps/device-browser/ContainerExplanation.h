// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"
#include "HostFacts.h"

#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

/// What stands below a container, counted.
struct DeviceCount {
    int total = 0;
    int free = 0;
    int own = 0;  ///< connected by this program
    int busy = 0; ///< held by others
    int unusable = 0;

    /// Counts one more device in a state.
    void add(int32_t deviceState);
};

/// How a GenTL interface was come by.
struct InterfaceOrigin {
    bool isImported = false;      ///< its producer was imported, not found in the default folder
    bool isByVirtualPort = false; ///< its producer is opened by virtual port
    bool isOpen = false;          ///< this program has it open
};

/// "5 cameras: 3 free, 1 in use, 1 cannot be used".
QString countText(const DeviceCount &count);

/// Tells what a network card is and what keeps cameras of other subnets from being seen through it.
Explanation explainCard(const KELA_NETWORK &card, const HostFacts &host, const DeviceCount &count);
/// Tells what a USB controller is.
Explanation explainController(const KELA_USBCONTROLLER_INFO &controller, const DeviceCount &count);
/// Tells what a GenTL interface is and how its cameras come to light.
Explanation explainInterface(const KELA_GENTL_IF_INFO &genTLInterface, const InterfaceOrigin &origin,
                             const DeviceCount &count);

/// A group of the tree.
enum class Group { All, GigE, Usb, CameraLink, GenTL, Virtual, Other };
/// Tells what stands in a group.
/// @param title  the row's text
Explanation explainGroup(Group group, const QString &title, const HostFacts &host, const DeviceCount &count);

} // namespace browser
