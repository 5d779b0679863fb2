// SPDX-License-Identifier: Apache-2.0
// The first numbers of a process. Each fact gets a process of its own, forked from one that has given none.
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <DeviceEnumMng/DevicesEnum/KelACameraIdMng.h>
#include <DeviceEnumMng/DevicesEnum/KelANetWorkIdMng.h>

#include <ScriptedRecords.h>

#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace
{

template <typename Fact>
bool holdsInFreshProcess(Fact fact)
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(fact() ? 0 : 1);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

long idOf(const KELA_DEVICE_INFO_EX &device)
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceInfo = device;
    return KelACameraIdMng().getDeviceID(record);
}

bool knowsTheFirstOfEach()
{
    KELA_NETWORK card = {};
    setField(card.hardwareAddress, "02:00:00:00:00:01");
    return idOf(gigeCamera("A1")) == 1 && KelANetWorkIdMng().getNetWorkID(card) == 80001 &&
           genTLInterfaceId("if0", 0) == 70001;
}

bool s_isLookedAtLast = false;

void lookAtLast()
{
    if (s_isLookedAtLast) {
        _exit(knowsTheFirstOfEach() ? 0 : 1);
    }
}

// Before every other global is made, so that it is called after all of them are gone.
__attribute__((constructor(101))) void registerLast()
{
    std::atexit(lookAtLast);
}

} // namespace

class tst_FirstIdentifiers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstGigeDeviceOfTheProcessGetsOne();
    void usbDeviceSeenFirstCountsForTheGigeNumber();
    void numbersCountTheKeysOfEveryTransport();
    void firstDeviceWithoutIdentityGivesAllOthersItsNumber();
    void firstCardGets80001();
    void firstGenTLInterfaceGets70001();
    void identifiersOutliveTheGlobalsOfTheProcess();
};

void tst_FirstIdentifiers::firstGigeDeviceOfTheProcessGetsOne()
{
    QVERIFY(holdsInFreshProcess([] { return idOf(gigeCamera("A1")) == 1 && idOf(gigeCamera("A2")) == 2; }));
}

void tst_FirstIdentifiers::usbDeviceSeenFirstCountsForTheGigeNumber()
{
    QVERIFY(holdsInFreshProcess([] { return idOf(usbCamera("U1")) == 30001 && idOf(gigeCamera("A1")) == 2; }));
}

void tst_FirstIdentifiers::numbersCountTheKeysOfEveryTransport()
{
    QVERIFY(holdsInFreshProcess([] {
        return idOf(gigeCamera("A1")) == 1 && idOf(cameraLinkCamera("C1", "p")) == 40002 &&
               idOf(genTLDevice("G1", "if0")) == 50003 && idOf(usbCamera("U1")) == 30004;
    }));
}

void tst_FirstIdentifiers::firstDeviceWithoutIdentityGivesAllOthersItsNumber()
{
    QVERIFY(holdsInFreshProcess([] {
        KELA_DEVICE_INFO_EX ieee1394 = gigeCamera("A1");
        ieee1394.transport = KELA_INTERFACE_TYPE_1394;
        KELA_DEVICE_INFO_EX further = gigeCamera("A2");
        further.transport = KELA_INTERFACE_TYPE_FURTHER;
        return idOf(ieee1394) == 20001 && idOf(further) == 20001;
    }));
    QVERIFY(holdsInFreshProcess([] {
        KELA_DEVICE_INFO_EX further = gigeCamera("A2");
        further.transport = KELA_INTERFACE_TYPE_FURTHER;
        return idOf(further) == 60001;
    }));
}

void tst_FirstIdentifiers::firstCardGets80001()
{
    QVERIFY(holdsInFreshProcess([] {
        KELA_NETWORK card = {};
        setField(card.hardwareAddress, "02:00:00:00:00:01");
        return KelANetWorkIdMng().getNetWorkID(card) == 80001;
    }));
}

void tst_FirstIdentifiers::firstGenTLInterfaceGets70001()
{
    QVERIFY(holdsInFreshProcess(
        [] { return genTLInterfaceId("if0", 0) == 70001 && genTLInterfaceId("if1", 0) == 70002; }));
}

void tst_FirstIdentifiers::identifiersOutliveTheGlobalsOfTheProcess()
{
    // A worker may be in a pass while the process ends.
    QVERIFY(holdsInFreshProcess([] {
        const bool isKnown = knowsTheFirstOfEach();
        s_isLookedAtLast = true;
        if (isKnown) {
            std::exit(0); // NOLINT(concurrency-mt-unsafe)
        }
        return false;
    }));
}

QTEST_GUILESS_MAIN(tst_FirstIdentifiers)
#include "tst_firstidentifiers.moc"
