#pragma once

#include <QImage>
#include <QString>

#include <array>

/// The six states of a knob's LED ring: which of them stands for a value, and what it looks like.
///
/// The value ranges, both ends included, are uneven: the ends and, for concave and convex, the middle have states of
/// their own.

inline constexpr int k_numOfLEDStates = 6;

inline constexpr std::array<int, 6> k_minAscentDescendParam{0, 1, 33, 64, 95, 127};
inline constexpr std::array<int, 6> k_maxAscentDescendParam{0, 32, 63, 94, 126, 127};
inline constexpr std::array<int, 6> k_ascentIndex{0, 1, 2, 3, 4, 5};
inline constexpr std::array<int, 6> k_descendIndex{5, 4, 3, 2, 1, 0};

inline constexpr std::array<int, 11> k_minConcaveConvexParam{0, 1, 17, 33, 49, 64, 65, 79, 95, 111, 127};
inline constexpr std::array<int, 11> k_maxConcaveConvexParam{0, 16, 32, 48, 63, 64, 78, 94, 110, 126, 127};
inline constexpr std::array<int, 11> k_concaveIndex{5, 4, 3, 2, 1, 0, 1, 2, 3, 4, 5};
inline constexpr std::array<int, 11> k_convexIndex{0, 1, 2, 3, 4, 5, 4, 3, 2, 1, 0};

/// ledType   a LEDType.      value   the knob's, 0 to 127.
/// 0 for any other type or value. Any thread.
[[nodiscard]] int knobLEDIndex(int ledType, int value);

inline const QString k_knobPath = QStringLiteral(":images/ktz_jx_knob.png");

/// A state's picture, 43 x 43 logical pixels, premultiplied as it is drawn. GUI thread only.
///
/// index   0 to 5.      ratio   device pixels per logical pixel, of the densest screen.
/// Memory  all six are cut out of the strip when the first is shown, and kept for all knobs as long as the ratio stays,
///         each once as it is drawn and once as it fades: 89 KB at ratio 1, 355 KB at 2, 799 KB at 3.
[[nodiscard]] QImage knobLEDImage(int index, qreal ratio);

/// The same, faded as fadedImage() does.
[[nodiscard]] QImage fadedKnobLEDImage(int index, qreal ratio, int opacity);

/// The image with every pixel's alpha scaled by opacity / 255 and cut toward zero; the colours stay. Premultiplied only
/// then, as it is drawn: a cut alpha times a colour is not the same as both cut together. Any thread.
///
/// image     not premultiplied, QImage::Format_ARGB32; or null, and stays so.
/// opacity   0 to 255; what lies outside counts as the nearer end.
[[nodiscard]] QImage fadedImage(const QImage& image, int opacity);
