// SPDX-License-Identifier: Apache-2.0
// In a program of its own, which mentions no record: whoever makes a variant of one registers it.
#include <DeviceEnumMng/KelDeviceTree.h>

#include <QtTest>

class tst_KelDeviceTree_metatypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void treeRegistersTheRecordsUnderTheirNames();
};

void tst_KelDeviceTree_metatypes::treeRegistersTheRecordsUnderTheirNames()
{
    const KelDeviceTree tree;

    for (const char *name : {"KELA_INTERFACE_INFO", "KELA_STRUCT_DEVICE_INFO", "KELA_NETWORK",
                             "KELA_GENTL_IF_INFO", "KELA_USBCONTROLLER_INFO"}) {
        QVERIFY2(QMetaType::type(name) != QMetaType::UnknownType, name);
    }
}

QTEST_MAIN(tst_KelDeviceTree_metatypes)
#include "tst_keldevicetree_metatypes.moc"
