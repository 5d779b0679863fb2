// SPDX-License-Identifier: Apache-2.0
#include "DeviceEnumMng/KelGenTLMenu/CtiConfigFile.h"

#include <CommonTools/KelInterface.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using CtiConfigFile::States;

class TestCtiConfigFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blanksEmptyPiecesAndNonNumbersReadAsDefined();
    void laterPieceOverwritesAnEarlierOneOfTheSameName();
    void furtherPartsOfAPieceAreIgnored();
    void unknownStatesAreKept();
    void pieceIsNameAndStateWithTheirSeparators();
    void placeMarkersInANameAreText();
    void nameWithASeparatorComesBackCut();
    void onlyNamesWithTheDefaultPrefixStartSwitchedOn();
    void storedStateOutlivesTheMerge();
    void vanishedProducersLeaveTheStates();
    void foundNamesAreComparedWithTheirCase();
    void folderListsProducersOfAnySuffixCaseAndFoldersToo();
    void folderListsNoHiddenNestedOrDanglingEntries();
    void missingFolderHasNoProducers();
    void fileLiesInTheProgramDataFolder();
    void missingFileHasNoValue();
};

void TestCtiConfigFile::blanksEmptyPiecesAndNonNumbersReadAsDefined()
{
    const States states = CtiConfigFile::parse(QStringLiteral("a.cti : 2;;b.cti:x;c.cti;"));

    QCOMPARE(states, (States{{QStringLiteral("a.cti"), 2}, {QStringLiteral("b.cti"), 0}}));
}

void TestCtiConfigFile::laterPieceOverwritesAnEarlierOneOfTheSameName()
{
    QCOMPARE(CtiConfigFile::parse(QStringLiteral("a.cti:1;a.cti:2;")), (States{{QStringLiteral("a.cti"), 2}}));
}

void TestCtiConfigFile::furtherPartsOfAPieceAreIgnored()
{
    QCOMPARE(CtiConfigFile::parse(QStringLiteral("a.cti:1:2:x;")), (States{{QStringLiteral("a.cti"), 1}}));
    QCOMPARE(CtiConfigFile::parse(QStringLiteral("::a.cti::1;")), (States{{QStringLiteral("a.cti"), 1}}));
}

void TestCtiConfigFile::unknownStatesAreKept()
{
    QCOMPARE(CtiConfigFile::parse(QStringLiteral("a.cti:-7;b.cti:99;")),
             (States{{QStringLiteral("a.cti"), -7}, {QStringLiteral("b.cti"), 99}}));
}

void TestCtiConfigFile::pieceIsNameAndStateWithTheirSeparators()
{
    QCOMPARE(CtiConfigFile::piece(QStringLiteral("KelFGProducerGEV.cti"), 1),
             QStringLiteral("KelFGProducerGEV.cti:1;"));
}

void TestCtiConfigFile::placeMarkersInANameAreText()
{
    QCOMPARE(CtiConfigFile::piece(QStringLiteral("a%1%2.cti"), 2), QStringLiteral("a%1%2.cti:2;"));
}

void TestCtiConfigFile::nameWithASeparatorComesBackCut()
{
    QCOMPARE(CtiConfigFile::parse(CtiConfigFile::piece(QStringLiteral("a:b.cti"), 1)),
             (States{{QStringLiteral("a"), 0}}));
    QCOMPARE(CtiConfigFile::parse(CtiConfigFile::piece(QStringLiteral("a;b.cti"), 1)),
             (States{{QStringLiteral("b.cti"), 1}}));
}

void TestCtiConfigFile::onlyNamesWithTheDefaultPrefixStartSwitchedOn()
{
    States states;
    CtiConfigFile::merge(states, {QStringLiteral("abc.cti"), QStringLiteral("KelFGProducerGEV.cti"),
                                  QStringLiteral("kelfgProducerGEV.cti"), QStringLiteral("xKelFG.cti")});

    QCOMPARE(states, (States{{QStringLiteral("abc.cti"), 0},
                             {QStringLiteral("KelFGProducerGEV.cti"), 1},
                             {QStringLiteral("kelfgProducerGEV.cti"), 0},
                             {QStringLiteral("xKelFG.cti"), 0}}));
}

void TestCtiConfigFile::storedStateOutlivesTheMerge()
{
    States states{{QStringLiteral("KelFGProducerGEV.cti"), 0}, {QStringLiteral("abc.cti"), 42}};
    CtiConfigFile::merge(states, {QStringLiteral("KelFGProducerGEV.cti"), QStringLiteral("abc.cti")});

    QCOMPARE(states, (States{{QStringLiteral("KelFGProducerGEV.cti"), 0}, {QStringLiteral("abc.cti"), 42}}));
}

void TestCtiConfigFile::vanishedProducersLeaveTheStates()
{
    States states{{QStringLiteral("gone.cti"), 1}, {QStringLiteral("here.cti"), 1}};
    CtiConfigFile::merge(states, {QStringLiteral("here.cti")});

    QCOMPARE(states, (States{{QStringLiteral("here.cti"), 1}}));
}

void TestCtiConfigFile::foundNamesAreComparedWithTheirCase()
{
    States states{{QStringLiteral("ABC.cti"), 1}};
    CtiConfigFile::merge(states, {QStringLiteral("abc.cti")});

    QCOMPARE(states, (States{{QStringLiteral("abc.cti"), 0}}));
}

void TestCtiConfigFile::folderListsProducersOfAnySuffixCaseAndFoldersToo()
{
    const QTemporaryDir folder;
    QVERIFY(QFile(folder.filePath(QStringLiteral("a.cti"))).open(QIODevice::WriteOnly));
    QVERIFY(QFile(folder.filePath(QStringLiteral("B.CTI"))).open(QIODevice::WriteOnly));
    QVERIFY(QFile(folder.filePath(QStringLiteral("c.cti.txt"))).open(QIODevice::WriteOnly));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("d.cti")));

    QStringList names = CtiConfigFile::producersIn(folder.path() + QLatin1Char('/'));
    names.sort();

    QCOMPARE(names, (QStringList{QStringLiteral("B.CTI"), QStringLiteral("a.cti"), QStringLiteral("d.cti")}));
}

void TestCtiConfigFile::folderListsNoHiddenNestedOrDanglingEntries()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("sub")));
    QVERIFY(QFile(folder.filePath(QStringLiteral("sub/a.cti"))).open(QIODevice::WriteOnly));
    QVERIFY(QFile(folder.filePath(QStringLiteral(".hidden.cti"))).open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(QStringLiteral("/nonexistent/x.cti"), folder.filePath(QStringLiteral("dangling.cti"))));

    QCOMPARE(CtiConfigFile::producersIn(folder.path() + QLatin1Char('/')), QStringList());
}

void TestCtiConfigFile::missingFolderHasNoProducers()
{
    QCOMPARE(CtiConfigFile::producersIn(QStringLiteral("/nonexistent/folder/")), QStringList());
}

void TestCtiConfigFile::fileLiesInTheProgramDataFolder()
{
    QCOMPARE(CtiConfigFile::path(), KelInterface::programDataPath() + QStringLiteral("/CtiConfig.ini"));
}

void TestCtiConfigFile::missingFileHasNoValue()
{
    QFile::remove(CtiConfigFile::path());

    QCOMPARE(CtiConfigFile::readValue(), QString());
    QVERIFY(CtiConfigFile::parse(QString()).isEmpty());
}

QTEST_GUILESS_MAIN(TestCtiConfigFile)
#include "tst_cticonfigfile.moc"
