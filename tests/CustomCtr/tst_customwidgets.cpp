// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomMenu.h>
#include <CustomCtr/CustomPushButton.h>
#include <CustomCtr/CustomRadioButton.h>
#include <CustomCtr/CustomTreeWidget.h>
#include <CustomCtr/CustomWidget.h>

#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(Qt::MouseButton)

namespace
{

constexpr QRgb kNone = 0;

class HookedMenu : public CustomMenu
{
public:
    void cLanguageChange() override { ++languageChanges; }

    int languageChanges = 0;
};

// Counts the clicks that a child lets through.
class Ground : public QWidget
{
public:
    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent * /*event*/) override { ++clicks; }
    void mouseReleaseEvent(QMouseEvent * /*event*/) override { ++clicks; }
    void mouseDoubleClickEvent(QMouseEvent * /*event*/) override { ++clicks; }
};

QColor pixelOf(QWidget *widget, const QPoint &position)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(kNone);
    widget->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image.pixelColor(position);
}

} // namespace

class CustomWidgetsTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    QString image(const QString &name, const QColor &color, int size = 10) const
    {
        const QString path = m_folder.path() + QLatin1Char('/') + name;
        QImage made(size, size, QImage::Format_ARGB32);
        made.fill(color);
        return made.save(path) ? path : QString();
    }

private Q_SLOTS:
    void selectorIsADynamicProperty()
    {
        CustomTreeWidget tree;

        tree.cSetStyleSelector(QStringLiteral("DeviceTree"));

        QCOMPARE(tree.property("cStyleSelector").toString(), QStringLiteral("DeviceTree"));
        QCOMPARE(tree.cStyleSelector(), QStringLiteral("DeviceTree"));
    }

    void selectorChangesTheRulesAtOnce()
    {
        CustomPushButton button;
        button.setStyleSheet(QStringLiteral(
            "CustomPushButton[cStyleSelector=\"wide\"] { border: 0px; padding: 0px; min-width: 321px; }"));
        button.ensurePolished();
        QVERIFY(button.minimumWidth() < 321);

        button.cSetStyleSelector(QStringLiteral("wide"));

        QCOMPARE(button.minimumWidth(), 321);
    }

    void checkBoxTakesANumberAsItsSelector()
    {
        CustomCheckBox box;

        box.cSetStyleSelector(2);

        QCOMPARE(box.cStyleSelector(), QStringLiteral("2"));
    }

    void userDataIsKept()
    {
        CustomPushButton button;
        QVERIFY(!button.cUserData().isValid());

        button.cSetUserData(true);

        QCOMPARE(button.cUserData(), QVariant(true));
    }

    void menuCallsTheLanguageHookOnALanguageChange()
    {
        HookedMenu menu;
        QEvent change(QEvent::LanguageChange);
        QEvent other(QEvent::FontChange);

        QCoreApplication::sendEvent(&menu, &change);
        QCoreApplication::sendEvent(&menu, &other);

        QCOMPARE(menu.languageChanges, 1);
    }

    void widgetBecomesTheContentOfASubMenu()
    {
        CustomMenu menu;
        auto *panel = new QLabel(QStringLiteral("panel"));
        const QPointer<QLabel> watched(panel);

        QMenu *subMenu = menu.cAddCustomWidgetMenu(panel);

        QVERIFY(menu.actions().contains(subMenu->menuAction()));
        QVERIFY(subMenu->isAncestorOf(panel));
        subMenu->setTitle(QStringLiteral("Default Load"));
        QCOMPARE(menu.actions().constFirst()->text(), QStringLiteral("Default Load"));
        menu.popup(QPoint());
        subMenu->popup(QPoint());
        QVERIFY(panel->isVisible());
        subMenu->hide();
        QVERIFY(watched && !panel->isVisible());
    }

    void subMenuAndItsWidgetBelongToTheMenu()
    {
        auto *menu = new CustomMenu;
        const QPointer<QLabel> panel(new QLabel);
        const QPointer<QMenu> subMenu(menu->cAddCustomWidgetMenu(panel));

        delete menu;

        QVERIFY(!panel);
        QVERIFY(!subMenu);
    }

    void buttonShowsTheImageOfItsState()
    {
        CustomPushButton button;
        button.cSetBackgroundImage(image(QStringLiteral("n.png"), Qt::green), Custom::StatusNormal, {});
        button.cSetBackgroundImage(image(QStringLiteral("h.png"), Qt::blue), Custom::StatusHover, {});
        button.cSetBackgroundImage(image(QStringLiteral("p.png"), Qt::yellow), Custom::StatusPressed, {});
        button.cSetBackgroundImage(image(QStringLiteral("d.png"), Qt::red), Custom::StatusDisabled, {});
        button.resize(10, 10);
        const QPoint middle(5, 5);

        QCOMPARE(pixelOf(&button, middle), QColor(Qt::green));
        button.setAttribute(Qt::WA_UnderMouse);
        QCOMPARE(pixelOf(&button, middle), QColor(Qt::blue));
        button.setDown(true);
        QCOMPARE(pixelOf(&button, middle), QColor(Qt::yellow));
        button.setEnabled(false);
        QCOMPARE(pixelOf(&button, middle), QColor(Qt::red));
    }

    void stateWithoutAnImageShowsTheNormalOne()
    {
        CustomPushButton button;
        button.cSetBackgroundImage(image(QStringLiteral("n.png"), Qt::green), Custom::StatusNormal, {});
        button.resize(10, 10);

        button.setEnabled(false);

        QCOMPARE(pixelOf(&button, QPoint(5, 5)), QColor(Qt::green));
    }

    void imageThatIsReplacedIsShown()
    {
        CustomPushButton button;
        const QString green = image(QStringLiteral("n.png"), Qt::green);
        button.cSetBackgroundImage(green, Custom::StatusNormal, {});
        button.resize(10, 10);
        QCOMPARE(button.cBackgroundImage(Custom::StatusNormal), green);

        button.cSetBackgroundImage(image(QStringLiteral("r.png"), Qt::red), Custom::StatusNormal, {});

        QCOMPARE(pixelOf(&button, QPoint(5, 5)), QColor(Qt::red));
    }

    void imageStandsAtTheTopInTheMiddleOfAWiderButton()
    {
        CustomPushButton button;
        button.cSetBackgroundImage(image(QStringLiteral("n.png"), Qt::green), Custom::StatusNormal, {});

        button.setFixedSize(30, 30);

        QCOMPARE(pixelOf(&button, QPoint(10, 0)), QColor(Qt::green));
        QCOMPARE(pixelOf(&button, QPoint(19, 9)), QColor(Qt::green));
        QVERIFY(pixelOf(&button, QPoint(9, 0)) != QColor(Qt::green));
        QVERIFY(pixelOf(&button, QPoint(15, 10)) != QColor(Qt::green));
    }

    void buttonIsAsLargeAsItsImage()
    {
        CustomPushButton button;
        button.cSetBackgroundImage(image(QStringLiteral("large.png"), Qt::green, 18), Custom::StatusNormal, {});

        QCOMPARE(button.sizeHint(), QSize(18, 18));
    }

    // Runs once more with a scale factor of 2.
    void imageFitsTheSharpnessOfTheScreen()
    {
        CustomPushButton button;
        image(QStringLiteral("s@2x.png"), Qt::red, 20);
        button.cSetBackgroundImage(image(QStringLiteral("s.png"), Qt::green), Custom::StatusNormal, {});
        button.resize(10, 10);

        const bool isSharp = qEnvironmentVariableIntValue("QT_SCALE_FACTOR") == 2;
        QCOMPARE(button.grab().toImage().pixelColor(5, 5), QColor(isSharp ? Qt::red : Qt::green));
        QCOMPARE(button.sizeHint(), QSize(10, 10));
    }

    void missingImageLeavesAnOrdinaryButton()
    {
        CustomPushButton button;
        button.setText(QStringLiteral("text"));
        const QSize before = button.sizeHint();

        button.cSetBackgroundImage(QStringLiteral("/no/such.png"), Custom::StatusNormal, {});

        QCOMPARE(button.sizeHint(), before);
        button.grab();
    }

    void buttonKeepsClicksToItselfWhenAsked_data()
    {
        QTest::addColumn<Qt::MouseButton>("mouseButton");
        QTest::newRow("left") << Qt::LeftButton;
        QTest::newRow("right") << Qt::RightButton;
        QTest::newRow("middle") << Qt::MiddleButton;
    }

    void buttonKeepsClicksToItselfWhenAsked()
    {
        QFETCH(Qt::MouseButton, mouseButton);
        Ground ground;
        CustomPushButton button(&ground);
        ground.show();

        button.cSetControlClickEvent(true);
        QTest::mouseClick(&button, mouseButton);
        QTest::mouseDClick(&button, mouseButton);

        QCOMPARE(ground.clicks, 0);
    }

    void buttonLetsRightClicksThroughOtherwise()
    {
        Ground ground;
        CustomPushButton button(&ground);
        ground.show();

        QTest::mouseClick(&button, Qt::RightButton);

        QCOMPARE(ground.clicks, 2);
    }

    void buttonMayBeDestroyedByItsClick()
    {
        auto *button = new CustomPushButton;
        button->cSetControlClickEvent(true);
        button->show();
        connect(button, &QPushButton::clicked, this, [button] { delete button; });
        const QPointer<CustomPushButton> watched(button);

        QMouseEvent press(QEvent::MouseButtonPress, QPointF(3, 3), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(3, 3), Qt::LeftButton, Qt::NoButton,
                            Qt::NoModifier);
        QCoreApplication::sendEvent(button, &press);
        QCoreApplication::sendEvent(button, &release);

        QVERIFY(!watched);
    }

    void disabledButtonIsNotClicked()
    {
        CustomPushButton button;
        button.cSetControlClickEvent(true);
        button.setEnabled(false);
        QSignalSpy clicked(&button, &QPushButton::clicked);
        button.show();

        QTest::mouseClick(&button, Qt::LeftButton);

        QCOMPARE(clicked.size(), 0);
    }

    void widgetFillsItsBackground()
    {
        CustomWidget widget;
        widget.resize(20, 20);

        widget.cSetBackgroundColor(QStringLiteral("#303030"), Custom::StatusNormal, {});

        QCOMPARE(pixelOf(&widget, QPoint(10, 10)), QColor(0x30, 0x30, 0x30));
        QCOMPARE(widget.cBackgroundColor(Custom::StatusNormal), QColor(0x30, 0x30, 0x30));
        QVERIFY(!widget.cBackgroundColor(Custom::StatusDisabled).isValid());
    }

    void backgroundFollowsTheState()
    {
        CustomWidget widget;
        widget.resize(20, 20);
        widget.cSetBackgroundColor(QStringLiteral("#102030"), Custom::StatusNormal, {});
        widget.cSetBackgroundColor(QStringLiteral("#405060"), Custom::StatusDisabled, {});

        widget.setEnabled(false);

        QCOMPARE(pixelOf(&widget, QPoint(10, 10)), QColor(0x40, 0x50, 0x60));
    }

    void textCanBeReadOnTheGroundOfTheWidget_data()
    {
        QTest::addColumn<QString>("ground");
        QTest::addColumn<bool>("isTextLight");
        QTest::newRow("dark") << QStringLiteral("#303030") << true;
        QTest::newRow("light") << QStringLiteral("#f0f0f0") << false;
    }

    void textCanBeReadOnTheGroundOfTheWidget()
    {
        QFETCH(QString, ground);
        CustomWidget widget;
        const CustomRadioButton before(&widget);

        widget.cSetBackgroundColor(ground, Custom::StatusNormal, {});
        const CustomCheckBox after(&widget);

        QTEST(qGray(before.palette().color(QPalette::WindowText).rgb()) > 128, "isTextLight");
        QTEST(qGray(after.palette().color(QPalette::WindowText).rgb()) > 128, "isTextLight");
    }

    void widgetWithoutAColourShowsWhatLiesBelow()
    {
        CustomWidget widget;
        widget.resize(20, 20);

        QCOMPARE(pixelOf(&widget, QPoint(10, 10)).alpha(), 0);
    }

    void treeListensToTheHoveringPointerInEveryStyle()
    {
        CustomTreeWidget tree;

        QVERIFY(tree.viewport()->testAttribute(Qt::WA_Hover));
    }
};

QTEST_MAIN(CustomWidgetsTest)
#include "tst_customwidgets.moc"
