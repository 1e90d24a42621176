#include "app/WindowDrag.h"

#include <QtMath>

#include <algorithm>

using WindowDrag::Screen;

namespace
{
QPointF toDevice(const QPointF& position, const Screen& screen)
{
    const QPointF corner = screen.geometry.topLeft();
    return corner + (position - corner) * screen.ratio;
}

QRect toDevice(const QRect& rect, const Screen& screen)
{
    return {toDevice(QPointF(rect.topLeft()), screen).toPoint(), (QSizeF(rect.size()) * screen.ratio).toSize()};
}

QPointF toLogical(const QPointF& position, const Screen& screen)
{
    const QPointF corner = screen.geometry.topLeft();
    return corner + (position - corner) / screen.ratio;
}

/// In device pixels; as it is, outside of every screen.
QPointF devicePosition(const QPointF& pointer, const QList<Screen>& screens)
{
    const QPoint pixel(qFloor(pointer.x()), qFloor(pointer.y()));
    const auto under =
        std::ranges::find_if(screens, [&](const Screen& screen) { return screen.geometry.contains(pixel); });
    return under == screens.end() ? pointer : toDevice(pointer, *under);
}
} // namespace

qsizetype WindowDrag::screenFor(const QRect& window, const QList<QRect>& screens, qsizetype present)
{
    if (screens[present].contains(window.center()))
        return present;
    qsizetype touched = present;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        if (screens[i].contains(window.center()))
            return i;
        if (screens[i].intersects(window))
            touched = i;
    }
    return touched;
}

std::optional<QPoint> WindowDrag::position(const QPointF& pointer, const QPointF& grabbed, const QSize& size,
                                           const QList<Screen>& screens, qsizetype present)
{
    QList<QRect> logical;
    QList<QRect> device;
    for (const Screen& screen : screens) {
        logical.append(screen.geometry);
        device.append(toDevice(screen.geometry, screen));
    }
    const QPointF wanted = devicePosition(pointer, screens);
    const auto onScreen = [&](qsizetype i) { return (toLogical(wanted, screens[i]) - grabbed).toPoint(); };
    const auto isTakenFor = [&](qsizetype i) {
        const QRect window(onScreen(i), size);
        return screenFor(window, logical, present) == i &&
               screenFor(toDevice(window, screens[i]), device, present) == i;
    };
    // On its own screen as long as that can be told: so a window near the seam does not change back and forth.
    if (isTakenFor(present))
        return onScreen(present);
    for (qsizetype i = 0; i < screens.size(); ++i) {
        if (isTakenFor(i))
            return onScreen(i);
    }
    return {};
}
