// SPDX-License-Identifier: Apache-2.0
#include "HostFacts.h"
#include "Ipv4.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace browser;

namespace
{

/// A stand-in for the kernel's folder of settings.
class Settings
{
public:
    void set(const QString &card, const QByteArray &value)
    {
        QDir(m_folder.path()).mkpath(card);
        QFile file(m_folder.filePath(card + QStringLiteral("/rp_filter")));
        if (file.open(QIODevice::WriteOnly))
            file.write(value);
    }
    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

HostCard card(ReversePathFilter filter)
{
    return {QStringLiteral("eth0"),
            QStringLiteral("00:11:22:33:44:55"),
            {{0xC0A83201, 0xFFFFFF00}},
            filter,
            1500,
            true};
}

HostRoute route(const char *name, uint32_t destination, uint32_t mask)
{
    return {QString::fromLatin1(name), destination, mask, 0};
}

} // namespace

class TestHostFacts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void largerFilterSettingCounts_data();
    void largerFilterSettingCounts();
    void unreadableFilterSettingIsUnknown();
    void cardNameThatIsAPathIsRefused();
    void routeTableOfTheKernelIsRead();
    void routeTableThatIsGarbageGivesNoRoute();
    void longestMaskWins();
    void strictFilterDropsWhatItWouldNotAnswerThroughTheCard();
    void looseFilterDropsOnlyWhereNoRouteLeads();
    void filterThatIsOffDropsNothing();
    void ownAddressesAreKnown();
    void addressesAreReadAndWritten_data();
    void addressesAreReadAndWritten();
    void textThatIsNoAddressIsRefused_data();
    void textThatIsNoAddressIsRefused();
    void masksWithGapsHaveNoLength();
    void presentComputerHasALoopback();
};

void TestHostFacts::largerFilterSettingCounts_data()
{
    QTest::addColumn<QByteArray>("all");
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<int>("expected");
    QTest::newRow("both off") << QByteArray("0\n") << QByteArray("0\n") << 0;
    QTest::newRow("all strict, own off") << QByteArray("1\n") << QByteArray("0\n") << 1;
    QTest::newRow("all off, own loose") << QByteArray("0\n") << QByteArray("2\n") << 2;
    QTest::newRow("all strict, own loose") << QByteArray("1\n") << QByteArray("2\n") << 2;
}

void TestHostFacts::largerFilterSettingCounts()
{
    QFETCH(QByteArray, all);
    QFETCH(QByteArray, own);
    QFETCH(int, expected);
    Settings settings;
    settings.set(QStringLiteral("all"), all);
    settings.set(QStringLiteral("eth0"), own);

    QCOMPARE(static_cast<int>(readReversePathFilter(settings.path(), QStringLiteral("eth0"))), expected);
}

void TestHostFacts::unreadableFilterSettingIsUnknown()
{
    Settings settings;
    QCOMPARE(readReversePathFilter(settings.path(), QStringLiteral("eth0")), ReversePathFilter::Unknown);

    settings.set(QStringLiteral("all"), "strict");
    settings.set(QStringLiteral("eth0"), "9");
    QCOMPARE(readReversePathFilter(settings.path(), QStringLiteral("eth0")), ReversePathFilter::Unknown);
}

void TestHostFacts::cardNameThatIsAPathIsRefused()
{
    Settings settings;
    settings.set(QStringLiteral("all"), "1");

    QCOMPARE(readReversePathFilter(settings.path(), QStringLiteral("../all")), ReversePathFilter::Unknown);
    QCOMPARE(readReversePathFilter(settings.path(), QString()), ReversePathFilter::Unknown);
}

void TestHostFacts::routeTableOfTheKernelIsRead()
{
#if Q_BYTE_ORDER != Q_LITTLE_ENDIAN
    QSKIP("the sample table is that of a little-endian kernel");
#endif
    const QByteArray table =
        "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n"
        "eth0\t00000000\t0132A8C0\t0003\t0\t0\t0\t00000000\t0\t0\t0\n"
        "eth0\t0032A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0\n"
        "eth1\t0000FEA9\t00000000\t0000\t0\t0\t0\t0000FFFF\t0\t0\t0\n";

    const QVector<HostRoute> routes = parseRouteTable(table);

    QCOMPARE(routes.size(), 2); // the third one is down
    QCOMPARE(routes.at(0).gateway, 0xC0A83201U);
    QCOMPARE(routes.at(0).mask, 0U);
    QCOMPARE(routes.at(1).card, QStringLiteral("eth0"));
    QCOMPARE(routes.at(1).destination, 0xC0A83200U);
    QCOMPARE(routes.at(1).mask, 0xFFFFFF00U);
}

void TestHostFacts::routeTableThatIsGarbageGivesNoRoute()
{
    QVERIFY(parseRouteTable(QByteArray()).isEmpty());
    QVERIFY(parseRouteTable("one line only").isEmpty());
    QVERIFY(parseRouteTable("head\neth0\nx y z\n\n\xff\xfe\x00").isEmpty());
}

void TestHostFacts::longestMaskWins()
{
    HostFacts facts;
    facts.routes = {route("wide", 0, 0), route("narrow", 0xC0A83200, 0xFFFFFF00),
                    route("middle", 0xC0A80000, 0xFFFF0000)};

    QCOMPARE(facts.routeTo(0xC0A83215)->card, QStringLiteral("narrow"));
    QCOMPARE(facts.routeTo(0xC0A80115)->card, QStringLiteral("middle"));
    QCOMPARE(facts.routeTo(0x08080808)->card, QStringLiteral("wide"));
}

void TestHostFacts::strictFilterDropsWhatItWouldNotAnswerThroughTheCard()
{
    HostFacts facts;
    facts.routes = {route("eth1", 0, 0), route("eth0", 0xC0A83200, 0xFFFFFF00)};
    const HostCard strict = card(ReversePathFilter::Strict);

    QVERIFY(!facts.dropsPacketsFrom(0xC0A83215, strict));
    QVERIFY(facts.dropsPacketsFrom(0xC0A83C15, strict)); // the default route leaves by another card
}

void TestHostFacts::looseFilterDropsOnlyWhereNoRouteLeads()
{
    HostFacts facts;
    facts.routes = {route("eth0", 0xC0A83200, 0xFFFFFF00)};
    const HostCard loose = card(ReversePathFilter::Loose);
    QVERIFY(facts.dropsPacketsFrom(0xC0A83C15, loose));

    facts.routes.append(route("eth1", 0, 0));
    QVERIFY(!facts.dropsPacketsFrom(0xC0A83C15, loose));
}

void TestHostFacts::filterThatIsOffDropsNothing()
{
    const HostFacts facts;

    QVERIFY(!facts.dropsPacketsFrom(0xC0A83C15, card(ReversePathFilter::Off)));
    QVERIFY(!facts.dropsPacketsFrom(0xC0A83C15, card(ReversePathFilter::Unknown)));
}

void TestHostFacts::ownAddressesAreKnown()
{
    HostFacts facts;
    facts.cards = {card(ReversePathFilter::Off)};

    QVERIFY(facts.isOwnAddress(0xC0A83201));
    QVERIFY(!facts.isOwnAddress(0xC0A83202));
    QVERIFY(!facts.isOwnAddress(0));
    QVERIFY(facts.cardOf(QStringLiteral("00:11:22:33:44:55"), 0));
    QVERIFY(!facts.cardOf(QStringLiteral("00:11:22:33:44:66"), 0));
}

void TestHostFacts::addressesAreReadAndWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<uint>("number");
    QTest::newRow("class C") << "192.168.50.1" << 0xC0A83201U;
    QTest::newRow("all ones") << "255.255.255.255" << 0xFFFFFFFFU;
    QTest::newRow("low") << "0.0.0.1" << 1U;
}

void TestHostFacts::addressesAreReadAndWritten()
{
    QFETCH(QString, text);
    QFETCH(uint, number);

    QCOMPARE(ipv4::parse(text).value_or(0), number);
    QCOMPARE(ipv4::text(number), text);
}

void TestHostFacts::textThatIsNoAddressIsRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "1.2.3", "1.2.3.4.5", "256.1.1.1", "a.b.c.d", "1.2.3.", "+1.2.3.4",
                             "1.2.3.0004", "1 .2.3.4", "-1.2.3.4"})
        QTest::newRow(*text ? text : "empty") << QString::fromLatin1(text);
}

void TestHostFacts::textThatIsNoAddressIsRefused()
{
    QFETCH(QString, text);

    QVERIFY(!ipv4::parse(text).has_value());
}

void TestHostFacts::masksWithGapsHaveNoLength()
{
    QCOMPARE(ipv4::prefixLength(0xFFFFFF00), 24);
    QCOMPARE(ipv4::prefixLength(0), 0);
    QCOMPARE(ipv4::prefixLength(0xFFFFFFFF), 32);
    QCOMPARE(ipv4::prefixLength(0xFF00FF00), -1);
    QCOMPARE(ipv4::textWithMask(0xC0A83201, 0xFF00FF00), QStringLiteral("192.168.50.1/255.0.255.0"));
}

void TestHostFacts::presentComputerHasALoopback()
{
    const HostFacts facts = readHostFacts();

    QVERIFY(facts.cardOf(QString(), 0x7F000001) || !facts.cards.isEmpty());
}

QTEST_GUILESS_MAIN(TestHostFacts)
#include "tst_hostfacts.moc"
