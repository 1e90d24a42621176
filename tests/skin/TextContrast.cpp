#include "tests/skin/TextContrast.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
double luminance(QRgb colour)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

QHash<QRgb, int> countColours(const QImage& picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    return counts;
}

QRgb commonest(const QHash<QRgb, int>& counts)
{
    QRgb found = 0;
    int most = 0;
    for (const auto& [colour, pixels] : counts.asKeyValueRange()) {
        if (pixels > most) {
            most = pixels;
            found = colour;
        }
    }
    return found;
}

/// The colour that contrasts most with the given one; that one itself if there is no other with enough pixels.
QRgb opposite(const QHash<QRgb, int>& counts, QRgb given)
{
    QRgb found = given;
    for (const auto& [colour, pixels] : counts.asKeyValueRange()) {
        if (pixels >= TextContrast::k_fewestPixels &&
            TextContrast::between(colour, given) > TextContrast::between(found, given))
            found = colour;
    }
    return found;
}

/// The least contrast between two neighbours of which one, and only one, is nearer to a given colour than to the other.
double leastContrast(const QImage& picture, QRgb one, QRgb other)
{
    const auto isOne = [&](QRgb pixel) {
        return TextContrast::between(pixel, one) < TextContrast::between(pixel, other);
    };
    double least = TextContrast::between(one, other);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            for (const QPoint beside : {QPoint(x + 1, y), QPoint(x, y + 1)}) {
                if (picture.valid(beside) && isOne(pixel) != isOne(picture.pixel(beside)))
                    least = std::min(least, TextContrast::between(pixel, picture.pixel(beside)));
            }
        }
    }
    return least;
}
} // namespace

double TextContrast::between(QRgb one, QRgb other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

TextContrast TextContrast::measure(const QImage& picture, const QRect& area)
{
    TextContrast result;
    const QRect inside = area & picture.rect();
    if (inside.isEmpty())
        return result;
    const QImage part = picture.copy(inside).convertToFormat(QImage::Format_RGB32);
    const QHash<QRgb, int> counts = countColours(part);
    result.ground = commonest(counts);
    result.text = opposite(counts, result.ground);
    if (result.text == result.ground)
        return result;

    int groundPixels = 0;
    for (const auto& [colour, pixels] : counts.asKeyValueRange())
        (between(colour, result.ground) < between(colour, result.text) ? groundPixels : result.textPixels) += pixels;
    if (result.textPixels > groundPixels) {
        std::swap(result.text, result.ground);
        std::swap(result.textPixels, groundPixels);
    }
    result.ratio = leastContrast(part, result.text, result.ground);
    return result;
}
