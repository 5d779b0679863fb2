// SPDX-License-Identifier: Apache-2.0
// The shipped tree with a simulated serial library, from the line to the row.
#include <DeviceEnumMng/KelDeviceTree.h>
#include <KelAIndustryControl/KelARecords.h>

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidgetItem>
#include <QtTest>

#include <algorithm>
#include <memory>

class TestCameraLinkRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void rowNamesPortModelAndSerialNumber();
    void rowGoesWithItsPort();
    void passesLeaveTheEventLoopFree();

private:
    bool describe(const QByteArray &ports) const;
    bool enumerate();
    QStringList rows() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KelDeviceTree> m_tree;
    QTreeWidgetItem *m_group = nullptr;
};

void TestCameraLinkRows::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    const QString library = m_folder->filePath(QStringLiteral("clsertst.so"));
    QVERIFY(QFile::copy(QStringLiteral(SIMULATED_SERIAL_LIBRARY), library));
    qputenv("KELS_CLSERIAL", QFile::encodeName(library));
    m_tree = std::make_unique<KelDeviceTree>();
    m_group = new QTreeWidgetItem(m_tree.get(), {QStringLiteral("Camera Link")});
    m_group->setData(0, KelDeviceTree::ItemTypeRole, static_cast<int>(KelDeviceTree::ItemCamLinkRoot));
    m_group->setData(0, KelDeviceTree::ItemIdRole, QVariant::fromValue<long>(-1));
}

void TestCameraLinkRows::cleanup()
{
    m_tree.reset();
}

bool TestCameraLinkRows::describe(const QByteArray &ports) const
{
    QFile file(m_folder->filePath(QStringLiteral("clsertst.so.ports")));
    return file.open(QIODevice::WriteOnly) && file.write(ports) == ports.size();
}

bool TestCameraLinkRows::enumerate()
{
    QSignalSpy finished(m_tree.get(), &KelDeviceTree::sigFinishEnumOnce);
    m_tree->updateDeviceTypes(KELA_INTERFACE_TYPE_CAMERALINK, true, true, false);
    return QTest::qWaitFor([&finished] { return finished.count() > 0; }, 30000);
}

QStringList TestCameraLinkRows::rows() const
{
    QStringList texts;
    for (int i = 0; i < m_group->childCount(); ++i)
        texts += m_group->child(i)->text(0);
    texts.sort();
    return texts;
}

void TestCameraLinkRows::rowNamesPortModelAndSerialNumber()
{
    QVERIFY(describe("Grabber_0/A camera instant model=EX-20 serial=CL001 user=left\n"
                     "Grabber_0/B camera instant model=EX-21 serial=CL002\n"
                     "Grabber_1/A silent\n"));

    QVERIFY(enumerate());

    QCOMPARE(rows(), QStringList({QStringLiteral("Grabber_0/A EX-20 (CL001)"),
                                  QStringLiteral("Grabber_0/B EX-21 (CL002)")}));
}

void TestCameraLinkRows::rowGoesWithItsPort()
{
    QVERIFY(describe("A camera instant model=EX-20 serial=CL001\nB camera instant model=EX-21 serial=CL002\n"));
    QVERIFY(enumerate());
    QVERIFY(describe("B camera instant model=EX-21 serial=CL002\n"));

    QVERIFY(enumerate());

    QCOMPARE(rows(), QStringList(QStringLiteral("B EX-21 (CL002)")));
}

void TestCameraLinkRows::passesLeaveTheEventLoopFree()
{
    QVERIFY(describe("A camera model=EX-20 serial=CL001\nB silent\n"));
    QTimer ticker;
    QElapsedTimer sinceTick;
    QElapsedTimer sinceBegin;
    qint64 longestGap = 0;
    connect(&ticker, &QTimer::timeout, this, [&] { longestGap = std::max(longestGap, sinceTick.restart()); });
    sinceBegin.start();
    sinceTick.start();
    ticker.start(10);

    QVERIFY(enumerate());

    QCOMPARE(m_group->childCount(), 1);
    // What was seen is 20 ms; a pass that held the loop would leave one gap, as long as itself.
    QVERIFY2(longestGap < sinceBegin.elapsed() / 2, qPrintable(QString::number(longestGap)));
}

QTEST_MAIN(TestCameraLinkRows)
#include "tst_cameralinkrows.moc"
