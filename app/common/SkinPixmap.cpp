#include "app/common/SkinPixmap.h"

#include <QFile>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int k_densest = 3;
}

QPixmap skinPixmap(const QString& path, qreal ratio)
{
    const auto suffix = path.lastIndexOf(QLatin1Char('.'));
    for (int density = std::min(static_cast<int>(std::ceil(ratio)), k_densest); density > 1; --density) {
        QString densePath = path;
        densePath.insert(suffix, QStringLiteral("@%1x").arg(density));
        if (QFile::exists(densePath)) {
            QPixmap pixmap(densePath);
            pixmap.setDevicePixelRatio(density);
            return pixmap;
        }
    }
    return QPixmap(path);
}

QPixmap skinPixmap(const QString& path)
{
    return skinPixmap(path, qGuiApp->devicePixelRatio());
}
