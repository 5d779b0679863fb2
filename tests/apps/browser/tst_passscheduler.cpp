// SPDX-License-Identifier: Apache-2.0
#include "PassScheduler.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using browser::PassScheduler;

namespace
{

constexpr int kPauseMs = 50;
constexpr uint kGigE = KELA_INTERFACE_TYPE_GIGE;
constexpr uint kUsb = KELA_INTERFACE_TYPE_USB;

uint transportOf(const QSignalSpy &spy, int index)
{
    return spy.at(index).at(0).toUInt();
}

} // namespace

class TestPassScheduler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void chosenTransportIsAskedForAtOnce();
    void nextPassIsWantedOnlyAfterTheLastHasEnded();
    void nextPassComesThePauseAfterTheEnd();
    void transportsDoNotWaitForEachOther();
    void askingWhileAPassRunsGivesOneMore();
    void askingManyTimesGivesOneMoreOnly();
    void withoutAutomaticNothingIsRepeated();
    void switchingAutomaticOnResumes();
    void failedTransportWaitsUntilAskedFor();
    void resultMayComeBeforeOrAfterTheEnd();
    void transportThatIsNotChosenIsNeverAskedFor();
    void endNobodyAskedForStartsNoSecondPass();
    void newTreeStartsAfresh();
    void whileHeldNothingIsAskedFor();
    void changeIsFollowedAtOnceButNotAsTheUsersWish();
    void changeDuringAPassGivesOneMoreQuietly();
    void changeWakesAFailedTransport();
    void changeIsLeftAloneWithoutAutomatic();

private:
    std::unique_ptr<PassScheduler> m_scheduler;
    std::unique_ptr<QSignalSpy> m_wanted;
};

void TestPassScheduler::init()
{
    m_scheduler = std::make_unique<PassScheduler>(std::chrono::milliseconds(kPauseMs));
    m_wanted = std::make_unique<QSignalSpy>(m_scheduler.get(), &PassScheduler::passWanted);
}

void TestPassScheduler::cleanup()
{
    m_wanted.reset();
    m_scheduler.reset();
}

void TestPassScheduler::chosenTransportIsAskedForAtOnce()
{
    m_scheduler->setTransports(kGigE);

    QCOMPARE(m_wanted->size(), 1);
    QCOMPARE(transportOf(*m_wanted, 0), kGigE);
    QCOMPARE(m_scheduler->running(), kGigE);
}

void TestPassScheduler::nextPassIsWantedOnlyAfterTheLastHasEnded()
{
    m_scheduler->setTransports(kGigE);

    QVERIFY(!m_wanted->wait(kPauseMs * 6));
    QCOMPARE(m_wanted->size(), 1);

    m_scheduler->noteFinished(kGigE);
    QVERIFY(m_wanted->wait());
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::nextPassComesThePauseAfterTheEnd()
{
    m_scheduler->setTransports(kGigE);
    QElapsedTimer since;
    since.start();
    m_scheduler->noteFinished(kGigE);

    QVERIFY(m_wanted->wait());

    // A coarse timer may fire a twentieth early.
    QVERIFY2(since.elapsed() >= kPauseMs - kPauseMs / 10, qPrintable(QString::number(since.elapsed())));
}

void TestPassScheduler::transportsDoNotWaitForEachOther()
{
    m_scheduler->setTransports(kGigE | kUsb);
    m_wanted->clear();

    m_scheduler->noteFinished(kUsb);

    QVERIFY(m_wanted->wait());
    QCOMPARE(transportOf(*m_wanted, 0), kUsb);
    QCOMPARE(m_scheduler->running(), kGigE | kUsb);
}

void TestPassScheduler::askingWhileAPassRunsGivesOneMore()
{
    m_scheduler->setTransports(kGigE);

    m_scheduler->requestNow(kGigE);
    QCOMPARE(m_wanted->size(), 1);

    m_scheduler->noteFinished(kGigE);
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::askingManyTimesGivesOneMoreOnly()
{
    m_scheduler->setAutomatic(false);
    m_scheduler->setTransports(kGigE);
    for (int i = 0; i < 20; ++i)
        m_scheduler->requestNow(kGigE);

    m_scheduler->noteFinished(kGigE);
    m_scheduler->noteFinished(kGigE);

    QVERIFY(!m_wanted->wait(kPauseMs * 4));
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::withoutAutomaticNothingIsRepeated()
{
    m_scheduler->setTransports(kGigE);
    m_scheduler->setAutomatic(false);

    m_scheduler->noteFinished(kGigE);

    QVERIFY(!m_wanted->wait(kPauseMs * 4));
    QCOMPARE(m_wanted->size(), 1);
}

void TestPassScheduler::switchingAutomaticOnResumes()
{
    m_scheduler->setAutomatic(false);
    m_scheduler->setTransports(kGigE);
    m_scheduler->noteFinished(kGigE);

    m_scheduler->setAutomatic(true);

    QVERIFY(m_wanted->wait());
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::failedTransportWaitsUntilAskedFor()
{
    m_scheduler->setTransports(KELA_INTERFACE_TYPE_GENTL);
    m_scheduler->noteResult(KELA_INTERFACE_TYPE_GENTL, 1);
    m_scheduler->noteFinished(KELA_INTERFACE_TYPE_GENTL);

    QVERIFY(!m_wanted->wait(kPauseMs * 4));
    QCOMPARE(m_scheduler->paused(), static_cast<uint>(KELA_INTERFACE_TYPE_GENTL));

    m_scheduler->requestNow(KELA_INTERFACE_TYPE_GENTL);
    QCOMPARE(m_wanted->size(), 2);
    QCOMPARE(m_scheduler->paused(), 0U);
}

void TestPassScheduler::resultMayComeBeforeOrAfterTheEnd()
{
    m_scheduler->setTransports(kGigE | kUsb);
    m_scheduler->noteFinished(kGigE);
    m_scheduler->noteResult(kGigE, 7);
    m_scheduler->noteResult(kUsb, 7);
    m_scheduler->noteFinished(kUsb);

    QVERIFY(!m_wanted->wait(kPauseMs * 4));

    m_scheduler->noteResult(kGigE, 0);
    m_scheduler->noteResult(kUsb, 0);
    QTRY_COMPARE(m_wanted->size(), 4);
}

void TestPassScheduler::transportThatIsNotChosenIsNeverAskedFor()
{
    m_scheduler->setTransports(kGigE);
    m_wanted->clear();

    m_scheduler->requestNow(kUsb);
    m_scheduler->noteFinished(kUsb);
    m_scheduler->setTransports(0);
    m_scheduler->noteFinished(kGigE);

    QVERIFY(!m_wanted->wait(kPauseMs * 4));
}

void TestPassScheduler::endNobodyAskedForStartsNoSecondPass()
{
    m_scheduler->setTransports(kGigE);

    m_scheduler->noteFinished(kGigE);
    m_scheduler->noteFinished(kGigE);

    QVERIFY(m_wanted->wait());
    QVERIFY(!m_wanted->wait(kPauseMs * 4));
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::newTreeStartsAfresh()
{
    m_scheduler->setTransports(kGigE);

    m_scheduler->reset();

    QCOMPARE(m_scheduler->running(), 0U);
    m_scheduler->requestNow(kGigE);
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::whileHeldNothingIsAskedFor()
{
    m_scheduler->setTransports(kGigE);
    m_scheduler->setHeld(true);
    m_scheduler->noteFinished(kGigE);
    m_scheduler->requestNow(kGigE);
    QVERIFY(!m_wanted->wait(kPauseMs * 4));
    QCOMPARE(m_wanted->size(), 1);

    m_scheduler->setHeld(false);
    QCOMPARE(m_wanted->size(), 2);
}

void TestPassScheduler::changeIsFollowedAtOnceButNotAsTheUsersWish()
{
    m_scheduler->setTransports(kGigE | kUsb);
    m_scheduler->noteFinished(kUsb);
    m_wanted->clear();

    m_scheduler->requestForChange(kUsb);

    QCOMPARE(m_wanted->size(), 1);
    QCOMPARE(transportOf(*m_wanted, 0), kUsb);
    QCOMPARE(m_wanted->at(0).at(1).toBool(), false);
}

void TestPassScheduler::changeDuringAPassGivesOneMoreQuietly()
{
    m_scheduler->setTransports(kGigE);
    m_wanted->clear();

    m_scheduler->requestForChange(kGigE);
    QCOMPARE(m_wanted->size(), 0);
    m_scheduler->noteFinished(kGigE);

    QCOMPARE(m_wanted->size(), 1);
    QCOMPARE(m_wanted->at(0).at(1).toBool(), false);
}

void TestPassScheduler::changeWakesAFailedTransport()
{
    m_scheduler->setTransports(kGigE);
    m_scheduler->noteResult(kGigE, 1);
    m_scheduler->noteFinished(kGigE);
    m_wanted->clear();

    m_scheduler->requestForChange(kGigE);

    QCOMPARE(m_wanted->size(), 1);
}

void TestPassScheduler::changeIsLeftAloneWithoutAutomatic()
{
    m_scheduler->setTransports(kGigE);
    m_scheduler->setAutomatic(false);
    m_scheduler->noteFinished(kGigE);
    m_wanted->clear();

    m_scheduler->requestForChange(kGigE);

    QCOMPARE(m_wanted->size(), 0);
}

QTEST_GUILESS_MAIN(TestPassScheduler)
#include "tst_passscheduler.moc"
