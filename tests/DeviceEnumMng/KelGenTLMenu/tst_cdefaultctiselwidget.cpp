// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>

#include "producerfolder.h"

#include <CustomCtr/CustomCheckBox.h>
#include <CustomCtr/CustomMenu.h>
#include <CustomCtr/CustomRadioButton.h>

#include <QHideEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QtTest>

#include <algorithm>

class TestCDefaultCtiSelWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void freshFolderStartsWithTheDefaultPrefixSwitchedOn();
    void hidingWritesTheStatesInNameOrder();
    void storedZeroKeepsADefaultProducerOff();
    void storedNameWithoutFileIsDroppedFromTheNextValue();
    void storedUnknownStateCountsAsLoadedAndIsRewrittenAsOne();
    void prefixInAnotherLetterCaseIsNotSwitchedOn();
    void nameWithASeparatorDoesNotSurviveACycle();
    void nameWithAPlaceMarkerSurvivesACycle();
    void storedVirtualPortShowsAndUncheckingItStoresZero();
    void everyHideWritesAndAnnouncesOnce();
    void closingTheMenuAroundThePanelHidesItOnce();
    void statesAreThoseOfTheLatestHideWhileBoxesChange();
    void fileReachesTheDiskAfterTheAnnouncement();
    void emptyFolderGivesNoRowsAndAnEmptyValue();
    void missingFolderGivesNoRows();
    void unreadableFileGivesThePrefixRule();
    void unwritableFileIsIgnored();
    void folderNamedLikeAProducerIsARow();
    void fileThatComesLaterIsNoRow();
    void virtualPortIsForwardedToEveryRow();
    void virtualPortStaysStoredWhileItIsDisabled();
    void mouseReleaseIsKeptFromTheMenu();
    void panelLooksAsDefined();
    void defaultFolderIsTheFixedOne();

private:
    static CustomCheckBox *box(const CDefaultCtiSelWidget &panel, const QString &text);
    static CustomRadioButton *radio(const CDefaultCtiSelWidget &panel, const QString &text);
    static void hide(CDefaultCtiSelWidget &panel);
};

CustomCheckBox *TestCDefaultCtiSelWidget::box(const CDefaultCtiSelWidget &panel, const QString &text)
{
    const auto boxes = panel.findChildren<CustomCheckBox *>();
    const auto found =
        std::find_if(boxes.cbegin(), boxes.cend(), [&](auto *one) { return one->text() == text; });
    return found == boxes.cend() ? nullptr : *found;
}

CustomRadioButton *TestCDefaultCtiSelWidget::radio(const CDefaultCtiSelWidget &panel, const QString &text)
{
    const auto radios = panel.findChildren<CustomRadioButton *>();
    const auto found =
        std::find_if(radios.cbegin(), radios.cend(), [&](auto *one) { return one->text() == text; });
    return found == radios.cend() ? nullptr : *found;
}

void TestCDefaultCtiSelWidget::hide(CDefaultCtiSelWidget &panel)
{
    panel.show();
    panel.hide();
}

void TestCDefaultCtiSelWidget::init()
{
    QVERIFY(ProducerFolder::reset());
}

void TestCDefaultCtiSelWidget::freshFolderStartsWithTheDefaultPrefixSwitchedOn()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("KelFGProducerGEV.cti")));
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(box(panel, QStringLiteral("KelFGProducerGEV"))->isChecked());
    QVERIFY(!box(panel, QStringLiteral("abc"))->isChecked());

    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("KelFGProducerGEV.cti:1;abc.cti:0;"));
}

void TestCDefaultCtiSelWidget::hidingWritesTheStatesInNameOrder()
{
    for (const char *name : {"b.cti", "Z.cti", "a.cti", "A.cti"}) {
        QVERIFY(ProducerFolder::add(QLatin1String(name)));
    }
    CDefaultCtiSelWidget panel(nullptr);
    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("A.cti:0;Z.cti:0;a.cti:0;b.cti:0;"));
}

void TestCDefaultCtiSelWidget::storedZeroKeepsADefaultProducerOff()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("KelFGProducerGEV.cti")));
    ProducerFolder::store(QStringLiteral("KelFGProducerGEV.cti:0;"));
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(!box(panel, QStringLiteral("KelFGProducerGEV"))->isChecked());
    QCOMPARE(panel.GetCtiStates().value(QStringLiteral("KelFGProducerGEV.cti"), -1), 0);
}

void TestCDefaultCtiSelWidget::storedNameWithoutFileIsDroppedFromTheNextValue()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("here.cti")));
    ProducerFolder::store(QStringLiteral("gone.cti:1;here.cti:1;"));
    CDefaultCtiSelWidget panel(nullptr);
    QVERIFY(!box(panel, QStringLiteral("gone")));

    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("here.cti:1;"));
}

void TestCDefaultCtiSelWidget::storedUnknownStateCountsAsLoadedAndIsRewrittenAsOne()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    ProducerFolder::store(QStringLiteral("abc.cti:17;"));
    CDefaultCtiSelWidget panel(nullptr);
    QCOMPARE(panel.GetCtiStates().value(QStringLiteral("abc.cti")), 17);
    QVERIFY(box(panel, QStringLiteral("abc"))->isChecked());

    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("abc.cti:1;"));
}

void TestCDefaultCtiSelWidget::prefixInAnotherLetterCaseIsNotSwitchedOn()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("kelfgproducergev.cti")));
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(!box(panel, QStringLiteral("kelfgproducergev"))->isChecked());
}

void TestCDefaultCtiSelWidget::nameWithASeparatorDoesNotSurviveACycle()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("a;b.cti")));
    QVERIFY(ProducerFolder::add(QStringLiteral("c:d.cti")));
    {
        CDefaultCtiSelWidget panel(nullptr);
        box(panel, QStringLiteral("a;b"))->setChecked(true);
        box(panel, QStringLiteral("c:d"))->setChecked(true);
        hide(panel);
    }
    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("a;b.cti:1;c:d.cti:1;"));
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(!box(panel, QStringLiteral("a;b"))->isChecked());
    QVERIFY(!box(panel, QStringLiteral("c:d"))->isChecked());
}

void TestCDefaultCtiSelWidget::nameWithAPlaceMarkerSurvivesACycle()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("a%1%2.cti")));
    {
        CDefaultCtiSelWidget panel(nullptr);
        box(panel, QStringLiteral("a%1%2"))->setChecked(true);
        hide(panel);
    }
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(box(panel, QStringLiteral("a%1%2"))->isChecked());
}

void TestCDefaultCtiSelWidget::storedVirtualPortShowsAndUncheckingItStoresZero()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("KelFGProducerCML.cti")));
    ProducerFolder::store(QStringLiteral("KelFGProducerCML.cti:2;"));
    CDefaultCtiSelWidget panel(nullptr);
    panel.show();
    QVERIFY(radio(panel, QStringLiteral("Virtual Port"))->isChecked());
    QVERIFY(radio(panel, QStringLiteral("Virtual Port"))->isVisible());

    box(panel, QStringLiteral("KelFGProducerCML"))->click();
    QVERIFY(!radio(panel, QStringLiteral("Virtual Port"))->isVisible());
    QVERIFY(!radio(panel, QStringLiteral("Default"))->isVisible());
    panel.hide();

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("KelFGProducerCML.cti:0;"));
}

void TestCDefaultCtiSelWidget::everyHideWritesAndAnnouncesOnce()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    CDefaultCtiSelWidget panel(nullptr);
    QSignalSpy changed(&panel, &CDefaultCtiSelWidget::SigCtiChanged);
    hide(panel);
    QCOMPARE(changed.count(), 1);
    QVERIFY(QFile::remove(ProducerFolder::configPath()));

    hide(panel);

    QCOMPARE(changed.count(), 2);
    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("abc.cti:0;"));
}

void TestCDefaultCtiSelWidget::closingTheMenuAroundThePanelHidesItOnce()
{
    CustomMenu menu;
    auto *panel = new CDefaultCtiSelWidget(&menu);
    QMenu *sub = menu.cAddCustomWidgetMenu(panel);
    QVERIFY(sub);
    QSignalSpy changed(panel, &CDefaultCtiSelWidget::SigCtiChanged);

    sub->popup(QPoint(0, 0));
    QVERIFY(panel->isVisible());
    sub->close();

    QTRY_COMPARE(changed.count(), 1);
}

void TestCDefaultCtiSelWidget::statesAreThoseOfTheLatestHideWhileBoxesChange()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    CDefaultCtiSelWidget panel(nullptr);
    panel.show();
    box(panel, QStringLiteral("abc"))->click();
    QCOMPARE(panel.GetCtiStates().value(QStringLiteral("abc.cti")), 0);

    panel.hide();

    QCOMPARE(panel.GetCtiStates().value(QStringLiteral("abc.cti")), 1);
}

void TestCDefaultCtiSelWidget::fileReachesTheDiskAfterTheAnnouncement()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    CDefaultCtiSelWidget panel(nullptr);
    bool wasThere = true;
    connect(&panel, &CDefaultCtiSelWidget::SigCtiChanged, this,
            [&wasThere] { wasThere = QFile::exists(ProducerFolder::configPath()); });
    hide(panel);

    QVERIFY(!wasThere);
    QVERIFY(QFile::exists(ProducerFolder::configPath()));
}

void TestCDefaultCtiSelWidget::emptyFolderGivesNoRowsAndAnEmptyValue()
{
    ProducerFolder::store(QStringLiteral("gone.cti:1;"));
    CDefaultCtiSelWidget panel(nullptr);
    QVERIFY(panel.findChildren<CustomCheckBox *>().isEmpty());

    hide(panel);

    QVERIFY(ProducerFolder::stored().isValid());
    QCOMPARE(ProducerFolder::stored().toString(), QString());
}

void TestCDefaultCtiSelWidget::missingFolderGivesNoRows()
{
    QVERIFY(QDir(ProducerFolder::kFolder).removeRecursively());
    CDefaultCtiSelWidget panel(nullptr);
    QVERIFY(panel.GetCtiStates().isEmpty());

    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QString());
}

void TestCDefaultCtiSelWidget::unreadableFileGivesThePrefixRule()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("KelFG.cti")));
    QVERIFY(QDir().mkpath(ProducerFolder::configPath()));
    CDefaultCtiSelWidget panel(nullptr);
    QVERIFY(QDir().rmdir(ProducerFolder::configPath()));

    QVERIFY(box(panel, QStringLiteral("KelFG"))->isChecked());
}

void TestCDefaultCtiSelWidget::unwritableFileIsIgnored()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    QVERIFY(QDir().mkpath(ProducerFolder::configPath()));
    CDefaultCtiSelWidget panel(nullptr);
    QSignalSpy changed(&panel, &CDefaultCtiSelWidget::SigCtiChanged);
    hide(panel);
    QVERIFY(QDir().rmdir(ProducerFolder::configPath()));

    QCOMPARE(changed.count(), 1);
}

void TestCDefaultCtiSelWidget::folderNamedLikeAProducerIsARow()
{
    QVERIFY(QDir().mkpath(ProducerFolder::kFolder + QStringLiteral("folder.cti")));
    CDefaultCtiSelWidget panel(nullptr);

    QVERIFY(box(panel, QStringLiteral("folder")));
}

void TestCDefaultCtiSelWidget::fileThatComesLaterIsNoRow()
{
    CDefaultCtiSelWidget panel(nullptr);
    QVERIFY(ProducerFolder::add(QStringLiteral("late.cti")));
    hide(panel);

    QVERIFY(!box(panel, QStringLiteral("late")));
    QVERIFY(panel.GetCtiStates().isEmpty());
}

void TestCDefaultCtiSelWidget::virtualPortIsForwardedToEveryRow()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("aCML.cti")));
    QVERIFY(ProducerFolder::add(QStringLiteral("bCML.cti")));
    CDefaultCtiSelWidget panel(nullptr);
    panel.SetEnableVirtualPort(false);

    const auto radios = panel.findChildren<CustomRadioButton *>();
    QCOMPARE(radios.size(), 4);
    for (const CustomRadioButton *one : radios) {
        QVERIFY(!one->isEnabled());
    }
}

void TestCDefaultCtiSelWidget::virtualPortStaysStoredWhileItIsDisabled()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("CML.cti")));
    ProducerFolder::store(QStringLiteral("CML.cti:2;"));
    CDefaultCtiSelWidget panel(nullptr);
    panel.SetEnableVirtualPort(false);
    hide(panel);

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("CML.cti:2;"));
}

void TestCDefaultCtiSelWidget::mouseReleaseIsKeptFromTheMenu()
{
    CDefaultCtiSelWidget panel(nullptr);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    release.ignore();
    panel.mouseReleaseEvent(&release);

    QVERIFY(release.isAccepted());
}

void TestCDefaultCtiSelWidget::panelLooksAsDefined()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("b.cti")));
    QVERIFY(ProducerFolder::add(QStringLiteral("a.cti")));
    CDefaultCtiSelWidget panel(nullptr);
    const auto *layout = qobject_cast<QVBoxLayout *>(panel.layout());
    QVERIFY(layout);

    QCOMPARE(layout->contentsMargins(), QMargins(16, 6, 10, 6));
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->count(), 2);
    QVERIFY(layout->itemAt(0)->widget()->findChild<CustomCheckBox *>()->text() == QLatin1String("a"));
    QCOMPARE(panel.cBackgroundColor(Custom::StatusNormal), QColor(QStringLiteral("#303030")));
}

void TestCDefaultCtiSelWidget::defaultFolderIsTheFixedOne()
{
    CDefaultCtiSelWidget panel(nullptr);

    QCOMPARE(panel.GetCtiDir(), QStringLiteral("/opt/KELS/lib/64/"));
}

QTEST_MAIN(TestCDefaultCtiSelWidget)
#include "tst_cdefaultctiselwidget.moc"
