#pragma once

#include <QImage>

/// The image with every pixel's alpha scaled by opacity / 255 and cut toward zero; the colours stay.
///
/// image     in Format_ARGB32, or null, which stays null.
/// opacity   0 to 255; what lies outside counts as the nearer end.
[[nodiscard]] QImage fadedImage(QImage image, int opacity);
