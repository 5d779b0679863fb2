// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "../../DeviceEnumMng/KelGenTLMenu/importdialog.h"
#include "DetailsPanel.h"
#include "MainWindow.h"

#include <CustomCtr/CustomCheckBox.h>
#include <DeviceEnumMng/CDefaultCtiSelWidget.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace browser;

namespace
{

const QString kFolder = QStringLiteral("/opt/KELS/lib/64/");
const QString kNetworkPort = QStringLiteral("Ethernet port 0");
const QString kGrabberPort = QStringLiteral("Frame grabber port 0");
const QString kImported = QStringLiteral("Three hundred devices");
constexpr int kWithinMs = 15000;

bool isMapped(const QString &file)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(file.toLocal8Bit());
}

} // namespace

/// GenTL producers in the window: what the details panel tells of them, and that nothing of a producer that
/// goes stays open.
class TestBrowserProducers : public BrowserTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void groupTellsWhichProducersThereAre();
    void refusedProducerTellsWhy();
    void failingProducerTellsWhatFailed();
    void interfaceTellsItsProducer();
    void switchedOffProducerTakesItsOpenInterfaceAlong();
    void openInterfaceOfAnotherProducerIsLeftAlone();
    void removedProducerIsLetGoWithItsInterfaceOpen();
    void removedProducerIsLetGoWhileTheTreeIsFrozen();
    void importedProducerIsGoneAfterARestart();

private:
    QTreeWidgetItem *interfaceRow(const QString &text) const;
    void openInterface(const QString &text);
    QString panel() const { return window()->details()->asText(); }
    void selectGroup();
    void switchOff(const QString &producer);
    void import();
    bool describeNetworkProducer(const QByteArray &description);

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_networkProducer; // its description as it was
};

void TestBrowserProducers::initTestCase()
{
    BrowserTest::initTestCase();
    QFile description(kFolder + QStringLiteral("KelFGSampleGEV.cti.txt"));
    if (!description.open(QIODevice::ReadOnly))
        QSKIP("no private /opt here");
    m_networkProducer = description.readAll();
}

void TestBrowserProducers::cleanup()
{
    describeNetworkProducer(m_networkProducer);
    QFile::remove(kFolder + QStringLiteral("KelFGBad.cti"));
    BrowserTest::cleanup();
}

bool TestBrowserProducers::describeNetworkProducer(const QByteArray &description)
{
    QFile file(kFolder + QStringLiteral("KelFGSampleGEV.cti.txt"));
    return file.open(QIODevice::WriteOnly) && file.write(description) == description.size();
}

QTreeWidgetItem *TestBrowserProducers::interfaceRow(const QString &text) const
{
    const QTreeWidgetItem *group = tree()->findItem(KelDeviceTree::ItemGenTLRoot, -1);
    for (int i = 0; i < group->childCount(); ++i) {
        if (rows::textOf(group->child(i)) == text)
            return group->child(i);
    }
    return nullptr;
}

void TestBrowserProducers::openInterface(const QString &text)
{
    QTRY_VERIFY_WITH_TIMEOUT(interfaceRow(text), kWithinMs);
    tree()->setCurrentItem(interfaceRow(text));
    trigger(QStringLiteral("Open interface"));
    QTRY_VERIFY_WITH_TIMEOUT(interfaceRow(text)->childCount() > 0, kWithinMs);
}

void TestBrowserProducers::selectGroup()
{
    QTRY_VERIFY_WITH_TIMEOUT(interfaceRow(kGrabberPort), kWithinMs);
    tree()->setCurrentItem(tree()->findItem(KelDeviceTree::ItemGenTLRoot, -1));
}

void TestBrowserProducers::switchOff(const QString &producer)
{
    const auto boxes = tree()->findChildren<CustomCheckBox *>();
    for (CustomCheckBox *box : boxes) {
        if (box->text() == producer)
            box->click();
    }
    QWidget *menu = tree()->findChild<CDefaultCtiSelWidget *>()->parentWidget();
    menu->show();
    menu->hide();
}

void TestBrowserProducers::import()
{
    m_folder = std::make_unique<QTemporaryDir>();
    const QString path = m_folder->filePath(QStringLiteral("own.cti"));
    QVERIFY(QFile::copy(QStringLiteral(SAMPLE_PRODUCERS "/BigSample.cti"), path));
    ImportDialog::choose(path);
    tree()->findChild<KelGenTLMenu *>()->OnAddCtiFile();
    QTRY_VERIFY_WITH_TIMEOUT(interfaceRow(kImported), kWithinMs);
}

void TestBrowserProducers::groupTellsWhichProducersThereAre()
{
    selectGroup();

    QTRY_VERIFY(panel().contains(QStringLiteral("Producer KelFGSampleGEV.cti")));
    QVERIFY(panel().contains(QStringLiteral("Producer KelFGSampleCML.cti")));
    QVERIFY(panel().contains(QStringLiteral("Works")));
    QVERIFY(panel().contains(QStringLiteral("Harbour Optics")));
    QVERIFY(panel().contains(QStringLiteral("Harbour network cameras")));
    QVERIFY(panel().contains(kFolder + QStringLiteral("KelFGSampleGEV.cti")));
    QVERIFY(!panel().contains(QStringLiteral("cannot be used")));
    keepPicture(window(), QStringLiteral("producers"));
}

void TestBrowserProducers::refusedProducerTellsWhy()
{
    closeWindow();
    QVERIFY(QFile::copy(QStringLiteral(SAMPLE_PRODUCERS "/BadCrashOnLoad.cti"),
                        kFolder + QStringLiteral("KelFGBad.cti")));
    openWindow();
    selectGroup();

    QTRY_VERIFY_WITH_TIMEOUT(panel().contains(QStringLiteral("Refused")), kWithinMs);
    QVERIFY(panel().contains(QStringLiteral("its trial ended in load")));
    QVERIFY(panel().contains(QStringLiteral("1 producer cannot be used")));
    QTest::qWait(300); // the panel lays out its texts
    keepPicture(window(), QStringLiteral("refused-producer"));
}

void TestBrowserProducers::failingProducerTellsWhatFailed()
{
    selectGroup();
    QVERIFY(describeNetworkProducer(m_networkProducer + "error TLUpdateInterfaceList -1010\n"));

    QTRY_VERIFY_WITH_TIMEOUT(panel().contains(QStringLiteral("Reports errors")), kWithinMs);
    QVERIFY(panel().contains(QStringLiteral("TLUpdateInterfaceList gave -1010")));
}

void TestBrowserProducers::interfaceTellsItsProducer()
{
    QTRY_VERIFY_WITH_TIMEOUT(interfaceRow(kNetworkPort), kWithinMs);
    tree()->setCurrentItem(interfaceRow(kNetworkPort));

    QTRY_VERIFY(panel().contains(QStringLiteral("Harbour network cameras")));
    QVERIFY(panel().contains(kFolder + QStringLiteral("KelFGSampleGEV.cti")));
    QVERIFY(!panel().contains(QStringLiteral("KelFGSampleCML")));
}

void TestBrowserProducers::switchedOffProducerTakesItsOpenInterfaceAlong()
{
    openInterface(kNetworkPort);
    QSignalSpy warned(tree(), &KelDeviceTree::sigBeforeDeleteCti);
    switchOff(QStringLiteral("KelFGSampleGEV"));

    QCOMPARE(warned.count(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!interfaceRow(kNetworkPort), kWithinMs);
    QVERIFY(interfaceRow(kGrabberPort));
    QTRY_VERIFY_WITH_TIMEOUT(!isMapped(QStringLiteral("KelFGSampleGEV.cti")), kWithinMs);
}

void TestBrowserProducers::openInterfaceOfAnotherProducerIsLeftAlone()
{
    openInterface(kGrabberPort);
    QVERIFY(interfaceRow(kNetworkPort));
    // It keeps what it listed last, without a row.
    QVERIFY(describeNetworkProducer(m_networkProducer + "error TLUpdateInterfaceList -1010\n"));
    QTRY_VERIFY_WITH_TIMEOUT(!interfaceRow(kNetworkPort), kWithinMs);
    switchOff(QStringLiteral("KelFGSampleGEV"));

    tree()->setCurrentItem(interfaceRow(kGrabberPort));
    QTRY_VERIFY(action(QStringLiteral("Close interface")));
    QVERIFY(interfaceRow(kGrabberPort)->childCount() > 0);
}

void TestBrowserProducers::removedProducerIsLetGoWithItsInterfaceOpen()
{
    import();
    openInterface(kImported);
    trigger(QStringLiteral("Remove imported producer"));

    QTRY_VERIFY_WITH_TIMEOUT(!interfaceRow(kImported), kWithinMs);
    QTRY_VERIFY_WITH_TIMEOUT(!isMapped(m_folder->filePath(QStringLiteral("own.cti"))), kWithinMs);
}

void TestBrowserProducers::removedProducerIsLetGoWhileTheTreeIsFrozen()
{
    import();
    openInterface(kImported);
    trigger(QStringLiteral("Freeze the tree"));
    trigger(QStringLiteral("Remove imported producer"));

    QTRY_VERIFY_WITH_TIMEOUT(!isMapped(m_folder->filePath(QStringLiteral("own.cti"))), kWithinMs);
}

void TestBrowserProducers::importedProducerIsGoneAfterARestart()
{
    import();
    closeWindow();
    openWindow();
    selectGroup();

    QVERIFY(!interfaceRow(kImported));
    QTRY_VERIFY(panel().contains(QStringLiteral("KelFGSampleCML.cti")));
    QVERIFY(!panel().contains(QStringLiteral("own.cti")));
}

QTEST_MAIN(TestBrowserProducers)
#include "tst_browserproducers.moc"
