#include "app/CMainWindow.h"

#include "app/WindowReach.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

namespace
{
QList<QRect> screenAreas()
{
    QList<QRect> areas;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        areas.append(screen->availableGeometry());
    return areas;
}

/// Whether the window system leaves it to the program where its windows are.
bool canPlaceWindows()
{
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}
} // namespace

void CMainWindow::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    if (!canPlaceWindows()) {
        windowHandle()->startSystemMove();
        return;
    }
    m_dragOffset = e->globalPosition().toPoint() - pos();
    m_dragging = true;
}

void CMainWindow::mouseMoveEvent(QMouseEvent* e)
{
    if (m_dragging && e->buttons().testFlag(Qt::LeftButton))
        move(e->globalPosition().toPoint() - m_dragOffset);
}

void CMainWindow::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    if (!WindowReach::isReachable(geometry(), screenAreas())) {
        const QPoint cursor = e->globalPosition().toPoint();
        const QScreen* screen = QGuiApplication::screenAt(cursor);
        if (screen == nullptr)
            screen = QGuiApplication::primaryScreen();
        move(WindowReach::reachablePosition(cursor - m_dragOffset, size(), screen->availableGeometry()));
    }
    m_dragging = false;
    m_dragOffset = QPoint();
}
