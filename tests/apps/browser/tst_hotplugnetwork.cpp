// SPDX-License-Identifier: Apache-2.0
#include "HotplugMonitor.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using browser::HotplugMonitor;

/// A card of a private network, and what the browser hears of it.
class TestHotplugNetwork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void newCardIsHeardOf();
    void linkThatGoesDownIsHeardOf();
    void newAddressIsHeardOf();
    void cardThatGoesIsHeardOf();
    void stepsCloseTogetherAreToldOnce();
    void changeThatTouchesNoLinkIsNotTold();

private:
    static bool ip(const QString &arguments);
    bool isToldOf(const QString &arguments);

    std::unique_ptr<HotplugMonitor> m_monitor;
    std::unique_ptr<QSignalSpy> m_told;
};

void TestHotplugNetwork::init()
{
    QVERIFY(ip(QStringLiteral("link add kel0 type veth peer name kel0far")));
    QVERIFY(ip(QStringLiteral("link set kel0 up")));
    m_monitor = std::make_unique<HotplugMonitor>();
    m_told = std::make_unique<QSignalSpy>(m_monitor.get(), &HotplugMonitor::changed);
}

void TestHotplugNetwork::cleanup()
{
    m_told.reset();
    m_monitor.reset();
    for (const QString &card : {QStringLiteral("kel0"), QStringLiteral("kel1")})
        ip(QStringLiteral("link del %1").arg(card));
}

bool TestHotplugNetwork::ip(const QString &arguments)
{
    QProcess process;
    process.start(QStringLiteral("ip"), arguments.split(QLatin1Char(' ')));
    return process.waitForFinished() && process.exitCode() == 0;
}

bool TestHotplugNetwork::isToldOf(const QString &arguments)
{
    m_told->clear();
    return ip(arguments) && m_told->wait() && m_told->at(0).at(0).toUInt() == KELA_INTERFACE_TYPE_GIGE;
}

void TestHotplugNetwork::newCardIsHeardOf()
{
    QVERIFY(isToldOf(QStringLiteral("link add kel1 type veth peer name kel1far")));
}

void TestHotplugNetwork::linkThatGoesDownIsHeardOf()
{
    QVERIFY(isToldOf(QStringLiteral("link set kel0 down")));
    QVERIFY(isToldOf(QStringLiteral("link set kel0 up")));
}

void TestHotplugNetwork::newAddressIsHeardOf()
{
    QVERIFY(isToldOf(QStringLiteral("addr add 10.9.8.7/24 dev kel0")));
    QVERIFY(isToldOf(QStringLiteral("addr del 10.9.8.7/24 dev kel0")));
}

void TestHotplugNetwork::cardThatGoesIsHeardOf()
{
    QVERIFY(isToldOf(QStringLiteral("link del kel0")));
}

void TestHotplugNetwork::stepsCloseTogetherAreToldOnce()
{
    for (int i = 1; i <= 5; ++i)
        QVERIFY(ip(QStringLiteral("addr add 10.9.8.%1/24 dev kel0").arg(i)));

    QVERIFY(m_told->wait());
    QCOMPARE(m_told->size(), 1);
}

void TestHotplugNetwork::changeThatTouchesNoLinkIsNotTold()
{
    // The first word of a card is news whatever it says.
    QVERIFY(isToldOf(QStringLiteral("link set kel0 mtu 1400")));
    m_told->clear();

    QVERIFY(ip(QStringLiteral("link set kel0 mtu 1500")));
    QVERIFY(!m_told->wait(600));
}

QTEST_GUILESS_MAIN(TestHotplugNetwork)
#include "tst_hotplugnetwork.moc"
