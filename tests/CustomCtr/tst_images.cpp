// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomDefine.h>

#include <QImage>
#include <QtTest>

#include <cmath>

namespace
{

constexpr int kIconSize = 24;
constexpr int kButtonSize = 18;

const QStringList kStateIcons = {
    QStringLiteral("CameraFree"),         QStringLiteral("CameraInUse"),
    QStringLiteral("CameraNoReachable"),  QStringLiteral("CameraConnected"),
    QStringLiteral("CameraGrabbing"),     QStringLiteral("MulticastDisConnect"),
    QStringLiteral("MulticastConnected"), QStringLiteral("USBDisConnect"),
    QStringLiteral("USBInUse"),           QStringLiteral("USBConnected"),
    QStringLiteral("USBGrabbing"),        QStringLiteral("USBNoReachable"),
    QStringLiteral("USB2DisConnect"),     QStringLiteral("USB2InUse"),
    QStringLiteral("USB2Connected"),      QStringLiteral("USB2Grabbing"),
    QStringLiteral("USB2NoReachable"),    QStringLiteral("CameraLinkFree"),
    QStringLiteral("CameraLinkConnect"),  QStringLiteral("CameraLinkNoReach"),
    QStringLiteral("IntrefaceFree"),      QStringLiteral("IntrefaceOpen"),
    QStringLiteral("IntrefaceInUse"),
};

const QStringList kButtons = {
    QStringLiteral(":/KelToolBarBtn/item_connect"),
    QStringLiteral(":/KelToolBarBtn/item_disconnet"),
    QStringLiteral(":/CustomCtr/tree/Gray_refresh"),
};

QString iconPath(const QString &name)
{
    return QStringLiteral(":/Kel/tree/%1.png").arg(name);
}

QImage loaded(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

/// What an eye without colours sees on a ground: a grey value per pixel.
int greyAt(const QImage &image, int x, int y, int ground)
{
    const QRgb pixel = image.pixel(x, y);
    const int alpha = qAlpha(pixel);
    return (qGray(pixel) * alpha + ground * (255 - alpha)) / 255;
}

/// Part of the pixels whose grey differs clearly, in percent.
int greyDifference(const QImage &one, const QImage &other, int ground)
{
    constexpr int kClear = 60;
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            different += std::abs(greyAt(one, x, y, ground) - greyAt(other, x, y, ground)) > kClear;
        }
    }
    return different * 100 / (one.width() * one.height());
}

/// Part of the pixels that are drawn in the one and clear in the other, in percent: colour does not count.
int shapeDifference(const QImage &one, const QImage &other)
{
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            different += (qAlpha(one.pixel(x, y)) > 128) != (qAlpha(other.pixel(x, y)) > 128);
        }
    }
    return different * 100 / (one.width() * one.height());
}

qreal luminance(QRgb color)
{
    const auto linear = [](int byte) {
        const qreal value = byte / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

/// Part of the image's area that stands out from a ground with a contrast of 3 or more, in percent.
int visibleArea(const QImage &image, const QColor &ground)
{
    const qreal below = luminance(ground.rgb());
    int visible = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const qreal above = luminance(pixel);
            const qreal contrast = (qMax(above, below) + 0.05) / (qMin(above, below) + 0.05);
            visible += qAlpha(pixel) > 160 && contrast >= 3;
        }
    }
    return visible * 100 / (image.width() * image.height());
}

} // namespace

class ImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyImageIsThereInThreeResolutions_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("size");
        for (const QString &name : kStateIcons) {
            QTest::newRow(qPrintable(name)) << QStringLiteral(":/Kel/tree/") + name << kIconSize;
        }
        for (const QString &name : kButtons) {
            for (const char *state : {"", "_sel", "_dis"}) {
                const QString path = name + QLatin1String(state);
                QTest::newRow(qPrintable(path)) << path << kButtonSize;
            }
        }
        QTest::newRow("conf") << QStringLiteral(":/CustomCtr/tree/conf") << kButtonSize;
        QTest::newRow("conf_sel") << QStringLiteral(":/CustomCtr/tree/conf_sel") << kButtonSize;
    }

    void everyImageIsThereInThreeResolutions()
    {
        QFETCH(QString, path);
        QFETCH(int, size);

        QCOMPARE(QImage(path + QStringLiteral(".png")).size(), QSize(size, size));
        QCOMPARE(QImage(path + QStringLiteral("@2x.png")).size(), 2 * QSize(size, size));
        QCOMPARE(QImage(path + QStringLiteral("@3x.png")).size(), 3 * QSize(size, size));
    }

    void noTwoStateIconsLookAlikeWithoutColours()
    {
        for (int i = 0; i < kStateIcons.size(); ++i) {
            for (int j = i + 1; j < kStateIcons.size(); ++j) {
                const QImage one = loaded(iconPath(kStateIcons.at(i)));
                const QImage other = loaded(iconPath(kStateIcons.at(j)));
                const int least = qMin(greyDifference(one, other, 255), greyDifference(one, other, 30));
                QVERIFY2(least >= 1, qPrintable(QStringLiteral("%1 and %2: %3 %")
                                                    .arg(kStateIcons.at(i), kStateIcons.at(j))
                                                    .arg(least)));
            }
        }
    }

    void statesOfOneFamilyDifferInShape_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("count");
        QTest::newRow("GigE") << 0 << 5;
        QTest::newRow("multicast") << 5 << 2;
        QTest::newRow("USB3") << 7 << 5;
        QTest::newRow("USB2") << 12 << 5;
        QTest::newRow("Camera Link") << 17 << 3;
        QTest::newRow("GenTL interface") << 20 << 3;
    }

    void statesOfOneFamilyDifferInShape()
    {
        QFETCH(int, first);
        QFETCH(int, count);
        const QStringList family = kStateIcons.mid(first, count);

        for (int i = 0; i < family.size(); ++i) {
            for (int j = i + 1; j < family.size(); ++j) {
                const int different =
                    shapeDifference(loaded(iconPath(family.at(i))), loaded(iconPath(family.at(j))));
                QVERIFY2(different >= 4,
                         qPrintable(
                             QStringLiteral("%1 and %2: %3 %").arg(family.at(i), family.at(j)).arg(different)));
            }
        }
    }

    void iconsStandOutInBothThemes_data()
    {
        QTest::addColumn<QString>("path");
        for (const QString &name : kStateIcons) {
            QTest::newRow(qPrintable(name)) << iconPath(name);
        }
        for (const QString &name : kButtons) {
            QTest::newRow(qPrintable(name)) << name + QStringLiteral(".png");
            QTest::newRow(qPrintable(name + QStringLiteral("_sel"))) << name + QStringLiteral("_sel.png");
        }
    }

    void iconsStandOutInBothThemes()
    {
        QFETCH(QString, path);
        const QImage image = loaded(path);

        for (const Custom::Theme theme : {Custom::ThemeDark, Custom::ThemeLight}) {
            Custom::setTheme(theme);
            const QColor ground = Custom::getDataBaseColor(QStringLiteral("Base"), QRect()).color();
            const int visible = visibleArea(image, ground);
            QVERIFY2(visible >= 8, qPrintable(QStringLiteral("%1 %").arg(visible)));
        }
    }

    void statesOfAButtonDifferInShape()
    {
        for (const QString &name : kButtons) {
            const QImage normal = loaded(name + QStringLiteral(".png"));
            const QImage selected = loaded(name + QStringLiteral("_sel.png"));
            const QImage disabled = loaded(name + QStringLiteral("_dis.png"));
            QVERIFY2(shapeDifference(normal, selected) >= 10, qPrintable(name));
            QVERIFY2(shapeDifference(normal, disabled) >= 4, qPrintable(name));
        }
    }

    void connectAndDisconnectDifferInShape()
    {
        QVERIFY(shapeDifference(loaded(QStringLiteral(":/KelToolBarBtn/item_connect.png")),
                                loaded(QStringLiteral(":/KelToolBarBtn/item_disconnet.png"))) >= 10);
    }
};

QTEST_MAIN(ImagesTest)
#include "tst_images.moc"
