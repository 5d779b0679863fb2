// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <CustomCtr/CustomLoadingDialog.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QApplication>
#include <QDialog>
#include <QTreeWidgetItemIterator>
#include <QtTest>

void BridgeTest::cleanup()
{
    scriptedAccess().release();
    TreeTest::cleanup();
    CustomLoadingDialog::hideLoading(kLoadingId);
    for (QDialog *box : failureBoxes()) {
        delete box;
    }
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void BridgeTest::startPass(unsigned int types)
{
    m_tree->updateDeviceTypes(types, true, true, false);
}

void BridgeTest::runPass(unsigned int types)
{
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    startPass(types);
    QTRY_COMPARE(finished.count(), 1);
}

void BridgeTest::openInterface()
{
    char path[] = "/opt/a.cti";
    scriptedAccess().plugInterface(path, genTLInterface("IF", 1));
    scriptedAccess().plug(genTLDevice("G1", "IF", 1));
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    runPass(16);
    QTreeWidgetItem *interface = genTL()->child(0);
    QVERIFY(interface);
    m_tree->setGenTLInterfaceHandle(interface->data(0, KelDeviceTree::ItemIdRole).toInt(),
                                    scriptedAccess().openInterface("IF", 1));
}

int BridgeTest::cameraCount()
{
    int count = 0;
    for (QTreeWidgetItemIterator item(m_tree.get()); *item; ++item) {
        count += m_tree->isCameraItem(*item) ? 1 : 0;
    }
    return count;
}

QList<QDialog *> BridgeTest::failureBoxes()
{
    QList<QDialog *> boxes;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QDialog *>(widget);
        if (dialog && dialog->isVisible() && dialog->windowTitle() == QStringLiteral("Enumeration failed.")) {
            boxes.append(dialog);
        }
    }
    return boxes;
}

KELA_DEVICE_INFO_EX BridgeTest::numberedCamera(int number)
{
    KELA_DEVICE_INFO_EX info = gigeCamera("S" + std::to_string(1000 + number), 2);
    info.special.gige.macLow = static_cast<uint32_t>(number);
    return info;
}
