// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QTextCodec>
#include <QtTest>

#include <array>
#include <thread>

namespace
{

QString decoded(const QByteArray &bytes)
{
    return KelInterface::GetEncodeQStringFromChar(bytes.constData(), bytes.size());
}

const QChar kReplacement(QChar::ReplacementCharacter);

} // namespace

class KelInterfaceEncodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { KelInterface::SetEncodingType(KelInterface::EncodingUtf8); }

    void textIsUtf8AtFirst()
    {
        QCOMPARE(KelInterface::GetEncodingType(), 0);
        QCOMPARE(decoded("\xe7\x9b\xb8\xe6\x9c\xba"), QStringLiteral("相机"));
    }

    void eachNumberChoosesItsEncoding_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("0 UTF-8") << 0 << QByteArray("\xc3\xbc") << QStringLiteral("ü");
        QTest::newRow("2 GB18030") << 2 << QByteArray("\xcf\xe0\xbb\xfa") << QStringLiteral("相机");
        QTest::newRow("2 GB18030, four bytes")
            << 2 << QByteArray("\x95\x32\x82\x36") << QString::fromUcs4(U"\x20000");
        QTest::newRow("3 Big5") << 3 << QByteArray("\xac\xdb\xbe\xf7") << QStringLiteral("相機");
        QTest::newRow("4 Shift-JIS") << 4 << QByteArray("\x83\x4a\x83\x81\x83\x89") << QStringLiteral("カメラ");
        QTest::newRow("5 EUC-KR") << 5 << QByteArray("\xc4\xab\xb8\xde\xb6\xf3") << QStringLiteral("카메라");
        QTest::newRow("6 ISO 8859-1") << 6 << QByteArray("\xfc\xff") << QStringLiteral("üÿ");
    }

    void eachNumberChoosesItsEncoding()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, bytes);

        KelInterface::SetEncodingType(number);

        QCOMPARE(KelInterface::GetEncodingType(), number);
        QTEST(decoded(bytes), "text");
        QTEST(KelInterface::GetEncodeQStringFromUnChar(
                  reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size()),
              "text");
    }

    void numberOneFollowsTheLocale()
    {
        QTextCodec *before = QTextCodec::codecForLocale();
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("EUC-KR"));
        KelInterface::SetEncodingType(1);

        const QString chosen = decoded("\xc4\xab");
        const QString direct = KelInterface::char2QStringLocale("\xc4\xab", 2);
        const auto bytes = std::array<unsigned char, 2>{0xc4, 0xab};
        const QString unsignedBytes = KelInterface::uchar2QStringLocale(bytes.data(), 2);

        QTextCodec::setCodecForLocale(before);
        QCOMPARE(chosen, QStringLiteral("카"));
        QCOMPARE(direct, QStringLiteral("카"));
        QCOMPARE(unsignedBytes, QStringLiteral("카"));
    }

    void unknownNumberChangesNothing_data()
    {
        QTest::addColumn<int>("number");
        for (const int number :
             {-1, 7, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            QTest::addRow("%d", number) << number;
        }
    }

    void unknownNumberChangesNothing()
    {
        QFETCH(int, number);
        KelInterface::SetEncodingType(KelInterface::EncodingBig5);

        KelInterface::SetEncodingType(number);

        QCOMPARE(KelInterface::GetEncodingType(), 3);
    }

    void ucharConversionIsUtf8WhateverTheChoice()
    {
        KelInterface::SetEncodingType(KelInterface::EncodingShiftJis);
        const auto bytes = std::array<unsigned char, 2>{0xc3, 0xbc};

        QCOMPARE(KelInterface::uchar2QString(bytes.data(), 2), QStringLiteral("ü"));
    }

    void textEndsAtItsNul()
    {
        const char field[8] = {'a', 'b', '\0', 'X', 'X', 'X', 'X', 'X'};

        QCOMPARE(KelInterface::GetEncodeQStringFromChar(field, 8), QStringLiteral("ab"));
        QCOMPARE(KelInterface::char2QStringLocale(field, 8), QStringLiteral("ab"));
    }

    void fullFieldIsReadToItsEndAndNotFurther()
    {
        // On the heap and without a byte behind it, so that a sanitizer sees the first step too far.
        const std::unique_ptr<char[]> field(new char[64]);
        std::fill_n(field.get(), 64, 'n');

        QCOMPARE(KelInterface::GetEncodeQStringFromChar(field.get(), 64), QString(64, QLatin1Char('n')));
        QCOMPARE(KelInterface::char2QStringLocale(field.get(), 64), QString(64, QLatin1Char('n')));
    }

    void nothingIsReadWithoutTextOrLength()
    {
        QCOMPARE(KelInterface::GetEncodeQStringFromChar(nullptr, 64), QString());
        QCOMPARE(KelInterface::GetEncodeQStringFromUnChar(nullptr, 64), QString());
        QCOMPARE(KelInterface::GetEncodeQStringFromChar("abc", 0), QString());
        QCOMPARE(KelInterface::GetEncodeQStringFromChar("abc", -5), QString());
        QCOMPARE(KelInterface::uchar2QString(nullptr, 4), QString());
    }

    void invalidBytesBecomeReplacementCharacters_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << 0 << QByteArray("a\xff+b");
        QTest::newRow("GB18030") << 2 << QByteArray("a\xff+b");
        QTest::newRow("Big5, second byte wrong") << 3 << QByteArray("a\xa1\x01+b");
        QTest::newRow("Shift-JIS") << 4 << QByteArray("a\xff+b");
        QTest::newRow("EUC-KR, second byte wrong") << 5 << QByteArray("a\xb0\x01+b");
    }

    void invalidBytesBecomeReplacementCharacters()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, bytes);
        KelInterface::SetEncodingType(number);

        const QString text = decoded(bytes);

        QVERIFY2(text.startsWith(QLatin1Char('a')) && text.endsWith(QLatin1Char('b')), qPrintable(text));
        QVERIFY2(text.contains(kReplacement), qPrintable(text));
    }

    void characterCutByTheFieldsEndIsReplaced_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << 0 << QByteArray("a\xe7\x9b");
        QTest::newRow("GB18030") << 2 << QByteArray("a\xcf");
        QTest::newRow("Big5") << 3 << QByteArray("a\xac");
        QTest::newRow("Shift-JIS") << 4 << QByteArray("a\x83");
        QTest::newRow("EUC-KR") << 5 << QByteArray("a\xc4");
    }

    void characterCutByTheFieldsEndIsReplaced()
    {
        QFETCH(int, number);
        QFETCH(QByteArray, bytes);
        KelInterface::SetEncodingType(number);

        const QString text = decoded(bytes);

        QVERIFY(text.startsWith(QLatin1Char('a')));
        QVERIFY2(text.endsWith(kReplacement), qPrintable(text));
    }

    void everyPairOfBytesIsDecodedInEveryEncoding()
    {
        for (int number = 0; number <= 6; ++number) {
            KelInterface::SetEncodingType(number);
            for (int pair = 0; pair < 0x10000; ++pair) {
                const char bytes[2] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xff)};
                const QString text = KelInterface::GetEncodeQStringFromChar(bytes, 2);
                QVERIFY2(text.size() <= 4, qPrintable(QString::number(pair, 16)));
                QCOMPARE(text.isEmpty(), bytes[0] == 0);
            }
        }
    }

    void choiceChangesWhileAnotherThreadDecodes()
    {
        std::atomic<bool> stop{false};
        std::thread worker([&stop] {
            while (!stop) {
                decoded("\xcf\xe0\xbb\xfa");
            }
        });

        for (int i = 0; i < 2000; ++i) {
            KelInterface::SetEncodingType(i % 7);
        }

        stop = true;
        worker.join();
        QCOMPARE(KelInterface::GetEncodingType(), 1999 % 7);
    }
};

QTEST_GUILESS_MAIN(KelInterfaceEncodingTest)
#include "tst_kelinterface_encoding.moc"
