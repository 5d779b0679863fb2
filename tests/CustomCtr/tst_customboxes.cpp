// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomLoadingDialog.h>
#include <CustomCtr/CustomMessageBox.h>

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

#include <algorithm>

Q_DECLARE_METATYPE(Custom::IconStyle)

namespace
{

QList<QDialog *> shownDialogs()
{
    QList<QDialog *> dialogs;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *dialog = qobject_cast<QDialog *>(window);
        if (dialog && dialog->isVisible()) {
            dialogs.append(dialog);
        }
    }
    return dialogs;
}

QDialog *onlyDialog()
{
    const QList<QDialog *> dialogs = shownDialogs();
    return dialogs.size() == 1 ? dialogs.constFirst() : nullptr;
}

template <typename Widget>
Widget *widgetWith(const QWidget *window, const QString &text)
{
    const QList<Widget *> widgets = window->findChildren<Widget *>();
    const auto found = std::find_if(widgets.cbegin(), widgets.cend(),
                                    [&text](const Widget *widget) { return widget->text() == text; });
    return found == widgets.cend() ? nullptr : *found;
}

QLabel *labelWith(const QWidget *window, const QString &text)
{
    return widgetWith<QLabel>(window, text);
}

QPushButton *buttonWith(const QWidget *window, const QString &text)
{
    return widgetWith<QPushButton>(window, text);
}

void simple(const QString &text, QWidget *parent = nullptr)
{
    CustomMessageBox::simple(parent, text, QStringLiteral("title"), QString(), Custom::IconHint, false);
}

} // namespace

class CustomBoxesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        Custom::setMainDialog(nullptr);
        for (QDialog *dialog : shownDialogs()) {
            dialog->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(shownDialogs().isEmpty());
    }

    void simpleBoxIsShownAndTheCallReturnsAtOnce()
    {
        bool ranMeanwhile = false;
        QTimer meanwhile;
        connect(&meanwhile, &QTimer::timeout, this, [&ranMeanwhile] { ranMeanwhile = true; });
        meanwhile.start(0);

        simple(QStringLiteral("text"));

        QVERIFY(!ranMeanwhile);
        QVERIFY(onlyDialog());
        QVERIFY(!onlyDialog()->isModal());
    }

    void warningIsModalToItsWindowAndTheCallReturnsAtOnce()
    {
        QWidget window;
        window.show();
        bool ranMeanwhile = false;
        QTimer meanwhile;
        connect(&meanwhile, &QTimer::timeout, this, [&ranMeanwhile] { ranMeanwhile = true; });
        meanwhile.start(0);

        CustomMessageBox::warning(&window, QStringLiteral("text"), QStringLiteral("Prompt"),
                                  CustomMessageBox::ButtonOk, QString());

        QVERIFY(!ranMeanwhile);
        QVERIFY(onlyDialog());
        QCOMPARE(onlyDialog()->windowModality(), Qt::WindowModal);
        QCOMPARE(onlyDialog()->parentWidget(), &window);
    }

    void boxShowsTextTitleAndExtra()
    {
        CustomMessageBox::simple(nullptr, QStringLiteral("the text"), QStringLiteral("the title"),
                                 QStringLiteral("the extra"), Custom::IconWarning, false);

        QVERIFY(onlyDialog());
        QCOMPARE(onlyDialog()->windowTitle(), QStringLiteral("the title"));
        QVERIFY(labelWith(onlyDialog(), QStringLiteral("the text")));
        QVERIFY(labelWith(onlyDialog(), QStringLiteral("the extra")));
    }

    void textsArePlain()
    {
        const QString text = QStringLiteral("<b>bold</b> %1 &amp; <img src='x'>");

        CustomMessageBox::simple(nullptr, text, QString(), text + QLatin1Char('2'), Custom::IconNone, false);

        QCOMPARE(labelWith(onlyDialog(), text)->textFormat(), Qt::PlainText);
        QCOMPARE(labelWith(onlyDialog(), text + QLatin1Char('2'))->textFormat(), Qt::PlainText);
    }

    void cancelButtonIsThereWhenAsked_data()
    {
        QTest::addColumn<bool>("isAsked");
        QTest::newRow("asked") << true;
        QTest::newRow("not asked") << false;
    }

    void cancelButtonIsThereWhenAsked()
    {
        QFETCH(bool, isAsked);

        CustomMessageBox::simple(nullptr, QStringLiteral("t"), QString(), QString(), Custom::IconQuestion,
                                 isAsked);

        QVERIFY(buttonWith(onlyDialog(), QStringLiteral("OK")));
        QTEST(buttonWith(onlyDialog(), QStringLiteral("Cancel")) != nullptr, "isAsked");
    }

    void everyIconIsShown_data()
    {
        QTest::addColumn<Custom::IconStyle>("icon");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("none") << Custom::IconNone << false;
        QTest::newRow("information") << Custom::IconInformation << true;
        QTest::newRow("question") << Custom::IconQuestion << true;
        QTest::newRow("hint") << Custom::IconHint << true;
        QTest::newRow("warning") << Custom::IconWarning << true;
    }

    void everyIconIsShown()
    {
        QFETCH(Custom::IconStyle, icon);

        CustomMessageBox::simple(nullptr, QStringLiteral("t"), QString(), QString(), icon, false);

        bool isShown = false;
        const QList<QLabel *> labels = onlyDialog()->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            isShown = isShown || !label->pixmap(Qt::ReturnByValue).isNull();
        }
        QTEST(isShown, "isShown");
    }

    void secondBoxWithTheSameTextIsNotStacked()
    {
        simple(QStringLiteral("same"));

        simple(QStringLiteral("same"));
        CustomMessageBox::warning(nullptr, QStringLiteral("same"), QStringLiteral("other title"),
                                  CustomMessageBox::ButtonOk, QString());

        QCOMPARE(shownDialogs().size(), 1);
    }

    void boxesWithDifferentTextsStandTogether()
    {
        simple(QStringLiteral("one"));
        simple(QStringLiteral("two"));

        QCOMPARE(shownDialogs().size(), 2);
    }

    void boxComesAgainAfterItWasClosed()
    {
        simple(QStringLiteral("again"));
        onlyDialog()->accept();
        QVERIFY(shownDialogs().isEmpty());

        simple(QStringLiteral("again"));

        QCOMPARE(shownDialogs().size(), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(shownDialogs().size(), 1);
    }

    void closedBoxIsDestroyed()
    {
        simple(QStringLiteral("gone"));
        const QPointer<QDialog> box(onlyDialog());

        QTest::keyClick(box, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        QVERIFY(!box);
    }

    void windowTakesItsBoxAlong()
    {
        auto *window = new QWidget;
        window->show();
        simple(QStringLiteral("with the window"), window);
        delete window;

        simple(QStringLiteral("with the window"));

        QVERIFY(onlyDialog());
    }

    void endlessTextStillFitsTheScreen()
    {
        simple(QString(100000, QLatin1Char('x')) + QStringLiteral(" y"));

        QVERIFY(onlyDialog());
        for (const QLabel *label : onlyDialog()->findChildren<QLabel *>()) {
            QVERIFY(label->text().size() <= 2000);
        }
    }

    void buttonsAreTranslatedWhileTheBoxIsOpen()
    {
        CustomMessageBox::simple(nullptr, QStringLiteral("t"), QString(), QString(), Custom::IconHint, true);
        QVERIFY(buttonWith(onlyDialog(), QStringLiteral("Cancel")));
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/translations/CustomCtr_de")));

        QCoreApplication::installTranslator(&translator);
        QCoreApplication::processEvents();

        QVERIFY(!buttonWith(onlyDialog(), QStringLiteral("Cancel")));
        QVERIFY(buttonWith(onlyDialog(), QStringLiteral("Abbrechen")));
    }

    void loadingDialogIsKeyedByItsNumber()
    {
        CustomLoadingDialog::showLoading(QStringLiteral("one"), 1);
        CustomLoadingDialog::showLoading(QStringLiteral("two"), 4097);
        QCOMPARE(shownDialogs().size(), 2);

        CustomLoadingDialog::hideLoading(1);

        QVERIFY(!CustomLoadingDialog::isLoading(1));
        QVERIFY(CustomLoadingDialog::isLoading(4097));
        QVERIFY(labelWith(onlyDialog(), QStringLiteral("two")));
    }

    void sameNumberChangesTheTextOnly()
    {
        CustomLoadingDialog::showLoading(QStringLiteral("first"), 7);
        const QPointer<QDialog> dialog(onlyDialog());

        CustomLoadingDialog::showLoading(QStringLiteral("second, and longer"), 7);

        QCOMPARE(onlyDialog(), dialog.data());
        QVERIFY(labelWith(dialog, QStringLiteral("second, and longer")));
    }

    void hidingWhatIsNotShownDoesNothing()
    {
        CustomLoadingDialog::hideLoading(99);

        QVERIFY(!CustomLoadingDialog::isLoading(99));
    }

    void loadingDialogBlocksNobody()
    {
        bool ranMeanwhile = false;
        QTimer meanwhile;
        connect(&meanwhile, &QTimer::timeout, this, [&ranMeanwhile] { ranMeanwhile = true; });
        meanwhile.start(0);
        QMainWindow window;
        window.show();

        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);

        QVERIFY(!ranMeanwhile);
        QVERIFY(!onlyDialog()->isModal());
        QVERIFY(onlyDialog()->testAttribute(Qt::WA_ShowWithoutActivating));
    }

    void loadingTextIsPlain()
    {
        CustomLoadingDialog::showLoading(QStringLiteral("<h1>x</h1>"), 1);

        QCOMPARE(labelWith(onlyDialog(), QStringLiteral("<h1>x</h1>"))->textFormat(), Qt::PlainText);
    }

    void loadingDialogStandsOverTheMainWindowAndFollowsIt()
    {
        QMainWindow window;
        Custom::setMainDialog(&window);
        window.setGeometry(100, 100, 600, 400);
        window.show();

        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);
        const auto distance = [&window] {
            const QPoint apart = onlyDialog()->geometry().center() - window.frameGeometry().center();
            return apart.manhattanLength();
        };
        QVERIFY2(distance() <= 2, qPrintable(QString::number(distance())));

        window.move(180, 60);
        QCoreApplication::processEvents();

        QVERIFY2(distance() <= 2, qPrintable(QString::number(distance())));
    }

    void loadingDialogThatTheUserClosedComesAgain()
    {
        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);
        onlyDialog()->reject();
        QVERIFY(!CustomLoadingDialog::isLoading(1));

        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        QVERIFY(CustomLoadingDialog::isLoading(1));
        CustomLoadingDialog::hideLoading(1);
    }

    void loadingDialogGoesWithItsWindow()
    {
        auto *window = new QMainWindow;
        Custom::setMainDialog(window);
        window->show();
        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);

        delete window;

        QVERIFY(!CustomLoadingDialog::isLoading(1));
        CustomLoadingDialog::hideLoading(1);
        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);
        QVERIFY(CustomLoadingDialog::isLoading(1));
        CustomLoadingDialog::hideLoading(1);
    }

    void mainDialogIsTheNamedOneElseAVisibleWindow()
    {
        QVERIFY(!Custom::mainDialog());
        QMainWindow first;
        first.show();
        QCOMPARE(Custom::mainDialog(), &first);
        {
            QMainWindow named;
            Custom::setMainDialog(&named);
            QCOMPARE(Custom::mainDialog(), &named);
        }
        QCOMPARE(Custom::mainDialog(), &first);
    }

    void menusAndOwnBoxesAreNoMainDialog()
    {
        QMenu menu;
        menu.addAction(QStringLiteral("x"));
        menu.popup(QPoint());
        simple(QStringLiteral("box"));
        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);

        QVERIFY(!Custom::mainDialog());

        menu.hide();
        CustomLoadingDialog::hideLoading(1);
    }

    void nothingHereKeepsTheApplicationFromQuitting()
    {
        QMainWindow window;
        window.show();
        simple(QStringLiteral("free"));
        simple(QStringLiteral("over the window"), &window);
        CustomMessageBox::warning(&window, QStringLiteral("warning"), QString(), CustomMessageBox::ButtonOk,
                                  QString());
        CustomLoadingDialog::showLoading(QStringLiteral("text"), 1);
        QSignalSpy quits(qApp, &QGuiApplication::lastWindowClosed);
        QTimer::singleShot(0, &window, &QWidget::close);
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });

        QCOMPARE(QCoreApplication::exec(), 0);

        QCOMPARE(quits.size(), 1);
        CustomLoadingDialog::hideLoading(1);
    }
};

QTEST_MAIN(CustomBoxesTest)
#include "tst_customboxes.moc"
