#pragma once

#include <QPainter>
#include <QPixmap>
#include <QWidget>

/// The colour that fills one frame of a coloredStrip().
inline QColor frameColor(int column, int row)
{
    return {40 + 60 * column, 20 + 40 * row, 200};
}

/// A picture in which each frame has a colour of its own.
/// frame   in logical pixels.      ratio   device pixels per logical pixel.
inline QPixmap coloredStrip(const QSize& frame, int columns, int rows, qreal ratio = 1)
{
    QPixmap strip((QSizeF(frame.width() * columns, frame.height() * rows) * ratio).toSize());
    QPainter painter(&strip);
    for (int column = 0; column < columns; ++column) {
        for (int row = 0; row < rows; ++row) {
            const QPointF topLeft(frame.width() * column, frame.height() * row);
            painter.fillRect(QRectF(topLeft * ratio, QSizeF(frame) * ratio), frameColor(column, row));
        }
    }
    painter.end();
    strip.setDevicePixelRatio(ratio);
    return strip;
}

/// What the widget shows at a logical point, on a screen of any density.
inline QColor shownColor(QWidget& widget, const QPoint& point)
{
    const QImage image = widget.grab().toImage();
    const qreal ratio = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>((point.x() + 0.5) * ratio), static_cast<int>((point.y() + 0.5) * ratio));
}
