// SPDX-License-Identifier: Apache-2.0
// Good producers, loaded for real.
#include "SampleFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace
{

constexpr char kTwoInterfaces[] = "interface if-a|Interface A|GEV\n"
                                  "device cam-1|Maker|Model 1|S1|left|1.5|1\n"
                                  "device cam-2|Maker|Model 2|S2||1.6|4\n"
                                  "interface if-b|Interface B|CL\n"
                                  "device cam-3|Other maker|Model 3||\n";

std::string text(const char *begin)
{
    return begin;
}

struct GenTLProducers : ::testing::Test {
    SampleFolder folder;
    KelAIndustryControl access;

    std::string producer(const std::string &name, const std::string &description) const
    {
        std::string path = folder.add("KelFGSampleGEV.cti", name);
        describe(path, description);
        return path;
    }
};

std::size_t entriesOf(const char *folder)
{
    std::size_t count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        count += entry.path().empty() ? 0 : 1;
    return count;
}

} // namespace

TEST_F(GenTLProducers, interfacesAreListedWithTheirRecords)
{
    const Interfaces found = interfacesOf(access, producer("a.cti", kTwoInterfaces));

    ASSERT_EQ(found.code, KELA_OK);
    ASSERT_EQ(found.records.size(), 2U);
    EXPECT_EQ(fixedText(found.records[0].identifier), "if-a");
    EXPECT_EQ(fixedText(found.records[0].displayName), "Interface A");
    EXPECT_EQ(found.records[0].state, static_cast<std::uint32_t>(KELA_DEV_STATE_GENTL_INTERFACE_FREE));
    EXPECT_EQ(found.records[0].hasBracketText, 0);
    EXPECT_NE(found.records[0].producerToken, 0U);
    EXPECT_EQ(found.records[0].producerToken, found.records[1].producerToken);
    EXPECT_NE(found.records[0].number, found.records[1].number);
}

TEST_F(GenTLProducers, devicesOfAnInterfaceAreListedWithTheirRecords)
{
    const Interfaces interfaces = interfacesOf(access, producer("a.cti", kTwoInterfaces));
    ASSERT_EQ(interfaces.records.size(), 2U);
    const Devices found = devicesOf(access, interfaces.records[0]);

    ASSERT_EQ(found.code, KELA_OK);
    ASSERT_EQ(found.records.size(), 2U);
    const KELA_DEVICE_INFO_EX &device = found.records[0];
    EXPECT_EQ(device.transport, static_cast<std::uint32_t>(KELA_INTERFACE_TYPE_GENTL_INTERFACE));
    EXPECT_EQ(text(device.modelName), "Model 1");
    EXPECT_EQ(text(device.secondName), "1.5");
    EXPECT_EQ(text(device.serialNumber), "S1");
    EXPECT_EQ(text(device.special.genTL.vendorName), "Maker");
    EXPECT_EQ(text(device.special.genTL.userDefinedName), "left");
    EXPECT_EQ(text(device.special.genTL.interfaceId), "if-a");
    EXPECT_EQ(text(device.special.genTL.deviceId), "cam-1");
    EXPECT_EQ(device.special.genTL.interfaceNumber, interfaces.records[0].number);
    EXPECT_EQ(device.special.genTL.accessStatus, 1U);
    EXPECT_EQ(found.records[1].special.genTL.accessStatus, 4U);
}

TEST_F(GenTLProducers, deviceWithoutSerialIsListedWithAnEmptyOne)
{
    const Interfaces interfaces = interfacesOf(access, producer("a.cti", kTwoInterfaces));
    ASSERT_EQ(interfaces.records.size(), 2U);
    const Devices found = devicesOf(access, interfaces.records[1]);

    ASSERT_EQ(found.records.size(), 1U);
    EXPECT_EQ(text(found.records[0].serialNumber), "");
    EXPECT_EQ(text(found.records[0].special.genTL.deviceId), "cam-3");
}

TEST_F(GenTLProducers, devicesWithoutSerialAreToldApartByTheirInterfaces)
{
    const char *const description = "interface if-a|A|CL\ndevice dev0|Maker|Model||\n"
                                    "interface if-b|B|CL\ndevice dev0|Maker|Model||\n";
    const Interfaces interfaces = interfacesOf(access, producer("a.cti", description));
    ASSERT_EQ(interfaces.records.size(), 2U);
    std::vector<std::string> identifiers;
    for (const int index : {0, 1, 0, 1}) {
        const Devices found = devicesOf(access, interfaces.records[static_cast<std::size_t>(index)]);
        ASSERT_EQ(found.records.size(), 1U);
        identifiers.push_back(text(found.records[0].special.genTL.deviceId));
    }

    EXPECT_EQ(identifiers[0], "dev0");
    EXPECT_NE(identifiers[1], "dev0");
    EXPECT_EQ(identifiers[2], identifiers[0]);
    EXPECT_EQ(identifiers[3], identifiers[1]);
}

TEST_F(GenTLProducers, producerWithoutTheNewerInformationIsListed)
{
    const auto path = producer("a.cti", std::string(kTwoInterfaces) + "fault no-new-info\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 2U);
    const Devices found = devicesOf(access, interfaces.records[0]);

    ASSERT_EQ(found.records.size(), 2U);
    EXPECT_EQ(text(found.records[0].modelName), "Model 1");
    EXPECT_EQ(text(found.records[0].serialNumber), "");
}

TEST_F(GenTLProducers, accessibilityFollowsTheToldStatus)
{
    const Interfaces interfaces = interfacesOf(access, producer("a.cti", kTwoInterfaces));
    ASSERT_EQ(interfaces.records.size(), 2U);
    Devices found = devicesOf(access, interfaces.records[0]);
    ASSERT_EQ(found.records.size(), 2U);
    bool isAccessible = false;

    EXPECT_EQ(access.IsDeviceAccessible(&found.records[0], KELA_ACCESS_CONTROL, &isAccessible), KELA_OK);
    EXPECT_TRUE(isAccessible);
    EXPECT_EQ(access.IsDeviceAccessible(&found.records[1], KELA_ACCESS_CONTROL, &isAccessible), KELA_OK);
    EXPECT_FALSE(isAccessible);
}

TEST_F(GenTLProducers, changesShowAtTheNextEnumeration)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    const Interfaces before = interfacesOf(access, path);
    ASSERT_EQ(before.records.size(), 2U);

    describe(path, "interface if-b|Interface B|CL\ndevice cam-9|Maker|Model 9|S9||1|1\n");
    const Interfaces between = interfacesOf(access, path);
    ASSERT_EQ(between.records.size(), 1U);
    EXPECT_EQ(between.records[0].number, before.records[1].number);
    const Devices devices = devicesOf(access, between.records[0]);
    ASSERT_EQ(devices.records.size(), 1U);
    EXPECT_EQ(text(devices.records[0].serialNumber), "S9");

    describe(path, kTwoInterfaces);
    const Interfaces after = interfacesOf(access, path);
    ASSERT_EQ(after.records.size(), 2U);
    EXPECT_EQ(std::memcmp(&after.records[0], &before.records[0], sizeof after.records[0]), 0);
    EXPECT_EQ(std::memcmp(&after.records[1], &before.records[1], sizeof after.records[1]), 0);
}

TEST_F(GenTLProducers, vanishedInterfaceIsAnErrorAndItsReturnIsSeen)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 2U);
    describe(path, "interface if-b|Interface B|CL\n");
    EXPECT_EQ(devicesOf(access, interfaces.records[0]).code, KELA_ERROR_PRODUCER_FAILED);

    describe(path, kTwoInterfaces);

    EXPECT_EQ(devicesOf(access, interfaces.records[0]).records.size(), 2U);
}

TEST_F(GenTLProducers, orderIsTheSameWhateverTheProducersOrder)
{
    const auto path = producer("a.cti", "interface z|Z|GEV\ninterface a|A|GEV\n");
    const Interfaces found = interfacesOf(access, path);

    ASSERT_EQ(found.records.size(), 2U);
    EXPECT_EQ(fixedText(found.records[0].identifier), "a");
}

TEST_F(GenTLProducers, interfaceListedTwiceIsReportedOnce)
{
    const auto path = producer("a.cti", "interface a|A|GEV\ninterface a|A|GEV\n");

    EXPECT_EQ(interfacesOf(access, path).records.size(), 1U);
}

TEST_F(GenTLProducers, interfaceWithoutDisplayNameShowsItsIdentifier)
{
    const Interfaces found = interfacesOf(access, producer("a.cti", "interface a||GEV\n"));

    ASSERT_EQ(found.records.size(), 1U);
    EXPECT_EQ(fixedText(found.records[0].displayName), "a");
}

TEST_F(GenTLProducers, longIdentifiersLeadADeviceToItsInterface)
{
    const std::string identifier(150, 'i');
    const std::string device(3000, 'd');
    const auto path =
        producer("a.cti", "interface " + identifier + "1|A|GEV\ndevice " + device + "|V|M|S1\n" + "interface " +
                              identifier + "2|B|GEV\ndevice " + device + "x|V|M|S2\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 2U);
    const Devices devices = devicesOf(access, interfaces.records[1]);
    ASSERT_EQ(devices.records.size(), 1U);

    EXPECT_EQ(fixedText(interfaces.records[1].identifier).size(), 63U);
    EXPECT_NE(fixedText(interfaces.records[0].identifier), fixedText(interfaces.records[1].identifier));
    EXPECT_EQ(fixedText(devices.records[0].special.genTL.interfaceId),
              fixedText(interfaces.records[1].identifier));
    EXPECT_EQ(devices.records[0].special.genTL.interfaceNumber, interfaces.records[1].number);
    EXPECT_EQ(fixedText(devices.records[0].special.genTL.deviceId).size(), 63U);
}

TEST_F(GenTLProducers, identifierThatIsNoTextIsAnIdentifier)
{
    const auto path = producer("a.cti", "interface \\xFF\\xFE|N|GEV\ndevice \\x80\\x81|V|M|S1\n");
    const Interfaces interfaces = interfacesOf(access, path);
    ASSERT_EQ(interfaces.records.size(), 1U);

    EXPECT_EQ(fixedText(interfaces.records[0].identifier), "\xFF\xFE");
    EXPECT_EQ(devicesOf(access, interfaces.records[0]).records.size(), 1U);
}

TEST_F(GenTLProducers, twoProducersWithOneIdentifierHaveTwoNumbers)
{
    const Interfaces one = interfacesOf(access, producer("a.cti", kTwoInterfaces));
    const Interfaces other = interfacesOf(access, producer("b.cti", kTwoInterfaces));
    ASSERT_EQ(one.records.size(), 2U);
    ASSERT_EQ(other.records.size(), 2U);

    EXPECT_NE(one.records[0].number, other.records[0].number);
    EXPECT_NE(one.records[0].producerToken, other.records[0].producerToken);
}

TEST_F(GenTLProducers, sameFileUnderThreePathsIsOneLibrary)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    std::filesystem::create_symlink(path, folder.path("link.cti"));
    std::filesystem::create_hard_link(path, folder.path("hard.cti"));
    const Interfaces direct = interfacesOf(access, path);
    const Interfaces linked = interfacesOf(access, folder.path("link.cti"));
    const Interfaces hard = interfacesOf(access, folder.path("hard.cti"));

    ASSERT_EQ(direct.records.size(), 2U);
    ASSERT_EQ(linked.records.size(), 2U);
    ASSERT_EQ(hard.records.size(), 2U);
    EXPECT_EQ(direct.records[0].number, linked.records[0].number);
    EXPECT_EQ(direct.records[0].number, hard.records[0].number);

    // One path given up, the others still lead to it.
    EXPECT_EQ(access.UnloadGenTLLibrary(path.c_str()), KELA_OK);
    EXPECT_EQ(devicesOf(access, linked.records[0]).records.size(), 2U);
}

TEST_F(GenTLProducers, listsGivenBeforeOutliveOtherProducersLists)
{
    KELA_GENTL_IF_INFO_LIST list = {};
    const auto path = producer("a.cti", kTwoInterfaces);
    ASSERT_EQ(access.EnumInterfacesByGenTL(&list, path.c_str()), KELA_OK);
    interfacesOf(access, producer("b.cti", "interface x|X|GEV\n"));

    ASSERT_EQ(list.count, 2U);
    EXPECT_EQ(fixedText(list.interfaces[0]->identifier), "if-a");
}

TEST_F(GenTLProducers, unloadingThroughOneObjectLeavesItToTheOther)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    KelAIndustryControl other;
    const Interfaces found = interfacesOf(access, path);
    ASSERT_EQ(interfacesOf(other, path).records.size(), 2U);
    EXPECT_EQ(access.UnloadGenTLLibrary(path.c_str()), KELA_OK);

    EXPECT_EQ(devicesOf(other, found.records[0]).records.size(), 2U);
    EXPECT_TRUE(isMapped(path));
    EXPECT_EQ(other.UnloadGenTLLibrary(path.c_str()), KELA_OK);
    EXPECT_TRUE(isLetGo(path));
}

TEST_F(GenTLProducers, fileIsLetGoWithItsLastObject)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    {
        KelAIndustryControl other;
        ASSERT_EQ(interfacesOf(other, path).records.size(), 2U);
    }

    EXPECT_TRUE(isLetGo(path));
}

TEST_F(GenTLProducers, unloadingWhatIsNotUsedIsAnError)
{
    EXPECT_EQ(access.UnloadGenTLLibrary("/nonexistent.cti"), KELA_ERROR_CALL_ORDER);
    EXPECT_EQ(access.UnloadGenTLLibrary(nullptr), KELA_ERROR_PARAMETER);
}

TEST_F(GenTLProducers, unloadedProducerCanBeUsedAgain)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    const Interfaces before = interfacesOf(access, path);
    access.UnloadGenTLLibrary(path.c_str());
    const Interfaces after = interfacesOf(access, path);

    ASSERT_EQ(after.records.size(), 2U);
    EXPECT_EQ(after.records[0].number, before.records[0].number);
    EXPECT_EQ(devicesOf(access, before.records[0]).records.size(), 2U);
}

TEST_F(GenTLProducers, callsComeOneAfterAnotherFromOneThread)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    std::vector<std::thread> callers;
    callers.reserve(4);
    for (int i = 0; i < 4; ++i) {
        callers.emplace_back([&path] {
            KelAIndustryControl own;
            for (int pass = 0; pass < 20; ++pass) {
                for (const KELA_GENTL_IF_INFO &interface : interfacesOf(own, path).records)
                    devicesOf(own, interface);
            }
        });
    }
    for (std::thread &caller : callers)
        caller.join();

    EXPECT_FALSE(std::filesystem::exists(path + ".noted"));
}

TEST_F(GenTLProducers, localeOfTheProcessOutlivesAProducerThatChangesIt)
{
    const auto path = producer("a.cti", std::string(kTwoInterfaces) + "fault locale\n");
    const std::string before = std::setlocale(LC_ALL, nullptr); // NOLINT(concurrency-mt-unsafe)
    ASSERT_EQ(interfacesOf(access, path).code, KELA_OK);

    EXPECT_EQ(before, std::setlocale(LC_ALL, nullptr)); // NOLINT(concurrency-mt-unsafe)
}

TEST_F(GenTLProducers, localeOfTheProcessOutlivesAListingThatChangesIt)
{
    const auto path = producer("a.cti", std::string(kTwoInterfaces) + "fault late-locale\n");
    const std::string before = std::setlocale(LC_ALL, nullptr); // NOLINT(concurrency-mt-unsafe)

    ASSERT_EQ(interfacesOf(access, path).code, KELA_OK);
    EXPECT_EQ(before, std::setlocale(LC_ALL, nullptr)); // NOLINT(concurrency-mt-unsafe)
    ASSERT_EQ(interfacesOf(access, path).code, KELA_OK);
    EXPECT_EQ(before, std::setlocale(LC_ALL, nullptr)); // NOLINT(concurrency-mt-unsafe)
}

TEST_F(GenTLProducers, producerThatAnotherComponentInitialisedIsNotClosedForIt)
{
    const auto path = producer("a.cti", std::string(kTwoInterfaces) + "error GCInitLib -1004\n");

    // Without its initialisation the producer refuses the next call, and is not asked to close.
    EXPECT_EQ(interfacesOf(access, path).code, KELA_ERROR_PRODUCER_FAILED);
}

TEST_F(GenTLProducers, cyclesOfUseLeaveNothingBehind)
{
    const auto path = producer("a.cti", kTwoInterfaces);
    ASSERT_EQ(interfacesOf(access, path).code, KELA_OK);
    access.UnloadGenTLLibrary(path.c_str());
    ASSERT_TRUE(isLetGo(path));
    const std::size_t files = entriesOf("/proc/self/fd");
    const std::size_t threads = entriesOf("/proc/self/task");

    for (int cycle = 0; cycle < 1000; ++cycle) {
        const Interfaces found = interfacesOf(access, path);
        ASSERT_EQ(found.records.size(), 2U);
        ASSERT_EQ(devicesOf(access, found.records[0]).records.size(), 2U);
        ASSERT_EQ(access.UnloadGenTLLibrary(path.c_str()), KELA_OK);
    }

    ASSERT_TRUE(isLetGo(path));
    for (int i = 0; i < 500 && entriesOf("/proc/self/task") > threads; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(entriesOf("/proc/self/fd"), files);
    EXPECT_LE(entriesOf("/proc/self/task"), threads);
}
