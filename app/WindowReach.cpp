#include "app/WindowReach.h"

#include <algorithm>

bool WindowReach::isReachable(const QRect& window, const QList<QRect>& screens)
{
    return std::ranges::any_of(screens, [&](const QRect& screen) {
        return screen.top() <= window.top() && window.top() + k_verticalMargin < screen.bottom() &&
               window.left() + k_horizontalMargin < screen.right() &&
               window.right() - k_horizontalMargin > screen.left();
    });
}

QPoint WindowReach::reachablePosition(QPoint wanted, int windowWidth, const QRect& screen)
{
    QPoint position = wanted;
    if (position.y() < screen.top())
        position.setY(screen.top());
    else if (position.y() + k_verticalMargin > screen.bottom())
        position.setY(screen.bottom() - k_verticalMargin);

    if (position.x() + windowWidth - k_horizontalMargin < screen.left())
        position.setX(screen.left() + k_horizontalMargin - windowWidth);
    else if (position.x() + k_horizontalMargin > screen.right())
        position.setX(screen.right() - k_horizontalMargin);
    return position;
}
