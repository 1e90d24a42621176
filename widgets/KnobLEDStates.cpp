#include "widgets/KnobLEDStates.h"

#include "app/common/SkinPixmap.h"
#include "device/DeviceParams.h"
#include "widgets/ImageStrip.h"

#include <algorithm>

namespace
{
constexpr int k_fullOpacity = 255;

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

/// A state's picture in the two forms that painting takes.
struct Picture
{
    QImage drawn;    ///< premultiplied
    QImage straight; ///< not premultiplied: what a fade is made from
};

/// All states at once: the strip goes again, and reading it costs more than cutting.
std::array<Picture, k_numOfLEDStates> cutOutAll(qreal ratio)
{
    const QPixmap strip = largeSkinPixmap(k_knobPath, ratio);
    const ImageStrip frames(strip, 1, k_numOfLEDStates);
    std::array<Picture, k_numOfLEDStates> pictures;
    for (int index = 0; index < k_numOfLEDStates; ++index) {
        const QImage drawn = strip.copy(frames.source(0, index).toRect()).toImage();
        pictures[static_cast<std::size_t>(index)] = {drawn, drawn.convertToFormat(QImage::Format_ARGB32)};
    }
    return pictures;
}

const Picture& pictureOf(int index, qreal ratio)
{
    static qreal keptRatio = 0.0;
    static std::array<Picture, k_numOfLEDStates> kept;
    if (!qFuzzyCompare(keptRatio, ratio)) {
        kept = cutOutAll(ratio);
        keptRatio = ratio;
    }
    return kept[static_cast<std::size_t>(index)];
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
    return pictureOf(index, ratio).drawn;
}

QImage fadedKnobLEDImage(int index, qreal ratio, int opacity)
{
    const Picture& picture = pictureOf(index, ratio);
    return opacity >= k_fullOpacity ? picture.drawn : fadedImage(picture.straight, opacity);
}

QImage fadedImage(const QImage& image, int opacity)
{
    Q_ASSERT(image.isNull() || image.format() == QImage::Format_ARGB32);
    const double share = std::clamp(opacity, 0, k_fullOpacity) / double{k_fullOpacity};
    std::array<QRgb, 256> scaled; // alpha -> scaled alpha, in place within a pixel
    for (int alpha = 0; alpha < 256; ++alpha)
        scaled[static_cast<std::size_t>(alpha)] = static_cast<QRgb>(alpha * share) << 24;

    QImage faded(image.size(), QImage::Format_ARGB32);
    faded.setDevicePixelRatio(image.devicePixelRatio());
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        std::transform(line, line + image.width(), reinterpret_cast<QRgb*>(faded.scanLine(y)),
                       [&](QRgb pixel) { return (pixel & RGB_MASK) | scaled[pixel >> 24]; });
    }
    faded.convertTo(QImage::Format_ARGB32_Premultiplied); // several pixels at a time
    return faded;
}
