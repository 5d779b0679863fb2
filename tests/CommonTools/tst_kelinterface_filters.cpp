// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QTemporaryDir>
#include <QtTest>

class KelInterfaceFiltersTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

    QString file() const { return m_folder->path() + QStringLiteral("/DeviceFilter.ini"); }

    void write(const QByteArray &content) const
    {
        QFile ini(file());
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write(content);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("KELS_PROGRAM_DATA", QFile::encodeName(m_folder->path()));
    }

    void cleanup() { qunsetenv("KELS_PROGRAM_DATA"); }

    void everythingIsOffAndEmptyWithoutAFile()
    {
        QCOMPARE(KelInterface::vendorFilterState(), 0);
        QCOMPARE(KelInterface::modelFilterState(), 0);
        QCOMPARE(KelInterface::vendorFilterInclude(), QString());
        QCOMPARE(KelInterface::vendorFilterExclude(), QString());
        QCOMPARE(KelInterface::modelFilterInclude(), QString());
        QCOMPARE(KelInterface::modelFilterExclude(), QString());
    }

    void readingMakesNoFile()
    {
        QCOMPARE(KelInterface::vendorFilterState(), 0);

        QVERIFY(!QFile::exists(file()));
    }

    void textsComeBackAsTheyWereStored_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QStringLiteral("Acme");
        QTest::newRow("slashes") << QStringLiteral("Acme/Other/Third");
        QTest::newRow("commas") << QStringLiteral("Acme, Inc./Other Co.,Ltd");
        QTest::newRow("only a comma") << QStringLiteral(",");
        QTest::newRow("blanks around") << QStringLiteral("  Acme / Other  ");
        QTest::newRow("quotation marks") << QStringLiteral("\"Acme\"/'Other'");
        QTest::newRow("backslash, percent, semicolon, at") << QStringLiteral("@a\\b%20;c=d#e[f]");
        QTest::newRow("not Latin") << QStringLiteral("海康/ソニー/Müller");
        QTest::newRow("emoji") << QStringLiteral("📷/x");
        QTest::newRow("line break") << QStringLiteral("a\nb");
        QTest::newRow("empty") << QString();
    }

    void textsComeBackAsTheyWereStored()
    {
        QFETCH(QString, text);

        QVERIFY(KelInterface::setVendorFilter(1, text, QStringLiteral("v")));
        QVERIFY(KelInterface::setModelFilter(2, QStringLiteral("m"), text));

        QCOMPARE(KelInterface::vendorFilterState(), 1);
        QCOMPARE(KelInterface::vendorFilterInclude(), text);
        QCOMPARE(KelInterface::vendorFilterExclude(), QStringLiteral("v"));
        QCOMPARE(KelInterface::modelFilterState(), 2);
        QCOMPARE(KelInterface::modelFilterInclude(), QStringLiteral("m"));
        QCOMPARE(KelInterface::modelFilterExclude(), text);
    }

    void vendorAndModelFilterDoNotTouchEachOther()
    {
        QVERIFY(KelInterface::setVendorFilter(1, QStringLiteral("A"), QStringLiteral("B")));

        QVERIFY(KelInterface::setModelFilter(2, QStringLiteral("C"), QStringLiteral("D")));

        QCOMPARE(KelInterface::vendorFilterState(), 1);
        QCOMPARE(KelInterface::vendorFilterInclude(), QStringLiteral("A"));
        QCOMPARE(KelInterface::vendorFilterExclude(), QStringLiteral("B"));
    }

    void handWrittenTextWithACommaIsReadWhole()
    {
        write("[Vendor]\nState=1\nInclude=Acme, Inc./Other\n");

        QCOMPARE(KelInterface::vendorFilterState(), 1);
        QCOMPARE(KelInterface::vendorFilterInclude(), QStringLiteral("Acme, Inc./Other"));
    }

    void handWrittenUtf8IsRead()
    {
        write("[Model]\nState=2\nExclude=Müller 相机\n");

        QCOMPARE(KelInterface::modelFilterExclude(), QStringLiteral("Müller 相机"));
    }

    void unknownNumberIsGivenAsItStands_data()
    {
        QTest::addColumn<int>("state");
        for (const int state : {0, 1, 2, 3, -1, 99}) {
            QTest::addRow("%d", state) << state;
        }
    }

    void unknownNumberIsGivenAsItStands()
    {
        QFETCH(int, state);
        write("[Vendor]\nState=" + QByteArray::number(state) + "\n");

        QCOMPARE(KelInterface::vendorFilterState(), state);

        QVERIFY(KelInterface::setModelFilter(state, QString(), QString()));
        QCOMPARE(KelInterface::modelFilterState(), state);
    }

    void stateThatIsNoNumberIsOff_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const char *value : {"99999999999", "yes", "", "1.5", "@Invalid()"}) {
            QTest::newRow(value) << QByteArray(value);
        }
    }

    void stateThatIsNoNumberIsOff()
    {
        QFETCH(QByteArray, value);
        write("[Vendor]\nState=" + value + "\n");

        QCOMPARE(KelInterface::vendorFilterState(), 0);
    }

    void brokenFileGivesEmptyFilters()
    {
        write(QByteArray("\x00\xff[[[Vendor\nState\n=\xfe\n\x01", 22));

        QCOMPARE(KelInterface::vendorFilterState(), 0);
        QCOMPARE(KelInterface::vendorFilterInclude(), QString());
    }

    void storingTellsWhenTheFileCannotBeWritten()
    {
        // A folder where the file should be: not even root can write that.
        QVERIFY(QDir().mkpath(file()));

        QVERIFY(!KelInterface::setVendorFilter(1, QStringLiteral("A"), QString()));
    }
};

QTEST_GUILESS_MAIN(KelInterfaceFiltersTest)
#include "tst_kelinterface_filters.moc"
