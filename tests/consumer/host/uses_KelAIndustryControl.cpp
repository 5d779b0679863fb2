// SPDX-License-Identifier: Apache-2.0
// A program without Qt that asks the device access for an unknown transport.
#include <KelAIndustryControl/KelAIndustryControl.h>

int main()
{
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    const bool listsNothing =
        access.EnumDevices(KELA_INTERFACE_TYPE_1394, &list, false) == KELA_OK && list.count == 0;
    return listsNothing ? 0 : 1;
}
