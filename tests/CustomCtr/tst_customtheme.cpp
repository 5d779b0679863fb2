// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomPushButton.h>
#include <CustomCtr/CustomTreeWidget.h>
#include <CustomCtr/CustomWidget.h>

#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QStyle>
#include <QtTest>

Q_DECLARE_METATYPE(Custom::Theme)

namespace
{

const QString kStayTopKey = QStringLiteral("DeviceEnumMngColor_KelDeviceTreeDelegate_StayTopItemRole");

qreal luminance(const QColor &color)
{
    const auto linear = [](qreal value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

qreal contrast(const QColor &one, const QColor &other)
{
    const qreal a = luminance(one);
    const qreal b = luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

} // namespace

/// The first tests run before any theme was set.
class CustomThemeTest : public QObject
{
    Q_OBJECT

    static void addThemes()
    {
        QTest::addColumn<Custom::Theme>("theme");
        QTest::newRow("dark") << Custom::ThemeDark;
        QTest::newRow("light") << Custom::ThemeLight;
    }

private Q_SLOTS:
    void hostThatChoosesNoThemeKeepsItsLook()
    {
        const QString style = QApplication::style()->objectName();
        const QPalette palette = QApplication::palette();

        CustomTreeWidget tree;
        tree.cSetStyleSelector(QStringLiteral("DeviceTree"));
        tree.show();

        QCOMPARE(QApplication::style()->objectName(), style);
        QCOMPARE(QApplication::palette(), palette);
        QVERIFY(qApp->styleSheet().isEmpty());
        QCOMPARE(tree.palette().color(QPalette::Base), palette.color(QPalette::Base));
    }

    void themeIsDarkAtFirst() { QCOMPARE(Custom::theme(), Custom::ThemeDark); }

    void stayTopTintLetsTheRowThrough_data() { addThemes(); }

    void stayTopTintLetsTheRowThrough()
    {
        QFETCH(Custom::Theme, theme);
        Custom::setTheme(theme);

        const QBrush tint = Custom::getDataBaseColor(kStayTopKey, QRect());

        QCOMPARE(tint.style(), Qt::SolidPattern);
        QVERIFY(tint.color().alpha() > 0x18);
        QVERIFY(tint.color().alpha() < 0x60);
    }

    void unknownKeyGivesNoBrush()
    {
        QCOMPARE(Custom::getDataBaseColor(QStringLiteral("NoSuchKey"), QRect()).style(), Qt::NoBrush);
        QCOMPARE(Custom::getDataBaseColor(QString(), QRect(0, 0, 5, 5)).style(), Qt::NoBrush);
    }

    void themeReachesSheetAndPalette_data() { addThemes(); }

    void themeReachesSheetAndPalette()
    {
        QFETCH(Custom::Theme, theme);

        Custom::setTheme(theme);

        QCOMPARE(Custom::theme(), theme);
        QCOMPARE(QApplication::palette().color(QPalette::Base),
                 Custom::getDataBaseColor(QStringLiteral("Base"), QRect()).color());
        QVERIFY(!qApp->styleSheet().isEmpty());
    }

    void everyColourOfTheSheetIsInTheTable_data() { addThemes(); }

    void everyColourOfTheSheetIsInTheTable()
    {
        QFETCH(Custom::Theme, theme);
        Custom::setTheme(theme);

        const QRegularExpression placeholder(QStringLiteral("@\\w+@"));
        const QRegularExpressionMatch left = placeholder.match(qApp->styleSheet());

        QVERIFY2(!left.hasMatch(), qPrintable(left.captured()));
    }

    void sheetHasNoColourOfItsOwn()
    {
        QFile sheet(QStringLiteral(":/CustomCtr/styles/theme.qss"));
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(sheet.readAll());

        QVERIFY(!text.contains(QRegularExpression(QStringLiteral("#[0-9a-fA-F]{3,8}\\b|rgba?\\("))));
    }

    void everyImageOfTheSheetExists()
    {
        QFile sheet(QStringLiteral(":/CustomCtr/styles/theme.qss"));
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(sheet.readAll());

        int found = 0;
        auto images = QRegularExpression(QStringLiteral("url\\(([^)]+)\\)")).globalMatch(text);
        while (images.hasNext()) {
            const QString path = images.next().captured(1);
            QVERIFY2(QFile::exists(path), qPrintable(path));
            ++found;
        }
        QVERIFY(found > 8);
    }

    void sheetIsUnderstood()
    {
        static int complaints = 0;
        const QtMessageHandler before =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &) {
                complaints += type != QtDebugMsg;
            });

        Custom::setTheme(Custom::ThemeLight);
        CustomTreeWidget tree;
        tree.ensurePolished();

        qInstallMessageHandler(before);
        QCOMPARE(complaints, 0);
    }

    void textsCanBeReadInBothThemes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("ground");
        for (const char *ground : {"Window", "Base", "Raised", "RowHover", "RowSelected"}) {
            QTest::addRow("Text on %s", ground) << QStringLiteral("Text") << QString::fromLatin1(ground);
        }
        QTest::newRow("TextMuted on Window") << QStringLiteral("TextMuted") << QStringLiteral("Window");
        QTest::newRow("AccentText on Accent") << QStringLiteral("AccentText") << QStringLiteral("Accent");
        QTest::newRow("TextOnDark on #303030") << QStringLiteral("TextOnDark") << QStringLiteral("dark");
    }

    void textsCanBeReadInBothThemes()
    {
        QFETCH(QString, text);
        QFETCH(QString, ground);

        for (const Custom::Theme theme : {Custom::ThemeDark, Custom::ThemeLight}) {
            Custom::setTheme(theme);
            const QColor textColor = Custom::getDataBaseColor(text, QRect()).color();
            const QColor groundColor = ground == QStringLiteral("dark")
                                           ? QColor(0x30, 0x30, 0x30)
                                           : Custom::getDataBaseColor(ground, QRect()).color();
            QVERIFY2(contrast(textColor, groundColor) >= 4.5, qPrintable(QString::number(theme)));
        }
    }

    void viewportOfTheTreeLiesWhereTheTreeLies_data() { addThemes(); }

    void viewportOfTheTreeLiesWhereTheTreeLies()
    {
        QFETCH(Custom::Theme, theme);
        Custom::setTheme(theme);
        CustomTreeWidget tree;
        tree.cSetStyleSelector(QStringLiteral("DeviceTree"));
        tree.setFrameStyle(0);
        tree.setHeaderHidden(true);
        tree.resize(200, 300);
        tree.show();

        QCOMPARE(tree.viewport()->mapTo(&tree, QPoint()), QPoint());
    }

    void rowsOfTheDeviceTreeHaveRoomForTheirButtons()
    {
        Custom::setTheme(Custom::ThemeDark);
        CustomTreeWidget tree;
        tree.cSetStyleSelector(QStringLiteral("DeviceTree"));
        auto *row = new QTreeWidgetItem(&tree, {QStringLiteral("row")});
        tree.show();

        QVERIFY(tree.visualItemRect(row).height() >= 32);
    }

    void treeKeepsListeningToThePointerWhenTheThemeChanges()
    {
        CustomTreeWidget tree;
        tree.show();

        Custom::setTheme(Custom::ThemeLight);
        Custom::setTheme(Custom::ThemeDark);

        QVERIFY(tree.viewport()->testAttribute(Qt::WA_Hover));
    }

    void groundOfAWidgetFollowsTheTheme()
    {
        CustomWidget widget;
        widget.resize(10, 10);
        Custom::setTheme(Custom::ThemeDark);
        widget.cSetBackgroundColor(QStringLiteral("#303030"), Custom::StatusNormal, {});
        QCOMPARE(widget.grab().toImage().pixelColor(5, 5), QColor(0x30, 0x30, 0x30));
        QCOMPARE(widget.property("cGround").toString(), QStringLiteral("dark"));

        Custom::setTheme(Custom::ThemeLight);

        QCOMPARE(widget.grab().toImage().pixelColor(5, 5), QColor(Qt::white));
        QCOMPARE(widget.property("cGround").toString(), QStringLiteral("light"));
    }

    void colourThatTheTableDoesNotKnowStaysInEveryTheme()
    {
        CustomWidget widget;
        widget.resize(10, 10);
        widget.cSetBackgroundColor(QStringLiteral("#123456"), Custom::StatusNormal, {});

        Custom::setTheme(Custom::ThemeLight);

        QCOMPARE(widget.grab().toImage().pixelColor(5, 5), QColor(0x12, 0x34, 0x56));
    }

    void selectedRowKeepsTheColoursOfItsIcon()
    {
        Custom::setTheme(Custom::ThemeDark);
        QPixmap red(24, 24);
        red.fill(QColor(200, 30, 30));

        const QImage selected = QIcon(red).pixmap(24, QIcon::Selected).toImage();

        QCOMPARE(selected.pixelColor(12, 12), QColor(200, 30, 30));
    }

    void imageButtonIsNotStretchedByTheSheet()
    {
        Custom::setTheme(Custom::ThemeDark);
        CustomPushButton button;
        button.cSetBackgroundImage(QStringLiteral(":/CustomCtr/tree/conf.png"), Custom::StatusNormal, {});

        button.setFixedSize(35, 24);
        button.show();

        QCOMPARE(button.size(), QSize(35, 24));
        QCOMPARE(button.sizeHint(), QSize(18, 18));
    }
};

QTEST_MAIN(CustomThemeTest)
#include "tst_customtheme.moc"
