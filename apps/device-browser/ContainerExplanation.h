// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraOverview.h"
#include "Explanation.h"
#include "HostFacts.h"
#include "ProducerExplanation.h"

#include <KelAIndustryControl/KelARecords.h>

namespace browser
{

/// How a GenTL interface was come by.
struct InterfaceOrigin {
    Producer producer;   ///< whose it is; without path when that is not known
    bool isOpen = false; ///< this program has it open
};

// Each takes the devices that stand below the container.

/// Tells what a network card is and what keeps cameras of other subnets from being seen through it.
Explanation explainCard(const KELA_NETWORK &card, const HostFacts &host,
                        const QVector<KELA_STRUCT_DEVICE_INFO> &devices);
/// Tells what a USB controller is.
Explanation explainController(const KELA_USBCONTROLLER_INFO &controller,
                              const QVector<KELA_STRUCT_DEVICE_INFO> &devices);
/// Tells what a GenTL interface is and how its cameras come to light.
Explanation explainInterface(const KELA_GENTL_IF_INFO &genTLInterface, const InterfaceOrigin &origin,
                             const QVector<KELA_STRUCT_DEVICE_INFO> &devices);

/// Tells which GenTL producers there are and how they stand.
/// @param title  the row's text
Explanation explainProducers(const QString &title, const QVector<Producer> &producers,
                             const QVector<KELA_STRUCT_DEVICE_INFO> &devices);

/// A group of the tree.
enum class Group { All, GigE, Usb, CameraLink, GenTL, Virtual, Other };
/// Tells what stands in a group.
/// @param title  the row's text
Explanation explainGroup(Group group, const QString &title, const HostFacts &host,
                         const QVector<KELA_STRUCT_DEVICE_INFO> &devices);

} // namespace browser
