// SPDX-License-Identifier: Apache-2.0
#include "KelRecordDigest.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QSet>
#include <QtTest>

#include <cstring>

class tst_KelRecordDigest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalBytesHaveEqualDigests();
    void everyBitOfARecordCounts();
    void bytesThatChangePlacesCount();
    void lengthCounts();
};

void tst_KelRecordDigest::equalBytesHaveEqualDigests()
{
    KELA_STRUCT_DEVICE_INFO record = {};
    record.deviceId = 7;
    const KELA_STRUCT_DEVICE_INFO copy = record;

    QCOMPARE(digestOf(copy), digestOf(record));
    QCOMPARE(digestOfBytes(nullptr, 0), digestOfBytes(nullptr, 0));
}

void tst_KelRecordDigest::everyBitOfARecordCounts()
{
    unsigned char bytes[sizeof(KELA_STRUCT_DEVICE_INFO)] = {};
    QSet<quint64> digests = {digestOfBytes(bytes, sizeof bytes)};
    for (unsigned char &byte : bytes) {
        for (unsigned int bit = 0; bit < 8; ++bit) {
            byte = static_cast<unsigned char>(1U << bit);
            digests.insert(digestOfBytes(bytes, sizeof bytes));
        }
        byte = 0;
    }

    QCOMPARE(digests.size(), static_cast<int>(1 + 8 * sizeof bytes));
}

void tst_KelRecordDigest::bytesThatChangePlacesCount()
{
    QSet<quint64> digests;
    for (std::size_t first = 0; first < 256; first += 8) {
        for (std::size_t second = 0; second < 256; second += 8) {
            unsigned char bytes[256] = {};
            bytes[first] = 1;
            bytes[second] = static_cast<unsigned char>(bytes[second] + 2);
            digests.insert(digestOfBytes(bytes, sizeof bytes));
        }
    }

    QCOMPARE(digests.size(), 32 * 32);
}

void tst_KelRecordDigest::lengthCounts()
{
    const unsigned char bytes[256] = {};
    QSet<quint64> digests;
    for (std::size_t size = 0; size <= sizeof bytes; ++size) {
        digests.insert(digestOfBytes(bytes, size));
    }

    QCOMPARE(digests.size(), 257);
}

QTEST_APPLESS_MAIN(tst_KelRecordDigest)
#include "tst_kelrecorddigest.moc"
