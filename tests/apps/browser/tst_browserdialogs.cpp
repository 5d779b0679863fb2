// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "FilterDialog.h"
#include "FilterEditor.h"
#include "ForceIpDialog.h"
#include "Ipv4.h"
#include "MainWindow.h"
#include "SteeredCameras.h"
#include "TreeHost.h"

#include <CommonTools/KelInterface.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>

using namespace browser;

namespace
{

constexpr int kAppearsWithinMs = 5000;

bool isTextShown(const QWidget &inside, const QString &part)
{
    const QList<QLabel *> labels = inside.findChildren<QLabel *>();
    return std::any_of(labels.cbegin(), labels.cend(),
                       [&part](const QLabel *label) { return label->text().contains(part); });
}

/// The window that shows a text, among all but this one; null when there is none.
QWidget *otherWindowWith(const QString &text, const QWidget *window)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *candidate : windows) {
        if (candidate != window && candidate->isVisible() && isTextShown(*candidate, text))
            return candidate;
    }
    return nullptr;
}

} // namespace

/// The dialogs about cameras and filters, worked as a user works them.
class TestBrowserDialogs : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void hiddenVendorLeavesWhenTheTreeIsRebuilt();
    void savedFilterWaitsForTheNextTree();
    void filterThatCannotBeWrittenIsTold();
    void unknownFilterStateIsShownAndKept();
    void filterNamesKeepTheirBlanks();
    void addressDialogShowsWhatItWouldSend();
    void addressOutsideTheSubnetCannotBeAssigned();
    void cameraIsAddedThroughTheDialog();
    void silentAddressIsTold();
    void malformedAddressIsTold();

private:
    FilterDialog *openFilters();
    static void hideVendor(const FilterDialog &dialog, const QString &vendor);
    static void press(const QDialog &dialog, const QString &text);
    ForceIpDialog *openAddressDialog();
    void askToAdd(const QString &address, const QString &picture = QString());
};

FilterDialog *TestBrowserDialogs::openFilters()
{
    trigger(QStringLiteral("Filters…"));
    return window()->findChild<FilterDialog *>();
}

void TestBrowserDialogs::hideVendor(const FilterDialog &dialog, const QString &vendor)
{
    const auto *editor = dialog.findChildren<FilterEditor *>().value(0);
    QVERIFY(editor);
    auto *state = editor->findChild<QComboBox *>();
    state->setCurrentIndex(state->findText(QStringLiteral("Hide those listed")));
    const QList<QPlainTextEdit *> lists = editor->findChildren<QPlainTextEdit *>();
    QCOMPARE(lists.size(), 2);
    QVERIFY(!lists.at(0)->isEnabled());
    QVERIFY(lists.at(1)->isEnabled());
    QTest::keyClicks(lists.at(1), vendor);
}

void TestBrowserDialogs::press(const QDialog &dialog, const QString &text)
{
    const QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text().remove(QLatin1Char('&')) == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(qPrintable(text));
}

ForceIpDialog *TestBrowserDialogs::openAddressDialog()
{
    tree()->setCurrentItem(row(kStranger));
    trigger(QStringLiteral("Assign temporary address…"));
    return window()->findChild<ForceIpDialog *>();
}

void TestBrowserDialogs::askToAdd(const QString &address, const QString &picture)
{
    trigger(QStringLiteral("Add camera by address…"));
    auto *dialog = window()->findChild<QInputDialog *>();
    QVERIFY(dialog);
    auto *edit = dialog->findChild<QLineEdit *>();
    QVERIFY(edit);
    QTest::keyClicks(edit, address);
    if (!picture.isEmpty())
        keepPicture(dialog, picture);
    press(*dialog, QStringLiteral("Add"));
}

void TestBrowserDialogs::hiddenVendorLeavesWhenTheTreeIsRebuilt()
{
    const FilterDialog *dialog = openFilters();
    QVERIFY(dialog);
    hideVendor(*dialog, QStringLiteral("linden vision"));
    keepPicture(const_cast<FilterDialog *>(dialog), QStringLiteral("dialog-filters"));
    press(*dialog, QStringLiteral("Save and rebuild the tree"));

    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance) && row(kConveyor), kAppearsWithinMs);
    QTest::qWait(1500);
    QVERIFY(!row(kLabels));
    QVERIFY(!row(kStranger));
    QCOMPARE(KelInterface::vendorFilterState(), int(KelInterface::FilterExclude));
    QCOMPARE(KelInterface::vendorFilterExclude(), QStringLiteral("linden vision"));
    QVERIFY(QFile::exists(KelInterface::programDataPath() + QStringLiteral("/DeviceFilter.ini")));
}

void TestBrowserDialogs::savedFilterWaitsForTheNextTree()
{
    const FilterDialog *dialog = openFilters();
    QVERIFY(dialog);
    QVERIFY(isTextShown(*dialog, QStringLiteral("take effect in a new tree")));
    hideVendor(*dialog, QStringLiteral("Linden Vision"));
    press(*dialog, QStringLiteral("Save"));
    QTest::qWait(1500);
    QVERIFY(row(kLabels));

    window()->treeHost()->build();

    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance), kAppearsWithinMs);
    QTest::qWait(1500);
    QVERIFY(!row(kLabels));
}

void TestBrowserDialogs::filterThatCannotBeWrittenIsTold()
{
    // Not even the administrator can write a file where a folder stands.
    QVERIFY(QDir().mkpath(KelInterface::programDataPath() + QStringLiteral("/DeviceFilter.ini")));
    const FilterDialog *dialog = openFilters();
    QVERIFY(dialog);

    press(*dialog, QStringLiteral("Save"));

    QVERIFY(dialog->isVisible());
    QVERIFY(isTextShown(*dialog, KelInterface::programDataPath()));
    press(*dialog, QStringLiteral("Cancel"));
}

void TestBrowserDialogs::unknownFilterStateIsShownAndKept()
{
    FilterEditor editor(QStringLiteral("Vendors"));
    editor.setFilter(7, QString(), QString());

    QCOMPARE(editor.state(), 7);
    QCOMPARE(editor.findChild<QComboBox *>()->currentText(), QStringLiteral("Unknown (7): hides all"));

    FilterEditor usual(QStringLiteral("Vendors"));
    usual.setFilter(KelInterface::FilterInclude, QString(), QString());
    QCOMPARE(usual.findChild<QComboBox *>()->count(), 3);
}

void TestBrowserDialogs::filterNamesKeepTheirBlanks()
{
    FilterEditor editor(QStringLiteral("Models"));
    const QString names = QStringLiteral(" SX-200 /Plain/%1nbsp").arg(QChar(QChar::Nbsp));
    editor.setFilter(KelInterface::FilterExclude, names, names);

    QCOMPARE(editor.exclude(), names);
    QCOMPARE(editor.include(), names);
}

void TestBrowserDialogs::addressDialogShowsWhatItWouldSend()
{
    ForceIpDialog *dialog = openAddressDialog();
    QVERIFY(dialog);
    const KELA_GIGE_DEVICE_INFO camera = rows::deviceOf(row(kStranger))->deviceInfo.special.gige;
    const TemporaryAddress suggested = dialog->choice();
    QVERIFY(suggested.address != 0);
    for (const QString &part : {QStringLiteral("192.168.50.1"), ipv4::macText(camera.macHigh, camera.macLow),
                                QStringLiteral("address %1").arg(ipv4::text(suggested.address)),
                                QStringLiteral("mask 255.255.255.0"), QStringLiteral("gateway 0.0.0.0")})
        QVERIFY2(isTextShown(*dialog, part), qPrintable(part));

    auto *address = dialog->findChildren<QLineEdit *>().value(0);
    QVERIFY(address);
    address->setText(QStringLiteral("192.168.50.200"));
    QVERIFY(isTextShown(*dialog, QStringLiteral("address 192.168.50.200")));
    keepPicture(dialog, QStringLiteral("dialog-assign"));
    press(*dialog, QStringLiteral("Cancel"));

    QTest::qWait(1500);
    QCOMPARE(stateOf(kStranger), int(KELA_DEV_STATE_GIGE_UNREACHABLE));
}

void TestBrowserDialogs::addressOutsideTheSubnetCannotBeAssigned()
{
    const ForceIpDialog *dialog = openAddressDialog();
    QVERIFY(dialog);
    const QPushButton *assign = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    QVERIFY(assign->isEnabled());
    auto *address = dialog->findChildren<QLineEdit *>().value(0);

    for (const char *refused : {"10.0.0.5", "192.168.50.1", "192.168.50.11", "192.168.50", "camera"}) {
        address->setText(QLatin1String(refused));
        QVERIFY2(!assign->isEnabled(), refused);
        QVERIFY(!isTextShown(*dialog, QStringLiteral("Will be sent")));
    }
    address->setText(QStringLiteral("192.168.50.200"));
    QVERIFY(assign->isEnabled());
}

void TestBrowserDialogs::cameraIsAddedThroughTheDialog()
{
    const auto heal = qScopeGuard([] { steeredcameras::tell({"lose", "conveyor", "0", "broadcast"}); });
    putConveyorBehindARouter();

    askToAdd(QStringLiteral("192.168.50.12"), QStringLiteral("dialog-add"));

    QTRY_VERIFY(row(kConveyor));
    QCOMPARE(int(rows::deviceOf(row(kConveyor))->remote), 1);
}

void TestBrowserDialogs::silentAddressIsTold()
{
    askToAdd(QStringLiteral("192.168.50.240"));

    const QString message = QStringLiteral("No camera answers at 192.168.50.240.");
    QTRY_VERIFY_WITH_TIMEOUT(otherWindowWith(message, window()), 8000);
    otherWindowWith(message, window())->close();
}

void TestBrowserDialogs::malformedAddressIsTold()
{
    for (const char *wrong : {"192.168.50", "256.1.1.1", "camera", "0.0.0.0"}) {
        askToAdd(QLatin1String(wrong));

        const QString message = QStringLiteral("\"%1\" is no IPv4 address.").arg(QLatin1String(wrong));
        QTRY_VERIFY2(otherWindowWith(message, window()), wrong);
        otherWindowWith(message, window())->close();
        QTRY_VERIFY(!window()->findChild<QInputDialog *>());
    }
}

QTEST_MAIN(TestBrowserDialogs)
#include "tst_browserdialogs.moc"
