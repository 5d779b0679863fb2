// SPDX-License-Identifier: Apache-2.0
// What is known of a producer without asking it: what it is, how it stands, why it was refused.
#include "SampleFolder.h"

#include <gtest/gtest.h>

namespace
{

constexpr char kProducer[] = "producer Harbour Optics|Network producer|1.4|GEV|Harbour cameras\n"
                             "interface if-a|Interface A|GEV\n";

struct GenTLProducerInfo : ::testing::Test {
    SampleFolder folder;
    KelAIndustryControl access;
    LogLines log;

    std::string add(const std::string &description) const
    {
        const std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
        describe(path, description);
        return path;
    }

    KELA_GENTL_PRODUCER_INFO infoOf(const std::string &path)
    {
        KELA_GENTL_PRODUCER_INFO info = {};
        EXPECT_EQ(access.GetGenTLProducerInfo(path.c_str(), &info), KELA_OK);
        return info;
    }
};

} // namespace

TEST_F(GenTLProducerInfo, producerThatWasNotMetIsUnknown)
{
    const KELA_GENTL_PRODUCER_INFO info = infoOf(add(kProducer));

    EXPECT_EQ(info.state, KELA_PRODUCER_UNKNOWN);
    EXPECT_STREQ(info.vendor, "");
}

TEST_F(GenTLProducerInfo, missingFileAndArgumentsAreTold)
{
    KELA_GENTL_PRODUCER_INFO info = {};

    EXPECT_EQ(access.GetGenTLProducerInfo(folder.path("none.cti").c_str(), &info), KELA_ERROR_PRODUCER_MISSING);
    EXPECT_EQ(access.GetGenTLProducerInfo(nullptr, &info), KELA_ERROR_PARAMETER);
    EXPECT_EQ(access.GetGenTLProducerInfo("", nullptr), KELA_ERROR_PARAMETER);
}

TEST_F(GenTLProducerInfo, goodProducerTellsWhatItIs)
{
    const std::string path = add(kProducer);
    interfacesOf(access, path);
    const KELA_GENTL_PRODUCER_INFO info = infoOf(path);

    EXPECT_EQ(info.state, KELA_PRODUCER_READY);
    EXPECT_EQ(info.errorCode, static_cast<std::uint32_t>(KELA_OK));
    EXPECT_STREQ(info.vendor, "Harbour Optics");
    EXPECT_STREQ(info.model, "Network producer");
    EXPECT_STREQ(info.version, "1.4");
    EXPECT_STREQ(info.transportType, "GEV");
    EXPECT_STREQ(info.displayName, "Harbour cameras");
    EXPECT_STREQ(info.trouble, "");
}

TEST_F(GenTLProducerInfo, factsAreKeptWhenTheProducerIsLetGo)
{
    const std::string path = add(kProducer);
    interfacesOf(access, path);
    access.UnloadGenTLLibrary(path.c_str());
    ASSERT_TRUE(isLetGo(path));

    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_READY);
    EXPECT_STREQ(infoOf(path).vendor, "Harbour Optics");
}

TEST_F(GenTLProducerInfo, factsComeFromWhicheverCallGivesThem)
{
    const std::string path = add(std::string(kProducer) + "error TLGetInfo -1003\n");
    interfacesOf(access, path);

    EXPECT_STREQ(infoOf(path).vendor, "Harbour Optics");
}

TEST_F(GenTLProducerInfo, producerThatTellsNothingOfItselfIsReady)
{
    const std::string path = add(std::string(kProducer) + "error TLGetInfo -1003\nerror GCGetInfo -1003\n");
    interfacesOf(access, path);

    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_READY);
    EXPECT_STREQ(infoOf(path).vendor, "");
    EXPECT_EQ(log.count("GetInfo"), 0);
}

TEST_F(GenTLProducerInfo, refusedProducerTellsWhy)
{
    const std::string crashes = folder.add("BadCrashOnLoad.cti", "crashes.cti");
    const std::string foreign = folder.add("BadArchitecture.cti", "foreign.cti");
    interfacesOf(access, crashes);
    interfacesOf(access, foreign);

    EXPECT_EQ(infoOf(crashes).state, KELA_PRODUCER_REFUSED);
    EXPECT_EQ(infoOf(crashes).errorCode, static_cast<std::uint32_t>(KELA_ERROR_PRODUCER_REFUSED));
    EXPECT_NE(std::string(infoOf(crashes).trouble).find("ended in load"), std::string::npos);
    EXPECT_EQ(infoOf(foreign).errorCode, static_cast<std::uint32_t>(KELA_ERROR_NOT_A_PRODUCER));
    EXPECT_STREQ(infoOf(foreign).trouble, "it is a library for another processor");
}

TEST_F(GenTLProducerInfo, failingProducerTellsWhatFailedUntilItWorksAgain)
{
    const std::string path = add(std::string(kProducer) + "error TLUpdateInterfaceList -1010\n");
    interfacesOf(access, path);
    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_FAILING);
    EXPECT_NE(std::string(infoOf(path).trouble).find("TLUpdateInterfaceList gave -1010"), std::string::npos);

    describe(path, kProducer);
    interfacesOf(access, path);
    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_READY);
    EXPECT_STREQ(infoOf(path).trouble, "");
}

TEST_F(GenTLProducerInfo, troubleOfAnInterfaceNamesItAndGoesWithIt)
{
    const std::string path = add(std::string(kProducer) + "error IFUpdateDeviceList -1001\n");
    const Interfaces found = interfacesOf(access, path);
    ASSERT_EQ(found.records.size(), 1U);
    devicesOf(access, found.records[0]);
    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_FAILING);
    EXPECT_EQ(std::string(infoOf(path).trouble).find("interface if-a: IFUpdateDeviceList gave -1001"), 0U);

    describe(path, "interface if-b|Interface B|GEV\n");
    interfacesOf(access, path);
    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_READY);
}

TEST_F(GenTLProducerInfo, interfaceThatAnotherProgramHoldsIsNoTrouble)
{
    const std::string path = add(std::string(kProducer) + "error TLOpenInterface -1005\n");
    const Interfaces found = interfacesOf(access, path);
    ASSERT_EQ(found.records.size(), 1U);
    void *handle = nullptr;
    EXPECT_EQ(access.OpenGenTLInterface(&found.records[0], &handle), KELA_ERROR_IN_USE);

    EXPECT_EQ(infoOf(path).state, KELA_PRODUCER_READY);
    EXPECT_EQ(log.count("TLOpenInterface"), 0);
}

TEST_F(GenTLProducerInfo, longTextsAreCutToTheirRoom)
{
    const std::string path = add("producer " + std::string(500, 'v') + "|m|1|GEV|n\ninterface if-a|A|GEV\n");
    interfacesOf(access, path);

    EXPECT_EQ(std::string(infoOf(path).vendor), std::string(sizeof(KELA_GENTL_PRODUCER_INFO::vendor) - 1, 'v'));
}
