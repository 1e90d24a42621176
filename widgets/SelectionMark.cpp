#include "widgets/SelectionMark.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
constexpr QColor k_color{102, 102, 102};
constexpr int k_cornerLength = 7;

// The corners themselves are left out, as in the frames of the fields.
void fillEdges(QPainter& painter, const QRect& outer, int line)
{
    const QRect inner = outer.adjusted(line, line, -line, -line);
    painter.fillRect(inner.left(), outer.top(), inner.width(), line, k_color);
    painter.fillRect(inner.left(), inner.bottom() + 1, inner.width(), line, k_color);
    painter.fillRect(outer.left(), inner.top(), line, inner.height(), k_color);
    painter.fillRect(inner.right() + 1, inner.top(), line, inner.height(), k_color);
}
} // namespace

void SelectionMark::paint(QPainter& painter, const QRect& outer, Shape shape)
{
    painter.save();
    // From here on in device pixels, so that no line falls between two of them.
    const QTransform toDevice = painter.deviceTransform();
    const QRect mark = toDevice.mapRect(QRectF(outer)).toRect();
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    const int line = std::max(1, static_cast<int>(std::lround(toDevice.m11())));
    if (shape == Shape::Corners) {
        // All but the corners is left out.
        const int length = static_cast<int>(std::lround(k_cornerLength * toDevice.m11()));
        QRegion corners(mark);
        corners -= mark.adjusted(length, 0, -length, 0);
        corners -= mark.adjusted(0, length, 0, -length);
        painter.setClipRegion(corners);
    }
    fillEdges(painter, mark, line);
    painter.restore();
}
