#include "app/common/OpaquePixmap.h"

#include <algorithm>

// Row by row, because Qt would convert a large picture on threads that stay for half a minute.
QPixmap opaquePixmap(const QImage& picture)
{
    Q_ASSERT(picture.isNull() || picture.depth() == 32);
    QImage opaque(picture.size(), QImage::Format_RGB888);
    opaque.setDevicePixelRatio(picture.devicePixelRatio());
    for (int y = 0; y < picture.height(); ++y) {
        const auto* source = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        uchar* target = opaque.scanLine(y);
        std::for_each_n(source, picture.width(), [&target](QRgb pixel) {
            *target++ = static_cast<uchar>(qRed(pixel));
            *target++ = static_cast<uchar>(qGreen(pixel));
            *target++ = static_cast<uchar>(qBlue(pixel));
        });
    }
    return QPixmap::fromImage(std::move(opaque), Qt::NoFormatConversion);
}
