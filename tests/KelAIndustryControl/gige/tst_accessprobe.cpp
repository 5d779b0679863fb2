// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/KelARecords.h>
#include <KelAIndustryControl/gige/AccessProbe.h>

#include <gtest/gtest.h>

using namespace kela::gige;
using Kind = AccessValue::Kind;

namespace
{

bool isAllowed(const AccessValue &value, unsigned int mode)
{
    bool allowed = false;
    EXPECT_EQ(value.allows(mode, allowed), static_cast<unsigned int>(KELA_OK));
    return allowed;
}

} // namespace

TEST(AccessProbe, freeCameraIsAskedOneRegister)
{
    AccessProbe probe;
    EXPECT_EQ(probe.nextRegister(), 0x0A00U);
    probe.onValue(0);

    EXPECT_FALSE(probe.nextRegister());
    EXPECT_TRUE(isAllowed(probe.value(), KELA_ACCESS_EXCLUSIVE));
    EXPECT_TRUE(isAllowed(probe.value(), KELA_ACCESS_CONTROL));
    EXPECT_TRUE(isAllowed(probe.value(), KELA_ACCESS_MONITOR));
}

TEST(AccessProbe, heldCameraIsAskedByWhomAndForItsStream)
{
    AccessProbe probe;
    probe.onValue(2);
    EXPECT_EQ(probe.nextRegister(), 0x0934U);
    probe.onValue(1U << 27);
    EXPECT_EQ(probe.nextRegister(), 0x0A14U);
    probe.onValue(0xC0A83209);
    EXPECT_EQ(probe.nextRegister(), 0x0D00U);
    probe.onValue(0x00011234);

    EXPECT_FALSE(probe.nextRegister());
    EXPECT_EQ(probe.value().holder, 0xC0A83209U);
    EXPECT_EQ(probe.value().streamHostPort, 0x1234U);
    EXPECT_FALSE(isAllowed(probe.value(), KELA_ACCESS_CONTROL));
    EXPECT_TRUE(isAllowed(probe.value(), KELA_ACCESS_MONITOR));
}

TEST(AccessProbe, cameraWithoutTheHolderRegisterIsNotAskedForIt)
{
    AccessProbe probe;
    probe.onValue(2);
    probe.onValue(0);
    EXPECT_EQ(probe.nextRegister(), 0x0D00U);
}

TEST(AccessProbe, knownCapabilityIsNotReadAgain)
{
    AccessProbe probe(1U << 27);
    probe.onValue(2);
    EXPECT_EQ(probe.nextRegister(), 0x0A14U);
}

TEST(AccessProbe, refusedReadMeansSomebodyHoldsItExclusively)
{
    AccessProbe probe;
    probe.onRefused(0x8006);

    EXPECT_FALSE(probe.nextRegister());
    EXPECT_EQ(probe.value().kind, Kind::Denied);
    EXPECT_FALSE(isAllowed(probe.value(), KELA_ACCESS_CONTROL));
    EXPECT_FALSE(isAllowed(probe.value(), KELA_ACCESS_MONITOR));
}

TEST(AccessProbe, exclusiveHolderKeepsMonitorsOut)
{
    AccessProbe probe;
    probe.onValue(1);
    EXPECT_FALSE(isAllowed(probe.value(), KELA_ACCESS_MONITOR));
}

TEST(AccessProbe, silenceIsNotMistakenForInUse)
{
    AccessProbe probe;
    probe.onSilence();

    bool allowed = true;
    EXPECT_EQ(probe.value().allows(KELA_ACCESS_CONTROL, allowed),
              static_cast<unsigned int>(KELA_ERROR_TIMEOUT));
    EXPECT_FALSE(allowed);
    EXPECT_FALSE(probe.value().isHeld());
}

TEST(AccessProbe, silenceAfterThePrivilegeKeepsWhatIsKnown)
{
    AccessProbe probe;
    probe.onValue(2);
    probe.onSilence();

    EXPECT_FALSE(probe.nextRegister());
    EXPECT_TRUE(probe.value().isHeld());
    EXPECT_FALSE(probe.value().isStreamPortRead);
}

TEST(AccessProbe, unreadRegistersMeanUnreachable)
{
    bool allowed = true;
    EXPECT_EQ(AccessValue{}.allows(KELA_ACCESS_CONTROL, allowed),
              static_cast<unsigned int>(KELA_ERROR_UNREACHABLE));
    EXPECT_FALSE(allowed);
}
