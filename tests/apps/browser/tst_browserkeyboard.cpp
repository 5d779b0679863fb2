// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "MainWindow.h"
#include "Preferences.h"
#include "SteeredCameras.h"
#include "WorkArea.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include <algorithm>

using namespace browser;

namespace
{

QString captionOf(const QAction *entry)
{
    return entry->text().remove(QLatin1Char('&'));
}

QMenu *openMenu()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

QStringList captions(const QMenu &menu)
{
    QStringList found;
    const QList<QAction *> entries = menu.actions();
    for (const QAction *entry : entries) {
        if (!entry->isSeparator())
            found.append(captionOf(entry));
    }
    return found;
}

} // namespace

/// The browser without a mouse, and for people who do not see it.
class TestBrowserKeyboard : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void menuKeyOpensTheMenuOfTheCurrentRow();
    void cameraIsConnectedFromItsMenu();
    void groupIsRefreshedFromItsMenu();
    void producersAreChosenFromTheMenuOfTheirGroup();
    void interfaceIsOpenedFromItsMenu();
    void rightClickIsMeantForTheRowBelowIt();
    void shortcutsReachWhatTheButtonsDo();
    void everyRowAndButtonHasAName();
    void namesFollowTheLanguageInAFrozenTree();
    void namesFollowTheEncoding();
    void lostCameraIsSpokenAsLost();
    void closeButtonFollowsTheLanguage();

private:
    QMenu *menuOf(QTreeWidgetItem *item);
    void choose(QMenu *menu, const QString &caption);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QTreeWidgetItem *group(KelDeviceTree::ItemType type) const { return tree()->findItem(type, -1); }
    QTreeWidgetItem *genTLInterface() const;
    QString buttonName(const QTreeWidgetItem *item) const;
    QStringList spokenRows() const;
};

void TestBrowserKeyboard::initTestCase()
{
    if (!steeredcameras::areThere())
        QSKIP("no private network here");
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
        QSKIP("xdotool is not installed");
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        QSKIP("there is no X server here");
}

void TestBrowserKeyboard::press(int key, Qt::KeyboardModifiers modifiers)
{
    window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window()));
    tree()->setFocus();
    QTest::keyClick(window()->windowHandle(), static_cast<Qt::Key>(key), modifiers);
}

QMenu *TestBrowserKeyboard::menuOf(QTreeWidgetItem *item)
{
    tree()->setCurrentItem(item);
    tree()->setFocus();
    window()->activateWindow();
    if (!QTest::qWaitForWindowActive(window()))
        return nullptr;
    // The display itself makes a context menu of this key.
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Menu")});
    const bool isOpen = QTest::qWaitFor([] { return openMenu() != nullptr; });
    return isOpen ? openMenu() : nullptr;
}

void TestBrowserKeyboard::choose(QMenu *menu, const QString &caption)
{
    QVERIFY(menu);
    const QList<QAction *> entries = menu->actions();
    for (QAction *entry : entries) {
        if (captionOf(entry) == caption) {
            menu->setActiveAction(entry);
            QTest::keyClick(menu, Qt::Key_Return);
            return;
        }
    }
    QFAIL(qPrintable(captions(*menu).join(QStringLiteral(", "))));
}

QTreeWidgetItem *TestBrowserKeyboard::genTLInterface() const
{
    const QTreeWidgetItem *producers = group(KelDeviceTree::ItemGenTLRoot);
    for (int i = 0; i < producers->childCount(); ++i) {
        if (rows::textOf(producers->child(i)).contains(QStringLiteral("Ethernet port 0")))
            return producers->child(i);
    }
    return nullptr;
}

QString TestBrowserKeyboard::buttonName(const QTreeWidgetItem *item) const
{
    const CustomPushButton *button = rows::buttonOf(*tree(), item);
    return button ? button->accessibleName() : QString();
}

QStringList TestBrowserKeyboard::spokenRows() const
{
    QStringList names;
    const QAccessibleInterface *view = QAccessible::queryAccessibleInterface(tree());
    for (int i = 0; view && i < view->childCount(); ++i)
        names.append(view->child(i)->text(QAccessible::Name));
    return names;
}

void TestBrowserKeyboard::menuKeyOpensTheMenuOfTheCurrentRow()
{
    QMenu *menu = menuOf(row(kEntrance));
    QVERIFY(menu);
    QCOMPARE(tree()->currentItem(), row(kEntrance));
    QCOMPARE(captions(*menu), (QStringList{QStringLiteral("Connect"), QStringLiteral("Keep on top"),
                                           QStringLiteral("Assign temporary address…")}));
    const QRect place = tree()->visualItemRect(row(kEntrance));
    QCOMPARE(menu->pos(), tree()->viewport()->mapToGlobal(place.bottomLeft()));
    keepPicture(menu, QStringLiteral("menu-camera"));
    menu->close();

    menu = menuOf(row(kStranger));
    QVERIFY(menu);
    QVERIFY(captions(*menu).contains(QStringLiteral("Assign temporary address…")));
    QVERIFY(!captions(*menu).contains(QStringLiteral("Connect")));
    menu->close();
}

void TestBrowserKeyboard::cameraIsConnectedFromItsMenu()
{
    choose(menuOf(row(kEntrance)), QStringLiteral("Connect"));
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));

    choose(menuOf(row(kEntrance)), QStringLiteral("Show live values"));
    QTRY_COMPARE(window()->workArea()->liveViewCount(), 1);

    choose(menuOf(row(kEntrance)), QStringLiteral("Disconnect"));
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));
}

void TestBrowserKeyboard::groupIsRefreshedFromItsMenu()
{
    QSignalSpy refreshed(tree(), &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QMenu *menu = menuOf(group(KelDeviceTree::ItemGigERoot));
    QVERIFY(menu);
    QCOMPARE(captions(*menu), QStringList{QStringLiteral("Refresh this group")});

    choose(menu, QStringLiteral("Refresh this group"));

    QTRY_COMPARE(refreshed.size(), 1);
    QCOMPARE(refreshed.first().first().toInt(), int(KELA_INTERFACE_TYPE_GIGE));
}

void TestBrowserKeyboard::producersAreChosenFromTheMenuOfTheirGroup()
{
    QMenu *menu = menuOf(group(KelDeviceTree::ItemGenTLRoot));
    QVERIFY(menu);
    QCOMPARE(captions(*menu),
             (QStringList{QStringLiteral("Refresh this group"), QStringLiteral("Choose producers…")}));

    choose(menu, QStringLiteral("Choose producers…"));

    auto *producers = tree()->findChild<KelGenTLMenu *>();
    QTRY_VERIFY(producers->isVisible());
    producers->close();
}

void TestBrowserKeyboard::interfaceIsOpenedFromItsMenu()
{
    if (!QFileInfo::exists(QStringLiteral("/opt/KELS/lib/64/KelFGSampleGEV.cti")))
        QSKIP("no private /opt here");
    QTRY_VERIFY_WITH_TIMEOUT(genTLInterface(), 10000);
    const QString name = rows::textOf(genTLInterface());
    QCOMPARE(buttonName(genTLInterface()), QStringLiteral("Open or close %1").arg(name));

    choose(menuOf(genTLInterface()), QStringLiteral("Open interface"));
    QTRY_VERIFY_WITH_TIMEOUT(row(QStringLiteral("GT-0001")), 5000);
    QCOMPARE(buttonName(genTLInterface()), QStringLiteral("Open or close %1").arg(name));

    choose(menuOf(genTLInterface()), QStringLiteral("Close interface"));
    QTRY_VERIFY_WITH_TIMEOUT(!row(QStringLiteral("GT-0001")), 5000);
    QCOMPARE(buttonName(genTLInterface()), QStringLiteral("Open or close %1").arg(name));
}

void TestBrowserKeyboard::rightClickIsMeantForTheRowBelowIt()
{
    tree()->setCurrentItem(row(kConveyor));
    const QPoint place = tree()->visualItemRect(row(kLabels)).center();

    QContextMenuEvent click(QContextMenuEvent::Mouse, place, tree()->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree()->viewport(), &click);

    QCOMPARE(tree()->currentItem(), row(kLabels));
    QTRY_VERIFY(openMenu());
    // Somebody else holds it.
    QVERIFY(!captions(*openMenu()).contains(QStringLiteral("Connect")));
    openMenu()->close();
}

void TestBrowserKeyboard::shortcutsReachWhatTheButtonsDo()
{
    tree()->setCurrentItem(row(kEntrance));
    press(Qt::Key_Return, Qt::ControlModifier);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_CONNECTED));
    press(Qt::Key_Return, Qt::ControlModifier);
    QTRY_COMPARE(stateOf(kEntrance), int(KELA_DEV_STATE_GIGE_FREE));

    QSignalSpy refreshed(tree(), &KelDeviceTree::sigBeforeRefreshBtnClicked);
    tree()->setCurrentItem(group(KelDeviceTree::ItemGenTLRoot));
    press(Qt::Key_F5, Qt::ShiftModifier);
    QTRY_COMPARE(refreshed.size(), 1);
    QCOMPARE(refreshed.first().first().toInt(), int(KELA_INTERFACE_TYPE_USB));

    press(Qt::Key_P, Qt::ControlModifier);
    auto *producers = tree()->findChild<KelGenTLMenu *>();
    QTRY_VERIFY(producers->isVisible());
    producers->close();
}

void TestBrowserKeyboard::everyRowAndButtonHasAName()
{
    QCOMPARE(buttonName(group(KelDeviceTree::ItemGigERoot)), QStringLiteral("Refresh GigE"));
    QCOMPARE(buttonName(group(KelDeviceTree::ItemUSBRoot)), QStringLiteral("Refresh USB"));
    QCOMPARE(buttonName(group(KelDeviceTree::ItemGenTLRoot)), QStringLiteral("Refresh GenTL"));
    QCOMPARE(buttonName(row(kEntrance)), QStringLiteral("Connect %1").arg(rows::textOf(row(kEntrance))));

    const QStringList spoken = spokenRows();
    QVERIFY(spoken.size() > 8);
    QVERIFY(!spoken.contains(QString()));
    QVERIFY(spoken.contains(rows::textOf(row(kEntrance)) + QStringLiteral(", Free")));
    QVERIFY(spoken.contains(rows::textOf(row(kLabels)) + QStringLiteral(", In use")));
    for (QTreeWidgetItemIterator each(tree()); *each; ++each) {
        const CustomPushButton *button = rows::buttonOf(*tree(), *each);
        QVERIFY2(!button || button->accessibleName().contains(rows::textOf(*each)),
                 qPrintable(rows::textOf(*each)));
    }

    connectCamera(kEntrance);
    QTRY_COMPARE(buttonName(row(kEntrance)), QStringLiteral("Disconnect %1").arg(rows::textOf(row(kEntrance))));
}

void TestBrowserKeyboard::namesFollowTheLanguageInAFrozenTree()
{
    connectCamera(kEntrance);
    trigger(QStringLiteral("Freeze the tree"));

    window()->preferences()->setLanguage(QStringLiteral("de"));

    QTRY_COMPARE(buttonName(row(kConveyor)), rows::textOf(row(kConveyor)) + QStringLiteral(" verbinden"));
    QCOMPARE(buttonName(row(kEntrance)), rows::textOf(row(kEntrance)) + QStringLiteral(" trennen"));
    QCOMPARE(buttonName(group(KelDeviceTree::ItemGigERoot)), QStringLiteral("GigE aktualisieren"));
    QVERIFY(spokenRows().contains(rows::textOf(row(kConveyor)) + QStringLiteral(", Frei")));
    window()->preferences()->setLanguage(QStringLiteral("en"));
}

void TestBrowserKeyboard::namesFollowTheEncoding()
{
    trigger(QStringLiteral("Freeze the tree"));
    QTest::qWait(500);
    KELA_STRUCT_DEVICE_INFO device = *rows::deviceOf(row(kConveyor));
    const QByteArray name("\xC8\xEB\xBF\xDA");
    std::copy_n(name.constData(), name.size() + 1, device.deviceInfo.special.gige.userDefinedName);
    row(kConveyor)->setData(0, KelDeviceTree::ItemInfoRole, QVariant::fromValue(device));

    window()->preferences()->setEncoding(KelInterface::EncodingGb18030);

    const QString text = rows::textOf(row(kConveyor));
    QVERIFY(text.contains(QStringLiteral("入口")));
    QVERIFY(spokenRows().contains(text + QStringLiteral(", Free")));
    QCOMPARE(buttonName(row(kConveyor)), QStringLiteral("Connect %1").arg(text));
    KelInterface::SetEncodingType(KelInterface::EncodingUtf8);
}

void TestBrowserKeyboard::lostCameraIsSpokenAsLost()
{
    connectCamera(kConveyor);
    const long id = idOf(kConveyor);
    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_COMPARE_WITH_TIMEOUT(window()->connections()->session(id).state, SessionState::Lost, 15000);

    const QString name = rows::textOf(row(kConveyor));
    QTRY_VERIFY(spokenRows().contains(name + QStringLiteral(", connection lost")));
    QCOMPARE(buttonName(row(kConveyor)), QStringLiteral("Disconnect %1").arg(name));

    // Neither its return nor another language makes it connected again.
    bool isBack = false;
    const auto listening = connect(tree(), &KelDeviceTree::sigUpdateDeviceItem, this,
                                   [&](const QTreeWidgetItem *item) { isBack |= rows::idOf(item) == id; });
    const auto stop = qScopeGuard([&listening] { disconnect(listening); });
    steeredcameras::tell({"plug", "conveyor"});
    QTRY_VERIFY_WITH_TIMEOUT(isBack, 5000);
    QVERIFY(spokenRows().contains(name + QStringLiteral(", connection lost")));
    window()->preferences()->setLanguage(QStringLiteral("de"));
    QTRY_VERIFY(spokenRows().contains(name + QStringLiteral(", Verbindung verloren")));
    window()->preferences()->setLanguage(QStringLiteral("en"));
}

void TestBrowserKeyboard::closeButtonFollowsTheLanguage()
{
    connectCamera(kEntrance);
    window()->workArea()->openLiveView(idOf(kEntrance));
    const auto isThere = [this](const QString &beginning) {
        const QList<QToolButton *> buttons = window()->workArea()->findChildren<QToolButton *>();
        return std::any_of(buttons.cbegin(), buttons.cend(), [&beginning](const QToolButton *button) {
            return button->accessibleName().contains(beginning);
        });
    };
    QVERIFY(isThere(QStringLiteral("Close Entrance")));

    window()->preferences()->setLanguage(QStringLiteral("de"));

    QTRY_VERIFY(isThere(QStringLiteral("schließen")));
    QVERIFY(!isThere(QStringLiteral("Close")));
    window()->preferences()->setLanguage(QStringLiteral("en"));
}

QTEST_MAIN(TestBrowserKeyboard)
#include "tst_browserkeyboard.moc"
