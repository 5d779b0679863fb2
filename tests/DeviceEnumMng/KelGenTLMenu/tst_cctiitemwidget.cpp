// SPDX-License-Identifier: Apache-2.0
#include "DeviceEnumMng/KelGenTLMenu/CCtiItemWidget.h"

#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomRadioButton.h>

#include <QTranslator>
#include <QVBoxLayout>
#include <QtTest>

namespace
{

/// What a user sees of a row.
struct Row {
    Row(const QString &name, int state)
        : widget(name, state, nullptr)
    {
        box = widget.findChild<CustomCheckBox *>();
        const auto radios = widget.findChildren<CustomRadioButton *>();
        for (CustomRadioButton *radio : radios) {
            (radio->text() == QLatin1String("Virtual Port") ? virtualPort : byDefault) = radio;
        }
    }

    CCtiItemWidget widget;
    CustomCheckBox *box = nullptr;
    CustomRadioButton *byDefault = nullptr;
    CustomRadioButton *virtualPort = nullptr;
};

/// Answers every text of the menu's context with its capitals.
class CapitalTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "KelGenTLMenu") == 0 ? QString::fromLatin1(source).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestCCtiItemWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainProducerHasNoChoiceAndReportsOneWhenChecked();
    void uncheckedRowReportsZero();
    void suffixIsRemovedWhereverItStands();
    void choiceIsOfferedForTheNameInAnyLetterCase();
    void choiceIsLookedForInTheNameWithoutSuffix();
    void storedVirtualPortIsShownAndReported();
    void anyOtherStateStartsCheckedWithDefault();
    void uncheckingHidesBothRadios();
    void uncheckedRowStartsWithHiddenRadios();
    void radiosExcludeEachOther();
    void rowLooksAsDefined();
    void disabledVirtualPortKeepsTheStoredState_data();
    void disabledVirtualPortKeepsTheStoredState();
    void disabledVirtualPortShowsDefaultAndDisabledRadios();
    void enabledAgainReportsFromTheRadios();
    void disablingIsNoMatterForARowWithoutChoice();
    void uncheckedRowReportsZeroAlsoWhileDisabled();
    void languageChangeRetranslatesTheRadios();
};

void TestCCtiItemWidget::plainProducerHasNoChoiceAndReportsOneWhenChecked()
{
    Row row(QStringLiteral("abc.cti"), 0);
    QCOMPARE(row.box->text(), QStringLiteral("abc"));
    QVERIFY(!row.byDefault && !row.virtualPort);
    QVERIFY(!row.box->isChecked());

    row.box->click();

    QCOMPARE(row.widget.GetCtiState(), 1);
}

void TestCCtiItemWidget::uncheckedRowReportsZero()
{
    Row row(QStringLiteral("abc.cti"), 1);
    row.box->click();

    QCOMPARE(row.widget.GetCtiState(), 0);
}

void TestCCtiItemWidget::suffixIsRemovedWhereverItStands()
{
    QCOMPARE(Row(QStringLiteral("x.cti.cti"), 0).box->text(), QStringLiteral("x"));
    QCOMPARE(Row(QStringLiteral("a.ctib.cti"), 0).box->text(), QStringLiteral("ab"));
    QCOMPARE(Row(QStringLiteral("a.CTI"), 0).box->text(), QStringLiteral("a.CTI"));
}

void TestCCtiItemWidget::choiceIsOfferedForTheNameInAnyLetterCase()
{
    QVERIFY(Row(QStringLiteral("KelFGProducerCML.cti"), 1).virtualPort);
    QVERIFY(Row(QStringLiteral("othercmlproducer.cti"), 1).virtualPort);
    QVERIFY(Row(QStringLiteral("cMl.cti"), 1).virtualPort);
}

void TestCCtiItemWidget::choiceIsLookedForInTheNameWithoutSuffix()
{
    QVERIFY(Row(QStringLiteral("cm.ctil.cti"), 1).virtualPort);
    QVERIFY(!Row(QStringLiteral("cm-l.cti"), 1).virtualPort);
}

void TestCCtiItemWidget::storedVirtualPortIsShownAndReported()
{
    Row row(QStringLiteral("KelFGProducerCML.cti"), 2);

    QCOMPARE(row.box->text(), QStringLiteral("KelFGProducerCML"));
    QVERIFY(row.box->isChecked());
    QVERIFY(row.virtualPort->isChecked());
    QVERIFY(!row.byDefault->isChecked());
    QVERIFY(!row.virtualPort->isHidden() && !row.byDefault->isHidden());
    QCOMPARE(row.widget.GetCtiState(), 2);
}

void TestCCtiItemWidget::anyOtherStateStartsCheckedWithDefault()
{
    Row row(QStringLiteral("CML.cti"), -5);

    QVERIFY(row.box->isChecked());
    QVERIFY(row.byDefault->isChecked());
    QCOMPARE(row.widget.GetCtiState(), 1);
}

void TestCCtiItemWidget::uncheckingHidesBothRadios()
{
    Row row(QStringLiteral("KelFGProducerCML.cti"), 2);
    row.box->click();

    QVERIFY(row.virtualPort->isHidden() && row.byDefault->isHidden());
    QCOMPARE(row.widget.GetCtiState(), 0);

    row.box->click();

    QVERIFY(!row.virtualPort->isHidden() && !row.byDefault->isHidden());
    QCOMPARE(row.widget.GetCtiState(), 2);
}

void TestCCtiItemWidget::uncheckedRowStartsWithHiddenRadios()
{
    Row row(QStringLiteral("CML.cti"), 0);

    QVERIFY(row.virtualPort->isHidden() && row.byDefault->isHidden());
    QVERIFY(row.byDefault->isChecked());
}

void TestCCtiItemWidget::radiosExcludeEachOther()
{
    Row row(QStringLiteral("CML.cti"), 1);
    QCOMPARE(row.virtualPort->parentWidget(), row.byDefault->parentWidget());
    row.virtualPort->click();

    QVERIFY(!row.byDefault->isChecked());
    QCOMPARE(row.widget.GetCtiState(), 2);
}

void TestCCtiItemWidget::rowLooksAsDefined()
{
    Row row(QStringLiteral("CML.cti"), 1);
    const auto *outer = qobject_cast<QVBoxLayout *>(row.widget.layout());
    const auto *inner = qobject_cast<QVBoxLayout *>(row.byDefault->parentWidget()->layout());
    QVERIFY(outer && inner);

    QCOMPARE(outer->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(outer->spacing(), 0);
    QCOMPARE(outer->itemAt(0)->widget(), static_cast<QWidget *>(row.box));
    QCOMPARE(outer->itemAt(1)->widget(), row.byDefault->parentWidget());
    QCOMPARE(inner->contentsMargins(), QMargins(26, 0, 0, 0));
    QCOMPARE(inner->spacing(), 0);
    QCOMPARE(inner->itemAt(0)->widget(), static_cast<QWidget *>(row.byDefault));
    QCOMPARE(inner->itemAt(1)->widget(), static_cast<QWidget *>(row.virtualPort));
    QCOMPARE(row.box->minimumHeight(), 30);
    QCOMPARE(row.box->maximumHeight(), 30);
    QCOMPARE(row.byDefault->maximumHeight(), 30);
    QCOMPARE(row.virtualPort->maximumHeight(), 30);
}

void TestCCtiItemWidget::disabledVirtualPortKeepsTheStoredState_data()
{
    QTest::addColumn<int>("stored");
    QTest::newRow("opened by virtual port") << 2;
    QTest::newRow("opened the default way") << 1;
    QTest::newRow("off, box checked since") << 0;
}

void TestCCtiItemWidget::disabledVirtualPortKeepsTheStoredState()
{
    QFETCH(int, stored);
    Row row(QStringLiteral("CML.cti"), stored);
    row.widget.SetEnableVirtualPort(false);
    row.box->setChecked(true);

    QCOMPARE(row.widget.GetCtiState(), stored);
}

void TestCCtiItemWidget::disabledVirtualPortShowsDefaultAndDisabledRadios()
{
    Row row(QStringLiteral("CML.cti"), 2);
    row.widget.SetEnableVirtualPort(false);

    QVERIFY(row.byDefault->isChecked() && !row.virtualPort->isChecked());
    QVERIFY(!row.byDefault->isEnabled() && !row.virtualPort->isEnabled());
}

void TestCCtiItemWidget::enabledAgainReportsFromTheRadios()
{
    Row row(QStringLiteral("CML.cti"), 2);
    row.widget.SetEnableVirtualPort(false);
    row.widget.SetEnableVirtualPort(true);

    QVERIFY(row.byDefault->isEnabled() && row.virtualPort->isEnabled());
    QCOMPARE(row.widget.GetCtiState(), 1);

    row.virtualPort->click();

    QCOMPARE(row.widget.GetCtiState(), 2);
}

void TestCCtiItemWidget::disablingIsNoMatterForARowWithoutChoice()
{
    Row row(QStringLiteral("abc.cti"), 0);
    row.widget.SetEnableVirtualPort(false);
    row.box->click();

    QCOMPARE(row.widget.GetCtiState(), 1);
}

void TestCCtiItemWidget::uncheckedRowReportsZeroAlsoWhileDisabled()
{
    Row row(QStringLiteral("CML.cti"), 2);
    row.widget.SetEnableVirtualPort(false);
    row.box->click();

    QCOMPARE(row.widget.GetCtiState(), 0);
}

void TestCCtiItemWidget::languageChangeRetranslatesTheRadios()
{
    Row row(QStringLiteral("CML.cti"), 1);
    CapitalTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&row.widget, &change);
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(row.byDefault->text(), QStringLiteral("DEFAULT"));
    QCOMPARE(row.virtualPort->text(), QStringLiteral("VIRTUAL PORT"));
}

QTEST_MAIN(TestCCtiItemWidget)
#include "tst_cctiitemwidget.moc"
