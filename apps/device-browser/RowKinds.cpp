// SPDX-License-Identifier: Apache-2.0
#include "RowKinds.h"

#include <DeviceEnumMng/KelDeviceTree.h>

#include <QCoreApplication>

namespace browser
{

namespace
{

struct Kinds {
    Q_DECLARE_TR_FUNCTIONS(RowKinds)
};

} // namespace

QList<RowKind> rowKinds()
{
    using Tree = KelDeviceTree;
    return {
        {QStringLiteral("gige"),
         Kinds::tr("GigE cameras"),
         {Tree::ItemGigERoot, Tree::ItemNetWork, Tree::ItemGigECamera}},
        {QStringLiteral("usb"),
         Kinds::tr("USB cameras"),
         {Tree::ItemUSBRoot, Tree::ItemUSBController, Tree::ItemUSBCamera}},
        {QStringLiteral("cameralink"),
         Kinds::tr("Camera Link cameras"),
         {Tree::ItemCamLinkRoot, Tree::ItemCamLinkCamera}},
        {QStringLiteral("gentl"),
         Kinds::tr("GenTL cameras"),
         {Tree::ItemGenTLRoot, Tree::ItemGenTLInterface, Tree::ItemGenTLDevice}},
        {QStringLiteral("virtual"),
         Kinds::tr("Virtual devices"),
         {Tree::ItemGigEVirtualGroup, Tree::ItemUSBVirtualGroup}},
        {QStringLiteral("other"), Kinds::tr("Other devices"), {Tree::ItemOtherGroup}},
    };
}

QList<int> visibleItemTypes(const QStringList &hiddenKinds)
{
    QList<int> types{KelDeviceTree::ItemAll};
    bool isAnyHidden = false;
    const QList<RowKind> kinds = rowKinds();
    for (const RowKind &kind : kinds) {
        if (hiddenKinds.contains(kind.key)) {
            isAnyHidden = true;
        } else {
            types += kind.itemTypes;
        }
    }
    return isAnyHidden ? types : QList<int>();
}

} // namespace browser
