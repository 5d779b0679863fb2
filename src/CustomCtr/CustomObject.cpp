// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomObject.h>

#include <QFile>
#include <QFileInfo>
#include <QPalette>
#include <QPixmapCache>
#include <QWidget>

#include <cmath>

namespace
{

constexpr int kLargestScale = 3;

// "folder/name.png" for scale 1, "folder/name@2x.png" for scale 2.
QString scaledPath(const QString &path, int scale)
{
    const QFileInfo file(path);
    return QStringLiteral("%1/%2@%3x.%4")
        .arg(file.path(), file.completeBaseName(), QString::number(scale), file.suffix());
}

// QIcon chooses by the sharpest screen at the time it is made; a button may move to another screen later.
QPixmap loadForScale(const QString &path, qreal devicePixelRatio)
{
    const int wanted = qBound(1, static_cast<int>(std::ceil(devicePixelRatio)), kLargestScale);
    const QString key = QStringLiteral("CustomCtr/%1/%2").arg(wanted).arg(path);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    for (int scale = wanted; scale >= 1 && pixmap.isNull(); --scale) {
        const QString file = scale > 1 ? scaledPath(path, scale) : path;
        if (QFile::exists(file) && pixmap.load(file)) {
            pixmap.setDevicePixelRatio(scale);
        }
    }
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace

CustomObject::CustomObject(QWidget *widget)
    : CustomQssHelper(widget)
{
}

CustomObject::~CustomObject() = default;

void CustomObject::cSetBackgroundImage(const QString &strPath, Custom::ItemStatus status,
                                       const QStringList & /*lstClass*/)
{
    if (m_images.value(status) == strPath) {
        return;
    }
    m_images.insert(status, strPath);
    cWidget()->updateGeometry();
    cWidget()->update();
}

QString CustomObject::cBackgroundImage(Custom::ItemStatus status) const
{
    return m_images.value(status);
}

void CustomObject::cSetBackgroundColor(const QString &strColor, Custom::ItemStatus status,
                                       const QStringList & /*lstClass*/)
{
    const QColor color(strColor);
    if (m_colors.value(status) == color) {
        return;
    }
    m_colors.insert(status, color);
    cWidget()->update();
}

QColor CustomObject::cBackgroundColor(Custom::ItemStatus status) const
{
    return m_colors.value(status);
}

QPixmap CustomObject::cBackgroundPixmap(Custom::ItemStatus status) const
{
    const QString path = m_images.value(status, m_images.value(Custom::StatusNormal));
    return path.isEmpty() ? QPixmap() : loadForScale(path, cWidget()->devicePixelRatioF());
}
