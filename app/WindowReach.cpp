#include "app/WindowReach.h"

#include <QRegion>

#include <algorithm>
#include <functional>
#include <numeric>

namespace
{
/// The highest place that the top of a window may have on a screen.
int highestTop(int windowHeight, const QRect& screen)
{
    return screen.top() - std::max(0, windowHeight - screen.height());
}
} // namespace

bool WindowReach::isReachable(const QRect& window, const QList<QRect>& screens)
{
    return std::ranges::any_of(screens, [&](const QRect& screen) {
        return highestTop(window.height(), screen) <= window.top() &&
               window.top() + k_verticalMargin < screen.bottom() &&
               window.left() + k_horizontalMargin < screen.right() &&
               window.right() - k_horizontalMargin > screen.left();
    });
}

QPoint WindowReach::reachablePosition(QPoint wanted, const QSize& windowSize, const QRect& screen)
{
    QPoint position = wanted;
    const int highest = highestTop(windowSize.height(), screen);
    if (position.y() < highest)
        position.setY(highest);
    else if (position.y() + k_verticalMargin > screen.bottom())
        position.setY(screen.bottom() - k_verticalMargin);

    if (position.x() + windowSize.width() - k_horizontalMargin < screen.left())
        position.setX(screen.left() + k_horizontalMargin - windowSize.width());
    else if (position.x() + k_horizontalMargin > screen.right())
        position.setX(screen.right() - k_horizontalMargin);
    return position;
}

QPoint WindowReach::missing(const QRect& part, const QRect& screen, const QList<QRect>& screens)
{
    const QRegion unseen = std::accumulate(screens.begin(), screens.end(), QRegion(part), std::minus<QRegion>());
    if (unseen.isEmpty())
        return {};
    const auto missing = [](int partBegin, int partEnd, int screenBegin, int screenEnd) {
        return std::max(screenBegin - partBegin, 0) + std::min(screenEnd - partEnd, 0);
    };
    return {missing(part.left(), part.right(), screen.left(), screen.right()),
            missing(part.top(), part.bottom(), screen.top(), screen.bottom())};
}
