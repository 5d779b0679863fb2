// SPDX-License-Identifier: Apache-2.0
#include "CustomImages.h"

#include <QFile>
#include <QFileInfo>
#include <QPixmapCache>

#include <cmath>

namespace
{

constexpr int kLargestScale = 3;

QString scaledPath(const QString &path, int scale)
{
    const QFileInfo file(path);
    return QStringLiteral("%1/%2@%3x.%4")
        .arg(file.path(), file.completeBaseName(), QString::number(scale), file.suffix());
}

QPixmap load(const QString &path, int wantedScale)
{
    QPixmap pixmap;
    for (int scale = wantedScale; scale >= 1 && pixmap.isNull(); --scale) {
        const QString file = scale > 1 ? scaledPath(path, scale) : path;
        if (QFile::exists(file) && pixmap.load(file)) {
            pixmap.setDevicePixelRatio(scale);
        }
    }
    return pixmap;
}

} // namespace

// QIcon chooses by the sharpest screen at the time it is made; a button may move to another screen later.
QPixmap CustomImages::pixmap(const QString &path, qreal devicePixelRatio)
{
    if (path.isEmpty()) {
        return QPixmap();
    }
    const int scale = qBound(1, static_cast<int>(std::ceil(devicePixelRatio)), kLargestScale);
    const QString key = QStringLiteral("CustomCtr/%1/%2").arg(QString::number(scale), path);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = load(path, scale);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}
