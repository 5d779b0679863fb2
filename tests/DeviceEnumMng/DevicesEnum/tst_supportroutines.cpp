// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/DebugOutput.h>
#include <DeviceEnumMng/DevicesEnum/EnumeratorPool.h>
#include <DeviceEnumMng/DevicesEnum/FixedStrings.h>
#include <DeviceEnumMng/DevicesEnum/GenTLInterfaceIds.h>
#include <DeviceEnumMng/DevicesEnum/IdLists.h>
#include <DeviceEnumMng/DevicesEnum/ShellCommand.h>

#include "LogCapture.h"

#include <QThreadPool>
#include <QtTest>

#include <cstring>

class tst_SupportRoutines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void logLineHasItsPlaceAndCategory();
    void logLineIsPlainTextWithoutQuotes();
    void percentSignsInALogLineAreText();
    void switchedOffLogBuildsNoLine();
    void longTextIsCutToOneByteLessThanTheBuffer();
    void shortTextLeavesTheRestZero();
    void textIsCutByBytesNotByCharacters();
    void emptyBufferIsLeftAlone();
    void wholeStringIsCopiedWhateverTheSize();
    void listTellsWhetherItHoldsAValue();
    void commandThatPrintsNothingGivesAnEmptyString();
    void commandOutputIsReadWhole();
    void commandThatDoesNotExistGivesAnEmptyString();
    void interfaceIdIsTheSameForTextAndNumber();
    void interfaceTextsInAnyEncodingStayApart();
    void missingInterfaceTextIsAnEmptyText();
    void poolHasAThreadForEveryEnumerator();
};

void tst_SupportRoutines::logLineHasItsPlaceAndCategory()
{
    const LogCapture log;

    CrossPlatOutputDebugInfo("a line");

    QCOMPARE(log.lines().size(), 1);
    const LoggedLine line = log.lines().first();
    QCOMPARE(line.type, QtInfoMsg);
    QCOMPARE(line.category, QString("default"));
    QCOMPARE(line.file, QString("src/DeviceEnumMng/DevicesEnum"));
    QCOMPARE(line.line, 58);
    QCOMPARE(line.function, QString("void CrossPlatOutputDebugInfo(const char*)"));
    QCOMPARE(line.text, QString("a line"));
}

void tst_SupportRoutines::logLineIsPlainTextWithoutQuotes()
{
    const LogCapture log;

    CrossPlatOutputDebugInfo("a \"quoted\" word, a \\ and a blank at the end ");

    QCOMPARE(log.texts(), QStringList("a \"quoted\" word, a \\ and a blank at the end "));
}

void tst_SupportRoutines::percentSignsInALogLineAreText()
{
    const LogCapture log;

    CrossPlatOutputDebugInfo("%s %n %1");

    QCOMPARE(log.texts(), QStringList("%s %n %1"));
}

void tst_SupportRoutines::switchedOffLogBuildsNoLine()
{
    const LogCapture log;
    int built = 0;
    const auto build = [&built] {
        ++built;
        return QStringLiteral("line");
    };

    QLoggingCategory::setFilterRules("default.info=false");
    outputDebugLine(build);
    QLoggingCategory::setFilterRules("default.info=true");
    outputDebugLine(build);

    QCOMPARE(built, 1);
    QCOMPARE(log.texts(), QStringList("line"));
}

void tst_SupportRoutines::longTextIsCutToOneByteLessThanTheBuffer()
{
    char buffer[66];
    std::memset(buffer, 'x', sizeof(buffer));

    QString2Char(QString(70, 'a'), buffer, 64);

    QCOMPARE(QByteArray(buffer), QByteArray(63, 'a'));
    QCOMPARE(buffer[63], '\0');
    QCOMPARE(buffer[64], 'x');
}

void tst_SupportRoutines::shortTextLeavesTheRestZero()
{
    char buffer[8];
    std::memset(buffer, 'x', sizeof(buffer));

    QString2Char("abc", buffer, 8);

    QCOMPARE(QByteArray(buffer, 8), QByteArray("abc\0\0\0\0\0", 8));
}

void tst_SupportRoutines::textIsCutByBytesNotByCharacters()
{
    char buffer[4];

    QString2Char(QString::fromUtf8("a\xC3\xA4\xC3\xA4"), buffer, 4);

    QCOMPARE(QByteArray(buffer, 4), QByteArray("a\xC3\xA4\0", 4));
}

void tst_SupportRoutines::emptyBufferIsLeftAlone()
{
    char buffer[1] = {'x'};

    QString2Char("abc", buffer, 0);
    QCOMPARE(buffer[0], 'x');

    QString2Char("abc", buffer, 1);
    QCOMPARE(buffer[0], '\0');
}

void tst_SupportRoutines::wholeStringIsCopiedWhateverTheSize()
{
    char buffer[16] = {};

    QCOMPARE(CrossPlatstrcpy_s(buffer, 4, "longer than 4"), static_cast<char *>(buffer));

    QCOMPARE(QByteArray(buffer), QByteArray("longer than 4"));
}

void tst_SupportRoutines::listTellsWhetherItHoldsAValue()
{
    QVERIFY(CrossPlatContainInVec({1, 30001, 80001}, 30001));
    QVERIFY(!CrossPlatContainInVec({1, 30001, 80001}, 2));
    QVERIFY(!CrossPlatContainInVec({}, 0));
}

void tst_SupportRoutines::commandThatPrintsNothingGivesAnEmptyString()
{
    QCOMPARE(execCommand("true"), QString());
}

void tst_SupportRoutines::commandOutputIsReadWhole()
{
    const QString line(1000, 'z');

    QCOMPARE(execCommand("printf '%s\\n' " + line + " second"), line + "\nsecond\n");
}

void tst_SupportRoutines::commandThatDoesNotExistGivesAnEmptyString()
{
    QCOMPARE(execCommand("no-such-command-anywhere 2>/dev/null"), QString());
}

void tst_SupportRoutines::interfaceIdIsTheSameForTextAndNumber()
{
    unsigned char text[] = "interface";
    const unsigned int id = GetGenTLInterfaceID(text, 3);

    QVERIFY(id > 70000);
    QCOMPARE(GetGenTLInterfaceID(text, 3), id);
    QVERIFY(GetGenTLInterfaceID(text, 4) != id);
    QCOMPARE(genTLInterfaceId("interface", 3), id);
}

void tst_SupportRoutines::interfaceTextsInAnyEncodingStayApart()
{
    QVERIFY(genTLInterfaceId("\xB5\xE7", 0) != genTLInterfaceId("\xB5\xE8", 0));
}

void tst_SupportRoutines::missingInterfaceTextIsAnEmptyText()
{
    unsigned char empty[] = "";

    QCOMPARE(GetGenTLInterfaceID(nullptr, 1), GetGenTLInterfaceID(empty, 1));
}

void tst_SupportRoutines::poolHasAThreadForEveryEnumerator()
{
    QVERIFY(enumeratorPool() != QThreadPool::globalInstance());
    QVERIFY(enumeratorPool()->maxThreadCount() > 1000000);
    QCOMPARE(enumeratorPool(), enumeratorPool());
}

QTEST_GUILESS_MAIN(tst_SupportRoutines)
#include "tst_supportroutines.moc"
