// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpTransaction.h>

#include <gtest/gtest.h>

using namespace kela;
using namespace kela::gige;
using State = GvcpTransaction::State;

namespace
{

struct Exchange : testing::Test {
    RequestIds ids;
    TimePoint start = Clock::now();
    GvcpTransaction transaction{readRegisterCommand(0, 0x0A00), ids, {Milliseconds{250}, 2}, start};
    std::vector<Datagram> sent;

    TimePoint at(int milliseconds) const { return start + Milliseconds{milliseconds}; }

    bool sendDue(int milliseconds)
    {
        const Datagram *due = transaction.takeDue(at(milliseconds));
        if (due)
            sent.push_back(*due);
        return due != nullptr;
    }

    bool offer(const Datagram &bytes, int milliseconds)
    {
        const auto acknowledge = parseAcknowledge({bytes.data(), bytes.size()});
        return acknowledge && transaction.offer(*acknowledge, at(milliseconds));
    }

    static Datagram value(std::uint8_t id) { return {0, 0, 0, 0x81, 0, 4, 0, id, 0, 0, 0, 2}; }
    static Datagram status(std::uint8_t low, std::uint8_t id) { return {0x80, low, 0, 0x81, 0, 0, 0, id}; }
};

} // namespace

TEST_F(Exchange, answerEndsIt)
{
    EXPECT_TRUE(sendDue(0));
    EXPECT_TRUE(offer(value(1), 3));

    EXPECT_EQ(transaction.state(), State::Answered);
    EXPECT_EQ(parseReadRegister(transaction.payload()), 2U);
    EXPECT_FALSE(sendDue(1000));
}

TEST_F(Exchange, retryKeepsItsRequestId)
{
    EXPECT_TRUE(sendDue(0));
    EXPECT_FALSE(sendDue(249));
    EXPECT_TRUE(sendDue(250));

    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0], sent[1]);
}

TEST_F(Exchange, silenceIsGivenUpAfterTheLastAttempt)
{
    sendDue(0);
    sendDue(250);
    EXPECT_EQ(transaction.state(), State::Waiting);
    EXPECT_FALSE(sendDue(500));
    EXPECT_EQ(transaction.state(), State::NoAnswer);
}

TEST_F(Exchange, wrongIdAndWrongCodeArePassedOverAndTheWaitGoesOn)
{
    sendDue(0);
    EXPECT_FALSE(offer(value(9), 10));
    EXPECT_FALSE(offer({0, 0, 0, 0x83, 0, 4, 0, 1, 0, 0, 0, 1}, 20));

    EXPECT_EQ(transaction.state(), State::Waiting);
    EXPECT_EQ(transaction.nextEvent(), at(250));
    EXPECT_TRUE(offer(value(1), 30));
    EXPECT_EQ(transaction.state(), State::Answered);
}

TEST_F(Exchange, refusalCarriesItsStatus)
{
    sendDue(0);
    EXPECT_TRUE(offer(status(0x06, 1), 3));

    EXPECT_EQ(transaction.state(), State::Refused);
    EXPECT_EQ(transaction.status(), kStatusAccessDenied);
}

TEST_F(Exchange, answerWithTooFewBytesIsGarbled)
{
    sendDue(0);
    EXPECT_TRUE(offer({0, 0, 0, 0x81, 0, 2, 0, 1, 0, 0}, 3));

    EXPECT_EQ(transaction.state(), State::GarbledAnswer);
}

TEST_F(Exchange, busyDeviceIsAskedAgainWithANewId)
{
    sendDue(0);
    EXPECT_TRUE(offer(status(0x07, 1), 3));

    EXPECT_EQ(transaction.state(), State::Waiting);
    EXPECT_FALSE(sendDue(10));
    EXPECT_TRUE(sendDue(40));
    EXPECT_EQ(requestIdOf(sent[1]), 2);
    EXPECT_TRUE(offer(value(2), 45));
    EXPECT_EQ(transaction.state(), State::Answered);
}

TEST_F(Exchange, deviceThatStaysBusyIsGivenUp)
{
    int now = 0;
    for (std::uint8_t id = 1; id < 20 && transaction.state() == State::Waiting; ++id, now += 50) {
        sendDue(now);
        offer(status(0x07, id), now + 1);
    }

    EXPECT_EQ(transaction.state(), State::Refused);
    EXPECT_LT(now, 500);
}

TEST_F(Exchange, pendingAcknowledgeMovesTheDeadlineAndIsNoAttempt)
{
    sendDue(0);
    EXPECT_TRUE(offer({0, 0, 0, 0x89, 0, 4, 0, 1, 0, 0, 3, 0xE8}, 10));

    EXPECT_FALSE(sendDue(900));
    EXPECT_EQ(transaction.state(), State::Waiting);
    EXPECT_TRUE(offer(value(1), 1000));
    EXPECT_EQ(transaction.state(), State::Answered);
    EXPECT_EQ(sent.size(), 1U);
}

TEST_F(Exchange, deviceThatAnnouncesForEverIsGivenUp)
{
    int now = 0;
    for (; now < 60000 && transaction.state() == State::Waiting; now += 500) {
        sendDue(now);
        offer({0, 0, 0, 0x89, 0, 4, 0, 1, 0, 0, 0xFF, 0xFF}, now + 1);
    }

    EXPECT_EQ(transaction.state(), State::NoAnswer);
    EXPECT_LE(now, 10500);
}

TEST(RequestIds, zeroIsNeverGiven)
{
    RequestIds ids;
    EXPECT_EQ(ids.next(), 1);
    for (int i = 1; i < 0xFFFF; ++i)
        ASSERT_NE(ids.next(), 0);
    EXPECT_EQ(ids.next(), 1);
}
