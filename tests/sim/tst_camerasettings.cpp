// SPDX-License-Identifier: Apache-2.0
#include "CameraSettings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace kelsim;

namespace
{

std::optional<CameraSettings> parse(const std::string &line, std::string &error)
{
    CameraSettings defaults;
    defaults.card = "eth0";
    return parseCamera(*splitWords(line), defaults, error);
}

std::string errorOf(const std::string &line)
{
    std::string error;
    EXPECT_FALSE(parse(line, error)) << line;
    return error;
}

std::vector<CameraSettings> readText(const std::string &text, std::string &error)
{
    // A folder of its own: another user's file of that name may stand in the common one.
    std::string folder = testing::TempDir() + "kel-cameras-XXXXXX";
    EXPECT_NE(::mkdtemp(folder.data()), nullptr);
    const std::string path = folder + "/cameras.conf";
    std::ofstream(path) << text;
    std::vector<CameraSettings> cameras = readCameraFile(path, "", error);
    std::filesystem::remove_all(folder);
    return cameras;
}

TEST(CameraSettingsTest, quotesKeepBlanks)
{
    EXPECT_EQ(splitWords("  a \"b c\"  name=\"d e\" \"\""),
              (std::vector<std::string>{"a", "b c", "name=d e", ""}));
    EXPECT_EQ(splitWords("open \"quote"), std::nullopt);
}

TEST(CameraSettingsTest, lineGivesACamera)
{
    std::string error;
    const auto camera = parse("A1 address=192.168.50.11/16 name=\"Left eye\" class=peripheral "
                              "hold=192.168.50.9 mac=02:00:00:00:00:fe",
                              error);

    ASSERT_TRUE(camera) << error;
    EXPECT_EQ(camera->id, "A1");
    EXPECT_EQ(camera->card, "eth0");
    EXPECT_EQ(camera->place.address, 0xC0A8320BU);
    EXPECT_EQ(camera->place.mask, 0xFFFF0000U);
    EXPECT_EQ(camera->name, "Left eye");
    EXPECT_EQ(camera->deviceClass, DeviceClass::Peripheral);
    EXPECT_EQ(camera->heldBy, 0xC0A83209U);
    EXPECT_EQ(macText(camera->mac), "02:00:00:00:00:fe");
}

TEST(CameraSettingsTest, camerasHaveSerialNumberAndHardwareAddressOfTheirOwn)
{
    std::string error;
    const auto left = parse("A1 address=192.168.50.11/24", error);
    const auto right = parse("A2 address=192.168.50.12/24", error);

    EXPECT_EQ(left->serial, "A1");
    EXPECT_NE(left->serial, right->serial);
    EXPECT_NE(left->mac, right->mac);
}

TEST(CameraSettingsTest, fleetCountsAddressesUp)
{
    std::string error;
    CameraSettings defaults;
    defaults.card = "eth0";
    const auto fleet = parseFleet(*splitWords("C 300 address=10.0.0.250/16"), defaults, error);

    ASSERT_EQ(fleet.size(), 300U) << error;
    EXPECT_EQ(addressText(fleet[0].place.address), "10.0.0.250");
    EXPECT_EQ(addressText(fleet[299].place.address), "10.0.2.37");
    EXPECT_EQ(fleet[299].id, "C300");
    EXPECT_EQ(fleet[299].serial, "C0300");
}

TEST(CameraSettingsTest, mistakesAreNamed)
{
    EXPECT_NE(errorOf("A1").find("address"), std::string::npos);
    EXPECT_NE(errorOf("A1 address=300.1.1.1/24").find("address=300.1.1.1/24"), std::string::npos);
    EXPECT_NE(errorOf("A1 address=1.1.1.1/33").find("bad value"), std::string::npos);
    EXPECT_NE(errorOf("A1 address=1.1.1.1/24 colour=red").find("unknown key 'colour'"), std::string::npos);
    EXPECT_NE(errorOf("A1 address=1.1.1.1/24 mac=1:2").find("bad value"), std::string::npos);
    EXPECT_NE(errorOf("A1 address=1.1.1.1/24 plugged").find("key=value"), std::string::npos);
    EXPECT_NE(errorOf("address=1.1.1.1/24").find("ID"), std::string::npos);
}

TEST(CameraSettingsTest, fileGivesCamerasOnTheirCards)
{
    std::string error;
    const auto cameras = readText("# a comment\ncard one\ncamera A address=10.0.0.1/8\n\n"
                                  "card two\nfleet B 2 address=10.1.0.1/16\n",
                                  error);

    ASSERT_EQ(cameras.size(), 3U) << error;
    EXPECT_EQ(cameras[0].card, "one");
    EXPECT_EQ(cameras[2].card, "two");
    EXPECT_EQ(cameras[2].id, "B2");
}

TEST(CameraSettingsTest, mistakeInAFileIsToldWithItsLine)
{
    std::string error;

    EXPECT_TRUE(readText("card one\ncamera A adress=10.0.0.1/8\n", error).empty());
    EXPECT_NE(error.find("cameras.conf:2: unknown key 'adress'"), std::string::npos) << error;
    EXPECT_TRUE(readText("camara A\n", error).empty());
    EXPECT_NE(error.find(":1: 'camara'"), std::string::npos) << error;
    EXPECT_TRUE(readCameraFile("/nonexistent", "", error).empty());
    EXPECT_NE(error.find("cannot be read"), std::string::npos);
}

} // namespace
