// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include <CommonTools/KelInterface.h>

#include <QAction>
#include <QFileInfo>
#include <QRadioButton>
#include <QSettings>
#include <QTest>

/// What the user chooses in the menus takes effect and is kept.
class TestBrowserMenus : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void encodingSurvivesARestart();
    void rowButtonsSurviveARestart();
    void acknowledgeModeIsWrittenForTheNextStart();
    void virtualPortsCanBeForbidden();

private:
    QList<QRadioButton *> virtualPortChoices() const;
};

QList<QRadioButton *> TestBrowserMenus::virtualPortChoices() const
{
    QList<QRadioButton *> choices;
    const QList<QRadioButton *> all = tree()->findChildren<QRadioButton *>();
    for (QRadioButton *choice : all) {
        if (choice->text() == QStringLiteral("Virtual Port"))
            choices.append(choice);
    }
    return choices;
}

void TestBrowserMenus::encodingSurvivesARestart()
{
    QCOMPARE(KelInterface::GetEncodingType(), int(KelInterface::EncodingUtf8));
    trigger(QStringLiteral("GB18030"));
    QCOMPARE(KelInterface::GetEncodingType(), int(KelInterface::EncodingGb18030));
    QVERIFY(action(QStringLiteral("GB18030"))->isChecked());
    QVERIFY(!action(QStringLiteral("UTF-8"))->isChecked());

    closeWindow();
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
    openWindow();

    QCOMPARE(KelInterface::GetEncodingType(), int(KelInterface::EncodingGb18030));
    QVERIFY(action(QStringLiteral("GB18030"))->isChecked());
    trigger(QStringLiteral("UTF-8"));
    QCOMPARE(KelInterface::GetEncodingType(), int(KelInterface::EncodingUtf8));
}

void TestBrowserMenus::rowButtonsSurviveARestart()
{
    QVERIFY(action(QStringLiteral("Buttons in rows"))->isChecked());
    trigger(QStringLiteral("Buttons in rows"));
    QVERIFY(!action(QStringLiteral("Buttons in rows"))->isChecked());

    closeWindow();
    openWindow();

    QVERIFY(!action(QStringLiteral("Buttons in rows"))->isChecked());
}

void TestBrowserMenus::acknowledgeModeIsWrittenForTheNextStart()
{
    const auto written = [] {
        const QSettings file(KelInterface::programDataPath() + QStringLiteral("/LocalConfig.ini"),
                             QSettings::IniFormat);
        return file.value(QStringLiteral("General/EunmAckMode"), -1).toInt();
    };
    const QString toUsOnly = QStringLiteral("To this computer only: less traffic for others");
    const QString byBroadcast = QStringLiteral("By broadcast: cameras of other subnets are found too");
    QVERIFY(action(byBroadcast)->isChecked());

    trigger(toUsOnly);
    QCOMPARE(written(), 0);
    QVERIFY(action(toUsOnly)->isChecked());
    QVERIFY(!action(byBroadcast)->isChecked());

    trigger(byBroadcast);
    QCOMPARE(written(), 1);
}

void TestBrowserMenus::virtualPortsCanBeForbidden()
{
    if (!QFileInfo::exists(QStringLiteral("/opt/KELS/lib/64/KelFGSampleGEV.cti")))
        QSKIP("no private /opt here");
    const QList<QRadioButton *> choices = virtualPortChoices();
    QVERIFY(!choices.isEmpty());
    for (const QRadioButton *choice : choices)
        QVERIFY(choice->isEnabled());

    trigger(QStringLiteral("Allow virtual ports of producers"));
    for (const QRadioButton *choice : choices)
        QVERIFY(!choice->isEnabled());

    closeWindow();
    openWindow();
    QVERIFY(!virtualPortChoices().isEmpty());
    QVERIFY(!virtualPortChoices().first()->isEnabled());
}

QTEST_MAIN(TestBrowserMenus)
#include "tst_browsermenus.moc"
