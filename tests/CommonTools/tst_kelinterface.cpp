// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <KelAIndustryControl/KelAErrors.h>

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

class KelInterfaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qunsetenv("KELS_PROGRAM_DATA"); }

    void programDataLiesInTheGenericDataLocation()
    {
        QCOMPARE(KelInterface::programDataPath(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                     QStringLiteral("/KELS"));
    }

    void programDataDoesNotFollowTheApplicationsName()
    {
        const QString before = KelInterface::programDataPath();

        QCoreApplication::setApplicationName(QStringLiteral("another-client"));
        QCoreApplication::setOrganizationName(QStringLiteral("another-house"));

        QCOMPARE(KelInterface::programDataPath(), before);
    }

    void programDataIsMadeWhenMissing()
    {
        const QTemporaryDir folder;
        const QString wanted = folder.path() + QStringLiteral("/a/b");
        qputenv("KELS_PROGRAM_DATA", QFile::encodeName(wanted));

        QCOMPARE(KelInterface::programDataPath(), wanted);

        QVERIFY(QFileInfo(wanted).isDir());
    }

    void programDataHasNoSeparatorAtItsEnd_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::newRow("one") << QStringLiteral("/x/");
        QTest::newRow("many") << QStringLiteral("/x///");
        QTest::newRow("dot") << QStringLiteral("/x/.");
    }

    void programDataHasNoSeparatorAtItsEnd()
    {
        QFETCH(QString, ending);
        const QTemporaryDir folder;
        qputenv("KELS_PROGRAM_DATA", QFile::encodeName(folder.path() + ending));

        QCOMPARE(KelInterface::programDataPath(), folder.path() + QStringLiteral("/x"));
    }

    void emptyVariableMovesNothing()
    {
        qputenv("KELS_PROGRAM_DATA", "");

        QVERIFY(KelInterface::programDataPath().endsWith(QStringLiteral("/KELS")));
    }

    void everyErrorCodeHasATextOfItsOwn()
    {
        const QList<uint32_t> codes = {KELA_OK,
                                       KELA_ERROR_HANDLE,
                                       KELA_ERROR_NOT_SUPPORTED,
                                       KELA_ERROR_PARAMETER,
                                       KELA_ERROR_CALL_ORDER,
                                       KELA_ERROR_RESOURCE,
                                       KELA_ERROR_TIMEOUT,
                                       KELA_ERROR_IN_USE,
                                       KELA_ERROR_UNREACHABLE,
                                       KELA_ERROR_PERMISSION,
                                       KELA_ERROR_PROTOCOL,
                                       KELA_ERROR_CANCELLED,
                                       KELA_ERROR_PRODUCER_MISSING,
                                       KELA_ERROR_NOT_A_PRODUCER,
                                       KELA_ERROR_PRODUCER_FAILED,
                                       KELA_ERROR_GENTL_OBJECT_MISSING,
                                       KELA_ERROR_PRODUCER_REFUSED};
        const QString unknown = KelInterface::GenerateErrorDesc(1);
        QSet<QString> texts;

        for (const uint32_t code : codes) {
            const QString text = KelInterface::GenerateErrorDesc(static_cast<int>(code));
            QVERIFY2(text != unknown, qPrintable(QString::number(code, 16)));
            texts.insert(text);
        }

        QCOMPARE(texts.size(), codes.size());
    }

    void unknownCodeSaysSo()
    {
        QCOMPARE(KelInterface::GenerateErrorDesc(static_cast<int>(0x90000FFFU)),
                 QStringLiteral("Unknown error."));
        QCOMPARE(KelInterface::GenerateErrorDesc(-1), QStringLiteral("Unknown error."));
    }

    void errorTextsAreTranslated_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("English") << QStringLiteral("en")
                                 << QStringLiteral("Another program is using the device.");
        QTest::newRow("German") << QStringLiteral("de")
                                << QStringLiteral("Ein anderes Programm verwendet das Gerät.");
        QTest::newRow("Chinese") << QStringLiteral("zh_CN") << QStringLiteral("设备正被其他程序使用。");
    }

    void errorTextsAreTranslated()
    {
        QFETCH(QString, locale);
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/translations/CommonTools_") + locale));
        QCoreApplication::installTranslator(&translator);

        QTEST(KelInterface::GenerateErrorDesc(static_cast<int>(KELA_ERROR_IN_USE)), "text");
    }

    void codesAreShownAsEightHexadecimalDigits()
    {
        QCOMPARE(KelInterface::IntCode2DisplayCode(static_cast<int>(0x90000005U)),
                 QStringLiteral("[0x90000005]"));
        QCOMPARE(KelInterface::IntCode2DisplayCode(static_cast<int>(0x9000000AU)),
                 QStringLiteral("[0x9000000A]"));
        QCOMPARE(KelInterface::IntCode2DisplayCode(0), QStringLiteral("[0x00000000]"));
        QCOMPARE(KelInterface::IntCode2DisplayCode(-1), QStringLiteral("[0xFFFFFFFF]"));
    }

    void flagIsTestedAgainstTheWholeMask_data()
    {
        QTest::addColumn<int>("flag");
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("isSet");
        QTest::newRow("alone") << 4 << 4 << true;
        QTest::newRow("among others") << 16 << 31 << true;
        QTest::newRow("missing") << 8 << 23 << false;
        QTest::newRow("half of two bits") << 48 << 16 << false;
        QTest::newRow("none in none") << 0 << 0 << true;
        QTest::newRow("none in some") << 0 << 1 << false;
    }

    void flagIsTestedAgainstTheWholeMask()
    {
        QFETCH(int, flag);
        QFETCH(int, value);

        QTEST(KelInterface::testFlag(flag, value), "isSet");
    }
};

QTEST_GUILESS_MAIN(KelInterfaceTest)
#include "tst_kelinterface.moc"
