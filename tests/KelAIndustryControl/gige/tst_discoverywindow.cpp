// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/DiscoveryWindow.h>
#include <KelAIndustryControl/gige/RecentRequests.h>

#include <gtest/gtest.h>

using namespace kela;
using namespace kela::gige;

namespace
{

struct Window : testing::Test {
    TimePoint start = Clock::now();
    DiscoveryWindow first{start, false};
    DiscoveryWindow later{start, true};

    TimePoint at(int milliseconds) const { return start + Milliseconds{milliseconds}; }
};

} // namespace

TEST_F(Window, closesAfterAQuietTime)
{
    EXPECT_FALSE(first.isOver(at(100), false));
    EXPECT_TRUE(first.isOver(at(120), false));
    EXPECT_FALSE(later.isOver(at(19), false));
    EXPECT_TRUE(later.isOver(at(20), false));
}

TEST_F(Window, somethingNewKeepsItOpenForAnotherQuietTime)
{
    later.noteNew(at(15));
    EXPECT_FALSE(later.isOver(at(30), false));
    EXPECT_TRUE(later.isOver(at(35), false));
}

TEST_F(Window, knownCameraIsWaitedForAndNoLongerThanASecond)
{
    EXPECT_FALSE(later.isOver(at(999), true));
    EXPECT_TRUE(later.isOver(at(1000), true));
}

TEST_F(Window, steadyNewsDoNotKeepItOpen)
{
    for (int now = 0; now <= 1000; now += 10)
        first.noteNew(at(now));
    EXPECT_TRUE(first.isOver(at(1000), false));
}

TEST_F(Window, asksAgainInsideTheWindow)
{
    EXPECT_TRUE(first.takeBroadcast(at(0)));
    EXPECT_FALSE(first.takeBroadcast(at(39)));
    EXPECT_TRUE(first.takeBroadcast(at(40)));
    EXPECT_FALSE(first.takeBroadcast(at(41)));
    EXPECT_FALSE(first.takeReask(at(59)));
    EXPECT_TRUE(first.takeReask(at(60)));
}

TEST_F(Window, nextEventIsNeverBehindWhatIsDue)
{
    later.takeBroadcast(at(0));
    EXPECT_EQ(later.nextEvent(false), at(20));
    EXPECT_EQ(later.nextEvent(true), at(40));
    later.takeBroadcast(at(40));
    EXPECT_EQ(later.nextEvent(true), at(60));
}

TEST(PollTimeout, isNeverNegativeAndNeverEarly)
{
    const TimePoint now = Clock::now();
    EXPECT_EQ(pollTimeout(now - Milliseconds{5}, now), 0);
    EXPECT_EQ(pollTimeout(now + std::chrono::microseconds{100}, now), 1);
    EXPECT_EQ(pollTimeout(now + std::chrono::hours{100}, now), 60000);
}

TEST(RecentRequests, keepThoseThatMayStillBeAnswered)
{
    const TimePoint now = Clock::now();
    RecentRequests requests;
    for (std::uint16_t pass = 1; pass <= 20; ++pass)
        requests.add(pass, pass, now + Milliseconds{50} * pass);
    EXPECT_EQ(requests.passOf(1), 1U) << "a second ago";
    EXPECT_FALSE(requests.passOf(77));

    requests.add(21, 21, now + Milliseconds{60000});
    EXPECT_EQ(requests.passOf(20), 20U) << "the last pass, however long ago";
    EXPECT_FALSE(requests.passOf(19));
}
