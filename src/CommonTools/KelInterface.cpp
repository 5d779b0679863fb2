// SPDX-License-Identifier: Apache-2.0
#include <CommonTools/KelInterface.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>
#include <QUrl>

namespace
{

QString wantedDataFolder()
{
    const QByteArray moved = qgetenv("KELS_PROGRAM_DATA");
    if (!moved.isEmpty()) {
        return QDir::cleanPath(QDir(QFile::decodeName(moved)).absolutePath());
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/KELS");
}

QList<QUrl> producerFolders()
{
    const QString paths = QFile::decodeName(qgetenv("GENICAM_GENTL64_PATH"));
    QList<QUrl> folders;
    for (const QString &path : paths.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        const QUrl url = QUrl::fromLocalFile(path);
        if (QFileInfo(path).isDir() && !folders.contains(url)) {
            folders.append(url);
        }
    }
    return folders;
}

} // namespace

namespace KelInterface
{

QString programDataPath()
{
    QString folder = wantedDataFolder();
    QDir().mkpath(folder);
    return folder;
}

bool testFlag(int flag, int value)
{
    return (value & flag) == flag && (flag != 0 || value == 0);
}

QString getOpenFileName(QWidget *pParent, const QString &strCaption, const QString &strFolder,
                        const QString &strFilter, QString *pstrSelectedFilter, QFileDialog::Options options)
{
    // The parent may be destroyed while the dialog is open, and takes the dialog along.
    const QPointer<QFileDialog> dialog = new QFileDialog(pParent, strCaption, strFolder, strFilter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setOptions(options);

    const QList<QUrl> folders = producerFolders();
    if (!folders.isEmpty()) {
        // Only Qt's own dialog has a side bar that a program can fill.
        dialog->setOption(QFileDialog::DontUseNativeDialog);
        dialog->setSidebarUrls(dialog->sidebarUrls() + folders);
    }

    QString chosen;
    if (dialog->exec() == QDialog::Accepted && dialog) {
        chosen = dialog->selectedFiles().value(0);
        if (pstrSelectedFilter) {
            *pstrSelectedFilter = dialog->selectedNameFilter();
        }
    }
    delete dialog;
    return chosen;
}

} // namespace KelInterface
