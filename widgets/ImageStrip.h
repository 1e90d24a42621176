#pragma once

#include <QPixmap>
#include <QRect>

/// Arithmetic of a picture that holds equal frames in columns and rows, and of placing one frame in a widget.
///
/// Units    frame sizes and targets are in logical pixels, sources in the picture's own (device) pixels, so that a
///          frame of a picture drawn for a dense screen covers the same place with more detail.
/// Threads  arithmetic alone, in any; the picture is looked at in the constructor only.
/// Ranges   columns and rows are at least 1; a column or row outside them names a place outside the picture.
class ImageStrip
{
  public:
    ImageStrip(const QPixmap& picture, int columns, int rows);

    /// size   the whole picture's, in logical pixels.      ratio   device pixels per logical pixel.
    ImageStrip(const QSizeF& size, qreal ratio, int columns, int rows);

    /// Whole logical pixels; what the division leaves over at the right and bottom belongs to no frame.
    [[nodiscard]] QSize frameSize() const;

    /// Where a frame lies in the picture.
    [[nodiscard]] QRectF source(int column, int row) const;

    /// Where a frame lies in an area at (0, 0), unscaled: at the right, bottom or centre, else at the left or top.
    [[nodiscard]] QRect target(const QSize& area, Qt::Alignment alignment) const;

  private:
    QSize m_frameSize;
    qreal m_ratio;
};
