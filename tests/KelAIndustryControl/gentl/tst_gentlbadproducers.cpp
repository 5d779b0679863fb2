// SPDX-License-Identifier: Apache-2.0
// Producers that are none, refuse, crash or lie. None of them may take the process along.
#include "SampleFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cstdlib>

namespace
{

using SteadyClock = std::chrono::steady_clock;

constexpr char kOneInterface[] = "interface if-a|Interface A|GEV\ndevice cam-1|Maker|Model 1|S1||1|1\n";

struct GenTLBadProducers : ::testing::Test {
    SampleFolder folder;
    KelAIndustryControl access;
    LogLines log;

    unsigned int codeOf(const std::string &sample)
    {
        return interfacesOf(access, folder.add(sample, sample)).code;
    }
};

} // namespace

TEST_F(GenTLBadProducers, missingFileIsTold)
{
    EXPECT_EQ(interfacesOf(access, folder.path("none.cti")).code, KELA_ERROR_PRODUCER_MISSING);
    EXPECT_EQ(interfacesOf(access, "").code, KELA_ERROR_PRODUCER_MISSING);
    EXPECT_EQ(interfacesOf(access, std::string(10000, 'x')).code, KELA_ERROR_PRODUCER_MISSING);
}

TEST_F(GenTLBadProducers, textFileIsNoProducer)
{
    std::ofstream(folder.path("text.cti")) << "not a library";

    EXPECT_EQ(interfacesOf(access, folder.path("text.cti")).code, KELA_ERROR_NOT_A_PRODUCER);
    EXPECT_EQ(log.count("it is no library"), 1);
}

TEST_F(GenTLBadProducers, emptyFileAndFolderAreNoProducers)
{
    std::ofstream(folder.path("empty.cti")).flush();
    std::filesystem::create_directory(folder.path("folder.cti"));

    EXPECT_EQ(interfacesOf(access, folder.path("empty.cti")).code, KELA_ERROR_NOT_A_PRODUCER);
    EXPECT_EQ(interfacesOf(access, folder.path("folder.cti")).code, KELA_ERROR_NOT_A_PRODUCER);
}

TEST_F(GenTLBadProducers, cutLibraryIsRefused)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "cut.cti");
    std::filesystem::resize_file(path, 1000);
    const unsigned int code = interfacesOf(access, path).code;

    // Whether the loader sees it or falls over it is its own affair; it falls in the trial.
    EXPECT_TRUE(code == KELA_ERROR_NOT_A_PRODUCER || code == KELA_ERROR_PRODUCER_REFUSED) << code;
}

TEST_F(GenTLBadProducers, libraryWithoutTheFunctionsIsNoProducer)
{
    EXPECT_EQ(codeOf("BadNoSymbols.cti"), KELA_ERROR_NOT_A_PRODUCER);
    EXPECT_EQ(log.count("it has no function GCInitLib"), 1);
}

TEST_F(GenTLBadProducers, libraryForAnotherProcessorIsNoProducer)
{
    EXPECT_EQ(codeOf("BadArchitecture.cti"), KELA_ERROR_NOT_A_PRODUCER);
    EXPECT_EQ(log.count("another processor"), 1);
}

TEST_F(GenTLBadProducers, errorAtEachCallIsTheProducersAndPasses)
{
    const char *const calls[] = {"GCInitLib",          "TLOpen",           "TLUpdateInterfaceList",
                                 "TLGetNumInterfaces", "TLGetInterfaceID", "TLOpenInterface",
                                 "IFUpdateDeviceList", "IFGetNumDevices",  "IFGetDeviceID"};
    const std::string path = folder.add("KelFGSampleGEV.cti", "errors.cti");
    for (const char *const call : calls) {
        SCOPED_TRACE(call);
        KelAIndustryControl own;
        describe(path, std::string(kOneInterface) + "error " + call + " -1001\n");
        const Interfaces failed = interfacesOf(own, path);
        if (failed.code == KELA_OK) {
            ASSERT_EQ(failed.records.size(), 1U);
            EXPECT_EQ(devicesOf(own, failed.records[0]).code, KELA_ERROR_PRODUCER_FAILED);
        } else {
            EXPECT_EQ(failed.code, KELA_ERROR_PRODUCER_FAILED);
        }
        EXPECT_EQ(log.count(std::string(call) + " gave -1001"), 1);

        describe(path, kOneInterface);
        const Interfaces mended = interfacesOf(own, path);
        ASSERT_EQ(mended.records.size(), 1U);
        EXPECT_EQ(devicesOf(own, mended.records[0]).records.size(), 1U);
    }
}

TEST_F(GenTLBadProducers, errorOfACallThatGivesDetailsCostsTheDetailsOnly)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "details.cti");
    describe(path, std::string(kOneInterface) + "error GCGetInfo -1003\nerror TLGetInfo -1003\n" +
                       "error TLGetInterfaceInfo -1001\nerror IFGetDeviceInfo -1009\n" +
                       "error IFClose -1001\nerror TLClose -1001\nerror GCCloseLib -1001\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 1U);
    const Devices devices = devicesOf(access, interfaces.records[0]);

    ASSERT_EQ(devices.records.size(), 1U);
    EXPECT_EQ(fixedText(devices.records[0].special.genTL.deviceId), "cam-1");
    EXPECT_EQ(fixedText(devices.records[0].modelName), "cam-1");
}

TEST_F(GenTLBadProducers, sameErrorIsLoggedOncePerChange)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
    describe(path, std::string(kOneInterface) + "error TLUpdateInterfaceList -1010\n");
    for (int pass = 0; pass < 5; ++pass)
        EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_FAILED);

    EXPECT_EQ(log.count("TLUpdateInterfaceList gave -1010"), 1);
}

TEST_F(GenTLBadProducers, hangInTheDeviceListOfItsTrialIsRefused)
{
    const auto begin = SteadyClock::now();
    const std::string path = folder.add("BadHang.cti", "BadHang.cti");
    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_REFUSED);
    const auto first = SteadyClock::now() - begin;

    EXPECT_LT(first, std::chrono::seconds(20));
    EXPECT_EQ(log.count("did not come back from IFUpdateDeviceList"), 1);
    // The verdict is kept.
    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_LT(SteadyClock::now() - begin - first, std::chrono::seconds(5));
    EXPECT_EQ(log.count("did not come back"), 1);
}

TEST_F(GenTLBadProducers, crashOnLoadIsRefused)
{
    EXPECT_EQ(codeOf("BadCrashOnLoad.cti"), KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("ended in load"), 1);
}

TEST_F(GenTLBadProducers, crashOnUnloadIsRefused)
{
    EXPECT_EQ(codeOf("BadCrashOnUnload.cti"), KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("with signal 11") + log.count("with status"), 1);
}

TEST_F(GenTLBadProducers, endOfTheProcessIsRefused)
{
    EXPECT_EQ(codeOf("BadExit.cti"), KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("ended in GCInitLib"), 1);
}

TEST_F(GenTLBadProducers, exceptionOutOfACallIsTheProducersError)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "throws.cti");
    describe(path, std::string(kOneInterface) + "fault throw\n");

    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_FAILED);
}

TEST_F(GenTLBadProducers, unterminatedTextsEndWhereTheyEnd)
{
    const Interfaces interfaces = interfacesOf(access, folder.add("BadUnterminated.cti", "u.cti"));
    ASSERT_EQ(interfaces.records.size(), 1U);
    const Devices devices = devicesOf(access, interfaces.records[0]);

    EXPECT_EQ(fixedText(interfaces.records[0].identifier), "plain");
    ASSERT_EQ(devices.records.size(), 1U);
    EXPECT_EQ(fixedText(devices.records[0].serialNumber), "E1");
    EXPECT_EQ(fixedText(devices.records[0].special.genTL.userDefinedName), "name");
}

TEST_F(GenTLBadProducers, sizesThatLieAreRefused)
{
    EXPECT_EQ(codeOf("BadWrongSize.cti"), KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("sizes that cannot be"), 1);
}

TEST_F(GenTLBadProducers, neededSizesThatLieAreRefused)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "needs.cti");
    describe(path, std::string(kOneInterface) + "fault wrong-needed-size\n");

    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("sizes that cannot be"), 1);
}

TEST_F(GenTLBadProducers, writingBeyondTheRoomIsRefused)
{
    EXPECT_EQ(codeOf("BadOverflow.cti"), KELA_ERROR_PRODUCER_REFUSED);
    EXPECT_EQ(log.count("ended in TLGetInfo"), 1);
}

TEST_F(GenTLBadProducers, countsThatLieGiveWhatIsThere)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "counts.cti");
    describe(path, std::string(kOneInterface) + "fault wrong-count\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 1U);

    EXPECT_EQ(devicesOf(access, interfaces.records[0]).records.size(), 1U);
}

TEST_F(GenTLBadProducers, threeHundredDevicesGiveAFullListAndALine)
{
    const Interfaces interfaces = interfacesOf(access, folder.add("BigSample.cti", "big.cti"));
    ASSERT_EQ(interfaces.records.size(), 1U);

    EXPECT_EQ(devicesOf(access, interfaces.records[0]).records.size(), 256U);
    EXPECT_EQ(log.count("left out: 44"), 1);
}

TEST_F(GenTLBadProducers, fullListBesideAShortOneIsToldOnce)
{
    const std::string path = folder.add("KelFGSampleGEV.cti", "mixed.cti");
    describe(path, "interface long|Long|GEV\ndevices 300\ninterface short|Short|GEV\ndevices 2\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 2U);
    for (int pass = 0; pass < 3; ++pass) {
        for (const KELA_GENTL_IF_INFO &interface : interfaces.records)
            EXPECT_EQ(devicesOf(access, interface).code, KELA_OK);
    }

    EXPECT_EQ(log.count("left out: 44"), 1);
}

TEST(GenTLBadProducersDeathTest, hostWithoutStandardFilesTriesProducers)
{
    EXPECT_EXIT(
        {
            SampleFolder folder;
            const std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
            for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                ::close(file);
            KelAIndustryControl own;
            const unsigned int code = interfacesOf(own, path).code;
            std::_Exit(code == KELA_OK ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(GenTLBadProducers, changedFileIsTriedAgain)
{
    const std::string path = folder.add("BadNoSymbols.cti", "changed.cti");
    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_NOT_A_PRODUCER);

    std::filesystem::remove(path);
    folder.add("KelFGSampleGEV.cti", "changed.cti");

    EXPECT_EQ(interfacesOf(access, path).code, KELA_OK);
}
