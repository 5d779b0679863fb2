// SPDX-License-Identifier: Apache-2.0
#include "LogRecorder.h"

#include <KelAIndustryControl/KelAIndustryControl.h>
#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/core/FieldText.h>
#include <KelAIndustryControl/core/RecordStore.h>

#include <gtest/gtest.h>

#include <thread>

using namespace kela;
using kelatest::LogRecorder;

namespace
{

constexpr unsigned int kIeee1394 = KELA_INTERFACE_TYPE_1394;

KELA_DEVICE_INFO_EX deviceOf(std::uint32_t transport)
{
    KELA_DEVICE_INFO_EX info = {};
    info.transport = transport;
    return info;
}

} // namespace

TEST(DeviceAccess, transportWithoutABackendGivesAnEmptyListAndOneLogLine)
{
    LogRecorder log;
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list;
    std::memset(&list, 0xAA, sizeof list);

    EXPECT_EQ(access.EnumDevices(kIeee1394, &list, false), 0U);
    EXPECT_EQ(list.count, 0U);
    EXPECT_EQ(list.devices[0], nullptr);
    EXPECT_EQ(access.EnumDevices(kIeee1394, &list, true), 0U);
    EXPECT_EQ(log.count("no device access for transport 2"), 1);
}

TEST(DeviceAccess, missingParametersAreRefused)
{
    KelAIndustryControl access;
    KELA_DEVICE_INFO_EX info = deviceOf(KELA_INTERFACE_TYPE_GIGE);
    KELCC_INTVALUE_EX_T value;
    bool answer = true;

    EXPECT_EQ(access.EnumDevices(1, nullptr, false), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.Init(nullptr, false), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.GetDeviceInfo(nullptr), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.GetDeviceInfo(&info), static_cast<unsigned int>(KELA_ERROR_PARAMETER)) << "no address";
    EXPECT_EQ(access.IsDeviceAccessible(nullptr, 3, &answer), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_FALSE(answer);
    EXPECT_EQ(access.IsDeviceAccessible(&info, 3, nullptr), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.IsDeviceAccessible(&info, 2, &answer), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.GetMulticastStatus(&info, nullptr), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.GetIntegerNodeValue(nullptr, &value, true),
              static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.GetIntegerNodeValue("GevCCP", nullptr, true),
              static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.SetEnumAckMode(2), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.EnumInterfacesByGenTL(nullptr, "x"), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.UnloadGenTLLibrary(nullptr), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.OpenGenTLInterface(nullptr, nullptr), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
}

TEST(DeviceAccess, unknownInterfaceHandleIsRefused)
{
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    int nothing = 0;
    EXPECT_EQ(access.EnumDevicesByGenTLEx(&nothing, &list), static_cast<unsigned int>(KELA_ERROR_HANDLE));
    EXPECT_EQ(access.EnumDevicesByGenTLEx(nullptr, &list), static_cast<unsigned int>(KELA_ERROR_HANDLE));
    EXPECT_EQ(access.CloseGenTLInterface(&nothing), static_cast<unsigned int>(KELA_ERROR_HANDLE));
}

TEST(DeviceAccess, callOrderIsChecked)
{
    KelAIndustryControl access;
    KELCC_INTVALUE_EX_T value;
    EXPECT_EQ(access.Connect(3), static_cast<unsigned int>(KELA_ERROR_CALL_ORDER));
    EXPECT_EQ(access.DisConnect(false), static_cast<unsigned int>(KELA_ERROR_CALL_ORDER));
    EXPECT_EQ(access.GetIntegerNodeValue("GevCCP", &value, true),
              static_cast<unsigned int>(KELA_ERROR_CALL_ORDER));
}

TEST(DeviceAccess, recordWithSeveralTransportsIsRefused)
{
    KelAIndustryControl access;
    KELA_DEVICE_INFO_EX info = deviceOf(5);
    bool answer = false;
    EXPECT_EQ(access.Init(&info, false), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
    EXPECT_EQ(access.IsDeviceAccessible(&info, 3, &answer), static_cast<unsigned int>(KELA_ERROR_PARAMETER));
}

TEST(DeviceAccess, nothingIsEnumeratedAfterCancel)
{
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};
    EXPECT_EQ(access.CancelEnum(), 0U);
    EXPECT_EQ(access.EnumDevices(1, &list, false), static_cast<unsigned int>(KELA_ERROR_CANCELLED));
    EXPECT_EQ(access.EnumDevices(1, &list, false), static_cast<unsigned int>(KELA_ERROR_CANCELLED))
        << "for good";
}

TEST(CancelSignal, endsAWaitOfAnotherThread)
{
    CancelSignal cancel;
    const TimePoint begin = Clock::now();
    std::thread waiter([&] { EXPECT_TRUE(cancel.waitUntil(begin + std::chrono::seconds{30})); });
    cancel.set();
    waiter.join();
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds{10});
}

TEST(CancelSignal, waitEndsAtItsDeadline)
{
    const CancelSignal cancel;
    EXPECT_FALSE(cancel.waitUntil(Clock::now() + Milliseconds{20}));
}

TEST(RecordStore, givesAtMostWhatTheListHoldsAndLogsTheRestOnce)
{
    LogRecorder log;
    RecordStore<KELA_DEVICE_INFO_EX> store;
    KELA_DEVICE_INFO_LIST list = {};
    for (int pass = 0; pass < 2; ++pass)
        store.give(std::vector<KELA_DEVICE_INFO_EX>(300), list.devices, list.count, "devices");

    EXPECT_EQ(list.count, 256U);
    EXPECT_NE(list.devices[255], nullptr);
    EXPECT_EQ(log.count("left out: 44"), 1);
}

TEST(RecordStore, listGivenBeforeLivesUntilTheNext)
{
    RecordStore<KELA_DEVICE_INFO_EX> store;
    KELA_DEVICE_INFO_LIST list = {};
    std::vector<KELA_DEVICE_INFO_EX> records(2);
    setFieldText(records[1].serialNumber, "two");
    store.give(std::move(records), list.devices, list.count, "devices");
    EXPECT_EQ(fixedText(list.devices[1]->serialNumber), "two");
}

TEST(FieldText, longTextIsCutAndTheRestIsZero)
{
    char field[4] = {'x', 'x', 'x', 'x'};
    setFieldText(field, "abcdef");
    EXPECT_EQ(std::string(field), "abc");
    setFieldText(field, "");
    EXPECT_EQ(field[0], 0);
    EXPECT_EQ(field[3], 0);
}

TEST(FieldText, utf8IsCutBetweenCharacters)
{
    char field[6];
    setUtf8Field(field, "ab\u76f8\u76f8");
    EXPECT_EQ(std::string(field), "ab\u76f8");
    setUtf8Field(field, "abc\u76f8");
    EXPECT_EQ(std::string(field), "abc");
    setUtf8Field(field, "abcdefgh");
    EXPECT_EQ(std::string(field), "abcde");
}

TEST(Log, textFromOutsideCannotForgeALine)
{
    EXPECT_EQ(printable("a\nb\x1b[31m"), "a?b?[31m");
    EXPECT_LE(printable(std::string(10000, 'a')).size(), 200U);
}
