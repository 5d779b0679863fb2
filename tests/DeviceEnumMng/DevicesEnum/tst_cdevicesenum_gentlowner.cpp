// SPDX-License-Identifier: Apache-2.0
// What the owner does with handles and producers while the worker waits for the devices of an interface.
#include "ProducerUnderTest.h"

#include <QtTest>

class tst_CDevicesEnum_gentlowner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void handleGivenWhileDevicesAreAskedServesTheNextPass();
    void updateWhileDevicesAreAskedAsksThemAgain();
    void handleClosedWhileDevicesAreAskedTakesThemWithTheNextPass();
    void producerRemovedWhileItsDevicesAreAskedGoesWithThem_data();
    void producerRemovedWhileItsDevicesAreAskedGoesWithThem();

private:
    // Starts a pass and returns when it waits for the devices of an interface.
    static bool startUntilDevicesAreAsked(ProducerUnderTest &test)
    {
        test.recorder.takeEvents();
        scriptedAccess().stall(Operation::EnumDevicesByGenTLEx);
        scriptedAccess().stall(Operation::EnumDevicesByGenTL);
        test.enumerator.UpdateOnce(true, true);
        return scriptedAccess().waitUntilStalled();
    }
};

void tst_CDevicesEnum_gentlowner::init()
{
    scriptedAccess().reset();
}

void tst_CDevicesEnum_gentlowner::handleGivenWhileDevicesAreAskedServesTheNextPass()
{
    ProducerUnderTest test;
    scriptedAccess().plugInterface(kCtiA, genTLInterface("if1"));
    scriptedAccess().plug(genTLDevice("G2", "if1"));
    test.open("if0");
    QVERIFY(startUntilDevicesAreAsked(test));

    test.open("if1");
    test.open("if0");
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(),
             QStringList({"begin", "interface new if0", "interface new if1", "new G1", "end 0"}));
    scriptedAccess().forgetCalls();
    QCOMPARE(test.pass(),
             QStringList({"interface updated if0", "interface updated if1", "updated G1", "new G2"}));
    QCOMPARE(scriptedAccess().count(Operation::EnumDevicesByGenTLEx), std::size_t(2));
}

void tst_CDevicesEnum_gentlowner::updateWhileDevicesAreAskedAsksThemAgain()
{
    ProducerUnderTest test;
    test.open("if0");
    QVERIFY(startUntilDevicesAreAsked(test));

    test.enumerator.UpdateOnce(true, true);
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));
    scriptedAccess().unplug("G1");
    test.enumerator.FinishOneEnum();
    QVERIFY(test.recorder.waitForEnds(2));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface new if0", "new G1", "end 0", "begin",
                                                "interface updated if0", "removed G1", "end 0"}));
}

void tst_CDevicesEnum_gentlowner::handleClosedWhileDevicesAreAskedTakesThemWithTheNextPass()
{
    ProducerUnderTest test;
    test.open("if0");
    QVERIFY(startUntilDevicesAreAsked(test));

    test.enumerator.SetGenTLInterfaceHandle(ProducerUnderTest::interfaceId("if0"), nullptr);
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface new if0", "new G1", "end 0"}));
    QCOMPARE(test.pass(), QStringList({"interface updated if0", "removed G1"}));
}

void tst_CDevicesEnum_gentlowner::producerRemovedWhileItsDevicesAreAskedGoesWithThem_data()
{
    QTest::addColumn<int>("transport");
    QTest::newRow("by handle") << 16;
    QTest::newRow("by record") << 32;
}

void tst_CDevicesEnum_gentlowner::producerRemovedWhileItsDevicesAreAskedGoesWithThem()
{
    QFETCH(int, transport);
    ProducerUnderTest test(static_cast<KELA_INTERFACE_TYPE>(transport));
    KELA_DEVICE_INFO_EX device = genTLDevice("G1", "if0");
    device.transport = static_cast<uint32_t>(transport);
    scriptedAccess().replug(device);
    test.open("if0");
    QCOMPARE(test.pass(), QStringList({"interface new if0", "new G1"}));
    QVERIFY(startUntilDevicesAreAsked(test));

    test.enumerator.RemoveCtiPath(pathOf(kCtiA));
    scriptedAccess().release();
    QVERIFY(test.recorder.waitForEnds(1));

    // The unloaded producer lists nothing any more; its interface was reported before it went.
    QCOMPARE(test.recorder.take(), QStringList({"begin", "interface updated if0", "removed G1", "end 0"}));
    QCOMPARE(test.pass(), QStringList("interface removed if0"));
    QCOMPARE(test.pass(), QStringList());
}

QTEST_GUILESS_MAIN(tst_CDevicesEnum_gentlowner)
#include "tst_cdevicesenum_gentlowner.moc"
