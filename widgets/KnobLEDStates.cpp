#include "widgets/KnobLEDStates.h"

#include "app/common/SkinPixmap.h"
#include "device/DeviceParams.h"
#include "widgets/ImageStrip.h"

#include <algorithm>

namespace
{
template <std::size_t rows>
int indexOf(int value, const std::array<int, rows>& min, const std::array<int, rows>& max,
            const std::array<int, rows>& index)
{
    for (std::size_t row = 0; row < rows; ++row) {
        if (value >= min[row] && value <= max[row])
            return index[row];
    }
    return 0;
}

QImage cutOut(int index, qreal ratio)
{
    // The strip goes again: it is as large as all of its frames, of which some are never shown.
    const QPixmap strip = largeSkinPixmap(k_knobPath, ratio);
    return strip.copy(ImageStrip(strip, 1, k_numOfLEDStates).source(0, index).toRect()).toImage();
}
} // namespace

int knobLEDIndex(int ledType, int value)
{
    switch (ledType) {
    case k_ledAscent:
        return indexOf(value, k_minAscentDescendParam, k_maxAscentDescendParam, k_ascentIndex);
    case k_ledDescend:
        return indexOf(value, k_minAscentDescendParam, k_maxAscentDescendParam, k_descendIndex);
    case k_ledConcave:
        return indexOf(value, k_minConcaveConvexParam, k_maxConcaveConvexParam, k_concaveIndex);
    case k_ledConvex:
        return indexOf(value, k_minConcaveConvexParam, k_maxConcaveConvexParam, k_convexIndex);
    default:
        return 0;
    }
}

QImage knobLEDImage(int index, qreal ratio)
{
    struct Kept
    {
        qreal ratio = 0.0;
        std::array<QImage, k_numOfLEDStates> images;
    };
    static Kept kept;
    if (!qFuzzyCompare(kept.ratio, ratio))
        kept = {ratio, {}};
    QImage& image = kept.images[static_cast<std::size_t>(index)];
    if (image.isNull())
        image = cutOut(index, ratio);
    return image;
}

QImage fadedImage(const QImage& image, int opacity)
{
    const double share = std::clamp(opacity, 0, 255) / 255.0;
    std::array<QRgb, 256> scaled; // alpha -> scaled alpha, in place within a pixel
    for (int alpha = 0; alpha < 256; ++alpha)
        scaled[static_cast<std::size_t>(alpha)] = static_cast<QRgb>(alpha * share) << 24;

    QImage faded = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < faded.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(faded.scanLine(y));
        std::for_each(line, line + faded.width(),
                      [&](QRgb& pixel) { pixel = (pixel & RGB_MASK) | scaled[pixel >> 24]; });
    }
    return faded;
}
