// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <QtTest>

namespace
{

// The call returns when the dialog does, so what happens in it is prepared before. The dialog lists its folder
// when it finds time: what it does not take at once is tried again.
template <typename Act>
std::unique_ptr<QTimer> whenShown(Act act)
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [act] {
        if (auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            act(dialog);
        }
    });
    timer->start(20);
    return timer;
}

void typeAndAccept(QFileDialog *dialog, const QString &name)
{
    dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(name);
    QMetaObject::invokeMethod(dialog, "accept");
}

} // namespace

class KelInterfaceOpenFileTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    QString file(const QString &name) const { return m_folder.path() + QLatin1Char('/') + name; }

private Q_SLOTS:
    void initTestCase()
    {
        for (const QString &name : {QStringLiteral("a.cti"), QStringLiteral("b.txt")}) {
            QFile made(file(name));
            QVERIFY(made.open(QIODevice::WriteOnly));
        }
    }

    void cleanup() { qunsetenv("GENICAM_GENTL64_PATH"); }

    void chosenFileIsReturned()
    {
        const auto steps =
            whenShown([](QFileDialog *dialog) { typeAndAccept(dialog, QStringLiteral("a.cti")); });

        QCOMPARE(KelInterface::getOpenFileName(nullptr, QStringLiteral("Caption"), m_folder.path(), QString()),
                 file(QStringLiteral("a.cti")));
    }

    void cancellingReturnsNothing()
    {
        const auto steps = whenShown([](QFileDialog *dialog) { dialog->reject(); });

        QCOMPARE(KelInterface::getOpenFileName(nullptr, QString(), m_folder.path(), QString()), QString());
    }

    void captionFolderAndFilterReachTheDialog()
    {
        QString caption;
        QString folder;
        QStringList filters;
        const auto steps = whenShown([&](QFileDialog *dialog) {
            caption = dialog->windowTitle();
            folder = dialog->directory().path();
            filters = dialog->nameFilters();
            dialog->reject();
        });
        QString selected = QStringLiteral("kept");

        KelInterface::getOpenFileName(nullptr, QStringLiteral("Select Cti File."), m_folder.path(),
                                      QStringLiteral("cti file(*.cti) | *.cti"), &selected,
                                      QFileDialog::DontUseNativeDialog);

        QCOMPARE(caption, QStringLiteral("Select Cti File."));
        QCOMPARE(folder, m_folder.path());
        QCOMPARE(filters, QStringList{QStringLiteral("cti file(*.cti) | *.cti")});
        QCOMPARE(selected, QStringLiteral("kept"));
    }

    void chosenFilterIsReported()
    {
        const auto steps = whenShown([](QFileDialog *dialog) {
            dialog->selectNameFilter(QStringLiteral("Text (*.txt)"));
            typeAndAccept(dialog, QStringLiteral("b.txt"));
        });
        QString selected;

        KelInterface::getOpenFileName(nullptr, QString(), m_folder.path(),
                                      QStringLiteral("Producers (*.cti);;Text (*.txt)"), &selected);

        QCOMPARE(selected, QStringLiteral("Text (*.txt)"));
    }

    void sideBarOffersTheProducerFolders()
    {
        const QTemporaryDir other;
        const QString path = m_folder.path() + QStringLiteral("::/no/such/folder:") + other.path() +
                             QLatin1Char(':') + m_folder.path();
        qputenv("GENICAM_GENTL64_PATH", QFile::encodeName(path));
        QList<QUrl> offered;
        bool isOurs = false;
        const auto steps = whenShown([&](QFileDialog *dialog) {
            offered = dialog->sidebarUrls();
            isOurs = dialog->testOption(QFileDialog::DontUseNativeDialog);
            dialog->reject();
        });

        KelInterface::getOpenFileName(nullptr, QString(), m_folder.path(), QString());

        QVERIFY(isOurs);
        QCOMPARE(offered.count(QUrl::fromLocalFile(m_folder.path())), 1);
        QCOMPARE(offered.count(QUrl::fromLocalFile(other.path())), 1);
        QCOMPARE(offered.count(QUrl::fromLocalFile(QStringLiteral("/no/such/folder"))), 0);
    }

    void windowThatGoesAwayTakesTheDialogAlong()
    {
        auto *window = new QWidget;
        window->show();
        const auto steps = whenShown([window](QFileDialog *) { delete window; });

        QCOMPARE(KelInterface::getOpenFileName(window, QString(), m_folder.path(), QString()), QString());
    }
};

QTEST_MAIN(KelInterfaceOpenFileTest)
#include "tst_kelinterface_openfile.moc"
