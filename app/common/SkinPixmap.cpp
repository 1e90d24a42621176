#include "app/common/SkinPixmap.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPixmapCache>
#include <QResource>

#include <algorithm>
#include <cmath>
#include <memory>

namespace
{
constexpr int k_densest = 3;

struct Variant
{
    QString path;
    int density;
};

Variant variantFor(const QString& path, qreal ratio)
{
    const auto suffix = path.lastIndexOf(QLatin1Char('.'));
    for (int density = std::min(static_cast<int>(std::ceil(ratio)), k_densest); density > 1; --density) {
        QString densePath = path;
        densePath.insert(suffix, QStringLiteral("@%1x").arg(density));
        if (QFile::exists(densePath))
            return {densePath, density};
    }
    return {path, 1};
}

/// A picture of plain pixels, shown where it was unpacked: "P6", width, height and highest value in a line or more of
/// text, then three bytes a pixel to the end. Null if there are fewer.
QImage plainPicture(const QByteArray& file)
{
    constexpr qsizetype k_longestHeader = 20;
    const QList<QByteArray> header = file.first(std::min(file.size(), k_longestHeader)).simplified().split(' ');
    const QSize size(header.value(1).toInt(), header.value(2).toInt());
    const qsizetype line = qsizetype{3} * size.width();
    const qsizetype start = file.size() - line * size.height();
    if (size.isEmpty() || start < 0)
        return {};
    auto pixels = std::make_unique<QByteArray>(file);
    const auto* data = reinterpret_cast<const uchar*>(pixels->constData()) + start;
    const auto free = [](void* owner) { delete static_cast<QByteArray*>(owner); };
    return {data, size.width(), size.height(), line, QImage::Format_RGB888, free, pixels.release()};
}

QImage decodedPicture(const QString& path)
{
    QImageReader reader(path, "png");
    // Otherwise every image plugin of the system is loaded and asked, whatever the format.
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

QImage readPicture(const Variant& variant)
{
    const QByteArray file = QResource(variant.path).uncompressedData();
    QImage picture = file.startsWith("P6") ? plainPicture(file) : decodedPicture(variant.path);
    picture.setDevicePixelRatio(variant.density);
    return picture;
}

qreal densestRatio()
{
    return qGuiApp->devicePixelRatio();
}
} // namespace

QPixmap skinPixmap(const QString& path, qreal ratio)
{
    const Variant variant = variantFor(path, ratio);
    QPixmap pixmap;
    if (!QPixmapCache::find(variant.path, &pixmap)) {
        pixmap = QPixmap::fromImage(readPicture(variant));
        QPixmapCache::insert(variant.path, pixmap);
    }
    return pixmap;
}

QPixmap skinPixmap(const QString& path)
{
    return skinPixmap(path, densestRatio());
}

QPixmap largeSkinPixmap(const QString& path, qreal ratio)
{
    const QImage picture = readPicture(variantFor(path, ratio));
    return QPixmap::fromImage(picture, picture.hasAlphaChannel() ? Qt::AutoColor : Qt::NoFormatConversion);
}

QPixmap largeSkinPixmap(const QString& path)
{
    return largeSkinPixmap(path, densestRatio());
}
