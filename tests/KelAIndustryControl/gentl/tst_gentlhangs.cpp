// SPDX-License-Identifier: Apache-2.0
// Producers that passed their trial and do not come back later: nobody waits longer than the limit, the
// others go on, and neither unloading nor leaving the program waits at all.
#include "SampleFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

namespace
{

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr char kOneInterface[] = "interface if-a|Interface A|GEV\ndevice cam-1|Maker|Model 1|S1||1|1\n";
constexpr seconds kLimit{5};

struct GenTLHangs : ::testing::Test {
    SampleFolder folder;
    KelAIndustryControl access;
    LogLines log;
    std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
    KELA_GENTL_IF_INFO interface = {};

    void SetUp() override
    {
        describe(path, kOneInterface);
        const Interfaces found = interfacesOf(access, path);
        ASSERT_EQ(found.records.size(), 1U);
        interface = found.records[0];
    }

    // What a test left hanging comes back while the program still runs.
    void TearDown() override
    {
        access.UnloadGenTLLibrary(path.c_str());
        EXPECT_TRUE(areThreadsGone());
    }

    void hang(const char *call, milliseconds time) const
    {
        describe(path, std::string(kOneInterface) + "hang " + call + ' ' + std::to_string(time.count()) + '\n');
    }
};

} // namespace

TEST_F(GenTLHangs, updateThatTimesOutKeepsTheProducersList)
{
    describe(path, std::string(kOneInterface) +
                       "error TLUpdateInterfaceList -1011\nerror IFUpdateDeviceList -1011\n");

    EXPECT_EQ(interfacesOf(access, path).records.size(), 1U);
    EXPECT_EQ(devicesOf(access, interface).code, KELA_OK);
}

TEST_F(GenTLHangs, listThatTimesOutKeepsTheLastGoodOne)
{
    ASSERT_EQ(devicesOf(access, interface).records.size(), 1U);
    describe(path,
             std::string(kOneInterface) + "error TLGetNumInterfaces -1011\nerror IFGetNumDevices -1011\n");

    EXPECT_EQ(interfacesOf(access, path).records.size(), 1U);
    EXPECT_EQ(devicesOf(access, interface).records.size(), 1U);
}

TEST_F(GenTLHangs, hungProducerGivesNoAnswerInTimeAndOthersGoOn)
{
    const std::string other = folder.add("KelFGSampleGEV.cti", "b.cti");
    describe(other, kOneInterface);
    hang("IFUpdateDeviceList", milliseconds(14000));

    const auto begin = SteadyClock::now();
    EXPECT_EQ(devicesOf(access, interface).code, KELA_ERROR_TIMEOUT);
    const auto waited = SteadyClock::now() - begin;
    EXPECT_GE(waited, kLimit);
    EXPECT_LT(waited, kLimit + seconds(3));
    EXPECT_EQ(log.count("does not respond"), 1);
    KELA_GENTL_PRODUCER_INFO info = {};
    EXPECT_EQ(access.GetGenTLProducerInfo(path.c_str(), &info), KELA_OK);
    EXPECT_EQ(info.state, KELA_PRODUCER_NOT_RESPONDING);

    // It counts as not responding: nobody waits for it again, and the other one is not concerned.
    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_TIMEOUT);
    EXPECT_LT(SteadyClock::now() - begin - waited, seconds(3));
    EXPECT_EQ(interfacesOf(access, other).records.size(), 1U);

    // Its thread comes back.
    describe(path, kOneInterface);
    for (int i = 0; i < 300 && log.count("responds again") == 0; ++i)
        std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(interfacesOf(access, path).records.size(), 1U);
    EXPECT_EQ(devicesOf(access, interface).records.size(), 1U);
    access.UnloadGenTLLibrary(other.c_str());
}

TEST_F(GenTLHangs, unloadingAHungProducerReturnsAtOnce)
{
    hang("TLUpdateInterfaceList", milliseconds(4000));
    unsigned int code = KELA_OK;
    std::thread worker([&] { code = interfacesOf(access, path).code; });
    std::this_thread::sleep_for(milliseconds(200));

    const auto begin = SteadyClock::now();
    EXPECT_EQ(access.UnloadGenTLLibrary(path.c_str()), KELA_OK);
    EXPECT_LT(SteadyClock::now() - begin, seconds(2));
    worker.join();

    EXPECT_EQ(code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHangs, cancelEndsTheWaitForAHungProducer)
{
    hang("TLUpdateInterfaceList", milliseconds(4000));
    unsigned int code = KELA_OK;
    SteadyClock::time_point ended;
    std::thread worker([&] {
        code = interfacesOf(access, path).code;
        ended = SteadyClock::now();
    });
    std::this_thread::sleep_for(milliseconds(200));
    const auto begin = SteadyClock::now();
    access.CancelEnum();
    worker.join();

    EXPECT_EQ(code, KELA_ERROR_CANCELLED);
    EXPECT_LT(ended - begin, seconds(2));
}

TEST_F(GenTLHangs, cancelEndsATrialWithoutAVerdict)
{
    const std::string bad = folder.add("BadHang.cti", "hangs.cti");
    unsigned int code = KELA_OK;
    const auto begin = SteadyClock::now();
    std::thread worker([&] { code = interfacesOf(access, bad).code; });
    std::this_thread::sleep_for(milliseconds(300));
    access.CancelEnum();
    worker.join();

    EXPECT_EQ(code, KELA_ERROR_CANCELLED);
    EXPECT_LT(SteadyClock::now() - begin, seconds(6));
    EXPECT_EQ(log.count("hangs.cti"), 0);
}

TEST_F(GenTLHangs, twoObjectsWaitForOneTrial)
{
    const std::string fresh = folder.add("BadWrongSize.cti", "twice.cti");
    unsigned int codes[2] = {};
    std::thread workers[2];
    for (int i = 0; i < 2; ++i) {
        workers[i] = std::thread([&, i] {
            KelAIndustryControl own;
            codes[i] = interfacesOf(own, fresh).code;
        });
    }
    for (std::thread &worker : workers)
        worker.join();

    EXPECT_EQ(codes[0], KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(codes[1], KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("twice.cti"), 1);
}

TEST_F(GenTLHangs, destroyingAnObjectGivesItsProducerAMomentOnly)
{
    hang("TLClose", milliseconds(4000));
    auto own = std::make_unique<KelAIndustryControl>();
    ASSERT_EQ(interfacesOf(*own, path).code, KELA_OK);
    access.UnloadGenTLLibrary(path.c_str());
    const auto begin = SteadyClock::now();
    own.reset();

    EXPECT_LT(SteadyClock::now() - begin, seconds(2));
}

TEST_F(GenTLHangs, destroyingAnObjectWhoseCallHangsDoesNotWaitForIt)
{
    hang("TLUpdateInterfaceList", milliseconds(3000));
    auto own = std::make_unique<KelAIndustryControl>();
    std::thread worker([&] { interfacesOf(*own, path); });
    std::this_thread::sleep_for(milliseconds(400));
    own->CancelEnum();
    worker.join();
    access.UnloadGenTLLibrary(path.c_str());
    const auto begin = SteadyClock::now();
    own.reset();

    // The moment that a producer gets for closing is 250 ms.
    EXPECT_LT(SteadyClock::now() - begin, milliseconds(200));
}

TEST(GenTLHangsDeathTest, leavingTheProgramDuringACallThatHangsDoesNotWaitForIt)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP()
        << "the program ends with a thread inside the producer, which ThreadSanitizer takes for a race";
#endif
    EXPECT_EXIT(
        {
            static SteadyClock::time_point leaving;
            // Registered first, so it runs behind everything that could wait.
            std::atexit([] { std::_Exit(SteadyClock::now() - leaving < milliseconds(500) ? 0 : 2); });
            SampleFolder folder;
            const std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
            describe(path, kOneInterface);
            auto access = std::make_unique<KelAIndustryControl>();
            if (interfacesOf(*access, path).records.size() != 1)
                std::_Exit(1);
            describe(path, std::string(kOneInterface) + "hang TLUpdateInterfaceList 3600000\n");
            std::thread worker([&] { interfacesOf(*access, path); });
            std::this_thread::sleep_for(milliseconds(400));
            access->CancelEnum();
            worker.join();
            leaving = SteadyClock::now();
            access.reset();
            std::exit(3); // NOLINT(concurrency-mt-unsafe): the handler above gives the code
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(GenTLHangsDeathTest, leavingTheProgramDoesNotWaitForAHungProducer)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP()
        << "the program ends with a thread inside the producer, which ThreadSanitizer takes for a race";
#endif
    EXPECT_EXIT(
        {
            SampleFolder folder;
            const std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
            describe(path, kOneInterface);
            auto access = std::make_unique<KelAIndustryControl>();
            const Interfaces found = interfacesOf(*access, path);
            describe(path, std::string(kOneInterface) + "hang TLUpdateInterfaceList 3600000\n");
            const bool isHung = interfacesOf(*access, path).code == KELA_ERROR_TIMEOUT;
            access.reset();
            std::exit(found.records.size() == 1 && isHung ? 0 : 1); // NOLINT(concurrency-mt-unsafe)
        },
        ::testing::ExitedWithCode(0), "");
}
