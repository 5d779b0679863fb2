// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../LogRecorder.h"
#include "SmallCamera.h"
#include "WireNamespace.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace kelatest
{

constexpr std::uint32_t kHost = 0xC0A83201; // 192.168.50.1

inline void setReversePathFilter(int value)
{
    hostShell("for c in all default; do echo " + std::to_string(value) +
              " > /proc/sys/net/ipv4/conf/$c/rp_filter; done");
}

/// One card at 192.168.50.1, and cameras behind it.
struct GigeBed : testing::Test {
    LogRecorder log;
    std::unique_ptr<WireNamespace> wire;
    std::unique_ptr<SmallCameras> cameras;
    KelAIndustryControl access;
    KELA_DEVICE_INFO_LIST list = {};

    void SetUp() override
    {
        setReversePathFilter(0);
        wire = std::make_unique<WireNamespace>();
        wire->addCard("h0", "192.168.50.1/24", "c0");
        cameras = std::make_unique<SmallCameras>(*wire);
    }

    void TearDown() override
    {
        cameras.reset();
        wire.reset();
        for (const char *card : {"h0", "h1"}) {
            if (::system((std::string("ip link del ") + card + " 2>/dev/null").c_str()) != 0) // NOLINT
                continue;
        }
    }

    unsigned int enumerate() { return access.EnumDevices(KELA_INTERFACE_TYPE_GIGE, &list, false); }

    std::set<std::string> serials() const
    {
        std::set<std::string> result;
        for (std::uint32_t i = 0; i < list.count; ++i)
            result.emplace(fixedText(list.devices[i]->serialNumber));
        return result;
    }

    std::vector<std::string> orderedSerials() const
    {
        std::vector<std::string> result;
        for (std::uint32_t i = 0; i < list.count; ++i)
            result.emplace_back(fixedText(list.devices[i]->serialNumber));
        return result;
    }

    /// Whether an object of its own can take control.
    unsigned int connect(const std::string &serial)
    {
        KelAIndustryControl opened;
        const unsigned int chosen = opened.Init(find(serial), false);
        return chosen != 0 ? chosen : opened.Connect(KELA_ACCESS_CONTROL);
    }

    KELA_DEVICE_INFO_EX *find(const std::string &serial)
    {
        for (std::uint32_t i = 0; i < list.count; ++i) {
            if (fixedText(list.devices[i]->serialNumber) == serial)
                return list.devices[i];
        }
        ADD_FAILURE() << serial << " is not listed";
        static KELA_DEVICE_INFO_EX none;
        none = {};
        return &none;
    }

    bool isAccessible(const std::string &serial, unsigned int mode = KELA_ACCESS_CONTROL)
    {
        bool accessible = false;
        access.IsDeviceAccessible(find(serial), mode, &accessible);
        return accessible;
    }

    static kela::Milliseconds timeOf(const std::function<void()> &action)
    {
        const kela::TimePoint begin = kela::Clock::now();
        action();
        return std::chrono::duration_cast<kela::Milliseconds>(kela::Clock::now() - begin);
    }
};

} // namespace kelatest
