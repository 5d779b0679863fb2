// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <CustomCtr/CustomDefine.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QTest>

using namespace browser;

class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingGivenIsRight();
    void everyOptionIsRead();
    void valuesMayStandBehindAnEqualsSign();
    void wrongArgumentsGiveOneLine_data();
    void wrongArgumentsGiveOneLine();
    void helpTellsOfEveryOption();
};

void TestCommandLine::nothingGivenIsRight()
{
    const CommandLine line = parseCommandLine({});

    QVERIFY(line.error.isEmpty());
    QVERIFY(line.screenshot.isEmpty());
    QVERIFY(!line.transports.has_value());
}

void TestCommandLine::everyOptionIsRead()
{
    const CommandLine line =
        parseCommandLine({"--screenshot", "a.png", "--after", "1500", "--transports", "gige,GenTL", "--theme",
                          "light", "--language", "de", "--select", "A1"});

    QVERIFY2(line.error.isEmpty(), qPrintable(line.error));
    QCOMPARE(line.screenshot, QStringLiteral("a.png"));
    QCOMPARE(line.screenshotAfter, std::chrono::milliseconds(1500));
    QCOMPARE(line.transports.value_or(0), uint(KELA_INTERFACE_TYPE_GIGE | KELA_INTERFACE_TYPE_GENTL));
    QCOMPARE(line.theme.value_or(-1), int(Custom::ThemeLight));
    QCOMPARE(line.language, QStringLiteral("de"));
    QCOMPARE(line.select, QStringLiteral("A1"));
}

void TestCommandLine::valuesMayStandBehindAnEqualsSign()
{
    const CommandLine line = parseCommandLine({"--screenshot=x=y.png", "--after=0"});

    QVERIFY(line.error.isEmpty());
    QCOMPARE(line.screenshot, QStringLiteral("x=y.png"));
    QCOMPARE(line.screenshotAfter, std::chrono::milliseconds(0));
}

void TestCommandLine::wrongArgumentsGiveOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--fast"};
    QTest::newRow("stray word") << QStringList{"camera"};
    QTest::newRow("unknown transport") << QStringList{"--transports", "gige,wifi"};
    QTest::newRow("no transport") << QStringList{"--transports", ""};
    QTest::newRow("no number") << QStringList{"--after", "soon"};
    QTest::newRow("negative number") << QStringList{"--after", "-1"};
    QTest::newRow("number too large") << QStringList{"--after", "99999999"};
    QTest::newRow("value missing") << QStringList{"--screenshot"};
    QTest::newRow("unknown theme") << QStringList{"--theme", "pink"};
    QTest::newRow("unknown language") << QStringList{"--language", "xx"};
}

void TestCommandLine::wrongArgumentsGiveOneLine()
{
    QFETCH(QStringList, arguments);

    const QString error = parseCommandLine(arguments).error;

    QVERIFY(!error.isEmpty());
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

void TestCommandLine::helpTellsOfEveryOption()
{
    QVERIFY(parseCommandLine({"--help"}).isHelpWanted);
    for (const char *option :
         {"--screenshot", "--after", "--transports", "--theme", "--language", "--select", "--help"})
        QVERIFY2(usage().contains(QLatin1String(option)), option);
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
