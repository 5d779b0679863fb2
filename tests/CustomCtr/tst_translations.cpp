// SPDX-License-Identifier: Apache-2.0
#include <QTranslator>
#include <QtTest>

#include <algorithm>

namespace
{

struct Text {
    const char *context;
    const char *source;
};

constexpr Text kTexts[] = {
    {"KelDeviceTree", "All"},
    {"KelDeviceTree", "Virtual Device"},
    {"KelDeviceTree", "Other Device"},
    {"KelDeviceTree", "Searching for GenTL devices with the computer..."},
    {"KelDeviceTree", "Searching for CameraLink camera(s) in the same subnet with the computer..."},
    {"KelDeviceTree", "Enumeration failed."},
    {"KelGenTLMenu", "Default Load"},
    {"KelGenTLMenu", "Import Cti File"},
    {"KelGenTLMenu", "Default"},
    {"KelGenTLMenu", "Virtual Port"},
    {"KelGenTLMenu", "Select Cti File."},
    {"KelGenTLMenu", "The cti file have been load."},
    {"KelGenTLMenu", "It is the default load cti file."},
    {"KelGenTLMenu", "Prompt"},
    {"KelInterface", "Unknown error."},
    {"CustomMessageBox", "Cancel"},
};

} // namespace

/// One translator holds the texts of the tree and of the libraries below it.
class TranslationsTest : public QObject
{
    Q_OBJECT

    static void addTexts()
    {
        QTest::addColumn<QString>("context");
        QTest::addColumn<QString>("source");
        for (const Text &text : kTexts) {
            QTest::addRow("%s: %s", text.context, text.source)
                << QString::fromLatin1(text.context) << QString::fromLatin1(text.source);
        }
    }

    static QString translated(const QString &locale, const QString &context, const QString &source)
    {
        QTranslator translator;
        if (!translator.load(QStringLiteral(":/translations/DeviceEnumMng_") + locale)) {
            return QStringLiteral("no catalogue");
        }
        return translator.translate(context.toLatin1(), source.toLatin1());
    }

private Q_SLOTS:
    void sourceIsEnglish_data() { addTexts(); }

    void sourceIsEnglish()
    {
        QFETCH(QString, context);
        QFETCH(QString, source);

        QCOMPARE(translated(QStringLiteral("en"), context, source), source);
    }

    void textIsGerman_data() { addTexts(); }

    void textIsGerman()
    {
        QFETCH(QString, context);
        QFETCH(QString, source);

        const QString text = translated(QStringLiteral("de"), context, source);

        QVERIFY(!text.isEmpty());
        QVERIFY(text != source);
        QVERIFY(text != QStringLiteral("no catalogue"));
    }

    void textIsChinese_data() { addTexts(); }

    void textIsChinese()
    {
        QFETCH(QString, context);
        QFETCH(QString, source);

        const QString text = translated(QStringLiteral("zh_CN"), context, source);

        const bool hasHan = std::any_of(text.cbegin(), text.cend(),
                                        [](QChar letter) { return letter.script() == QChar::Script_Han; });
        QVERIFY2(hasHan, qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "tst_translations.moc"
