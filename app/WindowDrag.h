#pragma once

#include <QList>
#include <QPointF>
#include <QRect>

#include <optional>

/// Where a window goes that is dragged by a point inside of it, over screens of different ratios. Arithmetic alone: any
/// thread.
///
/// Units    logical pixels. Each screen counts its own from its top left corner, which stands at the same numbers in
///          logical and in device pixels; so the window and the pointer may be told in the pixels of different screens.
namespace WindowDrag
{
struct Screen
{
    QRect geometry;
    qreal ratio = 1.0; ///< device pixels a logical pixel

    bool operator==(const Screen&) const = default;
};

/// The screen that the toolkit takes a window to be on: its present one or another that has its middle, or else one
/// that it touches. It asks so twice, for a window's new place in logical pixels, and for what that became in device
/// pixels. An index into the screens.
[[nodiscard]] qsizetype screenFor(const QRect& window, const QList<QRect>& screens, qsizetype present);

/// The window's position with the grabbed point under the pointer, in the pixels of the screen that it is then on.
/// None where the toolkit would take every result to be on another screen than it was computed for, and so throw the
/// window elsewhere: it waits there until the pointer is further.
///
/// pointer   global, in the pixels of the screen that it is on.
/// grabbed   the point within the window, and size its size.
/// present   index of the screen that the window is on now.
[[nodiscard]] std::optional<QPoint> position(const QPointF& pointer, const QPointF& grabbed, const QSize& size,
                                             const QList<Screen>& screens, qsizetype present);
} // namespace WindowDrag
