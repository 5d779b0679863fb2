// SPDX-License-Identifier: Apache-2.0
#include "SettingsStore.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using browser::SettingsStore;

class TestSettingsStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshStoreSearchesEverythingAutomatically();
    void choicesSurviveARestart();
    void acknowledgeModeIsWrittenWhereTheLibraryReadsIt();
    void acknowledgeModeWrittenByHandIsRead();
    void emptySerialIsNeverKeptOnTop();
    void damagedValuesReadAsDefaults();
};

void TestSettingsStore::freshStoreSearchesEverythingAutomatically()
{
    const QTemporaryDir folder;
    const SettingsStore store(folder.path());

    QCOMPARE(store.transports(), uint(KELA_INTERFACE_TYPE_GIGE | KELA_INTERFACE_TYPE_USB |
                                      KELA_INTERFACE_TYPE_CAMERALINK | KELA_INTERFACE_TYPE_GENTL));
    QVERIFY(store.isAutomaticRefresh());
    QCOMPARE(store.acknowledgeMode(), 1);
    QVERIFY(store.hiddenKinds().isEmpty());
}

void TestSettingsStore::choicesSurviveARestart()
{
    const QTemporaryDir folder;
    {
        SettingsStore store(folder.path());
        store.setTransports(KELA_INTERFACE_TYPE_USB);
        store.setAutomaticRefresh(false);
        store.setLanguage(QStringLiteral("zh_CN"));
        store.setEncoding(2);
        store.setTheme(1);
        store.setStayTop({QStringLiteral("A"), QStringLiteral("B, C")});
        store.setHiddenKinds({QStringLiteral("virtual")});
    }

    const SettingsStore store(folder.path());

    QCOMPARE(store.transports(), uint(KELA_INTERFACE_TYPE_USB));
    QVERIFY(!store.isAutomaticRefresh());
    QCOMPARE(store.language(), QStringLiteral("zh_CN"));
    QCOMPARE(store.encoding(), 2);
    QCOMPARE(store.theme(), 1);
    QCOMPARE(store.stayTop(), (QStringList{QStringLiteral("A"), QStringLiteral("B, C")}));
    QCOMPARE(store.hiddenKinds(), QStringList{QStringLiteral("virtual")});
}

void TestSettingsStore::acknowledgeModeIsWrittenWhereTheLibraryReadsIt()
{
    const QTemporaryDir folder;
    SettingsStore store(folder.path());

    store.setAcknowledgeMode(0);

    const QSettings library(folder.filePath(QStringLiteral("LocalConfig.ini")), QSettings::IniFormat);
    QCOMPARE(library.value(QStringLiteral("General/EunmAckMode")).toInt(), 0);
    QCOMPARE(store.acknowledgeMode(), 0);
}

void TestSettingsStore::acknowledgeModeWrittenByHandIsRead()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("LocalConfig.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nEunmAckMode=0\n");
    file.close();

    SettingsStore store(folder.path());
    QCOMPARE(store.acknowledgeMode(), 0);

    // What the user chooses later counts.
    store.setAcknowledgeMode(1);
    QCOMPARE(store.acknowledgeMode(), 1);
}

void TestSettingsStore::emptySerialIsNeverKeptOnTop()
{
    const QTemporaryDir folder;
    SettingsStore store(folder.path());

    store.setStayTop({QString(), QStringLiteral("A"), QStringLiteral("A")});

    QCOMPARE(store.stayTop(), QStringList{QStringLiteral("A")});
}

void TestSettingsStore::damagedValuesReadAsDefaults()
{
    const QTemporaryDir folder;
    {
        QSettings file(folder.filePath(QStringLiteral("DeviceBrowser.ini")), QSettings::IniFormat);
        file.setValue(QStringLiteral("View/Theme"), QStringLiteral("pink"));
        file.setValue(QStringLiteral("View/Encoding"), 99);
        file.setValue(QStringLiteral("View/Language"), QStringLiteral("xx"));
        file.setValue(QStringLiteral("Search/Transports"), QStringLiteral("all of them"));
        QSettings library(folder.filePath(QStringLiteral("LocalConfig.ini")), QSettings::IniFormat);
        library.setValue(QStringLiteral("General/EunmAckMode"), 7);
    }

    const SettingsStore store(folder.path());

    QCOMPARE(store.theme(), 0);
    QCOMPARE(store.encoding(), 0);
    QVERIFY(store.language() != QStringLiteral("xx"));
    QCOMPARE(store.transports(), 29U);
    QCOMPARE(store.acknowledgeMode(), 1);
}

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settingsstore.moc"
