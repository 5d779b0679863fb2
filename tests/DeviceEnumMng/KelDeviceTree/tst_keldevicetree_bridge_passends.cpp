// SPDX-License-Identifier: Apache-2.0
#include "BridgeTest.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomLoadingDialog.h>
#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QThread>
#include <QtTest>

namespace
{

QStringList textsOf(const QDialog *dialog)
{
    QStringList texts;
    for (const QLabel *label : dialog->findChildren<QLabel *>()) {
        texts += label->text();
    }
    return texts;
}

} // namespace

/// What the end of a pass shows, hides and acknowledges.
class tst_KelDeviceTree_bridge_passends : public BridgeTest
{
    Q_OBJECT

private Q_SLOTS:
    void endOfAPassRunsWhileEnumerationIsOff();
    void passIsAcknowledgedAfterItsSignal();
    void endWithoutErrorCodeCountsAsSucceeded();

    void succeededGenTLPassHidesTheSearchAndShowsNoBox();
    void failedPassIsShownForTheTransportsThatShowOne_data();
    void failedPassIsShownForTheTransportsThatShowOne();
    void failedPassKeepsTheRows();
    void treeMayBeDestroyedUnderItsBox();
    void searchGoesWithItsTree();
    void treeThatShowedNoSearchLeavesOthersAlone();
};

void tst_KelDeviceTree_bridge_passends::endOfAPassRunsWhileEnumerationIsOff()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy made(m_tree.get(), &KelDeviceTree::sigNewDeviceItem);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    startPass(1);
    startPass(1);

    m_tree->setEnableEnumDevices(false);

    // The second pass shows that the first was acknowledged.
    QTRY_COMPARE(finished.count(), 2);
    QVERIFY(m_tree->hasEnumOnce(1));
    QCOMPARE(made.count(), 0);
}

void tst_KelDeviceTree_bridge_passends::passIsAcknowledgedAfterItsSignal()
{
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    std::size_t passesInSlot = 0;
    connect(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce, this, [&passesInSlot] {
        if (passesInSlot == 0) {
            // The worker looks every 10 ms; the second pass must not begin while this slot runs.
            QThread::msleep(100);
            passesInSlot = scriptedAccess().count(Operation::EnumDevices);
        }
    });

    startPass(1);
    startPass(1);
    QTRY_COMPARE(finished.count(), 2);

    QCOMPARE(passesInSlot, std::size_t(1));
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t(2));
}

void tst_KelDeviceTree_bridge_passends::endWithoutErrorCodeCountsAsSucceeded()
{
    QVERIFY(QMetaObject::invokeMethod(m_tree.get(), "onEndThread", Q_ARG(int, 16)));

    QCOMPARE(failureBoxes().size(), 0);
    QVERIFY(m_tree->hasEnumOnce(16));
}

void tst_KelDeviceTree_bridge_passends::succeededGenTLPassHidesTheSearchAndShowsNoBox()
{
    CustomLoadingDialog::showLoading(QStringLiteral("searching"), kLoadingId);

    m_tree->onEventSink(QVariant(), QVariant(), 7, 0, 16);

    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
    QCOMPARE(failureBoxes().size(), 0);
}

void tst_KelDeviceTree_bridge_passends::failedPassIsShownForTheTransportsThatShowOne_data()
{
    QTest::addColumn<int>("transport");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("GigE") << 1 << false;
    QTest::newRow("USB") << 4 << false;
    QTest::newRow("Camera Link") << 8 << true;
    QTest::newRow("GenTL") << 16 << true;
    QTest::newRow("GenTL by interface") << 32 << true;
}

void tst_KelDeviceTree_bridge_passends::failedPassIsShownForTheTransportsThatShowOne()
{
    QFETCH(int, transport);
    QFETCH(bool, isShown);
    CustomLoadingDialog::showLoading(QStringLiteral("searching"), kLoadingId);
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);

    m_tree->onEventSink(QVariant(), QVariant(), 7, static_cast<int>(KELA_ERROR_TIMEOUT), transport);

    QCOMPARE(failureBoxes().size(), isShown ? 1 : 0);
    QCOMPARE(CustomLoadingDialog::isLoading(kLoadingId), !isShown);
    QCOMPARE(finished.count(), 1);
    if (isShown) {
        const QDialog *box = failureBoxes().first();
        const int code = static_cast<int>(KELA_ERROR_TIMEOUT);
        QVERIFY(textsOf(box).contains(KelInterface::GenerateErrorDesc(code) + QStringLiteral("\r\n") +
                                      KelInterface::IntCode2DisplayCode(code)));
        QCOMPARE(box->parentWidget(), nullptr);
        QCOMPARE(box->findChildren<QPushButton *>().size(), 1);
        QVERIFY(!box->isModal());
    }
}

void tst_KelDeviceTree_bridge_passends::treeMayBeDestroyedUnderItsBox()
{
    m_tree->onEndThread(KELA_INTERFACE_TYPE_GENTL, static_cast<int>(KELA_ERROR_TIMEOUT));
    QCOMPARE(failureBoxes().size(), 1);

    m_tree.reset();

    QCOMPARE(failureBoxes().size(), 1);
    failureBoxes().first()->findChild<QPushButton *>()->click();
    QTRY_VERIFY(failureBoxes().isEmpty());
}

void tst_KelDeviceTree_bridge_passends::failedPassKeepsTheRows()
{
    scriptedAccess().plug(gigeCamera("S1"));
    QSignalSpy gone(m_tree.get(), &KelDeviceTree::sigDeleteDeviceItem);
    runPass(1);

    scriptedAccess().failNext(KELA_ERROR_TIMEOUT);
    runPass(1);

    QCOMPARE(gone.count(), 0);
    QCOMPARE(failureBoxes().size(), 0);
}

void tst_KelDeviceTree_bridge_passends::searchGoesWithItsTree()
{
    char path[] = "/opt/a.cti";
    scriptedAccess().addProducer(path);
    inside().getThread(KELA_INTERFACE_TYPE_GENTL)->AddCtiPath(path);
    scriptedAccess().stall(Operation::EnumInterfacesByGenTL);
    m_tree->updateDeviceTypes(16, true, true, true);
    QVERIFY(scriptedAccess().waitUntilStalled());

    m_tree.reset();

    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void tst_KelDeviceTree_bridge_passends::treeThatShowedNoSearchLeavesOthersAlone()
{
    CustomLoadingDialog::showLoading(QStringLiteral("another tree's"), kLoadingId);
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_GIGE, true, true, true);

    m_tree.reset();

    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
}

QTEST_MAIN(tst_KelDeviceTree_bridge_passends)
#include "tst_keldevicetree_bridge_passends.moc"
