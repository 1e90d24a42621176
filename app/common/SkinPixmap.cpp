#include "app/common/SkinPixmap.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPixmapCache>

#include <algorithm>
#include <cmath>

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

QImage readPicture(const Variant& variant)
{
    QImageReader reader(variant.path, "png");
    // Otherwise every image plugin of the system is loaded and asked, whatever the format.
    reader.setAutoDetectImageFormat(false);
    QImage picture = reader.read();
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
    return picture.hasAlphaChannel() ? QPixmap::fromImage(picture) : opaquePixmap(picture);
}

QPixmap largeSkinPixmap(const QString& path)
{
    return largeSkinPixmap(path, densestRatio());
}

QPixmap opaquePixmap(const QImage& picture)
{
    return QPixmap::fromImage(picture.convertToFormat(QImage::Format_RGB32), Qt::NoFormatConversion);
}
