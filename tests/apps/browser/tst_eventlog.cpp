// SPDX-License-Identifier: Apache-2.0
#include "EventLog.h"

#include <QAbstractItemModelTester>
#include <QTest>

using browser::EventLog;

class TestEventLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newestLineStandsLast();
    void logNeverGrowsBeyondItsBound();
    void linesStayOneLine();
    void richTextInToolTipsIsShownAsItIs();
};

void TestEventLog::newestLineStandsLast()
{
    EventLog log;
    QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::QtTest);
    log.add(EventLog::Kind::Note, QStringLiteral("first"));
    log.add(EventLog::Kind::Problem, QStringLiteral("second"));

    QCOMPARE(log.rowCount(), 2);
    QCOMPARE(log.index(1, 2).data().toString(), QStringLiteral("second"));
    QCOMPARE(log.index(1, 1).data().toString(), QStringLiteral("Problem"));
}

void TestEventLog::logNeverGrowsBeyondItsBound()
{
    EventLog log;
    for (int i = 0; i < EventLog::kMostLines + 5; ++i)
        log.add(EventLog::Kind::Note, QString::number(i));

    QCOMPARE(log.rowCount(), EventLog::kMostLines);
    QCOMPARE(log.index(0, 2).data().toString(), QStringLiteral("5"));
}

void TestEventLog::linesStayOneLine()
{
    EventLog log;
    log.add(EventLog::Kind::Note, QStringLiteral("two\r\nlines\tof a device"));

    QCOMPARE(log.index(0, 2).data().toString(), QStringLiteral("two lines of a device"));
}

void TestEventLog::richTextInToolTipsIsShownAsItIs()
{
    EventLog log;
    log.add(EventLog::Kind::Note, QStringLiteral("<b>bold</b>"));

    QCOMPARE(log.index(0, 2).data(Qt::ToolTipRole).toString(), QStringLiteral("&lt;b&gt;bold&lt;/b&gt;"));
}

QTEST_GUILESS_MAIN(TestEventLog)
#include "tst_eventlog.moc"
