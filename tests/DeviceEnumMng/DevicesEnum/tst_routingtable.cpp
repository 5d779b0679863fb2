// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/DevicesEnum/RoutingTable.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

const char *const kTable = "0.0.0.0         192.168.1.1     0.0.0.0         UG    100    0        0 eth0\n"
                           "192.168.1.0     0.0.0.0         255.255.255.0   U     100    0        0 eth0\n";

// Puts a program named "route" first on the PATH, which notes that it ran and prints a table.
class FakeRoute
{
public:
    explicit FakeRoute(const QByteArray &output)
        : m_before(qgetenv("PATH"))
    {
        QFile table(m_folder.filePath("table"));
        QFile program(m_folder.filePath("route"));
        if (table.open(QIODevice::WriteOnly) && program.open(QIODevice::WriteOnly)) {
            table.write(output);
            program.write("#!/bin/sh\ncat '" + QFile::encodeName(table.fileName()) + "'\necho complaint >&2\n");
            program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ":" + m_before);
    }

    ~FakeRoute() { qputenv("PATH", m_before); }

    FakeRoute(const FakeRoute &) = delete;
    FakeRoute &operator=(const FakeRoute &) = delete;

private:
    QTemporaryDir m_folder;
    QByteArray m_before;
};

QString gatewayOf(const QString &cardName, const QString &address)
{
    QString routeText;
    QString gateway;
    int cardValue = -1;
    GetNetWorkInfoByMac_linux(cardName, address, routeText, gateway, cardValue);
    return gateway;
}

} // namespace

class tst_RoutingTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addressTextBecomesANumber_data();
    void addressTextBecomesANumber();
    void gatewayIsTheFirstHostAddressWithThePrefix_data();
    void gatewayIsTheFirstHostAddressWithThePrefix();
    void gatewayOfACardComesFromItsLines();
    void cardValueIs1000AndTheRouteTextStaysEmpty();
    void interfaceNameIsPlainOrNot_data();
    void interfaceNameIsPlainOrNot();
    void interfaceNameWithShellCharactersRunsNothing();
    void interfaceNameLikeAnOptionGetsNoGateway();
    void missingRouteProgramLeavesTheGatewayUnset();
};

void tst_RoutingTable::addressTextBecomesANumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<unsigned int>("address");
    QTest::newRow("usual") << "192.168.1.2" << 0xC0A80102U;
    QTest::newRow("highest") << "255.255.255.255" << 0xFFFFFFFFU;
    QTest::newRow("lowest") << "0.0.0.0" << 0U;
    QTest::newRow("empty") << "" << 0xFFFFFFFFU;
    QTest::newRow("three parts") << "10.0.0" << 0xFFFFFFFFU;
    QTest::newRow("five parts") << "10.0.0.1.2" << 0xFFFFFFFFU;
    QTest::newRow("empty parts are dropped") << "10..0.0.1" << 0x0A000001U;
    QTest::newRow("words count as zero") << "a.b.c.d" << 0U;
    QTest::newRow("carries into the next octet") << "1.2.3.256" << 0x01020400U;
}

void tst_RoutingTable::addressTextBecomesANumber()
{
    QFETCH(QString, text);
    QFETCH(unsigned int, address);

    QCOMPARE(strIP2IntIP(text), address);
}

void tst_RoutingTable::gatewayIsTheFirstHostAddressWithThePrefix_data()
{
    QTest::addColumn<QString>("routes");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("gateway");
    QTest::newRow("default route") << QString(kTable) << "192.168.1"
                                   << "192.168.1.1";
    QTest::newRow("no route of the prefix") << QString(kTable) << "10.0.0"
                                            << "";
    QTest::newRow("no output") << ""
                               << "192.168.1"
                               << "";
    QTest::newRow("three pieces") << "10.0.0 eth0"
                                  << "10.0.0"
                                  << "";
    QTest::newRow("255 is out of range") << "10.0.0.255 eth0"
                                         << "10.0.0"
                                         << "";
    QTest::newRow("0 is out of range") << "10.0.0.0 eth0"
                                       << "10.0.0"
                                       << "";
    QTest::newRow("254 is in range") << "10.0.0.254 eth0"
                                     << "10.0.0"
                                     << "10.0.0.254";
    QTest::newRow("prefix is plain text") << "192.168.10.5 eth0"
                                          << "192.168.1"
                                          << "192.168.10.5";
    QTest::newRow("empty prefix takes any") << "0.0.0.0 172.16.0.1 eth0"
                                            << ""
                                            << "172.16.0.1";
    QTest::newRow("first of two") << "10.0.0.3 10.0.0.4\n10.0.0.5"
                                  << "10.0.0"
                                  << "10.0.0.3";
    QTest::newRow("tabs are trimmed") << "\t10.0.0.7\t eth0"
                                      << "10.0.0"
                                      << "10.0.0.7";
    QTest::newRow("fourth piece is no number") << "10.0.0.x eth0"
                                               << "10.0.0"
                                               << "";
}

void tst_RoutingTable::gatewayIsTheFirstHostAddressWithThePrefix()
{
    QFETCH(QString, routes);
    QFETCH(QString, prefix);
    QFETCH(QString, gateway);

    QCOMPARE(gatewayIn(routes, prefix), gateway);
}

void tst_RoutingTable::gatewayOfACardComesFromItsLines()
{
    const FakeRoute route(kTable);

    QCOMPARE(gatewayOf("eth0", "192.168.1.77"), QString("192.168.1.1"));
    QCOMPARE(gatewayOf("eth1", "192.168.1.77"), QString());
}

void tst_RoutingTable::cardValueIs1000AndTheRouteTextStaysEmpty()
{
    const FakeRoute route(kTable);
    QString routeText;
    QString gateway;
    int cardValue = -1;

    QVERIFY(GetNetWorkInfoByMac_linux("eth0", "192.168.1.77", routeText, gateway, cardValue));

    QCOMPARE(cardValue, 1000);
    QCOMPARE(routeText, QString());
}

void tst_RoutingTable::interfaceNameIsPlainOrNot_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPlain");
    for (const char *name : {"eth0", "enp0s31f6", "eth0.100", "br-lan", "eth0:1", "wg_0", "veth@if2"}) {
        QTest::newRow(name) << name << true;
    }
    for (const char *name :
         {"",     "-v",   "--help", "a;b", "a b",  "$(a)", "`a`",  "a|b", "a&b", "a>b", "a'b",
          "a\"b", "a\\b", "*",      "a?",  "a[b]", "~a",   "a\nb", "#a",  "(a)", "{a}", "!a"}) {
        QTest::newRow(QByteArray("refused ") + name) << name << false;
    }
    QTest::newRow("letters of other alphabets") << QString::fromUtf8("k\xC3\xA4rte") << false;
}

void tst_RoutingTable::interfaceNameIsPlainOrNot()
{
    QFETCH(QString, name);
    QFETCH(bool, isPlain);

    QCOMPARE(isPlainInterfaceName(name), isPlain);
}

void tst_RoutingTable::interfaceNameWithShellCharactersRunsNothing()
{
    const FakeRoute route(kTable);
    const QTemporaryDir folder;
    const QString witness = folder.filePath("w");

    for (const QString &name :
         {"e;>" + witness, "`>" + witness + "`", "$(>" + witness + ")", "e|tee " + witness}) {
        QCOMPARE(gatewayOf(name, "192.168.1.77"), QString());
    }

    QVERIFY(!QFile::exists(witness));
}

void tst_RoutingTable::interfaceNameLikeAnOptionGetsNoGateway()
{
    const FakeRoute route(kTable);

    // As an option this would let every line through.
    QCOMPARE(gatewayOf("-vX", "192.168.1.77"), QString());
}

void tst_RoutingTable::missingRouteProgramLeavesTheGatewayUnset()
{
    const FakeRoute route("");

    QCOMPARE(strIP2IntIP(gatewayOf("eth0", "192.168.1.77")), 0xFFFFFFFFU);
}

QTEST_GUILESS_MAIN(tst_RoutingTable)
#include "tst_routingtable.moc"
