// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <DeviceEnumMng/DevicesEnum/CDevicesEnum.h>
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <ScriptedAccess.h>
#include <ScriptedRecords.h>

#include "EventRecorder.h"

#include <QtTest>

inline char *pathOf(const char *path)
{
    // The operations take a char* and do not write through it.
    return const_cast<char *>(path);
}

inline const char *const kCtiA = "/cti/a.cti";
inline const char *const kCtiB = "/cti/b.cti";

// Codes that a producer may give of itself: none of them ends a pass.
inline void addFailures()
{
    QTest::addColumn<unsigned int>("code");
    QTest::newRow("failed") << static_cast<unsigned int>(KELA_ERROR_PRODUCER_FAILED);
    QTest::newRow("cancelled by itself") << static_cast<unsigned int>(KELA_ERROR_CANCELLED);
}

// A GenTL enumerator with the producer A and its interface "if0" that holds the device "G1".
class ProducerUnderTest
{
public:
    explicit ProducerUnderTest(KELA_INTERFACE_TYPE type = KELA_INTERFACE_TYPE_GENTL)
    {
        recorder.listenTo(enumerator);
        enumerator.Init(type, false);
        scriptedAccess().plugInterface(kCtiA, genTLInterface("if0"));
        scriptedAccess().plug(genTLDevice("G1", "if0"));
        enumerator.AddCtiPath(pathOf(kCtiA));
    }

    QStringList pass() { return passOf(enumerator, recorder); }

    static int interfaceId(const char *identifier, unsigned int number = 0)
    {
        return static_cast<int>(genTLInterfaceId(identifier, number));
    }

    void *open(const char *identifier)
    {
        void *handle = scriptedAccess().openInterface(identifier, 0);
        enumerator.SetGenTLInterfaceHandle(interfaceId(identifier), handle);
        return handle;
    }

    EventRecorder recorder;
    CDevicesEnum enumerator;
};
