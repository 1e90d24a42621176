#pragma once

#include <QImage>
#include <QRect>

/// How a text stands out from its ground, measured in a picture of it.
///
/// Two colours  the commonest one, and the one that contrasts most with it of those with at least k_fewestPixels
///              pixels. Every other colour, such as a shade of the ground, goes with the nearer of them; the colour
///              with fewer pixels is the text.
/// Contrast     is the least there is between two neighbouring pixels, one of the text and one of the ground: what
///              counts is the worst place. So text is to be drawn without smoothing.
/// Units        `area` in device pixels; `ratio` by relative luminance, 1 (equal) to 21 (black and white).
struct TextContrast
{
    static constexpr int k_fewestPixels = 4; ///< fewer are no text: a stop is two pixels square

    QRgb ground = 0;
    QRgb text = 0;
    int textPixels = 0; ///< 0: the area has one colour, or lies outside the picture
    double ratio = 0;   ///< 0 without text

    [[nodiscard]] static TextContrast measure(const QImage& picture, const QRect& area);

    /// Contrast of two colours; which of them is the lighter does not matter.
    [[nodiscard]] static double between(QRgb one, QRgb other);
};
