#pragma once

#include <QImage>

/// How far two colours are apart in the channel in which they differ most, 0 to 255.
[[nodiscard]] int channelDistance(QRgb a, QRgb b);

/// How far a picture is from the one that it should be.
///
/// A pixel differs when one of its channels is more than k_tolerance away: circles and shades may come out a few steps
/// different on another processor, and when the pictures for a denser screen nearby are scaled down. Nothing else may
/// differ but a stray pixel at the edge of a circle: the shortest caption has more pixels than may differ in the whole
/// window.
struct PictureDifference
{
    static constexpr int k_tolerance = 24;       ///< of 255
    static constexpr double k_allowed = 1 / 2e4; ///< share of the pixels

    qsizetype pixels = 0;  ///< that differ
    qsizetype allowed = 0; ///< of this picture's pixels
    bool sameSize = false; ///< otherwise nothing else has been compared
    QImage marked;         ///< the picture in pale grey, what differs in red

    PictureDifference(const QImage& actual, const QImage& expected);

    [[nodiscard]] bool isSmall() const;
};
