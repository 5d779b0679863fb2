// SPDX-License-Identifier: Apache-2.0
// Interfaces that hosts hold open: handles are checked at every use.
#include "SampleFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace
{

constexpr char kOneInterface[] = "interface if-a|Interface A|GEV\ndevice cam-1|Maker|Model 1|S1||1|1\n";

struct GenTLHandles : ::testing::Test {
    SampleFolder folder;
    KelAIndustryControl tree;
    KelAIndustryControl host;
    std::string path = folder.add("KelFGSampleGEV.cti", "a.cti");
    KELA_GENTL_IF_INFO interface = {};

    void SetUp() override
    {
        describe(path, kOneInterface);
        const Interfaces found = interfacesOf(tree, path);
        ASSERT_EQ(found.records.size(), 1U);
        interface = found.records[0];
    }

    void *open()
    {
        void *handle = nullptr;
        EXPECT_EQ(host.OpenGenTLInterface(&interface, &handle), KELA_OK);
        return handle;
    }
};

} // namespace

TEST_F(GenTLHandles, devicesOfAnOpenedInterfaceAreListedByAnyObject)
{
    void *const handle = open();
    const Devices found = devicesOf(tree, handle);

    ASSERT_EQ(found.records.size(), 1U);
    EXPECT_EQ(found.records[0].transport, static_cast<std::uint32_t>(KELA_INTERFACE_TYPE_GENTL));
    EXPECT_EQ(devicesOf(host, handle).records.size(), 1U);
}

TEST_F(GenTLHandles, openedInterfaceIsStillListedByItsRecord)
{
    open();

    EXPECT_EQ(devicesOf(tree, interface).records.size(), 1U);
}

TEST_F(GenTLHandles, twoHandlesShareOneOpenedInterface)
{
    void *const one = open();
    void *const other = open();
    EXPECT_NE(one, other);
    EXPECT_EQ(host.CloseGenTLInterface(one), KELA_OK);

    EXPECT_EQ(devicesOf(tree, other).records.size(), 1U);
    EXPECT_EQ(devicesOf(tree, one).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, closedHandleIsRefused)
{
    void *const handle = open();
    EXPECT_EQ(host.CloseGenTLInterface(handle), KELA_OK);

    EXPECT_EQ(devicesOf(host, handle).code, KELA_ERROR_HANDLE);
    EXPECT_EQ(host.CloseGenTLInterface(handle), KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, unknownHandlesAreRefused)
{
    void *const handle = open();
    const auto number = reinterpret_cast<std::uintptr_t>(handle);

    EXPECT_EQ(devicesOf(tree, static_cast<void *>(nullptr)).code, KELA_ERROR_HANDLE);
    for (const std::uintptr_t wrong : {number + 1, ~std::uintptr_t{0}}) {
        void *const invented = reinterpret_cast<void *>(wrong); // NOLINT(performance-no-int-to-ptr)
        EXPECT_EQ(devicesOf(tree, invented).code, KELA_ERROR_HANDLE);
    }
    EXPECT_EQ(devicesOf(tree, static_cast<void *>(this)).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, handleOfAProducerThatTheTreeUnloadedIsRefusedThere)
{
    void *const handle = open();
    EXPECT_EQ(tree.UnloadGenTLLibrary(path.c_str()), KELA_OK);

    EXPECT_EQ(devicesOf(tree, handle).code, KELA_ERROR_HANDLE);
    EXPECT_EQ(devicesOf(tree, interface).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, handleFromBeforeStaysRefusedWhenTheProducerIsUsedAgain)
{
    void *before = open();
    ASSERT_EQ(tree.UnloadGenTLLibrary(path.c_str()), KELA_OK);
    ASSERT_EQ(interfacesOf(tree, path).code, KELA_OK);

    EXPECT_EQ(devicesOf(tree, before).code, KELA_ERROR_HANDLE);
    EXPECT_EQ(devicesOf(host, before).code, KELA_OK);
    EXPECT_EQ(devicesOf(tree, open()).code, KELA_OK);
}

TEST_F(GenTLHandles, unloadingClosesTheHandlesOfItsObject)
{
    ASSERT_EQ(interfacesOf(host, path).code, KELA_OK);
    void *const handle = open();
    EXPECT_EQ(host.UnloadGenTLLibrary(path.c_str()), KELA_OK);

    EXPECT_EQ(devicesOf(tree, handle).code, KELA_ERROR_HANDLE);
    EXPECT_EQ(host.CloseGenTLInterface(handle), KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, handlesEndWithTheirObject)
{
    void *handle = nullptr;
    {
        KelAIndustryControl shortLived;
        ASSERT_EQ(shortLived.OpenGenTLInterface(&interface, &handle), KELA_OK);
    }

    EXPECT_EQ(devicesOf(tree, handle).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, recordDoesNotLoadWhatWasUnloaded)
{
    tree.UnloadGenTLLibrary(path.c_str());
    ASSERT_TRUE(isLetGo(path));
    void *handle = nullptr;

    EXPECT_EQ(host.OpenGenTLInterface(&interface, &handle), KELA_ERROR_HANDLE);
    EXPECT_EQ(devicesOf(host, interface).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, recordThatNamesNoInterfaceIsRefused)
{
    KELA_GENTL_IF_INFO wrong = interface;
    wrong.producerToken += 1000;
    EXPECT_EQ(devicesOf(tree, wrong).code, KELA_ERROR_HANDLE);
    wrong = interface;
    wrong.number += 1000;
    EXPECT_EQ(devicesOf(tree, wrong).code, KELA_ERROR_HANDLE);
    wrong = interface;
    std::fill(std::begin(wrong.identifier), std::end(wrong.identifier), 'x');

    EXPECT_EQ(devicesOf(tree, wrong).code, KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, objectThatOnlyOpenedAnInterfaceGivesTheProducerItsMomentToClose)
{
    describe(path, std::string(kOneInterface) + "hang TLClose 100\n");
    interfacesOf(tree, path);
    auto lastUser = std::make_unique<KelAIndustryControl>();
    void *handle = nullptr;
    ASSERT_EQ(lastUser->OpenGenTLInterface(&interface, &handle), KELA_OK);
    tree.UnloadGenTLLibrary(path.c_str());
    const auto begin = std::chrono::steady_clock::now();
    lastUser.reset();

    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(90));
}

TEST_F(GenTLHandles, missingArgumentsAreRefused)
{
    void *handle = this;

    EXPECT_EQ(host.OpenGenTLInterface(nullptr, &handle), KELA_ERROR_PARAMETER);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(host.OpenGenTLInterface(&interface, nullptr), KELA_ERROR_PARAMETER);
    EXPECT_EQ(host.CloseGenTLInterface(nullptr), KELA_ERROR_HANDLE);
}

TEST_F(GenTLHandles, openedInterfaceThatVanishedIsOpenedAgainWhenItReturns)
{
    void *const handle = open();
    describe(path, "interface other|Other|GEV\n");
    EXPECT_NE(devicesOf(tree, handle).code, KELA_OK);
    describe(path, kOneInterface);
    interfacesOf(tree, path);

    EXPECT_EQ(devicesOf(tree, handle).records.size(), 1U);
}

TEST_F(GenTLHandles, interfaceThatAnotherProgramHoldsIsInUse)
{
    describe(path, std::string(kOneInterface) + "error TLOpenInterface -1005\n");
    interfacesOf(tree, path);
    void *handle = nullptr;

    EXPECT_EQ(host.OpenGenTLInterface(&interface, &handle), KELA_ERROR_IN_USE);
    EXPECT_EQ(handle, nullptr);
}
