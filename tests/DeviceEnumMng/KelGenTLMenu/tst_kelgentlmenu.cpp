// SPDX-License-Identifier: Apache-2.0
#include <DeviceEnumMng/KelGenTLMenu.h>

#include "importdialog.h"
#include "producerfolder.h"

#include <CustomCtr/CustomCheckBox.h>
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <algorithm>
#include <memory>

using States = QMap<QString, int>;

namespace
{

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

class TestKelGenTLMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void menuHoldsTheSubMenuThenTheImport();
    void importAddsTheChosenFileAsImported();
    void dialogAsksAsDefined();
    void cancelledDialogChangesNothing();
    void secondImportOfAFileIsRefused();
    void defaultProducerIsRefusedWhateverItsState();
    void linkToAnImportedFileIsAnotherProducer();
    void newFileInTheDefaultFolderCanBeImported();
    void deletingAnUnlistedPathEmitsNothing();
    void deletingAnImportedPathAnnouncesOnce();
    void deletingComparesLetterCase();
    void statesListEveryDefaultProducerZeroIncluded();
    void statesReplaceWhatTheMapHeld();
    void importedProducersAreNotStored();
    void importedProducersEndWithTheMenu();
    void closingThePanelIsForwardedOnce();
    void openPanelIsNotSeenBeforeItCloses();
    void menuThatGoesWithItsPanelOpenSavesAndTellsNobody();
    void receiverMayDeleteTheMenuDuringTheImport();
    void menuMayGoWhileTheDialogIsOpen();
    void virtualPortIsForwarded();
    void languageChangeRetranslatesTitleAndAction();

private:
    static QAction *importAction(const KelGenTLMenu &menu);
    static States states(KelGenTLMenu &menu);
    static void import(KelGenTLMenu &menu, const QString &path);
    static QDialog *shownBox();
    static bool warns(const QString &text);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_producer;
};

QAction *TestKelGenTLMenu::importAction(const KelGenTLMenu &menu)
{
    return menu.actions().last();
}

States TestKelGenTLMenu::states(KelGenTLMenu &menu)
{
    States result;
    menu.GetCtiStates(result);
    return result;
}

void TestKelGenTLMenu::import(KelGenTLMenu &menu, const QString &path)
{
    ImportDialog::choose(path);
    importAction(menu)->trigger();
}

QDialog *TestKelGenTLMenu::shownBox()
{
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *box = qobject_cast<QDialog *>(widget);
        if (box && box->isVisible() && !qobject_cast<QFileDialog *>(box)) {
            return box;
        }
    }
    return nullptr;
}

bool TestKelGenTLMenu::warns(const QString &text)
{
    const QDialog *box = shownBox();
    if (!box || box->windowTitle() != QLatin1String("Prompt")) {
        return false;
    }
    const auto labels = box->findChildren<QLabel *>();
    const auto buttons = box->findChildren<QPushButton *>();
    return buttons.size() == 1 && std::any_of(labels.cbegin(), labels.cend(), [&](const QLabel *label) {
               return label->text() == text && label->textFormat() == Qt::PlainText;
           });
}

void TestKelGenTLMenu::init()
{
    QVERIFY(ProducerFolder::reset());
    m_folder = std::make_unique<QTemporaryDir>();
    m_producer = m_folder->filePath(QStringLiteral("own.cti"));
    QVERIFY(QFile(m_producer).open(QIODevice::WriteOnly));
}

void TestKelGenTLMenu::cleanup()
{
    while (QDialog *box = shownBox()) {
        box->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void TestKelGenTLMenu::menuHoldsTheSubMenuThenTheImport()
{
    const KelGenTLMenu menu(nullptr);
    QCOMPARE(menu.actions().size(), 2);

    QVERIFY(menu.actions().at(0)->menu());
    QCOMPARE(menu.actions().at(0)->menu()->title(), QStringLiteral("Default Load"));
    QCOMPARE(menu.actions().at(1)->text(), QStringLiteral("Import Cti File"));
    QVERIFY(menu.actions().at(0)->menu()->findChild<CDefaultCtiSelWidget *>());
}

void TestKelGenTLMenu::importAddsTheChosenFileAsImported()
{
    KelGenTLMenu menu(nullptr);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    import(menu, m_producer);

    QCOMPARE(changed.count(), 1);
    QCOMPARE(states(menu), (States{{m_producer, 3}}));
    QVERIFY(!shownBox());
}

void TestKelGenTLMenu::dialogAsksAsDefined()
{
    KelGenTLMenu menu(nullptr);
    QString title;
    QString folder;
    QStringList filters;
    ImportDialog::act([&](QFileDialog *dialog) {
        title = dialog->windowTitle();
        folder = dialog->directory().absolutePath();
        filters = dialog->nameFilters();
        dialog->reject();
    });
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    QVERIFY(QDir().mkpath(desktop));
    menu.OnAddCtiFile();

    QCOMPARE(title, QStringLiteral("Select Cti File."));
    QCOMPARE(folder, QDir(desktop).absolutePath());
    QCOMPARE(filters, QStringList{QStringLiteral("cti file(*.cti) | *.cti")});
}

void TestKelGenTLMenu::cancelledDialogChangesNothing()
{
    KelGenTLMenu menu(nullptr);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    ImportDialog::act([](QFileDialog *dialog) { dialog->reject(); });
    menu.OnAddCtiFile();

    QCOMPARE(changed.count(), 0);
    QVERIFY(states(menu).isEmpty());
    QVERIFY(!shownBox());
}

void TestKelGenTLMenu::secondImportOfAFileIsRefused()
{
    KelGenTLMenu menu(nullptr);
    import(menu, m_producer);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);

    import(menu, m_producer);

    QVERIFY(warns(QStringLiteral("The cti file have been load.")));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(states(menu), (States{{m_producer, 3}}));
}

void TestKelGenTLMenu::defaultProducerIsRefusedWhateverItsState()
{
    for (const char *name : {"abc.cti", "KelFGabc.cti"}) {
        QVERIFY(ProducerFolder::add(QLatin1String(name)));
    }
    KelGenTLMenu menu(nullptr);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    const States before = states(menu);

    for (const char *name : {"abc.cti", "KelFGabc.cti"}) {
        import(menu, ProducerFolder::kFolder + QLatin1String(name));
        QVERIFY(warns(QStringLiteral("It is the default load cti file.")));
        cleanup();
    }
    QCOMPARE(changed.count(), 0);
    QCOMPARE(states(menu), before);
}

void TestKelGenTLMenu::linkToAnImportedFileIsAnotherProducer()
{
    const QString link = m_folder->filePath(QStringLiteral("link.cti"));
    QVERIFY(QFile::link(m_producer, link));
    KelGenTLMenu menu(nullptr);
    import(menu, m_producer);
    import(menu, link);

    QCOMPARE(states(menu), (States{{m_producer, 3}, {link, 3}}));
}

void TestKelGenTLMenu::newFileInTheDefaultFolderCanBeImported()
{
    KelGenTLMenu menu(nullptr);
    QVERIFY(ProducerFolder::add(QStringLiteral("late.cti")));
    import(menu, ProducerFolder::kFolder + QStringLiteral("late.cti"));

    QCOMPARE(states(menu), (States{{ProducerFolder::kFolder + QStringLiteral("late.cti"), 3}}));
}

void TestKelGenTLMenu::deletingAnUnlistedPathEmitsNothing()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    KelGenTLMenu menu(nullptr);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    menu.Delete3rdCti(m_producer);
    menu.Delete3rdCti(ProducerFolder::kFolder + QStringLiteral("abc.cti"));

    QCOMPARE(changed.count(), 0);
    QCOMPARE(states(menu).size(), 1);
}

void TestKelGenTLMenu::deletingAnImportedPathAnnouncesOnce()
{
    KelGenTLMenu menu(nullptr);
    import(menu, m_producer);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    menu.Delete3rdCti(m_producer);
    menu.Delete3rdCti(m_producer);

    QCOMPARE(changed.count(), 1);
    QVERIFY(states(menu).isEmpty());
}

void TestKelGenTLMenu::deletingComparesLetterCase()
{
    KelGenTLMenu menu(nullptr);
    import(menu, m_producer);
    menu.Delete3rdCti(m_producer.toUpper());

    QCOMPARE(states(menu).size(), 1);
}

void TestKelGenTLMenu::statesListEveryDefaultProducerZeroIncluded()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("KelFGProducerGEV.cti")));
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    KelGenTLMenu menu(nullptr);

    QCOMPARE(states(menu), (States{{QStringLiteral("/opt/KELS/lib/64/KelFGProducerGEV.cti"), 1},
                                   {QStringLiteral("/opt/KELS/lib/64/abc.cti"), 0}}));
}

void TestKelGenTLMenu::statesReplaceWhatTheMapHeld()
{
    KelGenTLMenu menu(nullptr);
    States map{{QStringLiteral("old"), 1}};
    menu.GetCtiStates(map);

    QVERIFY(map.isEmpty());
}

void TestKelGenTLMenu::importedProducersAreNotStored()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    KelGenTLMenu menu(nullptr);
    import(menu, m_producer);
    auto *panel = menu.findChild<CDefaultCtiSelWidget *>();
    panel->parentWidget()->show();
    panel->parentWidget()->hide();

    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("abc.cti:0;"));
}

void TestKelGenTLMenu::importedProducersEndWithTheMenu()
{
    {
        KelGenTLMenu menu(nullptr);
        import(menu, m_producer);
    }
    KelGenTLMenu menu(nullptr);

    QVERIFY(states(menu).isEmpty());
}

void TestKelGenTLMenu::closingThePanelIsForwardedOnce()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    KelGenTLMenu menu(nullptr);
    QSignalSpy changed(&menu, &KelGenTLMenu::SigCtiChanged);
    menu.popup(QPoint(0, 0));
    menu.setActiveAction(menu.actions().at(0));
    auto *panel = menu.findChild<CDefaultCtiSelWidget *>();
    QTRY_VERIFY(panel->isVisible());
    QCOMPARE(changed.count(), 0);

    menu.close();
    menu.actions().at(0)->menu()->close();

    QTRY_VERIFY(!panel->isVisible());
    QCOMPARE(changed.count(), 1);
}

void TestKelGenTLMenu::openPanelIsNotSeenBeforeItCloses()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    KelGenTLMenu menu(nullptr);
    QMenu *sub = menu.actions().at(0)->menu();
    sub->popup(QPoint(0, 0));
    sub->findChild<CustomCheckBox *>()->click();
    QCOMPARE(states(menu).value(QStringLiteral("/opt/KELS/lib/64/abc.cti")), 0);

    sub->close();

    QCOMPARE(states(menu).value(QStringLiteral("/opt/KELS/lib/64/abc.cti")), 1);
}

void TestKelGenTLMenu::menuThatGoesWithItsPanelOpenSavesAndTellsNobody()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("abc.cti")));
    auto menu = std::make_unique<KelGenTLMenu>(nullptr);
    QSignalSpy changed(menu.get(), &KelGenTLMenu::SigCtiChanged);
    QMenu *sub = menu->actions().at(0)->menu();
    sub->popup(QPoint(0, 0));
    sub->findChild<CustomCheckBox *>()->click();
    menu.reset();

    QCOMPARE(changed.count(), 0);
    QCOMPARE(ProducerFolder::stored().toString(), QStringLiteral("abc.cti:1;"));
}

void TestKelGenTLMenu::receiverMayDeleteTheMenuDuringTheImport()
{
    QPointer<KelGenTLMenu> menu(new KelGenTLMenu(nullptr));
    connect(menu, &KelGenTLMenu::SigCtiChanged, this, [&menu] { menu->deleteLater(); });
    import(*menu, m_producer);
    QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);

    QVERIFY(menu.isNull());
}

void TestKelGenTLMenu::menuMayGoWhileTheDialogIsOpen()
{
    auto *menu = new KelGenTLMenu(nullptr);
    const QString producer = m_producer;
    ImportDialog::act([menu, producer](QFileDialog *dialog) {
        delete menu;
        dialog->selectFile(producer);
        static_cast<QDialog *>(dialog)->accept();
    });
    menu->OnAddCtiFile();

    QVERIFY(!shownBox());
}

void TestKelGenTLMenu::virtualPortIsForwarded()
{
    QVERIFY(ProducerFolder::add(QStringLiteral("CML.cti")));
    ProducerFolder::store(QStringLiteral("CML.cti:2;"));
    KelGenTLMenu menu(nullptr);
    menu.SetEnableVirtualPort(false);
    const auto radios = menu.findChildren<QRadioButton *>();

    QCOMPARE(radios.size(), 2);
    QVERIFY(!radios.at(0)->isEnabled() && !radios.at(1)->isEnabled());
}

void TestKelGenTLMenu::languageChangeRetranslatesTitleAndAction()
{
    KelGenTLMenu menu(nullptr);
    CapitalTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&menu, &change);
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(menu.actions().at(0)->menu()->title(), QStringLiteral("DEFAULT LOAD"));
    QCOMPARE(menu.actions().at(1)->text(), QStringLiteral("IMPORT CTI FILE"));
}

QTEST_MAIN(TestKelGenTLMenu)
#include "tst_kelgentlmenu.moc"
