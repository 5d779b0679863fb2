// SPDX-License-Identifier: Apache-2.0
#include "DisplayCheck.h"

#include <QLocalServer>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

using browser::missingDisplay;

class TestDisplayCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void unsetDisplayIsToldInOneLine();
    void deadXServerIsToldInOneLine_data();
    void deadXServerIsToldInOneLine();
    void xServerOfAHostIsKnockedAt();
    void compositorIsKnockedAt();
    void deadCompositorIsTold();
    void oneOfTwoIsEnough();
    void platformWithoutADisplayNeedsNone();
};

void TestDisplayCheck::init()
{
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"})
        qunsetenv(variable);
}

void TestDisplayCheck::unsetDisplayIsToldInOneLine()
{
    QVERIFY(missingDisplay().contains(QStringLiteral("DISPLAY")));
    QVERIFY(!missingDisplay().contains(QLatin1Char('\n')));
}

void TestDisplayCheck::deadXServerIsToldInOneLine_data()
{
    QTest::addColumn<QByteArray>("display");

    QTest::newRow("local") << QByteArray(":4711");
    QTest::newRow("local, with its screen") << QByteArray(":4711.0");
    QTest::newRow("local, in words") << QByteArray("unix:4711");
    QTest::newRow("forwarded") << QByteArray("localhost:4711.0");
}

void TestDisplayCheck::deadXServerIsToldInOneLine()
{
    QFETCH(QByteArray, display);
    qputenv("DISPLAY", display);

    QVERIFY(missingDisplay().contains(QString::fromLatin1(display)));
    QVERIFY(!missingDisplay().contains(QLatin1Char('\n')));
}

void TestDisplayCheck::xServerOfAHostIsKnockedAt()
{
    QTcpServer server;
    int number = 900;
    while (number < 990 && !server.listen(QHostAddress::LocalHost, static_cast<quint16>(6000 + number)))
        ++number;
    QVERIFY(server.isListening());
    qputenv("DISPLAY", "127.0.0.1:" + QByteArray::number(number));

    QCOMPARE(missingDisplay(), QString());
}

void TestDisplayCheck::compositorIsKnockedAt()
{
    const QTemporaryDir folder;
    QLocalServer server;
    QVERIFY(server.listen(folder.filePath(QStringLiteral("wayland-7"))));
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "wayland-7");

    QCOMPARE(missingDisplay(), QString());
    qputenv("WAYLAND_DISPLAY", folder.filePath(QStringLiteral("wayland-7")).toLocal8Bit());
    QCOMPARE(missingDisplay(), QString());
}

void TestDisplayCheck::deadCompositorIsTold()
{
    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "wayland-7");

    QVERIFY(missingDisplay().contains(QStringLiteral("wayland-7")));
}

void TestDisplayCheck::oneOfTwoIsEnough()
{
    const QTemporaryDir folder;
    QLocalServer server;
    QVERIFY(server.listen(folder.filePath(QStringLiteral("wayland-7"))));
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "wayland-7");
    qputenv("DISPLAY", ":4711");

    QCOMPARE(missingDisplay(), QString());
}

void TestDisplayCheck::platformWithoutADisplayNeedsNone()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");

    QCOMPARE(missingDisplay(), QString());
}

QTEST_GUILESS_MAIN(TestDisplayCheck)
#include "tst_displaycheck.moc"
