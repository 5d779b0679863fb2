// SPDX-License-Identifier: Apache-2.0
#include "ListCommand.h"
#include "Options.h"
#include "WatchCommand.h"

#include "ScriptedAccess.h"
#include "ScriptedRecords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QTemporaryFile>
#include <QtTest>

#include <unistd.h>

#include <cstdio>
#include <functional>

/// The commands on a scripted device access: what no camera can be made to do.
class tst_kel_devices_commands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The engine's log lines would go to stdout here.
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.info=false")); }
    void init() { scriptedAccess().reset(); }
    void wrongArgumentsAreToldInOneLine_data();
    void wrongArgumentsAreToldInOneLine();
    void transportsAreAllOnesByDefault();
    void listTakesOnePassOfEveryTransport();
    void listHoldsTheDevicesOfEveryTransport();
    void failedTransportGivesStatusOneAndItsCode();
    void failureOfOneTransportKeepsTheDevicesOfOthers();
    void listWithATimeRepeatsPasses();
    void listWaitsForTheFirstPassHoweverShortItsTime();
    void interfacesNameTheirProducer();
    void watchRequestsNoPassWhileOneRuns();
    void watchWithATimeEnds();
    void watchWritesJsonWhereNoTerminalReadsIt();
};

namespace
{

Options options(const QStringList &words)
{
    QString error;
    const auto read = readOptions(QStringList{QStringLiteral("kel-devices")} + words, error);
    return read.value_or(Options());
}

/// Runs the event loop with stdout going to a file.
QByteArray stdoutOf(const std::function<void()> &run)
{
    QTemporaryFile file;
    file.open();
    std::fflush(stdout);
    const int terminal = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    run();
    std::fflush(stdout);
    dup2(terminal, STDOUT_FILENO);
    close(terminal);
    QFile written(file.fileName());
    written.open(QIODevice::ReadOnly);
    return written.readAll();
}

struct ListResult {
    int status = -1;
    QJsonObject json;

    QStringList texts(const QString &array, const QString &field) const
    {
        QStringList texts;
        for (const auto &entry : json[array].toArray()) {
            texts.append(entry.toObject()[field].toVariant().toString());
        }
        return texts;
    }
};

ListResult list(const QStringList &words)
{
    ListResult result;
    const QByteArray output = stdoutOf([&] {
        ListCommand command(options(QStringList{QStringLiteral("list"), QStringLiteral("--json")} + words));
        command.start();
        result.status = QCoreApplication::exec();
    });
    result.json = QJsonDocument::fromJson(output).object();
    return result;
}

} // namespace

void tst_kel_devices_commands::wrongArgumentsAreToldInOneLine_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const QString &words, const QString &named) {
        QTest::newRow(name) << words.split(QLatin1Char(' '), Qt::SkipEmptyParts) << named;
    };
    row("no command", QString(), QStringLiteral("list or watch"));
    row("unknown command", QStringLiteral("show"), QStringLiteral("show"));
    row("two commands", QStringLiteral("list watch"), QStringLiteral("watch"));
    row("unknown option", QStringLiteral("list --colour"), QStringLiteral("colour"));
    row("unknown transport", QStringLiteral("list --transport gige,firewire"), QStringLiteral("firewire"));
    row("empty transport", QStringLiteral("list --transport gige,"), QStringLiteral("transport"));
    row("time that is no number", QStringLiteral("list --timeout soon"), QStringLiteral("soon"));
    row("negative time", QStringLiteral("list --timeout=-1"), QStringLiteral("-1"));
    row("endless time", QStringLiteral("list --timeout 99999999999"), QStringLiteral("99999999999"));
    row("interval of nothing", QStringLiteral("watch --interval 0"), QStringLiteral("interval"));
    row("option without its value", QStringLiteral("list --timeout"), QStringLiteral("timeout"));
    row("missing producer", QStringLiteral("list --cti /nonexistent.cti"), QStringLiteral("/nonexistent.cti"));
    row("producer without gentl", QStringLiteral("list --transport usb --cti /bin/sh"),
        QStringLiteral("gentl"));
}

void tst_kel_devices_commands::wrongArgumentsAreToldInOneLine()
{
    QFETCH(QStringList, words);
    QFETCH(QString, named);
    QString error;

    const auto read = readOptions(QStringList{QStringLiteral("kel-devices")} + words, error);

    QVERIFY(!read);
    QVERIFY2(error.contains(named), qPrintable(error));
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

void tst_kel_devices_commands::transportsAreAllOnesByDefault()
{
    QCOMPARE(
        options({QStringLiteral("list")}).transports,
        (QVector<KELA_INTERFACE_TYPE>{KELA_INTERFACE_TYPE_GIGE, KELA_INTERFACE_TYPE_USB,
                                      KELA_INTERFACE_TYPE_CAMERALINK, KELA_INTERFACE_TYPE_GENTL_INTERFACE}));
}

void tst_kel_devices_commands::listTakesOnePassOfEveryTransport()
{
    const ListResult result = list({});

    QCOMPARE(result.status, 0);
    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t{3});
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_kel_devices_commands::listHoldsTheDevicesOfEveryTransport()
{
    scriptedAccess().plug(gigeCamera("G-1"));
    scriptedAccess().plug(usbCamera("U-1"));
    scriptedAccess().plug(cameraLinkCamera("C-1", "port0"));

    const ListResult result = list({});

    QCOMPARE(result.texts(QStringLiteral("devices"), QStringLiteral("serial")),
             (QStringList{QStringLiteral("G-1"), QStringLiteral("U-1"), QStringLiteral("C-1")}));
    QCOMPARE(result.texts(QStringLiteral("devices"), QStringLiteral("stateText")),
             (QStringList{QStringLiteral("free"), QStringLiteral("free"), QStringLiteral("free")}));
}

void tst_kel_devices_commands::failedTransportGivesStatusOneAndItsCode()
{
    scriptedAccess().failNext(KELA_ERROR_PERMISSION);

    const ListResult result = list({QStringLiteral("--transport"), QStringLiteral("usb")});

    QCOMPARE(result.status, 1);
    QCOMPARE(result.texts(QStringLiteral("errors"), QStringLiteral("transport")),
             QStringList{QStringLiteral("usb")});
    QCOMPARE(
        result.json[QStringLiteral("errors")].toArray().at(0).toObject()[QStringLiteral("code")].toDouble(),
        double{KELA_ERROR_PERMISSION});
}

void tst_kel_devices_commands::failureOfOneTransportKeepsTheDevicesOfOthers()
{
    scriptedAccess().plug(gigeCamera("G-1"));
    scriptedAccess().plug(usbCamera("U-1"));
    scriptedAccess().failNext(KELA_ERROR_PERMISSION);

    const ListResult result = list({QStringLiteral("--transport"), QStringLiteral("gige,usb")});

    QCOMPARE(result.status, 1);
    QCOMPARE(result.json[QStringLiteral("devices")].toArray().size(), 1);
}

void tst_kel_devices_commands::listWithATimeRepeatsPasses()
{
    list({QStringLiteral("--transport"), QStringLiteral("gige"), QStringLiteral("--timeout"),
          QStringLiteral("500"), QStringLiteral("--interval"), QStringLiteral("50")});

    QVERIFY(scriptedAccess().count(Operation::EnumDevices) >= 3);
}

void tst_kel_devices_commands::listWaitsForTheFirstPassHoweverShortItsTime()
{
    scriptedAccess().plug(gigeCamera("G-1"));

    const ListResult result = list({QStringLiteral("--transport"), QStringLiteral("gige"),
                                    QStringLiteral("--timeout"), QStringLiteral("0")});

    QCOMPARE(result.json[QStringLiteral("devices")].toArray().size(), 1);
}

void tst_kel_devices_commands::interfacesNameTheirProducer()
{
    QTemporaryFile left;
    QTemporaryFile right;
    QVERIFY(left.open());
    QVERIFY(right.open());
    scriptedAccess().plugInterface(left.fileName().toStdString(), genTLInterface("if-left", 1));
    scriptedAccess().plugInterface(right.fileName().toStdString(), genTLInterface("if-right", 2));
    scriptedAccess().plug(genTLDevice("D-1", "if-right", 2));

    const ListResult result =
        list({QStringLiteral("--transport"), QStringLiteral("gentl"), QStringLiteral("--cti"), left.fileName(),
              QStringLiteral("--cti"), right.fileName()});

    QCOMPARE(result.texts(QStringLiteral("interfaces"), QStringLiteral("producer")),
             (QStringList{left.fileName(), right.fileName()}));
    QCOMPARE(result.texts(QStringLiteral("devices"), QStringLiteral("serial")),
             QStringList{QStringLiteral("D-1")});
    QCOMPARE(result.texts(QStringLiteral("devices"), QStringLiteral("interfaceId")),
             QStringList{result.texts(QStringLiteral("interfaces"), QStringLiteral("id")).at(1)});
}

void tst_kel_devices_commands::watchRequestsNoPassWhileOneRuns()
{
    scriptedAccess().stall(Operation::EnumDevices);
    stdoutOf([] {
        WatchCommand command(
            options({QStringLiteral("watch"), QStringLiteral("--transport"), QStringLiteral("gige"),
                     QStringLiteral("--interval"), QStringLiteral("10")}));
        command.start();
        QTimer::singleShot(300, &command, &WatchCommand::stop);
        QCoreApplication::exec();
    });

    QCOMPARE(scriptedAccess().count(Operation::EnumDevices), std::size_t{1});
    QCOMPARE(scriptedAccess().objectCount(), 0);
}

void tst_kel_devices_commands::watchWithATimeEnds()
{
    scriptedAccess().plug(gigeCamera("G-1"));
    int status = -1;

    const QByteArray output = stdoutOf([&status] {
        WatchCommand command(
            options({QStringLiteral("watch"), QStringLiteral("--transport"), QStringLiteral("gige"),
                     QStringLiteral("--json"), QStringLiteral("--timeout"), QStringLiteral("200")}));
        command.start();
        status = QCoreApplication::exec();
    });

    QCOMPARE(status, 0);
    QVERIFY(output.contains("\"event\":\"deviceNew\""));
}

void tst_kel_devices_commands::watchWritesJsonWhereNoTerminalReadsIt()
{
    scriptedAccess().plug(gigeCamera("G-1"));

    const QByteArray output = stdoutOf([] {
        WatchCommand command(
            options({QStringLiteral("watch"), QStringLiteral("--transport"), QStringLiteral("gige"),
                     QStringLiteral("--timeout"), QStringLiteral("200")}));
        command.start();
        QCoreApplication::exec();
    });

    QVERIFY(output.contains("\"event\":\"deviceNew\""));
}

QTEST_GUILESS_MAIN(tst_kel_devices_commands)
#include "tst_kel_devices_commands.moc"
