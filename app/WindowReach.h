#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

/// Where the user may leave the frameless window: enough of it has to stay on some screen to take hold of it again.
///
/// A window that is higher than a screen may be as far above it as it takes to show the window's lowest row; any other
/// keeps its top on it.
///
/// Units    global logical pixels. Screens are their available geometries.
/// Threads  arithmetic alone, in any.
namespace WindowReach
{
/// Height of the strip at the window's top, and width of the strip at either side, that has to stay in reach.
inline constexpr int k_verticalMargin = 22;
inline constexpr int k_horizontalMargin = 11;

/// Whether the window can be taken hold of on one of the screens.
[[nodiscard]] bool isReachable(const QRect& window, const QList<QRect>& screens);

/// The position nearest to the wanted one at which a window of this size is in reach on the screen.
[[nodiscard]] QPoint reachablePosition(QPoint wanted, const QSize& windowSize, const QRect& screen);

/// How far a window has to move for a part of it to be whole on a screen; not at all if the screens show it together.
/// part is where it is now, and no larger than the screen, which is one of the screens.
[[nodiscard]] QPoint missing(const QRect& part, const QRect& screen, const QList<QRect>& screens);
} // namespace WindowReach
