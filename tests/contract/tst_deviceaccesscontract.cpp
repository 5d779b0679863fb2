// SPDX-License-Identifier: Apache-2.0
// What the engine and hosts count on of any device access. Runs on the script and, over simulated cameras, on
// the real one: what passes here on one of them only is a mistake in one of the two.
#include "ContractWorld.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <future>
#include <set>
#include <string>
#include <vector>

namespace
{

constexpr uint32_t kHost = 0xC0A80A01;
constexpr uint32_t kGroup = 0xEF010203;
constexpr uint16_t kPort = 5400;
constexpr auto kCancelled = static_cast<uint32_t>(KELA_ERROR_CANCELLED);

class DeviceAccessContract : public testing::Test
{
protected:
    void SetUp() override { contractWorld().reset(); }

    static std::vector<KELA_DEVICE_INFO_EX *> enumerate(KelAIndustryControl &object)
    {
        KELA_DEVICE_INFO_LIST list = {};
        EXPECT_EQ(object.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &list, false), KELA_OK);
        return {list.devices, list.devices + list.count};
    }

    static std::vector<std::string> serials(KelAIndustryControl &object)
    {
        std::vector<std::string> texts;
        for (const KELA_DEVICE_INFO_EX *device : enumerate(object)) {
            texts.emplace_back(fixedText(device->serialNumber));
        }
        return texts;
    }

    /// The record of the one camera that is there.
    KELA_DEVICE_INFO_EX onlyCamera()
    {
        const auto devices = enumerate(access);
        EXPECT_EQ(devices.size(), 1U);
        return devices.empty() ? KELA_DEVICE_INFO_EX{} : *devices[0];
    }

    bool isAccessible(KELA_DEVICE_INFO_EX camera, KELA_ACCESS_MODE mode)
    {
        bool accessible = false;
        access.IsDeviceAccessible(&camera, mode, &accessible);
        return accessible;
    }

    bool isMulticastOn(KELA_DEVICE_INFO_EX camera)
    {
        bool on = false;
        EXPECT_EQ(access.GetMulticastStatus(&camera, &on), KELA_OK);
        return on;
    }

    KelAIndustryControl access;
};

using Strings = std::vector<std::string>;

TEST_F(DeviceAccessContract, worldWithoutCamerasIsAnEmptyList)
{
    EXPECT_EQ(serials(access), Strings{});
}

TEST_F(DeviceAccessContract, cameraIsDescribedByItsRecord)
{
    contractWorld().plug("A1", 21);

    const KELA_DEVICE_INFO_EX camera = onlyCamera();

    EXPECT_EQ(camera.transport, uint32_t{KELA_INTERFACE_TYPE_GIGE});
    EXPECT_EQ(fixedText(camera.modelName), "CV-1");
    EXPECT_EQ(fixedText(camera.secondName), "2.1");
    EXPECT_EQ(fixedText(camera.serialNumber), "A1");
    EXPECT_EQ(fixedText(camera.special.gige.manufacturerName), "Contract Vision");
    EXPECT_EQ(camera.special.gige.currentIp, 0xC0A80A15U);
    EXPECT_EQ(camera.special.gige.subnetMask, 0xFFFFFF00U);
    EXPECT_EQ(camera.special.gige.hostIp, kHost);
    EXPECT_EQ(camera.placement, uint32_t{KELA_PLACEMENT_REAL});
}

TEST_F(DeviceAccessContract, unpluggedCameraLeavesTheList)
{
    contractWorld().plug("A1", 21);
    contractWorld().plug("A2", 22);
    EXPECT_EQ(serials(access).size(), 2U);

    contractWorld().unplug("A1");

    EXPECT_EQ(serials(access), Strings{"A2"});
}

TEST_F(DeviceAccessContract, cameraThatReturnsIsListedWithTheSameIdentity)
{
    contractWorld().plug("A1", 21);
    const KELA_DEVICE_INFO_EX before = onlyCamera();
    contractWorld().unplug("A1");
    EXPECT_EQ(serials(access), Strings{});

    contractWorld().plug("A1", 21);
    const KELA_DEVICE_INFO_EX after = onlyCamera();

    EXPECT_EQ(after.special.gige.macHigh, before.special.gige.macHigh);
    EXPECT_EQ(after.special.gige.macLow, before.special.gige.macLow);
}

TEST_F(DeviceAccessContract, sameCamerasComeInTheSameOrder)
{
    for (uint32_t i = 0; i < 8; ++i) {
        contractWorld().plug("B" + std::to_string(i), 30 + i);
    }

    const Strings first = serials(access);

    EXPECT_EQ(first.size(), 8U);
    EXPECT_EQ(serials(access), first);
    EXPECT_EQ(serials(access), first);
}

TEST_F(DeviceAccessContract, recordsLiveWhileAnotherObjectEnumerates)
{
    contractWorld().plug("A1", 21);
    const auto devices = enumerate(access);
    ASSERT_EQ(devices.size(), 1U);
    const KELA_DEVICE_INFO_EX copy = *devices[0];

    KelAIndustryControl other;
    enumerate(other);

    EXPECT_EQ(std::memcmp(devices[0], &copy, sizeof copy), 0);
}

TEST_F(DeviceAccessContract, freeCameraIsAccessibleInEveryMode)
{
    contractWorld().plug("A1", 21);
    const KELA_DEVICE_INFO_EX camera = onlyCamera();

    EXPECT_TRUE(isAccessible(camera, KELA_ACCESS_EXCLUSIVE));
    EXPECT_TRUE(isAccessible(camera, KELA_ACCESS_CONTROL));
    EXPECT_TRUE(isAccessible(camera, KELA_ACCESS_MONITOR));
}

TEST_F(DeviceAccessContract, heldCameraIsAccessibleToMonitorsOnly)
{
    contractWorld().plug("A1", 21);
    contractWorld().hold("A1");
    const KELA_DEVICE_INFO_EX camera = onlyCamera();

    EXPECT_FALSE(isAccessible(camera, KELA_ACCESS_EXCLUSIVE));
    EXPECT_FALSE(isAccessible(camera, KELA_ACCESS_CONTROL));
    EXPECT_TRUE(isAccessible(camera, KELA_ACCESS_MONITOR));
}

TEST_F(DeviceAccessContract, cameraThatIsLetGoIsAccessibleAfterTheNextEnumeration)
{
    contractWorld().plug("A1", 21);
    contractWorld().hold("A1");
    EXPECT_FALSE(isAccessible(onlyCamera(), KELA_ACCESS_CONTROL));

    contractWorld().letGo("A1");

    EXPECT_TRUE(isAccessible(onlyCamera(), KELA_ACCESS_CONTROL));
}

TEST_F(DeviceAccessContract, cameraThatIsGoneIsNotAccessible)
{
    contractWorld().plug("A1", 21);
    const KELA_DEVICE_INFO_EX camera = onlyCamera();
    contractWorld().unplug("A1");
    enumerate(access);

    EXPECT_FALSE(isAccessible(camera, KELA_ACCESS_CONTROL));
}

TEST_F(DeviceAccessContract, multicastStatusTellsAnOpenStream)
{
    contractWorld().plug("A1", 21);
    EXPECT_FALSE(isMulticastOn(onlyCamera()));
    contractWorld().hold("A1");
    EXPECT_FALSE(isMulticastOn(onlyCamera()));

    contractWorld().holdAndStream("A1", kGroup, kPort);

    EXPECT_TRUE(isMulticastOn(onlyCamera()));
}

TEST_F(DeviceAccessContract, monitorReadsWhereTheHolderStreamsTo)
{
    contractWorld().plug("A1", 21);
    contractWorld().holdAndStream("A1", kGroup, kPort);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    KELCC_INTVALUE_EX_T value = {};

    EXPECT_EQ(access.Init(&camera, false), KELA_OK);
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), KELA_OK);
    EXPECT_EQ(access.GetIntegerNodeValue("GevSCDA", &value, true), KELA_OK);
    EXPECT_EQ(value.current, int64_t{kGroup});
    EXPECT_EQ(access.GetIntegerNodeValue("GevSCPHostPort", &value, true), KELA_OK);
    EXPECT_EQ(value.current, int64_t{kPort});
    EXPECT_EQ(access.DisConnect(false), KELA_OK);
}

TEST_F(DeviceAccessContract, unknownNodeIsAWrongParameter)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    KELCC_INTVALUE_EX_T value = {};

    EXPECT_EQ(access.Init(&camera, false), KELA_OK);
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), KELA_OK);
    EXPECT_EQ(access.GetIntegerNodeValue("NoSuchNode", &value, true), uint32_t{KELA_ERROR_PARAMETER});
}

TEST_F(DeviceAccessContract, stepsOutOfOrderAreRefused)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    KELCC_INTVALUE_EX_T value = {};

    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), uint32_t{KELA_ERROR_CALL_ORDER});
    EXPECT_EQ(access.DisConnect(false), uint32_t{KELA_ERROR_CALL_ORDER});
    EXPECT_EQ(access.Init(&camera, false), KELA_OK);
    EXPECT_EQ(access.GetIntegerNodeValue("GevSCDA", &value, true), uint32_t{KELA_ERROR_CALL_ORDER});
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), KELA_OK);
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), uint32_t{KELA_ERROR_CALL_ORDER});
}

TEST_F(DeviceAccessContract, heldCameraIsNotTakenFromItsHolder)
{
    contractWorld().plug("A1", 21);
    contractWorld().hold("A1");
    KELA_DEVICE_INFO_EX camera = onlyCamera();

    EXPECT_EQ(access.Init(&camera, false), KELA_OK);
    EXPECT_EQ(access.Connect(KELA_ACCESS_CONTROL), uint32_t{KELA_ERROR_IN_USE});
    EXPECT_EQ(access.Connect(KELA_ACCESS_EXCLUSIVE), uint32_t{KELA_ERROR_IN_USE});
    EXPECT_EQ(access.Connect(KELA_ACCESS_MONITOR), KELA_OK);
}

TEST_F(DeviceAccessContract, connectionMakesTheCameraInUseForOthersUntilItsEnd)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    KelAIndustryControl holder;
    EXPECT_EQ(holder.Init(&camera, false), KELA_OK);
    EXPECT_EQ(holder.Connect(KELA_ACCESS_CONTROL), KELA_OK);
    EXPECT_FALSE(isAccessible(onlyCamera(), KELA_ACCESS_CONTROL));

    EXPECT_EQ(holder.DisConnect(false), KELA_OK);

    EXPECT_TRUE(isAccessible(onlyCamera(), KELA_ACCESS_CONTROL));
}

TEST_F(DeviceAccessContract, connectionEndsWithItsObject)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    {
        KelAIndustryControl holder;
        EXPECT_EQ(holder.Init(&camera, false), KELA_OK);
        EXPECT_EQ(holder.Connect(KELA_ACCESS_CONTROL), KELA_OK);
    }

    EXPECT_TRUE(isAccessible(onlyCamera(), KELA_ACCESS_CONTROL));
}

TEST_F(DeviceAccessContract, cameraThatIsGoneTellsNothingAndIsNotConnectedTo)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    contractWorld().unplug("A1");
    enumerate(access);
    bool on = false;

    EXPECT_NE(access.GetMulticastStatus(&camera, &on), KELA_OK);
    EXPECT_EQ(access.Init(&camera, false), KELA_OK);
    EXPECT_NE(access.Connect(KELA_ACCESS_MONITOR), KELA_OK);
    EXPECT_NE(access.Connect(KELA_ACCESS_CONTROL), KELA_OK);
}

TEST_F(DeviceAccessContract, cameraThatIsThereDescribesItselfAgain)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    std::memset(camera.modelName, 0, sizeof camera.modelName);

    EXPECT_EQ(access.GetDeviceInfo(&camera), KELA_OK);

    EXPECT_EQ(fixedText(camera.modelName), "CV-1");
}

TEST_F(DeviceAccessContract, cameraThatIsGoneDescribesNothing)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    contractWorld().unplug("A1");

    EXPECT_NE(access.GetDeviceInfo(&camera), KELA_OK);
}

TEST_F(DeviceAccessContract, cancelledObjectEnumeratesNoMore)
{
    contractWorld().plug("A1", 21);
    KelAIndustryControl cancelled;
    EXPECT_EQ(cancelled.CancelEnum(), KELA_OK);

    KELA_DEVICE_INFO_LIST list = {};

    EXPECT_EQ(cancelled.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &list, false), uint32_t{KELA_ERROR_CANCELLED});
    EXPECT_EQ(serials(access), Strings{"A1"});
}

TEST_F(DeviceAccessContract, cancelledObjectWaitsForNobody)
{
    contractWorld().plug("A1", 21);
    KELA_DEVICE_INFO_EX camera = onlyCamera();
    KelAIndustryControl cancelled;
    cancelled.CancelEnum();
    KELA_GENTL_IF_INFO_LIST interfaces = {};
    bool answer = true;

    EXPECT_EQ(cancelled.GetDeviceInfo(&camera), kCancelled);
    EXPECT_EQ(cancelled.IsDeviceAccessible(&camera, KELA_ACCESS_CONTROL, &answer), kCancelled);
    EXPECT_FALSE(answer);
    EXPECT_EQ(cancelled.GetMulticastStatus(&camera, &answer), kCancelled);
    EXPECT_EQ(cancelled.EnumInterfacesByGenTL(&interfaces, "/no/such.cti"), kCancelled);
}

TEST_F(DeviceAccessContract, enumerationEndsWhenAnotherThreadCancelsIt)
{
    contractWorld().plug("A1", 21);
    KelAIndustryControl cancelled;
    std::promise<void> isRunning;
    std::future<uint32_t> result = std::async(std::launch::async, [&cancelled, &isRunning] {
        isRunning.set_value();
        uint32_t code = KELA_OK;
        while (code == KELA_OK) {
            KELA_DEVICE_INFO_LIST list = {};
            code = cancelled.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &list, false);
        }
        return code;
    });
    isRunning.get_future().wait();

    cancelled.CancelEnum();

    EXPECT_EQ(result.get(), kCancelled);
    EXPECT_EQ(serials(access), Strings{"A1"});
}

TEST_F(DeviceAccessContract, unknownInterfaceHandleIsRefusedAndNotTouched)
{
    KELA_DEVICE_INFO_LIST list = {};
    int nothing = 0;

    EXPECT_EQ(access.EnumDevicesByGenTLEx(&nothing, &list), uint32_t{KELA_ERROR_HANDLE});
    EXPECT_EQ(access.EnumDevicesByGenTLEx(nullptr, &list), uint32_t{KELA_ERROR_HANDLE});
    EXPECT_EQ(access.CloseGenTLInterface(&nothing), uint32_t{KELA_ERROR_HANDLE});
}

TEST_F(DeviceAccessContract, acknowledgeModesFindTheCamerasOfTheSubnet)
{
    contractWorld().plug("A1", 21);

    EXPECT_EQ(access.SetEnumAckMode(0), KELA_OK);
    const Strings unicast = serials(access);
    EXPECT_EQ(access.SetEnumAckMode(1), KELA_OK);

    EXPECT_EQ(unicast, Strings{"A1"});
    EXPECT_EQ(serials(access), Strings{"A1"});
}

// The last case: a simulated camera stays known to its simulator.
TEST_F(DeviceAccessContract, listHolds256CamerasAndNoMore)
{
    for (uint32_t i = 0; i < 260; ++i) {
        contractWorld().plug("M" + std::to_string(i), i < 200 ? 40 + i : 100 + i);
    }

    const Strings found = serials(access);

    EXPECT_EQ(found.size(), 256U);
    EXPECT_EQ(std::set<std::string>(found.begin(), found.end()).size(), 256U);
    EXPECT_EQ(serials(access), found);
}

} // namespace
