#include "widgets/FadedImage.h"

#include <algorithm>
#include <array>

QImage fadedImage(QImage image, int opacity)
{
    Q_ASSERT(image.isNull() || image.format() == QImage::Format_ARGB32);
    const double share = std::clamp(opacity, 0, 255) / 255.0;
    std::array<QRgb, 256> scaled; // alpha -> scaled alpha, in place within a pixel
    for (int alpha = 0; alpha < 256; ++alpha)
        scaled[static_cast<std::size_t>(alpha)] = static_cast<QRgb>(alpha * share) << 24;

    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::for_each(line, line + image.width(),
                      [&](QRgb& pixel) { pixel = (pixel & RGB_MASK) | scaled[pixel >> 24]; });
    }
    return image;
}
